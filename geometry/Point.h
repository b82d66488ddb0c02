// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Point2D and Point: points of whole numbers, with signed 16-bit components.

#include "platform/Export.h"

#include <cstdint>

/// A point in the plane. Arithmetic is component by component and wraps at 16 bits. Division
/// truncates; the divisor must not be 0.
class ORVANE_API Point2D
{
public:
    Point2D() = default;
    Point2D(std::int16_t newX, std::int16_t newY) : x(newX), y(newY) {}

    void SetPoint(std::int16_t newX, std::int16_t newY)
    {
        x = newX;
        y = newY;
    }

    Point2D& operator+=(const Point2D& other) { return *this = *this + other; }
    Point2D& operator-=(const Point2D& other) { return *this = *this - other; }
    Point2D& operator*=(std::int16_t factor) { return *this = *this * factor; }
    Point2D& operator/=(std::int16_t divisor) { return *this = Wrapped(x / divisor, y / divisor); }

    Point2D operator+(const Point2D& other) const { return Wrapped(x + other.x, y + other.y); }
    Point2D operator-(const Point2D& other) const { return Wrapped(x - other.x, y - other.y); }
    Point2D operator-() const { return Wrapped(-x, -y); }
    Point2D operator*(std::int16_t factor) const { return Wrapped(x * factor, y * factor); }

    std::int16_t x = 0;
    std::int16_t y = 0;

private:
    static Point2D Wrapped(int x, int y)
    {
        return {static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)};
    }
};

/// A point in space, with the arithmetic of Point2D.
class ORVANE_API Point
{
public:
    Point() = default;
    Point(std::int16_t newX, std::int16_t newY, std::int16_t newZ) : x(newX), y(newY), z(newZ) {}

    void SetPoint(std::int16_t newX, std::int16_t newY, std::int16_t newZ)
    {
        x = newX;
        y = newY;
        z = newZ;
    }

    Point& operator+=(const Point& other) { return *this = *this + other; }
    Point& operator-=(const Point& other) { return *this = *this - other; }
    Point& operator*=(std::int16_t factor) { return *this = *this * factor; }
    Point& operator/=(std::int16_t divisor)
    {
        return *this = Wrapped(x / divisor, y / divisor, z / divisor);
    }

    Point operator+(const Point& other) const
    {
        return Wrapped(x + other.x, y + other.y, z + other.z);
    }
    Point operator-(const Point& other) const
    {
        return Wrapped(x - other.x, y - other.y, z - other.z);
    }
    Point operator-() const { return Wrapped(-x, -y, -z); }
    Point operator*(std::int16_t factor) const
    {
        return Wrapped(x * factor, y * factor, z * factor);
    }

    std::int16_t x = 0;
    std::int16_t y = 0;
    std::int16_t z = 0;

private:
    static Point Wrapped(int x, int y, int z)
    {
        return {static_cast<std::int16_t>(x), static_cast<std::int16_t>(y),
                static_cast<std::int16_t>(z)};
    }
};
