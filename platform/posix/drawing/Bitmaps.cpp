// SPDX-License-Identifier: MIT
#include "platform/Bitmaps.h"

#include "platform/Errors.h"
#include "platform/posix/FileMapping.h"
#include "platform/posix/drawing/BitmapObject.h"

#include <algorithm>
#include <cstring>

namespace
{

/// Makes bytes of a mapped file the bits of a bitmap. False, with the error set, on failure.
bool MapBits(posix::Bitmap& bitmap, HANDLE section, DWORD offset)
{
    const auto mapping = posix::Resolve<posix::FileMapping>(section);
    if (mapping == nullptr || offset % 4 != 0)
    {
        SetLastError(mapping == nullptr ? ERROR_INVALID_HANDLE : ERROR_INVALID_PARAMETER);
        return false;
    }
    bitmap.memory = posix::MapBytes(*mapping, offset, bitmap.Size(), true);
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
        if (!MapBits(*bitmap, section, offset))
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
