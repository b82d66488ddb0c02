// SPDX-License-Identifier: MIT
#include "document/PictureFormat.h"

#include "host/AsciiCase.h"
#include "orvane/Error.h"

#include <filesystem>

namespace orvane
{

PictureFormat FormatOf(const std::string& path)
{
    if (path == "-" || HasExtension(path, ".png"))
    {
        return PictureFormat::Png;
    }
    if (HasExtension(path, ".bmp"))
    {
        return PictureFormat::Bmp;
    }
    throw OptionError("output", "expected a name that ends in .png or .bmp", "\"" + path + "\"");
}

bool HasExtension(const std::string& path, const std::string& extension)
{
    return LowerAscii(std::filesystem::path(path).extension()) == extension;
}

}  // namespace orvane
