// SPDX-License-Identifier: MIT
#include "imaging/BitmapLayout.h"

#include "platform/Limits.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>

namespace limits = orvane::limits;

namespace
{

constexpr double metresPerDot = 0.025399987;  // at one dot per inch

// The header sizes of the versions of the format, in bytes.
constexpr DWORD knownHeaders[] = {40, 52, 56, 64, 108, 124};
constexpr char knownHeadersText[] = "40, 52, 56, 64, 108 or 124";

bool IsKnownHeader(DWORD size)
{
    return std::find(std::begin(knownHeaders), std::end(knownHeaders), size) !=
           std::end(knownHeaders);
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

int DotsPerInch(LONG dotsPerMetre)
{
    return static_cast<int>(dotsPerMetre * metresPerDot);
}

LONG DotsPerMetre(int dotsPerInch)
{
    return static_cast<LONG>(std::lround(dotsPerInch / metresPerDot));
}

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
    // The masks always take bytes 40 to 51 of the record: they follow a header of 40 bytes, and
    // longer headers contain them.
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

std::optional<BitmapFault> FindFault(const BITMAPINFO* info, std::uint64_t recordBytes,
                                     std::uint64_t pixelPlace, std::uint64_t pixelBytes)
{
    const BITMAPINFOHEADER& header = info->bmiHeader;
    const auto text = [](auto number) { return std::to_string(number); };
    const auto fault = [](std::size_t place, const std::string& found,
                          const std::string& expected) {
        return BitmapFault{place, "found " + found + ", expected " + expected};
    };
    if (recordBytes < sizeof header)
    {
        return fault(0, "a header of " + text(recordBytes) + " bytes",
                     "at least " + text(sizeof header));
    }
    if (!IsKnownHeader(header.biSize))
    {
        return fault(offsetof(BITMAPINFOHEADER, biSize),
                     "a header of " + text(header.biSize) + " bytes", knownHeadersText);
    }
    if (header.biPlanes != 1)
    {
        return fault(offsetof(BITMAPINFOHEADER, biPlanes), text(header.biPlanes) + " planes",
                     "1 plane");
    }
    if (!IsKnownFormat(header))
    {
        return fault(
            offsetof(BITMAPINFOHEADER, biBitCount),
            text(header.biBitCount) + " bits per pixel with compression " +
                text(header.biCompression) + (header.biHeight < 0 ? ", highest row first" : ""),
            "1, 4, 8, 16, 24 or 32 bits with compression 0, 8 with 1, 4 with 2, 16 or 32 with 3");
    }
    const std::uint64_t unpacked = BitmapBytes(header.biWidth, header.biHeight, header.biBitCount);
    const std::uint64_t needed = BitmapPixelBytes(info);
    const bool isTooMuchToUnpack =
        IsPackedBitmap(info) && (unpacked > limits::MaxUnpackedBytes(needed) ||
                                 header.biWidth > limits::maxPackedRowPixels);
    if (unpacked == 0 || unpacked > limits::maxBitmapBytes || isTooMuchToUnpack)
    {
        return fault(offsetof(BITMAPINFOHEADER, biWidth),
                     text(header.biWidth) + " by " + text(header.biHeight) + " pixels",
                     IsPackedBitmap(info) ? "rows of at most " + text(limits::maxPackedRowPixels) +
                                                " pixels, and no more than " + text(needed) +
                                                " compressed bytes can hold"
                                          : "at least 1 pixel and at most 4 GiB of pixels");
    }
    if (BitmapRecordBytes(info) > recordBytes)
    {
        return fault(offsetof(BITMAPINFOHEADER, biClrUsed),
                     "a header, colours and masks of " + text(BitmapRecordBytes(info)) + " bytes",
                     "at most " + text(recordBytes) + " bytes");
    }
    if (needed == 0 || needed > pixelBytes)
    {
        return fault(pixelPlace, text(std::min(needed, pixelBytes)) + " bytes of pixels",
                     text(std::max(needed, std::uint64_t{1})) + " bytes");
    }
    return std::nullopt;
}

bool FitsBitmap(const BITMAPINFO* info, std::uint64_t recordBytes, std::uint64_t pixelBytes)
{
    return !FindFault(info, recordBytes, 0, pixelBytes);
}

std::uint64_t FindPixels(const BYTE* file, std::uint64_t fileBytes, std::string* refusal)
{
    BITMAPFILEHEADER header;
    constexpr std::uint64_t leastBytes = sizeof header + sizeof(BITMAPINFOHEADER);
    if (fileBytes < leastBytes)
    {
        *refusal = "byte " + std::to_string(fileBytes) + ": the file ends, expected headers of " +
                   std::to_string(leastBytes) + " bytes";
        return 0;
    }
    std::memcpy(&header, file, sizeof header);
    const std::uint64_t offset = header.bfOffBits;
    if (offset < sizeof header || offset >= fileBytes)
    {
        *refusal = "byte " + std::to_string(offsetof(BITMAPFILEHEADER, bfOffBits)) +
                   ": found pixels that begin at byte " + std::to_string(offset) +
                   ", expected a place inside the file's " + std::to_string(fileBytes) + " bytes";
        return 0;
    }
    const BITMAPINFO* const info = reinterpret_cast<const BITMAPINFO*>(file + sizeof header);
    if (const std::optional<BitmapFault> fault =
            FindFault(info, fileBytes - sizeof header, offset - sizeof header, fileBytes - offset))
    {
        *refusal = "byte " + std::to_string(sizeof header + fault->place) + ": " + fault->text;
        return 0;
    }
    return offset;
}
