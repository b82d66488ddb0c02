// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Vector.h"
#include "platform/Types.h"

/// A bounding sphere that can grow to enclose another sphere. A new sphere is undefined, with all
/// numbers 0, until a setter is called.
///
/// Its record is the version, centre, diameter, flags and radius.
class ORVANE_API Sphere : public CObject
{
    DECLARE_SERIAL(Sphere)

public:
    Vector GetCenter() const { return center; }
    float GetDiameter() const { return diameter; }
    float GetRadius() const { return radius; }

    // Each of the three setters makes the sphere defined. SetDiameter also sets the radius, and
    // SetRadius also sets the diameter.
    void SetCenter(const Vector& newCenter);
    void SetDiameter(float newDiameter);
    void SetRadius(float newRadius);

    int IsDefined() const { return static_cast<int>(flags & definedFlag); }
    void SetDefined() { flags |= definedFlag; }
    /// Also sets centre, diameter and radius to 0.
    void ClearDefined();

    /// Makes the line from \p a to \p b a diameter of the sphere. The sphere becomes undefined when
    /// its radius is not greater than 1e-5.
    void CalculateSphere(const Vector& a, const Vector& b);

    /// Grows to the smallest sphere that contains both spheres. If this sphere is undefined, it
    /// becomes a copy of the other sphere, even if that sphere is undefined, too. If only the other
    /// sphere is undefined, that sphere counts as a point at its centre.
    Sphere& operator+=(const Sphere& other);
    Sphere operator+(const Sphere& other) const { return Sphere(*this) += other; }

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

protected:
    Vector center;
    float diameter = 0.0f;
    DWORD flags = 0;  ///< bit 0: defined
    float radius = 0.0f;

private:
    static constexpr DWORD definedFlag = 0x1;
};
