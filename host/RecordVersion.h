// SPDX-License-Identifier: MIT
#pragma once

#include "host/CArchive.h"

/// Writes the version of a class's record: the class's schema number without the versionable bit.
inline void WriteRecordVersion(CArchive& archive, const CRuntimeClass* runtimeClass)
{
    archive << runtimeClass->GetVersion();
}

/// Reads and returns the version of a class's record. Throws badSchema when it is not 1 to \p
/// newest.
ORVANE_API DWORD ReadRecordVersion(CArchive& archive, const CRuntimeClass* runtimeClass,
                                   DWORD newest);

/// As above, for a class that can read every version up to the one that it writes.
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
