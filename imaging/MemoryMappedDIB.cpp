// SPDX-License-Identifier: MIT
#include "imaging/MemoryMappedDIB.h"

#include "host/CWinApp.h"
#include "host/RecordVersion.h"
#include "imaging/BitmapLayout.h"
#include "imaging/Palette.h"
#include "platform/Messages.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>

IMPLEMENT_SERIAL(MemoryMappedDIB, CObject, VERSIONABLE_SCHEMA | 1)

namespace
{

constexpr WORD bmpMark = 0x4D42;  // "BM"
constexpr UINT cannotCreateMessage = 21101;
constexpr double metresPerDot = 0.025399987;  // at one dot per inch

void SayCannotCreate(DWORD number)
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
    DetachGlobalHandle();
    DeleteSection_();
    CloseFile_();
    if (memoryDC != nullptr)
    {
        DeleteDC(memoryDC);
    }
}

int MemoryMappedDIB::Open(const CString& name)
{
    Close();
    DetachGlobalHandle();
    DeleteSection_();
    filename = name;
    if (filename.IsEmpty())
    {
        return noName;
    }
    const HANDLE file = CreateFileA(filename, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
    {
        return unusable;
    }
    fileHandle = file;
    mappingHandle = CreateFileMappingA(fileHandle, nullptr, PAGE_READONLY, 0, 0, nullptr);
    if (mappingHandle == nullptr)
    {
        return unusable;  // the file stays open until Close
    }
    mappedView = MapViewOfFile(mappingHandle, FILE_MAP_READ, 0, 0, 0);
    if (mappedView == nullptr)
    {
        return unusable;
    }
    // Asked after mapping: what a file that shrank meanwhile no longer holds is not touched.
    DWORD high = 0;
    const std::uint64_t low = GetFileSize(fileHandle, &high);
    const std::uint64_t size = std::uint64_t{high} << 32 | low;

    BYTE* const bytes = static_cast<BYTE*>(mappedView);
    WORD mark = 0;
    std::memcpy(&mark, bytes, std::min<std::uint64_t>(size, sizeof mark));
    if (mark != bmpMark)
    {
        CloseFile_();
        return notBitmap;
    }
    const std::uint64_t offset = FindPixels(bytes, size);
    if (offset == 0)
    {
        CloseFile_();
        return unusable;
    }
    fileHeader = reinterpret_cast<BITMAPFILEHEADER*>(bytes);
    dibInfo = reinterpret_cast<BITMAPINFO*>(bytes + sizeof(BITMAPFILEHEADER));
    width = dibInfo->bmiHeader.biWidth;
    height = dibInfo->bmiHeader.biHeight;
    bitCount = dibInfo->bmiHeader.biBitCount;
    dibInfoSize = dibInfo->bmiHeader.biSize + dibInfo->bmiHeader.biClrUsed * 4;
    dibBits = fileBits = bytes + offset;
    mappedFromFile = 1;
    return opened;
}

int MemoryMappedDIB::OpenAsTrueColor(const CString& name)
{
    if (memoryDC == nullptr)
    {
        return unusable;
    }
    MemoryMappedDIB source;
    const int status = source.Open(name);
    if (status != opened)
    {
        return status;
    }
    const BITMAPINFOHEADER& header = source.dibInfo->bmiHeader;
    const int rows = std::abs(header.biHeight);
    if (!Create(header.biWidth, rows, static_cast<int>(header.biXPelsPerMeter * metresPerDot),
                static_cast<int>(header.biYPelsPerMeter * metresPerDot), 24, CString()))
    {
        return unusable;
    }
    SetDIBits(memoryDC, dibSection, 0, static_cast<UINT>(rows), source.dibBits, source.dibInfo,
              DIB_RGB_COLORS);
    return opened;
}

int MemoryMappedDIB::Close()
{
    const int wasOpen = fileHandle != nullptr && mappingHandle != nullptr;
    CloseFile_();
    return wasOpen;
}

void MemoryMappedDIB::CloseFile_()
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

void MemoryMappedDIB::DeleteSection_()
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
    DetachGlobalHandle();
    DeleteSection_();
    CloseFile_();
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
    const bool known = bitCount == 1 || bitCount == 4 || bitCount == 8 || bitCount == 16 ||
                       bitCount == 24 || bitCount == 32;
    const std::uint64_t imageSize =
        known && width > 0 && height > 0 ? BitmapBytes(width, height, bitCount) : 0;
    const DWORD colors = bitCount <= 8 ? DWORD{1} << bitCount : 0;
    const std::uint64_t infoSize = sizeof(BITMAPINFOHEADER) + colors * sizeof(RGBQUAD);
    const std::uint64_t offset = sizeof(BITMAPFILEHEADER) + infoSize;
    if (imageSize == 0 || offset + imageSize > 0xFFFFFFFF)
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
    header.biCompression = BI_RGB;  // 16 bits are 5-5-5 without masks
    header.biSizeImage = static_cast<DWORD>(imageSize);
    header.biXPelsPerMeter = static_cast<LONG>(std::lround(horizontalResolution / metresPerDot));
    header.biYPelsPerMeter = static_cast<LONG>(std::lround(verticalResolution / metresPerDot));
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
    if (memoryDC == nullptr || (dibInfo == nullptr && !GenerateDIBInfo()))
    {
        return nullptr;
    }
    if (!filename.IsEmpty() && !MakeFile_())
    {
        return nullptr;
    }
    const HBITMAP section =
        CreateDIBSection(memoryDC, dibInfo, DIB_RGB_COLORS, &dibBits, nullptr, 0);
    if (section == nullptr && fileHandle != nullptr)
    {
        CloseFile_();
        DeleteFileA(filename);
    }
    return section;
}

