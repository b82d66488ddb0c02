// SPDX-License-Identifier: MIT
#include "geometry/BoundingElement.h"

#include "geometry/CoordinateTransform.h"
#include "host/RecordVersion.h"

#include <algorithm>
#include <cfloat>

IMPLEMENT_SERIAL(BoundingElement, CObject, VERSIONABLE_SCHEMA | 1)

static void Widen(Vector& minimum, Vector& maximum, const Vector& low, const Vector& high)
{
    minimum.SetVector(std::min(minimum.x, low.x), std::min(minimum.y, low.y),
                      std::min(minimum.z, low.z));
    maximum.SetVector(std::max(maximum.x, high.x), std::max(maximum.y, high.y),
                      std::max(maximum.z, high.z));
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
        globalMaximum = globalMinimum = localMaximum = localMinimum = Vector();
        globalSphere.ClearDefined();
        localSphere.ClearDefined();
        return;
    }

    const Vector& m = localMinimum;
    const Vector& M = localMaximum;
    localBoundingBox[0].SetVector(m.x, m.y, m.z);
    localBoundingBox[1].SetVector(m.x, M.y, m.z);
    localBoundingBox[2].SetVector(m.x, M.y, M.z);
    localBoundingBox[3].SetVector(m.x, m.y, M.z);
    localBoundingBox[4].SetVector(M.x, m.y, m.z);
    localBoundingBox[5].SetVector(M.x, M.y, m.z);
    localBoundingBox[6].SetVector(M.x, M.y, M.z);
    localBoundingBox[7].SetVector(M.x, m.y, M.z);
    transform.TransformVectors(localBoundingBox, globalBoundingBox, 8);

    // A box that lies wholly beyond ten million units from the origin on an axis keeps one of these
    // starting values. This is required; see the test GlobalExtremesStartAtTenMillion.
    globalMinimum.SetVector(1e7f, 1e7f, 1e7f);
    globalMaximum.SetVector(-1e7f, -1e7f, -1e7f);
    for (const Vector& corner : globalBoundingBox)
    {
        Widen(globalMinimum, globalMaximum, corner, corner);
    }
    globalSphere.CalculateSphere(globalBoundingBox[0], globalBoundingBox[6]);
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
    SerializeBoxes(archive);
}

void BoundingElement::DeserializeVersion1(CArchive& archive)
{
    archive >> flags;
    SerializeBoxes(archive);
}

void BoundingElement::SerializeBoxes(CArchive& archive)
{
    for (Vector& corner : globalBoundingBox)
    {
        corner.Serialize(archive);
    }
    globalMaximum.Serialize(archive);
    globalMinimum.Serialize(archive);
    globalSphere.Serialize(archive);
    for (Vector& corner : localBoundingBox)
    {
        corner.Serialize(archive);
    }
    localMaximum.Serialize(archive);
    localMinimum.Serialize(archive);
    localSphere.Serialize(archive);
}
