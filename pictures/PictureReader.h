// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/PictureWriter.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace orvane
{

/// A picture that was read: upright, in sRGB, with 8 bits a channel.
struct ReadPicture
{
    int width = 0;  ///< in pixels
    int height = 0;
    bool hasAlpha = false;
    Bytes rows;  ///< from the top, without gaps; red, green, blue and, if there is one, alpha
};

/// The format that the first bytes of a file show, whatever its name is. Nothing when they begin no
/// picture.
ORVANE_API std::optional<PictureFormat> FormatOfContent(const std::uint8_t* bytes,
                                                        std::size_t count);

/// Reads a PNG, JPEG, WebP or TIFF from memory. Its orientation and its colour profile are applied;
/// a profile that does not fit its pixels is ignored. A picture that is too large for a texture is
/// reduced while it is read (see FitTexture): each pixel becomes the nearest one of the file.
///
/// Throws Error with the place, found and expected, for anything else, for damaged, truncated and
/// animated pictures, and for a small file whose pixels take much memory or time
/// (limits::MemoryForFile and limits::MaxUnpackedBytes).
/// \param place the name of the file, for errors
ORVANE_API ReadPicture ReadPictureBytes(const std::uint8_t* bytes, std::size_t count,
                                        const std::string& place);

/// Reads such a picture from a regular file. Throws Error.
ORVANE_API ReadPicture ReadPictureFile(const std::string& path);

}  // namespace orvane
