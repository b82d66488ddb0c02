// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Bitmaps.h"

class ColorVector;

/// The number of entries in the bitmap's colour table that a search looks at: two to the power of
/// the bit count for 8 bits and fewer, 0 for more.
int CountPaletteEntries(const BITMAPINFO* info);

/// Fills the colour table, or the masks, that OpenGL's RGBA mode expects at a bit count: 8 bits are
/// 3-3-2 with red lowest, 4 bits are one bit of red, green and blue each, 1 bit is black and white,
/// 16 bits are masks of 5-5-5. Nothing at any other. The record has room for them.
void FillPalette(BITMAPINFO* info);

/// The index of the entry nearest to a colour by squared distance, the lowest of equals; writes
/// that entry's red, green and blue back. With no table, -1, and the colour is rounded to 8 bits.
int FindNearestPaletteColor(const BITMAPINFO* info, ColorVector* color);
