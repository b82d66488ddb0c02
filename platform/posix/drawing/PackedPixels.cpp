// SPDX-License-Identifier: MIT
#include "platform/posix/drawing/PackedPixels.h"

#include <algorithm>

namespace posix
{
namespace
{

// A run has a length and a value. When the length is 0, the second byte is one of these commands
// or, from 3 on, the number of single pixels that follow, padded to an even number of bytes.
constexpr int endOfRow = 0;
constexpr int endOfPicture = 1;
constexpr int skip = 2;

/// The place of the next pixel.
class Cursor
{
public:
    explicit Cursor(Bitmap& bitmap) : bitmap_(bitmap) {}

    bool IsInside() const { return y_ < bitmap_.height; }
    void Put(int index)
    {
        if (x_ < bitmap_.width)
        {
            bitmap_.Row(y_)[x_++] = static_cast<BYTE>(index);
        }
    }
    void EndRow()
    {
        x_ = 0;
        ++y_;
    }
    void Skip(int right, int up)
    {
        x_ += std::min(right, bitmap_.width - x_);
        y_ += std::min(up, bitmap_.height - y_);
    }

private:
    Bitmap& bitmap_;
    int x_ = 0;
    int y_ = 0;
};

/// Pixel \p i of a run, from a byte that holds one pixel of 8 bits or two of 4 bits.
int PixelOf(BYTE byte, int i, bool isFourBit)
{
    return !isFourBit ? byte : i % 2 == 0 ? byte >> 4 : byte & 0x0F;
}

}  // namespace

void UnpackPixels(Bitmap& bitmap, const BYTE* packed, std::size_t size, bool isFourBit)
{
    Cursor cursor(bitmap);
    const BYTE* const end = packed + size;
    while (cursor.IsInside() && end - packed >= 2)
    {
        const int count = packed[0];
        const int code = packed[1];
        packed += 2;
        if (count > 0)
        {
            for (int i = 0; i < count; ++i)
            {
                cursor.Put(PixelOf(static_cast<BYTE>(code), i, isFourBit));
            }
        }
        else if (code == endOfRow)
        {
            cursor.EndRow();
        }
        else if (code == endOfPicture)
        {
            return;
        }
        else if (code == skip)
        {
            if (end - packed < 2)
            {
                return;
            }
            cursor.Skip(packed[0], packed[1]);
            packed += 2;
        }
        else
        {
            const std::ptrdiff_t bytes = isFourBit ? (code + 1) / 2 : code;
            const int perByte = isFourBit ? 2 : 1;
            for (int i = 0; i < code && i / perByte < end - packed; ++i)
            {
                cursor.Put(PixelOf(packed[i / perByte], i, isFourBit));
            }
            packed += std::min(bytes + bytes % 2, end - packed);
        }
    }
}

}  // namespace posix
