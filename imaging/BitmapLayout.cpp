// SPDX-License-Identifier: MIT
#include "imaging/BitmapLayout.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>

namespace
{

// A few bytes of packed pixels, or of a record that only says so, must not make gigabytes.
constexpr std::uint64_t alwaysFine = 64 << 20;
constexpr std::uint64_t largestPacking = 256;

// The header as it grew over the years.
bool IsKnownHeader(DWORD size)
{
    constexpr DWORD known[] = {40, 52, 56, 64, 108, 124};
    return std::find(std::begin(known), std::end(known), size) != std::end(known);
}

bool IsKnownFormat(const BITMAPINFOHEADER& header)
{
    const int bits = header.biBitCount;
    switch (header.biCompression)
    {
        case BI_RGB:
            return IsKnownBitCount(bits);
        case BI_BITFIELDS:
            return bits == 16 || bits == 32;
        case BI_RLE8:
            return bits == 8 && header.biHeight > 0;
        case BI_RLE4:
            return bits == 4 && header.biHeight > 0;
        default:
            return false;
    }
}

}  // namespace

bool IsKnownBitCount(int bitCount)
{
    constexpr int known[] = {1, 4, 8, 16, 24, 32};
    return std::find(std::begin(known), std::end(known), bitCount) != std::end(known);
}

bool IsPackedBitmap(const BITMAPINFO* info)
{
    const DWORD compression = info->bmiHeader.biCompression;
    return compression == BI_RLE8 || compression == BI_RLE4;
}

bool IsPlausibleSize(std::uint64_t bytes, std::uint64_t stored)
{
    return bytes <= alwaysFine || bytes / largestPacking <= stored;
}

std::uint64_t BitmapBytes(int width, int height, int bitCount)
{
    if (width <= 0 || height == 0 || height == std::numeric_limits<int>::min() ||
        !IsKnownBitCount(bitCount))
    {
        return 0;
    }
    const std::uint64_t rowBytes =
        (static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(bitCount) + 31) / 32 * 4;
    return rowBytes * static_cast<std::uint64_t>(std::abs(height));
}

std::uint64_t BitmapRecordBytes(const BITMAPINFO* info)
{
    const BITMAPINFOHEADER& header = info->bmiHeader;
    const std::uint64_t all = header.biBitCount <= 8 ? std::uint64_t{1} << header.biBitCount : 0;
    const std::uint64_t colors = header.biClrUsed != 0 ? std::uint64_t{header.biClrUsed} : all;
    // Masks lie behind the header, or inside a longer one at the same place.
    constexpr DWORD withMasks = sizeof header + 3 * sizeof(DWORD);
    const DWORD size = header.biSize;
    const DWORD beforeColors =
        header.biCompression == BI_BITFIELDS ? std::max(size, withMasks) : size;
    return beforeColors + colors * sizeof(RGBQUAD);
}

std::uint64_t BitmapPixelBytes(const BITMAPINFO* info)
{
    const BITMAPINFOHEADER& header = info->bmiHeader;
    return IsPackedBitmap(info) ? std::uint64_t{header.biSizeImage}
                                : BitmapBytes(header.biWidth, header.biHeight, header.biBitCount);
}

bool FitsBitmap(const BITMAPINFO* info, std::uint64_t recordBytes, std::uint64_t pixelBytes)
{
    const BITMAPINFOHEADER& header = info->bmiHeader;
    if (recordBytes < sizeof header || !IsKnownHeader(header.biSize) || header.biPlanes != 1 ||
        !IsKnownFormat(header))
    {
        return false;
    }
    const std::uint64_t unpacked = BitmapBytes(header.biWidth, header.biHeight, header.biBitCount);
    const std::uint64_t needed = BitmapPixelBytes(info);
    return unpacked != 0 && unpacked <= 0xFFFFFFFF && IsPlausibleSize(unpacked, needed) &&
           needed != 0 && needed <= pixelBytes && BitmapRecordBytes(info) <= recordBytes;
}

std::uint64_t FindPixels(const BYTE* file, std::uint64_t fileBytes)
{
    BITMAPFILEHEADER header;
    if (fileBytes < sizeof header + sizeof(BITMAPINFOHEADER))
    {
        return 0;
    }
    std::memcpy(&header, file, sizeof header);
    const std::uint64_t offset = header.bfOffBits;
    const BITMAPINFO* const info = reinterpret_cast<const BITMAPINFO*>(file + sizeof header);
    if (offset < sizeof header || offset >= fileBytes ||
        !FitsBitmap(info, fileBytes - sizeof header, fileBytes - offset))
    {
        return 0;
    }
    return offset;
}
