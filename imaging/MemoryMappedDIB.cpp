// SPDX-License-Identifier: MIT
#include "imaging/MemoryMappedDIB.h"

#include "host/CWinApp.h"
#include "host/RecordVersion.h"
#include "imaging/BitmapLayout.h"
#include "imaging/Palette.h"
#include "platform/Errors.h"
#include "platform/Messages.h"
#include "platform/Storage.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>

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

std::string HexBytes(WORD word)
{
    char text[8];
    std::snprintf(text, sizeof text, "%02X %02X", word & 0xFF, word >> 8);
    return text;
}

int DotsPerInch(LONG dotsPerMetre)
{
    return static_cast<int>(dotsPerMetre * metresPerDot);
}

std::uint64_t LengthOf(HANDLE file)
{
    DWORD high = 0;
    const DWORD low = GetFileSize(file, &high);
    return std::uint64_t{high} << 32 | low;
}

// A stream's name; ASCII.
std::basic_string<OLECHAR> StreamName(const char* name)
{
    return std::basic_string<OLECHAR>(name, name + std::strlen(name));
}

// The bytes of a stream; none when it cannot be read.
std::vector<DWORD> ReadStream(IStream* stream, std::size_t* size)
{
    LARGE_INTEGER start;
    ULARGE_INTEGER end;
    start.QuadPart = 0;
    end.QuadPart = 0;
    *size = 0;
    if (FAILED(stream->Seek(start, STREAM_SEEK_END, &end)) ||
        FAILED(stream->Seek(start, STREAM_SEEK_SET, nullptr)) || end.QuadPart > 0xFFFFFFFF)
    {
        return {};
    }
    std::vector<DWORD> words(static_cast<std::size_t>(end.QuadPart) / sizeof(DWORD) + 1);
    ULONG done = 0;
    stream->Read(words.data(), static_cast<ULONG>(end.QuadPart), &done);
    *size = done;
    return words;
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
    refusal_.clear();
    if (filename.IsEmpty())
    {
        return Refuse_(noName, "no file is named");
    }
    const HANDLE file = CreateFileA(filename, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                    nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
    {
        return Refuse_(unusable, GetLastErrorText());
    }
    fileHandle = file;
    const std::uint64_t sizeBefore = LengthOf(fileHandle);
    mappingHandle = CreateFileMappingA(fileHandle, nullptr, PAGE_READONLY, 0, 0, nullptr);
    if (mappingHandle == nullptr)
    {
        // The file stays open until Close.
        return Refuse_(unusable, sizeBefore == 0 ? "byte 0: the file ends, expected \"BM\""
                                                 : GetLastErrorText());
    }
    mappedView = MapViewOfFile(mappingHandle, FILE_MAP_READ, 0, 0, 0);
    if (mappedView == nullptr)
    {
        return Refuse_(unusable, GetLastErrorText());
    }
    // A file that shrank or grew meanwhile: what is not in it or not in the view is not touched.
    const std::uint64_t size = std::min(sizeBefore, LengthOf(fileHandle));

    BYTE* const bytes = static_cast<BYTE*>(mappedView);
    WORD mark = 0;
    std::memcpy(&mark, bytes, std::min<std::uint64_t>(size, sizeof mark));
    if (mark != bmpMark)
    {
        CloseFile_();
        return Refuse_(notBitmap, "byte 0: found " + HexBytes(mark) + ", expected 42 4D (BM)");
    }
    std::string fault;
    const std::uint64_t offset = FindPixels(bytes, size, &fault);
    if (offset == 0)
    {
        CloseFile_();
        return Refuse_(unusable, std::move(fault));
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
        return Refuse_(unusable, "there is no device context");
    }
    refusal_.clear();
    Close();
    DetachGlobalHandle();
    DeleteSection_();
    filename = name;
    MemoryMappedDIB source;
    const int status = source.Open(name);
    if (status != opened)
    {
        return Refuse_(static_cast<Status>(status), source.GetRefusal());
    }
    const BITMAPINFOHEADER& header = source.dibInfo->bmiHeader;
    const int rows = std::abs(header.biHeight);
    if (!Create(header.biWidth, rows, DotsPerInch(header.biXPelsPerMeter),
                DotsPerInch(header.biYPelsPerMeter), 24, CString()))
    {
        return Refuse_(unusable, "there is no memory for its pixels");
    }
    if (SetDIBits(memoryDC, dibSection, 0, static_cast<UINT>(rows), source.dibBits, source.dibInfo,
                  DIB_RGB_COLORS) != rows)
    {
        DeleteSection_();
        return Refuse_(unusable, "its pixels cannot be converted");
    }
    return opened;
}

int MemoryMappedDIB::Refuse_(Status status, std::string refusal)
{
    refusal_ = std::move(refusal);
    return status;
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
    CloseFile_();
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
    std::memcpy(fileBits, dibBits, ImageSize_());
    return 1;
}

HGLOBAL MemoryMappedDIB::GetGlobalDIB()
{
    if (dibSection == nullptr || dibBits == nullptr || dibInfo == nullptr || dibInfoSize == 0)
    {
        return nullptr;
    }
    const DWORD imageSize = ImageSize_();
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
    // What a record states of pixels that are not packed may be anything.
    return dibInfo == nullptr || dibBits == nullptr ? 0
                                                    : static_cast<DWORD>(BitmapPixelBytes(dibInfo));
}

int MemoryMappedDIB::SaveToStorage(IStorage* storage, const char* name)
{
    if (storage == nullptr || name == nullptr || dibInfo == nullptr || dibBits == nullptr)
    {
        return 0;
    }
    IStream* stream = nullptr;
    const std::basic_string<OLECHAR> streamName = StreamName(name);
    if (FAILED(storage->CreateStream(streamName.c_str(),
                                     STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, 0,
                                     &stream)))
    {
        return 0;
    }
    GdiFlush();
    const ULONG recordSize = static_cast<ULONG>(BitmapRecordBytes(dibInfo));
    const int isSaved = SUCCEEDED(stream->Write(dibInfo, recordSize, nullptr)) &&
                        SUCCEEDED(stream->Write(dibBits, ImageSize_(), nullptr));
    stream->Release();
    if (!isSaved)
    {
        storage->DestroyElement(streamName.c_str());
    }
    return isSaved;
}

int MemoryMappedDIB::ReadFromStorage(IStorage* storage, const char* name)
{
    IStream* stream = nullptr;
    if (storage == nullptr || name == nullptr ||
        FAILED(storage->OpenStream(StreamName(name).c_str(), nullptr,
                                   STGM_READ | STGM_SHARE_EXCLUSIVE, 0, &stream)))
    {
        return 0;
    }
    std::size_t size = 0;
    std::vector<DWORD> words = ReadStream(stream, &size);
    stream->Release();
    const BITMAPINFO* const info = reinterpret_cast<const BITMAPINFO*>(words.data());
    if (size < sizeof(BITMAPINFOHEADER) ||
        !FitsBitmap(info, size, size - std::min<std::uint64_t>(size, BitmapRecordBytes(info))))
    {
        return 0;
    }
    return TakePacked_(*info, reinterpret_cast<const BYTE*>(info) + BitmapRecordBytes(info));
}

int MemoryMappedDIB::TakePacked_(const BITMAPINFO& info, const void* pixels)
{
    DetachGlobalHandle();
    DeleteSection_();
    CloseFile_();
    filename.Empty();
    const std::uint64_t recordSize = BitmapRecordBytes(&info);
    infoStorage_.assign(recordSize / sizeof(DWORD) + 1, 0);
    std::memcpy(infoStorage_.data(), &info, recordSize);
    dibInfo = reinterpret_cast<BITMAPINFO*>(infoStorage_.data());
    BITMAPINFOHEADER& header = dibInfo->bmiHeader;
    if (IsPackedBitmap(&info))
    {
        header.biCompression = BI_RGB;
    }
    else if (header.biCompression == BI_BITFIELDS)
    {
        // The masks count as part of the header from now on, so that dibInfoSize has them.
        const DWORD size = header.biSize;
        header.biSize = std::max<DWORD>(size, sizeof header + 3 * sizeof(DWORD));
    }
    header.biClrUsed = static_cast<DWORD>((recordSize - header.biSize) / sizeof(RGBQUAD));
    width = header.biWidth;
    height = header.biHeight;
    bitCount = header.biBitCount;
    horizontalResolution = DotsPerInch(header.biXPelsPerMeter);
    verticalResolution = DotsPerInch(header.biYPelsPerMeter);
    header.biSizeImage = static_cast<DWORD>(BitmapPixelBytes(dibInfo));
    dibInfoSize = static_cast<DWORD>(recordSize);
    dibSection = CreateDIBSection(memoryDC, dibInfo, DIB_RGB_COLORS, &dibBits, nullptr, 0);
    if (dibSection == nullptr)
    {
        dibInfo = nullptr;
        return 0;
    }
    previousBitmap = SelectObject(memoryDC, dibSection);
    if (IsPackedBitmap(&info))
    {
        return SetDIBits(memoryDC, dibSection, 0, static_cast<UINT>(height), pixels, &info,
                         DIB_RGB_COLORS) == height;
    }
    std::memcpy(dibBits, pixels, ImageSize_());
    return 1;
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

    if (storedWidth == 0 && storedHeight == 0 && storedSize == 0)
    {
        DetachGlobalHandle();
        DeleteSection_();
        CloseFile_();
        width = height = 0;
        bitCount = storedBitCount;
        return;
    }
    if (!IsPlausibleSize(BitmapBytes(storedWidth, storedHeight, storedBitCount), storedSize) ||
        !Create(storedWidth, storedHeight, horizontalResolution, verticalResolution, storedBitCount,
                CString()))
    {
        archive.Fail(CArchiveException::generic, "a bitmap of an impossible size");
    }
    const DWORD kept = std::min(storedSize, ImageSize_());
    archive.ReadExactly(dibBits, kept);
    archive.Skip(storedSize - kept);
}
