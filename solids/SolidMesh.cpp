// SPDX-License-Identifier: MIT
#include "solids/SolidMesh.h"

#include <algorithm>
#include <limits>

namespace orvane
{

MeshBounds::MeshBounds()
{
    minimum.fill(std::numeric_limits<float>::infinity());
    maximum.fill(-std::numeric_limits<float>::infinity());
}

void MeshBounds::Include(const float (&position)[3])
{
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        minimum[axis] = std::min(minimum[axis], position[axis]);
        maximum[axis] = std::max(maximum[axis], position[axis]);
    }
}

MeshBounds SolidMesh::Bounds() const
{
    MeshBounds bounds;
    for (const MeshGroup& group : groups)
    {
        const std::array<double, 16>& m = nodes[static_cast<std::size_t>(group.node)].transform;
        for (std::size_t i = group.firstIndex; i < group.firstIndex + group.indexCount; ++i)
        {
            const float(&local)[3] = vertices[indices[i]].position;
            float world[3];
            for (std::size_t row = 0; row < 3; ++row)
            {
                world[row] = static_cast<float>(m[row] * local[0] + m[4 + row] * local[1] +
                                                m[8 + row] * local[2] + m[12 + row]);
            }
            bounds.Include(world);
        }
    }
    return bounds;
}

}  // namespace orvane
