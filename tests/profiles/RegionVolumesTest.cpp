// SPDX-License-Identifier: MIT
// The judge of volumes, with shapes whose volumes are known.
#include "tests/support/RegionVolumes.h"

#include <gtest/gtest.h>

using namespace orvane;

namespace
{

constexpr double depth = 0.25;

PlaneRegion Rectangle(double width, double height)
{
    return {{{{0, 0}, {width, 0}, {width, height}, {0, height}}}};
}

double VolumeOf(const PlaneRegion& region, const std::string& profile, double width)
{
    return RegionVolumes(region).Of(NamedProfile(profile, width), depth);
}

}  // namespace

// Moved by d, the square has the area (0.5 + 2 d)^2.

TEST(RegionVolumes, ASquareThatGrows)
{
    // (0.66^3 - 0.5^3) / 6 for the chamfer, and 0.17 x 0.66^2 for the rest.
    EXPECT_NEAR(VolumeOf(Rectangle(0.5, 0.5), "chamfer", 0.08), 0.101134667, 1e-6);
}

TEST(RegionVolumes, ASquareWithSteps)
{
    // 0.04 x 0.34^2 + 0.04 x 0.42^2 + 0.17 x 0.5^2
    EXPECT_NEAR(VolumeOf(Rectangle(0.5, 0.5), "step", -0.08), 0.05418, 1e-6);
}

TEST(RegionVolumes, APyramidOnASquare)
{
    // 0.5^2 x 0.04 / 3 above 0.21 x 0.5^2
    EXPECT_NEAR(VolumeOf(Rectangle(0.5, 0.5), "chisel", 0.04), 0.0558333, 1e-5);
}

TEST(RegionVolumes, ABarThatVanishesBetweenTwoSlices)
{
    // The integral of (1 - 2 d)(0.065 - 2 d) to 0.0325, and 0.17 x 0.065.
    EXPECT_NEAR(VolumeOf(Rectangle(1, 0.065), "chamfer", -0.08), 0.0120833646, 1e-5);
}

TEST(RegionVolumes, NothingHasNoVolume)
{
    EXPECT_EQ(VolumeOf({}, "chisel", 0.04), 0);
    EXPECT_EQ(VolumeOf({}, "round", 0.04), 0);
}
