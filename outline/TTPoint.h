// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <cstdint>

/// One point of a TrueType outline, in whole outline units, with y up.
class ORVANE_API TTPoint
{
public:
    enum Types : std::int16_t
    {
        OffCurve = 1,  ///< a control point of a quadratic spline
        OnCurve = 2    ///< a point that the outline passes through
    };

    TTPoint() = default;
    TTPoint(short newType, short newX, short newY) : type(newType), x(newX), y(newY) {}

    unsigned char GetQuadraticResolution() const { return quadraticResolution; }
    /// Only the lowest 8 bits are kept.
    void SetQuadraticResolution(int resolution)
    {
        quadraticResolution = static_cast<std::uint8_t>(resolution);
    }
    short GetType() const { return type; }
    void SetType(short newType) { type = newType; }
    short GetX() const { return x; }
    void SetX(short newX) { x = newX; }
    short GetY() const { return y; }
    void SetY(short newY) { y = newY; }

    /// The number of straight segments into which the spline with this control point is flattened;
    /// 0 for a point on the curve.
    std::uint8_t quadraticResolution = 0;
    std::int16_t type = 0;  ///< one of Types; 0 in a new point
    std::int16_t x = 0;
    std::int16_t y = 0;
};
