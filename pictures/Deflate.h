// SPDX-License-Identifier: MIT
#pragma once

#include "pictures/PictureWriter.h"

#include <cstddef>
#include <cstdint>

namespace orvane
{

/// The end of a piece of a deflate stream.
enum class PieceEnd
{
    Flush,  ///< on a whole byte; another piece follows, which does not refer to this one
    Final   ///< the end of the stream
};

/// Packs bytes as a piece of a deflate stream (RFC 1951). Pieces that were packed separately are
/// joined by writing one after the other.
Bytes Deflate(const std::uint8_t* bytes, std::size_t count, PieceEnd end);

/// The piece that ends a stream without adding bytes.
Bytes EmptyFinalPiece();

/// The two bytes that begin every zlib stream here (RFC 1950): deflate, with a window of 32 KiB.
constexpr std::uint8_t zlibHeader[] = {0x78, 0x01};

/// The check sum at the end of a zlib stream.
std::uint32_t Adler32(const std::uint8_t* bytes, std::size_t count);
/// The check sum of two pieces together, of which the second has \p secondBytes bytes.
std::uint32_t JoinAdler32(std::uint32_t first, std::uint32_t second, std::size_t secondBytes);

/// The check sum of a PNG chunk. \p before is the check sum of the bytes before these, or 0.
std::uint32_t Crc32(std::uint32_t before, const std::uint8_t* bytes, std::size_t count);

/// A whole zlib stream.
Bytes ZlibStream(const std::uint8_t* bytes, std::size_t count);

/// Appends a number, the highest byte first.
void AppendBigEndian(Bytes& bytes, std::uint32_t number);

}  // namespace orvane
