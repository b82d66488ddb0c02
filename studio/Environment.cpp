// SPDX-License-Identifier: MIT
#include "studio/Environment.h"

#include "studio/BuiltInEnvironments.h"
#include "studio/HdrFile.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace orvane
{

namespace
{

constexpr double pi = std::numbers::pi;
constexpr int sharpWidth = 512;
/// Samples of the light for each pixel of a blurred map. A rougher surface mirrors light from more
/// directions, and its map has fewer pixels.
constexpr std::array<int, 5> samplesOfMaps = {16, 32, 64, 128, 256};

Light operator*(const Light& light, double factor)
{
    const auto scale = static_cast<float>(factor);
    return {light[0] * scale, light[1] * scale, light[2] * scale};
}

void Add(Light& sum, const Light& light)
{
    for (std::size_t i = 0; i < sum.size(); ++i)
    {
        sum[i] += light[i];
    }
}

LightMap MakeMap(int width)
{
    LightMap map{width, width / 2, {}};
    map.pixels.resize(static_cast<std::size_t>(map.width) * static_cast<std::size_t>(map.height));
    return map;
}

template <typename LightOfPixel>
LightMap MakeMap(int width, const LightOfPixel& light)
{
    LightMap map = MakeMap(width);
    auto pixel = map.pixels.begin();
    for (int row = 0; row < map.height; ++row)
    {
        for (int column = 0; column < map.width; ++column)
        {
            *pixel++ = light(column, row);
        }
    }
    return map;
}

/// The map with half as many pixels in each direction. A pixel near the poles stands for a smaller
/// part of all directions and counts less.
LightMap Halved(const LightMap& map)
{
    return MakeMap(map.width / 2, [&map](int column, int row) {
        Light sum = {};
        double all = 0;
        for (int y = 2 * row; y < 2 * row + 2; ++y)
        {
            const double weight = std::sin((y + 0.5) / map.height * pi);
            const auto first = static_cast<std::size_t>(y) * static_cast<std::size_t>(map.width) +
                               2 * static_cast<std::size_t>(column);
            Add(sum, map.pixels[first] * weight);
            Add(sum, map.pixels[first + 1] * weight);
            all += 2 * weight;
        }
        return sum * (1 / all);
    });
}

/// The number with the digits of \p index in base 2 behind the point in reverse order: numbers that
/// are spread evenly over 0 to 1 (van der Corput).
double Spread(std::uint32_t index)
{
    double value = 0;
    for (double digit = 0.5; index != 0; index >>= 1, digit /= 2)
    {
        value += (index & 1) != 0 ? digit : 0;
    }
    return value;
}

/// A direction that a rough surface mirrors, seen from straight above it; z is the surface's
/// normal.
struct MirrorSample
{
    MeshPoint direction;
    double weight;
    std::size_t map;  ///< the first map, of those halved from the sharp one, whose pixels are as
                      ///< large as the part of all directions that the sample stands for
};

/// Samples of the directions that a surface of this roughness mirrors: those of the microfacet
/// distribution GGX (Bruce Walter et al., Microfacet Models for Refraction through Rough Surfaces,
/// 2007), each with a share of the directions (Mark Colbert, Jaroslav Krivanek, GPU-Based
/// Importance Sampling, 2007).
std::vector<MirrorSample> MirrorSamples(double roughness, int count, std::size_t mapCount)
{
    const double alpha = roughness * roughness;
    const double anglePerPixel = 4 * pi / (sharpWidth * (sharpWidth / 2.0));
    std::vector<MirrorSample> samples;
    for (int i = 0; i < count; ++i)
    {
        const double around = 2 * pi * (i + 0.5) / count;
        const double spread = Spread(static_cast<std::uint32_t>(i)) + 0.5 / count;
        const double cosine = std::sqrt((1 - spread) / (1 + (alpha * alpha - 1) * spread));
        const double sine = std::sqrt(std::max(0.0, 1 - cosine * cosine));
        // The view along the normal, mirrored by a facet with this normal.
        const MeshPoint mirrored = {2 * cosine * sine * std::cos(around),
                                    2 * cosine * sine * std::sin(around), 2 * cosine * cosine - 1};
        if (mirrored[2] <= 0)
        {
            continue;
        }
        const double falloff = cosine * cosine * (alpha * alpha - 1) + 1;
        const double density = alpha * alpha / (pi * falloff * falloff) / 4;
        const double pixels = 1 / (count * density) / anglePerPixel;
        const double map = std::clamp(0.5 * std::log2(std::max(pixels, 1.0)) + 0.5, 0.0,
                                      static_cast<double>(mapCount - 1));
        samples.push_back({mirrored, mirrored[2], static_cast<std::size_t>(map)});
    }
    return samples;
}

Light Mirrored(const MeshPoint& normal, const std::vector<MirrorSample>& samples,
               const std::vector<LightMap>& halved)
{
    const MeshPoint side =
        Unit(Cross(std::abs(normal[1]) < 0.9 ? MeshPoint{0, 1, 0} : MeshPoint{1, 0, 0}, normal));
    const MeshPoint other = Cross(normal, side);
    Light sum = {};
    double all = 0;
    for (const MirrorSample& sample : samples)
    {
        MeshPoint direction;
        for (std::size_t i = 0; i < direction.size(); ++i)
        {
            direction[i] = side[i] * sample.direction[0] + other[i] * sample.direction[1] +
                           normal[i] * sample.direction[2];
        }
        Add(sum, halved[sample.map].From(direction) * sample.weight);
        all += sample.weight;
    }
    return sum * (1 / all);
}

/// See Environment::Falling.
std::array<double, 9> Harmonics(const MeshPoint& d)
{
    return {1,
            d[1],
            d[2],
            d[0],
            d[0] * d[1],
            d[1] * d[2],
            3 * d[2] * d[2] - 1,
            d[0] * d[2],
            d[0] * d[0] - d[1] * d[1]};
}

std::array<Light, 9> FallingLight(const LightMap& map)
{
    // For each coefficient, the square of the harmonic's normalization, times the share that a
    // cosine lobe keeps of its degree (1, 2/3, 1/4).
    constexpr std::array<double, 9> factors = {
        0.25 / pi,     0.75 / pi * 2 / 3, 0.75 / pi * 2 / 3, 0.75 / pi * 2 / 3, 3.75 / pi / 4,
        3.75 / pi / 4, 0.3125 / pi / 4,   3.75 / pi / 4,     0.9375 / pi / 4};
    std::array<Light, 9> falling = {};
    for (int row = 0; row < map.height; ++row)
    {
        const double angle =
            2 * pi / map.width *
            (std::cos(pi * row / map.height) - std::cos(pi * (row + 1) / map.height));
        for (int column = 0; column < map.width; ++column)
        {
            const Light& light =
                map.pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(map.width) +
                           static_cast<std::size_t>(column)];
            const std::array<double, 9> harmonics = Harmonics(map.DirectionOf(column, row));
            for (std::size_t i = 0; i < falling.size(); ++i)
            {
                Add(falling[i], light * (harmonics[i] * factors[i] * angle));
            }
        }
    }
    return falling;
}

}  // namespace

