// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/Rgb.h"

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>
#include <vector>

/// A picture read back from the bytes of a file, by other means than those that wrote it.
struct DecodedPicture
{
    int width = 0;
    int height = 0;
    std::vector<Rgb> pixels;  ///< rows from the top; empty when the bytes are no such picture

    bool operator==(const DecodedPicture&) const = default;
    const Rgb& At(int x, int y) const { return pixels[static_cast<std::size_t>(y) * width + x]; }
    std::size_t Count(const std::function<bool(const Rgb&)>& wanted) const;
};

/// How a test that fails shows a picture: by its size, not by its pixels.
void PrintTo(const DecodedPicture& picture, std::ostream* out);

/// Where a picture shows something: pixels from left to right and top to bottom, the last ones
/// included. left > right when there is nothing.
struct PixelBox
{
    int left = 0;
    int top = 0;
    int right = -1;
    int bottom = -1;

    int Width() const { return right - left + 1; }
    int Height() const { return bottom - top + 1; }
};

DecodedPicture DecodePng(const std::string& bytes);

/// Uncompressed ones that come bottom-up, of 8 (with 256 colours), 16 (5-5-5), 24 or 32 bits.
DecodedPicture DecodeBmp(const std::string& bytes);

/// Around all pixels of some rows that differ from the picture's first one.
PixelBox BoxOfContent(const DecodedPicture& picture, int firstRow, int lastRow);
PixelBox BoxOfContent(const DecodedPicture& picture);
