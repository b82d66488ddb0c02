// SPDX-License-Identifier: MIT
#include "profiles/PlaneRegion.h"

#include "extrude/OrvGlyph.h"
#include "orvane/Error.h"
#include "tests/support/GlyphShapes.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace orvane;

namespace
{

double AreaOf(const PlaneRegion& region)
{
    double twice = 0;
    for (const auto& contour : region.contours)
    {
        for (std::size_t i = 0; i < contour.size(); ++i)
        {
            twice += Cross(contour[i], contour[(i + 1) % contour.size()]);
        }
    }
    return twice / 2;
}

const PlaneRegion square = {{{{0, 0}, {0, 1}, {1, 1}, {1, 0}}}};
const PlaneRegion turned = {{{{0, 0}, {1, 0}, {1, 1}, {0, 1}}}};

}  // namespace

TEST(PlaneRegion, OfAGlyphIsInEms)
{
    OrvGlyph glyph(0, GLYPHMETRICS{});
    ASSERT_EQ(glyph.ConstructGlyph(SquareWithHoleGlyph(), 2000), 1);
    const PlaneRegion region = RegionOf(glyph);
    ASSERT_EQ(region.contours.size(), 2u);
    EXPECT_EQ(region.contours[0].size(), 4u);
    // Clockwise, with a hole that runs the other way.
    EXPECT_NEAR(AreaOf(region), -(0.5 * 0.5 - 0.25 * 0.25), 1e-6);
}

TEST(JoinRegions, OverlappingRegionsBecomeOneArea)
{
    const std::vector<PlacedRegion> placed = {
        {&square, {0, 0}}, {&square, {0.5, 0.5}}, {&square, {3, 0}}};
    const PlaneRegion joined = JoinRegions(placed);
    EXPECT_EQ(joined.contours.size(), 2u);
    EXPECT_NEAR(AreaOf(joined), 1 + 1 - 0.25 + 1, 1e-5);
}

TEST(JoinRegions, RegionsWhoseContoursRunOppositeWaysDoNotCancelOut)
{
    const std::vector<PlacedRegion> placed = {{&square, {0, 0}}, {&turned, {0.5, 0}}};
    EXPECT_NEAR(AreaOf(JoinRegions(placed)), 1.5, 1e-5);
}

TEST(JoinRegions, AHoleStaysUnlessAnotherRegionCoversIt)
{
    const PlaneRegion frame = {
        {{{0, 0}, {0, 1}, {1, 1}, {1, 0}}, {{0.4, 0.4}, {0.6, 0.4}, {0.6, 0.6}, {0.4, 0.6}}}};
    const std::vector<PlacedRegion> alone = {{&frame, {2, 3}}};
    EXPECT_NEAR(AreaOf(JoinRegions(alone)), 0.96, 1e-5);
    const std::vector<PlacedRegion> covered = {{&frame, {2, 3}}, {&square, {2.5, 3}}};
    EXPECT_NEAR(AreaOf(JoinRegions(covered)), 1.5 - 0.1 * 0.2, 1e-5);
}

TEST(JoinRegions, NothingMakesAnEmptyRegion)
{
    EXPECT_TRUE(JoinRegions({}).contours.empty());
}

TEST(JoinRegions, PlacesThatAreNoNumbersAreRefused)
{
    const std::vector<PlacedRegion> placed = {{&square, {std::nan(""), 0}}};
    EXPECT_THROW(JoinRegions(placed), Error);
}
