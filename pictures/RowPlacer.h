// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/ColorProfile.h"
#include "pictures/PictureReader.h"

#include <memory>
#include <string>

namespace orvane
{

/// What a file says of its picture before the pixels come.
struct StoredPicture
{
    std::uint64_t width = 0;  ///< in pixels
    std::uint64_t height = 0;
    RowFormat rows;       ///< of 8 bits a channel
    Bytes profile;        ///< empty when the file has none
    int orientation = 1;  ///< see OrientationIn
};

/// Where a picture comes from.
struct PictureSource
{
    const std::uint8_t* bytes;
    std::size_t count;
    const std::string& place;  ///< the name of the file, for errors
};

/// Makes a picture of rows as they are stored.
class RowPlacer
{
public:
    /// Throws Error when the picture is larger than its file allows.
    RowPlacer(const StoredPicture& stored, const PictureSource& source);

    /// Takes the next row, from the top of the stored picture.
    void Add(const std::uint8_t* row);
    /// The whole picture, after the last row.
    ReadPicture Take() { return std::move(picture_); }

private:
    void Convert(const std::uint8_t* row);
    void Place(int y);

    StoredPicture stored_;
    int width_;  ///< of the reduced picture as it is stored
    int height_;
    std::unique_ptr<ColorConversion> conversion_;  ///< null when no profile is applied
    Bytes row_;                                    ///< the row in the channels of the picture
    std::uint64_t added_ = 0;                      ///< rows
    int placed_ = 0;                               ///< rows of the reduced picture
    ReadPicture picture_;
};

/// Throws Error when a decoder that needs \p pixelBytes bytes for each pixel at the same time would
/// need more memory than the file pays for.
void CheckDecoderMemory(const StoredPicture& stored, std::size_t pixelBytes,
                        const PictureSource& source);

// The readers of the formats. Each throws Error.
ReadPicture ReadPng(const PictureSource& source);
ReadPicture ReadJpeg(const PictureSource& source);
ReadPicture ReadWebp(const PictureSource& source);
ReadPicture ReadTiff(const PictureSource& source);

}  // namespace orvane
