// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/drawing/BitmapObject.h"

namespace posix
{

/// Decodes run-length coded pixels (BI_RLE8, or BI_RLE4 if \p isFourBit) into a bitmap of 8 bits.
/// It stops at the mark for the end of the picture or after \p size bytes, whichever comes first.
/// Pixels that the code skips stay as they are, and pixels outside the bitmap are dropped.
void UnpackPixels(Bitmap& bitmap, const BYTE* packed, std::size_t size, bool isFourBit);

}  // namespace posix
