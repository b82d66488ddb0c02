// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/DVector.h"

/// The three numbers of a vector without the rest of the object: for the fields of objects of which
/// there are many.
template <typename VectorType, typename Number>
struct PackedNumbers
{
    PackedNumbers() = default;
    PackedNumbers(Number newX, Number newY, Number newZ) : x(newX), y(newY), z(newZ) {}
    PackedNumbers(const VectorType& vector) : x(vector.x), y(vector.y), z(vector.z) {}
    operator VectorType() const { return VectorType(x, y, z); }

    /// The record of the vector.
    void Serialize(CArchive& archive)
    {
        VectorType vector = *this;
        vector.Serialize(archive);
        *this = vector;
    }

    Number x = 0;
    Number y = 0;
    Number z = 0;
};

/// Half as large as a Vector.
using PackedVector = PackedNumbers<Vector, float>;

/// A DVector without its virtual table: for the fields that are read and set by component.
struct PackedDVector : PackedNumbers<DVector, double>
{
    using PackedNumbers::PackedNumbers;

    void SetDVector(double newX, double newY, double newZ) { *this = {newX, newY, newZ}; }
};
