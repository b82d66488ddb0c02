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

}  // namespace

PackedRows::PackedRows(int width, int height, const BYTE* packed, std::size_t size, bool isFourBit)
    : width_(width),
      height_(height),
      isFourBit_(isFourBit),
      begin_(packed),
      end_(packed + size),
      next_(packed),
      row_(static_cast<std::size_t>(width))
{}

const BYTE* PackedRows::Row(int y)
{
    if (y == wanted_)
    {
        return row_.data();
    }
    if (y < wanted_)
    {
        next_ = begin_;
        x_ = y_ = 0;
    }
    wanted_ = y;
    std::fill(row_.begin(), row_.end(), BYTE{0});
    while (y_ <= wanted_ && Step())
    {}
    return row_.data();
}

bool PackedRows::Step()
{
    if (y_ >= height_ || end_ - next_ < 2)
    {
        return false;
    }
    const int count = next_[0];
    const int code = next_[1];
    if (count > 0)
    {
        Put(count, next_ + 1, true);
        next_ += 2;
        return true;
    }
    next_ += 2;
    if (code == endOfRow)
    {
        x_ = 0;
        ++y_;
    }
    else if (code == endOfPicture || (code == skip && end_ - next_ < 2))
    {
        next_ = end_;
        return false;
    }
    else if (code == skip)
    {
        Skip(next_[0], next_[1]);
        next_ += 2;
    }
    else
    {
        const int perByte = isFourBit_ ? 2 : 1;
        const std::ptrdiff_t bytes = (code + perByte - 1) / perByte;
        const std::ptrdiff_t present = std::min(bytes, end_ - next_);
        Put(static_cast<int>(std::min<std::ptrdiff_t>(code, present * perByte)), next_, false);
        next_ += std::min(bytes + bytes % 2, end_ - next_);
    }
    return true;
}

void PackedRows::Put(int count, const BYTE* source, bool isRun)
{
    const int room = std::min(count, width_ - x_);
    BYTE* const out = row_.data() + x_;
    x_ += room;
    if (y_ != wanted_)
    {
        return;
    }
    for (int i = 0; i < room; ++i)
    {
        // A byte holds one pixel of 8 bits or two of 4 bits, the first in the high half.
        const BYTE byte = source[isRun ? 0 : isFourBit_ ? i / 2 : i];
        out[i] = !isFourBit_ ? byte : i % 2 == 0 ? byte >> 4 : byte & 0x0F;
    }
}

void PackedRows::Skip(int right, int up)
{
    x_ += std::min(right, width_ - x_);
    y_ += std::min(up, height_ - y_);
}

}  // namespace posix
