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

/// The base of the objects that SelectObject takes. DeviceContexts.cpp guards selections with a
/// lock.
struct GdiObject : HandleObject
{
    explicit GdiObject(GdiKind objectKind) : kind(objectKind) {}

    const GdiKind kind;
    int selections = 0;    ///< the number of device contexts that have it selected
    bool isStock = false;  ///< selected into new device contexts; never deleted
};

/// A description of a font, whose face is chosen when it is used (Fonts.cpp). Derives from
/// GdiObject with GdiKind::Font.
struct Font;

/// A bitmap and its bits (BitmapObject.h). Derives from GdiObject with GdiKind::Bitmap.
struct Bitmap;

/// A memory device context: the objects that are selected into it. Used by one thread at a time.
struct DeviceContext : HandleObject
{
    HFONT font = nullptr;
    HBITMAP bitmap = nullptr;
    int pixelFormat = 0;  ///< an index from 1; 0 when none is set
};

}  // namespace posix
