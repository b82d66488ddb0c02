// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The measures and glyphs of installed faces, loaded by FreeType. All functions may be called from
/// any thread.

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

/// The measures of a face. The first call reads its tables and keeps the result with the face. Null
/// when the file cannot be read or the face's outlines cannot be handed over.
std::shared_ptr<const DesignMetrics> DesignOf(const std::shared_ptr<const InstalledFace>& face);

/// Loads a character's glyph and calls \p use with it, while other threads wait. For a character
/// that the font lacks, the glyph is the font's mark for missing characters. TrueType outlines are
/// hinted by the font's own instructions. The last glyph of a face is kept, so that loading it
/// again takes no time.
/// \param code the character's code, for symbol fonts, which know only codes
/// \param outlines OUTLINES_AS_IS or OUTLINES_REPAIRED
/// \return whether the glyph could be loaded
bool UseGlyph(const std::shared_ptr<const InstalledFace>& face, int pixelsPerEm, char32_t character,
              BYTE code, UINT outlines, const std::function<void(const GlyphOutline&)>& use);

/// The same for the glyph with a number. False also when the face has fewer glyphs.
bool UseGlyphOfIndex(const std::shared_ptr<const InstalledFace>& face, int pixelsPerEm, UINT index,
                     UINT outlines, const std::function<void(const GlyphOutline&)>& use);

/// The number of a face's glyphs; 0 when its file cannot be read.
UINT GlyphCountOf(const std::shared_ptr<const InstalledFace>& face);

/// Calls \p show with two outlines of a glyph, both at one pixel per design unit: the font's own
/// outline, in which cubic curves have been made quadratic, and the outline that callers get. Other
/// threads wait meanwhile. The second outline is calculated again and not kept.
/// \return whether the glyph could be loaded
bool InspectGlyph(
    const std::shared_ptr<const InstalledFace>& face, UINT index,
    const std::function<void(const orvane::contours::NativeOutline& own,
                             const orvane::contours::ProvidedOutline& provided)>& show);

/// The index of a character's glyph; 0 when the face lacks the character.
WORD GlyphIndexOf(const std::shared_ptr<const InstalledFace>& face, char32_t character, BYTE code);

}  // namespace posix
