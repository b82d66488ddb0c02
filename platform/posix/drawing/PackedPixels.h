// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/drawing/BitmapObject.h"

namespace posix
{

/// Unpacks run-length coded pixels (BI_RLE8, or BI_RLE4 when \p isFourBit) into a bitmap of 8 bits.
/// Stops at the end of the picture or of the data, whichever comes first; pixels that are skipped
/// or lie outside change nothing.
void UnpackPixels(Bitmap& bitmap, const BYTE* packed, std::size_t size, bool isFourBit);

}  // namespace posix
