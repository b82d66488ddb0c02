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

    /// Writes the header. This and the following functions throw Error.
    void Open();
    /// \param pixels of one row, three bytes each: blue, green, red
    void WriteRow(const unsigned char* pixels);
    /// To be called after the last row. Returns when all is on the disk.
    void Finish();
    /// The file, to be committed when it is finished.
    OutputFile& Output() { return output_; }

private:
    struct Encoder;

    OutputFile output_;
    std::unique_ptr<Encoder> encoder_;
};

}  // namespace orvane
