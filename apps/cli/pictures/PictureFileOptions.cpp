// SPDX-License-Identifier: MIT
#include "apps/cli/pictures/PictureFileOptions.h"

#include "apps/cli/commands/OptionValues.h"
#include "document/PictureFormat.h"
#include "orvane/Error.h"

#include <CLI/CLI.hpp>

#include <filesystem>

namespace orvane
{

void AddPictureFileOptions(OptionAdder& add, PictureOptions& picture)
{
    add("--dpi", picture.dotsPerInch, "N", "Dots per inch, stored in the header of the file")
        ->check(IntegerBetween(1, 100000));
    add("--bits", picture.bits, "8|16|24|32 [" + std::to_string(picture.bits) + "]",
        "Bits per pixel of a BMP; of another format, bits of\neach channel, 8 or 16 (24 means 8)")
        ->check(CLI::IsMember({"8", "16", "24", "32"}));
    add("--quality", picture.quality, "N [" + std::to_string(picture.quality) + "]",
        "Of a JPEG or a WebP, 1 to 100; a WebP of 100 is\nwithout loss")
        ->check(IntegerBetween(1, 100));
    add("--icc", picture.profile, "FILE",
        "Converts the picture to a colour profile and stores\nthe profile; CMYK in TIFF and JPEG");
}

bool IsNoBackground(const std::string& background)
{
    return background == "none";
}

bool NamesPicture(const std::string& background)
{
    if (FormatOfName(background))
    {
        return true;
    }
    try
    {
        ParseColor(background);
        return false;
    }
    catch (const std::exception&)
    {
        std::error_code ignored;
        return !IsNoBackground(background) && std::filesystem::exists(background, ignored);
    }
}

BackgroundPlacement ParseFit(const std::string& fit)
{
    struct Fit
    {
        const char* name;
        BackgroundPlacement placement;
    };
    constexpr Fit fits[] = {{"cover", BackgroundPlacement::Cover},
                            {"contain", BackgroundPlacement::Contain},
                            {"stretch", BackgroundPlacement::Stretch},
                            {"tile", BackgroundPlacement::Tile}};
    for (const Fit& known : fits)
    {
        if (fit == known.name)
        {
            return known.placement;
        }
    }
    throw Error("--background-fit", "\"" + fit + "\"", "cover, contain, stretch or tile");
}

}  // namespace orvane
