// SPDX-License-Identifier: MIT
#include "tests/support/StubFont.h"

#include "extrude/OrvGlyph.h"
#include "tests/support/GlyphShapes.h"

namespace
{
constexpr UINT em = 1000;

OrvGlyph* Built(TTGlyph outline, SHORT advance)
{
    GLYPHMETRICS metrics = {};
    metrics.gmCellIncX = advance;
    OrvGlyph* const glyph = new OrvGlyph(0, metrics);
    glyph->FromTTGlyph(outline, em);
    return glyph;
}
}  // namespace

StubFont::StubFont(const char* name)
{
    fullName = name;
    textMetric.tmFirstChar = 'A';
    textMetric.tmLastChar = textMetric.tmDefaultChar = 'D';
    metrics.otmEMSquare = em;
    outlineMetrics = &metrics;
    SetGlyphCount();
    glyphs.SetAt(0, Built(SquareGlyph(), 500));
    glyphs.SetAt(1,
                 Built(MakeGlyph({{On(0, -250), On(0, 500), On(250, 500), On(250, -250)}}), 250));
    glyphs.SetAt(2, Built(SquareGlyph(), 750));
    glyphs.SetAt(3, Built(EmptyGlyph(), 1000));
}
