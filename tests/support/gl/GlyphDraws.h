// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The glyphs and the draws of the golden files. tests/golden/derive lists the same numbers.

#include "extrude/ExtrusionData.h"
#include "extrude/OrvGlyph.h"
#include "tests/support/gl/GlRecorder.h"

#include <string>

namespace glyph_draws
{

/// The unit square, built from its outline. Its face is a clockwise fan of all corners and a
/// counter-clockwise triangle of three of them.
const OrvGlyph& Square();

/// Replace the faces of a glyph of four corners: UseFanAndTriangle with the faces of Square(),
/// UseFan with the fan alone.
void UseFan(OrvGlyph& glyph);
void UseFanAndTriangle(OrvGlyph& glyph);

/// A glyph whose corners are all different: sharp, smooth, interior, and interior and smooth. Each
/// corner has a miter of its own and three different normals. The second contour has one vertex,
/// the third none. The glyph has no face.
const OrvGlyph& OddGlyph();

using DrawGlyph = int (OrvGlyph::*)(const ExtrusionData&) const;

/// The calls that a routine makes to OpenGL, for each scale, bevel width and set of flags of the
/// golden files. A line with these numbers precedes the calls of each draw.
std::string TextOfDraws(const OrvGlyph& glyph, DrawGlyph draw);

}  // namespace glyph_draws
