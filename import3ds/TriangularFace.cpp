// SPDX-License-Identifier: MIT
#include "import3ds/TriangularFace.h"

#include "host/RecordVersion.h"

IMPLEMENT_SERIAL(TriangularFace, CObject, VERSIONABLE_SCHEMA | 1)

void TriangularFace::Serialize(CArchive& archive)
{
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(TriangularFace));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(TriangularFace));
    archive << a;
    archive << b;
    archive << c;
    archive << faceFlags;
    archive << material;
}

void TriangularFace::DeserializeVersion1(CArchive& archive)
{
    archive >> a;
    archive >> b;
    archive >> c;
    archive >> faceFlags;
    archive >> material;
}
