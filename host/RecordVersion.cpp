// SPDX-License-Identifier: MIT
#include "host/RecordVersion.h"

#include <string>

DWORD ReadRecordVersion(CArchive& archive, const CRuntimeClass* runtimeClass, DWORD newest)
{
    DWORD version;
    archive >> version;
    if (version == 0 || version > newest)
    {
        archive.Fail(CArchiveException::badSchema,
                     std::string("class ") + runtimeClass->m_lpszClassName +
                         " has a record of version " + std::to_string(version) +
                         ", expected 1 to " + std::to_string(newest));
    }
    archive.NoteVersion(runtimeClass, version);
    return version;
}
