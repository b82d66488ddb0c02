// SPDX-License-Identifier: MIT
#pragma once

#include "document/OutputFile.h"

#include <memory>
#include <string>

namespace orvane
{

/// A PNG file of 24 bits per pixel that is written row by row from the top.
class PngFile
{
public:
    /// Makes sure that the file can be made. Throws Error when it cannot.
    /// \param dotsPerInch for the header; 0 states no resolution
    PngFile(const std::string& path, int width, int height, int dotsPerInch);
    ~PngFile();
    PngFile(const PngFile&) = delete;
    PngFile& operator=(const PngFile&) = delete;

    /// Makes the file. This and the following functions throw Error.
    void Open();
    /// \param pixels of one row, three bytes each: blue, green, red
    void WriteRow(const unsigned char* pixels);
    /// To be called after the last row: puts the file in its place.
    void Commit();

private:
    struct Encoder;

    OutputFile output_;
    std::unique_ptr<Encoder> encoder_;
};

}  // namespace orvane
