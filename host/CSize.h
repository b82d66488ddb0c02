// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Types.h"

/// \file
/// CSize and CPoint: sizes and points with int coordinates.

inline bool operator==(const SIZE& a, const SIZE& b)
{
    return a.cx == b.cx && a.cy == b.cy;
}

inline bool operator==(const POINT& a, const POINT& b)
{
    return a.x == b.x && a.y == b.y;
}

class CSize : public SIZE
{
public:
    CSize() : SIZE{0, 0} {}
    CSize(int width, int height) : SIZE{width, height} {}
    CSize(const SIZE& size) : SIZE(size) {}

    CSize& operator+=(const SIZE& other) { return *this = *this + other; }
    CSize& operator-=(const SIZE& other) { return *this = *this - other; }
    CSize operator+(const SIZE& other) const { return {cx + other.cx, cy + other.cy}; }
    CSize operator-(const SIZE& other) const { return {cx - other.cx, cy - other.cy}; }
    CSize operator-() const { return {-cx, -cy}; }
};

class CPoint : public POINT
{
public:
    CPoint() : POINT{0, 0} {}
    CPoint(int horizontal, int vertical) : POINT{horizontal, vertical} {}
    CPoint(const POINT& point) : POINT(point) {}

    CPoint& operator+=(const SIZE& size) { return *this = *this + size; }
    CPoint& operator-=(const SIZE& size) { return *this = *this - size; }
    CPoint operator+(const SIZE& size) const { return {x + size.cx, y + size.cy}; }
    CPoint operator-(const SIZE& size) const { return {x - size.cx, y - size.cy}; }
    CSize operator-(const POINT& other) const { return {x - other.x, y - other.y}; }
};
