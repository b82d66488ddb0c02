// SPDX-License-Identifier: MIT
#include "contours/ProvidedOutline.h"

#include "contours/OutlineRepair.h"
#include "contours/OutlineTrial.h"

namespace orvane::contours
{
namespace
{

/// Accepts an outline if it passes its trial as it is or with contours reversed. Returns false when
/// neither form passes.
bool AcceptTurned(ProvidedOutline& provided, const NativeOutline& outline, int unitsPerEm,
                  const OutlineVerdict& verdict)
{
    if (!verdict.fills || verdict.wrongWay.empty())
    {
        return verdict.fills;
    }
    NativeOutline turned = Reversed(outline, verdict.wrongWay);
    // Reversed contours are flattened from their other ends, which can move vertices by a unit, so
    // they must pass a trial of their own.
    provided.isTurned = TryOutline(turned, unitsPerEm, CrossingEdges::Tessellated).fills;
    if (provided.isTurned)
    {
        provided.outline = std::move(turned);
    }
    return provided.isTurned;
}

}  // namespace

ProvidedOutline ProvideOutline(const NativeOutline& outline, bool isConverted, int unitsPerEm)
{
    ProvidedOutline provided;
    provided.isConverted = isConverted;
    const OutlineVerdict verdict = TryOutline(outline, unitsPerEm);
    if (!AcceptTurned(provided, outline, unitsPerEm, verdict))
    {
        if (!verdict.isHopeless)
        {
            provided.outline = RepairOutline(outline, unitsPerEm);
        }
        provided.isRepaired = provided.outline.has_value();
        // The trial may only have presumed that the outline fails. In that case, let the
        // tessellator try it before it counts as failed.
        provided.isFailed =
            !provided.isRepaired &&
            !(verdict.isPresumed &&
              AcceptTurned(provided, outline, unitsPerEm,
                           TryOutline(outline, unitsPerEm, CrossingEdges::Tessellated)));
    }
    if (isConverted && !provided.outline)
    {
        provided.outline = outline;
    }
    return provided;
}

}  // namespace orvane::contours
