// SPDX-License-Identifier: MIT
#include "pictures/TiffWriter.h"

#include "orvane/Error.h"
#include "pictures/ColorProfile.h"
#include "pictures/Deflate.h"
#include "pictures/TiffErrors.h"
#include "platform/Errors.h"
#include "platform/Files.h"

#include <tiffio.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace orvane
{

namespace
{

constexpr std::size_t stripBytes = std::size_t{1} << 20;

std::size_t StripRows(const PictureFileSettings& settings)
{
    return std::clamp<std::size_t>(stripBytes / settings.rows.RowBytes(settings.width), 1,
                                   static_cast<std::size_t>(settings.height));
}

/// Replaces each channel but the first pixel's by its difference to the pixel on the left, as the
/// horizontal predictor of TIFF does.
template <typename Channel>
void Difference(std::uint8_t* row, std::size_t channels, std::size_t rowBytes)
{
    const std::size_t distance = channels * sizeof(Channel);
    for (std::size_t at = rowBytes; at > distance;)
    {
        at -= sizeof(Channel);
        Channel value = 0;
        Channel before = 0;
        std::memcpy(&value, row + at, sizeof value);
        std::memcpy(&before, row + at - distance, sizeof before);
        value = static_cast<Channel>(value - before);
        std::memcpy(row + at, &value, sizeof value);
    }
}

OrderedJobs::Result PackRows(Bytes rows, RowFormat format, std::size_t rowBytes, bool isPacked)
{
    OrderedJobs::Result result;
    if (!isPacked)
    {
        result.bytes = std::move(rows);
        return result;
    }
    const auto channels = static_cast<std::size_t>(format.Channels());
    for (std::size_t at = 0; at < rows.size(); at += rowBytes)
    {
        format.channelBits == 16 ? Difference<std::uint16_t>(rows.data() + at, channels, rowBytes)
                                 : Difference<std::uint8_t>(rows.data() + at, channels, rowBytes);
    }
    result.bytes = ZlibStream(rows.data(), rows.size());
    return result;
}

}  // namespace

bool NeedsBigTiff(const PictureFileSettings& settings, std::uint64_t maxBytes)
{
    // Deflate stores what it cannot pack, with 5 bytes for each 64 KiB, and LZW needs up to half
    // as much again. Each strip has an offset and a length, of 8 bytes together.
    const std::uint64_t strips =
        static_cast<std::uint64_t>(settings.height) / StripRows(settings) + 1;
    const std::uint64_t bytes =
        settings.rows.RowBytes(settings.width) * static_cast<std::uint64_t>(settings.height);
    constexpr std::uint64_t headBytes = 4096;
    return bytes + bytes / 2 + strips * 64 + settings.profile.size() + headBytes > maxBytes;
}

struct TiffWriter::Encoder
{
    Encoder(const PictureFileSettings& settings, OutputFile& output, const std::string& fileName)
        : place(fileName), errors(fileName)
    {
        if (!output.IsRegular())
        {
            throw Error(place,
                        "a TIFF can only be written into a regular file, and this is not one; "
                        "write a PNG");
        }
        file = output.OpenHandle();
        tiff = TIFFClientOpenExt(place.c_str(), NeedsBigTiff(settings) ? "w8" : "w", this, Read,
                                 Write, Seek, Close, Size, nullptr, nullptr, errors.Options());
        if (tiff == nullptr)
        {
            CloseHandle(std::exchange(file, nullptr));
            errors.Throw();
        }
    }
    ~Encoder()
    {
        if (tiff != nullptr)
        {
            // Nothing of an unfinished picture is of use, so libtiff must not write more of it.
            isGivenUp = true;
            TIFFClose(tiff);
        }
        CloseFile();
    }
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;

    static tmsize_t Read(thandle_t, void*, tmsize_t) { return -1; }
    static tmsize_t Write(thandle_t handle, void* bytes, tmsize_t count)
    {
        Encoder& e = *static_cast<Encoder*>(handle);
        const auto* next = static_cast<const std::uint8_t*>(bytes);
        for (tmsize_t left = count; left > 0 && !e.isGivenUp;)
        {
            constexpr tmsize_t maxAtOnce = 1 << 30;
            OVERLAPPED at{};
            at.Offset = static_cast<DWORD>(e.position);
            at.OffsetHigh = static_cast<DWORD>(e.position >> 32);
            const DWORD wanted = static_cast<DWORD>(std::min(left, maxAtOnce));
            DWORD written = 0;
            if (!WriteFile(e.file, next, wanted, &written, &at) || written == 0)
            {
                e.writeError = GetLastErrorText();
                return -1;
            }
            e.position += written;
            e.length = std::max(e.length, e.position);
            next += written;
            left -= written;
        }
        return count;
    }
    static toff_t Seek(thandle_t handle, toff_t offset, int whence)
    {
        Encoder& e = *static_cast<Encoder*>(handle);
        e.position = whence == SEEK_SET   ? offset
                     : whence == SEEK_CUR ? e.position + offset
                                          : e.length + offset;
        return e.position;
    }
    static int Close(thandle_t) { return 0; }
    static toff_t Size(thandle_t handle) { return static_cast<Encoder*>(handle)->length; }

    void CloseFile()
    {
        if (file != nullptr)
        {
            CloseHandle(std::exchange(file, nullptr));
        }
    }

    /// Throws Error unless a call of libtiff was successful.
    void Check(bool isDone)
    {
        if (!writeError.empty())
        {
            throw Error(place, writeError);
        }
        if (!isDone)
        {
            errors.Throw();
        }
    }

    template <typename... Value>
    void Set(std::uint32_t tag, Value... value)
    {
        Check(TIFFSetField(tiff, tag, value...) != 0);
    }

    void SetTags(const PictureFileSettings& settings, const Bytes& profile)
    {
        const PixelKind kind = settings.rows.kind;
        Set(TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(settings.width));
        Set(TIFFTAG_IMAGELENGTH, static_cast<std::uint32_t>(settings.height));
        Set(TIFFTAG_BITSPERSAMPLE, settings.rows.channelBits);
        Set(TIFFTAG_SAMPLESPERPIXEL, settings.rows.Channels());
        Set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG);
        Set(TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
        Set(TIFFTAG_PHOTOMETRIC, kind == PixelKind::Grey   ? PHOTOMETRIC_MINISBLACK
                                 : kind == PixelKind::Cmyk ? PHOTOMETRIC_SEPARATED
                                                           : PHOTOMETRIC_RGB);
        if (kind == PixelKind::Cmyk)
        {
            Set(TIFFTAG_INKSET, INKSET_CMYK);
        }
        if (kind == PixelKind::Rgba)
        {
            const std::uint16_t alpha = EXTRASAMPLE_UNASSALPHA;
            Set(TIFFTAG_EXTRASAMPLES, 1, &alpha);
        }
        Set(TIFFTAG_ROWSPERSTRIP, static_cast<std::uint32_t>(StripRows(settings)));
        Set(TIFFTAG_COMPRESSION, settings.packing == TiffPacking::Deflate
                                     ? COMPRESSION_ADOBE_DEFLATE
                                 : settings.packing == TiffPacking::Lzw ? COMPRESSION_LZW
                                                                        : COMPRESSION_NONE);
        if (settings.packing != TiffPacking::None)
        {
            Set(TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL);
        }
        if (settings.dotsPerInch > 0)
        {
            Set(TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
            Set(TIFFTAG_XRESOLUTION, settings.dotsPerInch);
            Set(TIFFTAG_YRESOLUTION, settings.dotsPerInch);
        }
        if (!profile.empty())
        {
            Set(TIFFTAG_ICCPROFILE, static_cast<std::uint32_t>(profile.size()), profile.data());
        }
    }

    std::string place;
    TiffErrors errors;
    HANDLE file = nullptr;  ///< owned
    TIFF* tiff = nullptr;   ///< owned
    std::uint64_t position = 0;
    std::uint64_t length = 0;
    std::uint32_t strips = 0;  ///< that are written
    std::string writeError;
    bool isGivenUp = false;
};

TiffWriter::TiffWriter(const PictureFileSettings& settings, OutputFile& output,
                       const std::string& place)
    : settings_(settings),
      rowBytes_(settings.rows.RowBytes(settings.width)),
      stripRows_(StripRows(settings)),
      encoder_(std::make_unique<Encoder>(settings, output, place)),
      jobs_(settings.threads, [this](const OrderedJobs::Result& packed) {
          Encoder& e = *encoder_;
          const auto count = static_cast<tmsize_t>(packed.bytes.size());
          // libtiff does not change the bytes; its parameter is not const.
          void* const bytes = const_cast<std::uint8_t*>(packed.bytes.data());
          e.Check((settings_.packing == TiffPacking::Lzw
                       ? TIFFWriteEncodedStrip(e.tiff, e.strips, bytes, count)
                       : TIFFWriteRawStrip(e.tiff, e.strips, bytes, count)) == count);
          ++e.strips;
      })
{
    encoder_->SetTags(settings, ProfileOrStandard(settings));
}

TiffWriter::~TiffWriter() = default;

void TiffWriter::WriteRows(const std::uint8_t* rows, std::size_t stride, int count)
{
    for (int y = 0; y < count; ++y)
    {
        const std::uint8_t* const row = rows + static_cast<std::size_t>(y) * stride;
        strip_.insert(strip_.end(), row, row + rowBytes_);
        if (strip_.size() == stripRows_ * rowBytes_)
        {
            PackStrip();
        }
    }
}

void TiffWriter::PackStrip()
{
    jobs_.Add([rows = std::exchange(strip_, {}), format = settings_.rows, rowBytes = rowBytes_,
               isPacked = settings_.packing == TiffPacking::Deflate]() mutable {
        return PackRows(std::move(rows), format, rowBytes, isPacked);
    });
    strip_.reserve(stripRows_ * rowBytes_);
}

void TiffWriter::Finish()
{
    if (!strip_.empty())
    {
        PackStrip();
    }
    jobs_.Finish();
    Encoder& e = *encoder_;
    e.Check(TIFFWriteDirectory(e.tiff) != 0);
    TIFFClose(std::exchange(e.tiff, nullptr));
    e.Check(true);
    e.CloseFile();
}

}  // namespace orvane
