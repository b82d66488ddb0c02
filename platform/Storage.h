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

/// What storages and streams share: they are counted. Used by one thread at a time.
struct ORVANE_API IUnknown
{
    virtual ULONG AddRef() = 0;
    /// Ends the object with the last reference. Both return the references left.
    virtual ULONG Release() = 0;

protected:
    virtual ~IUnknown() = default;
};

/// Bytes with a position. A stream may outlive its storage, into which nothing goes any more then.
struct ORVANE_API IStream : IUnknown
{
    /// At the end there is less to read, which is no failure; \p done says how much (may be null).
    virtual HRESULT Read(void* bytes, ULONG count, ULONG* done) = 0;
    virtual HRESULT Write(const void* bytes, ULONG count, ULONG* done) = 0;
    /// Beyond the end is allowed; what lies between is zero once something is written there.
    virtual HRESULT Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) = 0;
    virtual HRESULT SetSize(ULARGE_INTEGER size) = 0;
};

/// The streams of a compound file. Names have 1 to 31 characters, none of them below 32 or one of
/// / \ : !, and differ by more than the case of A to Z.
struct ORVANE_API IStorage : IUnknown
{
    /// \param mode with STGM_CREATE a stream of that name is emptied, else it is refused.
    virtual HRESULT CreateStream(const OLECHAR* name, DWORD mode, DWORD reserved1, DWORD reserved2,
                                 IStream** stream) = 0;
    virtual HRESULT OpenStream(const OLECHAR* name, void* reserved1, DWORD mode, DWORD reserved2,
                               IStream** stream) = 0;
    /// Writes the file anew, beside the old one, which it then replaces.
    virtual HRESULT Commit(DWORD flags) = 0;
    virtual HRESULT DestroyElement(const OLECHAR* name) = 0;
};

/// Makes a compound file, which is empty until Commit or until the last reference goes: streams are
/// kept in memory. Only Commit tells whether they could be written.
/// \param name in UTF-16.
/// \param mode with STGM_CREATE an existing file is replaced, else it is refused.
ORVANE_API HRESULT StgCreateDocfile(const OLECHAR* name, DWORD mode, DWORD reserved,
                                    IStorage** storage);

/// Opens one; STG_E_OLDFORMAT for a file that is no compound file. Storages inside it are not
/// looked at, and are lost when it is changed.
/// \param mode STGM_READ, or STGM_READWRITE to change it.
/// \param priority, exclude, reserved must be null or 0.
ORVANE_API HRESULT StgOpenStorage(const OLECHAR* name, IStorage* priority, DWORD mode,
                                  const void* exclude, DWORD reserved, IStorage** storage);

#endif
