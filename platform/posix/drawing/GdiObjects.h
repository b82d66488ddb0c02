// SPDX-License-Identifier: MIT
#pragma once

#include "platform/posix/Handles.h"

namespace posix
{

enum class GdiKind
{
    Font,
    Bitmap
};

/// Anything that SelectObject takes. Only DeviceContexts.cpp touches the two variables.
struct GdiObject : HandleObject
{
    explicit GdiObject(GdiKind objectKind) : kind(objectKind) {}

    const GdiKind kind;
    int selections = 0;    ///< the device contexts that hold it
    bool isStock = false;  ///< selected at first; never deleted, and held by any number at a time
};

/// A logical font; what face it means is found when it is used (Fonts.cpp). Derives from GdiObject
/// with GdiKind::Font.
struct Font;

/// A bitmap and its bits (BitmapObject.h). Derives from GdiObject with GdiKind::Bitmap.
struct Bitmap;

/// What a memory device context has selected. Used by one thread at a time.
struct DeviceContext : HandleObject
{
    HFONT font = nullptr;
    HBITMAP bitmap = nullptr;
    int pixelFormat = 0;  ///< none is set
};

}  // namespace posix
