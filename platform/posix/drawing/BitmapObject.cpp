// SPDX-License-Identifier: MIT
#include "platform/posix/drawing/BitmapObject.h"

#include "platform/Limits.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace posix
{
namespace
{

bool IsKnownBitCount(int bitCount)
{
    constexpr int known[] = {1, 4, 8, 16, 24, 32};
    return std::find(std::begin(known), std::end(known), bitCount) != std::end(known);
}

bool IsKnownCompression(const BITMAPINFOHEADER& header)
{
    switch (header.biCompression)
    {
        case BI_RGB:
            return true;
        case BI_BITFIELDS:
            return header.biBitCount == 16 || header.biBitCount == 32;
        // Run-length coded pixels always begin with the lowest row.
        case BI_RLE8:
            return header.biBitCount == 8 && header.biHeight > 0;
        case BI_RLE4:
            return header.biBitCount == 4 && header.biHeight > 0;
        default:
            return false;
    }
}

/// Copies the masks or the colours that follow the header.
void TakeColors(Bitmap& bitmap, const BITMAPINFO& info)
{
    const BITMAPINFOHEADER& header = info.bmiHeader;
    const BYTE* const start = reinterpret_cast<const BYTE*>(&info);
    if (header.biCompression == BI_BITFIELDS)
    {
        // Longer headers of later versions contain the masks, at the same offset at which they
        // follow this one.
        std::memcpy(bitmap.masks.data(), start + sizeof header, sizeof bitmap.masks);
    }
    else if (bitmap.bitCount == 16)
    {
        bitmap.masks = {0x7C00, 0x03E0, 0x001F};
    }
    else if (bitmap.bitCount == 32)
    {
        bitmap.masks = {0xFF0000, 0x00FF00, 0x0000FF};
    }
    else if (bitmap.bitCount <= 8)
    {
        const DWORD stated = header.biClrUsed;
        const DWORD all = DWORD{1} << header.biBitCount;
        const DWORD used = stated == 0 ? all : std::min(stated, all);
        bitmap.colors.resize(std::size_t{1} << bitmap.bitCount);
        std::memcpy(bitmap.colors.data(), start + header.biSize, used * sizeof(RGBQUAD));
    }
}

}  // namespace

std::shared_ptr<Bitmap> DescribeBitmap(const BITMAPINFO& info)
{
    const BITMAPINFOHEADER& header = info.bmiHeader;
    if (header.biSize < sizeof header || header.biPlanes != 1 || header.biWidth <= 0 ||
        header.biHeight == 0 || header.biHeight == std::numeric_limits<LONG>::min() ||
        !IsKnownBitCount(header.biBitCount) || !IsKnownCompression(header))
    {
        return nullptr;
    }
    auto bitmap = std::make_shared<Bitmap>();
    bitmap->width = header.biWidth;
    bitmap->height = std::abs(header.biHeight);
    bitmap->isTopDown = header.biHeight < 0;
    bitmap->bitCount = header.biCompression == BI_RLE4 ? 8 : header.biBitCount;
    bitmap->rowBytes =
        (static_cast<std::size_t>(bitmap->bitCount) * static_cast<std::size_t>(bitmap->width) +
         31) /
        32 * 4;
    if (bitmap->Size() > orvane::limits::maxBitmapBytes)
    {
        return nullptr;
    }
    TakeColors(*bitmap, info);
    return bitmap;
}

bool AllocateBits(Bitmap& bitmap)
{
    // calloc, because pages that are never written to then take no memory.
    const std::shared_ptr<void> memory(std::calloc(bitmap.Size(), 1), std::free);
    bitmap.bits = static_cast<BYTE*>(memory.get());
    bitmap.memory = memory;
    return memory != nullptr;
}

HBITMAP StockBitmap()
{
    static const HBITMAP stock = [] {
        const auto bitmap = std::make_shared<Bitmap>();
        bitmap->width = bitmap->height = bitmap->bitCount = 1;
        bitmap->rowBytes = 4;
        AllocateBits(*bitmap);
        bitmap->colors = {{0, 0, 0, 0}, {255, 255, 255, 0}};
        bitmap->isStock = true;
        return static_cast<HBITMAP>(AddHandle(bitmap));
    }();
    return stock;
}

}  // namespace posix
