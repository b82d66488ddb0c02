// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Vector.h"

/// The three floats of a Vector, which is twice that large: for the fields of objects of which
/// there are many.
struct PackedVector
{
    PackedVector() = default;
    PackedVector(float newX, float newY, float newZ) : x(newX), y(newY), z(newZ) {}
    PackedVector(const Vector& vector) : x(vector.x), y(vector.y), z(vector.z) {}
    operator Vector() const { return Vector(x, y, z); }

    /// The record of a Vector.
    void Serialize(CArchive& archive)
    {
        Vector vector = *this;
        vector.Serialize(archive);
        *this = vector;
    }

    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;
};
