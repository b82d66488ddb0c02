// SPDX-License-Identifier: MIT
#include "contours/OutlineRepair.h"

#include "contours/Areas.h"
#include "contours/Crossings.h"
#include "contours/OutlineTrial.h"
#include "contours/ProvidedOutline.h"
#include "tests/support/NativeOutlines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using namespace orvane::contours;

namespace
{

constexpr int em = 1000;

double AreaOf(const NativeOutline& outline)
{
    return OddArea(FlattenAndSeparate(outline, em));
}

/// Whether two outlines of one contour have the same points in the same order. They may start at
/// different points.
bool SameRing(const NativeOutline& a, const NativeOutline& b)
{
    if (a.ends.size() != 1 || b.ends.size() != 1 || a.points.size() != b.points.size())
    {
        return false;
    }
    std::vector<NativePoint> points = a.points;
    for (std::size_t turn = 0; turn < points.size(); ++turn)
    {
        if (points == b.points)
        {
            return true;
        }
        std::rotate(points.begin(), points.begin() + 1, points.end());
    }
    return false;
}

bool HasCurves(const NativeOutline& outline)
{
    return std::any_of(outline.points.begin(), outline.points.end(),
                       [](const NativePoint& point) { return !point.onCurve; });
}

TEST(OutlineRepair, OverlappingSquaresBecomeTheirBorder)
{
    const auto repaired =
        RepairOutline(MakeOutline({SquareAt(0, 0, 100), SquareAt(50, 50, 100)}), em);
    ASSERT_TRUE(repaired);
    // The border runs clockwise and has a corner where two sides crossed.
    EXPECT_TRUE(SameRing(*repaired, MakeOutline({{{0, 0},
                                                  {0, 100},
                                                  {50, 100},
                                                  {50, 150},
                                                  {150, 150},
                                                  {150, 50},
                                                  {100, 50},
                                                  {100, 0}}})));
}

TEST(OutlineRepair, TheDirectionsOfOverlappingContoursDoNotMatterWhenTheyAgree)
{
    const auto repaired =
        RepairOutline(MakeOutline({SquareAt(0, 0, 100, true), SquareAt(50, 50, 100, true)}), em);
    ASSERT_TRUE(repaired);
    EXPECT_DOUBLE_EQ(AreaOf(*repaired), 17500);
    EXPECT_TRUE(TryOutline(*repaired, em).wrongWay.empty());
}

TEST(OutlineRepair, AHoleThatReachesOverTheBorderIsCutOutWhereTheyOverlap)
{
    const auto repaired =
        RepairOutline(MakeOutline({SquareAt(0, 0, 100), SquareAt(50, 50, 100, true)}), em);
    ASSERT_TRUE(repaired);
    // By the non-zero rule, the part of the second square outside the first is filled too. The two
    // parts meet at two places; at each, a corner is moved by 2 units.
    EXPECT_NEAR(AreaOf(*repaired), 15000, 300);
}

TEST(OutlineRepair, ASquareInsideAnotherOfTheSameDirectionIsDropped)
{
    const auto repaired =
        RepairOutline(MakeOutline({SquareAt(0, 0, 100), SquareAt(20, 20, 50)}), em);
    ASSERT_TRUE(repaired);
    EXPECT_TRUE(SameRing(*repaired, MakeOutline({SquareAt(0, 0, 100)})));
}

TEST(OutlineRepair, AFigureEightBecomesTwoContours)
{
    const auto repaired =
        RepairOutline(MakeOutline({{{0, 0}, {100, 100}, {100, 0}, {0, 100}}}), em);
    ASSERT_TRUE(repaired);
    EXPECT_EQ(repaired->ends.size(), 2u);
    EXPECT_TRUE(TryOutline(*repaired, em).fills);
    // Two triangles of 2500 square units each. Their vertices in the middle may be moved by 2
    // units.
    EXPECT_NEAR(AreaOf(*repaired), 5000, 250);
}

TEST(OutlineRepair, AnArrowWhoseInnerEdgesCrossIsRepairedFromWhicheverVertexItStarts)
{
    // The triangles from either of the last two vertices to every edge all turn the same way, so
    // GLU would take its short cut there and miss the crossing.
    std::vector<OutlineAt> arrow = {{196, 1093}, {102, 1167}, {419, 1478}, {737, 1167},
                                    {644, 1093}, {392, 1348}, {446, 1348}};
    for (std::size_t start = 0; start < arrow.size(); ++start)
    {
        const auto repaired = RepairOutline(MakeOutline({arrow}), 2000);
        ASSERT_TRUE(repaired) << start;
        // The edges cross at (419.1, 1320.6).
        EXPECT_TRUE(SameRing(
            *repaired,
            MakeOutline(
                {{{196, 1093}, {102, 1167}, {419, 1478}, {737, 1167}, {644, 1093}, {419, 1321}}})))
            << start;
        std::rotate(arrow.begin(), arrow.begin() + 1, arrow.end());
    }
}

TEST(OutlineRepair, AContourThatTouchesItselfIsFilledCorrectly)
{
    // One contour of two squares that are joined at a corner
    const NativeOutline outline = MakeOutline(
        {{{0, 0}, {0, 100}, {100, 100}, {100, 200}, {200, 200}, {200, 100}, {100, 100}, {100, 0}}});
    const ProvidedOutline provided = ProvideOutline(outline, false, em);
    EXPECT_FALSE(provided.isFailed);
    const NativeOutline& given = provided.outline ? *provided.outline : outline;
    EXPECT_TRUE(TryOutline(given, em).fills);
    EXPECT_NEAR(AreaOf(given), 20000, 500);
}

TEST(OutlineRepair, CurvesStayCurvesInTheSamePlace)
{
    const NativeOutline outline = MakeOutline({RoundAt(0, 0, 300), RoundAt(400, 0, 300)});
    const auto repaired = RepairOutline(outline, em);
    ASSERT_TRUE(repaired);
    EXPECT_EQ(repaired->ends.size(), 1u);
    // The border has eight points on the curve: two crossings and six ends of the rounds' curves. A
    // curve follows each of them.
    const auto onCurve = std::count_if(repaired->points.begin(), repaired->points.end(),
                                       [](const NativePoint& point) { return point.onCurve; });
    EXPECT_EQ(repaired->points.size() - static_cast<std::size_t>(onCurve), 8u);
    // Each vertex lies on one of the two original contours, up to rounding.
    const FlatOutline fine = Flatten(*repaired, em);
    for (const FlatVertex& vertex : fine.vertices)
    {
        double nearest = 1e9;
        for (const double centre : {0.0, 400.0})
        {
            // A curve from (r, 0) to (0, r) with control point (r, r) has
            // sqrt(1 - x/r) + sqrt(1 - y/r) = 1.
            const double x = std::min(std::fabs(vertex.point.x - centre) / 300, 1.0);
            const double y = std::min(std::fabs(vertex.point.y / 300.0), 1.0);
            nearest = std::min(nearest, std::fabs(std::sqrt(1 - x) + std::sqrt(1 - y) - 1));
        }
        EXPECT_LT(nearest, 0.06) << vertex.point.x << ' ' << vertex.point.y;
    }
}

TEST(OutlineRepair, ContoursThatTouchAtACornerAreMovedApart)
{
    // A bar, and a stroke that touches the bar at the bar's corner (502, 360)
    const std::vector<OutlineAt> bar = {{525, 561}, {525, 480}, {349, 480}, {349, 440},
                                        {502, 440}, {502, 360}, {88, 360},  {88, 440},
                                        {233, 440}, {233, 480}, {65, 480},  {65, 561},
                                        {233, 561}, {233, 610}, {349, 610}, {349, 561}};
    const std::vector<OutlineAt> stroke = {
        {699, 590}, {694, 566, false}, {682, 518},        {871, 518}, {887, 523},
        {959, 500}, {928, 371, false}, {894, 289},        {809, 318}, {823, 357, false},
        {837, 413}, {647, 413},        {615, 332, false}, {579, 281}, {564, 295, false},
        {534, 316}, {508, 334, false}, {490, 344},        {502, 360}, {568, 454, false},
        {597, 613}};
    const NativeOutline outline = MakeOutline({bar, stroke});
    ASSERT_FALSE(TryOutline(outline, em).fills);
    const auto repaired = RepairOutline(outline, em);
    ASSERT_TRUE(repaired);
    EXPECT_EQ(repaired->ends.size(), 2u);
    EXPECT_TRUE(EdgesKeepApart(Flatten(*repaired, em)));
    EXPECT_TRUE(HasCurves(*repaired));
    // The bar's corner has moved by less than 2.5 units. No other point has moved.
    int moved = 0;
    for (const NativePoint& point : repaired->points)
    {
        const bool own = std::any_of(outline.points.begin(), outline.points.end(),
                                     [&](const NativePoint& other) { return other == point; });
        const double away = std::hypot(static_cast<double>(point.x) / 64 - 502,
                                       static_cast<double>(point.y) / 64 - 360);
        EXPECT_TRUE(own || away < 2.5) << point.x / 64 << ' ' << point.y / 64;
        moved += own ? 0 : 1;
    }
    EXPECT_EQ(moved, 1);
}

TEST(OutlineRepair, ASecondRebuildIsComparedWithTheAreaOfTenSamplesPerCurve)
{
    // The first rebuild cuts a deep curve into pieces. After rounding, the pieces cross again, and
    // the second rebuild separates them. The pieces are flattened more finely than the whole curve,
    // so they enclose a larger area than five samples of the whole curve do. If the second rebuild
    // were compared with the area of five samples, it would fail, and straight lines would replace
    // the curve.
    const NativeOutline outline =
        MakeOutline({{{553, 53}, {22, 642, false}, {493, 237}, {511, 283}, {259, 369}}});
    ASSERT_FALSE(TryOutline(outline, em).fills);
    const auto repaired = RepairOutline(outline, em);
    ASSERT_TRUE(repaired);
    EXPECT_TRUE(HasCurves(*repaired));
    EXPECT_TRUE(TryOutline(*repaired, em).fills);
}

TEST(OutlineRepair, RepairedOutlinesPassTheTrialAndFillTheSameArea)
{
    std::mt19937 random(11);
    int repairedCount = 0;
    for (int turn = 0; turn < 300; ++turn)
    {
        const NativeOutline outline = RandomShapes(random, 2 + turn % 3, 700, 60, false);
        if (TryOutline(outline, em).fills)
        {
            continue;
        }
        const auto repaired = RepairOutline(outline, em);
        ASSERT_TRUE(repaired) << turn;
        const OutlineVerdict verdict = TryOutline(*repaired, em);
        EXPECT_TRUE(verdict.fills && verdict.wrongWay.empty()) << turn;
        const double whole = NonZeroArea(FlattenAndSeparate(outline, em));
        // Curves that were cut are flattened more finely, so the area may differ a little.
        EXPECT_NEAR(AreaOf(*repaired), whole, 0.03 * whole) << turn;
        ++repairedCount;
    }
    EXPECT_GT(repairedCount, 100);
}

}  // namespace
