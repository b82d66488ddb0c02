// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/OutputFile.h"
#include "platform/Bitmaps.h"
#include "platform/Files.h"

#include <string>
#include <vector>

/// A BMP file of its final length, mapped into memory, whose pixels are a bitmap to draw into.
class BmpFile
{
public:
    /// Throws Failure for a file beyond the format's 4 GiB.
    static void Check(int width, int height, int bits);

    /// Makes sure that the file can be made. Throws Failure when it cannot.
    /// \param bits per pixel: 8, 16, 24 or 32. \param dotsPerInch 0 for none in the header.
    BmpFile(const std::string& path, int width, int height, int bits, int dotsPerInch);
    ~BmpFile();
    BmpFile(const BmpFile&) = delete;
    BmpFile& operator=(const BmpFile&) = delete;

    /// Makes the file. Throws Failure when the disk has no room for it.
    /// \param colors the 256 of a file of 8 bits; not looked at for others.
    void Open(const RGBQUAD* colors);
    /// Some of the file's rows, from the top, as a bitmap: the caller's to delete, before Commit.
    /// Only as long as it lives do they take memory.
    /// \param bits receives the pixels, the lowest row first.
    HBITMAP MakeSection(int top, int height, void** bits) const;
    /// Puts the file in its place. Throws Failure.
    void Commit();

private:
    void Close();
    [[noreturn]] void Refuse() const;

    std::string path_;
    OutputFile output_;
    std::vector<BYTE> head_;  ///< all that comes before the pixels
    std::size_t rowBytes_;
    int height_;
    HANDLE file_ = nullptr;
    HANDLE mapping_ = nullptr;
};
