// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/PictureWriter.h"

#include <cstddef>
#include <cstdint>

namespace orvane
{

/// EXIF data that state a resolution and nothing else.
Bytes MakeResolutionExif(double dotsPerInch);

/// How the rows of a picture must be turned and mirrored to be upright, as EXIF and TIFF number it:
/// 1 to 8, where 1 is upright. Returns 1 for data that say nothing or are damaged, because the
/// picture can be read all the same.
/// \param exif begins with the header of a TIFF
int OrientationIn(const std::uint8_t* exif, std::size_t count);

}  // namespace orvane
