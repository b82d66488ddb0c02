// SPDX-License-Identifier: MIT
#pragma once

#include "host/CArchive.h"

/// Writes the version that the class writes: its schema number without the versionable bit.
inline void WriteRecordVersion(CArchive& archive, const CRuntimeClass* runtimeClass)
{
    archive << runtimeClass->GetVersion();
}

/// Reads the version of a class's record and refuses with badSchema what is not 1 to \p newest.
ORVANE_API DWORD ReadRecordVersion(CArchive& archive, const CRuntimeClass* runtimeClass,
                                   DWORD newest);

/// The same for a class that reads every version up to the one that it writes.
inline DWORD ReadRecordVersion(CArchive& archive, const CRuntimeClass* runtimeClass)
{
    return ReadRecordVersion(archive, runtimeClass, runtimeClass->GetVersion());
}

/// Reads a record's version and hands the record to the reader of that version: the first reads
/// version 1, and so on. Any other version is refused with badSchema.
template <typename Class, typename... Readers>
void ReadVersionedRecord(CArchive& archive, Class& object, Readers... readers)
{
    void (Class::*const readerOf[])(CArchive&) = {readers...};
    const DWORD version =
        ReadRecordVersion(archive, Class::GetOwnClass(), DWORD{sizeof...(readers)});
    (object.*readerOf[version - 1])(archive);
}
