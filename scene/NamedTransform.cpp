// SPDX-License-Identifier: MIT
#include "scene/NamedTransform.h"

#include "host/RecordVersion.h"

IMPLEMENT_SERIAL(NamedTransform, CObject, VERSIONABLE_SCHEMA | 1)

NamedTransform::NamedTransform(const CString& newName, const CoordinateTransform& newTransform)
    : name(newName), transform(newTransform)
{}

void NamedTransform::Serialize(CArchive& archive)
{
    CObject::Serialize(archive);
    if (archive.IsStoring())
    {
        WriteRecordVersion(archive, RUNTIME_CLASS(NamedTransform));
        archive << name;
    }
    else
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(NamedTransform));
        archive >> name;
    }
    transform.Serialize(archive);
}
