// SPDX-License-Identifier: MIT
#include "contours/CubicOutline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

using namespace orvane::contours;

namespace
{

TEST(CubicOutline, EveryPieceIsWithinHalfAUnitOfTheCurve)
{
    const std::array<DoublePoint, 4> curves[] = {
        {{{0, 0}, {0, 300}, {200, 500}, {500, 500}}},
        {{{0, 0}, {400, 0}, {-100, 300}, {300, 300}}},   // turns right, then left
        {{{0, 0}, {0, 0}, {300, 100}, {300, 400}}},      // the first control point is the start
        {{{10, 10}, {110, 10}, {210, 10}, {310, 10}}},   // straight
        {{{0, 0}, {900, 700}, {-400, 700}, {500, 0}}}};  // crosses itself
    for (const std::array<DoublePoint, 4>& points : curves)
    {
        const auto cubicAt = [&](double t) {
            const double u = 1 - t;
            const auto mix = [&](double DoublePoint::*axis) {
                return u * u * u * points[0].*axis + 3 * u * u * t * points[1].*axis +
                       3 * u * t * t * points[2].*axis + t * t * t * points[3].*axis;
            };
            return DoublePoint{mix(&DoublePoint::x), mix(&DoublePoint::y)};
        };
        DoublePoint start = points[0];
        for (const QuadraticPiece& piece : QuadraticsOf(points))
        {
            for (double t = 0.1; t <= 1; t += 0.1)
            {
                const auto mix = [&](double DoublePoint::*axis) {
                    return (1 - t) * (1 - t) * start.*axis + 2 * t * (1 - t) * piece.control.*axis +
                           t * t * piece.end.*axis;
                };
                double nearest = 1e9;
                for (int n = 0; n <= 4000; ++n)
                {
                    const DoublePoint place = cubicAt(n / 4000.0);
                    nearest = std::min(nearest, std::hypot(place.x - mix(&DoublePoint::x),
                                                           place.y - mix(&DoublePoint::y)));
                }
                // The conversion measures the half unit at other places of the piece; between them
                // the distance can be a little larger.
                EXPECT_LE(nearest, 0.6);
            }
            start = piece.end;
        }
        EXPECT_EQ(start.x, points[3].x);
        EXPECT_EQ(start.y, points[3].y);
    }
}

}  // namespace
