// SPDX-License-Identifier: MIT
#include "platform/Bitmaps.h"

#include "platform/Errors.h"
#include "platform/posix/Bitmap.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

namespace posix
{
namespace
{

constexpr BITMAPINFOHEADER stockHeader = {
    sizeof(BITMAPINFOHEADER), 1, 1, 1, 1, BI_RGB, 0, 0, 0, 0, 0};

bool IsKnownBitCount(int bitCount)
{
    constexpr int known[] = {1, 4, 8, 16, 24, 32};
    return std::find(std::begin(known), std::end(known), bitCount) != std::end(known);
}

// The bitmap of that description, without bits and colours; null when there is no such bitmap.
std::shared_ptr<Bitmap> Described(const BITMAPINFOHEADER& header)
{
    const bool hasMasks = header.biCompression == BI_BITFIELDS;
    const bool mayHaveMasks = header.biBitCount == 16 || header.biBitCount == 32;
    if (header.biSize < sizeof header || header.biPlanes != 1 || header.biWidth <= 0 ||
        header.biHeight == 0 || header.biHeight == std::numeric_limits<LONG>::min() ||
        !IsKnownBitCount(header.biBitCount) ||
        (header.biCompression != BI_RGB && !(hasMasks && mayHaveMasks)))
    {
        return nullptr;
    }
    auto bitmap = std::make_shared<Bitmap>();
    bitmap->width = header.biWidth;
    bitmap->height = std::abs(header.biHeight);
    bitmap->isTopDown = header.biHeight < 0;
    bitmap->bitCount = header.biBitCount;
    bitmap->rowBytes =
        (static_cast<std::size_t>(header.biBitCount) * static_cast<std::size_t>(header.biWidth) +
         31) /
        32 * 4;
    if (bitmap->Size() / bitmap->rowBytes != static_cast<std::size_t>(bitmap->height) ||
        bitmap->Size() > std::numeric_limits<LONG>::max())
    {
        return nullptr;
    }
    return bitmap;
}

// Takes over the masks or the colours that follow the header.
void TakeColors(Bitmap& bitmap, const BITMAPINFO& info)
{
    const BITMAPINFOHEADER& header = info.bmiHeader;
    const BYTE* const behind = reinterpret_cast<const BYTE*>(&info) + header.biSize;
    if (header.biCompression == BI_BITFIELDS)
    {
        // In a header of later versions the masks are inside, at the same place as behind this one.
        std::memcpy(bitmap.masks.data(), reinterpret_cast<const BYTE*>(&info) + sizeof header,
                    sizeof bitmap.masks);
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
        const DWORD all = DWORD{1} << bitmap.bitCount;
        const DWORD used = header.biClrUsed == 0 ? all : std::min(header.biClrUsed, all);
        bitmap.colors.resize(all);
        std::memcpy(bitmap.colors.data(), behind, used * sizeof(RGBQUAD));
    }
}

bool AllocateBits(Bitmap& bitmap)
{
    const std::shared_ptr<BYTE[]> memory(new (std::nothrow) BYTE[bitmap.Size()]());
    bitmap.bits = memory.get();
    bitmap.memory = memory;
    return memory != nullptr;
}

}  // namespace

HBITMAP StockBitmap()
{
    static const HBITMAP stock = [] {
        const std::shared_ptr<Bitmap> bitmap = Described(stockHeader);
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
    const std::shared_ptr<posix::Bitmap> bitmap =
        info == nullptr || usage != DIB_RGB_COLORS || section != nullptr
            ? nullptr
            : posix::Described(info->bmiHeader);
    if (bitmap == nullptr)
    {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    posix::TakeColors(*bitmap, *info);
    if (!posix::AllocateBits(*bitmap))
    {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    bitmap->section = section;
    bitmap->offset = section == nullptr ? 0 : offset;
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
