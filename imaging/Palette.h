// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Bitmaps.h"

class ColorVector;

/// The number of entries in a bitmap's colour table. For 1, 4 and 8 bits this is the number that
/// the header gives, or two to the power of the bit count when the header gives 0 or too many. 0
/// for other bit counts and for null.
int CountPaletteEntries(const BITMAPINFO* info);

/// Fills the colour table or the colour masks of a bitmap with the values that OpenGL's RGBA mode
/// expects. The record must have room for them. The bits of a pixel, from the lowest:
/// - 8 bits per pixel: 3 red, 3 green, 2 blue;
/// - 4 bits: 1 red, 1 green, 1 blue, 1 unused;
/// - 1 bit: black and white;
/// - 16 bits: 5 blue, 5 green, 5 red, as masks.
///
/// Other bit counts have neither a colour table nor masks, so nothing is written.
void FillPalette(BITMAPINFO* info);

/// Finds the entry of the colour table that is nearest to a colour: the entry with the smallest sum
/// of squared differences of red, green and blue, each from 0 to 255. Of equally near entries the
/// first is taken. Writes the entry's red, green and blue into \p color and returns its index.
/// Without a colour table, rounds the colour to 8 bits each and returns -1.
int FindNearestPaletteColor(const BITMAPINFO* info, ColorVector* color);
