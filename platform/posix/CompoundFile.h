// SPDX-License-Identifier: MIT
// The contents of compound files, read and written whole through libgsf.
#pragma once

#include "platform/Storage.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace orvane
{

/// A stream of a compound file.
struct Content
{
    std::string name;  // UTF-8
    std::vector<BYTE> bytes;
};

/// The contents of a compound file, shared by its storage and its streams.
struct Compound
{
    std::string path;
    DWORD access = STGM_READ;
    std::map<std::string, std::shared_ptr<Content>> streams;  // by KeyOf their names
    bool isChanged = false;

    bool IsWritable() const { return access != STGM_READ; }
};

/// The key by which a stream is found: its name with a to z in upper case.
std::string KeyOf(std::string name);

/// Reads the streams of the file at \c compound.path.
HRESULT ReadCompound(Compound& compound);

/// Writes the file. Never throws, because a storage that ends writes its changes.
HRESULT WriteCompound(Compound& compound) noexcept;

}  // namespace orvane
