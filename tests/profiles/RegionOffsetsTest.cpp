// SPDX-License-Identifier: MIT
#include "profiles/RegionOffsets.h"

#include "orvane/Error.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

using namespace orvane;
using namespace orvane::profiles;

namespace
{

/// Square ems.
double AreaOf(const Ring& ring, double unitsPerEm)
{
    double twice = 0;
    for (const RingEdge& edge : ring.edges)
    {
        const GridPoint& a = ring.points[static_cast<std::size_t>(edge.from)];
        const GridPoint& b = ring.points[static_cast<std::size_t>(edge.to)];
        twice += static_cast<double>(a.x) * b.y - static_cast<double>(a.y) * b.x;
    }
    return twice / 2 / (unitsPerEm * unitsPerEm);
}

double AreaAt(const RegionOffsets& offsets, double ems)
{
    return AreaOf(offsets.At(ems * offsets.UnitsPerEm()), offsets.UnitsPerEm());
}

/// A unit square, running clockwise as fonts have it.
const PlaneRegion square = {{{{0, 0}, {0, 1}, {1, 1}, {1, 0}}}};
/// A hole of a tenth in a unit square; both contours run the same way, so only the hole's direction
/// makes it one.
const PlaneRegion frame = {
    {{{0, 0}, {0, 1}, {1, 1}, {1, 0}}, {{0.45, 0.45}, {0.55, 0.45}, {0.55, 0.55}, {0.45, 0.55}}}};
/// A spike 1 high and 0.1 wide at its foot. The turn at its tip is 174 degrees.
const PlaneRegion spike = {{{{0, 0}, {0.05, 1}, {0.1, 0}}}};

}  // namespace

TEST(RegionOffsets, ASquareGrowsAndShrinksByTheOffsetOnEverySide)
{
    const RegionOffsets offsets(square, ProfileCorners::Mitred, 0.5);
    EXPECT_EQ(offsets.UnitsPerEm(), 262144);
    EXPECT_NEAR(AreaAt(offsets, 0), 1, 1e-9);
    EXPECT_NEAR(AreaAt(offsets, 0.25), 1.5 * 1.5, 1e-5);
    EXPECT_NEAR(AreaAt(offsets, -0.25), 0.5 * 0.5, 1e-5);
    EXPECT_TRUE(offsets.At(-0.5 * offsets.UnitsPerEm()).edges.empty());
    EXPECT_TRUE(offsets.At(-2 * offsets.UnitsPerEm()).edges.empty());
}

TEST(RegionOffsets, RoundCornersAreArcs)
{
    const RegionOffsets offsets(square, ProfileCorners::Round, 0.25);
    const double round = 1 + 4 * 0.25 + std::numbers::pi * 0.25 * 0.25;
    // The chords of the arcs lie at most 0.0005 em inside of the circle.
    EXPECT_LT(AreaAt(offsets, 0.25), round);
    EXPECT_GT(AreaAt(offsets, 0.25), round - 0.0005 * 2 * std::numbers::pi * 0.25);
    // Inward, corners that point out stay corners.
    EXPECT_NEAR(AreaAt(offsets, -0.25), 0.25, 1e-5);
}

TEST(RegionOffsets, HolesCloseWhenTheAreaGrows)
{
    const RegionOffsets offsets(frame, ProfileCorners::Mitred, 0.1);
    EXPECT_NEAR(AreaAt(offsets, 0.02), 1.04 * 1.04 - 0.06 * 0.06, 1e-5);
    EXPECT_NEAR(AreaAt(offsets, 0.06), 1.12 * 1.12, 1e-5);
    EXPECT_NEAR(AreaAt(offsets, -0.1), 0.8 * 0.8 - 0.3 * 0.3, 1e-5);
}

TEST(RegionOffsets, TipsBeyond4OffsetsAreCutOffAtTheOffset)
{
    const RegionOffsets offsets(spike, ProfileCorners::Mitred, 0.1);
    const Ring ring = offsets.At(0.1 * offsets.UnitsPerEm());
    const auto highest =
        std::max_element(ring.points.begin(), ring.points.end(),
                         [](const GridPoint& a, const GridPoint& b) { return a.y < b.y; });
    // Uncut, the tip would lie at 1 + 0.1 / sin(2.86 degrees), at about 3.
    EXPECT_NEAR(highest->y / offsets.UnitsPerEm(), 1.1, 1e-5);
}

TEST(RegionOffsets, LargerOffsetsContainSmallerOnes)
{
    for (const PlaneRegion* region : {&square, &frame, &spike})
    {
        for (const ProfileCorners corners : {ProfileCorners::Mitred, ProfileCorners::Round})
        {
            const RegionOffsets offsets(*region, corners, 0.1);
            double last = 0;
            for (int i = -50; i <= 50; ++i)
            {
                const double area = AreaAt(offsets, 0.002 * i);
                EXPECT_GE(area, last);
                last = area;
            }
        }
    }
}

TEST(RegionOffsets, LargeRegionsHaveACoarserGrid)
{
    PlaneRegion row = square;
    row.contours.push_back({{1000, 0}, {1000, 1}, {1001, 1}, {1001, 0}});
    const RegionOffsets offsets(row, ProfileCorners::Mitred, 0.1);
    // 1001.4 ems fit 2 to the 23rd units when there are 8192 in an em.
    EXPECT_EQ(offsets.UnitsPerEm(), 8192);
    EXPECT_NEAR(AreaAt(offsets, 0.1), 2 * 1.2 * 1.2, 0.002);
}

TEST(RegionOffsets, RegionsBeyondTheLimitAndCoordinatesThatAreNoNumbersAreRefused)
{
    const auto reaching = [](double x) { return PlaneRegion{{{{0, 0}, {0, 1}, {x, 1}, {x, 0}}}}; };
    EXPECT_NO_THROW(RegionOffsets(reaching(16000), ProfileCorners::Mitred, 10));
    EXPECT_THROW(RegionOffsets(reaching(16001), ProfileCorners::Mitred, 10), Error);
    EXPECT_THROW(RegionOffsets(reaching(std::nan("")), ProfileCorners::Mitred, 0.1), Error);
    EXPECT_THROW(RegionOffsets(reaching(HUGE_VAL), ProfileCorners::Mitred, 0.1), Error);
}
