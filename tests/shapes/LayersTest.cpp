// SPDX-License-Identifier: MIT
#include "shapes/Layers.h"

#include <gtest/gtest.h>

#include <random>

using namespace orvane::shapes;

namespace
{

/// Runs counter-clockwise.
Contour Rectangle(double left, double low, double right, double high)
{
    return {{left, low}, {right, low}, {right, high}, {left, high}};
}

Contour Reversed(Contour contour)
{
    return {contour.rbegin(), contour.rend()};
}

std::vector<Contours> Visible(const std::vector<Layer>& layers, std::size_t colors,
                              const std::vector<Clip>& clips = {}, double step = 1.0 / 1024)
{
    WorkLimit work("test", 100'000'000);
    return VisibleAreas(layers, clips, colors, step, work);
}

double TotalArea(const Contours& contours)
{
    double area = 0;
    for (const Contour& contour : contours)
    {
        area += SignedArea(contour);
    }
    return area;
}

Layer Painted(Contours contours, int color, FillRule rule = FillRule::NonZero, int clip = -1)
{
    return {std::move(contours), rule, color, clip};
}

}  // namespace

TEST(Layers, OverlappingAreasOfOneColourBecomeOne)
{
    const auto areas = Visible(
        {Painted({Rectangle(0, 0, 4, 4)}, 0), Painted({Reversed(Rectangle(2, 2, 6, 6))}, 0)}, 1);
    ASSERT_EQ(areas[0].size(), 1u);
    EXPECT_EQ(areas[0][0].size(), 8u);
    EXPECT_DOUBLE_EQ(TotalArea(areas[0]), 16 + 16 - 4);
}

TEST(Layers, ALaterColourCutsAwayWhatItCovers)
{
    const auto areas =
        Visible({Painted({Rectangle(0, 0, 4, 4)}, 0), Painted({Rectangle(2, 2, 6, 6)}, 1)}, 2);
    EXPECT_DOUBLE_EQ(TotalArea(areas[0]), 16 - 4);
    EXPECT_DOUBLE_EQ(TotalArea(areas[1]), 16);
    ASSERT_EQ(areas[0].size(), 1u);
    EXPECT_EQ(areas[0][0].size(), 6u);
}

TEST(Layers, AColourThatIsCoveredEntirelyHasNoContours)
{
    const auto areas =
        Visible({Painted({Rectangle(1, 1, 2, 2)}, 0), Painted({Rectangle(0, 0, 4, 4)}, 1)}, 2);
    EXPECT_TRUE(areas[0].empty());
    EXPECT_EQ(areas[1].size(), 1u);
}

TEST(Layers, HolesRunClockwiseAndOuterContoursCounterClockwise)
{
    const auto areas =
        Visible({Painted({Rectangle(0, 0, 9, 9), Rectangle(3, 3, 6, 6)}, 0, FillRule::EvenOdd)}, 1);
    ASSERT_EQ(areas[0].size(), 2u);
    EXPECT_DOUBLE_EQ(TotalArea(areas[0]), 81 - 9);
    EXPECT_LT(SignedArea(areas[0][0]) * SignedArea(areas[0][1]), 0);
}

TEST(Layers, TheRuleDecidesWhatContoursThatOverlapFill)
{
    const Contours twice = {Rectangle(0, 0, 4, 4), Rectangle(2, 0, 6, 4)};
    EXPECT_DOUBLE_EQ(TotalArea(Visible({Painted(twice, 0)}, 1)[0]), 24);
    EXPECT_DOUBLE_EQ(TotalArea(Visible({Painted(twice, 0, FillRule::EvenOdd)}, 1)[0]), 16);
    const Contours against = {Rectangle(0, 0, 4, 4), Reversed(Rectangle(2, 0, 6, 4))};
    EXPECT_DOUBLE_EQ(TotalArea(Visible({Painted(against, 0)}, 1)[0]), 16);
}

TEST(Layers, ABowTieBecomesTwoTrianglesThatTouch)
{
    const auto areas = Visible({Painted({{{0, 0}, {4, 4}, {4, 0}, {0, 4}}}, 0)}, 1);
    ASSERT_EQ(areas[0].size(), 2u);
    EXPECT_DOUBLE_EQ(SignedArea(areas[0][0]), 4);
    EXPECT_DOUBLE_EQ(SignedArea(areas[0][1]), 4);
}

