// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Handles.h"

#include <cstddef>
#include <cstdint>
#include <deque>

namespace posix
{

/// An open file; closed when the last who shares it lets go.
struct File final : KernelObject
{
    explicit File(int fileDescriptor) : descriptor(fileDescriptor) {}
    ~File() override;

    /// Bytes; 0 when the system does not say.
    std::uint64_t Length() const;

    /// Begins to write what was just written there to the disk, and lets go of what was so before.
    void WriteBehind(std::uint64_t offset, std::uint64_t count);

    int descriptor;
    bool isWritable = false;
    bool isWrittenBehind = false;

private:
    struct Range
    {
        std::uint64_t offset;
        std::uint64_t count;
    };

    std::deque<Range> behind_;  ///< on their way to the disk
};

/// A file that can be mapped.
struct FileMapping final : KernelObject
{
    std::shared_ptr<File> file;
    std::uint64_t size = 0;  ///< bytes that may be mapped
    bool isWritable = false;
};

/// Maps bytes of a file at any offset; they stay mapped as long as somebody shares what is
/// returned. Null when the range lies outside the mapping or the system refuses.
std::shared_ptr<void> MapBytes(const FileMapping& mapping, std::uint64_t offset, std::size_t count,
                               bool writable);

/// Makes room in memory for a mapped piece, unless it is large, at less than what its pages would
/// cost one by one when they are written.
void PrepareForWriting(void* bytes, std::size_t count);

}  // namespace posix
