// SPDX-License-Identifier: MIT
#include "imaging/BitmapLayout.h"
#include "imaging/MemoryMappedDIB.h"
#include "imaging/TextureSize.h"
#include "platform/Errors.h"
#include "platform/Limits.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>

// MemoryMappedDIB: reading BMP files.

namespace limits = orvane::limits;
using orvane::FitTexture;
using orvane::PixelSize;

namespace
{

std::string HexBytes(WORD word)
{
    char text[8];
    std::snprintf(text, sizeof text, "%02X %02X", word & 0xFF, word >> 8);
    return text;
}

std::uint64_t LengthOf(HANDLE file)
{
    DWORD high = 0;
    const DWORD low = GetFileSize(file, &high);
    return std::uint64_t{high} << 32 | low;
}

}  // namespace

int MemoryMappedDIB::Open(const CString& name)
{
    ReleaseBitmap();
    filename = name;
    refusal_.clear();
    if (filename.IsEmpty())
    {
        return Refuse(noName, "the name of the file is empty");
    }
    const HANDLE file = CreateFileA(filename, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
    {
        return Refuse(unusable, GetLastErrorText());
    }
    fileHandle = file;
    const std::uint64_t sizeBefore = LengthOf(fileHandle);
    mappingHandle = CreateFileMappingA(fileHandle, nullptr, PAGE_READONLY, 0, 0, nullptr);
    if (mappingHandle == nullptr)
    {
        // The file stays open until Close.
        return Refuse(unusable, sizeBefore == 0 ? "byte 0: the file ends, expected \"BM\""
                                                : GetLastErrorText());
    }
    mappedView = MapViewOfFile(mappingHandle, FILE_MAP_READ, 0, 0, 0);
    if (mappedView == nullptr)
    {
        return Refuse(unusable, GetLastErrorText());
    }
    // Another program may have changed the file's length since it was mapped. Only bytes that are
    // both in the file and in the view can be read.
    const std::uint64_t size = std::min(sizeBefore, LengthOf(fileHandle));

    BYTE* const bytes = static_cast<BYTE*>(mappedView);
    WORD mark = 0;
    std::memcpy(&mark, bytes, std::min<std::uint64_t>(size, sizeof mark));
    if (mark != bitmapFileMark)
    {
        CloseFile();
        return Refuse(notBitmap, "byte 0: found " + HexBytes(mark) + ", expected 42 4D (BM)");
    }
    std::string fault;
    const std::uint64_t offset = FindPixels(bytes, size, &fault);
    if (offset == 0)
    {
        CloseFile();
        return Refuse(unusable, std::move(fault));
    }
    fileHeader = reinterpret_cast<BITMAPFILEHEADER*>(bytes);
    dibInfo = reinterpret_cast<BITMAPINFO*>(bytes + sizeof(BITMAPFILEHEADER));
    width = dibInfo->bmiHeader.biWidth;
    height = dibInfo->bmiHeader.biHeight;
    bitCount = dibInfo->bmiHeader.biBitCount;
    dibInfoSize = dibInfo->bmiHeader.biSize + dibInfo->bmiHeader.biClrUsed * 4;
    dibBits = fileBits = bytes + offset;
    neededBytes_ = offset + BitmapPixelBytes(dibInfo);
    mappedFromFile = 1;
    return opened;
}

int MemoryMappedDIB::OpenAsTrueColor(const CString& name)
{
    return ConvertToTrueColor(name, Reduction::None);
}

int MemoryMappedDIB::OpenAsTexture(const CString& name)
{
    return ConvertToTrueColor(name, Reduction::ToTexture);
}

int MemoryMappedDIB::ConvertToTrueColor(const CString& name, Reduction reduction)
{
    if (memoryDC == nullptr)
    {
        return Refuse(unusable, "there is no device context");
    }
    refusal_.clear();
    ReleaseBitmap();
    filename = name;
    MemoryMappedDIB source;
    const int status = source.Open(name);
    if (status != opened)
    {
        return Refuse(static_cast<Status>(status), source.GetRefusal());
    }
    const BITMAPINFOHEADER& header = source.dibInfo->bmiHeader;
    const std::uint64_t fileBytes = LengthOf(source.fileHandle);
    const PixelSize whole = {header.biWidth, std::abs(header.biHeight)};
    const PixelSize size = reduction == Reduction::None
                               ? whole
                               : FitTexture(whole, limits::MaxTexturePixels(fileBytes));
    if (BitmapBytes(size.width, size.height, 24) > limits::MemoryForFile(fileBytes) ||
        !Create(size.width, size.height, DotsPerInch(header.biXPelsPerMeter),
                DotsPerInch(header.biYPelsPerMeter), 24, CString()))
    {
        return Refuse(unusable, "there is too little memory for the picture's pixels");
    }
    const int rows =
        size == whole
            ? SetDIBits(memoryDC, dibSection, 0, static_cast<UINT>(whole.height), source.dibBits,
                        source.dibInfo, DIB_RGB_COLORS)
            : StretchDIBits(memoryDC, 0, 0, size.width, size.height, 0, 0, whole.width,
                            whole.height, source.dibBits, source.dibInfo, DIB_RGB_COLORS, SRCCOPY);
    if (rows != whole.height)
    {
        DeleteSection();
        return Refuse(unusable, "the picture's pixels cannot be converted");
    }
    if (source.HasLostBytes())
    {
        DeleteSection();
        return Refuse(unusable, "the file became shorter while it was read");
    }
    return opened;
}

bool MemoryMappedDIB::HasLostBytes() const
{
    return mappedFromFile != 0 && LengthOf(fileHandle) < neededBytes_;
}

int MemoryMappedDIB::Refuse(Status status, std::string refusal)
{
    refusal_ = std::move(refusal);
    return status;
}
