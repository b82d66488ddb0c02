// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Structured storage: a compound file that holds named streams.

#include "platform/Export.h"
#include "platform/Types.h"

#if defined(_WIN32)
#include <objbase.h>
#else

#include <cstdint>

using HRESULT = LONG;
using ULONG = DWORD;
using OLECHAR = char16_t;

constexpr HRESULT S_OK = 0;
constexpr HRESULT STG_E_INVALIDFUNCTION = static_cast<HRESULT>(0x80030001);
constexpr HRESULT STG_E_FILENOTFOUND = static_cast<HRESULT>(0x80030002);
constexpr HRESULT STG_E_ACCESSDENIED = static_cast<HRESULT>(0x80030005);
constexpr HRESULT STG_E_INSUFFICIENTMEMORY = static_cast<HRESULT>(0x80030008);
constexpr HRESULT STG_E_INVALIDPOINTER = static_cast<HRESULT>(0x80030009);
constexpr HRESULT STG_E_WRITEFAULT = static_cast<HRESULT>(0x8003001D);
constexpr HRESULT STG_E_FILEALREADYEXISTS = static_cast<HRESULT>(0x80030050);
constexpr HRESULT STG_E_INVALIDNAME = static_cast<HRESULT>(0x800300FC);
constexpr HRESULT STG_E_OLDFORMAT = static_cast<HRESULT>(0x80030104);

constexpr bool SUCCEEDED(HRESULT result)
{
    return result >= 0;
}
constexpr bool FAILED(HRESULT result)
{
    return result < 0;
}

constexpr DWORD STGM_DIRECT = 0x0;
constexpr DWORD STGM_READ = 0x0;
constexpr DWORD STGM_WRITE = 0x1;
constexpr DWORD STGM_READWRITE = 0x2;
constexpr DWORD STGM_SHARE_EXCLUSIVE = 0x10;
constexpr DWORD STGM_SHARE_DENY_WRITE = 0x20;
constexpr DWORD STGM_CREATE = 0x1000;
constexpr DWORD STGC_DEFAULT = 0;

struct LARGE_INTEGER
{
    std::int64_t QuadPart;
};
struct ULARGE_INTEGER
{
    std::uint64_t QuadPart;
};
constexpr DWORD STREAM_SEEK_SET = 0;
constexpr DWORD STREAM_SEEK_CUR = 1;
constexpr DWORD STREAM_SEEK_END = 2;

/// The base of storages and streams: objects that count the references to them. Each must be used
/// by one thread at a time.
struct ORVANE_API IUnknown
{
    virtual ULONG AddRef() = 0;
    /// AddRef adds a reference. Release takes a reference away and deletes the object with the last
    /// reference. Both return the number of references left.
    virtual ULONG Release() = 0;

protected:
    virtual ~IUnknown() = default;
};

/// Bytes with a position. A stream may outlive its storage; bytes written after that are lost.
struct ORVANE_API IStream : IUnknown
{
    /// Reads up to \p size bytes. Reading fewer bytes at the end of the stream is no failure. \p
    /// done, if not null, receives the number read.
    virtual HRESULT Read(void* bytes, ULONG count, ULONG* done) = 0;
    virtual HRESULT Write(const void* bytes, ULONG count, ULONG* done) = 0;
    /// Positions beyond the end are allowed. A later write there fills the gap with zeros.
    virtual HRESULT Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) = 0;
    virtual HRESULT SetSize(ULARGE_INTEGER size) = 0;
};

/// The streams of a compound file. A name has 1 to 31 characters. Each character has a code of 32
/// or above and is not one of / \ : and !. Names that differ only in the case of A to Z are the
/// same name.
struct ORVANE_API IStorage : IUnknown
{
    /// \param mode with STGM_CREATE an existing stream of that name is emptied; without STGM_CREATE
    /// the call fails if such a stream exists.
    virtual HRESULT CreateStream(const OLECHAR* name, DWORD mode, DWORD reserved1, DWORD reserved2,
                                 IStream** stream) = 0;
    virtual HRESULT OpenStream(const OLECHAR* name, void* reserved1, DWORD mode, DWORD reserved2,
                               IStream** stream) = 0;
    /// Writes a new file beside the old one and then replaces the old one by it.
    virtual HRESULT Commit(DWORD flags) = 0;
    virtual HRESULT DestroyElement(const OLECHAR* name) = 0;
};

/// Makes a compound file. The streams are kept in memory and are written by Commit and when the
/// last reference is released; until then the file is empty. Only Commit reports whether writing
/// failed.
/// \param name in UTF-16.
/// \param mode with STGM_CREATE an existing file is replaced; without STGM_CREATE the call fails if
/// the file exists.
ORVANE_API HRESULT StgCreateDocfile(const OLECHAR* name, DWORD mode, DWORD reserved,
                                    IStorage** storage);

/// Opens a compound file; STG_E_OLDFORMAT for a file of another format. Storages inside the file
/// cannot be reached and are lost when the file is changed.
/// \param mode STGM_READ, or STGM_READWRITE to change it.
/// \param priority, exclude, reserved must be null or 0.
ORVANE_API HRESULT StgOpenStorage(const OLECHAR* name, IStorage* priority, DWORD mode,
                                  const void* exclude, DWORD reserved, IStorage** storage);

#endif
