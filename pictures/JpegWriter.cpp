// SPDX-License-Identifier: MIT
#include "pictures/JpegWriter.h"

#include "pictures/ColorProfile.h"
#include "pictures/LongJumps.h"

// jpeglib.h needs the types of cstdio.
#include <jpeglib.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace orvane
{

namespace
{

J_COLOR_SPACE SpaceOf(PixelKind kind)
{
    return kind == PixelKind::Grey ? JCS_GRAYSCALE : kind == PixelKind::Cmyk ? JCS_CMYK : JCS_RGB;
}

}  // namespace

struct JpegWriter::Encoder
{
    Encoder(const PictureFileSettings& settings, OutputFile& file, const std::string& place)
        : output(file), jumps(place), isInks(settings.rows.kind == PixelKind::Cmyk)
    {
        jpeg.err = jpeg_std_error(&errors);
        errors.error_exit = JumpOut;
        errors.output_message = [](j_common_ptr) {};
        jpeg.client_data = this;
        jumps.Run([this] { jpeg_create_compress(&jpeg); });
        destination.init_destination = [](j_compress_ptr) {};
        destination.empty_output_buffer = WriteBuffer;
        destination.term_destination = [](j_compress_ptr) {};
        destination.next_output_byte = buffer.data();
        destination.free_in_buffer = buffer.size();
        jpeg.dest = &destination;
    }
    ~Encoder() { jpeg_destroy_compress(&jpeg); }
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;

    static void JumpOut(j_common_ptr jpeg)
    {
        char complaint[JMSG_LENGTH_MAX];
        jpeg->err->format_message(jpeg, complaint);
        static_cast<Encoder*>(jpeg->client_data)->jumps.Jump(complaint);
    }

    static boolean WriteBuffer(j_compress_ptr jpeg)
    {
        Encoder& encoder = *static_cast<Encoder*>(jpeg->client_data);
        try
        {
            encoder.output.Write(encoder.buffer.data(), encoder.buffer.size());
        }
        catch (...)
        {
            encoder.jumps.Keep();
        }
        encoder.destination.next_output_byte = encoder.buffer.data();
        encoder.destination.free_in_buffer = encoder.buffer.size();
        if (encoder.jumps.HasKept())
        {
            encoder.jumps.Jump("the file cannot be written");
        }
        return TRUE;
    }

    void Begin(const PictureFileSettings& settings, const Bytes& profile)
    {
        jpeg.image_width = static_cast<JDIMENSION>(settings.width);
        jpeg.image_height = static_cast<JDIMENSION>(settings.height);
        jpeg.input_components = settings.rows.Channels();
        jpeg.in_color_space = SpaceOf(settings.rows.kind);
        jumps.Run([&] {
            jpeg_set_defaults(&jpeg);
            jpeg_set_quality(&jpeg, settings.quality, TRUE);
            if (settings.quality >= 90 && settings.rows.kind == PixelKind::Rgb)
            {
                // From here on colours are stored as finely as brightness: letters on a coloured
                // background would have soft coloured edges otherwise.
                jpeg.comp_info[0].h_samp_factor = 1;
                jpeg.comp_info[0].v_samp_factor = 1;
            }
            if (settings.dotsPerInch > 0)
            {
                const long dots = std::clamp(std::lround(settings.dotsPerInch), 1L, 65535L);
                jpeg.density_unit = 1;  // dots per inch
                jpeg.X_density = static_cast<UINT16>(dots);
                jpeg.Y_density = static_cast<UINT16>(dots);
            }
            jpeg_start_compress(&jpeg, TRUE);
            if (!profile.empty())
            {
                jpeg_write_icc_profile(&jpeg, profile.data(),
                                       static_cast<unsigned>(profile.size()));
            }
        });
    }

    OutputFile& output;
    LongJumps jumps;
    jpeg_compress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg_destination_mgr destination{};
    std::array<JOCTET, 65536> buffer{};
    Bytes inks;  ///< a row of inks as it is stored
    bool isInks;
};

JpegWriter::JpegWriter(const PictureFileSettings& settings, OutputFile& output,
                       const std::string& place)
    : encoder_(std::make_unique<Encoder>(settings, output, place))
{
    encoder_->inks.resize(encoder_->isInks ? settings.rows.RowBytes(settings.width) : 0);
    encoder_->Begin(settings, ProfileOrStandard(settings));
}

JpegWriter::~JpegWriter() = default;

void JpegWriter::WriteRows(const std::uint8_t* rows, std::size_t stride, int count)
{
    Encoder& e = *encoder_;
    for (int y = 0; y < count; ++y)
    {
        const std::uint8_t* row = rows + static_cast<std::size_t>(y) * stride;
        if (e.isInks)
        {
            // Readers expect inks to be inverted, because Adobe's programs wrote them so.
            std::transform(row, row + e.inks.size(), e.inks.begin(),
                           [](std::uint8_t ink) { return static_cast<std::uint8_t>(255 - ink); });
            row = e.inks.data();
        }
        e.jumps.Run([&e, row] {
            JSAMPROW line = const_cast<JSAMPROW>(row);  // libjpeg only reads the row
            jpeg_write_scanlines(&e.jpeg, &line, 1);
        });
    }
}

void JpegWriter::Finish()
{
    Encoder& e = *encoder_;
    e.jumps.Run([&e] { jpeg_finish_compress(&e.jpeg); });
    e.output.Write(e.buffer.data(), e.buffer.size() - e.destination.free_in_buffer);
}

}  // namespace orvane
