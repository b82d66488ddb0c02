// SPDX-License-Identifier: MIT
#include "geometry/BoundingElement.h"

#include "geometry/CoordinateTransform.h"
#include "host/RecordVersion.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

IMPLEMENT_SERIAL(BoundingElement, CObject, VERSIONABLE_SCHEMA | 1)

static void Widen(PackedVector& minimum, PackedVector& maximum, const Vector& low,
                  const Vector& high)
{
    minimum = {std::min(minimum.x, low.x), std::min(minimum.y, low.y), std::min(minimum.z, low.z)};
    maximum = {std::max(maximum.x, high.x), std::max(maximum.y, high.y),
               std::max(maximum.z, high.z)};
}

// The one that has the line between the corners as a diameter.
static Sphere SphereOn(const Vector& minimum, const Vector& maximum)
{
    Sphere sphere;
    sphere.CalculateSphere(minimum, maximum);
    return sphere;
}

static bool IsFinite(const Vector& vector)
{
    return std::isfinite(vector.x) && std::isfinite(vector.y) && std::isfinite(vector.z);
}

BoundingElement::Corners_::Corners_(const Vector& m, const Vector& M,
                                    const CoordinateTransform& transform)
{
    local[0].SetVector(m.x, m.y, m.z);
    local[1].SetVector(m.x, M.y, m.z);
    local[2].SetVector(m.x, M.y, M.z);
    local[3].SetVector(m.x, m.y, M.z);
    local[4].SetVector(M.x, m.y, m.z);
    local[5].SetVector(M.x, M.y, m.z);
    local[6].SetVector(M.x, M.y, M.z);
    local[7].SetVector(M.x, m.y, M.z);
    transform.TransformVectors(local, global, 8);
}

BoundingElement::Boxes_& BoundingElement::Boxes_::operator=(const Boxes_& other)
{
    minimum_ = other.minimum_;
    maximum_ = other.maximum_;
    if (corners_.IfMade() != nullptr || other.corners_.IfMade() != nullptr)
    {
        Get() = other.Copy();
    }
    return *this;
}

BoundingElement::Corners_& BoundingElement::Boxes_::Get() const
{
    return corners_.Get([this] { return Unmoved_(); });
}

BoundingElement::Corners_ BoundingElement::Boxes_::Copy() const
{
    const Corners_* const made = corners_.IfMade();
    return made != nullptr ? *made : Unmoved_();
}

void BoundingElement::Boxes_::SetUnmoved(const Vector& minimum, const Vector& maximum)
{
    minimum_ = minimum;
    maximum_ = maximum;
    if (corners_.IfMade() != nullptr)
    {
        Get() = Unmoved_();
    }
}

BoundingElement::Corners_ BoundingElement::Boxes_::Unmoved_() const
{
    return Corners_(minimum_, maximum_, CoordinateTransform());
}

BoundingElement::Extents_::Extents_(const Vector& minimum, const Vector& maximum)
    : localMaximum(maximum), localMinimum(minimum)
{
    EncloseUnmoved(minimum, maximum);
    localSphere = SphereOn(minimum, maximum);
}

BoundingElement::All_::All_(const Vector& minimum, const Vector& maximum)
    : Extents_(minimum, maximum)
{
    boxes.SetUnmoved(minimum, maximum);
}

BoundingElement::BoundingElement(const BoundingElement& other) : CObject(other)
{
    *this = other;
}

BoundingElement& BoundingElement::operator=(const BoundingElement& other)
{
    if (all_.IfMade() != nullptr || other.all_.IfMade() != nullptr)
    {
        Whole_() = other.Copy_();
    }
    flags = other.flags;
    localMinimum_ = other.localMinimum_;
    localMaximum_ = other.localMaximum_;
    return *this;
}

BoundingElement::Extents_ BoundingElement::CurrentExtents_() const
{
    const All_* const all = all_.IfMade();
    return all != nullptr ? Extents_(*all) : Extents_(localMinimum_, localMaximum_);
}

BoundingElement::All_ BoundingElement::Copy_() const
{
    const All_* const all = all_.IfMade();
    return all != nullptr ? *all : All_(localMinimum_, localMaximum_);
}

BoundingElement::All_& BoundingElement::Whole_() const
{
    return all_.Get([this] { return All_(localMinimum_, localMaximum_); });
}

