// SPDX-License-Identifier: MIT
#include "imaging/MemoryMappedDIB.h"

#include "host/CArchive.h"
#include "host/CWinApp.h"
#include "imaging/BitmapLayout.h"
#include "imaging/Palette.h"
#include "platform/Messages.h"

#include <cstdint>
#include <cstring>

IMPLEMENT_SERIAL(MemoryMappedDIB, CObject, VERSIONABLE_SCHEMA | 1)

namespace
{

constexpr UINT cannotCreateMessage = 21101;

void ReportCannotCreate(DWORD number)
{
    CString format;
    format.LoadString(cannotCreateMessage);
    CString message;
    message.Format(format, number);
    AfxMessageBox(message, MB_ICONEXCLAMATION);
}

}  // namespace

MemoryMappedDIB::MemoryMappedDIB() : memoryDC(CreateCompatibleDC(nullptr)) {}

MemoryMappedDIB::~MemoryMappedDIB()
{
    ReleaseBitmap();
    if (memoryDC != nullptr)
    {
        DeleteDC(memoryDC);
    }
}

int MemoryMappedDIB::Close()
{
    const int wasOpen = fileHandle != nullptr && mappingHandle != nullptr;
    CloseFile();
    return wasOpen;
}

void MemoryMappedDIB::ReleaseBitmap()
{
    DetachGlobalHandle();
    DeleteSection();
    CloseFile();
}

void MemoryMappedDIB::CloseFile()
{
    if (mappedFromFile)
    {
        dibInfo = nullptr;
        dibBits = nullptr;
        mappedFromFile = 0;
    }
    if (mappedView != nullptr)
    {
        UnmapViewOfFile(mappedView);
    }
    if (mappingHandle != nullptr)
    {
        CloseHandle(mappingHandle);
    }
    if (fileHandle != nullptr)
    {
        CloseHandle(fileHandle);
    }
    mappedView = nullptr;
    fileHeader = nullptr;
    fileBits = nullptr;
    mappingHandle = nullptr;
    fileHandle = nullptr;
}

void MemoryMappedDIB::DeleteSection()
{
    if (dibSection != nullptr)
    {
        SelectObject(memoryDC, previousBitmap);
        DeleteObject(dibSection);
        dibSection = nullptr;
        previousBitmap = nullptr;
        dibBits = nullptr;
        dibInfo = nullptr;
        dibInfoSize = 0;
    }
}

int MemoryMappedDIB::Create(int newWidth, int newHeight, int newHorizontalResolution,
                            int newVerticalResolution, int newBitCount, const CString& name)
{
    ReleaseBitmap();
    width = newWidth;
    height = newHeight;
    horizontalResolution = newHorizontalResolution;
    verticalResolution = newVerticalResolution;
    bitCount = newBitCount;
    filename = name;
    if (memoryDC == nullptr || !GenerateDIBInfo())
    {
        return 0;
    }
    dibSection = CreateDIBRectangleSection();
    if (dibSection == nullptr)
    {
        return 0;
    }
    previousBitmap = SelectObject(memoryDC, dibSection);
    return 1;
}

