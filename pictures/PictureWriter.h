// SPDX-License-Identifier: MIT
#pragma once

#include "document/OutputFile.h"
#include "document/PictureFormat.h"
#include "pictures/RowFormat.h"
#include "platform/Export.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace orvane
{

using Bytes = std::vector<std::uint8_t>;

/// How the strips of a TIFF are packed.
enum class TiffPacking
{
    Deflate,
    Lzw,
    None
};

/// Says what a picture file holds besides its pixels, and how it is packed.
struct PictureFileSettings
{
    int width = 0;  ///< in pixels, 1 to limits::maxPictureSide
    int height = 0;
    RowFormat rows;
    double dotsPerInch = 0;  ///< 0 states no resolution
    /// An ICC profile, which is stored in the file. The rows are not converted. Without one the
    /// file says that its colours are sRGB; rows of inks need a profile.
    Bytes profile;
    /// Of a JPEG, and of a WebP that is not lossless: 1 to 100.
    int quality = 90;
    bool isLossless = false;  ///< of a WebP
    TiffPacking packing = TiffPacking::Deflate;
    /// How many threads pack rows at the same time; 0 takes one for each core. The bytes of the
    /// file do not depend on it.
    int threads = 0;
};

/// A picture file that is written row by row from the top. All but a WebP takes memory for some
/// megabytes of rows only, however high the picture is. Every function throws Error.
class ORVANE_API PictureWriter
{
public:
    virtual ~PictureWriter() = default;

    /// Writes the next rows.
    /// \param rows the first of them
    /// \param stride from one row to the next, in bytes
    virtual void WriteRows(const std::uint8_t* rows, std::size_t stride, int count) = 0;
    /// To be called after the last row. The output file is complete then, but not finished.
    virtual void Finish() = 0;
};

/// Throws Error, which says why, when a format cannot hold such a picture.
/// \param place begins the text of the error
ORVANE_API void CheckPictureFile(PictureFormat format, const PictureFileSettings& settings,
                                 const std::string& place);

/// Begins to write a picture. BMP files have a class of their own, BmpFile. Throws Error.
/// \param output borrowed
/// \param place the name of the file, for errors
ORVANE_API std::unique_ptr<PictureWriter> MakePictureWriter(PictureFormat format,
                                                            const PictureFileSettings& settings,
                                                            OutputFile& output,
                                                            const std::string& place);

}  // namespace orvane
