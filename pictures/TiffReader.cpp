// SPDX-License-Identifier: MIT
#include "orvane/Error.h"
#include "pictures/RowPlacer.h"
#include "pictures/StraightAlpha.h"
#include "pictures/TiffErrors.h"
#include "platform/Limits.h"

#include <tiffio.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace orvane
{

namespace
{

/// The file in memory, as libtiff reads it.
struct Input
{
    const PictureSource& source;
    std::uint64_t at = 0;

    static Input& Of(thandle_t handle) { return *static_cast<Input*>(handle); }
    static tmsize_t Read(thandle_t handle, void* to, tmsize_t wanted)
    {
        Input& input = Of(handle);
        const std::uint64_t left =
            input.source.count - std::min<std::uint64_t>(input.at, input.source.count);
        const std::uint64_t count =
            std::min(left, static_cast<std::uint64_t>(std::max<tmsize_t>(wanted, 0)));
        std::memcpy(to, input.source.bytes + (input.source.count - left), count);
        input.at += count;
        return static_cast<tmsize_t>(count);
    }
    static tmsize_t Write(thandle_t, void*, tmsize_t) { return -1; }
    static toff_t Seek(thandle_t handle, toff_t offset, int whence)
    {
        Input& input = Of(handle);
        input.at = whence == SEEK_SET   ? offset
                   : whence == SEEK_CUR ? input.at + offset
                                        : input.source.count + offset;
        return input.at;
    }
    static int Close(thandle_t) { return 0; }
    static toff_t Size(thandle_t handle) { return Of(handle).source.count; }
};

Bytes ProfileOf(TIFF* tiff)
{
    std::uint32_t count = 0;
    std::uint8_t* bytes = nullptr;
    return TIFFGetField(tiff, TIFFTAG_ICCPROFILE, &count, &bytes) != 0 && bytes != nullptr
               ? Bytes(bytes, bytes + count)
               : Bytes();
}

/// libtiff's own conversion to red, green, blue and alpha, which knows all kinds of TIFF.
struct Image
{
    Image(TIFF* tiff, const TiffErrors& errors)
    {
        char complaint[1024] = {};
        constexpr int stopsAtErrors = 1;
        if (TIFFRGBAImageBegin(&image, tiff, stopsAtErrors, complaint) == 0)
        {
            errors.Throw(complaint);
        }
        // Rows come as they are stored. Their orientation is applied when they are placed.
        image.orientation = ORIENTATION_TOPLEFT;
        image.req_orientation = ORIENTATION_TOPLEFT;
    }
    ~Image() { TIFFRGBAImageEnd(&image); }
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;

    TIFFRGBAImage image{};
};

}  // namespace

ReadPicture ReadTiff(const PictureSource& source)
{
    TiffErrors errors(source.place);
    const std::uint64_t memory = limits::MemoryForFile(source.count);
    TIFFOpenOptionsSetMaxSingleMemAlloc(errors.Options(),
                                        static_cast<tmsize_t>(std::min<std::uint64_t>(
                                            memory, std::numeric_limits<tmsize_t>::max())));
    Input input{source};
    // "m": the file lies in memory already.
    const std::unique_ptr<TIFF, void (*)(TIFF*)> tiff(
        TIFFClientOpenExt(source.place.c_str(), "rm", &input, Input::Read, Input::Write,
                          Input::Seek, Input::Close, Input::Size, nullptr, nullptr,
                          errors.Options()),
        TIFFClose);
    if (tiff == nullptr)
    {
        errors.Throw();
    }
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    std::uint16_t orientation = ORIENTATION_TOPLEFT;
    TIFFGetField(tiff.get(), TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tiff.get(), TIFFTAG_IMAGELENGTH, &height);
    TIFFGetFieldDefaulted(tiff.get(), TIFFTAG_ORIENTATION, &orientation);
    StoredPicture stored;
    stored.width = width;
    stored.height = height;
    stored.orientation = orientation >= 1 && orientation <= 8 ? orientation : 1;
    stored.rows.kind = PixelKind::Rgba;
    CheckDecoderMemory(stored, sizeof(std::uint32_t), source);

    Image image(tiff.get(), errors);
    stored.rows.kind = image.image.alpha != 0 ? PixelKind::Rgba : PixelKind::Rgb;
    const bool isColor = image.image.photometric != PHOTOMETRIC_SEPARATED;
    stored.profile = isColor ? ProfileOf(tiff.get()) : Bytes();
    RowPlacer placer(stored, source);
    std::vector<std::uint32_t> pixels(stored.width * stored.height);
    if (TIFFRGBAImageGet(&image.image, pixels.data(), width, height) == 0)
    {
        errors.Throw();
    }
    Bytes row(stored.rows.PixelBytes() * stored.width);
    const int channels = stored.rows.Channels();
    for (std::uint64_t y = 0; y < stored.height; ++y)
    {
        std::uint8_t* out = row.data();
        for (std::uint64_t x = 0; x < stored.width; ++x, out += channels)
        {
            // Colours are multiplied by the alpha.
            const std::uint32_t pixel = pixels[y * stored.width + x];
            const unsigned alpha = channels == 4 ? TIFFGetA(pixel) : 255;
            out[0] = static_cast<std::uint8_t>(StraightColor(TIFFGetR(pixel), alpha, 255));
            out[1] = static_cast<std::uint8_t>(StraightColor(TIFFGetG(pixel), alpha, 255));
            out[2] = static_cast<std::uint8_t>(StraightColor(TIFFGetB(pixel), alpha, 255));
            if (channels == 4)
            {
                out[3] = static_cast<std::uint8_t>(alpha);
            }
        }
        placer.Add(row.data());
    }
    return placer.Take();
}

}  // namespace orvane
