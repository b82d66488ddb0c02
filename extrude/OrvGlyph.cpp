// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"

#include "extrude/ExtrusionData.h"
#include "extrude/Library.h"
#include "outline/TTGlyph.h"
#include "platform/Sync.h"

namespace
{
/// Releases a mutex at the end of a scope.
class MutexRelease
{
public:
    explicit MutexRelease(HANDLE mutex) : mutex_(mutex) {}
    ~MutexRelease() { ReleaseMutex(mutex_); }
    MutexRelease(const MutexRelease&) = delete;
    MutexRelease& operator=(const MutexRelease&) = delete;

private:
    HANDLE mutex_;
};
}  // namespace

OrvGlyph::OrvGlyph(unsigned long newDataSize, const GLYPHMETRICS& newMetrics)
    : dataSize(static_cast<DWORD>(newDataSize)), metrics(newMetrics)
{}

int OrvGlyph::ConstructGlyph(const TTGlyph& glyph, float resolution)
{
    const HANDLE mutex = GetGlyphMutex();
    const DWORD wait = WaitForSingleObject(mutex, INFINITE);
    if (wait != WAIT_OBJECT_0 && wait != WAIT_ABANDONED)
    {
        return 0;
    }
    if (IsDefined())
    {
        return 0;  // the mutex stays taken, as the header says
    }
    const MutexRelease release(mutex);
    return FromTTGlyph(glyph, resolution);
}

int OrvGlyph::FromTTGlyph(const TTGlyph& glyph, float resolution)
{
    TTPolyGlyph::FromTTGlyph(glyph, resolution);
    if (!IsDefined())
    {
        return 0;
    }
    CreateFacePolygons();
    return 1;
}

int OrvGlyph::Render(const ExtrusionData& data, int) const
{
    RenderFaces(data);
    return RenderEdgesUnbevelled(data);
}
