// SPDX-License-Identifier: MIT
#include "orvane/Error.h"
#include "pictures/Deflate.h"

#include <zlib.h>

#include <limits>
#include <string>

// Packing with zlib, where ISA-L is left out (ORVANE_WITH_ISAL).

namespace orvane
{

Bytes Deflate(const std::uint8_t* bytes, std::size_t count, PieceEnd end)
{
    if (count > std::numeric_limits<uInt>::max() / 2)
    {
        throw Error("deflate", std::to_string(count) + " bytes in a piece, expected below 2 GiB");
    }
    constexpr int rawWindowBits = -15;  // a window of 32 KiB, without the header of zlib
    constexpr int memoryLevel = 8;
    z_stream stream{};
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, rawWindowBits, memoryLevel,
                     Z_DEFAULT_STRATEGY) != Z_OK)
    {
        throw Error("deflate", "out of memory");
    }
    // The bound is that of a finished stream. A flush adds at most six bytes more.
    Bytes packed(deflateBound(&stream, static_cast<uLong>(count)) + 16);
    stream.next_in = const_cast<Bytef*>(bytes);
    stream.avail_in = static_cast<uInt>(count);
    stream.next_out = packed.data();
    stream.avail_out = static_cast<uInt>(packed.size());
    const int result = deflate(&stream, end == PieceEnd::Final ? Z_FINISH : Z_FULL_FLUSH);
    const bool isPacked = result == (end == PieceEnd::Final ? Z_STREAM_END : Z_OK);
    packed.resize(packed.size() - stream.avail_out);
    deflateEnd(&stream);
    if (!isPacked)
    {
        throw Error("deflate", "the rows of a picture could not be packed");
    }
    return packed;
}

std::uint32_t Adler32(const std::uint8_t* bytes, std::size_t count)
{
    return static_cast<std::uint32_t>(adler32_z(1, bytes, count));
}

std::uint32_t Crc32(std::uint32_t before, const std::uint8_t* bytes, std::size_t count)
{
    return static_cast<std::uint32_t>(crc32_z(before, bytes, count));
}

}  // namespace orvane
