// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Memory device contexts and the objects selected into them.

#include "platform/Export.h"
#include "platform/Types.h"

#if !defined(_WIN32)

/// Makes a memory device context, in which a bitmap of 1 by 1 pixel and a default font are
/// selected. The caller ends it with DeleteDC. \p compatible is ignored and may be null.
ORVANE_API HDC CreateCompatibleDC(HDC compatible);
ORVANE_API BOOL DeleteDC(HDC dc);

/// Selects a font or a bitmap and returns the font or bitmap that was selected before. Changes
/// nothing and returns null when a handle is not valid or when the bitmap is selected into another
/// device context.
ORVANE_API HGDIOBJ SelectObject(HDC dc, HGDIOBJ object);

/// Deletes a font or a bitmap. Returns FALSE when the handle names neither or when the object is
/// still selected into a device context. For the default objects of device contexts, does nothing
/// and returns TRUE.
ORVANE_API BOOL DeleteObject(HGDIOBJ object);

/// Completes all drawing of this thread into bitmaps, so that their bits can be read. Always TRUE.
ORVANE_API BOOL GdiFlush();

#endif
