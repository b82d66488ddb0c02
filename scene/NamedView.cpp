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
    else if (ReadRecordVersion(archive, RUNTIME_CLASS(NamedView)) == 1)
    {
        DeserializeVersion1(archive);
    }
    else
    {
        DeserializeVersion2(archive);
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
