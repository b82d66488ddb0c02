// SPDX-License-Identifier: MIT
#include "imaging/Palette.h"

#include "material/ColorVector.h"

#include <cstring>

namespace
{

BYTE* Table(BITMAPINFO* info)
{
    return reinterpret_cast<BYTE*>(info) + info->bmiHeader.biSize;
}

RGBQUAD Entry(const BITMAPINFO* info, int index)
{
    // The table of a mapped file lies at any address.
    RGBQUAD entry;
    std::memcpy(&entry,
                reinterpret_cast<const BYTE*>(info) + info->bmiHeader.biSize +
                    sizeof entry * static_cast<std::size_t>(index),
                sizeof entry);
    return entry;
}

RGBQUAD EntryFor(int bits, int i)
{
    const auto quad = [](int red, int green, int blue) {
        return RGBQUAD{static_cast<BYTE>(blue), static_cast<BYTE>(green), static_cast<BYTE>(red),
                       0};
    };
    switch (bits)
    {
        case 8:
            return quad((i & 7) * 255 / 7, ((i >> 3) & 7) * 255 / 7, (i >> 6) * 255 / 3);
        case 4:
            return quad((i & 1) * 255, ((i >> 1) & 1) * 255, ((i >> 2) & 1) * 255);
        default:
            return quad(i * 255, i * 255, i * 255);
    }
}

}  // namespace

int CountPaletteEntries(const BITMAPINFO* info)
{
    const int bits = info != nullptr ? info->bmiHeader.biBitCount : 0;
    if (bits != 1 && bits != 4 && bits != 8)
    {
        return 0;
    }
    const DWORD used = info->bmiHeader.biClrUsed;
    return used != 0 && used < DWORD{1} << bits ? static_cast<int>(used) : 1 << bits;
}

void FillPalette(BITMAPINFO* info)
{
    const int bits = info->bmiHeader.biBitCount;
    if (bits == 16)
    {
        const DWORD masks[3] = {0x7C00, 0x03E0, 0x001F};
        std::memcpy(Table(info), masks, sizeof masks);
        return;
    }
    for (int i = 0; i < CountPaletteEntries(info); ++i)
    {
        const RGBQUAD entry = EntryFor(bits, i);
        std::memcpy(Table(info) + sizeof entry * static_cast<std::size_t>(i), &entry, sizeof entry);
    }
}

int FindNearestPaletteColor(const BITMAPINFO* info, ColorVector* color)
{
    const DWORD wanted = static_cast<DWORD>(color->GetColorRef());
    const auto distance = [wanted](const RGBQUAD& entry) {
        const int red = static_cast<int>(wanted & 0xFF) - entry.rgbRed;
        const int green = static_cast<int>(wanted >> 8 & 0xFF) - entry.rgbGreen;
        const int blue = static_cast<int>(wanted >> 16 & 0xFF) - entry.rgbBlue;
        return red * red + green * green + blue * blue;
    };
    int nearest = -1;
    for (int i = 0; i < CountPaletteEntries(info); ++i)
    {
        if (nearest < 0 || distance(Entry(info, i)) < distance(Entry(info, nearest)))
        {
            nearest = i;
        }
    }
    if (nearest < 0)
    {
        *color = static_cast<unsigned long>(wanted);
    }
    else
    {
        const RGBQUAD entry = Entry(info, nearest);
        *color =
            static_cast<unsigned long>(entry.rgbRed | entry.rgbGreen << 8 | entry.rgbBlue << 16);
    }
    return nearest;
}
