// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Memory device contexts and the objects selected into them.

#include "platform/Export.h"
#include "platform/Types.h"

#if !defined(_WIN32)

/// A memory device context, with a 1 by 1 bitmap and a default font selected. \p compatible may be
/// null; what it names does not matter here. Ended with DeleteDC.
ORVANE_API HDC CreateCompatibleDC(HDC compatible);
ORVANE_API BOOL DeleteDC(HDC dc);

/// Selects a font or a bitmap and returns the one of its kind selected before; null, changing
/// nothing, when either handle names nothing of the sort or the bitmap is selected into another
/// device context.
ORVANE_API HGDIOBJ SelectObject(HDC dc, HGDIOBJ object);

/// Deletes a font or a bitmap. FALSE when it is none or is still selected into a device context.
/// What device contexts have selected at first is left alone, with TRUE.
ORVANE_API BOOL DeleteObject(HGDIOBJ object);

/// Completes all drawing into bitmaps, so that their bits can be read. Always TRUE.
ORVANE_API BOOL GdiFlush();

#endif
