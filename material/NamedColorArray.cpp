// SPDX-License-Identifier: MIT
#include "material/NamedColorArray.h"

#include "host/RecordVersion.h"
#include "platform/MultibyteCompare.h"

IMPLEMENT_SERIAL(NamedColorArray, CObject, VERSIONABLE_SCHEMA | 1)

int NamedColorArray::FindName(const CString& name) const
{
    for (int i = 0; i < size; ++i)
    {
        if (CompareMultibyte(data[i].GetName(), name) == 0)
        {
            return i;
        }
    }
    return -1;
}

void NamedColorArray::Serialize(CArchive& archive)
{
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(NamedColorArray));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(NamedColorArray));
    archive << static_cast<DWORD>(size);
    for (int i = 0; i < size; ++i)
    {
        data[i].Serialize(archive);
    }
}

void NamedColorArray::DeserializeVersion1(CArchive& archive)
{
    DWORD count = 0;
    archive >> count;
    ReadElements(count, [&](NamedColor& element) { element.Serialize(archive); });
}
