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

/// Whether two outlines of one contour have the same points, starting anywhere.
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
    // Clockwise, a corner where the sides crossed
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

TEST(OutlineRepair, AHoleThatReachesOverTheBorderCutsIt)
{
    const auto repaired =
        RepairOutline(MakeOutline({SquareAt(0, 0, 100), SquareAt(50, 50, 100, true)}), em);
    ASSERT_TRUE(repaired);
    // By the non-zero rule, what only the second square covers is filled too. The two parts meet in
    // two corners, of which one each is moved by 2 units.
    EXPECT_NEAR(AreaOf(*repaired), 15000, 300);
}

TEST(OutlineRepair, ASquareInsideAnotherOfTheSameDirectionVanishes)
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
    // Two triangles of 2500, of which the vertices in the middle may be moved by 2 units.
    EXPECT_NEAR(AreaOf(*repaired), 5000, 250);
}

TEST(OutlineRepair, AnArrowWhoseInnerEdgesCrossIsRepairedFromWhicheverVertexItStarts)
{
    // Seen from either of the last two vertices, its whole border turns one way.
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

TEST(OutlineRepair, AContourThatTouchesItselfComesOutRight)
{
    // Two squares joined at a corner by one contour
    const NativeOutline outline = MakeOutline(
        {{{0, 0}, {0, 100}, {100, 100}, {100, 200}, {200, 200}, {200, 100}, {100, 100}, {100, 0}}});
    const ProvidedOutline provided = ProvideOutline(outline, false, em);
    EXPECT_FALSE(provided.isFailed);
    const NativeOutline& given = provided.outline ? *provided.outline : outline;
    EXPECT_TRUE(TryOutline(given, em).fills);
    EXPECT_NEAR(AreaOf(given), 20000, 500);
}

TEST(OutlineRepair, CurvesStayCurvesAndStayWhereTheyAre)
{
    const NativeOutline outline = MakeOutline({RoundAt(0, 0, 300), RoundAt(400, 0, 300)});
    const auto repaired = RepairOutline(outline, em);
    ASSERT_TRUE(repaired);
    EXPECT_EQ(repaired->ends.size(), 1u);
    // Two crossings and the six ends of whole pieces; between them as many splines as points.
    const auto onCurve = std::count_if(repaired->points.begin(), repaired->points.end(),
                                       [](const NativePoint& point) { return point.onCurve; });
    EXPECT_EQ(repaired->points.size() - static_cast<std::size_t>(onCurve), 8u);
    // Each vertex lies on one of the two outlines, up to the rounding of ends and control points.
    const FlatOutline fine = Flatten(*repaired, em);
    for (const FlatVertex& vertex : fine.vertices)
    {
        double nearest = 1e9;
        for (const double centre : {0.0, 400.0})
        {
            // For a spline from (r, 0) over (r, r) to (0, r): sqrt(1 - x/r) + sqrt(1 - y/r) = 1.
            const double x = std::min(std::fabs(vertex.point.x - centre) / 300, 1.0);
            const double y = std::min(std::fabs(vertex.point.y / 300.0), 1.0);
            nearest = std::min(nearest, std::fabs(std::sqrt(1 - x) + std::sqrt(1 - y) - 1));
        }
        EXPECT_LT(nearest, 0.06) << vertex.point.x << ' ' << vertex.point.y;
    }
}

TEST(OutlineRepair, ContoursThatTouchInACornerAreDrawnApart)
{
    // A bar with arms and a stroke that begins at the corner of one, at (502, 360)
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
    // The bar's corner has moved by a unit or two; nothing else has.
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

TEST(OutlineRepair, CurvesThatTwoPassesKeepAreJudgedByTheAreaOfTenSamples)
{
    // A deep curve whose cut pieces, rounded, cross again, so that only a second pass brings them
    // apart. Cut, the curve is flattened more finely: five samples of it whole enclose so much less
    // that what has become of it would be taken for spoilt, and straight lines for better.
    const NativeOutline outline =
        MakeOutline({{{553, 53}, {22, 642, false}, {493, 237}, {511, 283}, {259, 369}}});
    ASSERT_FALSE(TryOutline(outline, em).fills);
    const auto repaired = RepairOutline(outline, em);
    ASSERT_TRUE(repaired);
    EXPECT_TRUE(HasCurves(*repaired));
    EXPECT_TRUE(TryOutline(*repaired, em).fills);
}

TEST(OutlineRepair, WhatIsRepairedPassesAndFillsTheSame)
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
        // The pieces are flattened more finely where they were cut.
        EXPECT_NEAR(AreaOf(*repaired), whole, 0.03 * whole) << turn;
        ++repairedCount;
    }
    EXPECT_GT(repairedCount, 100);
}

