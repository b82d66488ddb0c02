// SPDX-License-Identifier: MIT
#include "contours/OutlineRebuild.h"

#include "tests/support/NativeOutlines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>
#include <vector>

using namespace orvane::contours;

namespace
{

/// x and y in 1/64 units, and whether the point is on the curve.
using Point = std::tuple<int, int, bool>;

/// The contours as closed rings: each begins at its leftmost and lowest point and does not repeat
/// it at the end. They are sorted, because the order of contours does not matter.
std::vector<std::vector<Point>> RingsOf(const NativeOutline& outline)
{
    std::vector<std::vector<Point>> rings;
    for (std::size_t n = 0; n < outline.ends.size(); ++n)
    {
        std::vector<Point>& ring = rings.emplace_back();
        for (std::size_t i = outline.FirstOf(n); i < outline.ends[n]; ++i)
        {
            const NativePoint& point = outline.points[i];
            ring.emplace_back(point.x, point.y, point.onCurve);
        }
        if (ring.size() > 1 && ring.front() == ring.back())
        {
            ring.pop_back();
        }
        std::rotate(ring.begin(), std::min_element(ring.begin(), ring.end()), ring.end());
    }
    std::sort(rings.begin(), rings.end());
    return rings;
}

RebuiltOutline Rebuild(const std::vector<std::vector<OutlineAt>>& contours, int samplesPerCurve = 4,
                       bool keepCurves = true)
{
    return RebuildOutline(MakeOutline(contours), {samplesPerCurve, keepCurves});
}

void ExpectOutline(const RebuiltOutline& rebuilt, double area,
                   const std::vector<std::vector<OutlineAt>>& expected)
{
    EXPECT_EQ(rebuilt.area, area);
    EXPECT_EQ(RingsOf(rebuilt.outline), RingsOf(MakeOutline(expected)));
}

TEST(OutlineRebuild, OverlappingSquaresBecomeOneContour)
{
    // The squares share 50 x 50 units.
    ExpectOutline(
        Rebuild({SquareAt(0, 0, 100), SquareAt(50, 50, 100)}), 20000 - 50 * 50,
        {{{0, 0}, {0, 100}, {50, 100}, {50, 150}, {150, 150}, {150, 50}, {100, 50}, {100, 0}}});
}

TEST(OutlineRebuild, TheResultRunsTheRightWayWhateverTheOriginalDid)
{
    ExpectOutline(Rebuild({SquareAt(0, 0, 100)}), 10000, {SquareAt(0, 0, 100)});
    ExpectOutline(Rebuild({SquareAt(0, 0, 100, true)}), 10000, {SquareAt(0, 0, 100)});
    // An outline turned inside out: the outer border of the result is clockwise, its hole is not.
    ExpectOutline(Rebuild({SquareAt(0, 0, 100, true), SquareAt(20, 30, 50)}), 7500,
                  {SquareAt(0, 0, 100), SquareAt(20, 30, 50, true)});
}

TEST(OutlineRebuild, ASquareInsideAnotherOfTheSameDirectionVanishes)
{
    ExpectOutline(Rebuild({SquareAt(0, 0, 100), SquareAt(20, 30, 50)}), 10000,
                  {SquareAt(0, 0, 100)});
}

TEST(OutlineRebuild, AFigureEightBecomesTwoTriangles)
{
    ExpectOutline(Rebuild({{{0, 0}, {100, 100}, {100, 0}, {0, 100}}}), 5000,
                  {{{0, 0}, {0, 100}, {50, 50}}, {{50, 50}, {100, 100}, {100, 0}}});
}

TEST(OutlineRebuild, CurvesThatMeetNothingAreKeptWhole)
{
    // With two samples a curve, the samples are a polygon of the four ends and the four middles of
    // the curves, such as (-75, 75). A quarter of it has two triangles of 3,750 square units.
    ExpectOutline(Rebuild({RoundAt(0, 0, 100)}, 2), 30000, {RoundAt(0, 0, 100)});
    ExpectOutline(Rebuild({RoundAt(0, 0, 100, true)}, 2), 30000, {RoundAt(0, 0, 100)});
}

TEST(OutlineRebuild, WithoutCurvesTheSamplesAreJoinedByLines)
{
    ExpectOutline(
        Rebuild({RoundAt(0, 0, 100)}, 2, false), 30000,
        {{{-100, 0}, {-75, 75}, {0, 100}, {75, 75}, {100, 0}, {75, -75}, {0, -100}, {-75, -75}}});
}

TEST(OutlineRebuild, ACutCurveEndsWhereTheCurvesCross)
{
    // The curve from (0, 100) to (100, 0) with the control point (100, 100) crosses x = 75 in its
    // middle, at (75, 75). Its first half has the control point (50, 100). The sampled edges cross
    // x = 75 a little lower, from where the crossing of the curve is found.
    const std::vector<OutlineAt> box = {{75, -200}, {75, 200}, {200, 200}, {200, -200}};
    const RebuiltOutline rebuilt = Rebuild({RoundAt(0, 0, 100), box}, 21);
    EXPECT_EQ(RingsOf(rebuilt.outline), RingsOf(MakeOutline({{{-100, 0},
                                                              {-100, 100, false},
                                                              {0, 100},
                                                              {50, 100, false},
                                                              {75, 75},
                                                              {75, 200},
                                                              {200, 200},
                                                              {200, -200},
                                                              {75, -200},
                                                              {75, -75},
                                                              {50, -100, false},
                                                              {0, -100},
                                                              {-100, -100, false},
                                                              {-100, 0}}})));
}

TEST(OutlineRebuild, AnImpliedPointIsNotWritten)
{
    // Between its two control points the curve passes through (50, 100), which is not stored.
    const std::vector<OutlineAt> arch = {{0, 0}, {0, 100, false}, {100, 100, false}, {100, 0}};
    EXPECT_EQ(RingsOf(Rebuild({arch}).outline), RingsOf(MakeOutline({arch})));
}

TEST(OutlineRebuild, SliversAreLeftOut)
{
    // A triangle of 100 x 1 units has an area of 50 square units and a border of about 201 units.
    const std::vector<OutlineAt> sliver = {{0, 300}, {0, 301}, {100, 300}};
    ExpectOutline(Rebuild({SquareAt(0, 0, 100), sliver}), 10050, {SquareAt(0, 0, 100)});
}

}  // namespace