TEST(Layers, SquaresThatTouchAtACornerStayApart)
{
    const auto areas = Visible({Painted({Rectangle(0, 0, 1, 1), Rectangle(1, 1, 2, 2)}, 0)}, 1);
    ASSERT_EQ(areas[0].size(), 2u);
    EXPECT_EQ(areas[0][0].size(), 4u);
}

TEST(Layers, SquaresSideBySideAreJoinedAndTheirCommonCornersVanish)
{
    const auto areas = Visible({Painted({Rectangle(0, 0, 1, 1), Rectangle(1, 0, 2, 1)}, 0)}, 1);
    ASSERT_EQ(areas[0].size(), 1u);
    EXPECT_EQ(areas[0][0].size(), 4u);
}

TEST(Layers, AHoleThatTouchesTheBorderAtACornerIsAContourOfItsOwn)
{
    // The hole's lowest corner lies on the lower edge of the square.
    const auto areas = Visible(
        {Painted({Rectangle(0, 0, 8, 8), {{4, 0}, {6, 2}, {4, 4}, {2, 2}}}, 0, FillRule::EvenOdd)},
        1);
    ASSERT_EQ(areas[0].size(), 2u);
    EXPECT_DOUBLE_EQ(TotalArea(areas[0]), 64 - 8);
    EXPECT_LT(SignedArea(areas[0][0]) * SignedArea(areas[0][1]), 0);
}

TEST(Layers, AClipHidesWhatLiesOutsideOfAllOfItsLayers)
{
    const std::vector<Layer> layers = {Painted({Rectangle(0, 0, 2, 2)}, -1),
                                       Painted({Rectangle(4, 0, 6, 2)}, -1),
                                       Painted({Rectangle(1, 1, 5, 5)}, 0, FillRule::NonZero, 0)};
    // Of the two layers of the clip, 1 square each lies inside of the painted one.
    EXPECT_DOUBLE_EQ(TotalArea(Visible(layers, 1, {{0, 2, -1}})[0]), 2);
    // A clip without layers hides all.
    EXPECT_TRUE(Visible(layers, 1, {{0, 0, -1}})[0].empty());
}

TEST(Layers, AClipIsClippedByItsOuterClip)
{
    const std::vector<Layer> layers = {Painted({Rectangle(0, 0, 4, 4)}, -1),
                                       Painted({Rectangle(2, 0, 9, 9)}, -1),
                                       Painted({Rectangle(0, 0, 9, 3)}, 0, FillRule::NonZero, 1)};
    EXPECT_DOUBLE_EQ(TotalArea(Visible(layers, 1, {{0, 1, -1}, {1, 1, 0}})[0]), 2 * 3);
}

TEST(Layers, RandomLayersCoverWhatAPointByPointSearchFinds)
{
    std::mt19937 random(7);
    std::uniform_int_distribution<int> coordinate(0, 16);
    for (int round = 0; round < 40; ++round)
    {
        std::vector<Layer> layers;
        for (int i = 0; i < 6; ++i)
        {
            Contour contour;
            for (int corner = 0; corner < 5; ++corner)
            {
                contour.push_back({coordinate(random) / 1.0, coordinate(random) / 1.0});
            }
            layers.push_back(
                Painted({contour}, i % 3, i % 2 == 0 ? FillRule::NonZero : FillRule::EvenOdd));
        }
        const auto areas = Visible(layers, 3, {}, 1.0 / (1 << 20));
        const auto windingOf = [](const Contours& contours, double x, double y) {
            int winding = 0;
            for (const Contour& contour : contours)
            {
                for (std::size_t i = 0; i < contour.size(); ++i)
                {
                    const auto& a = contour[i];
                    const auto& b = contour[(i + 1) % contour.size()];
                    if ((a.y <= y) != (b.y <= y) && x < a.x + (y - a.y) * (b.x - a.x) / (b.y - a.y))
                    {
                        winding += a.y <= y ? 1 : -1;
                    }
                }
            }
            return winding;
        };
        // At these places no edge passes closer than the grid's step.
        for (double y = 0.2371; y < 16; y += 1.13)
        {
            for (double x = 0.1931; x < 16; x += 0.97)
            {
                int expected = -1;
                for (const Layer& layer : layers)
                {
                    const int winding = windingOf(layer.contours, x, y);
                    if (layer.rule == FillRule::NonZero ? winding != 0 : winding % 2 != 0)
                    {
                        expected = layer.color;
                    }
                }
                for (int color = 0; color < 3; ++color)
                {
                    EXPECT_EQ(windingOf(areas[color], x, y), color == expected ? 1 : 0)
                        << "round " << round << ", color " << color << " at " << x << ", " << y;
                }
            }
        }
    }
}
