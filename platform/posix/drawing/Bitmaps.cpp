// SPDX-License-Identifier: MIT
#include "platform/Bitmaps.h"

#include "platform/Errors.h"
#include "platform/posix/FileMapping.h"
#include "platform/posix/drawing/BitmapObject.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace posix
{
namespace
{

constexpr std::uint64_t largestBitmap = 0xFFFFFFFF;  // what biSizeImage can say, bytes

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
        // Packed pixels always begin with the lowest row.
        case BI_RLE8:
            return header.biBitCount == 8 && header.biHeight > 0;
        case BI_RLE4:
            return header.biBitCount == 4 && header.biHeight > 0;
        default:
            return false;
    }
}

// Takes over the masks or the colours that follow the header.
void TakeColors(Bitmap& bitmap, const BITMAPINFO& info)
{
    const BITMAPINFOHEADER& header = info.bmiHeader;
    const BYTE* const start = reinterpret_cast<const BYTE*>(&info);
    if (header.biCompression == BI_BITFIELDS)
    {
        // In a header of later versions the masks are inside, at the same place as behind this one.
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
    if (bitmap->Size() > largestBitmap)
    {
        return nullptr;
    }
    TakeColors(*bitmap, info);
    return bitmap;
}

bool AllocateBits(Bitmap& bitmap)
{
    // Pages of a large bitmap that nobody touches cost nothing.
    const std::shared_ptr<void> memory(std::calloc(bitmap.Size(), 1), std::free);
    bitmap.bits = static_cast<BYTE*>(memory.get());
    bitmap.memory = memory;
    return memory != nullptr;
}

namespace
{

// Bits inside a mapped file.
bool MapBits(Bitmap& bitmap, HANDLE section, DWORD offset)
{
    const auto mapping = Resolve<FileMapping>(section);
    if (mapping == nullptr || offset % 4 != 0)
    {
        SetLastError(mapping == nullptr ? ERROR_INVALID_HANDLE : ERROR_INVALID_PARAMETER);
        return false;
    }
    bitmap.memory = MapBytes(*mapping, offset, bitmap.Size(), true);
    bitmap.bits = static_cast<BYTE*>(bitmap.memory.get());
    bitmap.section = section;
    bitmap.offset = offset;
    if (bitmap.bits == nullptr)
    {
        SetLastError(ERROR_INVALID_PARAMETER);
    }
    return bitmap.bits != nullptr;
}

}  // namespace

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

HBITMAP CreateDIBSection(HDC, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section,
                         DWORD offset)
{
    if (bits != nullptr)
    {
        *bits = nullptr;
    }
    const bool isPacked = info != nullptr && (info->bmiHeader.biCompression == BI_RLE8 ||
                                              info->bmiHeader.biCompression == BI_RLE4);
    const std::shared_ptr<posix::Bitmap> bitmap =
        info == nullptr || isPacked || usage != DIB_RGB_COLORS ? nullptr
                                                               : posix::DescribeBitmap(*info);
    if (bitmap == nullptr)
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    if (section != nullptr)
    {
        if (!posix::MapBits(*bitmap, section, offset))
        {
            return nullptr;
        }
    }
    else if (!posix::AllocateBits(*bitmap))
    {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    if (bits != nullptr)
    {
        *bits = bitmap->bits;
    }
    return static_cast<HBITMAP>(posix::AddHandle(bitmap));
}

int GetObjectA(HGDIOBJ object, int size, LPVOID buffer)
{
    const std::shared_ptr<posix::Bitmap> bitmap = posix::Resolve<posix::Bitmap>(object);
    if (bitmap == nullptr)
    {
        SetLastError(ERROR_INVALID_HANDLE);
        return 0;
    }
    if (buffer == nullptr)
    {
        return sizeof(BITMAP);
    }
    DIBSECTION record{};
    record.dsBm.bmWidth = bitmap->width;
    record.dsBm.bmHeight = bitmap->height;
    record.dsBm.bmWidthBytes = static_cast<LONG>(bitmap->rowBytes);
    record.dsBm.bmPlanes = 1;
    record.dsBm.bmBitsPixel = static_cast<WORD>(bitmap->bitCount);
    record.dsBm.bmBits = bitmap->bits;
    BITMAPINFOHEADER& header = record.dsBmih;
    header.biSize = sizeof header;
    header.biWidth = bitmap->width;
    header.biHeight = bitmap->isTopDown ? -bitmap->height : bitmap->height;
    header.biPlanes = 1;
    header.biBitCount = static_cast<WORD>(bitmap->bitCount);
    header.biCompression = bitmap->bitCount == 16 || bitmap->bitCount == 32 ? BI_BITFIELDS : BI_RGB;
    header.biSizeImage = static_cast<DWORD>(bitmap->Size());
    header.biClrUsed = static_cast<DWORD>(bitmap->colors.size());
    std::copy(bitmap->masks.begin(), bitmap->masks.end(), record.dsBitfields);
    record.dshSection = bitmap->section;
    record.dsOffset = bitmap->offset;

    const int whole[] = {sizeof(DIBSECTION), sizeof(BITMAP)};
    for (const int bytes : whole)
    {
        if (size >= bytes)
        {
            std::memcpy(buffer, &record, static_cast<std::size_t>(bytes));
            return bytes;
        }
    }
    SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
}
