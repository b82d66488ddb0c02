// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/OutputFile.h"

#include <memory>
#include <string>

/// A PNG file that is written row by row from the top.
class PngFile
{
public:
    /// Makes sure that the file can be made. Throws Failure when it cannot.
    /// \param dotsPerInch 0 for none in the header.
    PngFile(const std::string& path, int width, int height, int dotsPerInch);
    ~PngFile();
    PngFile(const PngFile&) = delete;
    PngFile& operator=(const PngFile&) = delete;

    /// Makes the file. Throws Failure, as everything after it.
    void Open();
    /// \param pixels blue, green, red.
    void WriteRow(const unsigned char* pixels);
    /// After the last row, puts the file in its place.
    void Commit();

private:
    struct Encoder;

    OutputFile output_;
    std::unique_ptr<Encoder> encoder_;
};
