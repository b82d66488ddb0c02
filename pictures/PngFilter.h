// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace orvane
{

/// Writes a row of a PNG: the number of a filter, and the filtered bytes. Of the filters that take
/// no byte, the byte to the left and the byte above, it takes the one whose bytes have the smallest
/// sum when they are read as signed numbers, because these usually take the fewest bits.
/// \param above the row above, or null for the first row of a picture
/// \param pixelBytes the distance to the byte to the left
/// \param out takes rowBytes + 1 bytes
void FilterRow(const std::uint8_t* row, const std::uint8_t* above, std::size_t rowBytes,
               std::size_t pixelBytes, std::uint8_t* out);

}  // namespace orvane
