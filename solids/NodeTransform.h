// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <array>

namespace orvane
{

using Point3 = std::array<double, 3>;

Point3 Minus(const Point3& a, const Point3& b);
Point3 Cross(const Point3& a, const Point3& b);
double Dot(const Point3& a, const Point3& b);

/// Takes positions and normals of a mesh's node to the world.
class ORVANE_API NodeTransform
{
public:
    /// \param matrix 16 numbers, column by column, whose last row is 0, 0, 0, 1
    explicit NodeTransform(const std::array<double, 16>& matrix);

    Point3 PositionInWorld(const float (&local)[3]) const;
    /// Of unit length and perpendicular to the same surface as before. 0, 0, 0 when the matrix
    /// squeezes the normal to nothing.
    Point3 NormalInWorld(const float (&local)[3]) const;
    /// Triangles that run counter-clockwise in the node's coordinates run clockwise in the world.
    bool IsMirrored() const { return isMirrored_; }

private:
    std::array<double, 16> matrix_;
    /// The rows of the matrix that leads normals to the world, up to a factor.
    std::array<Point3, 3> normalRows_;
    bool isMirrored_ = false;
};

}  // namespace orvane
