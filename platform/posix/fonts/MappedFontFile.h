// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/FileMapping.h"

#include <ft2build.h>

#include <cerrno>
#include <memory>
#include <system_error>
#include FT_TYPES_H

namespace posix
{

/// A font file that is mapped into memory. The bytes that another program cuts off read as 0, so
/// that reading them does not end the process.
class MappedFontFile
{
public:
    explicit MappedFontFile(const char* path)
    {
        mapping_.file = OpenRegularFile(path);
        if (mapping_.file != nullptr)
        {
            mapping_.size = mapping_.file->Length();
            bytes_ = MapBytes(mapping_, 0, mapping_.size, false);
            if (bytes_ == nullptr && mapping_.size != 0)
            {
                throw std::system_error(errno, std::generic_category(), path);
            }
        }
    }

    /// Null when the file cannot be read.
    const FT_Byte* Bytes() const { return static_cast<const FT_Byte*>(bytes_.get()); }
    FT_Long Size() const { return static_cast<FT_Long>(mapping_.size); }
    bool HasLostBytes() const { return mapping_.file->Length() < mapping_.size; }

private:
    FileMapping mapping_;
    std::shared_ptr<void> bytes_;
};

}  // namespace posix