// After a calculation for the identity, when the local sphere follows from the two corners too, to
// the bit. Boxes that somebody has a pointer to stay, and so do those that were loaded, with a
// global sphere that may have more flags.
void BoundingElement::KeepTheTwo_()
{
    const All_& all = *all_.IfMade();
    if (!all.boxes.AreMade() &&
        all.localSphere.IsSameAs(SphereOn(all.localMinimum, all.localMaximum)))
    {
        localMinimum_ = all.localMinimum;
        localMaximum_ = all.localMaximum;
        all_.Forget();
    }
}

Sphere BoundingElement::GetLocalSphere() const
{
    const All_* const all = all_.IfMade();
    return all != nullptr ? all->localSphere : SphereOn(localMinimum_, localMaximum_);
}

void BoundingElement::ResetLocalBounds()
{
    flags &= ~localBoundsDefined;
    All_& all = Whole_();
    all.localMinimum = {FLT_MAX, FLT_MAX, FLT_MAX};
    all.localMaximum = {-FLT_MAX, -FLT_MAX, -FLT_MAX};
    all.localSphere.ClearDefined();
    all.globalSphere.ClearDefined();
}

void BoundingElement::AccumulateLocalBounds(const Vector& minimum, const Vector& maximum,
                                            const Sphere& sphere)
{
    All_& all = Whole_();
    all.localSphere += sphere;
    if (all.localSphere.IsDefined() == 0)
    {
        flags &= ~localBoundsDefined;
        return;
    }
    Widen(all.localMinimum, all.localMaximum, minimum, maximum);
    flags |= localBoundsDefined;
}

void BoundingElement::SetLocalBounds(const Vector& minimum, const Vector& maximum,
                                     const CoordinateTransform& transform)
{
    All_& all = Whole_();
    all.localMinimum = minimum;
    all.localMaximum = maximum;
    flags |= localBoundsDefined;
    CalculateBounds(transform);
}

void BoundingElement::CalculateBounds(const CoordinateTransform& transform)
{
    All_& all = Whole_();
    if ((flags & localBoundsDefined) == 0)
    {
        all.globalMaximum = all.globalMinimum = all.localMaximum = all.localMinimum = Vector();
        all.globalSphere.ClearDefined();
        all.localSphere.ClearDefined();
        return;
    }

    const Vector minimum = all.localMinimum;
    const Vector maximum = all.localMaximum;
    if (transform.IsIdentity() && IsFinite(minimum) && IsFinite(maximum))
    {
        all.boxes.SetUnmoved(minimum, maximum);
        all.EncloseUnmoved(minimum, maximum);
        KeepTheTwo_();
        return;
    }
    const Corners_ corners(minimum, maximum, transform);
    all.boxes.Get() = corners;
    all.Enclose(corners.global, 8);
    all.globalSphere.CalculateSphere(corners.global[0], corners.global[6]);
}

// Every corner keeps its coordinates: two have them all.
void BoundingElement::Extents_::EncloseUnmoved(const Vector& minimum, const Vector& maximum)
{
    Vector ends[2] = {minimum, maximum};
    CoordinateTransform().TransformVectors(ends, 2);  // a negative zero becomes a positive one
    Enclose(ends, 2);
    globalSphere.CalculateSphere(ends[0], ends[1]);
}

void BoundingElement::Extents_::Enclose(const Vector* corners, int count)
{
    // Boxes wholly beyond ten million units keep these starts as an extreme: meant so, see
    // GlobalExtremesStartAtTenMillion.
    globalMinimum = {1e7f, 1e7f, 1e7f};
    globalMaximum = {-1e7f, -1e7f, -1e7f};
    for (int i = 0; i < count; ++i)
    {
        Widen(globalMinimum, globalMaximum, corners[i], corners[i]);
    }
}

void BoundingElement::Serialize(CArchive& archive)
{
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(BoundingElement));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(BoundingElement));
    archive << flags;
    All_ all = Copy_();
    Corners_ corners = all.boxes.Copy();
    SerializeExtents_(archive, all, corners);
}

void BoundingElement::DeserializeVersion1(CArchive& archive)
{
    archive >> flags;
    All_& all = Whole_();
    SerializeExtents_(archive, all, all.boxes.Get());
}

// Members serialize themselves, so that storing and loading read the same.
void BoundingElement::SerializeExtents_(CArchive& archive, Extents_& extents, Corners_& corners)
{
    for (Vector& corner : corners.global)
    {
        corner.Serialize(archive);
    }
    extents.globalMaximum.Serialize(archive);
    extents.globalMinimum.Serialize(archive);
    extents.globalSphere.Serialize(archive);
    for (Vector& corner : corners.local)
    {
        corner.Serialize(archive);
    }
    extents.localMaximum.Serialize(archive);
    extents.localMinimum.Serialize(archive);
    extents.localSphere.Serialize(archive);
}
