// SPDX-License-Identifier: MIT
#include "document/BmpFile.h"

#include "orvane/Error.h"
#include "platform/Errors.h"

#include <cmath>
#include <cstdint>
#include <cstring>

namespace orvane
{

namespace
{

constexpr double metresPerInch = 0.0254;
constexpr std::uint64_t maxFileBytes = 0xFFFFFFFF;  // the header has 32 bits for the length
constexpr std::size_t colorsOffset = sizeof(BITMAPFILEHEADER) + sizeof(BITMAPINFOHEADER);
constexpr std::size_t paletteBytes = 256 * sizeof(RGBQUAD);

/// The offset of the pixels. It is a multiple of four because mapped pixels must be aligned.
std::size_t PixelOffset(int bits)
{
    return (colorsOffset + (bits == 8 ? paletteBytes : 0) + 3) / 4 * 4;
}

BITMAPINFO& InfoIn(std::vector<BYTE>& head)
{
    return *reinterpret_cast<BITMAPINFO*>(head.data() + sizeof(BITMAPFILEHEADER));
}

std::vector<BYTE> MakeHead(int width, int height, int bits, int dotsPerInch)
{
    const std::uint64_t imageBytes =
        BmpFile::RowBytes(width, bits) * static_cast<std::uint64_t>(height);
    const LONG perMetre = static_cast<LONG>(std::lround(dotsPerInch / metresPerInch));
    std::vector<BYTE> head(PixelOffset(bits));
    const BITMAPFILEHEADER fileHeader = {0x4D42, static_cast<DWORD>(head.size() + imageBytes), 0, 0,
                                         static_cast<DWORD>(head.size())};
    std::memcpy(head.data(), &fileHeader, sizeof fileHeader);

    BITMAPINFO& info = InfoIn(head);
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = static_cast<WORD>(bits);
    info.bmiHeader.biCompression = BI_RGB;
    info.bmiHeader.biSizeImage = static_cast<DWORD>(imageBytes);
    info.bmiHeader.biXPelsPerMeter = perMetre;
    info.bmiHeader.biYPelsPerMeter = perMetre;
    return head;
}

}  // namespace

std::uint64_t BmpFile::RowBytes(int width, int bits)
{
    return (static_cast<std::uint64_t>(width) * static_cast<std::uint64_t>(bits) + 31) / 32 * 4;
}

void BmpFile::CheckSize(int width, int height, int bits)
{
    const std::uint64_t bytes =
        PixelOffset(bits) + RowBytes(width, bits) * static_cast<std::uint64_t>(height);
    if (bytes > maxFileBytes)
    {
        throw Error("", "a BMP of " + std::to_string(width) + " x " + std::to_string(height) +
                            " pixels with " + std::to_string(bits) + " bits would have " +
                            std::to_string(bytes) +
                            " bytes, and the format allows 4 GiB; write a PNG");
    }
}

BmpFile::BmpFile(const std::string& path, int width, int height, int bits, int dotsPerInch)
    : path_(path),
      output_(path),
      head_(MakeHead(width, height, bits, dotsPerInch)),
      rowBytes_(RowBytes(width, bits)),
      height_(height)
{}

BmpFile::~BmpFile()
{
    Close();
}

void BmpFile::Open(const RGBQUAD* colors)
{
    if (InfoIn(head_).bmiHeader.biBitCount == 8)
    {
        std::memcpy(head_.data() + colorsOffset, colors, paletteBytes);
    }
    file_ = output_.OpenHandle();
    const std::uint64_t bytes = head_.size() + rowBytes_ * static_cast<std::uint64_t>(height_);
    // Mapping the whole file reserves its space on the disk, so a full disk is noticed now.
    const HANDLE mapping =
        CreateFileMappingA(file_, nullptr, PAGE_READWRITE, 0, static_cast<DWORD>(bytes), nullptr);
    if (mapping == nullptr)
    {
        FailWithLastError();
    }
    CloseHandle(mapping);
    Write(0, head_.data(), head_.size());
}

void BmpFile::Close()
{
    if (file_ != nullptr)
    {
        CloseHandle(file_);
        file_ = nullptr;
    }
}

void BmpFile::Write(std::uint64_t offset, const BYTE* bytes, std::size_t count)
{
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    DWORD written = 0;
    if (!WriteFile(file_, bytes, static_cast<DWORD>(count), &written, &place))
    {
        FailWithLastError();
    }
}

std::uint64_t BmpFile::OffsetOf(int top, int height) const
{
    return head_.size() + rowBytes_ * static_cast<std::uint64_t>(height_ - top - height);
}

void BmpFile::WriteRows(int top, int height, const BYTE* bits)
{
    Write(OffsetOf(top, height), bits, rowBytes_ * static_cast<std::size_t>(height));
}

void BmpFile::FailWithLastError() const
{
    throw Error(path_, GetLastErrorText());
}

void BmpFile::Finish()
{
    Close();
    output_.Finish();
}

}  // namespace orvane
