// SPDX-License-Identifier: MIT
#include "solids/MeshTransform.h"

#include "scene/DrawingObject.h"

#include <algorithm>

namespace orvane
{

namespace
{

/// The cofactor of an element of the upper 3 x 3 elements.
double Cofactor(const std::array<double, 16>& m, std::size_t column, std::size_t row)
{
    const std::size_t c1 = (column + 1) % 3;
    const std::size_t c2 = (column + 2) % 3;
    const std::size_t r1 = (row + 1) % 3;
    const std::size_t r2 = (row + 2) % 3;
    return m[4 * c1 + r1] * m[4 * c2 + r2] - m[4 * c2 + r1] * m[4 * c1 + r2];
}

}  // namespace

bool MeshTransform::IsMirroring() const
{
    return matrix[0] * Cofactor(matrix, 0, 0) + matrix[1] * Cofactor(matrix, 0, 1) +
               matrix[2] * Cofactor(matrix, 0, 2) <
           0;
}

MeshTransform MeshTransform::ForNormals() const
{
    // The inverse transposed matrix is the matrix of cofactors divided by the determinant, of which
    // only the sign matters here.
    const double sign = IsMirroring() ? -1 : 1;
    MeshTransform result;
    for (std::size_t column = 0; column < 3; ++column)
    {
        for (std::size_t row = 0; row < 3; ++row)
        {
            result.matrix[4 * column + row] = sign * Cofactor(matrix, column, row);
        }
    }
    return result;
}

MeshTransform operator*(const MeshTransform& first, const MeshTransform& second)
{
    MeshTransform product;
    for (std::size_t column = 0; column < 4; ++column)
    {
        const double* const from = &second.matrix[4 * column];
        const MeshPoint to = first.Apply({from[0], from[1], from[2]}, column == 3 ? 1 : 0);
        std::copy(to.begin(), to.end(), &product.matrix[4 * column]);
    }
    return product;
}

MeshTransform TransformOf(const DrawingObject& node)
{
    MeshTransform result;
    std::copy_n(node.GetTransform()->GetCompositeMatrix(), 16, result.matrix.begin());
    return result;
}

MeshTransform TransformAbove(const DrawingObject& node)
{
    MeshTransform result;
    for (const DrawingObject* above = node.GetParent(); above != nullptr;
         above = above->GetParent())
    {
        result = TransformOf(*above) * result;
    }
    return result;
}

}  // namespace orvane
