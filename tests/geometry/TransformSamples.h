// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Matrices and transforms that several tests of CoordinateTransform use.

#include "geometry/CoordinateTransform.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

using Matrix = std::array<double, 16>;

constexpr Matrix identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

/// A quarter turn about z: (x, y) goes to (-y, x). Whole numbers, so results are exact.
constexpr Matrix quarterTurn = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

inline Matrix Copy(const double* matrix)
{
    Matrix copy;
    std::copy_n(matrix, 16, copy.begin());
    return copy;
}

inline Matrix Composite(const CoordinateTransform& transform)
{
    return Copy(transform.GetCompositeMatrix());
}

inline Matrix External(const CoordinateTransform& transform)
{
    return Copy(transform.GetExternalMatrix());
}

inline Matrix Rotation(const CoordinateTransform& transform)
{
    return Copy(transform.GetRotationMatrix());
}

inline void ExpectNear(const Matrix& actual, const Matrix& expected, double distance)
{
    for (int i = 0; i < 16; ++i)
    {
        EXPECT_NEAR(actual[i], expected[i], distance) << "element " << i;
    }
}

inline CoordinateTransform Turned()
{
    CoordinateTransform transform;
    transform.SetRotationMatrix(quarterTurn.data());
    return transform;
}

inline CoordinateTransform Moved(double x, double y, double z)
{
    CoordinateTransform transform;
    transform.SetTranslation(DVector(x, y, z));
    return transform;
}

inline DVector Transformed(const CoordinateTransform& transform, DVector point)
{
    transform.TransformDVectors(&point, 1);
    return point;
}
