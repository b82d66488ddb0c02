// SPDX-License-Identifier: MIT
// Lays out a text. The first byte of the input says which: an even one, that the rest of the input
// is a font file in which a fixed text is set; an odd one, that the rest is a text, which is set in
// a sound font.
#include "fuzz/Check.h"
#include "fuzz/InputFile.h"
#include "orvane/Error.h"
#include "shaping/FontQuery.h"
#include "shaping/TextShaper.h"

#include <cmath>
#include <string_view>

namespace
{

using namespace orvane;

// Letters of the fonts in the corpus, marks, ligatures, two directions, and scripts with rules of
// their own.
constexpr std::string_view fixedText =
    "AVffi A\u0301 \u0627\u0644\u0633\u0644\u0627\u0645 A \u0915\u094D\u0937\u093F\n"
    "\u0E01\u0E33\u0E49\t\u1780\u17D2\u1784 \uD55C \u05E9\u05C1A 1/2";

bool IsFinite(const PlacedGlyph& glyph)
{
    return std::isfinite(glyph.x) && std::isfinite(glyph.y) && std::isfinite(glyph.advance);
}

void CheckLayout(std::string_view text, const TextLayout& layout)
{
    Check(!layout.lines.empty(), "a text has a line at least");
    std::size_t next = 0;
    std::size_t end = 0;
    for (const TextLine& line : layout.lines)
    {
        Check(line.firstGlyph == next, "lines have all glyphs");
        Check(line.textBegin >= end && line.textEnd >= line.textBegin, "lines follow each other");
        end = line.textEnd;
        next += line.glyphCount;
        Check(next <= layout.glyphs.size(), "lines have no more glyphs than there are");
        for (std::size_t n = line.firstGlyph; n < next; ++n)
        {
            const PlacedGlyph& glyph = layout.glyphs[n];
            Check(glyph.face < layout.faces.size(), "glyphs have a face");
            Check(glyph.textBegin >= line.textBegin && glyph.textBegin < glyph.textEnd &&
                      glyph.textEnd <= text.size(),
                  "glyphs stand for characters of their line");
            Check(IsFinite(glyph), "places are numbers");
        }
    }
    Check(next == layout.glyphs.size(), "no glyph is in no line");
    Check(end <= text.size(), "lines end with the text");
}

/// Lays out a text in several ways. \p choice chooses among options that exclude each other.
void SetText(std::string_view text, LayoutOptions& options, unsigned choice)
{
    options.style.fonts.usesInstalledFonts = false;
    options.style.language = (choice & 1) != 0 ? "sr" : "en";
    options.direction = static_cast<TextDirection>(choice / 2 % 3);
    options.alignment = static_cast<LineAlignment>(choice / 6 % 5);
    TextShaper shaper;
    const TextLayout whole = shaper.LayOut(text, options);
    CheckLayout(text, whole);
    Check(shaper.LayOut(text, options).glyphs.size() == whole.glyphs.size(),
          "kept runs give the same glyphs");
    options.style.features = {"smcp", "-liga", "salt=2"};
    options.width = 3;
    options.breaksWords = (choice & 1) != 0;
    CheckLayout(text, shaper.LayOut(text, options));
}

void UseFont(const std::string& file, unsigned choice)
{
    FontQuery query;
    query.file = file;
    query.weight = 650;
    query.axes = {{"wdth", 80}};
    for (query.index = 0; query.index < std::min(ShapingFace::CountFaces(file), 2); ++query.index)
    {
        const auto face = OpenFont(query).face;
        static_cast<void>(face->FullName() + face->FamilyName() + face->StyleName());
        static_cast<void>(face->Features());
        static_cast<void>(face->Characters());
        LayoutOptions options;
        options.style.fonts.faces = {face};
        SetText(fixedText, options, choice);
        constexpr std::uint32_t someGlyphs = 24;
        for (std::uint32_t glyph = 0; glyph < someGlyphs; ++glyph)
        {
            face->BoxOf(glyph);
        }
    }
}

std::shared_ptr<const ShapingFace> SoundFace()
{
    FontQuery query;
    query.name = "DejaVu Sans";
    return OpenFont(query).face;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* bytes, std::size_t count)
{
    static InputFile input("input.ttf");
    static const auto sound = SoundFace();
    if (count == 0)
    {
        return 0;
    }
    try
    {
        if (bytes[0] % 2 == 0)
        {
            UseFont(input.Fill(bytes + 1, count - 1), bytes[0] / 2);
            return 0;
        }
        LayoutOptions options;
        options.style.fonts.faces = {sound};
        SetText({reinterpret_cast<const char*>(bytes) + 1, count - 1}, options, bytes[0] / 2);
    }
    catch (const Error&)
    {}
    return 0;
}
