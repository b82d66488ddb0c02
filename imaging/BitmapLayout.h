// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Bitmaps.h"

#include <cstdint>

/// The bytes of an uncompressed bitmap's pixels, rows padded to four bytes; the height may be
/// negative. 0 when the description is impossible.
std::uint64_t BitmapBytes(int width, int height, int bitCount);

/// Whether a bitmap's record, with the colours or masks that its pixels need, lies inside \p
/// recordBytes from its start, and its pixels inside \p pixelBytes. Packed pixels count with the
/// size that the record states.
bool FitsBitmap(const BITMAPINFO* info, std::uint64_t recordBytes, std::uint64_t pixelBytes);

/// The offset of the pixels in the bytes of a BMP file; 0 when record, colours or pixels do not lie
/// inside the file.
std::uint64_t FindPixels(const BYTE* file, std::uint64_t fileBytes);
