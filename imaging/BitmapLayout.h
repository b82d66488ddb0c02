// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Checks of bitmaps, which come before any other use of their bytes, and the sizes of their parts.
///
/// A bitmap has two parts: its record (a header, followed by a colour table or by three colour
/// masks) and its pixels. The pixels are uncompressed or run-length coded.

#include "platform/Bitmaps.h"

#include <cstdint>
#include <optional>
#include <string>

/// The first two bytes of every BMP file: "BM".
constexpr WORD bitmapFileMark = 0x4D42;

/// Converts the resolution in a bitmap's header, and back. A header counts dots per metre, the
/// library dots per inch.
int DotsPerInch(LONG dotsPerMetre);
LONG DotsPerMetre(int dotsPerInch);

/// Whether a bitmap can have this number of bits per pixel: 1, 4, 8, 16, 24 or 32.
bool IsKnownBitCount(int bitCount);

/// Whether the pixels are run-length coded.
bool IsPackedBitmap(const BITMAPINFO* info);

/// The number of bytes that uncompressed pixels take, with each row padded to a multiple of four
/// bytes. The height may be negative. Returns 0 for sizes that no bitmap can have.
std::uint64_t BitmapBytes(int width, int height, int bitCount);

/// The number of bytes that a bitmap's record takes.
std::uint64_t BitmapRecordBytes(const BITMAPINFO* info);

/// The number of bytes that a bitmap's pixels take. For run-length coded pixels this is the number
/// that the header gives.
std::uint64_t BitmapPixelBytes(const BITMAPINFO* info);

/// The reason why a bitmap cannot be read.
struct BitmapFault
{
    std::uint64_t place;  ///< of the faulty value, in bytes from the start of the record
    std::string text;     ///< the value found and the values expected
};

/// Checks that a bitmap is of a kind that can be read and that its parts lie inside the bytes that
/// are there. Returns the first fault, or nothing when all is well.
/// \param recordBytes the number of bytes from the start of the record to the end of the input.
/// \param pixelPlace the start of the pixels, in bytes from the start of the record.
/// \param pixelBytes the number of bytes from the start of the pixels to the end of the input.
std::optional<BitmapFault> FindFault(const BITMAPINFO* info, std::uint64_t recordBytes,
                                     std::uint64_t pixelPlace, std::uint64_t pixelBytes);

/// Whether FindFault finds no fault.
bool FitsBitmap(const BITMAPINFO* info, std::uint64_t recordBytes, std::uint64_t pixelBytes);

/// Checks the bytes of a BMP file and returns where its pixels begin, in bytes from the start of
/// the file. Returns 0 when the file cannot be read; \p refusal then receives the place and the
/// fault.
std::uint64_t FindPixels(const BYTE* file, std::uint64_t fileBytes, std::string* refusal);