Light LightMap::From(const MeshPoint& direction) const
{
    const double across = (std::atan2(direction[0], -direction[2]) / (2 * pi) + 0.5) * width - 0.5;
    const double down = std::acos(std::clamp(direction[1], -1.0, 1.0)) / pi * height - 0.5;
    const double left = std::floor(across);
    const double top = std::floor(down);
    Light sum = {};
    for (int y = 0; y < 2; ++y)
    {
        const int row = std::clamp(static_cast<int>(top) + y, 0, height - 1);
        const double share = y == 0 ? 1 - (down - top) : down - top;
        for (int x = 0; x < 2; ++x)
        {
            const int column = (static_cast<int>(left) + x + width) % width;
            const double part = x == 0 ? 1 - (across - left) : across - left;
            Add(sum, pixels[static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                            static_cast<std::size_t>(column)] *
                         (share * part));
        }
    }
    return sum;
}

MeshPoint LightMap::DirectionOf(int column, int row) const
{
    const double around = ((column + 0.5) / width - 0.5) * 2 * pi;
    const double down = (row + 0.5) / height * pi;
    return {std::sin(down) * std::sin(around), std::cos(down), -std::sin(down) * std::cos(around)};
}

Environment::Environment(const std::function<Light(const MeshPoint&)>& light)
{
    const LightMap places{sharpWidth, sharpWidth / 2, {}};
    std::vector<LightMap> halved = {MakeMap(
        sharpWidth, [&](int column, int row) { return light(places.DirectionOf(column, row)); })};
    while (halved.back().width > 8)
    {
        halved.push_back(Halved(halved.back()));
    }
    falling_ = FallingLight(halved[3]);
    mirrored_.push_back(halved[0]);
    for (std::size_t i = 0; i < samplesOfMaps.size(); ++i)
    {
        const double roughness = static_cast<double>(i + 1) / samplesOfMaps.size();
        const std::vector<MirrorSample> samples =
            MirrorSamples(roughness, samplesOfMaps[i], halved.size());
        const LightMap like{sharpWidth >> (i + 1), sharpWidth >> (i + 2), {}};
        mirrored_.push_back(MakeMap(like.width, [&](int column, int row) {
            return orvane::Mirrored(like.DirectionOf(column, row), samples, halved);
        }));
    }
}

std::vector<std::string> EnvironmentNames()
{
    std::vector<std::string> names;
    for (const BuiltInEnvironment& each : BuiltInEnvironments())
    {
        names.emplace_back(each.name);
    }
    return names;
}

Environment MakeEnvironment(const std::string& name)
{
    for (const BuiltInEnvironment& each : BuiltInEnvironments())
    {
        if (name == each.name)
        {
            return Environment(each.light);
        }
    }
    const LightMap map = ReadHdrFile(name);
    return Environment([&map](const MeshPoint& direction) { return map.From(direction); });
}

}  // namespace orvane
