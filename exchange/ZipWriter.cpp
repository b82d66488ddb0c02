// SPDX-License-Identifier: MIT
#include "exchange/ZipWriter.h"

#include "orvane/Error.h"

#include <zlib.h>

#include <algorithm>
#include <limits>

namespace orvane
{

namespace
{

constexpr std::uint32_t localHeader = 0x04034B50;
constexpr std::uint32_t dataDescriptor = 0x08074B50;
constexpr std::uint32_t centralHeader = 0x02014B50;
constexpr std::uint32_t endOfContents = 0x06054B50;
constexpr std::uint16_t version = 20;  // 2.0, the first with deflate
/// Checksum and sizes follow the file instead of preceding it; names are UTF-8.
constexpr std::uint16_t flags = 0x0808;
constexpr std::uint16_t deflateMethod = 8;
constexpr std::uint16_t noTime = 0;
constexpr std::uint16_t date = 1 << 5 | 1;  // day 1 of month 1 of 1980

}  // namespace

struct ZipWriter::Deflater
{
    Deflater()
    {
        // Negative bits of the window: without zlib's own header.
        if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL,
                         Z_DEFAULT_STRATEGY) != Z_OK)
        {
            throw std::bad_alloc();
        }
    }
    ~Deflater() { deflateEnd(&stream); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    z_stream stream = {};
};

ZipWriter::ZipWriter(ByteSink& sink) : out_(sink) {}

ZipWriter::~ZipWriter() = default;

void ZipWriter::Emit(const void* bytes, std::size_t count)
{
    out_.Bytes(bytes, count);
    written_ += count;
}

void ZipWriter::EmitNumbers(std::initializer_list<std::uint32_t> numbers32)
{
    for (const std::uint32_t number : numbers32)
    {
        out_.LittleEndian(number);
        written_ += sizeof(number);
    }
}

void ZipWriter::EmitShorts(std::initializer_list<std::uint16_t> numbers16)
{
    for (const std::uint16_t number : numbers16)
    {
        out_.LittleEndian(number);
        written_ += sizeof(number);
    }
}

void ZipWriter::BeginFile(const std::string& name)
{
    Entry& entry = entries_.emplace_back();
    entry.name = name;
    entry.offset = written_;
    entry.checksum = static_cast<std::uint32_t>(crc32(0, nullptr, 0));
    deflater_ = std::make_unique<Deflater>();
    EmitNumbers({localHeader});
    EmitShorts({version, flags, deflateMethod, noTime, date});
    EmitNumbers({0, 0, 0});  // checksum and sizes come later
    EmitShorts({static_cast<std::uint16_t>(name.size()), 0});
    Emit(name.data(), name.size());
}

void ZipWriter::Write(const void* bytes, std::size_t count)
{
    Compress(bytes, count, false);
}

void ZipWriter::Compress(const void* bytes, std::size_t count, bool isLast)
{
    Entry& entry = entries_.back();
    z_stream& stream = deflater_->stream;
    const auto* next = static_cast<const unsigned char*>(bytes);
    entry.bytes += count;
    do
    {
        const auto part = static_cast<uInt>(std::min<std::size_t>(count, 1u << 30));
        entry.checksum = static_cast<std::uint32_t>(crc32(entry.checksum, next, part));
        stream.next_in = const_cast<unsigned char*>(next);  // zlib only reads it
        stream.avail_in = part;
        next += part;
        count -= part;
        do
        {
            unsigned char packed[32768];
            stream.next_out = packed;
            stream.avail_out = sizeof(packed);
            deflate(&stream, isLast && count == 0 ? Z_FINISH : Z_NO_FLUSH);
            const std::size_t packedBytes = sizeof(packed) - stream.avail_out;
            entry.packedBytes += packedBytes;
            Emit(packed, packedBytes);
        } while (stream.avail_out == 0);
    } while (count > 0);
}

void ZipWriter::EndFile()
{
    Compress("", 0, true);
    deflater_.reset();
    CheckSize();
    const Entry& entry = entries_.back();
    EmitNumbers({dataDescriptor, entry.checksum, static_cast<std::uint32_t>(entry.packedBytes),
                 static_cast<std::uint32_t>(entry.bytes)});
}

void ZipWriter::CheckSize() const
{
    constexpr std::uint64_t most = std::numeric_limits<std::uint32_t>::max() - 65536;
    const std::uint64_t largest = std::max(written_, entries_.back().bytes);
    if (largest > most)
    {
        throw Error("ZIP archive", std::to_string(largest) + " bytes",
                    "at most " + std::to_string(most));
    }
}

void ZipWriter::Finish()
{
    const std::uint64_t contents = written_;
    for (const Entry& entry : entries_)
    {
        EmitNumbers({centralHeader});
        EmitShorts({version, version, flags, deflateMethod, noTime, date});
        EmitNumbers({entry.checksum, static_cast<std::uint32_t>(entry.packedBytes),
                     static_cast<std::uint32_t>(entry.bytes)});
        EmitShorts({static_cast<std::uint16_t>(entry.name.size()), 0, 0, 0, 0});
        EmitNumbers({0, static_cast<std::uint32_t>(entry.offset)});
        Emit(entry.name.data(), entry.name.size());
    }
    const auto count = static_cast<std::uint16_t>(entries_.size());
    const auto length = static_cast<std::uint32_t>(written_ - contents);
    EmitNumbers({endOfContents});
    EmitShorts({0, 0, count, count});
    EmitNumbers({length, static_cast<std::uint32_t>(contents)});
    EmitShorts({0});
    out_.Flush();
}

}  // namespace orvane
