// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Point.h"

#include <cmath>

/// A single-precision vector in the plane. Arithmetic is component by component, in float.
class ORVANE_API Vector2D
{
public:
    Vector2D() = default;
    Vector2D(float newX, float newY) : x(newX), y(newY) {}

    void SetVector(float newX, float newY)
    {
        x = newX;
        y = newY;
    }

    Vector2D& operator=(const Point2D& point)
    {
        SetVector(point.x, point.y);
        return *this;
    }

    Vector2D& operator+=(const Vector2D& other) { return *this = *this + other; }
    Vector2D& operator+=(const Point2D& other) { return *this = *this + other; }
    Vector2D& operator-=(const Vector2D& other) { return *this = *this - other; }
    Vector2D& operator-=(const Point2D& other) { return *this = *this - other; }
    Vector2D& operator*=(float factor) { return *this = *this * factor; }
    Vector2D& operator*=(const Vector2D& other)
    {
        return *this = Vector2D(x * other.x, y * other.y);
    }
    Vector2D& operator/=(float divisor) { return *this = *this / divisor; }
    Vector2D& operator/=(const Vector2D& other)
    {
        return *this = Vector2D(x / other.x, y / other.y);
    }

    Vector2D operator+(const Vector2D& other) const { return {x + other.x, y + other.y}; }
    Vector2D operator+(const Point2D& other) const { return {x + other.x, y + other.y}; }
    Vector2D operator-(const Vector2D& other) const { return {x - other.x, y - other.y}; }
    Vector2D operator-(const Point2D& other) const { return {x - other.x, y - other.y}; }
    Vector2D operator-() const { return {-x, -y}; }
    Vector2D operator*(float factor) const { return {x * factor, y * factor}; }
    Vector2D operator/(float divisor) const { return {x / divisor, y / divisor}; }

    float Dot(const Vector2D& other) const { return x * other.x + y * other.y; }

    /// Computed in double, then rounded to float.
    float Length() const { return static_cast<float>(LengthAsDouble()); }
    float DistanceTo(const Vector2D& other) const { return (other - *this).Length(); }

    /// Divides by the length, computed in double. A vector of length 0 does not change, and the
    /// result is 0; otherwise the result is 1.
    int Normalize()
    {
        const double length = LengthAsDouble();
        if (length == 0.0)
        {
            return 0;
        }
        SetVector(static_cast<float>(x / length), static_cast<float>(y / length));
        return 1;
    }

    /// A copy divided by the length, rounded to float. The length is not checked: a vector of
    /// length 0 gives infinities or not-a-number.
    Vector2D CopyNormalize() const { return *this / Length(); }

    /// Normalizes this vector, then the other vector, and returns the cosine of the angle between
    /// them. Returns 0 if either vector has length 0. If this vector has length 0, the other vector
    /// does not change. Changing both vectors is required; see NormalizeAndDotChangesBothOperands.
    float NormalizeAndDot(Vector2D& other)
    {
        return Normalize() != 0 && other.Normalize() != 0 ? Dot(other) : 0.0f;
    }

    /// The two floats, x first.
    operator float*() { return &x; }
    operator const float*() const { return &x; }

    float x = 0.0f;
    float y = 0.0f;

private:
    double LengthAsDouble() const { return std::sqrt(double{x} * x + double{y} * y); }
};
