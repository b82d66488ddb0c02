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

/// An open file. It is closed when its last shared pointer goes.
struct File final : KernelObject
{
    File() = default;
    ~File() override;

    /// The file's length in bytes; 0 when the system cannot tell.
    std::uint64_t Length() const;

    /// Writes bytes and returns how many were written. If not all were, errno has the reason.
    std::size_t Write(const void* bytes, std::size_t count, std::uint64_t offset);

    int descriptor = -1;  ///< owned; -1 for none
    bool isWritable = false;
    bool isPastCache = false;  ///< whether written bytes should bypass the system's file cache

private:
    static constexpr std::size_t blockBytes =
        4096;  // the largest alignment that disks and pages need
    static constexpr std::size_t pieceBytes = 1024 * blockBytes;
    struct Free
    {
        void operator()(void* memory) const { std::free(memory); }
    };

    bool OpenPastCache();
    std::size_t WriteBlocks(const char* bytes, std::size_t count, std::uint64_t offset);
    std::size_t WriteCached(const char* bytes, std::size_t count, std::uint64_t offset) const;

    std::mutex mutex_;
    std::unique_ptr<char, Free> piece_;  ///< aligned memory through which blocks are written
    int pastCache_ = -1;  ///< a second descriptor, which bypasses the cache; -1 for none
};

/// Opens a regular file to read it. Null for every other kind of file, such as a pipe, and when the
/// file is not there or may not be read. Never waits. Throws std::system_error when the system
/// refuses for a reason of its own, such as too many open files.
std::shared_ptr<File> OpenRegularFile(const char* path);

/// A file of which ranges can be mapped into memory.
struct FileMapping final : KernelObject
{
    std::shared_ptr<File> file;
    std::uint64_t size = 0;  ///< the number of bytes that may be mapped
    bool isWritable = false;
};

/// Maps bytes of a file, at any offset. They stay mapped as long as the returned pointer or a copy
/// of it exists. Null when the range lies outside the mapping or the system refuses.
std::shared_ptr<void> MapBytes(const FileMapping& mapping, std::uint64_t offset, std::size_t count,
                               bool writable);

}  // namespace posix
