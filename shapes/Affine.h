// SPDX-License-Identifier: MIT
#pragma once

#include "contours/PlanePoint.h"

#include <cmath>

namespace orvane::shapes
{

/// A map of the plane: x' = a x + c y + e, y' = b x + d y + f.
struct Affine
{
    double a = 1;
    double b = 0;
    double c = 0;
    double d = 1;
    double e = 0;
    double f = 0;

    contours::DoublePoint operator()(const contours::DoublePoint& point) const
    {
        return {a * point.x + c * point.y + e, b * point.x + d * point.y + f};
    }

    /// First \p inner, then this map.
    Affine operator*(const Affine& inner) const
    {
        return {a * inner.a + c * inner.b,     b * inner.a + d * inner.b,
                a * inner.c + c * inner.d,     b * inner.c + d * inner.d,
                a * inner.e + c * inner.f + e, b * inner.e + d * inner.f + f};
    }

    static Affine Translation(double x, double y) { return {1, 0, 0, 1, x, y}; }
    static Affine Scale(double x, double y) { return {x, 0, 0, y, 0, 0}; }

    /// How much longer the map makes the lines that it stretches most: the larger singular value.
    double MaxStretch() const
    {
        const double mean = (a * a + b * b + c * c + d * d) / 2;
        const double half = (a * a + b * b - c * c - d * d) / 2;
        return std::sqrt(mean + std::hypot(half, a * c + b * d));
    }
};

}  // namespace orvane::shapes
