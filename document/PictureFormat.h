// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <optional>
#include <string>

namespace orvane
{

enum class PictureFormat
{
    Png,
    Bmp,
    Jpeg,
    WebP,
    Tiff
};

/// The format that the ending of a file's name asks for; PNG for standard output ("-"). Throws
/// OptionError for a name with another ending.
ORVANE_API PictureFormat FormatOf(const std::string& path);

/// The same, but nothing for a name with another ending, and for "-".
ORVANE_API std::optional<PictureFormat> FormatOfName(const std::string& path);

/// Whether a file's name has an extension, such as ".bmp", in upper or lower case.
ORVANE_API bool HasExtension(const std::string& path, const std::string& extension);

}  // namespace orvane
