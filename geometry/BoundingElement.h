// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Sphere.h"

class CoordinateTransform;

/// The axis-aligned box and the sphere of a node, in its own (local) coordinates and, after its
/// transform, in its parent's (global) coordinates. In a new object every number is 0 and nothing
/// is defined.
///
/// The corners 0 to 7 of a box, with m the minimum and M the maximum, are (m, m, m), (m, M, m), (m,
/// M, M), (m, m, M), (M, m, m), (M, M, m), (M, M, M), (M, m, M): corner 6 is opposite corner 0. The
/// global corners are the transformed local corners, so the global box may be turned.
///
/// Its record is the version and the fields in order.
class ORVANE_API BoundingElement : public CObject
{
    DECLARE_SERIAL(BoundingElement)

public:
    /// Bit of flags: the local bounds are defined.
    static constexpr DWORD localBoundsDefined = 0x1;

    // Each box is an array of eight corners.
    Vector* GetGlobalBoundingBox() { return globalBoundingBox; }
    const Vector* GetGlobalBoundingBox() const { return globalBoundingBox; }
    Vector* GetLocalBoundingBox() { return localBoundingBox; }
    const Vector* GetLocalBoundingBox() const { return localBoundingBox; }

    Vector GetGlobalMaximum() const { return globalMaximum; }
    Vector GetGlobalMinimum() const { return globalMinimum; }
    Vector GetGlobalCenter() const { return globalSphere.GetCenter(); }
    float GetGlobalDiameter() const { return globalSphere.GetDiameter(); }
    float GetGlobalRadius() const { return globalSphere.GetRadius(); }
    Sphere GetGlobalSphere() const { return globalSphere; }

    Vector GetLocalMaximum() const { return localMaximum; }
    Vector GetLocalMinimum() const { return localMinimum; }
    Vector GetLocalCenter() const { return localSphere.GetCenter(); }
    float GetLocalDiameter() const { return localSphere.GetDiameter(); }
    float GetLocalRadius() const { return localSphere.GetRadius(); }
    Sphere GetLocalSphere() const { return localSphere; }

    /// Makes the local bounds and both spheres undefined. The local minimum becomes FLT_MAX and the
    /// local maximum -FLT_MAX on each axis, so that the first accumulated box replaces both.
    void ResetLocalBounds();

    /// Widens the local sphere and the local box so that they contain the given sphere and box. If
    /// the local sphere is still undefined after that, the local box does not change and the local
    /// bounds become undefined.
    void AccumulateLocalBounds(const Vector& minimum, const Vector& maximum, const Sphere& sphere);

    /// Replaces the local box, but not the local sphere, and calculates the global bounds.
    void SetLocalBounds(const Vector& minimum, const Vector& maximum,
                        const CoordinateTransform& transform);

    /// Computes the corners of both boxes, the global minimum and maximum and the global sphere
    /// from the local minimum and maximum. The diameter of the global sphere is the diagonal of the
    /// global box; the local sphere is not used. When the local bounds are undefined, the minimum
    /// and maximum of both boxes become 0, both spheres become undefined, and the corners do not
    /// change.
    void CalculateBounds(const CoordinateTransform& transform);

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

    DWORD flags = 0;

protected:
    Vector globalBoundingBox[8];
    Vector globalMaximum;
    Vector globalMinimum;
    Sphere globalSphere;
    Vector localBoundingBox[8];
    Vector localMaximum;
    Vector localMinimum;
    Sphere localSphere;

private:
    void SerializeBoxes(CArchive& archive);
};
