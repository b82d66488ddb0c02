// SPDX-License-Identifier: MIT
#include "studio/BuiltInEnvironments.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace orvane
{

namespace
{

constexpr double degree = std::numbers::pi / 180;

/// 0 at \p from and before, 1 at \p to and beyond, and a smooth curve between them.
double Step(double from, double to, double value)
{
    const double t = std::clamp((value - from) / (to - from), 0.0, 1.0);
    return t * t * (3 - 2 * t);
}

Light Blend(const Light& a, const Light& b, double share)
{
    Light blended;
    for (std::size_t i = 0; i < blended.size(); ++i)
    {
        blended[i] = static_cast<float>(a[i] + (b[i] - a[i]) * share);
    }
    return blended;
}

void Add(Light& sum, const Light& light, double share)
{
    for (std::size_t i = 0; i < sum.size(); ++i)
    {
        sum[i] += static_cast<float>(light[i] * share);
    }
}

/// A lamp with a rectangular front that looks to the scene. Angles are degrees: \p right is counted
/// from the viewer's direction, +z, towards +x, and \p up from the horizon.
struct Lamp
{
    double right;
    double up;
    double width;
    double height;
    double softness;  ///< of its edges
    Light light;
};

/// How much of a lamp's light comes from a direction.
double ShareOf(const Lamp& lamp, const MeshPoint& direction)
{
    const double up = std::asin(std::clamp(direction[1], -1.0, 1.0)) / degree;
    double right = std::atan2(direction[0], direction[2]) / degree - lamp.right;
    right -= 360 * std::floor(right / 360 + 0.5);
    const double across = lamp.width / 2 - std::abs(right);
    const double along = lamp.height / 2 - std::abs(up - lamp.up);
    return Step(-lamp.softness, lamp.softness, across) * Step(-lamp.softness, lamp.softness, along);
}

Light LampLight(const std::vector<Lamp>& lamps, const MeshPoint& direction)
{
    Light sum = {};
    for (const Lamp& lamp : lamps)
    {
        Add(sum, lamp.light, ShareOf(lamp, direction));
    }
    return sum;
}

/// A photographer's room: a large lamp above the viewer's left, a high and narrow one at the right,
/// a weak one behind, walls that give light back around the viewer, where flat faces of letters
/// mirror them, and a floor.
Light StudioLight(const MeshPoint& direction)
{
    static const std::vector<Lamp> lamps = {
        {-38, 48, 80, 44, 5, {5.0f, 4.9f, 4.7f}},  {62, 22, 22, 84, 5, {3.0f, 3.1f, 3.3f}},
        {178, 40, 70, 26, 8, {2.2f, 2.3f, 2.6f}},  {0, 0, 150, 80, 45, {0.62f, 0.61f, 0.60f}},
        {-100, 10, 16, 70, 6, {1.6f, 1.6f, 1.6f}},
    };
    const Light ceiling = {0.34f, 0.35f, 0.37f};
    const Light wall = {0.16f, 0.165f, 0.18f};
    const Light floor = {0.22f, 0.21f, 0.20f};
    const double up = direction[1];
    Light light =
        up > 0 ? Blend(wall, ceiling, Step(0, 0.9, up)) : Blend(wall, floor, Step(0, 0.5, -up));
    Add(light, LampLight(lamps, direction), 1);
    return light;
}

/// A clear day: the sun at the viewer's left behind a thin cloud, and a bright ground.
Light SkyLight(const MeshPoint& direction)
{
    static const std::vector<Lamp> clouds = {
        {-42, 46, 24, 20, 10, {16.0f, 15.2f, 13.4f}},
        {40, 30, 60, 14, 12, {0.7f, 0.7f, 0.7f}},
        {-130, 24, 70, 12, 10, {0.6f, 0.6f, 0.6f}},
    };
    const Light top = {0.20f, 0.40f, 0.85f};
    const Light horizon = {0.85f, 0.95f, 1.05f};
    const Light ground = {0.34f, 0.32f, 0.27f};
    const double up = direction[1];
    Light light =
        up > 0 ? Blend(horizon, top, Step(0, 0.6, up)) : Blend(horizon, ground, Step(0, 0.06, -up));
    Add(light, LampLight(clouds, direction), 1);
    return light;
}

/// The last light of a day: a low sun at the viewer's right, and a violet sky.
Light SunsetLight(const MeshPoint& direction)
{
    static const std::vector<Lamp> sun = {
        {48, 9, 18, 12, 6, {20.0f, 9.5f, 3.2f}},
        {48, 10, 90, 22, 16, {1.7f, 0.75f, 0.3f}},
        {-70, 35, 70, 22, 14, {0.5f, 0.35f, 0.5f}},
    };
    const Light top = {0.10f, 0.12f, 0.32f};
    const Light horizon = {0.85f, 0.42f, 0.34f};
    const Light ground = {0.09f, 0.07f, 0.08f};
    const double up = direction[1];
    Light light =
        up > 0 ? Blend(horizon, top, Step(0, 0.55, up)) : Blend(horizon, ground, Step(0, 0.1, -up));
    Add(light, LampLight(sun, direction), 1);
    return light;
}

}  // namespace

const std::vector<BuiltInEnvironment>& BuiltInEnvironments()
{
    static const std::vector<BuiltInEnvironment> all = {
        {"studio", StudioLight}, {"sky", SkyLight}, {"sunset", SunsetLight}};
    return all;
}

}  // namespace orvane
