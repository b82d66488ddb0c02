// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/FaceOutlines.h"

#include "platform/posix/fonts/OutlineRepair.h"
#include "platform/posix/fonts/OutlineTrial.h"

namespace posix
{

namespace
{

const ProvidedOutline untouched;

/// Takes an outline that fills as it is or with contours turned. False when neither will do.
bool TakeTurned(ProvidedOutline& provided, const NativeOutline& outline, int unitsPerEm,
                const OutlineVerdict& verdict)
{
    if (!verdict.fills || verdict.wrongWay.empty())
    {
        return verdict.fills;
    }
    NativeOutline turned = Reversed(outline, verdict.wrongWay);
    // Flattened from their other ends, contours may come to lie a unit elsewhere.
    provided.turned = TryOutline(turned, unitsPerEm, CrossingEdges::Filled).fills;
    if (provided.turned)
    {
        provided.outline = std::move(turned);
    }
    return provided.turned;
}

}  // namespace

ProvidedOutline ProvideOutline(const NativeOutline& outline, bool converted, int unitsPerEm)
{
    ProvidedOutline provided;
    provided.converted = converted;
    const OutlineVerdict verdict = TryOutline(outline, unitsPerEm);
    if (!TakeTurned(provided, outline, unitsPerEm, verdict))
    {
        if (!verdict.hopeless)
        {
            provided.outline = RepairOutline(outline, unitsPerEm);
        }
        provided.repaired = provided.outline.has_value();
        // What was only taken for a bad one may yet do.
        provided.failed = !provided.repaired &&
                          !(verdict.presumed &&
                            TakeTurned(provided, outline, unitsPerEm,
                                       TryOutline(outline, unitsPerEm, CrossingEdges::Filled)));
    }
    if (converted && !provided.outline)
    {
        provided.outline = outline;
    }
    return provided;
}

const ProvidedOutline* FaceOutlines::Find(FT_UInt glyph) const
{
    if (glyph < untouched_.size() && untouched_[glyph])
    {
        return &untouched;
    }
    const auto known = others_.find(glyph);
    return known != others_.end() ? &known->second : nullptr;
}

const ProvidedOutline& FaceOutlines::Keep(FT_UInt glyph, ProvidedOutline provided)
{
    if (provided.outline || provided.failed)
    {
        return others_.insert_or_assign(glyph, std::move(provided)).first->second;
    }
    if (glyph >= untouched_.size())
    {
        untouched_.resize(glyph + 1);
    }
    untouched_[glyph] = true;
    return untouched;
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
