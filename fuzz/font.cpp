// SPDX-License-Identifier: MIT
// Reads the input as a font file: its measures, its first glyphs, and letters built of them.
#include "fuzz/InputFile.h"
#include "orvane.h"
#include "platform/posix/fonts/FontFace.h"
#include "platform/posix/fonts/GlyphPolygons.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace
{

// Enough for every kind of glyph in a small font; a font may have 65,535.
constexpr UINT maxGlyphs = 24;

void BuildLetter(std::vector<BYTE> polygons)
{
    TTGlyph outline;
    outline.FromGlyphOutline(polygons.data(), static_cast<unsigned long>(polygons.size()));
    OrvGlyph glyph(polygons.size(), GLYPHMETRICS{});
    glyph.ConstructGlyph(outline, 1000.0f);
}

void ReadFace(const std::string& path, posix::OutlineKind kind)
{
    const auto face = std::make_shared<posix::InstalledFace>();
    face->file = path;
    face->kind = kind;
    posix::DesignOf(face);
    for (UINT index = 0; index < std::min(posix::GlyphCountOf(face), maxGlyphs); ++index)
    {
        posix::InspectGlyph(face, index, [](const auto& own, const auto& provided) {
            BuildLetter(posix::NativePolygons(provided.outline ? *provided.outline : own));
        });
    }
    posix::UseGlyph(face, 64, U'A', 'A', OUTLINES_REPAIRED,
                    [](const posix::GlyphOutline& glyph) { BuildLetter(glyph.polygons); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    static const InputFile input("input.ttf");
    const std::string& path = input.Fill(bytes, count);
    ReadFace(path, posix::OutlineKind::TrueType);
    ReadFace(path, posix::OutlineKind::Cubic);
    return 0;
}
