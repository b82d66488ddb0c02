// SPDX-License-Identifier: MIT
#include "host/RecordVersion.h"
#include "imaging/BitmapLayout.h"
#include "imaging/MemoryMappedDIB.h"
#include "platform/Limits.h"
#include "platform/Storage.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

// MemoryMappedDIB: packed bitmaps in memory blocks and in structured storage, and the archive
// record.

namespace
{

// Widens the name of a stream, which is ASCII.
std::basic_string<OLECHAR> StreamName(const char* name)
{
    return std::basic_string<OLECHAR>(name, name + std::strlen(name));
}

// Reads a whole stream, as words so that a bitmap record in it is aligned. Sets size to the number
// of bytes read, 0 when the stream cannot be read.
std::vector<DWORD> ReadStream(IStream* stream, std::size_t* size)
{
    LARGE_INTEGER start;
    ULARGE_INTEGER end;
    start.QuadPart = 0;
    end.QuadPart = 0;
    *size = 0;
    if (FAILED(stream->Seek(start, STREAM_SEEK_END, &end)) ||
        FAILED(stream->Seek(start, STREAM_SEEK_SET, nullptr)) ||
        end.QuadPart > orvane::limits::maxBitmapBytes)
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

HGLOBAL MemoryMappedDIB::GetGlobalDIB()
{
    if (dibSection == nullptr || dibBits == nullptr || dibInfo == nullptr || dibInfoSize == 0)
    {
        return nullptr;
    }
    const DWORD imageSize = PixelBytes();
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
    ReleaseBitmap();
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
                        SUCCEEDED(stream->Write(dibBits, PixelBytes(), nullptr));
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
        !FitsBitmap(info, size, size - std::min<std::uint64_t>(size, BitmapRecordBytes(info))) ||
        BitmapBytes(info->bmiHeader.biWidth, info->bmiHeader.biHeight, info->bmiHeader.biBitCount) >
            orvane::limits::MemoryForFile(size))
    {
        return 0;
    }
    return CopyPacked(*info, reinterpret_cast<const BYTE*>(info) + BitmapRecordBytes(info));
}

int MemoryMappedDIB::CopyPacked(const BITMAPINFO& info, const void* pixels)
{
    ReleaseBitmap();
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
        // From here on the masks count as part of the header, so that dibInfoSize includes them.
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
    std::memcpy(dibBits, pixels, PixelBytes());
    return 1;
}

void MemoryMappedDIB::Serialize(CArchive& archive)
{
    CObject::Serialize(archive);
    if (archive.IsLoading())
    {
        ReadVersionedRecord(archive, *this, &MemoryMappedDIB::DeserializeVersion1);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(MemoryMappedDIB));
    archive << width;
    archive << height;
    archive << bitCount;
    const DWORD imageSize = PixelBytes();
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
        ReleaseBitmap();
        width = height = 0;
        bitCount = storedBitCount;
        return;
    }
    if (BitmapBytes(storedWidth, storedHeight, storedBitCount) >
            orvane::limits::MemoryForFile(storedSize) ||
        !Create(storedWidth, storedHeight, horizontalResolution, verticalResolution, storedBitCount,
                CString()))
    {
        archive.Fail(CArchiveException::generic, "a bitmap of an impossible size");
    }
    const DWORD kept = std::min(storedSize, PixelBytes());
    archive.ReadExactly(dibBits, kept);
    archive.Skip(storedSize - kept);
}
