// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Comparisons of points, vectors and colours in tests. EXPECT_XY, EXPECT_XYZ and EXPECT_RGBA
/// compare exactly; EXPECT_XYZ_NEAR allows a distance on each axis.

#include <gtest/gtest.h>

// The value is evaluated once.
#define EXPECT_XY(value, expectedX, expectedY) \
    do                                         \
    {                                          \
        const auto xy = (value);               \
        EXPECT_EQ(xy.x, expectedX) << #value;  \
        EXPECT_EQ(xy.y, expectedY) << #value;  \
    } while (false)

#define EXPECT_XYZ(value, expectedX, expectedY, expectedZ) \
    do                                                     \
    {                                                      \
        const auto xyz = (value);                          \
        EXPECT_EQ(xyz.x, expectedX) << #value;             \
        EXPECT_EQ(xyz.y, expectedY) << #value;             \
        EXPECT_EQ(xyz.z, expectedZ) << #value;             \
    } while (false)

#define EXPECT_XYZ_NEAR(value, expectedX, expectedY, expectedZ, distance) \
    do                                                                    \
    {                                                                     \
        const auto xyz = (value);                                         \
        EXPECT_NEAR(xyz.x, expectedX, distance) << #value;                \
        EXPECT_NEAR(xyz.y, expectedY, distance) << #value;                \
        EXPECT_NEAR(xyz.z, expectedZ, distance) << #value;                \
    } while (false)

#define EXPECT_RGBA(value, expectedRed, expectedGreen, expectedBlue, expectedAlpha) \
    do                                                                              \
    {                                                                               \
        const auto rgba = (value);                                                  \
        EXPECT_EQ(rgba.red, expectedRed) << #value;                                 \
        EXPECT_EQ(rgba.green, expectedGreen) << #value;                             \
        EXPECT_EQ(rgba.blue, expectedBlue) << #value;                               \
        EXPECT_EQ(rgba.alpha, expectedAlpha) << #value;                             \
    } while (false)
