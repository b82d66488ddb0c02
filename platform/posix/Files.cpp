// SPDX-License-Identifier: MIT
#include "platform/Files.h"

#include "platform/Errors.h"
#include "platform/posix/ErrorText.h"
#include "platform/posix/FileMapping.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <map>
#include <mutex>
#include <string>

namespace
{

void SetSystemError(const std::string& subject)
{
    posix::SetError(static_cast<DWORD>(errno), subject + ": " + std::strerror(errno));
}

/// The error of a name that stands for a folder, a pipe, a socket or a device.
void SetNotRegular(const std::string& subject, mode_t mode)
{
    posix::SetError(ERROR_INVALID_PARAMETER,
                    subject + (S_ISDIR(mode) ? ": is a directory" : ": is no regular file"));
}

struct Views
{
    std::mutex mutex;
    std::map<const void*, std::shared_ptr<void>> byStart;
};

Views& TheViews()
{
    static Views* const views = new Views;  // never destroyed: static objects may unmap late
    return *views;
}

/// Makes a file \p length bytes long and reserves its space on the disk, so that writing to its
/// mapping later cannot fail. A file system that cannot reserve space only sets the length.
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
    // O_NONBLOCK, so that opening a pipe does not wait for its other end.
    int flags = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    flags |= (!writes ? O_RDONLY : (access & GENERIC_READ) != 0 ? O_RDWR : O_WRONLY);
    flags |= disposition == CREATE_ALWAYS ? O_CREAT | O_TRUNC
             : disposition == CREATE_NEW  ? O_CREAT | O_EXCL
                                          : 0;
    // Opening a device may already do something, so the file is looked at before it is opened. It
    // is looked at again afterwards, because the name may stand for another file by then.
    struct stat status;
    if (name != nullptr && !writes && stat(name, &status) == 0 && !S_ISREG(status.st_mode))
    {
        SetNotRegular(name, status.st_mode);
        return INVALID_HANDLE_VALUE;
    }
    const auto file = std::make_shared<posix::File>();
    file->descriptor = name == nullptr ? -1 : open(name, flags, 0666);
    if (file->descriptor < 0)
    {
        SetSystemError(name == nullptr ? "a file without a name" : name);
        return INVALID_HANDLE_VALUE;
    }
    file->isWritable = writes;
    file->isPastCache = (flagsAndAttributes & FILE_FLAG_SEQUENTIAL_SCAN) != 0;
    if (fstat(file->descriptor, &status) != 0 || S_ISDIR(status.st_mode) ||
        (!writes && !S_ISREG(status.st_mode)))
    {
        SetNotRegular(name, status.st_mode);
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
