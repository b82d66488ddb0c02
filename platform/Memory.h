// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Blocks of memory behind handles, as clipboards and printers exchange them.

#include "platform/Export.h"
#include "platform/Types.h"

#include <cstddef>

#if !defined(_WIN32)

using HGLOBAL = HANDLE;
constexpr UINT GMEM_FIXED = 0x0000;
constexpr UINT GMEM_MOVEABLE = 0x0002;
constexpr UINT GMEM_ZEROINIT = 0x0040;

/// A block of \p count bytes, zeroed with GMEM_ZEROINIT; null when there is no memory. Its bytes
/// are reached through GlobalLock, whatever the flags. Freed with GlobalFree.
ORVANE_API HGLOBAL GlobalAlloc(UINT flags, std::size_t count);
/// The block's bytes; null for anything but a block. Locks are counted.
ORVANE_API LPVOID GlobalLock(HGLOBAL block);
/// Whether the block is still locked afterwards.
ORVANE_API BOOL GlobalUnlock(HGLOBAL block);
/// Bytes; 0 for anything but a block.
ORVANE_API std::size_t GlobalSize(HGLOBAL block);
/// Null when it was freed, else \p block itself. A locked block can be freed.
ORVANE_API HGLOBAL GlobalFree(HGLOBAL block);

#endif
