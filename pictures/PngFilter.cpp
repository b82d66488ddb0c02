// SPDX-License-Identifier: MIT
#include "pictures/PngFilter.h"

#include <algorithm>
#include <cstring>

namespace orvane
{

namespace
{

enum Filter : std::uint8_t
{
    none = 0,
    left = 1,
    up = 2
};

// Loops over a known number of bytes become vector instructions at every level of optimisation.
constexpr std::size_t blockBytes = 64;

constexpr std::uint32_t Cost(std::uint8_t byte)
{
    return byte < 128 ? byte : 256U - byte;
}

/// The sum of the differences between the bytes of two rows. Without a second row, of the bytes.
std::uint64_t SumOf(const std::uint8_t* row, const std::uint8_t* other, std::size_t count)
{
    static constexpr std::uint8_t zeros[blockBytes] = {};
    std::uint64_t sum = 0;
    std::size_t at = 0;
    for (; at + blockBytes <= count; at += blockBytes)
    {
        const std::uint8_t* const a = row + at;
        const std::uint8_t* const b = other != nullptr ? other + at : zeros;
        std::uint32_t blockSum = 0;
        for (std::size_t i = 0; i < blockBytes; ++i)
        {
            blockSum += Cost(static_cast<std::uint8_t>(a[i] - b[i]));
        }
        sum += blockSum;
    }
    for (; at < count; ++at)
    {
        sum += Cost(static_cast<std::uint8_t>(row[at] - (other != nullptr ? other[at] : 0)));
    }
    return sum;
}

void Subtract(const std::uint8_t* row, const std::uint8_t* other, std::size_t count,
              std::uint8_t* out)
{
    std::size_t at = 0;
    for (; at + blockBytes <= count; at += blockBytes)
    {
        std::uint8_t block[blockBytes];
        for (std::size_t i = 0; i < blockBytes; ++i)
        {
            block[i] = static_cast<std::uint8_t>(row[at + i] - other[at + i]);
        }
        std::memcpy(out + at, block, blockBytes);
    }
    for (; at < count; ++at)
    {
        out[at] = static_cast<std::uint8_t>(row[at] - other[at]);
    }
}

}  // namespace

void FilterRow(const std::uint8_t* row, const std::uint8_t* above, std::size_t rowBytes,
               std::size_t pixelBytes, std::uint8_t* out)
{
    if (above != nullptr && std::memcmp(row, above, rowBytes) == 0)
    {
        out[0] = up;
        std::memset(out + 1, 0, rowBytes);
        return;
    }
    const std::uint64_t first = SumOf(row, nullptr, pixelBytes);
    const std::uint64_t plainCost = SumOf(row, nullptr, rowBytes);
    const std::uint64_t leftCost = first + SumOf(row + pixelBytes, row, rowBytes - pixelBytes);
    const std::uint64_t upCost = above != nullptr ? SumOf(row, above, rowBytes) : plainCost;
    if (plainCost <= std::min(leftCost, upCost))
    {
        out[0] = none;
        std::memcpy(out + 1, row, rowBytes);
    }
    else if (upCost <= leftCost)
    {
        out[0] = up;
        Subtract(row, above, rowBytes, out + 1);
    }
    else
    {
        out[0] = left;
        std::memcpy(out + 1, row, pixelBytes);
        Subtract(row + pixelBytes, row, rowBytes - pixelBytes, out + 1 + pixelBytes);
    }
}

}  // namespace orvane
