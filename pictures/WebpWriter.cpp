// SPDX-License-Identifier: MIT
#include "pictures/WebpWriter.h"

#include "orvane/Error.h"
#include "pictures/ColorProfile.h"
#include "pictures/Exif.h"

#include <webp/encode.h>
#include <webp/mux.h>

namespace orvane
{

namespace
{

struct FreeMux
{
    void operator()(WebPMux* mux) const { WebPMuxDelete(mux); }
};

}  // namespace

struct WebpWriter::Encoder
{
    Encoder(const PictureFileSettings& fileSettings, OutputFile& file, std::string fileName)
        : settings(fileSettings), output(file), place(std::move(fileName))
    {
        if (!WebPPictureInit(&picture) || !WebPConfigInit(&config))
        {
            throw Error(place, "libwebp has another version than its headers");
        }
        WebPMemoryWriterInit(&packed);
        picture.use_argb = 1;
        picture.width = settings.width;
        picture.height = settings.height;
        picture.writer = WebPMemoryWrite;
        picture.custom_ptr = &packed;
        if (!WebPPictureAlloc(&picture))
        {
            throw Error(place, "out of memory; a WebP needs 4 bytes for each pixel");
        }
        config.quality = static_cast<float>(settings.quality);
        config.lossless = settings.isLossless ? 1 : 0;
        config.thread_level = 1;
    }
    ~Encoder()
    {
        WebPPictureFree(&picture);
        WebPMemoryWriterClear(&packed);
    }
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;

    void CopyRow(const std::uint8_t* row)
    {
        const int channels = settings.rows.Channels();
        std::uint32_t* const line =
            picture.argb + static_cast<std::ptrdiff_t>(rows) * picture.argb_stride;
        for (int x = 0; x < settings.width; ++x, row += channels)
        {
            const std::uint32_t alpha = channels == 4 ? row[3] : 255;
            line[x] =
                alpha << 24 | std::uint32_t{row[0]} << 16 | std::uint32_t{row[1]} << 8 | row[2];
        }
        ++rows;
    }

    void SetChunk(WebPMux* mux, const char* name, const Bytes& content) const
    {
        const WebPData data = {content.data(), content.size()};
        Check(WebPMuxSetChunk(mux, name, &data, 1));
    }
    void Check(WebPMuxError error) const
    {
        if (error != WEBP_MUX_OK)
        {
            throw Error(place, "the WebP cannot be put together (libwebp's error " +
                                   std::to_string(static_cast<int>(error)) + ")");
        }
    }

    const PictureFileSettings settings;
    OutputFile& output;
    std::string place;
    WebPPicture picture{};
    WebPConfig config{};
    WebPMemoryWriter packed{};
    int rows = 0;  ///< that have come
};

WebpWriter::WebpWriter(const PictureFileSettings& settings, OutputFile& output,
                       const std::string& place)
    : encoder_(std::make_unique<Encoder>(settings, output, place))
{}

WebpWriter::~WebpWriter() = default;

void WebpWriter::WriteRows(const std::uint8_t* rows, std::size_t stride, int count)
{
    for (int y = 0; y < count; ++y)
    {
        encoder_->CopyRow(rows + static_cast<std::size_t>(y) * stride);
    }
}

void WebpWriter::Finish()
{
    Encoder& e = *encoder_;
    if (!WebPEncode(&e.config, &e.picture))
    {
        throw Error(e.place, "the WebP cannot be packed (libwebp's error " +
                                 std::to_string(static_cast<int>(e.picture.error_code)) + ")");
    }
    WebPPictureFree(&e.picture);
    const std::unique_ptr<WebPMux, FreeMux> mux(WebPMuxNew());
    if (mux == nullptr)
    {
        throw Error(e.place, "out of memory");
    }
    const WebPData image = {e.packed.mem, e.packed.size};
    e.Check(WebPMuxSetImage(mux.get(), &image, 1));
    e.SetChunk(mux.get(), "ICCP", ProfileOrStandard(e.settings));
    if (e.settings.dotsPerInch > 0)
    {
        e.SetChunk(mux.get(), "EXIF", MakeResolutionExif(e.settings.dotsPerInch));
    }
    WebPData file{};
    e.Check(WebPMuxAssemble(mux.get(), &file));
    try
    {
        e.output.Write(file.bytes, file.size);
    }
    catch (...)
    {
        WebPDataClear(&file);
        throw;
    }
    WebPDataClear(&file);
}

}  // namespace orvane
