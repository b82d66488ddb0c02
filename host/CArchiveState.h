// SPDX-License-Identifier: MIT
#pragma once

#include "host/CArchive.h"

#include <unordered_map>
#include <vector>

/// The fields of CArchive that are not needed inline. Only the sources of CArchive include this.
struct CArchive::State
{
    /// A class or an object that was loaded. Its index in `loaded` is its number.
    struct Entry
    {
        CRuntimeClass* runtimeClass;  ///< null for an object
        UINT schema;                  ///< the version of the class in this archive
        CObject* object;              ///< borrowed; null for a class and for a forgotten object
    };

    CFile* file;  ///< borrowed; null once the archive is closed
    UINT mode;    ///< a combination of CArchive::Mode
    std::vector<BYTE> buffer;
    std::unordered_map<const void*, DWORD> stored;  ///< the numbers of classes and objects
    DWORD nextStored = 1;
    std::vector<Entry> loaded{Entry{nullptr, 0, nullptr}};  ///< by number; 0 is the null reference
    UINT objectSchema = static_cast<UINT>(-1);
    int depth = 0;  ///< how many objects are being stored or loaded inside each other
    VersionObserver versionObserver;
};
