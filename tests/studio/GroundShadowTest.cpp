// SPDX-License-Identifier: MIT
#include "studio/GroundShadow.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numeric>

namespace
{

using orvane::MakeShadow;
using orvane::ShadowMap;
using orvane::TriangleCorners;

/// A square of side 1 at a height, its middle over the origin.
TriangleCorners Square(float height)
{
    return {-0.5f, height, -0.5f, 0.5f, height, -0.5f, 0.5f,  height, 0.5f,
            -0.5f, height, -0.5f, 0.5f, height, 0.5f,  -0.5f, height, 0.5f};
}

int At(const ShadowMap& map, double x, double z)
{
    const int column = static_cast<int>((x - map.left) / map.width * map.columns);
    const int row = static_cast<int>((z - map.far) / map.height * map.rows);
    return map.pixels[static_cast<std::size_t>(row * map.columns + column)];
}

/// The area that has no light; half of the light counts as half of the area.
double DarkArea(const ShadowMap& map)
{
    const double sum = std::accumulate(map.pixels.begin(), map.pixels.end(), 0.0);
    return sum / 255 * map.width * map.height / (map.columns * map.rows);
}

TEST(GroundShadow, WhatLiesOnTheGroundTakesAllLightFromBelowIt)
{
    const ShadowMap map = MakeShadow(Square(2), 2);
    EXPECT_EQ(At(map, 0, 0), 255);
    EXPECT_EQ(At(map, 0.48, -0.48), 255);
    EXPECT_EQ(map.pixels.front(), 0);
    EXPECT_NEAR(DarkArea(map), 1, 0.01);
}

TEST(GroundShadow, AHigherSquareHasASofterShadowOfTheSameArea)
{
    const ShadowMap low = MakeShadow(Square(0.25f), 0);
    const ShadowMap high = MakeShadow(Square(2), 0);
    EXPECT_NEAR(DarkArea(low), 1, 0.01);
    EXPECT_NEAR(DarkArea(high), 1, 0.01);
    const auto halfLit = [](const ShadowMap& map) {
        const auto count = std::count_if(map.pixels.begin(), map.pixels.end(),
                                         [](int pixel) { return pixel > 20 && pixel < 235; });
        return static_cast<double>(count) * map.width * map.height / (map.columns * map.rows);
    };
    EXPECT_GT(halfLit(high), 3 * halfLit(low));
}

TEST(GroundShadow, TheLampHangsInFrontAndToTheLeft)
{
    const ShadowMap map = MakeShadow(Square(2), 0);
    EXPECT_GT(map.left + map.width / 2, 0);  // the shadow falls to the right
    EXPECT_LT(map.far + map.height / 2, 0);  // and to the back
}

TEST(GroundShadow, BordersOfTheMapAreFree)
{
    const ShadowMap map = MakeShadow(Square(0.5f), 0);
    for (int column = 0; column < map.columns; ++column)
    {
        EXPECT_EQ(map.pixels[static_cast<std::size_t>(column)], 0);
        EXPECT_EQ(map.pixels[map.pixels.size() - 1 - static_cast<std::size_t>(column)], 0);
    }
}

TEST(GroundShadow, NothingAndNumbersThatAreNoneHaveNoShadow)
{
    EXPECT_TRUE(MakeShadow({}, 0).pixels.empty());
    const float infinite = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(MakeShadow({0, 0, 0, infinite, 0, 0, 0, 0, 1}, 0).pixels.empty());
}

}  // namespace
