// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/OrvGlyph.h"
#include "platform/Fonts.h"

#include <cstdint>
#include <memory>

namespace orvane
{

class ColorGlyphs;
struct LetterShape;

/// Builds a glyph as OrvFont builds letters. It is invalid when its outline cannot be read.
/// \param font of the face, at one pixel per design unit
std::unique_ptr<OrvGlyph> BuildGlyph(std::uint32_t number, HFONT font, int unitsPerEm);

/// Builds the glyph of a letter: a glyph of its face, turned by the letter's angle, or a part of a
/// coloured glyph. It is invalid when there is none.
std::unique_ptr<OrvGlyph> BuildLetter(const LetterShape& shape, HFONT font, ColorGlyphs& colors);

}  // namespace orvane
