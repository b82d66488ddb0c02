// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Handles.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <mutex>

namespace posix
{

/// An open file; closed when the last who shares it lets go.
struct File final : KernelObject
{
    explicit File(int fileDescriptor) : descriptor(fileDescriptor) {}
    ~File() override;

    /// Bytes; 0 when the system does not say.
    std::uint64_t Length() const;

    /// How many of the bytes were written; errno says why not all.
    std::size_t Write(const void* bytes, std::size_t count, std::uint64_t offset);

    int descriptor;
    bool isWritable = false;
    bool isPastCache = false;  ///< what is written need not stay in the system's memory

private:
    static constexpr std::size_t blockBytes = 4096;  // no disk and no page is aligned to more
    static constexpr std::size_t pieceBytes = 1024 * blockBytes;
    struct Free
    {
        void operator()(void* memory) const { std::free(memory); }
    };

    bool OpenPastCache();
    std::size_t WriteBlocks(const char* bytes, std::size_t count, std::uint64_t offset);
    std::size_t WriteCached(const char* bytes, std::size_t count, std::uint64_t offset) const;

    std::mutex mutex_;
    std::unique_ptr<char, Free> piece_;  ///< aligned, for blocks on their way past the cache
    int pastCache_ = -1;                 ///< another descriptor
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

}  // namespace posix
