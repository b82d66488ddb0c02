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

/// Allocates a block of \p count bytes, which are zero if the flags contain GMEM_ZEROINIT. Null
/// when there is too little memory. The bytes are reached through GlobalLock, whatever the flags.
/// The caller frees the block with GlobalFree.
ORVANE_API HGLOBAL GlobalAlloc(UINT flags, std::size_t count);
/// Returns the block's bytes; null when the handle names no block. Each call adds a lock.
ORVANE_API LPVOID GlobalLock(HGLOBAL block);
/// Takes one lock away. Returns whether the block is still locked.
ORVANE_API BOOL GlobalUnlock(HGLOBAL block);
/// The block's size in bytes; 0 when the handle names no block.
ORVANE_API std::size_t GlobalSize(HGLOBAL block);
/// Frees a block, also a locked one. Returns null on success and \p block on failure.
ORVANE_API HGLOBAL GlobalFree(HGLOBAL block);

#endif