int MemoryMappedDIB::MakeFile_()
{
    const HANDLE file =
        CreateFileA(filename, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                    FILE_FLAG_WRITE_THROUGH | FILE_ATTRIBUTE_ARCHIVE, nullptr);
    if (file == INVALID_HANDLE_VALUE)
    {
        // The number shown here is the address of the name, cut to 32 bits, and not the size. That
        // is meant; see AFileThatCannotBeMadeIsReportedWithAnAddress.
        SayCannotCreate(
            static_cast<DWORD>(reinterpret_cast<std::uintptr_t>(static_cast<LPCSTR>(filename))));
        CloseFile_();
        return 0;
    }
    fileHandle = file;
    mappingHandle = CreateFileMappingA(fileHandle, nullptr, PAGE_READWRITE, 0, fileSize, nullptr);
    mappedView =
        mappingHandle != nullptr ? MapViewOfFile(mappingHandle, FILE_MAP_WRITE, 0, 0, 0) : nullptr;
    if (mappedView == nullptr)
    {
        CloseFile_();
        DeleteFileA(filename);
        SayCannotCreate(fileSize);
        return 0;
    }
    BYTE* const bytes = static_cast<BYTE*>(mappedView);
    const BITMAPFILEHEADER header = {bmpMark, fileSize, 0, 0, bitsOffset};
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
    std::memcpy(fileBits, dibBits, dibInfo->bmiHeader.biSizeImage);
    return 1;
}

HGLOBAL MemoryMappedDIB::GetGlobalDIB()
{
    if (dibSection == nullptr || dibBits == nullptr || dibInfo == nullptr || dibInfoSize == 0)
    {
        return nullptr;
    }
    const DWORD imageSize = dibInfo->bmiHeader.biSizeImage;
    const HGLOBAL block =
        GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, std::size_t{dibInfoSize} + imageSize);
    BYTE* const bytes = static_cast<BYTE*>(GlobalLock(block));
    if (bytes == nullptr)
    {
        return nullptr;
    }
    GdiFlush();
    std::memcpy(bytes, dibInfo, dibInfoSize);
    std::memcpy(bytes + dibInfoSize, dibBits, imageSize);
    GlobalUnlock(block);
    return block;
}

