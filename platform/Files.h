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

/// Returned by CreateFileA on failure.
// NOLINTNEXTLINE(performance-no-int-to-ptr): a mark, never used as an address
inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(-1));

/// The offset in a file at which to write, in bytes.
struct OVERLAPPED
{
    ULONG_PTR Internal;
    ULONG_PTR InternalHigh;
    DWORD Offset;
    DWORD OffsetHigh;
    HANDLE hEvent;
};

/// Opens or makes a file. A directory is refused. To be read only, nothing but a regular file is
/// opened: a pipe or a device could wait for ever.
/// \param disposition CREATE_NEW, CREATE_ALWAYS (empties an existing file) or OPEN_EXISTING.
/// \param flagsAndAttributes With FILE_FLAG_SEQUENTIAL_SCAN, written bytes bypass the system's file
/// cache if the file system allows that. Writing is then fastest when the address of the bytes and
/// their offset in the file leave the same remainder, divided by 4096. Sharing, attributes and
/// other flags have no effect.
ORVANE_API HANDLE CreateFileA(LPCSTR name, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                              DWORD disposition, DWORD flagsAndAttributes, HANDLE templateFile);
ORVANE_API BOOL DeleteFileA(LPCSTR name);

/// Writes all bytes at the offset in the file that \p place gives, and returns when they are
/// written. Returns FALSE when some bytes could not be written; \p written, if not null, receives
/// the number of bytes written.
ORVANE_API BOOL WriteFile(HANDLE file, LPCVOID bytes, DWORD count, DWORD* written,
                          OVERLAPPED* place);

/// Returns the low 32 bits of the file's size in bytes and, if \p high is not null, stores the high
/// 32 bits there. INVALID_FILE_SIZE when the handle names no file.
ORVANE_API DWORD GetFileSize(HANDLE file, DWORD* high);

/// Makes a mapping of a file and keeps the file open. A size (given in two halves, in bytes) of 0
/// means the file's present length, which must not be 0. With PAGE_READWRITE, a shorter file is
/// lengthened to the size, and its space on the disk is reserved if the file system can do that.
/// Null on failure.
ORVANE_API HANDLE CreateFileMappingA(HANDLE file, SECURITY_ATTRIBUTES* security, DWORD protection,
                                     DWORD sizeHigh, DWORD sizeLow, LPCSTR name);

/// Maps \p count bytes of a mapping into memory; 0 means all bytes from the offset to the end. The
/// offset must be a multiple of 65,536. Null on failure.
ORVANE_API LPVOID MapViewOfFile(HANDLE mapping, DWORD access, DWORD offsetHigh, DWORD offsetLow,
                                std::size_t count);

/// \param view an address that MapViewOfFile returned.
ORVANE_API BOOL UnmapViewOfFile(LPCVOID view);

#endif
