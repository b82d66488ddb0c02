// SPDX-License-Identifier: MIT
#include "orvane/Error.h"
#include "pictures/Exif.h"
#include "pictures/RowPlacer.h"

#include <webp/decode.h>
#include <webp/mux.h>

namespace orvane
{

namespace
{

[[noreturn]] void Refuse(const PictureSource& source, VP8StatusCode status)
{
    if (status == VP8_STATUS_NOT_ENOUGH_DATA)
    {
        throw Error(source.place, "byte " + std::to_string(source.count) +
                                      ": the file ends, expected more of the WebP picture");
    }
    throw Error(source.place, "not a readable WebP (libwebp's status " +
                                  std::to_string(static_cast<int>(status)) + ")");
}

/// Reads the parts of the file beside the pixels. A file whose parts are damaged has none.
void ReadParts(const PictureSource& source, StoredPicture& stored)
{
    const WebPData file = {source.bytes, source.count};
    const std::unique_ptr<WebPMux, void (*)(WebPMux*)> mux(WebPMuxCreate(&file, 0), WebPMuxDelete);
    if (mux == nullptr)
    {
        return;
    }
    WebPData chunk{};
    if (WebPMuxGetChunk(mux.get(), "ICCP", &chunk) == WEBP_MUX_OK)
    {
        stored.profile.assign(chunk.bytes, chunk.bytes + chunk.size);
    }
    if (WebPMuxGetChunk(mux.get(), "EXIF", &chunk) == WEBP_MUX_OK)
    {
        stored.orientation = OrientationIn(chunk.bytes, chunk.size);
    }
}

}  // namespace

ReadPicture ReadWebp(const PictureSource& source)
{
    WebPBitstreamFeatures features{};
    const VP8StatusCode status = WebPGetFeatures(source.bytes, source.count, &features);
    if (status != VP8_STATUS_OK)
    {
        Refuse(source, status);
    }
    if (features.has_animation != 0)
    {
        throw Error(source.place, "found an animated WebP, expected a picture that stands still");
    }
    StoredPicture stored;
    stored.width = static_cast<std::uint64_t>(features.width);
    stored.height = static_cast<std::uint64_t>(features.height);
    stored.rows.kind = features.has_alpha != 0 ? PixelKind::Rgba : PixelKind::Rgb;
    // The decoder keeps the picture a second time while it reads it.
    CheckDecoderMemory(stored, 2 * stored.rows.PixelBytes(), source);
    ReadParts(source, stored);
    RowPlacer placer(stored, source);
    const std::size_t rowBytes = stored.rows.PixelBytes() * stored.width;
    Bytes rows(rowBytes * stored.height);

    WebPDecoderConfig config{};
    if (!WebPInitDecoderConfig(&config))
    {
        throw Error(source.place, "libwebp has another version than its headers");
    }
    config.output.colorspace = stored.rows.kind == PixelKind::Rgba ? MODE_RGBA : MODE_RGB;
    config.output.is_external_memory = 1;
    config.output.u.RGBA.rgba = rows.data();
    config.output.u.RGBA.stride = static_cast<int>(rowBytes);
    config.output.u.RGBA.size = rows.size();
    const VP8StatusCode result = WebPDecode(source.bytes, source.count, &config);
    WebPFreeDecBuffer(&config.output);
    if (result != VP8_STATUS_OK)
    {
        Refuse(source, result);
    }
    for (std::uint64_t y = 0; y < stored.height; ++y)
    {
        placer.Add(rows.data() + y * rowBytes);
    }
    return placer.Take();
}

}  // namespace orvane
