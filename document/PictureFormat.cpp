// SPDX-License-Identifier: MIT
#include "document/PictureFormat.h"

#include "host/AsciiCase.h"
#include "orvane/Error.h"

#include <filesystem>

namespace orvane
{

PictureFormat FormatOf(const std::string& path)
{
    if (path == "-")
    {
        return PictureFormat::Png;
    }
    if (const std::optional<PictureFormat> format = FormatOfName(path))
    {
        return *format;
    }
    throw OptionError("output", "expected a name that ends in .png, .bmp, .jpg, .webp or .tif",
                      "\"" + path + "\"");
}

std::optional<PictureFormat> FormatOfName(const std::string& path)
{
    struct Ending
    {
        const char* extension;
        PictureFormat format;
    };
    constexpr Ending endings[] = {
        {".png", PictureFormat::Png},   {".bmp", PictureFormat::Bmp},
        {".jpg", PictureFormat::Jpeg},  {".jpeg", PictureFormat::Jpeg},
        {".webp", PictureFormat::WebP}, {".tif", PictureFormat::Tiff},
        {".tiff", PictureFormat::Tiff},
    };
    for (const Ending& ending : endings)
    {
        if (HasExtension(path, ending.extension))
        {
            return ending.format;
        }
    }
    return std::nullopt;
}

bool HasExtension(const std::string& path, const std::string& extension)
{
    return LowerAscii(std::filesystem::path(path).extension()) == extension;
}

}  // namespace orvane
