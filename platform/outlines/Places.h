// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Places and directions in the plane of an outline, and where a vertex goes that lies on another.

#include "platform/Truncate.h"

#include <cmath>
#include <cstdint>

namespace outlines
{

/// Single precision, by component.
struct PlaneVector
{
    float x = 0.0f;
    float y = 0.0f;

    PlaneVector operator+(const PlaneVector& other) const { return {x + other.x, y + other.y}; }
    PlaneVector operator-(const PlaneVector& other) const { return {x - other.x, y - other.y}; }
    PlaneVector operator*(float factor) const { return {x * factor, y * factor}; }
    PlaneVector operator/(float divisor) const { return {x / divisor, y / divisor}; }
    float Dot(const PlaneVector& other) const { return x * other.x + y * other.y; }

    /// Summed and rooted in double, then rounded.
    float Length() const { return static_cast<float>(DoubleLength()); }

    /// The same as Length() > length, for the most part without a root.
    bool IsLongerThan(float length) const
    {
        // Rounding moves a length by less than this share.
        constexpr double share = 1e-6;
        const double square = double{x} * x + double{y} * y;
        const double limit = double{length} * length;
        if (length >= 0.0f && (square > limit * (1 + share) || square < limit * (1 - share)))
        {
            return square > limit;
        }
        return Length() > length;
    }

    /// Divided by the double length; unchanged when that is 0.
    PlaneVector Normalized() const
    {
        const double length = DoubleLength();
        return length == 0.0
                   ? *this
                   : PlaneVector{static_cast<float>(x / length), static_cast<float>(y / length)};
    }

    double DoubleLength() const { return std::sqrt(double{x} * x + double{y} * y); }
};

/// The left-hand perpendicular of the way from one place to another, of length 1; 0 for no way.
inline PlaneVector EdgeNormal(const PlaneVector& from, const PlaneVector& to)
{
    const PlaneVector direction = (to - from).Normalized();
    return PlaneVector{-direction.y, direction.x}.Normalized();
}

/// Halfway between two normals, of length 1; 0 when they are opposite.
inline PlaneVector AverageNormal(const PlaneVector& arriving, const PlaneVector& leaving)
{
    return ((arriving + leaving) / 2.0f).Normalized();
}

/// A normal's component as vertices keep it: in 1/10000, without what is beyond.
inline std::int16_t StoredNormal(float component)
{
    return TruncateToShort(component * 10000.0f);
}
inline constexpr float storedNormalUnit = 0.0001f;

/// Where a vertex at \p place goes that lies at the place of another: 2 units along its normal, to
/// the side where the next vertex lies.
inline PlaneVector ShiftedPlace(const PlaneVector& place, const PlaneVector& normal,
                                const PlaneVector& next)
{
    const PlaneVector towardNext = (next - place).Normalized();
    const PlaneVector step = normal * 2.0f;
    return normal.Dot(towardNext) <= 0.0f ? place - step : place + step;
}

}  // namespace outlines
