// SPDX-License-Identifier: MIT
#include "contours/OutlinePieces.h"

namespace orvane::contours
{

std::vector<std::vector<OutlinePiece>> PiecesOf(const NativeOutline& outline)
{
    std::vector<std::vector<OutlinePiece>> contours;
    for (std::size_t contour = 0; contour < outline.ends.size(); ++contour)
    {
        const std::size_t first = outline.FirstOf(contour);
        const std::size_t end = outline.ends[contour];
        std::vector<OutlinePiece>& pieces = contours.emplace_back();
        DoublePoint last = WholePlaceOf(outline.points[end - 1]);
        const auto addLineTo = [&](const DoublePoint& place) {
            if (!(place == last))
            {
                pieces.push_back({last, (last + place) * 0.5, place});
                last = place;
            }
        };
        bool startsImplied = false;
        for (std::size_t n = first; n < end; ++n)
        {
            const DoublePoint place = WholePlaceOf(outline.points[n]);
            if (outline.points[n].onCurve)
            {
                addLineTo(place);
                continue;
            }
            // There is a next point, because the last point of a contour is on the curve.
            const DoublePoint next = WholePlaceOf(outline.points[n + 1]);
            const bool endsImplied = !outline.points[n + 1].onCurve;
            const DoublePoint arrival = endsImplied ? (place + next) * 0.5 : next;
            pieces.push_back({last, place, arrival, true, startsImplied, endsImplied});
            last = arrival;
            startsImplied = endsImplied;
            n += endsImplied ? 0 : 1;
        }
    }
    return contours;
}

}  // namespace orvane::contours
