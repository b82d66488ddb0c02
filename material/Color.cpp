// SPDX-License-Identifier: MIT
#include "material/Color.h"

#include "host/RecordVersion.h"

IMPLEMENT_SERIAL(Color, CObject, VERSIONABLE_SCHEMA | 1)

void Color::Reset()
{
    *this = Color();
}

void Color::Serialize(CArchive& archive)
{
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(Color));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(Color));
    ambientColor.Serialize(archive);
    diffuseColor.Serialize(archive);
    emissionColor.Serialize(archive);
    specularColor.Serialize(archive);
    archive << shininess;
}

void Color::DeserializeVersion1(CArchive& archive)
{
    ambientColor.Serialize(archive);
    diffuseColor.Serialize(archive);
    emissionColor.Serialize(archive);
    specularColor.Serialize(archive);
    archive >> shininess;
}
