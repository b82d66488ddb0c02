// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Bitmaps.h"
#include "platform/posix/drawing/GdiObjects.h"

#include <array>
#include <cstddef>
#include <vector>

namespace posix
{

/// A bitmap and its bits, which are not compressed: 1, 4, 8, 16, 24 or 32 bits a pixel, in rows
/// that are padded to four bytes.
struct Bitmap final : GdiObject
{
    Bitmap() : GdiObject(GdiKind::Bitmap) {}

    /// The first byte of the row \p y, counted from the bottom row, 0.
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
    BYTE* bits = nullptr;          ///< in \c memory
    std::shared_ptr<void> memory;  ///< keeps the bits: an allocation or a mapped file
    std::array<DWORD, 3> masks{};  ///< red, green, blue; for 16 and 32 bits only
    std::vector<RGBQUAD> colors;   ///< the colour table; for 8 bits and fewer only
    HANDLE section = nullptr;      ///< the file mapping that CreateDIBSection was given, if any
    DWORD offset = 0;              ///< of the bits in that mapping, bytes
};

/// Makes a bitmap from a description, with its masks or colours but without bits. Null when no
/// bitmap can have this description. Run-length coding (BI_RLE8, BI_RLE4) gives a bitmap of 8 bits.
std::shared_ptr<Bitmap> DescribeBitmap(const BITMAPINFO& info);

/// Allocates the bits, which are zero. False when there is too little memory.
bool AllocateBits(Bitmap& bitmap);

/// The bitmap that is selected into every new device context: one pixel of 1 bit.
HBITMAP StockBitmap();

}  // namespace posix
