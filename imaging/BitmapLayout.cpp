// SPDX-License-Identifier: MIT
#include "imaging/BitmapLayout.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace
{

bool IsPacked(const BITMAPINFOHEADER& header)
{
    return header.biCompression == BI_RLE8 || header.biCompression == BI_RLE4;
}

}  // namespace

std::uint64_t BitmapBytes(int width, int height, int bitCount)
{
    if (width <= 0 || height == 0 || height == std::numeric_limits<int>::min() || bitCount <= 0 ||
        bitCount > 32)
    {
        return 0;
    }
    const std::uint64_t rowBytes =
        (static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(bitCount) + 31) / 32 * 4;
    return rowBytes * static_cast<std::uint64_t>(std::abs(height));
}

bool FitsBitmap(const BITMAPINFO* info, std::uint64_t recordBytes, std::uint64_t pixelBytes)
{
    const BITMAPINFOHEADER& header = info->bmiHeader;
    if (recordBytes < sizeof header || header.biSize < sizeof header)
    {
        return false;
    }
    const std::uint64_t imageBytes =
        BitmapBytes(header.biWidth, header.biHeight, header.biBitCount);
    const std::uint64_t neededPixels =
        IsPacked(header) ? std::uint64_t{header.biSizeImage} : imageBytes;

    const std::uint64_t all = header.biBitCount <= 8 ? std::uint64_t{1} << header.biBitCount : 0;
    const std::uint64_t colors = header.biClrUsed != 0 ? std::uint64_t{header.biClrUsed} : all;
    std::uint64_t neededRecord = header.biSize + colors * sizeof(RGBQUAD);
    if (header.biCompression == BI_BITFIELDS)
    {
        neededRecord = std::max(neededRecord, std::uint64_t{sizeof header} + 3 * sizeof(DWORD));
    }
    return imageBytes != 0 && neededPixels != 0 && neededPixels <= pixelBytes &&
           neededRecord <= recordBytes;
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
