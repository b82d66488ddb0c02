// SPDX-License-Identifier: MIT
#include "platform/posix/FaceOutlines.h"

#include "platform/posix/OutlineRepair.h"
#include "platform/posix/OutlineTrial.h"

namespace posix
{

ProvidedOutline ProvideOutline(const NativeOutline& outline, bool converted, int unitsPerEm)
{
    ProvidedOutline provided;
    provided.converted = converted;
    const OutlineVerdict verdict = TryOutline(outline, unitsPerEm);
    bool fills = verdict.fills;
    if (fills && !verdict.wrongWay.empty())
    {
        NativeOutline turned = Reversed(outline, verdict.wrongWay);
        // Flattened from their other ends, contours may come to lie a unit elsewhere.
        fills = TryOutline(turned, unitsPerEm).fills;
        if (fills)
        {
            provided.turned = true;
            provided.outline = std::move(turned);
            return provided;
        }
    }
    if (!fills)
    {
        if (!verdict.hopeless)
        {
            provided.outline = RepairOutline(outline, unitsPerEm);
        }
        provided.repaired = provided.outline.has_value();
        provided.failed = !provided.repaired;
    }
    if (converted && !provided.outline)
    {
        provided.outline = outline;
    }
    return provided;
}

NativeOutline Scaled(const NativeOutline& outline, int pixelsPerEm, int unitsPerEm)
{
    NativeOutline scaled = outline;
    if (pixelsPerEm != unitsPerEm)
    {
        for (NativePoint& point : scaled.points)
        {
            point.x = FT_MulDiv(point.x, pixelsPerEm, unitsPerEm);
            point.y = FT_MulDiv(point.y, pixelsPerEm, unitsPerEm);
        }
    }
    return scaled;
}

}  // namespace posix
