// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/OutlineTracer.h"

#include "contours/OutlineTrial.h"
#include "contours/ProvidedOutline.h"
#include "tests/support/NativeOutlines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace orvane::contours;
using posix::TraceCubicOutline;

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

TEST_P(CubicCircles, StayCircles)
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

TEST(OutlineTracer, CubicContoursAreReversed)
{
    // Counter-clockwise
    const Cubics square({{{0, 0}, {100, 0}, {100, 100}, {0, 100}}});
    EXPECT_EQ(TraceCubicOutline(square.outline),
              MakeOutline({{{0, 100}, {100, 100}, {100, 0}, {0, 0}}}));
    const ProvidedOutline provided = ProvideOutline(TraceCubicOutline(square.outline), true, em);
    EXPECT_TRUE(provided.isConverted);
    EXPECT_FALSE(provided.isTurned || provided.isRepaired);
    ASSERT_TRUE(provided.outline);
}

TEST(OutlineTracer, CoordinatesBetweenUnitsAreRounded)
{
    Cubics square({{{0, 0}, {100, 0}, {100, 100}, {0, 100}}});
    square.points[1] = {100 * 64 + 40, 20};
    const NativeOutline outline = TraceCubicOutline(square.outline);
    EXPECT_EQ(outline, MakeOutline({{{0, 100}, {100, 100}, {101, 0}, {0, 0}}}));
}

TEST(OutlineTracer, QuadraticCurvesAmongCubicOnesKeepTheirControlPoints)
{
    Cubics shape({{{0, 0}, {50, 80}, {100, 0}}});
    shape.tags[1] = FT_CURVE_TAG_CONIC;
    EXPECT_EQ(TraceCubicOutline(shape.outline),
              Reversed(MakeOutline({{{0, 0}, {50, 80, false}, {100, 0}}}), {true}));
}

TEST(OutlineTracer, AContourBeginsWithAPointOnTheCurve)
{
    const auto trace = [](const std::vector<char>& tags) {
        Cubics shape({{{0, 0}, {0, 100}, {100, 100}, {100, 0}}});
        shape.tags = tags;
        shape.outline.tags = shape.tags.data();
        return posix::TraceOutline(shape.outline);
    };
    constexpr char on = FT_CURVE_TAG_ON;
    constexpr char off = FT_CURVE_TAG_CONIC;
    EXPECT_EQ(trace({on, off, on, on}),
              MakeOutline({{{0, 0}, {0, 100, false}, {100, 100}, {100, 0}}}));
    // The last point is on the curve, so the contour begins there.
    EXPECT_EQ(trace({off, on, on, on}),
              MakeOutline({{{100, 0}, {0, 0, false}, {0, 100}, {100, 100}}}));
    // Neither is: it begins in their middle, and ends there.
    EXPECT_EQ(
        trace({off, on, on, off}),
        MakeOutline({{{50, 0}, {0, 0, false}, {0, 100}, {100, 100}, {100, 0, false}, {50, 0}}}));
}

TEST(OutlineTracer, AContourOfOnePointIsDropped)
{
    Cubics shape({{{7, 7}}, {{0, 0}, {0, 100}, {100, 0}}});
    EXPECT_EQ(posix::TraceOutline(shape.outline), MakeOutline({{{0, 0}, {0, 100}, {100, 0}}}));
}

TEST(OutlineTracer, InvalidOutlinesGiveNoContours)
{
    // A lone cubic control point
    Cubics broken({{{0, 0}, {100, 0, false}, {100, 100}}});
    EXPECT_TRUE(TraceCubicOutline(broken.outline).ends.empty());
    EXPECT_TRUE(TraceCubicOutline(FT_Outline{}).ends.empty());
}

}  // namespace
