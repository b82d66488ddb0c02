// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/PackedVector.h"
#include "geometry/Sphere.h"
#include "host/MadeWhenUsed.h"

class CoordinateTransform;

/// The axis-aligned box and the sphere of a node, in its own (local) coordinates and, after its
/// transform, in its parent's (global) ones. A new one has everything 0 and nothing defined.
///
/// The corners of a box lie, with m the minimum and M the maximum, at (m, m, m), (m, M, m),
/// (m, M, M), (m, m, M), (M, m, m), (M, M, m), (M, M, M), (M, m, M): 6 is opposite 0. The global
/// corners are the transformed local ones and no longer along the axes. Boxes made under the
/// identity, as for most nodes of an imported file, take no memory until they are asked for.
///
/// Its record is the version and the fields in order.
class ORVANE_API BoundingElement : public CObject
{
    DECLARE_SERIAL(BoundingElement)

public:
    /// Bit of flags: the local bounds are defined.
    static constexpr DWORD localBoundsDefined = 0x1;

    // Eight corners.
    Vector* GetGlobalBoundingBox() { return boxes_.Get().global; }
    const Vector* GetGlobalBoundingBox() const { return boxes_.Get().global; }
    Vector* GetLocalBoundingBox() { return boxes_.Get().local; }
    const Vector* GetLocalBoundingBox() const { return boxes_.Get().local; }

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
    PackedVector globalMaximum;
    PackedVector globalMinimum;
    Sphere globalSphere;
    PackedVector localMaximum;
    PackedVector localMinimum;
    Sphere localSphere;

private:
    struct Corners_
    {
        Corners_(const Vector& m, const Vector& M, const CoordinateTransform& transform);

        Vector global[8];
        Vector local[8];
    };
    /// Both boxes. Two corners tell all while no transform has moved the box.
    class Boxes_
    {
    public:
        Boxes_() = default;
        Boxes_(const Boxes_& other) { *this = other; }
        Boxes_& operator=(const Boxes_& other);

        Corners_& Get() const;
        Corners_ Copy() const;
        void SetUnmoved(const Vector& minimum, const Vector& maximum);

    private:
        Corners_ Unmoved_() const;

        PackedVector minimum_;
        PackedVector maximum_;
        MadeWhenUsed<Corners_> corners_;
    };

    void EncloseGlobally_(const Vector* corners, int count);
    void SerializeBounds_(CArchive& archive, Corners_& corners);

    Boxes_ boxes_;
};
