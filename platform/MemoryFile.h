// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <memory>
#include <string>

namespace orvane
{

/// Bytes under the name of a file, for functions that read files by their names. No folder lists
/// the file, other programs do not find it, and it goes with the object.
class ORVANE_API MemoryFile
{
public:
    /// Null when the system has no room for the bytes.
    static std::unique_ptr<MemoryFile> Make(const std::string& bytes);
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    const std::string& Path() const;

private:
    struct Parts;
    explicit MemoryFile(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> parts_;
};

}  // namespace orvane
