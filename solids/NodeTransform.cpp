// SPDX-License-Identifier: MIT
#include "solids/NodeTransform.h"

#include <cmath>

namespace orvane
{

Point3 Minus(const Point3& a, const Point3& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

Point3 Cross(const Point3& a, const Point3& b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

double Dot(const Point3& a, const Point3& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

NodeTransform::NodeTransform(const std::array<double, 16>& matrix) : matrix_(matrix)
{
    const Point3 x = {matrix[0], matrix[1], matrix[2]};
    const Point3 y = {matrix[4], matrix[5], matrix[6]};
    const Point3 z = {matrix[8], matrix[9], matrix[10]};
    // The cross products of the columns are the transposed inverse times the determinant. The
    // determinant's sign is taken out, because normals of a mirrored node still point outwards.
    const Point3 columns[3] = {Cross(y, z), Cross(z, x), Cross(x, y)};
    isMirrored_ = Dot(x, columns[0]) < 0;
    for (std::size_t row = 0; row < 3; ++row)
    {
        for (std::size_t column = 0; column < 3; ++column)
        {
            normalRows_[row][column] = isMirrored_ ? -columns[column][row] : columns[column][row];
        }
    }
}

Point3 NodeTransform::PositionInWorld(const float (&local)[3]) const
{
    Point3 world;
    for (std::size_t row = 0; row < 3; ++row)
    {
        world[row] = matrix_[row] * local[0] + matrix_[4 + row] * local[1] +
                     matrix_[8 + row] * local[2] + matrix_[12 + row];
    }
    return world;
}

Point3 NodeTransform::NormalInWorld(const float (&local)[3]) const
{
    const Point3 normal = {local[0], local[1], local[2]};
    Point3 world = {Dot(normalRows_[0], normal), Dot(normalRows_[1], normal),
                    Dot(normalRows_[2], normal)};
    const double length = std::sqrt(Dot(world, world));
    for (double& each : world)
    {
        each = length > 0 ? each / length : 0;
    }
    return world;
}

}  // namespace orvane
