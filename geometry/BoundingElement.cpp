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
    minimum.SetVector(std::min(minimum.x, low.x), std::min(minimum.y, low.y),
                      std::min(minimum.z, low.z));
    maximum.SetVector(std::max(maximum.x, high.x), std::max(maximum.y, high.y),
                      std::max(maximum.z, high.z));
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

void BoundingElement::ResetLocalBounds()
{
    flags &= ~localBoundsDefined;
    localMinimum.SetVector(FLT_MAX, FLT_MAX, FLT_MAX);
    localMaximum.SetVector(-FLT_MAX, -FLT_MAX, -FLT_MAX);
    localSphere.ClearDefined();
    globalSphere.ClearDefined();
}

void BoundingElement::AccumulateLocalBounds(const Vector& minimum, const Vector& maximum,
                                            const Sphere& sphere)
{
    localSphere += sphere;
    if (localSphere.IsDefined() == 0)
    {
        flags &= ~localBoundsDefined;
        return;
    }
    Widen(localMinimum, localMaximum, minimum, maximum);
    flags |= localBoundsDefined;
}

void BoundingElement::SetLocalBounds(const Vector& minimum, const Vector& maximum,
                                     const CoordinateTransform& transform)
{
    localMinimum = minimum;
    localMaximum = maximum;
    flags |= localBoundsDefined;
    CalculateBounds(transform);
}

void BoundingElement::CalculateBounds(const CoordinateTransform& transform)
{
    if ((flags & localBoundsDefined) == 0)
    {
        for (PackedVector* extreme : {&globalMaximum, &globalMinimum, &localMaximum, &localMinimum})
        {
            extreme->SetVector(0.0f, 0.0f, 0.0f);
        }
        globalSphere.ClearDefined();
        localSphere.ClearDefined();
        return;
    }

    if (transform.IsIdentity() && IsFinite(localMinimum) && IsFinite(localMaximum))
    {
        // Every corner keeps its coordinates: two have them all.
        Vector ends[2] = {localMinimum, localMaximum};
        transform.TransformVectors(ends, 2);
        boxes_.SetUnmoved(localMinimum, localMaximum);
        EncloseGlobally_(ends, 2);
        globalSphere.CalculateSphere(ends[0], ends[1]);
        return;
    }
    const Corners_ corners(localMinimum, localMaximum, transform);
    boxes_.Get() = corners;
    EncloseGlobally_(corners.global, 8);
    globalSphere.CalculateSphere(corners.global[0], corners.global[6]);
}

void BoundingElement::EncloseGlobally_(const Vector* corners, int count)
{
    // Boxes wholly beyond ten million units keep these starts as an extreme: meant so, see
    // GlobalExtremesStartAtTenMillion.
    globalMinimum.SetVector(1e7f, 1e7f, 1e7f);
    globalMaximum.SetVector(-1e7f, -1e7f, -1e7f);
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
    Corners_ corners = boxes_.Copy();
    SerializeBounds_(archive, corners);
}

void BoundingElement::DeserializeVersion1(CArchive& archive)
{
    archive >> flags;
    SerializeBounds_(archive, boxes_.Get());
}

// Members serialize themselves, so that storing and loading read the same.
void BoundingElement::SerializeBounds_(CArchive& archive, Corners_& corners)
{
    for (Vector& corner : corners.global)
    {
        corner.Serialize(archive);
    }
    globalMaximum.Serialize(archive);
    globalMinimum.Serialize(archive);
    globalSphere.Serialize(archive);
    for (Vector& corner : corners.local)
    {
        corner.Serialize(archive);
    }
    localMaximum.Serialize(archive);
    localMinimum.Serialize(archive);
    localSphere.Serialize(archive);
}
