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

/// Replaces the faces of a square by those of Square(), or by the fan alone.
void UseFan(OrvGlyph& square);
void UseFanAndTriangle(OrvGlyph& square);

/// A glyph whose corners are all different: sharp, smooth, interior, and interior and smooth, with
/// three different normals and a miter each; its second contour has one vertex, its third none.
/// It has no face.
const OrvGlyph& OddGlyph();

using DrawGlyph = int (OrvGlyph::*)(const ExtrusionData&) const;

/// What a routine sends to OpenGL for each scale, bevel width and set of flags of the golden files,
/// each under a line that tells these numbers.
std::string TextOfDraws(const OrvGlyph& glyph, DrawGlyph draw);

}  // namespace glyph_draws
