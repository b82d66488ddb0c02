// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Vector.h"

/// A double-precision vector in space. Arithmetic is component by component; a Point2D operand
/// changes only x and y. Floats, whole numbers, Vectors and Points are widened to doubles without
/// loss.
///
/// Its record is x, y, z as doubles, without a version.
class ORVANE_API DVector : public CObject
{
    DECLARE_SERIAL(DVector)

public:
    DVector() = default;
    DVector(double newX, double newY, double newZ) : x(newX), y(newY), z(newZ) {}
    DVector(const Vector& vector) : x(vector.x), y(vector.y), z(vector.z) {}
    DVector(const Point& point) : x(point.x), y(point.y), z(point.z) {}
    DVector(const Point2D& point) : x(point.x), y(point.y) {}

    void SetDVector(double newX, double newY, double newZ)
    {
        x = newX;
        y = newY;
        z = newZ;
    }

    /// Sets x and y. The z component does not change.
    DVector& operator=(const Point2D& point)
    {
        SetDVector(point.x, point.y, z);
        return *this;
    }

    DVector& operator+=(const DVector& other) { return *this = *this + other; }
    DVector& operator+=(const Point2D& other) { return *this = *this + other; }
    DVector& operator-=(const DVector& other) { return *this = *this - other; }
    DVector& operator-=(const Point2D& other) { return *this = *this - other; }
    DVector& operator*=(double factor) { return *this = *this * factor; }
    DVector& operator/=(double divisor) { return *this = *this / divisor; }
    /// Divides component by component.
    DVector& operator/=(const DVector& other)
    {
        SetDVector(x / other.x, y / other.y, z / other.z);
        return *this;
    }

    DVector operator+(const DVector& other) const
    {
        return DVector(x + other.x, y + other.y, z + other.z);
    }
    DVector operator+(const Point2D& other) const { return DVector(x + other.x, y + other.y, z); }
    DVector operator-(const DVector& other) const
    {
        return DVector(x - other.x, y - other.y, z - other.z);
    }
    DVector operator-(const Point2D& other) const { return DVector(x - other.x, y - other.y, z); }
    DVector operator-() const { return DVector(-x, -y, -z); }
    DVector operator*(double factor) const { return DVector(x * factor, y * factor, z * factor); }
    DVector operator/(double divisor) const
    {
        return DVector(x / divisor, y / divisor, z / divisor);
    }

    /// The cross product, right-handed.
    DVector operator*(const DVector& other) const
    {
        return DVector(y * other.z - z * other.y, z * other.x - x * other.z,
                       x * other.y - y * other.x);
    }

    /// Each component rounded to float.
    operator Vector() const
    {
        return Vector(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
    }

    double Dot(const DVector& other) const { return x * other.x + y * other.y + z * other.z; }
    double Length() const { return std::sqrt(x * x + y * y + z * z); }
    double DistanceTo(const DVector& other) const { return (other - *this).Length(); }

    /// Divides by the length. A vector of length 0 does not change, and the result is 0; otherwise
    /// the result is 1.
    int Normalize()
    {
        const double length = Length();
        if (length == 0.0)
        {
            return 0;
        }
        *this /= length;
        return 1;
    }

    /// A normalized copy. The length is not checked: a vector of length 0 gives infinities or
    /// not-a-number.
    DVector CopyNormalize() const { return *this / Length(); }

    /// Normalizes this vector, then the other vector, and returns the cosine of the angle between
    /// them. Returns 0 if either vector has length 0. If this vector has length 0, the other vector
    /// does not change. Changing both vectors is required; see NormalizeAndDotChangesBothOperands.
    double NormalizeAndDot(DVector& other)
    {
        return Normalize() != 0 && other.Normalize() != 0 ? Dot(other) : 0.0;
    }

    /// Whether every component has the same bits: 0 and -0 differ, and not-a-number equals itself.
    bool IsSameAs(const DVector& other) const;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};
