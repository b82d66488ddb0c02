// SPDX-License-Identifier: MIT
#include "document/PictureFormat.h"

#include "orvane/Error.h"

#include <algorithm>
#include <cctype>
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
    throw OptionError("output", "a name that ends in .png or .bmp", "\"" + path + "\"");
}

bool HasExtension(const std::string& path, const std::string& extension)
{
    std::string found = std::filesystem::path(path).extension();
    std::transform(found.begin(), found.end(), found.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return found == extension;
}

}  // namespace orvane
