// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Sphere.h"

class CoordinateTransform;

/// The axis-aligned box and the sphere of a node, in its own (local) coordinates and, after its
/// transform, in its parent's (global) ones. A new one has everything 0 and nothing defined.
///
/// The corners of a box lie, with m the minimum and M the maximum, at (m, m, m), (m, M, m),
/// (m, M, M), (m, m, M), (M, m, m), (M, M, m), (M, M, M), (M, m, M): 6 is opposite 0. The global
/// corners are the transformed local ones and no longer along the axes.
///
/// Its record is the version and the fields in order.
class ORVANE_API BoundingElement : public CObject
{
    DECLARE_SERIAL(BoundingElement)

public:
    /// Bit of flags: the local bounds are defined.
    static constexpr DWORD localBoundsDefined = 0x1;

    // Eight corners.
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

    /// Local bounds undefined, the extremes inside out and ready to accumulate, both spheres
    /// undefined.
    void ResetLocalBounds();

    /// Widens the local bounds. While the local sphere stays undefined the box is left alone and
    /// the bounds count as undefined.
    void AccumulateLocalBounds(const Vector& minimum, const Vector& maximum, const Sphere& sphere);

    /// Replaces the local box, not the local sphere, and calculates the global bounds.
    void SetLocalBounds(const Vector& minimum, const Vector& maximum,
                        const CoordinateTransform& transform);

    /// Makes both boxes and the global extremes and sphere from the local extremes. The global
    /// sphere is the one on the diagonal of the global box, whatever the local sphere is. Undefined
    /// local bounds give extremes of 0 and undefined spheres, and leave the boxes.
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
    void SerializeBounds_(CArchive& archive);
};
