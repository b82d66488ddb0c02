// SPDX-License-Identifier: MIT
#include "imaging/Palette.h"

#include "material/ColorVector.h"

#include <cstring>

namespace
{

// Where an entry of the colour table lies. In a mapped file, that address may be odd.
std::size_t EntryOffset(const BITMAPINFO* info, int index)
{
    return info->bmiHeader.biSize + sizeof(RGBQUAD) * static_cast<std::size_t>(index);
}

RGBQUAD Entry(const BITMAPINFO* info, int index)
{
    RGBQUAD entry;
    std::memcpy(&entry, reinterpret_cast<const BYTE*>(info) + EntryOffset(info, index),
                sizeof entry);
    return entry;
}

void StoreAt(BITMAPINFO* info, int index, const void* bytes, std::size_t count)
{
    std::memcpy(reinterpret_cast<BYTE*>(info) + EntryOffset(info, index), bytes, count);
}

// The colour that FillPalette gives to entry i.
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
        StoreAt(info, 0, masks, sizeof masks);
        return;
    }
    for (int i = 0; i < CountPaletteEntries(info); ++i)
    {
        const RGBQUAD entry = EntryFor(bits, i);
        StoreAt(info, i, &entry, sizeof entry);
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
