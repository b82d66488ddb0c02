// SPDX-License-Identifier: MIT
#include "import3ds/TriangularFaceArray.h"

#include "host/RecordVersion.h"

IMPLEMENT_SERIAL(TriangularFaceArray, CObject, VERSIONABLE_SCHEMA | 1)

void TriangularFaceArray::Serialize(CArchive& archive)
{
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(TriangularFaceArray));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(TriangularFaceArray));
    archive << static_cast<DWORD>(size);
    for (int i = 0; i < size; ++i)
    {
        data[i].Serialize(archive);
    }
}

void TriangularFaceArray::DeserializeVersion1(CArchive& archive)
{
    DWORD count = 0;
    archive >> count;
    ReadElements(count, [&](TriangularFace& element) { element.Serialize(archive); });
}
