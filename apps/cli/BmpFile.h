// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/OutputFile.h"
#include "platform/Bitmaps.h"
#include "platform/Files.h"

#include <cstdint>
#include <string>
#include <vector>

/// A BMP file that is written some rows after the other, in any order.
class BmpFile
{
public:
    /// Throws Failure for a file beyond the format's 4 GiB.
    static void Check(int width, int height, int bits);
    /// Of a row, padded to four bytes.
    static std::uint64_t RowBytes(int width, int bits);

    /// Makes sure that the file can be made. Throws Failure when it cannot.
    /// \param bits per pixel: 8, 16, 24 or 32. \param dotsPerInch 0 for none in the header.
    BmpFile(const std::string& path, int width, int height, int bits, int dotsPerInch);
    ~BmpFile();
    BmpFile(const BmpFile&) = delete;
    BmpFile& operator=(const BmpFile&) = delete;

    /// Makes the file. Throws Failure when the disk has no room for it.
    /// \param colors the 256 of a file of 8 bits; not looked at for others.
    void Open(const RGBQUAD* colors);
    /// Where rows go in the file.
    std::uint64_t PlaceOf(int top, int height) const;
    /// Some of the rows, from the top: \p bits has them as a bitmap of that height would, the
    /// lowest first. Throws Failure.
    void WriteRows(int top, int height, const BYTE* bits);
    /// Puts the file in its place. Throws Failure.
    void Commit();

private:
    void Close();
    void Write(std::uint64_t offset, const BYTE* bytes, std::size_t count);
    [[noreturn]] void Refuse() const;

    std::string path_;
    OutputFile output_;
    std::vector<BYTE> head_;  ///< all that comes before the pixels
    std::size_t rowBytes_;
    int height_;
    HANDLE file_ = nullptr;
};
