// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Handles.h"

namespace posix
{

/// Anything that SelectObject takes. \c selections counts the device contexts that hold it.
struct GdiObject : HandleObject
{
    int selections = 0;
};

/// A logical font; what face it means is found when it is used (Fonts.cpp).
struct Font;

/// A bitmap and its bits (Bitmaps.cpp).
struct Bitmap;

/// What a memory device context has selected. Used by one thread at a time.
struct DeviceContext : HandleObject
{
    HFONT font = nullptr;
    HBITMAP bitmap = nullptr;
};

}  // namespace posix
