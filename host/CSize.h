// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Types.h"

/// CSize and CPoint: whole-numbered sizes and points, as values.

class CSize : public SIZE
{
public:
    CSize() : SIZE{0, 0} {}
    CSize(int width, int height) : SIZE{width, height} {}
    CSize(const SIZE& size) : SIZE(size) {}

    bool operator==(const SIZE& other) const { return cx == other.cx && cy == other.cy; }
    bool operator!=(const SIZE& other) const { return !(*this == other); }
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

    bool operator==(const POINT& other) const { return x == other.x && y == other.y; }
    bool operator!=(const POINT& other) const { return !(*this == other); }
    CPoint& operator+=(const SIZE& size) { return *this = *this + size; }
    CPoint& operator-=(const SIZE& size) { return *this = *this - size; }
    CPoint operator+(const SIZE& size) const { return {x + size.cx, y + size.cy}; }
    CPoint operator-(const SIZE& size) const { return {x - size.cx, y - size.cy}; }
    CSize operator-(const POINT& other) const { return {x - other.x, y - other.y}; }
};
