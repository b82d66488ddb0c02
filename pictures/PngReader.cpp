// SPDX-License-Identifier: MIT
#include "pictures/Exif.h"
#include "pictures/LongJumps.h"
#include "pictures/RowPlacer.h"

#include <png.h>

#include <algorithm>
#include <cstring>

namespace orvane
{

namespace
{

struct Decoder
{
    explicit Decoder(const PictureSource& file) : source(file), jumps(file.place)
    {
        png = png_create_read_struct(PNG_LIBPNG_VER_STRING, this, JumpOut, IgnoreWarning);
        info = png != nullptr ? png_create_info_struct(png) : nullptr;
        if (info == nullptr)
        {
            png_destroy_read_struct(&png, nullptr, nullptr);
            throw Error(source.place, "out of memory");
        }
        png_set_read_fn(png, this, ReadBytes);
    }
    ~Decoder() { png_destroy_read_struct(&png, &info, nullptr); }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    static void JumpOut(png_structp png, png_const_charp complaint)
    {
        Decoder& decoder = *static_cast<Decoder*>(png_get_error_ptr(png));
        char text[160];
        std::snprintf(text, sizeof text, "before byte %zu: not a readable PNG: %s", decoder.at,
                      complaint);
        decoder.jumps.Jump(text);
    }
    static void IgnoreWarning(png_structp, png_const_charp) {}
    static void ReadBytes(png_structp png, png_bytep to, png_size_t count)
    {
        Decoder& decoder = *static_cast<Decoder*>(png_get_io_ptr(png));
        if (decoder.source.count - decoder.at < count)
        {
            decoder.at = decoder.source.count;
            png_error(png, "the file ends, expected more of the picture");
        }
        std::memcpy(to, decoder.source.bytes + decoder.at, count);
        decoder.at += count;
    }

    /// Reads everything in front of the pixels and says how the pixels are wanted.
    void ReadHead(bool& isInterlaced)
    {
        jumps.Run([&] {
            constexpr png_uint_32 maxChunkBytes = 1 << 26;
            png_set_user_limits(png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);
            png_set_chunk_malloc_max(png, maxChunkBytes);
            png_set_chunk_cache_max(png, 100);
            png_read_info(png, info);
            png_set_expand(png);
            png_set_scale_16(png);
            isInterlaced = png_set_interlace_handling(png) > 1;
        });
    }

    Bytes Profile()
    {
        png_charp name = nullptr;
        png_bytep bytes = nullptr;
        png_uint_32 count = 0;
        int packing = 0;
        const bool isThere = png_get_iCCP(png, info, &name, &packing, &bytes, &count) != 0;
        return isThere ? Bytes(bytes, bytes + count) : Bytes();
    }

    int Orientation()
    {
        png_uint_32 count = 0;
        png_bytep exif = nullptr;
        return png_get_eXIf_1(png, info, &count, &exif) != 0 ? OrientationIn(exif, count) : 1;
    }

    const PictureSource& source;
    LongJumps jumps;
    std::size_t at = 0;  ///< the next byte
    png_structp png = nullptr;
    png_infop info = nullptr;
};

/// Throws Error when a chunk reaches beyond the end of the file. libpng would ask for the memory of
/// some kinds of chunks before it looks for their bytes.
void CheckChunks(const PictureSource& source)
{
    constexpr std::size_t signatureBytes = 8;
    constexpr std::size_t frameBytes = 12;  // length, type and check sum
    for (std::size_t at = signatureBytes; source.count - at >= frameBytes;)
    {
        const std::uint8_t* const b = source.bytes + at;
        const std::size_t length =
            std::size_t{b[0]} << 24 | std::size_t{b[1]} << 16 | std::size_t{b[2]} << 8 | b[3];
        const std::size_t most = source.count - at - frameBytes;
        if (length > most)
        {
            throw Error(source.place + ": byte " + std::to_string(at),
                        "a PNG chunk of " + std::to_string(length) + " bytes",
                        "at most " + std::to_string(most) + ", where the file ends");
        }
        at += frameBytes + length;
    }
}

/// Greys stay greys only for a profile of greys, and without alpha.
PixelKind WantedKind(Decoder& decoder, const Bytes& profile)
{
    const int color = png_get_color_type(decoder.png, decoder.info);
    const bool hasAlpha = (color & PNG_COLOR_MASK_ALPHA) != 0 ||
                          png_get_valid(decoder.png, decoder.info, PNG_INFO_tRNS) != 0;
    if (hasAlpha)
    {
        return PixelKind::Rgba;
    }
    return color == PNG_COLOR_TYPE_GRAY && !profile.empty() ? PixelKind::Grey : PixelKind::Rgb;
}

/// Each pass of an interlaced picture reaches all over it, so all rows are in memory together.
void PlaceInterlaced(Decoder& decoder, const StoredPicture& stored, std::size_t rowBytes,
                     RowPlacer& placer)
{
    CheckDecoderMemory(stored, stored.rows.PixelBytes(), decoder.source);
    Bytes rows(rowBytes * stored.height);
    std::vector<png_bytep> starts(stored.height);
    for (std::size_t y = 0; y < starts.size(); ++y)
    {
        starts[y] = rows.data() + y * rowBytes;
    }
    decoder.jumps.Run([&] { png_read_image(decoder.png, starts.data()); });
    for (const png_bytep row : starts)
    {
        placer.Add(row);
    }
}

}  // namespace

ReadPicture ReadPng(const PictureSource& source)
{
    CheckChunks(source);
    Decoder d(source);
    bool isInterlaced = false;
    d.ReadHead(isInterlaced);
    StoredPicture stored;
    stored.width = png_get_image_width(d.png, d.info);
    stored.height = png_get_image_height(d.png, d.info);
    stored.profile = d.Profile();
    stored.orientation = d.Orientation();
    stored.rows.kind = WantedKind(d, stored.profile);
    RowPlacer placer(stored, source);
    std::size_t rowBytes = 0;
    d.jumps.Run([&] {
        if (stored.rows.kind != PixelKind::Grey)
        {
            png_set_gray_to_rgb(d.png);
        }
        png_read_update_info(d.png, d.info);
        rowBytes = png_get_rowbytes(d.png, d.info);
    });
    if (rowBytes != stored.rows.PixelBytes() * stored.width)
    {
        throw Error(source.place, "a PNG with an unknown kind of pixels");
    }
    if (isInterlaced)
    {
        PlaceInterlaced(d, stored, rowBytes, placer);
    }
    else
    {
        Bytes row(rowBytes);
        for (std::uint64_t y = 0; y < stored.height; ++y)
        {
            d.jumps.Run([&] { png_read_row(d.png, row.data(), nullptr); });
            placer.Add(row.data());
        }
    }
    d.jumps.Run([&] { png_read_end(d.png, nullptr); });
    return placer.Take();
}

}  // namespace orvane
