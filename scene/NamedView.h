// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/CoordinateTransform.h"
#include "geometry/ProjectionData.h"
#include "host/CString.h"

/// A saved camera: a name, the view's transform and its lens.
class ORVANE_API NamedView : public CObject
{
    DECLARE_SERIAL(NamedView)

public:
    NamedView() = default;
    NamedView(const CString& newName, const CoordinateTransform& newTransform,
              const ProjectionData& newProjection);
    NamedView(const NamedView&) = default;
    NamedView& operator=(const NamedView&) = default;

    CString GetName() const { return name; }
    void SetName(const CString& newName) { name = newName; }
    CoordinateTransform GetTransform() const { return transform; }
    void SetTransform(const CoordinateTransform& newTransform) { transform = newTransform; }
    ProjectionData GetProjection() const { return projection; }
    void SetProjection(const ProjectionData& newProjection) { projection = newProjection; }

    void Serialize(CArchive& archive) override;
    /// Records of version 1 have no lens; the lens of this object does not change.
    void DeserializeVersion1(CArchive& archive);
    void DeserializeVersion2(CArchive& archive);

protected:
    CString name;
    CoordinateTransform transform;
    ProjectionData projection;
};
