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
/// corners are the transformed local ones and no longer along the axes.
///
/// All of this follows from the local minimum and maximum where the transform is the identity and
/// the local sphere is the one on the box's diagonal, as for most nodes of an imported file: these
/// keep no more than the two.
///
/// Its record is the version and the fields in order.
class ORVANE_API BoundingElement : public CObject
{
    DECLARE_SERIAL(BoundingElement)

public:
    /// Bit of flags: the local bounds are defined.
    static constexpr DWORD localBoundsDefined = 0x1;

    BoundingElement() = default;
    BoundingElement(const BoundingElement& other);
    BoundingElement& operator=(const BoundingElement& other);

    // Eight corners.
    Vector* GetGlobalBoundingBox() { return Whole_().boxes.Get().global; }
    const Vector* GetGlobalBoundingBox() const { return Whole_().boxes.Get().global; }
    Vector* GetLocalBoundingBox() { return Whole_().boxes.Get().local; }
    const Vector* GetLocalBoundingBox() const { return Whole_().boxes.Get().local; }

    Vector GetGlobalMaximum() const { return CurrentExtents_().globalMaximum; }
    Vector GetGlobalMinimum() const { return CurrentExtents_().globalMinimum; }
    Vector GetGlobalCenter() const { return GetGlobalSphere().GetCenter(); }
    float GetGlobalDiameter() const { return GetGlobalSphere().GetDiameter(); }
    float GetGlobalRadius() const { return GetGlobalSphere().GetRadius(); }
    Sphere GetGlobalSphere() const { return CurrentExtents_().globalSphere; }

    Vector GetLocalMaximum() const
    {
        return all_.IfMade() != nullptr ? all_.IfMade()->localMaximum : localMaximum_;
    }
    Vector GetLocalMinimum() const
    {
        return all_.IfMade() != nullptr ? all_.IfMade()->localMinimum : localMinimum_;
    }
    Vector GetLocalCenter() const { return GetLocalSphere().GetCenter(); }
    float GetLocalDiameter() const { return GetLocalSphere().GetDiameter(); }
    float GetLocalRadius() const { return GetLocalSphere().GetRadius(); }
    Sphere GetLocalSphere() const;

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
        bool AreMade() const { return corners_.IfMade() != nullptr; }
        void SetUnmoved(const Vector& minimum, const Vector& maximum);

    private:
        Corners_ Unmoved_() const;

        PackedVector minimum_;
        PackedVector maximum_;
        MadeWhenUsed<Corners_> corners_;
    };
    struct Extents_
    {
        /// Those that follow from the two.
        Extents_(const Vector& minimum, const Vector& maximum);

        void Enclose(const Vector* corners, int count);
        void EncloseUnmoved(const Vector& minimum, const Vector& maximum);

        PackedVector globalMaximum;
        PackedVector globalMinimum;
        Sphere globalSphere;
        PackedVector localMaximum;
        PackedVector localMinimum;
        Sphere localSphere;
    };
    struct All_ : Extents_
    {
        All_(const Vector& minimum, const Vector& maximum);

        Boxes_ boxes;
    };

    Extents_ CurrentExtents_() const;
    All_ Copy_() const;
    All_& Whole_() const;
    void KeepTheTwo_();
    static void SerializeExtents_(CArchive& archive, Extents_& extents, Corners_& corners);

    MadeWhenUsed<All_> all_;  // while it is not there all follows from the two:
    PackedVector localMinimum_;
    PackedVector localMaximum_;

public:
    DWORD flags = 0;  // the last, where the object has padding behind it
};
