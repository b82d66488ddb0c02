// SPDX-License-Identifier: MIT
#pragma once

#include "host/CArchive.h"

/// Writes the version of a class's record: the class's schema number without the versionable bit.
inline void WriteRecordVersion(CArchive& archive, const CRuntimeClass* runtimeClass)
{
    archive << runtimeClass->GetVersion();
}

/// Reads and returns the version of a class's record. Throws badSchema when the version is 0 or
/// greater than \p newest.
ORVANE_API DWORD ReadRecordVersion(CArchive& archive, const CRuntimeClass* runtimeClass,
                                   DWORD newest);

/// Like the function above, for a class that reads every version up to the version that it writes.
inline DWORD ReadRecordVersion(CArchive& archive, const CRuntimeClass* runtimeClass)
{
    return ReadRecordVersion(archive, runtimeClass, runtimeClass->GetVersion());
}

/// Reads a record's version and calls the reader of that version.
/// \param readers member functions: the first reads version 1, the second version 2, and so on. Any
/// other version throws badSchema.
template <typename Class, typename... Readers>
void ReadVersionedRecord(CArchive& archive, Class& object, Readers... readers)
{
    void (Class::*const readerOf[])(CArchive&) = {readers...};
    const DWORD version =
        ReadRecordVersion(archive, Class::GetOwnClass(), DWORD{sizeof...(readers)});
    (object.*readerOf[version - 1])(archive);
}
