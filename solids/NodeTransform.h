// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "solids/MeshTransform.h"

namespace orvane
{

inline MeshPoint Minus(const MeshPoint& a, const MeshPoint& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

inline MeshPoint Cross(const MeshPoint& a, const MeshPoint& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

inline double Dot(const MeshPoint& a, const MeshPoint& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

/// Of length 1, or 0, 0, 0 when the vector has no length.
ORVANE_API MeshPoint Unit(const MeshPoint& vector);

/// Takes the vertices of a mesh's node to the world.
class ORVANE_API NodeTransform
{
public:
    /// \param matrix as MeshNode::transform
    explicit NodeTransform(const std::array<double, 16>& matrix)
        : forPositions_{matrix}, forNormals_(forPositions_.ForNormals())
    {}

    MeshPoint PositionInWorld(const float (&local)[3]) const
    {
        return forPositions_.Apply({local[0], local[1], local[2]});
    }
    /// Of unit length; 0, 0, 0 when the transform squeezes the normal to nothing.
    MeshPoint NormalInWorld(const float (&local)[3]) const
    {
        return Unit(forNormals_.Apply({local[0], local[1], local[2]}, 0));
    }
    /// Triangles that run counter-clockwise in the node's coordinates run clockwise in the world.
    bool IsMirrored() const { return forPositions_.IsMirroring(); }

private:
    MeshTransform forPositions_;
    MeshTransform forNormals_;
};

}  // namespace orvane
