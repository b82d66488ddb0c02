// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Bitmaps.h"
#include "platform/posix/drawing/GdiObjects.h"

#include <array>
#include <cstddef>
#include <vector>

namespace posix
{

/// A bitmap and its bits, uncompressed, of 1, 4, 8, 16, 24 or 32 bits a pixel. Rows are padded to
/// four bytes.
struct Bitmap final : GdiObject
{
    Bitmap() : GdiObject(GdiKind::Bitmap) {}

    /// The row that is \p y above the bottom.
    BYTE* Row(int y) const
    {
        return bits + rowBytes * static_cast<std::size_t>(isTopDown ? height - 1 - y : y);
    }
    std::size_t Size() const { return rowBytes * static_cast<std::size_t>(height); }

    int width = 0;
    int height = 0;
    bool isTopDown = false;
    int bitCount = 0;
    std::size_t rowBytes = 0;
    BYTE* bits = nullptr;          ///< in what \c memory keeps
    std::shared_ptr<void> memory;  ///< the bits' own memory, or the mapping that holds them
    std::array<DWORD, 3> masks{};  ///< red, green, blue; of 16 and 32 bits
    std::vector<RGBQUAD> colors;   ///< of 8 bits and fewer
    HANDLE section = nullptr;      ///< the mapping and the offset it was made with
    DWORD offset = 0;
};

/// The bitmap of that description, with its masks or colours but without bits; null when there is
/// no such bitmap. A packed one (BI_RLE8, BI_RLE4) becomes one of 8 bits.
std::shared_ptr<Bitmap> DescribeBitmap(const BITMAPINFO& info);

/// Zeroed bits in memory. False when there is none.
bool AllocateBits(Bitmap& bitmap);

/// The bitmap that every device context has selected at first, 1 by 1, of 1 bit.
HBITMAP StockBitmap();

}  // namespace posix
