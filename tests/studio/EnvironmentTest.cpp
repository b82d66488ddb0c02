// SPDX-License-Identifier: MIT
#include "studio/Environment.h"

#include "orvane/Error.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using orvane::Environment;
using orvane::Light;
using orvane::LightMap;
using orvane::MeshPoint;

/// What Environment::Falling gives for a surface with this normal.
double FallingOn(const Environment& environment, const MeshPoint& n, std::size_t color)
{
    const double basis[] = {1,
                            n[1],
                            n[2],
                            n[0],
                            n[0] * n[1],
                            n[1] * n[2],
                            3 * n[2] * n[2] - 1,
                            n[0] * n[2],
                            n[0] * n[0] - n[1] * n[1]};
    double sum = 0;
    for (std::size_t i = 0; i < std::size(basis); ++i)
    {
        sum += basis[i] * environment.Falling()[i][color];
    }
    return sum;
}

TEST(Environment, EvenLightIsTheSameInAllMirrorsAndOnAllSurfaces)
{
    const Light even = {0.5f, 1, 2};
    const Environment environment([&even](const MeshPoint&) { return even; });
    ASSERT_EQ(environment.Mirrored().size(), 6u);
    for (const LightMap& map : environment.Mirrored())
    {
        for (const Light& light : map.pixels)
        {
            for (std::size_t i = 0; i < light.size(); ++i)
            {
                ASSERT_NEAR(light[i], even[i], 1e-4);
            }
        }
    }
    for (const MeshPoint& normal :
         {MeshPoint{1, 0, 0}, MeshPoint{0, -1, 0}, MeshPoint{0.6, 0, 0.8}})
    {
        EXPECT_NEAR(FallingOn(environment, normal, 2), 2, 2e-3);
    }
}

// A surface that looks up sees the bright half alone, a wall half of it, and a ceiling nothing.
TEST(Environment, LightFromAboveFallsOnWhatLooksUp)
{
    const Environment environment([](const MeshPoint& direction) {
        return direction[1] > 0 ? Light{1, 1, 1} : Light{};
    });
    EXPECT_NEAR(FallingOn(environment, {0, 1, 0}, 0), 1, 0.01);
    EXPECT_NEAR(FallingOn(environment, {0, 0, 1}, 0), 0.5, 0.01);
    EXPECT_NEAR(FallingOn(environment, {-1, 0, 0}, 0), 0.5, 0.01);
    EXPECT_NEAR(FallingOn(environment, {0, -1, 0}, 0), 0, 0.01);
}

TEST(Environment, EachSideIsMirroredWhereItIs)
{
    const Environment environment([](const MeshPoint& direction) {
        Light light = {};
        for (std::size_t i = 0; i < light.size(); ++i)
        {
            light[i] = direction[i] > 0.9 ? 1.0f : 0.0f;
        }
        return light;
    });
    for (const LightMap& map : environment.Mirrored())
    {
        for (std::size_t i = 0; i < 3; ++i)
        {
            MeshPoint direction = {};
            direction[i] = 1;
            const Light light = map.From(direction);
            EXPECT_GT(light[i], 0.15f) << map.width << ", " << i;
            EXPECT_LT(light[(i + 1) % 3], light[i] / 2) << map.width << ", " << i;
            EXPECT_LT(light[(i + 2) % 3], light[i] / 2) << map.width << ", " << i;
        }
    }
    // The roughest one mirrors light with the cosine of its angle, of which the part with a cosine
    // above 0.9 is 1 - 0.9 * 0.9.
    EXPECT_NEAR(environment.Mirrored().back().From({0, 0, 1})[2], 0.19, 0.03);
    // The smooth mirror has sharp borders, the roughest one has none.
    EXPECT_EQ(environment.Mirrored().front().From({0, 0, 1})[2], 1);
    EXPECT_EQ(environment.Mirrored().front().From({std::sqrt(0.5), 0, std::sqrt(0.5)})[2], 0);
    EXPECT_GT(environment.Mirrored().back().From({std::sqrt(0.5), 0, std::sqrt(0.5)})[2], 0.02f);
}

TEST(LightMap, TheMiddleOfTheFirstPictureLooksAwayFromTheViewer)
{
    const LightMap map{4, 3, {}};
    const MeshPoint direction = map.DirectionOf(2, 1);
    EXPECT_NEAR(direction[0], std::sqrt(0.5), 1e-12);
    EXPECT_NEAR(direction[1], 0, 1e-12);
    EXPECT_NEAR(direction[2], -std::sqrt(0.5), 1e-12);
}

TEST(LightMap, PixelsAreBlendedAlsoAcrossTheSides)
{
    const LightMap map{2, 1, {{1, 0, 0}, {3, 0, 0}}};
    EXPECT_NEAR(map.From({-1, 0, 0})[0], 1, 1e-6);  // the middle of the left pixel
    EXPECT_NEAR(map.From({1, 0, 0})[0], 3, 1e-6);
    EXPECT_NEAR(map.From({0, 0, -1})[0], 2, 1e-6);
    EXPECT_NEAR(map.From({0, 0, 1})[0], 2, 1e-6);
    EXPECT_NEAR(map.From({0, 1, 0})[0], 2, 1);  // anything between them, and no crash
}

TEST(Environment, BuiltInOnesHaveLightEverywhere)
{
    const std::vector<std::string> names = orvane::EnvironmentNames();
    EXPECT_EQ(names, (std::vector<std::string>{"studio", "sky", "sunset"}));
    for (const std::string& name : names)
    {
        const Environment environment = orvane::MakeEnvironment(name);
        for (const Light& light : environment.Mirrored().front().pixels)
        {
            ASSERT_GT(light[0] + light[1] + light[2], 0.1f) << name;
            ASSERT_LT(light[0] + light[1] + light[2], 100.0f) << name;
        }
    }
}

TEST(Environment, ANameThatIsNoFileIsAnError)
{
    EXPECT_THROW(orvane::MakeEnvironment("no such environment"), orvane::Error);
}

}  // namespace
