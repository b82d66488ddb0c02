// SPDX-License-Identifier: MIT
#pragma once

#include "document/OutputFile.h"
#include "platform/Bitmaps.h"
#include "platform/Files.h"

#include <cstdint>
#include <string>
#include <vector>

namespace orvane
{

/// A BMP file that is written in blocks of rows, in any order.
class BmpFile
{
public:
    /// Throws Error for a picture that needs more than the 4 GiB that the format allows.
    static void CheckSize(int width, int height, int bits);
    /// The number of bytes in a row, which is padded to a multiple of four bytes.
    static std::uint64_t RowBytes(int width, int bits);

    /// Makes sure that the file can be made. Throws Error when it cannot.
    /// \param bits per pixel: 8, 16, 24 or 32
    /// \param dotsPerInch for the header; 0 states no resolution
    BmpFile(const std::string& path, int width, int height, int bits, int dotsPerInch);
    ~BmpFile();
    BmpFile(const BmpFile&) = delete;
    BmpFile& operator=(const BmpFile&) = delete;

    /// Writes the header and reserves the space of the whole file. Throws Error when the disk has
    /// no room for the file.
    /// \param colors the 256 colours of a file of 8 bits; ignored for other files
    void Open(const RGBQUAD* colors);
    /// The offset of a block of rows in the file, in bytes.
    /// \param top the block's first row, counted from the picture's upper edge
    std::uint64_t OffsetOf(int top, int height) const;
    /// Writes a block of rows, which lie in memory as in a bitmap: the lowest row first. Throws
    /// Error when it cannot write them.
    void WriteRows(int top, int height, const BYTE* bits);
    /// To be called after the last block. Throws Error when not all is on the disk.
    void Finish();
    /// The file, to be committed when it is finished.
    OutputFile& Output() { return output_; }

private:
    void Close();
    void Write(std::uint64_t offset, const BYTE* bytes, std::size_t count);
    [[noreturn]] void FailWithLastError() const;

    std::string path_;
    OutputFile output_;
    std::vector<BYTE> head_;  ///< everything in the file before the pixels
    std::size_t rowBytes_;
    int height_;
    HANDLE file_ = nullptr;  ///< owned; null while the file is not open
};

}  // namespace orvane
