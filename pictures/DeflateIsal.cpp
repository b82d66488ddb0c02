// SPDX-License-Identifier: MIT
#include "orvane/Error.h"
#include "pictures/Deflate.h"

#include <isa-l/crc.h>
#include <isa-l/igzip_lib.h>

#include <limits>
#include <memory>
#include <string>

// Packing with ISA-L, which is many times as fast as zlib.

namespace orvane
{

Bytes Deflate(const std::uint8_t* bytes, std::size_t count, PieceEnd end)
{
    if (count > std::numeric_limits<std::uint32_t>::max())
    {
        throw Error("deflate", std::to_string(count) + " bytes in a piece, expected below 4 GiB");
    }
    const auto stream = std::make_unique<isal_zstream>();
    Bytes levelBuffer(ISAL_DEF_LVL1_DEFAULT);
    isal_deflate_init(stream.get());
    stream->level = 1;
    stream->level_buf = levelBuffer.data();
    stream->level_buf_size = static_cast<std::uint32_t>(levelBuffer.size());
    stream->gzip_flag = IGZIP_DEFLATE;
    stream->flush = FULL_FLUSH;
    stream->end_of_stream = end == PieceEnd::Final ? 1 : 0;
    // isal_deflate only reads the input; its type is not const.
    stream->next_in = const_cast<std::uint8_t*>(bytes);
    stream->avail_in = static_cast<std::uint32_t>(count);
    Bytes packed(count / 4 + 1024);
    do
    {
        if (stream->total_out == packed.size())
        {
            packed.resize(packed.size() * 2);
        }
        stream->next_out = packed.data() + stream->total_out;
        stream->avail_out = static_cast<std::uint32_t>(packed.size() - stream->total_out);
        if (isal_deflate(stream.get()) != COMP_OK)
        {
            throw Error("deflate", "the rows of a picture could not be packed");
        }
    } while (stream->avail_out == 0);
    packed.resize(stream->total_out);
    return packed;
}

std::uint32_t Adler32(const std::uint8_t* bytes, std::size_t count)
{
    return isal_adler32(1, bytes, count);
}

std::uint32_t Crc32(std::uint32_t before, const std::uint8_t* bytes, std::size_t count)
{
    return crc32_gzip_refl(before, bytes, count);
}

}  // namespace orvane
