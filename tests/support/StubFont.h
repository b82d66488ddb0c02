// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// A font without a platform font. Its four glyphs have simple sizes, so that layouts can be worked
/// out by hand.

#include "extrude/OrvFont.h"

class OrvGlyph;

/// Characters A to D on an em of 1000 units, already built:
///
///     A  advance 500   a square from 0 to 1 em
///     B  advance 250   a box from -0.25 to 0.5 em in y
///     C  advance 750   the square of A
///     D  advance 1000  nothing, like a space; the default character
class StubFont : public OrvFont
{
public:
    explicit StubFont(const char* name = "Stub");

    using OrvFont::ConstructOrvGlyph;
    using OrvFont::GetGlyphAdvanceWidth;
    using OrvFont::LookupGlyphIndex;

    static int IndexOf(char character) { return character - 'A'; }
    OrvGlyph* Glyph(char character) const { return glyphs.GetAt(IndexOf(character)); }

    OUTLINETEXTMETRICA metrics = {};
};
