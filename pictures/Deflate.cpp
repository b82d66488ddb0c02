// SPDX-License-Identifier: MIT
#include "pictures/Deflate.h"

#include <zlib.h>

#include <iterator>

namespace orvane
{

Bytes EmptyFinalPiece()
{
    return {0x03, 0x00};  // the last block, with fixed codes, and the code that ends a block
}

std::uint32_t JoinAdler32(std::uint32_t first, std::uint32_t second, std::size_t secondBytes)
{
    return static_cast<std::uint32_t>(
        adler32_combine(first, second, static_cast<z_off_t>(secondBytes)));
}

Bytes ZlibStream(const std::uint8_t* bytes, std::size_t count)
{
    Bytes stream(std::begin(zlibHeader), std::end(zlibHeader));
    const Bytes packed = Deflate(bytes, count, PieceEnd::Final);
    stream.insert(stream.end(), packed.begin(), packed.end());
    AppendBigEndian(stream, Adler32(bytes, count));
    return stream;
}

void AppendBigEndian(Bytes& bytes, std::uint32_t number)
{
    for (int shift = 24; shift >= 0; shift -= 8)
    {
        bytes.push_back(static_cast<std::uint8_t>(number >> shift));
    }
}

}  // namespace orvane
