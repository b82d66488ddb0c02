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

/// Lamps, and light that changes smoothly from the horizon up and down.
struct Surroundings
{
    const char* name;
    std::vector<Lamp> lamps;
    Light top;
    Light horizon;
    Light bottom;
    /// The sines of the angles above and below the horizon at which top and bottom begin.
    double topSine;
    double bottomSine;
};

Light LightOf(const Surroundings& around, const MeshPoint& direction)
{
    const double up = direction[1];
    Light light = up > 0 ? Blend(around.horizon, around.top, Step(0, around.topSine, up))
                         : Blend(around.horizon, around.bottom, Step(0, around.bottomSine, -up));
    for (const Lamp& lamp : around.lamps)
    {
        Add(light, lamp.light, ShareOf(lamp, direction));
    }
    return light;
}

std::vector<Surroundings> AllSurroundings()
{
    return {
        // A photographer's room: a large lamp above the viewer's left, a high and narrow one at the
        // right, a weak one behind, and walls that give light back around the viewer, where flat
        // faces of letters mirror them.
        {"studio",
         {{-38, 48, 80, 44, 5, {5.0f, 4.9f, 4.7f}},
          {62, 22, 22, 84, 5, {3.0f, 3.1f, 3.3f}},
          {178, 40, 70, 26, 8, {2.2f, 2.3f, 2.6f}},
          {0, 0, 150, 80, 45, {0.62f, 0.61f, 0.60f}},
          {-100, 10, 16, 70, 6, {1.6f, 1.6f, 1.6f}}},
         {0.34f, 0.35f, 0.37f},
         {0.16f, 0.165f, 0.18f},
         {0.22f, 0.21f, 0.20f},
         0.9,
         0.5},
        // A clear day: the sun at the viewer's left behind a thin cloud, and a bright ground.
        {"sky",
         {{-42, 46, 24, 20, 10, {16.0f, 15.2f, 13.4f}},
          {40, 30, 60, 14, 12, {0.7f, 0.7f, 0.7f}},
          {-130, 24, 70, 12, 10, {0.6f, 0.6f, 0.6f}}},
         {0.20f, 0.40f, 0.85f},
         {0.85f, 0.95f, 1.05f},
         {0.34f, 0.32f, 0.27f},
         0.6,
         0.06},
        // The last light of a day: a low sun at the viewer's right, and a violet sky.
        {"sunset",
         {{48, 9, 18, 12, 6, {20.0f, 9.5f, 3.2f}},
          {48, 10, 90, 22, 16, {1.7f, 0.75f, 0.3f}},
          {-70, 35, 70, 22, 14, {0.5f, 0.35f, 0.5f}}},
         {0.10f, 0.12f, 0.32f},
         {0.85f, 0.42f, 0.34f},
         {0.09f, 0.07f, 0.08f},
         0.55,
         0.1},
    };
}

}  // namespace

const std::vector<BuiltInEnvironment>& BuiltInEnvironments()
{
    static const std::vector<BuiltInEnvironment> all = [] {
        std::vector<BuiltInEnvironment> made;
        for (const Surroundings& around : AllSurroundings())
        {
            made.push_back({around.name, [around](const MeshPoint& direction) {
                                return LightOf(around, direction);
                            }});
        }
        return made;
    }();
    return all;
}

}  // namespace orvane
