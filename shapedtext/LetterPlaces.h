// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/OrvFont.h"
#include "geometry/DVector.h"

#include <functional>

class ExtrusionData;
class OrvString;

namespace orvane
{

class GlyphSlots;
struct LaidText;
struct LineRoom;

/// The room that a text's bevels and spacings take.
LineRoom RoomOf(const OrvString& text);

/// Calls \p visit with each letter: the first byte of its text, its line, its slot and its place
/// with the scale, the bevels and the spacings of a text, as OrvFont places its letters. Letters on
/// a path get slots of turned letters.
void PlaceGlyphs(const LaidText& laid, const OrvString& text, const ExtrusionData& extrusion,
                 GlyphSlots& slots, const std::function<void(const PlacedLetter&)>& visit);

/// The extents of a text.
struct TextExtents
{
    DVector unscaled;
    DVector scaled;
    double top = 0;  ///< of the scaled text, above its first baseline
    /// The corners of the box around a scaled text on a path, with its bevels, from its origin.
    DVector low;
    DVector high;
};

/// Measures a text as OrvFont::CalculateStringExtents does.
TextExtents MeasureGlyphs(const LaidText& laid, const OrvString& text, GlyphSlots& slots);

}  // namespace orvane