TEST(FaceOutlines, ACleanOutlineIsHandedOverUntouched)
{
    const ProvidedOutline provided =
        ProvideOutline(MakeOutline({RoundAt(0, 0, 300), RoundAt(0, 0, 200, true)}), false, em);
    EXPECT_FALSE(provided.outline);
    EXPECT_FALSE(provided.isRepaired || provided.isTurned || provided.isConverted ||
                 provided.isFailed);
}

TEST(FaceOutlines, ContoursTheWrongWayAreTurnedAndNothingElse)
{
    const ProvidedOutline provided =
        ProvideOutline(MakeOutline({RoundAt(0, 0, 300, true), SquareAt(-50, -50, 100)}), false, em);
    EXPECT_TRUE(provided.isTurned);
    EXPECT_FALSE(provided.isRepaired || provided.isFailed);
    ASSERT_TRUE(provided.outline);
    EXPECT_EQ(*provided.outline, MakeOutline({RoundAt(0, 0, 300), SquareAt(-50, -50, 100, true)}));
}

TEST(FaceOutlines, WhatNoRepairHelpsIsFilledOnTrialThoughItsEdgesCross)
{
    // Two small triangles that cross, with corners a unit or two apart: what is left after rounding
    // crosses again. The tessellator fills them all the same.
    const NativeOutline triangles =
        MakeOutline({{{12, 11}, {4, 17}, {11, 17}}, {{11, 20}, {14, 8}, {10, 19}}});
    const OutlineVerdict verdict = TryOutline(triangles, em);
    ASSERT_TRUE(!verdict.fills && verdict.isPresumed);
    ASSERT_FALSE(RepairOutline(triangles, em));
    ASSERT_GT(OddArea(FlattenAndSeparate(triangles, em)), 0);
    const ProvidedOutline provided = ProvideOutline(triangles, false, em);
    EXPECT_FALSE(provided.isFailed || provided.isRepaired || provided.isTurned);
    EXPECT_FALSE(provided.outline);
}

TEST(FaceOutlines, WhatCannotBeRepairedIsHandedOverAsItIs)
{
    std::vector<OutlineAt> scribble;
    for (int n = 0; n < 1000; ++n)
    {
        scribble.push_back({n % 2 == 0 ? 0 : 9000, (n * 7919) % 9001});
    }
    const ProvidedOutline provided = ProvideOutline(MakeOutline({scribble}), false, em);
    EXPECT_TRUE(provided.isFailed);
    EXPECT_FALSE(provided.outline);
}

TEST(FaceOutlines, AnythingIsTakenWithoutHarm)
{
    std::mt19937 random(3);
    for (int turn = 0; turn < 400; ++turn)
    {
        NativeOutline outline;
        for (int contour = 0; contour < turn % 5; ++contour)
        {
            for (std::uint32_t n = 0; n < 1 + random() % 12; ++n)
            {
                // Beyond 16 bits too, which wrap
                const auto coordinate = [&] {
                    return static_cast<std::int32_t>(random()) >> (random() % 20);
                };
                outline.points.push_back({coordinate(), coordinate(), n == 0 || random() % 2 == 0});
            }
            outline.CloseContour();
        }
        const ProvidedOutline provided = ProvideOutline(outline, turn % 2 == 0, em);
        EXPECT_TRUE(!provided.outline || provided.isConverted || provided.isRepaired ||
                    provided.isTurned);
    }
}

}  // namespace
