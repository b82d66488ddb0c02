// SPDX-License-Identifier: MIT
#include "pictures/PictureWriter.h"

#include "document/OptionRange.h"
#include "orvane/Error.h"
#include "pictures/JpegWriter.h"
#include "pictures/PngWriter.h"
#include "pictures/TiffWriter.h"
#include "pictures/WebpWriter.h"
#include "platform/Limits.h"

#include <algorithm>

namespace orvane
{

namespace
{

/// What a format can hold.
struct FormatLimits
{
    PictureFormat format;
    const char* name;
    int maxSide;  ///< in pixels
    int maxChannelBits;
    bool hasAlpha;
    bool hasInks;
    bool hasGreys;
};

// The sides of a JPEG take 16 bits, and libjpeg leaves some numbers out. Those of a WebP take 14.
constexpr FormatLimits formats[] = {
    {PictureFormat::Png, "PNG", limits::maxPictureSide, 16, true, false, true},
    {PictureFormat::Jpeg, "JPEG", 65500, 8, false, true, true},
    {PictureFormat::WebP, "WebP", 16383, 8, true, false, false},
    {PictureFormat::Tiff, "TIFF", limits::maxPictureSide, 16, true, true, true},
};

const FormatLimits& LimitsOf(PictureFormat format, const std::string& place)
{
    for (const FormatLimits& known : formats)
    {
        if (known.format == format)
        {
            return known;
        }
    }
    throw Error(place, "a BMP is no picture that is written row by row");
}

}  // namespace

void CheckPictureFile(PictureFormat format, const PictureFileSettings& settings,
                      const std::string& place)
{
    const FormatLimits& may = LimitsOf(format, place);
    const std::string name = std::string("a ") + may.name;
    if (settings.width < 1 || settings.height < 1 ||
        std::max(settings.width, settings.height) > may.maxSide)
    {
        throw Error(place,
                    name + " of " + std::to_string(settings.width) + " x " +
                        std::to_string(settings.height) + " pixels",
                    "1 to " + std::to_string(may.maxSide) +
                        " pixels a side; a PNG or a TIFF may have " +
                        std::to_string(limits::maxPictureSide));
    }
    if (settings.rows.channelBits > may.maxChannelBits)
    {
        throw Error(place, name + " has 8 bits a channel; write a PNG or a TIFF");
    }
    const PixelKind kind = settings.rows.kind;
    if (kind == PixelKind::Rgba && !may.hasAlpha)
    {
        throw Error(place, name + " cannot be transparent; write a PNG, a WebP or a TIFF");
    }
    if (kind == PixelKind::Cmyk && !may.hasInks)
    {
        throw Error(place, name + " has no inks; write a TIFF or a JPEG");
    }
    if (kind == PixelKind::Grey && !may.hasGreys)
    {
        throw Error(place, name + " has no greys; write another format");
    }
    if (kind == PixelKind::Cmyk && settings.profile.empty())
    {
        throw Error(place, "inks need a colour profile, which says how they look");
    }
    CheckRange("quality", settings.quality, 1, 100);
}

std::unique_ptr<PictureWriter> MakePictureWriter(PictureFormat format,
                                                 const PictureFileSettings& settings,
                                                 OutputFile& output, const std::string& place)
{
    CheckPictureFile(format, settings, place);
    switch (format)
    {
        case PictureFormat::Jpeg:
            return std::make_unique<JpegWriter>(settings, output, place);
        case PictureFormat::WebP:
            return std::make_unique<WebpWriter>(settings, output, place);
        case PictureFormat::Tiff:
            return std::make_unique<TiffWriter>(settings, output, place);
        case PictureFormat::Png:
        case PictureFormat::Bmp:
            break;
    }
    return std::make_unique<PngWriter>(settings, output);
}

}  // namespace orvane