int MemoryMappedDIB::GenerateDIBInfo()
{
    const std::uint64_t imageSize = BitmapBytes(width, height, bitCount);
    if (imageSize == 0)
    {
        return 0;
    }
    const DWORD colors = bitCount <= 8 ? DWORD{1} << bitCount : 0;
    const std::uint64_t infoSize = sizeof(BITMAPINFOHEADER) + colors * sizeof(RGBQUAD);
    const std::uint64_t offset = sizeof(BITMAPFILEHEADER) + infoSize;
    if (offset + imageSize > 0xFFFFFFFF)
    {
        return 0;
    }
    infoStorage_.assign(infoSize / sizeof(DWORD) + 1, 0);
    dibInfo = reinterpret_cast<BITMAPINFO*>(infoStorage_.data());
    BITMAPINFOHEADER& header = dibInfo->bmiHeader;
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = height;
    header.biPlanes = 1;
    header.biBitCount = static_cast<WORD>(bitCount);
    header.biCompression = BI_RGB;  // without masks, 16 bits mean 5 each of red, green and blue
    header.biSizeImage = static_cast<DWORD>(imageSize);
    header.biXPelsPerMeter = DotsPerMetre(horizontalResolution);
    header.biYPelsPerMeter = DotsPerMetre(verticalResolution);
    header.biClrUsed = colors;
    if (colors != 0)
    {
        FillPalette(dibInfo);
    }
    dibInfoSize = static_cast<DWORD>(infoSize);
    bitsOffset = static_cast<DWORD>(offset);
    fileSize = static_cast<DWORD>(offset + imageSize);
    return 1;
}

HBITMAP MemoryMappedDIB::CreateDIBRectangleSection()
{
    CloseFile();
    if (memoryDC == nullptr || (dibInfo == nullptr && !GenerateDIBInfo()))
    {
        return nullptr;
    }
    if (!filename.IsEmpty() && !MakeFile())
    {
        return nullptr;
    }
    const HBITMAP section =
        CreateDIBSection(memoryDC, dibInfo, DIB_RGB_COLORS, &dibBits, nullptr, 0);
    if (section == nullptr && fileHandle != nullptr)
    {
        CloseFile();
        DeleteFileA(filename);
    }
    return section;
}

int MemoryMappedDIB::MakeFile()
{
    const HANDLE file =
        CreateFileA(filename, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                    FILE_FLAG_WRITE_THROUGH | FILE_ATTRIBUTE_ARCHIVE, nullptr);
    if (file == INVALID_HANDLE_VALUE)
    {
        // The message shows the lowest 32 bits of the name's address where a size belongs. That is
        // required; see AFileThatCannotBeMadeIsReportedWithAnAddress.
        ReportCannotCreate(
            static_cast<DWORD>(reinterpret_cast<std::uintptr_t>(static_cast<LPCSTR>(filename))));
        CloseFile();
        return 0;
    }
    fileHandle = file;
    mappingHandle = CreateFileMappingA(fileHandle, nullptr, PAGE_READWRITE, 0, fileSize, nullptr);
    mappedView =
        mappingHandle != nullptr ? MapViewOfFile(mappingHandle, FILE_MAP_WRITE, 0, 0, 0) : nullptr;
    if (mappedView == nullptr)
    {
        CloseFile();
        DeleteFileA(filename);
        ReportCannotCreate(fileSize);
        return 0;
    }
    BYTE* const bytes = static_cast<BYTE*>(mappedView);
    const BITMAPFILEHEADER header = {bitmapFileMark, fileSize, 0, 0, bitsOffset};
    std::memcpy(bytes, &header, sizeof header);
    std::memcpy(bytes + sizeof header, dibInfo, dibInfoSize);
    fileHeader = reinterpret_cast<BITMAPFILEHEADER*>(bytes);
    fileBits = bytes + bitsOffset;
    return 1;
}

int MemoryMappedDIB::CopyBits()
{
    if (fileHandle == nullptr || mappingHandle == nullptr || dibBits == nullptr ||
        fileBits == nullptr || dibBits == fileBits)
    {
        return 0;
    }
    GdiFlush();
    std::memcpy(fileBits, dibBits, PixelBytes());
    return 1;
}

int MemoryMappedDIB::FindNearestColor(ColorVector* color)
{
    return FindNearestPaletteColor(dibInfo, color);
}

DWORD MemoryMappedDIB::PixelBytes() const
{
    // The size in the header cannot be used: for uncompressed pixels it may hold any number.
    return dibInfo == nullptr || dibBits == nullptr ? 0
                                                    : static_cast<DWORD>(BitmapPixelBytes(dibInfo));
}
