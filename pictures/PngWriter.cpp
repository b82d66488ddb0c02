// SPDX-License-Identifier: MIT
#include "pictures/PngWriter.h"

#include "pictures/Deflate.h"
#include "pictures/PngFilter.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <iterator>
#include <utility>

namespace orvane
{

namespace
{

// Strips of about 1 MiB: each thread has work for milliseconds, and what a strip cannot repeat from
// the strip above costs less than a thousandth of its bytes.
constexpr std::size_t stripBytes = std::size_t{1} << 20;

std::uint8_t ColorTypeOf(PixelKind kind)
{
    return kind == PixelKind::Grey ? 0 : kind == PixelKind::Rgb ? 2 : 6;
}

Bytes MakeHeader(const PictureFileSettings& settings)
{
    Bytes header;
    AppendBigEndian(header, static_cast<std::uint32_t>(settings.width));
    AppendBigEndian(header, static_cast<std::uint32_t>(settings.height));
    header.push_back(static_cast<std::uint8_t>(settings.rows.channelBits));
    header.push_back(ColorTypeOf(settings.rows.kind));
    header.insert(header.end(), 3, 0);  // deflate, the usual filters, rows in their order
    return header;
}

Bytes MakeProfile(const Bytes& profile)
{
    constexpr std::string_view name = "ICC profile";
    Bytes content(name.begin(), name.end());
    content.insert(content.end(), 2, 0);  // the end of the name, and deflate
    const Bytes packed = ZlibStream(profile.data(), profile.size());
    content.insert(content.end(), packed.begin(), packed.end());
    return content;
}

Bytes MakeResolution(double dotsPerInch)
{
    constexpr double metresPerInch = 0.0254;
    const auto perMetre = static_cast<std::uint32_t>(std::lround(dotsPerInch / metresPerInch));
    Bytes content;
    AppendBigEndian(content, perMetre);
    AppendBigEndian(content, perMetre);
    content.push_back(1);  // dots per metre
    return content;
}

/// Numbers of 16 bits stand in a PNG with the higher byte first.
void TurnToBigEndian(std::uint8_t* row, std::size_t count)
{
    if constexpr (std::endian::native == std::endian::little)
    {
        for (std::size_t at = 0; at + 1 < count; at += 2)
        {
            std::swap(row[at], row[at + 1]);
        }
    }
}

OrderedJobs::Result PackRows(Bytes rows, Bytes above, RowFormat format, std::size_t rowBytes)
{
    if (format.channelBits == 16)
    {
        TurnToBigEndian(rows.data(), rows.size());
        TurnToBigEndian(above.data(), above.size());
    }
    const std::size_t count = rows.size() / rowBytes;
    Bytes filtered(count * (rowBytes + 1));
    const std::uint8_t* last = above.empty() ? nullptr : above.data();
    for (std::size_t y = 0; y < count; ++y)
    {
        const std::uint8_t* const row = rows.data() + y * rowBytes;
        FilterRow(row, last, rowBytes, format.PixelBytes(), filtered.data() + y * (rowBytes + 1));
        last = row;
    }
    OrderedJobs::Result result;
    result.bytes = Deflate(filtered.data(), filtered.size(), PieceEnd::Flush);
    result.checkSum = Adler32(filtered.data(), filtered.size());
    result.inputBytes = filtered.size();
    return result;
}

}  // namespace

PngWriter::PngWriter(const PictureFileSettings& settings, OutputFile& output)
    : output_(output),
      format_(settings.rows),
      rowBytes_(settings.rows.RowBytes(settings.width)),
      stripRows_(std::max<std::size_t>(1, stripBytes / rowBytes_)),
      jobs_(settings.threads, [this](const OrderedJobs::Result& strip) { WriteStrip(strip); })
{
    WriteHead(settings);
}

void PngWriter::WriteHead(const PictureFileSettings& settings)
{
    constexpr std::uint8_t signature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    output_.Write(signature, sizeof signature);
    WriteChunk("IHDR", MakeHeader(settings));
    if (settings.profile.empty())
    {
        WriteChunk("sRGB", {0});  // perceptual
    }
    else
    {
        WriteChunk("iCCP", MakeProfile(settings.profile));
    }
    if (settings.dotsPerInch > 0)
    {
        WriteChunk("pHYs", MakeResolution(settings.dotsPerInch));
    }
    WriteChunk("IDAT", Bytes(std::begin(zlibHeader), std::end(zlibHeader)));
}

void PngWriter::WriteChunk(std::string_view type, const Bytes& content)
{
    Bytes head;
    AppendBigEndian(head, static_cast<std::uint32_t>(content.size()));
    head.insert(head.end(), type.begin(), type.end());
    const std::uint32_t checked = Crc32(0, head.data() + 4, 4);
    Bytes end;
    AppendBigEndian(end, Crc32(checked, content.data(), content.size()));
    output_.Write(head.data(), head.size());
    output_.Write(content.data(), content.size());
    output_.Write(end.data(), end.size());
}

void PngWriter::WriteRows(const std::uint8_t* rows, std::size_t stride, int count)
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

void PngWriter::PackStrip()
{
    Bytes last(strip_.end() - static_cast<std::ptrdiff_t>(rowBytes_), strip_.end());
    jobs_.Add([rows = std::exchange(strip_, {}), above = std::exchange(lastRow_, std::move(last)),
               format = format_, rowBytes = rowBytes_]() mutable {
        return PackRows(std::move(rows), std::move(above), format, rowBytes);
    });
    strip_.reserve(stripRows_ * rowBytes_);
}

void PngWriter::WriteStrip(const OrderedJobs::Result& strip)
{
    checkSum_ = JoinAdler32(checkSum_, strip.checkSum, strip.inputBytes);
    WriteChunk("IDAT", strip.bytes);
}

void PngWriter::Finish()
{
    if (!strip_.empty())
    {
        PackStrip();
    }
    jobs_.Finish();
    Bytes end = EmptyFinalPiece();
    AppendBigEndian(end, checkSum_);
    WriteChunk("IDAT", end);
    WriteChunk("IEND", {});
}

}  // namespace orvane
