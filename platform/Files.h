// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Files by handle, and files mapped into memory. Handles are closed with CloseHandle.

#include "platform/Export.h"
#include "platform/Sync.h"
#include "platform/Types.h"

#include <cstddef>

#if !defined(_WIN32)

constexpr DWORD GENERIC_READ = 0x80000000;
constexpr DWORD GENERIC_WRITE = 0x40000000;
constexpr DWORD FILE_SHARE_READ = 0x1;
constexpr DWORD FILE_SHARE_WRITE = 0x2;
constexpr DWORD CREATE_NEW = 1;
constexpr DWORD CREATE_ALWAYS = 2;
constexpr DWORD OPEN_EXISTING = 3;
constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x20;
constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
constexpr DWORD FILE_FLAG_SEQUENTIAL_SCAN = 0x08000000;
constexpr DWORD FILE_FLAG_WRITE_THROUGH = 0x80000000;
constexpr DWORD PAGE_READONLY = 0x02;
constexpr DWORD PAGE_READWRITE = 0x04;
constexpr DWORD FILE_MAP_WRITE = 0x2;
constexpr DWORD FILE_MAP_READ = 0x4;
constexpr DWORD INVALID_FILE_SIZE = 0xFFFFFFFF;

/// What CreateFileA returns when it refuses.
// NOLINTNEXTLINE(performance-no-int-to-ptr): a mark that nobody follows
inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(-1));

/// Where in a file to write.
struct OVERLAPPED
{
    ULONG_PTR Internal;
    ULONG_PTR InternalHigh;
    DWORD Offset;
    DWORD OffsetHigh;
    HANDLE hEvent;
};

/// Opens or makes a file. With FILE_FLAG_SEQUENTIAL_SCAN what is written goes past the system's
/// memory where the file system lets it, quickest from addresses that divide by 4096 as the place
/// in the file does; sharing, attributes and other flags are accepted and mean nothing here. A
/// directory is refused. \p disposition CREATE_NEW, CREATE_ALWAYS (empties an existing file) or
/// OPEN_EXISTING.
ORVANE_API HANDLE CreateFileA(LPCSTR name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                              DWORD disposition, DWORD flagsAndAttributes, HANDLE templateFile);
ORVANE_API BOOL DeleteFileA(LPCSTR name);

/// Writes all of the bytes at a place of the file, given by the halves of its offset; returns when
/// they are written. FALSE when they are not.
ORVANE_API BOOL WriteFile(HANDLE file, LPCVOID bytes, DWORD count, DWORD* written,
                          OVERLAPPED* place);

/// The low 32 bits of the file's size, the high ones in \p high when it is given; INVALID_FILE_SIZE
/// when the handle is no file.
ORVANE_API DWORD GetFileSize(HANDLE file, DWORD* high);

/// A mapping of a file, which it keeps open. With a size (two halves) of 0, of the file as long as
/// it is now, which must not be 0; else a writable file is made that long, and its space is taken
/// on the disk where the file system can do that. Null when it is refused.
ORVANE_API HANDLE CreateFileMappingA(HANDLE file, SECURITY_ATTRIBUTES* security, DWORD protection,
                                     DWORD sizeHigh, DWORD sizeLow, LPCSTR name);

/// Maps part of it into memory. The offset is a multiple of 65,536. \p count 0 maps to the end.
ORVANE_API LPVOID MapViewOfFile(HANDLE mapping, DWORD access, DWORD offsetHigh, DWORD offsetLow,
                                std::size_t count);

/// \param view what MapViewOfFile returned.
ORVANE_API BOOL UnmapViewOfFile(LPCVOID view);

#endif
