// SPDX-License-Identifier: MIT
#include "pictures/Deflate.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <string>

using orvane::Bytes;
using orvane::PieceEnd;

namespace
{

Bytes MakeNoise(std::size_t count)
{
    Bytes bytes(count);
    std::uint32_t number = 7;
    for (std::uint8_t& byte : bytes)
    {
        number = number * 1664525 + 1013904223;
        byte = static_cast<std::uint8_t>(number >> 24);
    }
    return bytes;
}

/// The bytes in a zlib stream as zlib unpacks them; none when the stream is damaged.
Bytes Unpack(const Bytes& stream, std::size_t count)
{
    Bytes bytes(count + 1);
    uLongf unpacked = bytes.size();
    const int result =
        uncompress(bytes.data(), &unpacked, stream.data(), static_cast<uLong>(stream.size()));
    bytes.resize(result == Z_OK ? unpacked : 0);
    return bytes;
}

void Append(Bytes& bytes, const Bytes& more)
{
    bytes.insert(bytes.end(), more.begin(), more.end());
}

}  // namespace

TEST(Deflate, PiecesJoinToOneStreamWithOneCheckSum)
{
    const Bytes first = MakeNoise(300000);
    const Bytes second(70000, 9);
    Bytes stream(std::begin(orvane::zlibHeader), std::end(orvane::zlibHeader));
    Append(stream, orvane::Deflate(first.data(), first.size(), PieceEnd::Flush));
    Append(stream, orvane::Deflate(second.data(), second.size(), PieceEnd::Flush));
    Append(stream, orvane::EmptyFinalPiece());
    orvane::AppendBigEndian(
        stream, orvane::JoinAdler32(orvane::Adler32(first.data(), first.size()),
                                    orvane::Adler32(second.data(), second.size()), second.size()));
    Bytes both = first;
    Append(both, second);
    EXPECT_TRUE(Unpack(stream, both.size()) == both);
}

TEST(Deflate, BytesThatCannotBePackedAreStored)
{
    for (const std::size_t count : {0, 1, 100, 65536, 1000000})
    {
        const Bytes noise = MakeNoise(count);
        const Bytes stream = orvane::ZlibStream(noise.data(), noise.size());
        EXPECT_TRUE(Unpack(stream, count) == noise) << count;
        EXPECT_LT(stream.size(), count + count / 100 + 100);
    }
}

TEST(Deflate, CheckSumsAreThoseOfTheStandards)
{
    // The check sums of "123456789" in the catalogue of parametrised CRC algorithms, and of
    // "Wikipedia" by hand: a is 1 + the sum of the letters, 920; b is the sum of all a, 4582.
    const std::string digits = "123456789";
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(digits.data());
    EXPECT_EQ(orvane::Crc32(0, bytes, digits.size()), 0xCBF43926u);
    EXPECT_EQ(orvane::Crc32(orvane::Crc32(0, bytes, 4), bytes + 4, 5), 0xCBF43926u);
    const std::string word = "Wikipedia";
    EXPECT_EQ(orvane::Adler32(reinterpret_cast<const std::uint8_t*>(word.data()), word.size()),
              4582u << 16 | 920u);
    EXPECT_EQ(orvane::Adler32(bytes, 0), 1u);
}
