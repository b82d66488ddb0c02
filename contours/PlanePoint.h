// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Points and directions in the plane of an outline.

#include <cmath>
#include <cstdint>
#include <type_traits>

namespace orvane::contours
{

/// A point of the plane, or the way from one point to another. x grows to the right and y upward.
/// The unit is the font's design unit: one em (the font's size) usually has 1000 or 2048 of them.
template <typename Number>
struct PlanePoint
{
    using Self = PlanePoint;

    Number x = 0;
    Number y = 0;

    PlanePoint operator+(const PlanePoint& other) const { return {x + other.x, y + other.y}; }
    PlanePoint operator-(const PlanePoint& other) const { return {x - other.x, y - other.y}; }
    PlanePoint operator*(Number factor) const { return {x * factor, y * factor}; }
    PlanePoint operator/(Number divisor) const { return {x / divisor, y / divisor}; }
    bool operator==(const PlanePoint& other) const { return x == other.x && y == other.y; }
};

/// Vertices of flattened outlines, which have whole coordinates of 16 bits.
using ShortPoint = PlanePoint<std::int16_t>;
/// Vertices before their fractions are dropped, and normals.
using FloatPoint = PlanePoint<float>;
/// Points that are rounded to a grid, in whole units of it.
using GridPoint = PlanePoint<std::int32_t>;
/// Points of curves that are being cut or converted.
using DoublePoint = PlanePoint<double>;

template <typename Number>
Number Dot(const PlanePoint<Number>& a, const PlanePoint<Number>& b)
{
    return a.x * b.x + a.y * b.y;
}

/// Positive when \p b points to the left of \p a.
template <typename Number>
Number Cross(const PlanePoint<Number>& a, const PlanePoint<Number>& b)
{
    return a.x * b.y - a.y * b.x;
}

/// Twice the area of the triangle of three points; positive when \p c lies to the left of the way
/// from \p a to \p b, and 0 when the three lie on one line. Exact for whole coordinates between
/// -2^29 and 2^29.
template <typename Number>
std::int64_t Turn(const PlanePoint<Number>& a, const PlanePoint<Number>& b,
                  const typename PlanePoint<Number>::Self& c)
{
    static_assert(std::is_integral_v<Number>);
    return (std::int64_t{b.x} - a.x) * (std::int64_t{c.y} - a.y) -
           (std::int64_t{b.y} - a.y) * (std::int64_t{c.x} - a.x);
}

inline double Length(const DoublePoint& way)
{
    return std::hypot(way.x, way.y);
}

/// Both coordinates rounded to the nearest whole number, halves away from zero.
inline DoublePoint Rounded(const DoublePoint& place)
{
    return {std::round(place.x), std::round(place.y)};
}

}  // namespace orvane::contours
