// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <cstdint>

/// One point of a TrueType outline, a plain value, in whole units of the outline with y up.
class ORVANE_API TTPoint
{
public:
    enum Types : std::int16_t
    {
        OffCurve = 1,  ///< control point of a quadratic spline
        OnCurve = 2
    };

    TTPoint() = default;
    TTPoint(short newType, short newX, short newY) : type(newType), x(newX), y(newY) {}

    unsigned char GetQuadraticResolution() const { return quadraticResolution; }
    /// Kept as 8 bits.
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

    /// Straight segments for the spline piece that this control point bends; 0 on the curve.
    std::uint8_t quadraticResolution = 0;
    std::int16_t type = 0;  ///< one of Types, or 0 while undecided
    std::int16_t x = 0;
    std::int16_t y = 0;
};
