// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>

class DrawingObject;

namespace orvane
{

using MeshPoint = std::array<double, 3>;

/// A transform of points: 16 numbers as glMultMatrixd takes them. A new one is the identity. The
/// last row is taken to be 0, 0, 0, 1.
struct MeshTransform
{
    std::array<double, 16> matrix = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

    /// Where the point comes to; \p place is 0 for a direction, which is not moved, and 1 for a
    /// point.
    MeshPoint Apply(const MeshPoint& point, double place = 1) const
    {
        MeshPoint result;
        for (std::size_t row = 0; row < 3; ++row)
        {
            result[row] = matrix[row] * point[0] + matrix[4 + row] * point[1] +
                          matrix[8 + row] * point[2] + matrix[12 + row] * place;
        }
        return result;
    }

    bool IsIdentity() const { return matrix == MeshTransform().matrix; }
    /// Whether the transform turns right hands into left hands.
    bool IsMirroring() const;
    /// The transform of normals: a normal that it gives is perpendicular to what a transformed
    /// surface is, points to the same side of it, and may have any length.
    MeshTransform ForNormals() const;
};

/// The transform that applies \p second first.
MeshTransform operator*(const MeshTransform& first, const MeshTransform& second);

/// The node's own transform.
MeshTransform TransformOf(const DrawingObject& node);
/// The transform from the coordinates of a node's parent to those of the world.
MeshTransform TransformAbove(const DrawingObject& node);

}  // namespace orvane
