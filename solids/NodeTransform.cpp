// SPDX-License-Identifier: MIT
#include "solids/NodeTransform.h"

#include <cmath>

namespace orvane
{

MeshPoint Unit(const MeshPoint& vector)
{
    const double length = std::sqrt(Dot(vector, vector));
    MeshPoint unit = {};
    for (std::size_t axis = 0; axis < 3 && length > 0; ++axis)
    {
        // Adding 0 makes 0 of -0, which some readers of files take for another normal.
        unit[axis] = vector[axis] / length + 0.0;
    }
    return unit;
}

}  // namespace orvane
