// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// BMP files, byte by byte.

#include "tests/support/RecordBytes.h"

#include <cstdlib>

/// What a BMP file says. Fields that are 0 here are worked out from the others.
struct BmpFile
{
    int width = 0;
    int height = 0;
    WORD bitCount = 24;
    DWORD compression = 0;
    Bytes behindHeader = {};  ///< colours or masks
    Bytes pixels = {};
    DWORD colorsUsed = 0;
    DWORD imageSize = 0;
    LONG dotsPerMetre = 0;
    DWORD headerSize = 40;
    DWORD bitsOffset = 0;
    WORD planes = 1;

    /// The header, what is behind it, and the pixels.
    Bytes Packed() const
    {
        return RecordBytes()
            .Dword(headerSize)
            .Long(width)
            .Long(height)
            .Word(planes)
            .Word(bitCount)
            .Dword(compression)
            .Dword(imageSize != 0 ? imageSize : static_cast<DWORD>(pixels.size()))
            .Long(dotsPerMetre)
            .Long(dotsPerMetre)
            .Dword(colorsUsed)
            .Dword(0)
            .Raw(behindHeader.data(), behindHeader.size())
            .Raw(pixels.data(), pixels.size())
            .Get();
    }
    Bytes File() const
    {
        const Bytes packed = Packed();
        const DWORD offset =
            bitsOffset != 0 ? bitsOffset : static_cast<DWORD>(54 + behindHeader.size());
        return RecordBytes()
            .Word(0x4D42)
            .Dword(static_cast<DWORD>(14 + packed.size()))
            .Dword(0)
            .Dword(offset)
            .Raw(packed.data(), packed.size())
            .Get();
    }
};

/// One pixel of colour 3, with a table of 256 colours of which each byte is 9.
inline BmpFile OnePixelOf8Bits()
{
    BmpFile file;
    file.width = 1;
    file.height = 1;
    file.bitCount = 8;
    file.behindHeader = Bytes(1024, 9);
    file.pixels = {3, 0, 0, 0};
    return file;
}

/// Two pixels of 24 bits side by side: blue, then red.
inline BmpFile BlueAndRed()
{
    BmpFile file;
    file.width = 2;
    file.height = 1;
    file.pixels = {255, 0, 0, 0, 0, 255, 0, 0};
    return file;
}
