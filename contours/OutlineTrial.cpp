// SPDX-License-Identifier: MIT
#include "contours/OutlineTrial.h"

#include "contours/Areas.h"
#include "contours/Crossings.h"
#include "contours/Directions.h"
#include "contours/EdgeChains.h"
#include "platform/Limits.h"

#include <algorithm>
#include <cmath>

namespace orvane::contours
{
namespace
{

/// The area filled by the odd rule and the area filled by the non-zero rule may differ by at most
/// this share of the larger area.
constexpr double maxAreaDifference = 0.001;

}  // namespace

OutlineVerdict TryOutline(const NativeOutline& outline, int unitsPerEm, CrossingEdges crossing)
{
    OutlineVerdict verdict;
    if (outline.ends.empty())
    {
        return verdict;
    }
    thread_local FlatOutline flat;  // kept, so that the next outline uses its memory again
    FlattenInto(flat, outline, unitsPerEm);
    EdgeChains& chains = EdgeChainsOfThread();
    if (chains.EdgesKeepApart(flat))
    {
        verdict.wrongWay = chains.ContoursTheWrongWay(flat);
        if (verdict.wrongWay.empty())
        {
            // The outline passes without a tessellation, because both rules fill the same area.
            return verdict;
        }
    }
    else
    {
        bool cross = false;
        verdict.isHopeless =
            CountMeetings(flat, limits::maxEdgeMeetings, &cross) > limits::maxEdgeMeetings;
        // The tessellator refuses edges that cross, with two exceptions. Moving vertices apart may
        // uncross the edges, so an outline with vertices at the same place is never presumed to
        // fail. And the tessellator may happen not to compare the two edges;
        // CrossingEdges::Tessellated finds that out.
        verdict.isPresumed = !verdict.isHopeless && crossing == CrossingEdges::Presumed && cross &&
                             !AnyPlaceRepeats(flat);
        if (verdict.isHopeless || verdict.isPresumed)
        {
            verdict.fills = false;
            return verdict;
        }
        SeparateVertices(flat);
        verdict.wrongWay = ContoursTheWrongWay(flat);
        if (std::find(verdict.wrongWay.begin(), verdict.wrongWay.end(), true) ==
            verdict.wrongWay.end())
        {
            verdict.wrongWay.clear();
        }
    }
    const double odd = OddArea(flat);
    const double nonZero = odd >= 0 ? NonZeroArea(flat) : -1;
    verdict.fills =
        nonZero >= 0 && std::fabs(odd - nonZero) <= maxAreaDifference * std::max(odd, nonZero);
    return verdict;
}

}  // namespace orvane::contours
