// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Bitmaps in tests.

#include "platform/Bitmaps.h"

#include <cstring>
#include <vector>

/// A description with room for 256 colours or three masks behind it.
struct BitmapDescription
{
    BITMAPINFOHEADER header{};
    RGBQUAD colors[256] = {};

    BitmapDescription(int width, int height, int bitCount)
    {
        header.biSize = sizeof header;
        header.biWidth = width;
        header.biHeight = height;
        header.biPlanes = 1;
        header.biBitCount = static_cast<WORD>(bitCount);
    }
    void SetMasks(DWORD red, DWORD green, DWORD blue)
    {
        header.biCompression = BI_BITFIELDS;
        const DWORD masks[] = {red, green, blue};
        std::memcpy(colors, masks, sizeof masks);
    }
    const BITMAPINFO* Info() const { return reinterpret_cast<const BITMAPINFO*>(this); }
};

/// A bitmap that is selected into a device context of its own; both end with it.
struct SelectedBitmap
{
    explicit SelectedBitmap(const BitmapDescription& description)
    {
        void* address = nullptr;
        bitmap = CreateDIBSection(dc, description.Info(), DIB_RGB_COLORS, &address, nullptr, 0);
        bits = static_cast<BYTE*>(address);
        previous = SelectObject(dc, bitmap);
    }
    ~SelectedBitmap()
    {
        DeleteDC(dc);
        DeleteObject(bitmap);
    }
    SelectedBitmap(const SelectedBitmap&) = delete;
    SelectedBitmap& operator=(const SelectedBitmap&) = delete;

    std::vector<int> Bytes(int first, int count) const
    {
        return std::vector<int>(bits + first, bits + first + count);
    }

    HDC dc = CreateCompatibleDC(nullptr);
    HBITMAP bitmap = nullptr;
    HGDIOBJ previous = nullptr;
    BYTE* bits = nullptr;
};
