// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "solids/NodeTransform.h"

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace orvane
{

/// Light as red, green and blue, linear: twice the number is twice the light. White paper in the
/// light that the picture is exposed for has 1.
using Light = std::array<float, 3>;

/// A picture of all directions. The first row is the direction up, the last one down. The middle of
/// a row is the direction -z; going to the right in the row, directions turn towards +x.
struct ORVANE_API LightMap
{
    int width = 0;
    int height = 0;
    std::vector<Light> pixels;  ///< row by row

    /// The light from a direction, a unit vector, with pixels blended.
    Light From(const MeshPoint& direction) const;
    /// The direction of a pixel's middle.
    MeshPoint DirectionOf(int column, int row) const;
};

/// The light that comes to a scene from all directions, prepared for shaders. x points to the right
/// of the picture, y up and z to the viewer.
class ORVANE_API Environment
{
public:
    /// \param light gives the light from a direction, a unit vector
    explicit Environment(const std::function<Light(const MeshPoint&)>& light);

    /// What surfaces mirror, blurred for their roughness: map i for the roughness
    /// i / (Mirrored().size() - 1). Each map is half as wide and high as the one before.
    const std::vector<LightMap>& Mirrored() const { return mirrored_; }

    /// The light that falls on a surface, divided by pi, as nine coefficients of spherical
    /// harmonics for the surface's normal (x, y, z):
    /// c0 + c1 y + c2 z + c3 x + c4 xy + c5 yz + c6 (3zz - 1) + c7 xz + c8 (xx - yy).
    /// Ravi Ramamoorthi, Pat Hanrahan, An Efficient Representation for Irradiance Environment Maps,
    /// 2001.
    const std::array<Light, 9>& Falling() const { return falling_; }

private:
    std::vector<LightMap> mirrored_;
    std::array<Light, 9> falling_ = {};
};

/// The names of the built-in environments, the default first.
ORVANE_API std::vector<std::string> EnvironmentNames();

/// \param name of a built-in environment, or the path of a picture in the format .hdr. Throws Error
/// for a file that cannot be read.
ORVANE_API Environment MakeEnvironment(const std::string& name);

}  // namespace orvane
