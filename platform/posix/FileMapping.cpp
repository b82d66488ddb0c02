// SPDX-License-Identifier: MIT
#include "platform/posix/FileMapping.h"

#include "platform/posix/GuardedView.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <system_error>

namespace posix
{

File::~File()
{
    if (pastCache_ >= 0)
    {
        close(pastCache_);
    }
    if (descriptor >= 0)
    {
        close(descriptor);
    }
}

std::uint64_t File::Length() const
{
    struct stat status;
    return fstat(descriptor, &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

std::size_t File::Write(const void* bytes, std::size_t count, std::uint64_t offset)
{
    const char* const from = static_cast<const char*>(bytes);
    const std::size_t lead =
        static_cast<std::size_t>((blockBytes - offset % blockBytes) % blockBytes);
    if (!isPastCache || count < lead + blockBytes)
    {
        return WriteCached(from, count, offset);
    }
    const std::lock_guard guard(mutex_);
    if (!OpenPastCache())
    {
        isPastCache = false;
        return WriteCached(from, count, offset);
    }
    // Only whole blocks can bypass the cache. The bytes before and after them are written as usual.
    std::size_t done = WriteCached(from, lead, offset);
    if (done == lead)
    {
        done += WriteBlocks(from + done, (count - lead) / blockBytes * blockBytes, offset + done);
        done += WriteCached(from + done, count - done, offset + done);
    }
    return done;
}

bool File::OpenPastCache()
{
    if (pastCache_ < 0)
    {
        const std::string self = "/proc/self/fd/" + std::to_string(descriptor);
        pastCache_ = open(self.c_str(), O_WRONLY | O_DIRECT | O_CLOEXEC);
        piece_.reset(static_cast<char*>(std::aligned_alloc(blockBytes, pieceBytes)));
    }
    return pastCache_ >= 0 && piece_ != nullptr;
}

std::size_t File::WriteBlocks(const char* bytes, std::size_t count, std::uint64_t offset)
{
    const bool isAligned = reinterpret_cast<std::uintptr_t>(bytes) % blockBytes == 0;
    std::size_t done = 0;
    while (done < count)
    {
        const char* from = bytes + done;
        std::size_t length = count - done;
        if (!isAligned)
        {
            length = std::min(pieceBytes, length);
            from = static_cast<char*>(std::memcpy(piece_.get(), from, length));
        }
        const ssize_t now = pwrite(pastCache_, from, length, static_cast<off_t>(offset + done));
        if (now <= 0 || now % blockBytes != 0)
        {
            break;  // the file system refuses; the caller writes the rest through the cache
        }
        done += static_cast<std::size_t>(now);
    }
    return done;
}

std::size_t File::WriteCached(const char* bytes, std::size_t count, std::uint64_t offset) const
{
    std::size_t done = 0;
    while (done < count)
    {
        const ssize_t now =
            pwrite(descriptor, bytes + done, count - done, static_cast<off_t>(offset + done));
        if (now <= 0 && !(now < 0 && errno == EINTR))
        {
            break;
        }
        done += static_cast<std::size_t>(std::max<ssize_t>(now, 0));
    }
    return done;
}

std::shared_ptr<File> OpenRegularFile(const char* path)
{
    auto file = std::make_shared<File>();
    file->descriptor = open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (file->descriptor < 0)
    {
        if (errno == EMFILE || errno == ENFILE || errno == ENOMEM || errno == EIO)
        {
            throw std::system_error(errno, std::generic_category(), path);
        }
        return nullptr;
    }
    struct stat status;
    return fstat(file->descriptor, &status) == 0 && S_ISREG(status.st_mode) ? file : nullptr;
}

std::shared_ptr<void> MapBytes(const FileMapping& mapping, std::uint64_t offset, std::size_t count,
                               bool writable)
{
    if (count == 0 || offset > mapping.size || count > mapping.size - offset ||
        (writable && !mapping.isWritable))
    {
        return nullptr;
    }
    const std::uint64_t page = static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
    const std::size_t lead = static_cast<std::size_t>(offset % page);
    const std::size_t length = lead + count;
    if (!writable)
    {
        std::shared_ptr<GuardedView> view =
            GuardedView::Map(mapping.file->descriptor, static_cast<off_t>(offset - lead), length);
        return view == nullptr
                   ? nullptr
                   : std::shared_ptr<void>(view, static_cast<char*>(view->Start()) + lead);
    }
    void* const start = mmap(nullptr, length, PROT_READ | PROT_WRITE, MAP_SHARED,
                             mapping.file->descriptor, static_cast<off_t>(offset - lead));
    if (start == MAP_FAILED)
    {
        return nullptr;
    }
    return std::shared_ptr<void>(static_cast<char*>(start) + lead,
                                 [start, length](void*) { munmap(start, length); });
}

}  // namespace posix
