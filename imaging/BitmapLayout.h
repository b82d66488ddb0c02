// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Bitmaps.h"

#include <cstdint>
#include <optional>
#include <string>

/// 1, 4, 8, 16, 24 and 32.
bool IsKnownBitCount(int bitCount);

/// Whether the pixels are run-length coded.
bool IsPackedBitmap(const BITMAPINFO* info);

/// Whether so many bytes of pixels may be made out of so many stored ones: what is small always
/// may, and nothing grows much more than packed pixels do.
bool IsPlausibleSize(std::uint64_t bytes, std::uint64_t stored);

/// The bytes of an uncompressed bitmap's pixels, rows padded to four bytes; the height may be
/// negative. 0 when the description is impossible.
std::uint64_t BitmapBytes(int width, int height, int bitCount);

/// The bytes of a bitmap's record with the colours or masks that its pixels need.
std::uint64_t BitmapRecordBytes(const BITMAPINFO* info);

/// The bytes of a bitmap's pixels, for packed ones those that the record states.
std::uint64_t BitmapPixelBytes(const BITMAPINFO* info);

/// What keeps a bitmap from being read.
struct BitmapFault
{
    std::uint64_t place;  ///< in bytes from the record's start
    std::string text;     ///< what is there and what is expected
};

/// The first fault of a bitmap that has \p recordBytes from its record's start on and \p pixelBytes
/// from \p pixelPlace on: record, colours or masks, and pixels lie inside, and are of a kind that
/// can be read.
std::optional<BitmapFault> FindFault(const BITMAPINFO* info, std::uint64_t recordBytes,
                                     std::uint64_t pixelPlace, std::uint64_t pixelBytes);

/// Whether there is none.
bool FitsBitmap(const BITMAPINFO* info, std::uint64_t recordBytes, std::uint64_t pixelBytes);

/// The offset of the pixels in the bytes of a BMP file; 0 when record, colours or pixels do not lie
/// inside the file, with the place and the fault in \p refusal.
std::uint64_t FindPixels(const BYTE* file, std::uint64_t fileBytes, std::string* refusal);
