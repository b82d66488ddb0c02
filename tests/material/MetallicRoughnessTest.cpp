// SPDX-License-Identifier: MIT
#include "material/MetallicRoughness.h"

#include <gtest/gtest.h>

#include <cmath>

using orvane::MetallicRoughness;
using orvane::ToMetallicRoughness;

namespace
{

NamedColor MakeMaterial(const char* name, const ColorVector& diffuse, const ColorVector& specular,
                        float shininess = 64)
{
    NamedColor material(name);
    material.SetDiffuseColor(diffuse);
    material.SetSpecularColor(specular);
    material.SetShininess(shininess);
    return material;
}

const ColorVector whiteHighlight(0.6f, 0.6f, 0.6f, 1);

}  // namespace

// The values of red, green and blue on a screen and their light, from the definition of sRGB.
TEST(MetallicRoughness, ColoursBecomeLinear)
{
    EXPECT_EQ(orvane::LinearFromScreen(0), 0);
    EXPECT_DOUBLE_EQ(orvane::LinearFromScreen(1), 1);
    EXPECT_DOUBLE_EQ(orvane::LinearFromScreen(0.04045), 0.04045 / 12.92);
    EXPECT_NEAR(orvane::LinearFromScreen(0.5), 0.21404, 0.00001);
}

TEST(MetallicRoughness, GoldOfTheOpenGLTablesIsMetal)
{
    const NamedColor gold = MakeMaterial("", {0.75164f, 0.60648f, 0.22648f, 1},
                                         {0.628281f, 0.555802f, 0.366065f, 1}, 51.2f);
    const MetallicRoughness converted = ToMetallicRoughness(gold);
    EXPECT_TRUE(converted.isMetal);
    EXPECT_GT(converted.baseColor[0], converted.baseColor[1]);
    EXPECT_GT(converted.baseColor[1], 3 * converted.baseColor[2]);
    EXPECT_NEAR(converted.roughness, std::pow(2 / 53.2, 0.25), 1e-6);
}

TEST(MetallicRoughness, TheColourGoldIsMetalInAllShades)
{
    const ColorVector gold(0xF2 / 255.0f, 0xB2 / 255.0f, 0x33 / 255.0f, 1);
    const ColorVector side(gold.red / 2, gold.green / 2, gold.blue / 2, 1);
    const ColorVector bevel(gold.red * 0.7f + 0.3f, gold.green * 0.7f + 0.3f,
                            gold.blue * 0.7f + 0.3f, 1);
    for (const ColorVector& color : {gold, side, bevel})
    {
        EXPECT_TRUE(ToMetallicRoughness(MakeMaterial("Face", color, whiteHighlight)).isMetal);
    }
}

TEST(MetallicRoughness, AColourWithAWhiteHighlightIsNoMetal)
{
    const ColorVector colors[] = {
        {1, 0, 0, 1}, {1, 1, 0, 1}, {1, 0.55f, 0.1f, 1},     {0.5f, 0.5f, 0.5f, 1},
        {0, 0, 0, 1}, {1, 1, 1, 1}, {0.48f, 0.29f, 0.14f, 1}};  // the last is brown
    for (const ColorVector& color : colors)
    {
        EXPECT_FALSE(ToMetallicRoughness(MakeMaterial("Face", color, whiteHighlight)).isMetal);
    }
}

TEST(MetallicRoughness, AHighlightOfAnotherHueMakesNoMetal)
{
    const NamedColor silk = MakeMaterial("", {0.8f, 0, 0, 1}, {0, 0, 0.8f, 1});
    EXPECT_FALSE(ToMetallicRoughness(silk).isMetal);
    // Hues of 354 and 6 degrees are 12 degrees apart.
    const NamedColor ruby = MakeMaterial("", {0.8f, 0, 0.08f, 1}, {0.8f, 0.08f, 0, 1});
    EXPECT_TRUE(ToMetallicRoughness(ruby).isMetal);
}

TEST(MetallicRoughness, ANameWithAMetalInItMakesMetal)
{
    for (const char* const name : {"Silver", "OLD CHROME", "brushed-steel 2"})
    {
        EXPECT_TRUE(
            ToMetallicRoughness(MakeMaterial(name, {0.5f, 0.5f, 0.5f, 1}, whiteHighlight)).isMetal)
            << name;
    }
    for (const char* const name : {"Marigold", "Silverware", "Medium Gray", ""})
    {
        EXPECT_FALSE(
            ToMetallicRoughness(MakeMaterial(name, {0.5f, 0.5f, 0.5f, 1}, whiteHighlight)).isMetal)
            << name;
    }
}

TEST(MetallicRoughness, TheRoughnessFollowsFromTheShininess)
{
    const auto roughness = [](float shininess) {
        return ToMetallicRoughness(MakeMaterial("", {1, 1, 1, 1}, whiteHighlight, shininess))
            .roughness;
    };
    EXPECT_EQ(roughness(0), 1);
    EXPECT_DOUBLE_EQ(roughness(30), 0.5);  // 2 / 0.5^4 - 2
    EXPECT_EQ(roughness(1000), roughness(128));
    EXPECT_EQ(roughness(-1), 1);
    EXPECT_EQ(roughness(std::nanf("")), 1);
}

TEST(MetallicRoughness, OpacityAndEmissionAreKeptAndColoursOutOfRangeAreLimited)
{
    NamedColor material = MakeMaterial("", {2, -1, std::nanf(""), 0.25f}, whiteHighlight);
    material.SetEmissionColor({1, 0, 0.04045f, 1});
    const MetallicRoughness converted = ToMetallicRoughness(material);
    EXPECT_EQ(converted.baseColor, (std::array<double, 4>{1, 0, 0, 0.25}));
    EXPECT_EQ(converted.emission[0], 1);
    EXPECT_NEAR(converted.emission[2], 0.04045 / 12.92, 1e-9);
}
