// SPDX-License-Identifier: MIT
#include "pictures/RowPlacer.h"

#include "imaging/TextureSize.h"
#include "orvane/Error.h"
#include "platform/Limits.h"

#include <algorithm>
#include <cstring>

namespace orvane
{

namespace
{

std::string SizeText(const StoredPicture& stored)
{
    return std::to_string(stored.width) + " x " + std::to_string(stored.height) + " pixels";
}

/// Throws Error when the pixels of a picture take more bytes than its file allows.
/// \param what follows the number of bytes in the text of the error
void CheckBytes(const StoredPicture& stored, std::size_t pixelBytes, std::uint64_t most,
                const char* what, const PictureSource& source)
{
    const std::uint64_t bytes = stored.width * stored.height * pixelBytes;
    if (bytes > most)
    {
        throw Error(source.place,
                    SizeText(stored) + ", which take " + std::to_string(bytes) + " bytes" + what,
                    "at most " + std::to_string(most) + " in a file of " +
                        std::to_string(source.count) + " bytes");
    }
}

void CheckStored(const StoredPicture& stored, const PictureSource& source)
{
    constexpr std::uint64_t maxSide = limits::maxPictureSide;
    if (stored.width < 1 || stored.height < 1 || std::max(stored.width, stored.height) > maxSide)
    {
        throw Error(source.place, SizeText(stored),
                    "1 to " + std::to_string(maxSide) + " pixels a side");
    }
    CheckBytes(stored, stored.rows.PixelBytes(), limits::MaxUnpackedBytes(source.count), "",
               source);
}

/// The conversion of a file's pixels to sRGB; null when its profile is missing, damaged or for
/// other pixels.
std::unique_ptr<ColorConversion> MakeConversion(const StoredPicture& stored, bool hasAlpha)
{
    if (stored.profile.empty())
    {
        return nullptr;
    }
    try
    {
        const PixelKind kind = KindOfProfile(stored.profile, {});
        const bool fits = kind == stored.rows.kind ||
                          (kind == PixelKind::Rgb && stored.rows.kind == PixelKind::Rgba);
        return fits ? std::make_unique<ColorConversion>(
                          stored.profile, stored.rows, Bytes(),
                          RowFormat{hasAlpha ? PixelKind::Rgba : PixelKind::Rgb, 8}, std::string())
                    : nullptr;
    }
    catch (const Error&)
    {
        return nullptr;  // the picture can be shown without
    }
}

/// The inks of a pixel as colours, where no profile says how the inks look.
std::uint8_t Mixed(std::uint8_t ink, std::uint8_t black)
{
    return static_cast<std::uint8_t>(((255 - ink) * (255 - black) + 127) / 255);
}

struct Point
{
    int x;
    int y;
};

/// Where a pixel of a stored picture lies in the upright one.
Point Upright(int orientation, Point at, int width, int height)
{
    const int right = width - 1 - at.x;
    const int below = height - 1 - at.y;
    switch (orientation)
    {
        case 2:
            return {right, at.y};
        case 3:
            return {right, below};
        case 4:
            return {at.x, below};
        case 5:
            return {at.y, at.x};
        case 6:
            return {below, at.x};
        case 7:
            return {below, right};
        case 8:
            return {at.y, right};
        default:
            return at;
    }
}

}  // namespace

RowPlacer::RowPlacer(const StoredPicture& stored, const PictureSource& source) : stored_(stored)
{
    CheckStored(stored, source);
    const PixelSize size =
        FitTexture({static_cast<int>(stored.width), static_cast<int>(stored.height)},
                   limits::MaxTexturePixels(source.count));
    width_ = size.width;
    height_ = size.height;
    picture_.hasAlpha = stored.rows.kind == PixelKind::Rgba;
    picture_.width = stored.orientation < 5 ? width_ : height_;
    picture_.height = stored.orientation < 5 ? height_ : width_;
    const std::size_t pixelBytes = picture_.hasAlpha ? 4 : 3;
    picture_.rows.resize(pixelBytes * static_cast<std::size_t>(width_) *
                         static_cast<std::size_t>(height_));
    row_.resize(pixelBytes * stored.width);
    conversion_ = MakeConversion(stored, picture_.hasAlpha);
}

void RowPlacer::Add(const std::uint8_t* row)
{
    const std::uint64_t y = added_++;
    const auto height = static_cast<std::uint64_t>(height_);
    // The middle of a row of the reduced picture lies in this row of the stored one.
    const auto middle = [&](int placed) {
        return (2 * static_cast<std::uint64_t>(placed) + 1) * stored_.height / (2 * height);
    };
    if (placed_ < height_ && middle(placed_) == y)
    {
        Convert(row);
        Place(placed_);
        ++placed_;
    }
}

void RowPlacer::Convert(const std::uint8_t* row)
{
    const int pixels = static_cast<int>(stored_.width);
    if (conversion_ != nullptr)
    {
        conversion_->Convert(row, row_.data(), pixels);
        return;
    }
    std::uint8_t* out = row_.data();
    switch (stored_.rows.kind)
    {
        case PixelKind::Grey:
            for (int x = 0; x < pixels; ++x, out += 3)
            {
                std::memset(out, row[x], 3);
            }
            return;
        case PixelKind::Cmyk:
            for (int x = 0; x < pixels; ++x, row += 4, out += 3)
            {
                out[0] = Mixed(row[0], row[3]);
                out[1] = Mixed(row[1], row[3]);
                out[2] = Mixed(row[2], row[3]);
            }
            return;
        case PixelKind::Rgb:
        case PixelKind::Rgba:
            std::memcpy(out, row, row_.size());
            return;
    }
}

void RowPlacer::Place(int y)
{
    const std::size_t pixelBytes = picture_.hasAlpha ? 4 : 3;
    for (int x = 0; x < width_; ++x)
    {
        const auto from = (2 * static_cast<std::uint64_t>(x) + 1) * stored_.width /
                          (2 * static_cast<std::uint64_t>(width_));
        const Point at = Upright(stored_.orientation, {x, y}, width_, height_);
        const std::size_t to =
            static_cast<std::size_t>(at.y) * static_cast<std::size_t>(picture_.width) +
            static_cast<std::size_t>(at.x);
        std::memcpy(picture_.rows.data() + to * pixelBytes, row_.data() + from * pixelBytes,
                    pixelBytes);
    }
}

void CheckDecoderMemory(const StoredPicture& stored, std::size_t pixelBytes,
                        const PictureSource& source)
{
    CheckStored(stored, source);
    CheckBytes(stored, pixelBytes, limits::MemoryForFile(source.count), " of memory", source);
}

}  // namespace orvane
