// SPDX-License-Identifier: MIT
#include "pictures/Exif.h"
#include "pictures/LongJumps.h"
#include "pictures/RowPlacer.h"
#include "platform/Limits.h"

// jpeglib.h needs the types of cstdio.
#include <jerror.h>
#include <jpeglib.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>

namespace orvane
{

namespace
{

constexpr int exifMarker = JPEG_APP0 + 1;
constexpr int profileMarker = JPEG_APP0 + 2;

struct Decoder
{
    explicit Decoder(const PictureSource& source) : file(source), jumps(source.place)
    {
        jpeg.err = jpeg_std_error(&errors);
        errors.error_exit = JumpOut;
        errors.emit_message = HearMessage;
        jpeg.client_data = this;
        jumps.Run([this] { jpeg_create_decompress(&jpeg); });
        // A progressive picture is kept in memory until its last pass.
        jpeg.mem->max_memory_to_use = static_cast<long>(std::min<std::uint64_t>(
            limits::MemoryForFile(source.count), std::numeric_limits<long>::max()));
        manager.init_source = [](j_decompress_ptr) {};
        manager.fill_input_buffer = EndOfFile;
        manager.skip_input_data = Skip;
        manager.resync_to_restart = jpeg_resync_to_restart;
        manager.term_source = [](j_decompress_ptr) {};
        manager.next_input_byte = source.bytes;
        manager.bytes_in_buffer = source.count;
        jpeg.src = &manager;
    }
    ~Decoder() { jpeg_destroy_decompress(&jpeg); }
    Decoder(const Decoder&) = delete;
    Decoder& operator=(const Decoder&) = delete;

    static Decoder& Of(j_common_ptr jpeg) { return *static_cast<Decoder*>(jpeg->client_data); }

    static void JumpOut(j_common_ptr jpeg)
    {
        Decoder& decoder = Of(jpeg);
        char complaint[JMSG_LENGTH_MAX];
        jpeg->err->format_message(jpeg, complaint);
        char text[JMSG_LENGTH_MAX + 80];
        std::snprintf(text, sizeof text, "before byte %zu: not a readable JPEG: %s",
                      decoder.file.count - decoder.manager.bytes_in_buffer, complaint);
        decoder.jumps.Jump(text);
    }
    /// Pictures with small faults can be shown, but not those whose pixels end too early.
    static void HearMessage(j_common_ptr jpeg, int level)
    {
        if (level < 0 && jpeg->err->msg_code == JWRN_HIT_MARKER)
        {
            JumpOut(jpeg);
        }
        // A damaged file may have very many faults, each of which takes time.
        constexpr long maxFaults = 1000;
        if (level < 0 && ++jpeg->err->num_warnings > maxFaults)
        {
            JumpOut(jpeg);
        }
    }
    static boolean EndOfFile(j_decompress_ptr jpeg)
    {
        Decoder& decoder = Of(reinterpret_cast<j_common_ptr>(jpeg));
        char text[120];
        std::snprintf(text, sizeof text,
                      "byte %zu: the file ends, expected more of the JPEG picture",
                      decoder.file.count);
        decoder.jumps.Jump(text);
    }
    static void Skip(j_decompress_ptr jpeg, long count)
    {
        jpeg_source_mgr& manager = *jpeg->src;
        if (count > 0 && static_cast<std::size_t>(count) > manager.bytes_in_buffer)
        {
            EndOfFile(jpeg);
        }
        manager.next_input_byte += std::max(0L, count);
        manager.bytes_in_buffer -= static_cast<std::size_t>(std::max(0L, count));
    }

    void ReadHead()
    {
        constexpr unsigned wholeMarker = 0xFFFF;
        jumps.Run([this] {
            jpeg_save_markers(&jpeg, exifMarker, wholeMarker);
            jpeg_save_markers(&jpeg, profileMarker, wholeMarker);
            jpeg_read_header(&jpeg, TRUE);
        });
    }

    Bytes Profile()
    {
        JOCTET* bytes = nullptr;
        unsigned count = 0;
        bool isThere = false;
        jumps.Run([&] { isThere = jpeg_read_icc_profile(&jpeg, &bytes, &count) != FALSE; });
        Bytes profile;
        if (isThere)
        {
            const std::unique_ptr<JOCTET, void (*)(void*)> owned(bytes, std::free);
            profile.assign(bytes, bytes + count);
        }
        return profile;
    }

    int Orientation() const
    {
        constexpr char name[] = {'E', 'x', 'i', 'f', 0, 0};
        for (jpeg_saved_marker_ptr marker = jpeg.marker_list; marker != nullptr;
             marker = marker->next)
        {
            if (marker->marker == exifMarker && marker->data_length > sizeof name &&
                std::memcmp(marker->data, name, sizeof name) == 0)
            {
                return OrientationIn(marker->data + sizeof name, marker->data_length - sizeof name);
            }
        }
        return 1;
    }

    const PictureSource& file;
    LongJumps jumps;
    jpeg_decompress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg_source_mgr manager{};
};

/// Chooses the channels that libjpeg gives.
PixelKind ChooseKind(jpeg_decompress_struct& jpeg)
{
    switch (jpeg.jpeg_color_space)
    {
        case JCS_GRAYSCALE:
            jpeg.out_color_space = JCS_GRAYSCALE;
            return PixelKind::Grey;
        case JCS_CMYK:
        case JCS_YCCK:
            jpeg.out_color_space = JCS_CMYK;
            return PixelKind::Cmyk;
        default:
            jpeg.out_color_space = JCS_RGB;
            return PixelKind::Rgb;
    }
}

}  // namespace

ReadPicture ReadJpeg(const PictureSource& source)
{
    Decoder d(source);
    d.ReadHead();
    StoredPicture stored;
    stored.width = d.jpeg.image_width;
    stored.height = d.jpeg.image_height;
    stored.rows.kind = ChooseKind(d.jpeg);
    stored.profile = d.Profile();
    stored.orientation = d.Orientation();
    RowPlacer placer(stored, source);
    // Adobe's programs store inks inverted, and say that they wrote the file.
    const bool isInverted = stored.rows.kind == PixelKind::Cmyk && d.jpeg.saw_Adobe_marker;
    Bytes row(stored.rows.PixelBytes() * stored.width);
    d.jumps.Run([&] { jpeg_start_decompress(&d.jpeg); });
    if (d.jpeg.output_components != stored.rows.Channels())
    {
        throw Error(source.place, "a JPEG with an unknown kind of pixels");
    }
    for (std::uint64_t y = 0; y < stored.height; ++y)
    {
        d.jumps.Run([&] {
            JSAMPROW line = row.data();
            jpeg_read_scanlines(&d.jpeg, &line, 1);
        });
        if (isInverted)
        {
            std::transform(row.begin(), row.end(), row.begin(),
                           [](std::uint8_t ink) { return static_cast<std::uint8_t>(255 - ink); });
        }
        placer.Add(row.data());
    }
    return placer.Take();
}

}  // namespace orvane
