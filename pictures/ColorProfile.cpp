// SPDX-License-Identifier: MIT
#include "pictures/ColorProfile.h"

#include "orvane/Error.h"
#include "platform/Limits.h"

#include <lcms2.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <limits>

namespace orvane
{

namespace
{

struct CloseProfile
{
    void operator()(void* profile) const { cmsCloseProfile(profile); }
};
using Profile = std::unique_ptr<void, CloseProfile>;

Profile OpenProfile(const Bytes& bytes)
{
    return Profile(
        bytes.size() > std::numeric_limits<cmsUInt32Number>::max()
            ? nullptr
            : cmsOpenProfileFromMem(bytes.data(), static_cast<cmsUInt32Number>(bytes.size())));
}

Bytes MakeStandardProfile()
{
    const Profile profile(cmsCreate_sRGBProfile());
    cmsUInt32Number count = 0;
    if (profile == nullptr || !cmsSaveProfileToMem(profile.get(), nullptr, &count))
    {
        throw Error("lcms2", "out of memory");
    }
    Bytes bytes(count);
    if (!cmsSaveProfileToMem(profile.get(), bytes.data(), &count))
    {
        throw Error("lcms2", "out of memory");
    }
    // The time at which the profile was made would make every file another one. These are the year,
    // month, day, hour, minute and second, each in two bytes.
    constexpr std::uint8_t made[] = {0x07, 0xE8, 0, 1, 0, 1, 0, 0, 0, 0, 0, 0};
    constexpr std::size_t placeOfTime = 24;
    std::copy(std::begin(made), std::end(made), bytes.begin() + placeOfTime);
    return bytes;
}

/// Greys with the tone curve of sRGB.
Profile MakeGreyProfile()
{
    constexpr cmsFloat64Number curve[] = {2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
    cmsToneCurve* const tones = cmsBuildParametricToneCurve(nullptr, 4, curve);
    Profile profile(tones != nullptr ? cmsCreateGrayProfile(cmsD50_xyY(), tones) : nullptr);
    cmsFreeToneCurve(tones);
    return profile;
}

Profile OpenOrStandard(const Bytes& bytes, PixelKind kind)
{
    return !bytes.empty()            ? OpenProfile(bytes)
           : kind == PixelKind::Grey ? MakeGreyProfile()
           : kind == PixelKind::Cmyk ? Profile()
                                     : Profile(cmsCreate_sRGBProfile());
}

cmsUInt32Number TypeOf(RowFormat format)
{
    const auto bytes = static_cast<cmsUInt32Number>(format.channelBits / 8);
    switch (format.kind)
    {
        case PixelKind::Grey:
            return COLORSPACE_SH(PT_GRAY) | CHANNELS_SH(1) | BYTES_SH(bytes);
        case PixelKind::Rgb:
            return COLORSPACE_SH(PT_RGB) | CHANNELS_SH(3) | BYTES_SH(bytes);
        case PixelKind::Rgba:
            return COLORSPACE_SH(PT_RGB) | EXTRA_SH(1) | CHANNELS_SH(3) | BYTES_SH(bytes);
        case PixelKind::Cmyk:
            return COLORSPACE_SH(PT_CMYK) | CHANNELS_SH(4) | BYTES_SH(bytes);
    }
    return 0;
}

std::string NameOf(cmsColorSpaceSignature space)
{
    const auto letters = static_cast<std::uint32_t>(space);
    std::string name;
    for (int shift = 24; shift >= 0; shift -= 8)
    {
        const char letter = static_cast<char>(letters >> shift & 0xFF);
        name += letter >= ' ' && letter <= '~' ? letter : '?';
    }
    return name;
}

}  // namespace

const Bytes& StandardProfile()
{
    static const Bytes profile = MakeStandardProfile();
    return profile;
}

Bytes ProfileOrStandard(const PictureFileSettings& settings)
{
    const bool isColor =
        settings.rows.kind == PixelKind::Rgb || settings.rows.kind == PixelKind::Rgba;
    return settings.profile.empty() && isColor ? StandardProfile() : settings.profile;
}

Bytes ReadProfile(const std::string& path)
{
    std::error_code ignored;
    if (std::filesystem::exists(path, ignored) && !std::filesystem::is_regular_file(path, ignored))
    {
        // A pipe would make the program wait.
        throw Error(path, "a folder, a device or a pipe", "a file with a colour profile");
    }
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(path.c_str(), "rb"),
                                                               std::fclose);
    if (file == nullptr)
    {
        throw Error(path, std::strerror(errno));
    }
    Bytes bytes(limits::maxProfileBytes + 1);
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    if (std::ferror(file.get()) != 0)
    {
        throw Error(path, std::strerror(errno));
    }
    if (bytes.size() > limits::maxProfileBytes)
    {
        throw Error(path, "more than " + std::to_string(limits::maxProfileBytes) + " bytes",
                    "a colour profile of at most as many");
    }
    KindOfProfile(bytes, path);
    return bytes;
}

PixelKind KindOfProfile(const Bytes& bytes, const std::string& place)
{
    const Profile profile = OpenProfile(bytes);
    if (profile == nullptr)
    {
        throw Error(place, "byte 0: not a readable ICC colour profile");
    }
    const cmsColorSpaceSignature space = cmsGetColorSpace(profile.get());
    switch (static_cast<std::uint32_t>(space))
    {
        case cmsSigRgbData:
            return PixelKind::Rgb;
        case cmsSigGrayData:
            return PixelKind::Grey;
        case cmsSigCmykData:
            return PixelKind::Cmyk;
        default:
            throw Error(place, "a colour profile for \"" + NameOf(space) + "\"",
                        "one for RGB, GRAY or CMYK");
    }
}

struct ColorConversion::Transform
{
    cmsHTRANSFORM handle;
};

ColorConversion::ColorConversion(const Bytes& fromProfile, RowFormat from, const Bytes& toProfile,
                                 RowFormat to, const std::string& place)
    : transform_(std::make_unique<Transform>())
{
    const Profile source = OpenOrStandard(fromProfile, from.kind);
    const Profile target = OpenOrStandard(toProfile, to.kind);
    cmsUInt32Number flags = cmsFLAGS_BLACKPOINTCOMPENSATION;
    if (from.kind == PixelKind::Rgba && to.kind == PixelKind::Rgba)
    {
        flags |= cmsFLAGS_COPY_ALPHA;
    }
    if (source != nullptr && target != nullptr)
    {
        transform_->handle = cmsCreateTransform(source.get(), TypeOf(from), target.get(),
                                                TypeOf(to), INTENT_PERCEPTUAL, flags);
    }
    if (transform_->handle == nullptr)
    {
        throw Error(place, "the colour profile cannot be used for these pixels");
    }
}

ColorConversion::~ColorConversion()
{
    if (transform_->handle != nullptr)
    {
        cmsDeleteTransform(transform_->handle);
    }
}

void ColorConversion::Convert(const std::uint8_t* from, std::uint8_t* to, int pixels) const
{
    cmsDoTransform(transform_->handle, from, to, static_cast<cmsUInt32Number>(pixels));
}

ConvertingWriter::ConvertingWriter(std::unique_ptr<PictureWriter> writer,
                                   const PictureFileSettings& settings, RowFormat rows,
                                   const std::string& place)
    : writer_(std::move(writer)),
      conversion_({}, rows, settings.profile, settings.rows, place),
      width_(settings.width),
      row_(settings.rows.RowBytes(settings.width))
{}

void ConvertingWriter::WriteRows(const std::uint8_t* rows, std::size_t stride, int count)
{
    for (int y = 0; y < count; ++y)
    {
        conversion_.Convert(rows + static_cast<std::size_t>(y) * stride, row_.data(), width_);
        writer_->WriteRows(row_.data(), row_.size(), 1);
    }
}

}  // namespace orvane
