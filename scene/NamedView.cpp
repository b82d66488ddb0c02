// SPDX-License-Identifier: MIT
#include "scene/NamedView.h"

#include "host/RecordVersion.h"

IMPLEMENT_SERIAL(NamedView, CObject, VERSIONABLE_SCHEMA | 2)

NamedView::NamedView(const CString& newName, const CoordinateTransform& newTransform,
                     const ProjectionData& newProjection)
    : name(newName), transform(newTransform), projection(newProjection)
{}

void NamedView::Serialize(CArchive& archive)
{
    CObject::Serialize(archive);
    if (archive.IsStoring())
    {
        WriteRecordVersion(archive, RUNTIME_CLASS(NamedView));
        archive << name;
        transform.Serialize(archive);
        projection.Serialize(archive);
    }
    else
    {
        ReadVersionedRecord(archive, *this, &NamedView::DeserializeVersion1,
                            &NamedView::DeserializeVersion2);
    }
}

void NamedView::DeserializeVersion1(CArchive& archive)
{
    archive >> name;
    transform.Serialize(archive);
}

void NamedView::DeserializeVersion2(CArchive& archive)
{
    DeserializeVersion1(archive);
    projection.Serialize(archive);
}