int MemoryMappedDIB::AttachGlobalHandle(HGLOBAL handle)
{
    Close();
    DetachGlobalHandle();
    DeleteSection_();
    BYTE* const bytes = static_cast<BYTE*>(GlobalLock(handle));
    const std::size_t size = GlobalSize(handle);
    if (bytes == nullptr || size < sizeof(BITMAPINFOHEADER))
    {
        if (bytes != nullptr)
        {
            GlobalUnlock(handle);
        }
        return 0;
    }
    BITMAPINFO* const info = reinterpret_cast<BITMAPINFO*>(bytes);
    if (info->bmiHeader.biBitCount == 8 && info->bmiHeader.biClrUsed == 0)
    {
        info->bmiHeader.biClrUsed = 256;
    }
    const std::uint64_t infoSize =
        info->bmiHeader.biSize + std::uint64_t{info->bmiHeader.biClrUsed} * 4;
    if (infoSize > size || !FitsBitmap(info, size, size - infoSize))
    {
        GlobalUnlock(handle);
        return 0;
    }
    globalHandle = handle;
    dibInfo = info;
    width = info->bmiHeader.biWidth;
    height = info->bmiHeader.biHeight;
    bitCount = info->bmiHeader.biBitCount;
    dibInfoSize = static_cast<DWORD>(infoSize);
    dibBits = bytes + infoSize;
    return 1;
}

int MemoryMappedDIB::DetachGlobalHandle()
{
    if (globalHandle == nullptr)
    {
        return 0;
    }
    GlobalUnlock(globalHandle);
    globalHandle = nullptr;
    dibInfo = nullptr;
    dibBits = nullptr;
    return 1;
}

int MemoryMappedDIB::FindNearestColor(ColorVector* color)
{
    return FindNearestPaletteColor(dibInfo, color);
}

DWORD MemoryMappedDIB::ImageSize_() const
{
    if (dibInfo == nullptr || dibBits == nullptr)
    {
        return 0;
    }
    const BITMAPINFOHEADER& header = dibInfo->bmiHeader;
    return header.biSizeImage != 0 ? header.biSizeImage
                                   : static_cast<DWORD>(BitmapBytes(header.biWidth, header.biHeight,
                                                                    header.biBitCount));
}

void MemoryMappedDIB::Serialize(CArchive& archive)
{
    CObject::Serialize(archive);
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(MemoryMappedDIB));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(MemoryMappedDIB));
    archive << width;
    archive << height;
    archive << bitCount;
    const DWORD imageSize = ImageSize_();
    archive << imageSize;
    GdiFlush();
    archive.Write(dibBits, imageSize);
}

void MemoryMappedDIB::DeserializeVersion1(CArchive& archive)
{
    int storedWidth = 0;
    int storedHeight = 0;
    int storedBitCount = 0;
    DWORD storedSize = 0;
    archive >> storedWidth;
    archive >> storedHeight;
    archive >> storedBitCount;
    archive >> storedSize;

    // A few bytes must not make a bitmap of gigabytes.
    constexpr std::uint64_t alwaysFine = 64 << 20;
    const std::uint64_t needed = BitmapBytes(storedWidth, storedHeight, storedBitCount);
    if ((needed > alwaysFine && storedSize < needed) ||
        !Create(storedWidth, storedHeight, horizontalResolution, verticalResolution, storedBitCount,
                CString()))
    {
        AfxThrowArchiveException(CArchiveException::generic,
                                 "a stored bitmap of an impossible size");
    }
    const DWORD kept = std::min(storedSize, DWORD{dibInfo->bmiHeader.biSizeImage});
    archive.ReadExactly(dibBits, kept);
    archive.Skip(storedSize - kept);
}
