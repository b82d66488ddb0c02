// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/CubicOutline.h"

#include "platform/posix/fonts/FaceOutlines.h"
#include "platform/posix/fonts/OutlineTrial.h"
#include "tests/support/NativeOutlines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace posix;

namespace
{

constexpr int em = 1000;

/// An outline as FreeType has it, of points on the curve (1) and cubic control points (2).
struct Cubics
{
    explicit Cubics(const std::vector<std::vector<OutlineAt>>& all)
    {
        for (const std::vector<OutlineAt>& contour : all)
        {
            for (const OutlineAt& point : contour)
            {
                points.push_back({point.x * 64, point.y * 64});
                tags.push_back(point.onCurve ? FT_CURVE_TAG_ON : FT_CURVE_TAG_CUBIC);
            }
            ends.push_back(static_cast<short>(points.size() - 1));
        }
        outline.n_contours = static_cast<short>(ends.size());
        outline.n_points = static_cast<short>(points.size());
        outline.points = points.data();
        outline.tags = tags.data();
        outline.contours = ends.data();
    }

    std::vector<FT_Vector> points;
    std::vector<char> tags;
    std::vector<short> ends;
    FT_Outline outline = {};
};

/// A circle of four cubic curves, counter-clockwise, as compact outlines run.
std::vector<OutlineAt> CubicCircle(int radius)
{
    const int k = static_cast<int>(std::lround(0.5522847 * radius));
    return {{radius, 0},          {radius, k, false},  {k, radius, false},  {0, radius},
            {-k, radius, false},  {-radius, k, false}, {-radius, 0},        {-radius, -k, false},
            {-k, -radius, false}, {0, -radius},        {k, -radius, false}, {radius, -k, false}};
}

/// The largest distance of the outline's splines from a circle around the origin.
double DeviationFromCircle(const NativeOutline& outline, double radius)
{
    double largest = 0;
    const auto probe = [&](double x, double y) {
        largest = std::max(largest, std::fabs(std::hypot(x, y) - radius));
    };
    const std::vector<NativePoint>& points = outline.points;
    for (std::size_t n = 0; n < points.size(); ++n)
    {
        if (points[n].onCurve)
        {
            probe(points[n].x / 64.0, points[n].y / 64.0);
            continue;
        }
        // A point on the curve follows each control point.
        const NativePoint& a = points[n - 1];
        const NativePoint& b = points[n + 1];
        EXPECT_TRUE(a.onCurve && b.onCurve);
        for (double t = 0.05; t < 1; t += 0.05)
        {
            const double p = (1 - t) * (1 - t) / 64;
            const double q = 2 * t * (1 - t) / 64;
            const double r = t * t / 64;
            probe(p * a.x + q * points[n].x + r * b.x, p * a.y + q * points[n].y + r * b.y);
        }
    }
    return largest;
}

class CubicCircles : public testing::TestWithParam<int>
{};

TEST_P(CubicCircles, AreWithinHalfAUnitAndSomethingForTheirOwnShape)
{
    const int radius = GetParam();
    const Cubics circle({CubicCircle(radius)});
    const NativeOutline outline = TraceCubicOutline(circle.outline);
    // Cubic circles are 0.03 % off at most, and their control points here are whole numbers.
    EXPECT_LT(DeviationFromCircle(outline, radius), 0.5 + 0.0003 * radius + 0.4);
    EXPECT_TRUE(TryOutline(outline, em).fills);
    EXPECT_TRUE(TryOutline(outline, em).wrongWay.empty());
    // Not more pieces than a circle of that size takes
    EXPECT_LE(outline.points.size(), radius < 100 ? 34u : 66u);
}

INSTANTIATE_TEST_SUITE_P(Radii, CubicCircles, testing::Values(20, 55, 143, 250, 377, 400, 700));

TEST(CubicOutline, EveryPieceIsWithinHalfAUnitOfTheCurve)
{
    const std::array<CurvePlace, 4> curves[] = {
        {{{0, 0}, {0, 300}, {200, 500}, {500, 500}}},
        {{{0, 0}, {400, 0}, {-100, 300}, {300, 300}}},   // turns both ways
        {{{0, 0}, {0, 0}, {300, 100}, {300, 400}}},      // starts with no way to go
        {{{10, 10}, {110, 10}, {210, 10}, {310, 10}}},   // straight
        {{{0, 0}, {900, 700}, {-400, 700}, {500, 0}}}};  // crosses itself
    for (const std::array<CurvePlace, 4>& points : curves)
    {
        const auto cubicAt = [&](double t) {
            const double u = 1 - t;
            const auto mix = [&](double CurvePlace::*axis) {
                return u * u * u * points[0].*axis + 3 * u * u * t * points[1].*axis +
                       3 * u * t * t * points[2].*axis + t * t * t * points[3].*axis;
            };
            return CurvePlace{mix(&CurvePlace::x), mix(&CurvePlace::y)};
        };
        CurvePlace start = points[0];
        for (const QuadraticPiece& piece : QuadraticsOf(points))
        {
            for (double t = 0.1; t <= 1; t += 0.1)
            {
                const auto mix = [&](double CurvePlace::*axis) {
                    return (1 - t) * (1 - t) * start.*axis + 2 * t * (1 - t) * piece.control.*axis +
                           t * t * piece.end.*axis;
                };
                double nearest = 1e9;
                for (int n = 0; n <= 4000; ++n)
                {
                    const CurvePlace place = cubicAt(n / 4000.0);
                    nearest = std::min(nearest, std::hypot(place.x - mix(&CurvePlace::x),
                                                           place.y - mix(&CurvePlace::y)));
                }
                EXPECT_LE(nearest, 0.6);
            }
            start = piece.end;
        }
        EXPECT_EQ(start.x, points[3].x);
        EXPECT_EQ(start.y, points[3].y);
    }
}

TEST(CubicOutline, ContoursAreTurnedToTheDirectionOfTrueType)
{
    // Counter-clockwise
    const Cubics square({{{0, 0}, {100, 0}, {100, 100}, {0, 100}}});
    EXPECT_EQ(TraceCubicOutline(square.outline),
              MakeOutline({{{0, 100}, {100, 100}, {100, 0}, {0, 0}}}));
    const ProvidedOutline provided = ProvideOutline(TraceCubicOutline(square.outline), true, em);
    EXPECT_TRUE(provided.converted);
    EXPECT_FALSE(provided.turned || provided.repaired);
    ASSERT_TRUE(provided.outline);
}

TEST(CubicOutline, CoordinatesBetweenUnitsAreRounded)
{
    Cubics square({{{0, 0}, {100, 0}, {100, 100}, {0, 100}}});
    square.points[1] = {100 * 64 + 40, 20};
    const NativeOutline outline = TraceCubicOutline(square.outline);
    EXPECT_EQ(outline, MakeOutline({{{0, 100}, {100, 100}, {101, 0}, {0, 0}}}));
}

TEST(CubicOutline, BrokenOutlinesGiveNothing)
{
    // A lone cubic control point
    Cubics broken({{{0, 0}, {100, 0, false}, {100, 100}}});
    EXPECT_TRUE(TraceCubicOutline(broken.outline).ends.empty());
    EXPECT_TRUE(TraceCubicOutline(FT_Outline{}).ends.empty());
}

}  // namespace
