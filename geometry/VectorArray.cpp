// SPDX-License-Identifier: MIT
#include "geometry/VectorArray.h"

#include "host/RecordVersion.h"

IMPLEMENT_SERIAL(VectorArray, CObject, VERSIONABLE_SCHEMA | 1)

void VectorArray::Serialize(CArchive& archive)
{
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(VectorArray));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(VectorArray));
    archive << LONG{size};
    for (int i = 0; i < size; ++i)
    {
        data[i].Serialize(archive);
    }
}

void VectorArray::DeserializeVersion1(CArchive& archive)
{
    LONG count = 0;
    archive >> count;
    ReadElements(count, [&](Vector& element) { element.Serialize(archive); });
}
