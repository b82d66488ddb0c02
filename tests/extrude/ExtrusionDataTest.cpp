// SPDX-License-Identifier: MIT
#include "extrude/ExtrusionData.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <type_traits>

namespace
{
void ExpectEqual(const ExtrusionData& actual, const ExtrusionData& expected)
{
    EXPECT_EQ(actual.backBevelZ, expected.backBevelZ);
    EXPECT_EQ(actual.backZ, expected.backZ);
    EXPECT_EQ(actual.backRoundZ, expected.backRoundZ);
    EXPECT_EQ(actual.bevelDepth, expected.bevelDepth);
    EXPECT_EQ(actual.flags, expected.flags);
    EXPECT_EQ(actual.frontBevelZ, expected.frontBevelZ);
    EXPECT_EQ(actual.frontZ, expected.frontZ);
    EXPECT_EQ(actual.frontRoundZ, expected.frontRoundZ);
    EXPECT_EQ(actual.scale.x, expected.scale.x);
    EXPECT_EQ(actual.scale.y, expected.scale.y);
    EXPECT_EQ(actual.scale.z, expected.scale.z);
    EXPECT_EQ(actual.textureRepeat, expected.textureRepeat);
}

ExtrusionData AllDifferent()
{
    ExtrusionData data;
    data.backBevelZ = 1;
    data.backZ = 2;
    data.backRoundZ = 3;
    data.bevelDepth = 4;
    data.flags = 5;
    data.frontBevelZ = 6;
    data.frontZ = 7;
    data.frontRoundZ = 8;
    data.scale = Vector(9, 10, 11);
    data.textureRepeat = 12;
    return data;
}
}  // namespace

TEST(ExtrusionData, NewDataHasDepthOneNoBevelAndAllLevelsAtZero)
{
    const ExtrusionData data;
    EXPECT_EQ(data.backBevelZ, 0.0f);
    EXPECT_EQ(data.backZ, 0.0f);
    EXPECT_EQ(data.backRoundZ, 0.0f);
    EXPECT_EQ(data.bevelDepth, 0.0f);
    EXPECT_EQ(data.flags, 0u);
    EXPECT_EQ(data.frontBevelZ, 0.0f);
    EXPECT_EQ(data.frontZ, 0.0f);
    EXPECT_EQ(data.frontRoundZ, 0.0f);
    EXPECT_EQ(data.scale.x, 1.0f);
    EXPECT_EQ(data.scale.y, 1.0f);
    EXPECT_EQ(data.scale.z, 1.0f);
    EXPECT_EQ(data.textureRepeat, 1.0f);
}

TEST(ExtrusionData, WithoutABevelAllBackLevelsAreAtTheBackFaceAndAllFrontLevelsAtZero)
{
    ExtrusionData data;
    EXPECT_EQ(data.CalculateHeights(), 1);
    EXPECT_EQ(data.backZ, -1.0f);
    EXPECT_EQ(data.backBevelZ, -1.0f);
    EXPECT_EQ(data.backRoundZ, -1.0f);
    EXPECT_EQ(data.frontZ, 0.0f);
    EXPECT_EQ(data.frontBevelZ, 0.0f);
    EXPECT_EQ(data.frontRoundZ, 0.0f);
}

TEST(ExtrusionData, BevelLevelsLieOneWidthAndRoundLevels02929WidthsInsideTheFaces)
{
    ExtrusionData data;
    data.bevelDepth = 0.1f;
    EXPECT_EQ(data.CalculateHeights(), 1);
    EXPECT_EQ(data.backZ, -1.0f);
    EXPECT_EQ(data.backBevelZ, -0.9f);
    EXPECT_NEAR(data.backRoundZ, -0.97071f, 1e-7f);
    EXPECT_EQ(data.frontZ, 0.0f);
    EXPECT_EQ(data.frontBevelZ, -0.1f);
    EXPECT_NEAR(data.frontRoundZ, -0.02929f, 1e-7f);
}

TEST(ExtrusionData, TheRoundLevelOfAWidthOfOneHasExactlyTheBitsOfTheConstant)
{
    ExtrusionData data;
    data.bevelDepth = 1;
    data.scale.z = 0;
    data.CalculateHeights();
    EXPECT_EQ(std::bit_cast<std::uint32_t>(data.backRoundZ), 0x3E95F6FEu);
    EXPECT_EQ(std::bit_cast<std::uint32_t>(data.frontRoundZ), 0xBE95F6FEu);
}

// The constant is 9828094 / 2^25, and the width in this test is 2^24 - 1. Their product is
// 4914046.7071; minus the depth it is 0.7071. If the product were rounded to a float first, it
// would be 4914046.5; minus the depth it would be 0.5.
TEST(ExtrusionData, EachLevelIsRoundedToAFloatOnceAtTheEnd)
{
    ExtrusionData data;
    data.bevelDepth = 16777215;
    data.scale.z = 4914046;
    data.CalculateHeights();
    EXPECT_EQ(data.backRoundZ, static_cast<float>(164888046078210.0 / 33554432 - 4914046));
    EXPECT_NE(data.backRoundZ, 0.5f);
}

TEST(ExtrusionData, EachOptionChangesOnlyItsOwnBitAndItsTestReturnsThatBit)
{
    ExtrusionData data;
    data.SetScaleBevels();
    EXPECT_EQ(data.flags, 1u);
    EXPECT_EQ(data.ShouldScaleBevels(), 1);
    data.SetTexture();
    EXPECT_EQ(data.flags, 3u);
    EXPECT_EQ(data.ShouldTexture(), 2);
    data.SetScaleTextureWithObject();
    EXPECT_EQ(data.flags, 7u);
    EXPECT_EQ(data.ShouldScaleTextureWithObject(), 4);

    data.flags = 0xFFFFFFFF;
    data.ClearScaleBevels();
    EXPECT_EQ(data.flags, 0xFFFFFFFEu);
    EXPECT_EQ(data.ShouldScaleBevels(), 0);
    data.ClearTexture();
    EXPECT_EQ(data.flags, 0xFFFFFFFCu);
    EXPECT_EQ(data.ShouldTexture(), 0);
    data.ClearScaleTextureWithObject();
    EXPECT_EQ(data.flags, 0xFFFFFFF8u);
    EXPECT_EQ(data.ShouldScaleTextureWithObject(), 0);
}

TEST(ExtrusionData, ShouldTextureReturnsOnlyItsOwnBit)
{
    ExtrusionData data;
    data.flags = 0x6;
    EXPECT_EQ(data.ShouldTexture(), 2);
}

TEST(ExtrusionData, SetTextureRepeatStoresTheFactor)
{
    ExtrusionData data;
    data.SetTextureRepeat(2.5f);
    EXPECT_EQ(data.textureRepeat, 2.5f);
}

TEST(ExtrusionData, CopiesHaveAllTenFields)
{
    const ExtrusionData source = AllDifferent();
    const ExtrusionData copy(source);
    ExpectEqual(copy, source);
    ExtrusionData assigned;
    ExtrusionData& result = assigned = source;
    EXPECT_EQ(&result, &assigned);
    ExpectEqual(assigned, source);
}

TEST(ExtrusionData, AssignedToItselfItIsUnchanged)
{
    ExtrusionData data = AllDifferent();
    const ExtrusionData& self = data;
    data = self;
    ExpectEqual(data, AllDifferent());
}

TEST(ExtrusionData, HasNoVirtualFunctions)
{
    EXPECT_FALSE(std::is_polymorphic_v<ExtrusionData>);
}
