// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Point.h"
#include "geometry/Vector2D.h"
#include "host/CObject.h"

#include <cmath>

/// A single-precision vector in space. Arithmetic is component by component, in float. A Vector2D
/// or Point2D operand changes only x and y; a Point is widened to a Vector.
///
/// Its record is x, y, z as floats, without a version.
class ORVANE_API Vector : public CObject
{
    DECLARE_SERIAL(Vector)

public:
    Vector() = default;
    Vector(float newX, float newY, float newZ) : x(newX), y(newY), z(newZ) {}
    Vector(const Vector2D& vector) : x(vector.x), y(vector.y) {}
    Vector(const Point& point) : x(point.x), y(point.y), z(point.z) {}
    Vector(const Point2D& point) : x(point.x), y(point.y) {}

    void SetVector(float newX, float newY, float newZ)
    {
        x = newX;
        y = newY;
        z = newZ;
    }
    /// The fourth argument is accepted and ignored.
    void SetVector(float newX, float newY, float newZ, unsigned int)
    {
        SetVector(newX, newY, newZ);
    }

    /// Sets x and y. The z component does not change.
    Vector& operator=(const Vector2D& vector)
    {
        SetVector(vector.x, vector.y, z);
        return *this;
    }
    /// Sets x and y. The z component does not change.
    Vector& operator=(const Point2D& point)
    {
        SetVector(point.x, point.y, z);
        return *this;
    }

    Vector& operator+=(const Vector& other) { return *this = *this + other; }
    Vector& operator+=(const Vector2D& other) { return *this = *this + other; }
    Vector& operator+=(const Point2D& other) { return *this = *this + other; }
    Vector& operator-=(const Vector& other) { return *this = *this - other; }
    Vector& operator-=(const Vector2D& other) { return *this = *this - other; }
    Vector& operator-=(const Point2D& other) { return *this = *this - other; }
    Vector& operator*=(float factor) { return *this = *this * factor; }
    /// Multiplies component by component, unlike operator*, which is the cross product.
    Vector& operator*=(const Vector& other)
    {
        SetVector(x * other.x, y * other.y, z * other.z);
        return *this;
    }
    Vector& operator/=(float divisor) { return *this = *this / divisor; }
    Vector& operator/=(const Vector& other) { return *this = *this / other; }

    Vector operator+(const Vector& other) const
    {
        return Vector(x + other.x, y + other.y, z + other.z);
    }
    Vector operator+(const Vector2D& other) const { return Vector(x + other.x, y + other.y, z); }
    Vector operator+(const Point2D& other) const { return Vector(x + other.x, y + other.y, z); }
    Vector operator-(const Vector& other) const
    {
        return Vector(x - other.x, y - other.y, z - other.z);
    }
    Vector operator-(const Vector2D& other) const { return Vector(x - other.x, y - other.y, z); }
    Vector operator-(const Point2D& other) const { return Vector(x - other.x, y - other.y, z); }
    Vector operator-() const { return Vector(-x, -y, -z); }
    Vector operator*(float factor) const { return Vector(x * factor, y * factor, z * factor); }
    Vector operator/(float divisor) const { return Vector(x / divisor, y / divisor, z / divisor); }
    /// Divides component by component.
    Vector operator/(const Vector& other) const
    {
        return Vector(x / other.x, y / other.y, z / other.z);
    }

    /// The cross product, right-handed.
    Vector operator*(const Vector& other) const
    {
        return Vector(y * other.z - z * other.y, z * other.x - x * other.z,
                      x * other.y - y * other.x);
    }

    float Dot(const Vector& other) const { return x * other.x + y * other.y + z * other.z; }

    /// Computed in double, then rounded to float.
    float Length() const { return static_cast<float>(LengthAsDouble()); }
    float DistanceTo(const Vector& other) const { return (other - *this).Length(); }

    /// Divides by the length, computed in double. A vector of length 0 does not change, and the
    /// result is 0; otherwise the result is 1.
    int Normalize()
    {
        const double length = LengthAsDouble();
        if (length == 0.0)
        {
            return 0;
        }
        SetVector(static_cast<float>(x / length), static_cast<float>(y / length),
                  static_cast<float>(z / length));
        return 1;
    }

    /// A copy divided by the length, rounded to float. The length is not checked: a vector of
    /// length 0 gives infinities or not-a-number.
    Vector CopyNormalize() const { return *this / Length(); }

    /// Normalizes this vector, then the other vector, and returns the cosine of the angle between
    /// them. Returns 0 if either vector has length 0. If this vector has length 0, the other vector
    /// does not change. Changing both vectors is required; see NormalizeAndDotChangesBothOperands.
    float NormalizeAndDot(Vector& other)
    {
        return Normalize() != 0 && other.Normalize() != 0 ? Dot(other) : 0.0f;
    }

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;

private:
    double LengthAsDouble() const
    {
        return std::sqrt(double{x} * x + double{y} * y + double{z} * z);
    }
};
