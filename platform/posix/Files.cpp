// SPDX-License-Identifier: MIT
#include "platform/Files.h"

#include "platform/posix/Errors.h"
#include "platform/posix/FileMapping.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <map>
#include <mutex>
#include <string>

namespace posix
{

File::~File()
{
    if (pastCache_ >= 0)
    {
        close(pastCache_);
    }
    close(descriptor);
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
    // Only whole blocks can go past the cache.
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
            break;  // by a file system that will not, which the caller asks again with its cache
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
    void* const start =
        mmap(nullptr, length, writable ? PROT_READ | PROT_WRITE : PROT_READ, MAP_SHARED,
             mapping.file->descriptor, static_cast<off_t>(offset - lead));
    if (start == MAP_FAILED)
    {
        return nullptr;
    }
    return std::shared_ptr<void>(static_cast<char*>(start) + lead,
                                 [start, length](void*) { munmap(start, length); });
}

}  // namespace posix

namespace
{

void SetSystemError(const std::string& subject)
{
    posix::SetError(static_cast<DWORD>(errno), subject + ": " + std::strerror(errno));
}

struct Views
{
    std::mutex mutex;
    std::map<const void*, std::shared_ptr<void>> byStart;
};

Views& TheViews()
{
    static Views* const views = new Views;  // mapped bitmaps may outlive every other static
    return *views;
}

/// Makes a file as long as that and takes its space on the disk, so that writing to its mapping
/// later cannot fail. File systems that take no space in advance only get the length.
bool SetLengthAndSpace(int descriptor, std::uint64_t length)
{
    const off_t size = static_cast<off_t>(length);
    if (ftruncate(descriptor, size) != 0)
    {
        return false;
    }
    return fallocate(descriptor, 0, 0, size) == 0 || (errno != ENOSPC && errno != EFBIG);
}

}  // namespace

HANDLE CreateFileA(LPCSTR name, DWORD access, DWORD /*share*/, SECURITY_ATTRIBUTES* /*security*/,
                   DWORD disposition, DWORD flagsAndAttributes, HANDLE /*templateFile*/)
{
    const bool writes = (access & GENERIC_WRITE) != 0;
    // Without waiting for the other end of a pipe.
    int flags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    flags |= (!writes ? O_RDONLY : (access & GENERIC_READ) != 0 ? O_RDWR : O_WRONLY);
    flags |= disposition == CREATE_ALWAYS ? O_CREAT | O_TRUNC
             : disposition == CREATE_NEW  ? O_CREAT | O_EXCL
                                          : 0;
    const int descriptor = name == nullptr ? -1 : open(name, flags, 0666);
    if (descriptor < 0)
    {
        SetSystemError(name == nullptr ? "a file without a name" : name);
        return INVALID_HANDLE_VALUE;
    }
    const auto file = std::make_shared<posix::File>(descriptor);
    file->isWritable = writes;
    file->isPastCache = (flagsAndAttributes & FILE_FLAG_SEQUENTIAL_SCAN) != 0;
    struct stat status;
    if (fstat(descriptor, &status) != 0 || S_ISDIR(status.st_mode))
    {
        posix::SetError(ERROR_INVALID_PARAMETER, std::string(name) + ": is a directory");
        return INVALID_HANDLE_VALUE;
    }
    return posix::AddHandle(file);
}

BOOL DeleteFileA(LPCSTR name)
{
    if (name == nullptr || unlink(name) != 0)
    {
        SetSystemError(name == nullptr ? "a file without a name" : name);
        return FALSE;
    }
    return TRUE;
}

BOOL WriteFile(HANDLE handle, LPCVOID bytes, DWORD count, DWORD* written, OVERLAPPED* place)
{
    const auto file = posix::Resolve<posix::File>(handle);
    if (file == nullptr || place == nullptr || bytes == nullptr)
    {
        SetLastError(file == nullptr ? ERROR_INVALID_HANDLE : ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const std::uint64_t offset = std::uint64_t{place->OffsetHigh} << 32 | place->Offset;
    const auto done = static_cast<DWORD>(file->Write(bytes, count, offset));
    if (done != count)
    {
        SetSystemError("writing to a file");
    }
    if (written != nullptr)
    {
        *written = done;
    }
    return done == count;
}

DWORD GetFileSize(HANDLE handle, DWORD* high)
{
    const auto file = posix::Resolve<posix::File>(handle);
    if (file == nullptr)
    {
        SetLastError(ERROR_INVALID_HANDLE);
        return INVALID_FILE_SIZE;
    }
    const std::uint64_t length = file->Length();
    if (high != nullptr)
    {
        *high = static_cast<DWORD>(length >> 32);
    }
    return static_cast<DWORD>(length);
}

HANDLE CreateFileMappingA(HANDLE handle, SECURITY_ATTRIBUTES* /*security*/, DWORD protection,
                          DWORD sizeHigh, DWORD sizeLow, LPCSTR name)
{
    const auto file = posix::Resolve<posix::File>(handle);
    const bool writes = protection == PAGE_READWRITE;
    if (file == nullptr || name != nullptr || (writes && !file->isWritable))
    {
        SetLastError(file == nullptr ? ERROR_INVALID_HANDLE : ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const std::uint64_t length = file->Length();
    const std::uint64_t wanted = std::uint64_t{sizeHigh} << 32 | sizeLow;
    if (wanted > length && (!writes || !SetLengthAndSpace(file->descriptor, wanted)))
    {
        SetSystemError("a file of " + std::to_string(wanted) + " bytes");
        return nullptr;
    }
    if (wanted == 0 && length == 0)
    {
        SetLastError(ERROR_FILE_INVALID);
        return nullptr;
    }
    auto mapping = std::make_shared<posix::FileMapping>();
    mapping->file = file;
    mapping->size = wanted == 0 ? length : wanted;
    mapping->isWritable = writes;
    return posix::AddHandle(mapping);
}

LPVOID MapViewOfFile(HANDLE handle, DWORD access, DWORD offsetHigh, DWORD offsetLow,
                     std::size_t count)
{
    constexpr std::uint64_t granularity = 65536;
    const auto mapping = posix::Resolve<posix::FileMapping>(handle);
    const std::uint64_t offset = std::uint64_t{offsetHigh} << 32 | offsetLow;
    if (mapping == nullptr || offset % granularity != 0 || offset > mapping->size)
    {
        SetLastError(mapping == nullptr ? ERROR_INVALID_HANDLE : ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const std::size_t length =
        count != 0 ? count : static_cast<std::size_t>(mapping->size - offset);
    std::shared_ptr<void> bytes =
        posix::MapBytes(*mapping, offset, length, (access & FILE_MAP_WRITE) != 0);
    if (bytes == nullptr)
    {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    void* const start = bytes.get();
    Views& views = TheViews();
    const std::lock_guard lock(views.mutex);
    views.byStart[start] = std::move(bytes);
    return start;
}

BOOL UnmapViewOfFile(LPCVOID start)
{
    Views& views = TheViews();
    const std::lock_guard lock(views.mutex);
    if (views.byStart.erase(start) == 0)
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    return TRUE;
}
