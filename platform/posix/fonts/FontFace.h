// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Installed faces: their measures, and their glyphs by way of FreeType.

#include "contours/FaceOutlines.h"
#include "platform/Fonts.h"
#include "platform/posix/fonts/DesignMetrics.h"
#include "platform/posix/fonts/InstalledFonts.h"

#include <ft2build.h>

#include <functional>
#include <memory>
#include <vector>
#include FT_FREETYPE_H

namespace posix
{

/// One glyph at one size.
struct GlyphOutline
{
    std::vector<BYTE> polygons;  ///< made by NativePolygons
    FT_Glyph_Metrics metrics = {};
};

/// Reads a face's tables at the first call and keeps them with it. Null when the file cannot be
/// read or the face has no outlines that could be handed over.
std::shared_ptr<const DesignMetrics> DesignOf(const std::shared_ptr<const InstalledFace>& face);

/// Loads a character's glyph; a missing character's is the font's mark for missing ones. TrueType
/// outlines are hinted by the font's own instructions. \p use is called with it while other threads
/// are kept out. The last glyph of a face is kept, so that asking for the same one again costs
/// nothing.
/// \param code the character's code, for fonts of symbols that know only codes
/// \param outlines what SetProcessOutlines takes
/// \return whether there was a glyph to use
bool UseGlyph(const std::shared_ptr<const InstalledFace>& face, int pixelsPerEm, char32_t character,
              BYTE code, UINT outlines, const std::function<void(const GlyphOutline&)>& use);

/// How many glyphs a face has; 0 when its file cannot be read.
UINT GlyphCountOf(const std::shared_ptr<const InstalledFace>& face);

/// Shows a glyph, at one pixel per design unit, as the font has it (cubic curves made quadratic)
/// and as it is handed over; other threads are kept out meanwhile. What was provided is not kept.
/// \return whether there was a glyph to show
bool InspectGlyph(
    const std::shared_ptr<const InstalledFace>& face, UINT index,
    const std::function<void(const orvane::contours::NativeOutline& own,
                             const orvane::contours::ProvidedOutline& provided)>& show);

/// The number of a character's glyph, 0 when the face lacks it.
WORD GlyphIndexOf(const std::shared_ptr<const InstalledFace>& face, char32_t character, BYTE code);

}  // namespace posix
