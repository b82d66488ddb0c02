// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Font faces that set texts of any script: their measures, and glyphs and positions for runs of
/// characters. A backend answers with its system's shaper; the POSIX backend uses HarfBuzz.

#include "platform/DeviceContexts.h"
#include "platform/Export.h"
#include "platform/Types.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#if !defined(_WIN32)
/// A format of GetGlyphOutlineA (platform/Fonts.h), used together with GGO_NATIVE or GGO_METRICS:
/// the call takes the number of a glyph, of which all bits count, in place of a character.
constexpr UINT GGO_GLYPH_INDEX = 0x80;
#endif

namespace orvane
{

/// A value on an axis of a variable font.
struct AxisValue
{
    std::string tag;  ///< four letters, such as "wght"
    double value = 0;
};

/// A design axis of a variable font.
struct FaceAxis
{
    std::string tag;
    std::string name;  ///< in English if the font has that, such as "Weight"; may be empty
    double minimum = 0;
    double normal = 0;
    double maximum = 0;
};

/// A named instance of a variable font.
struct FaceInstance
{
    std::string name;
    std::vector<AxisValue> axes;
};

/// A face in a font file.
struct FaceFile
{
    std::string file;
    /// Bits 0 to 15: the number of the face in a collection, from 0. The bits above: the number of
    /// a named instance, from 1, or 0 for the default instance.
    int index = 0;
    /// Axes with values of their own. The others have those of the instance.
    std::vector<AxisValue> axes;
};

/// Measures of a face in ems, y upward.
struct FaceMetrics
{
    double ascent = 0;   ///< of lines, above the baseline
    double descent = 0;  ///< of lines, below the baseline; usually positive
    double lineGap = 0;  ///< more distance between lines
    double capHeight = 0;
    double xHeight = 0;
    int unitsPerEm = 0;
};

/// An OpenType feature that is switched on, off, or to one of its alternatives.
struct FontFeature
{
    std::string tag;  ///< four letters, such as "liga"
    unsigned value = 1;
};

/// Reads a feature: "smcp", "+smcp", "-liga", "liga=0", "salt=2", "kern off". No value for any
/// other text, nor for values above 65,535 and parts of a text, such as "kern[3:5]".
ORVANE_API std::optional<FontFeature> ParseFontFeature(std::string_view text);

/// The four letters of a script (ISO 15924), such as "Latn", as a number, the first letter highest.
using ScriptTag = std::uint32_t;

constexpr ScriptTag MakeScriptTag(const char (&letters)[5])
{
    return static_cast<ScriptTag>(static_cast<unsigned char>(letters[0])) << 24 |
           static_cast<ScriptTag>(static_cast<unsigned char>(letters[1])) << 16 |
           static_cast<ScriptTag>(static_cast<unsigned char>(letters[2])) << 8 |
           static_cast<ScriptTag>(static_cast<unsigned char>(letters[3]));
}

constexpr ScriptTag commonScript = MakeScriptTag("Zyyy");
constexpr ScriptTag inheritedScript = MakeScriptTag("Zinh");
constexpr ScriptTag unknownScript = MakeScriptTag("Zzzz");

/// The script of a character by itself. commonScript and inheritedScript take on the script of
/// their neighbours.
ORVANE_API ScriptTag ScriptOf(char32_t character);

/// The script with these letters. No value for a text that is not four ASCII letters.
ORVANE_API std::optional<ScriptTag> ParseScript(std::string_view letters);

/// Whether a character is a combining mark (general category M).
ORVANE_API bool IsMark(char32_t character);

/// Whether a character stays invisible where no font has it: joiners, variation selectors, marks of
/// direction and other default ignorable characters.
ORVANE_API bool IsIgnorable(char32_t character);

/// The language of the user who runs the process (a BCP 47 tag such as "de-at"), from the
/// environment. Empty when it states none.
ORVANE_API std::string UserLanguage();

/// The number of characters before and after a run that the shape of its glyphs may depend on.
constexpr std::size_t contextSize = 5;

/// Characters of one face, script, language and direction.
struct ShapingRun
{
    const char32_t* text = nullptr;  ///< the whole paragraph: letters join across runs
    std::size_t textSize = 0;        ///< characters
    std::size_t begin = 0;           ///< the run's first character
    std::size_t end = 0;             ///< the character after the run
    ScriptTag script = commonScript;
    std::string language;  ///< a BCP 47 tag; empty for none
    bool isRightToLeft = false;
    std::vector<FontFeature> features;
};

/// A glyph of a shaped run. Lengths are in ems.
struct ShapedGlyph
{
    std::uint32_t glyph = 0;    ///< its number in the face; 0 is the mark for missing characters
    std::uint32_t cluster = 0;  ///< the first character that it belongs to, counted in the text
    double advance = 0;         ///< the way to the next glyph
    double x = 0;               ///< the glyph's place, from where the glyph before it ended
    double y = 0;
    /// Whether the text may be split before this glyph's cluster without shaping the parts anew.
    bool isSafeToBreak = true;
};

/// The box around a glyph in ems, from the glyph's origin, y upward.
struct GlyphBox
{
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
};

/// A part of a coloured glyph: another glyph of the face, filled with one colour.
struct ColorLayer
{
    std::uint32_t glyph = 0;
    /// Whether the layer has the colour that the text has where glyphs have none of their own.
    bool usesTextColor = false;
    double red = 0;  ///< from 0 to 1 in sRGB, like the others; without meaning with usesTextColor
    double green = 0;
    double blue = 0;
    double alpha = 1;  ///< 0 is invisible; multiplies the text's opacity with usesTextColor
};

/// A face opened for shaping. It never changes, and any thread may use it. Faces that are opened
/// twice are the same object while it lives.
class ORVANE_API ShapingFace
{
public:
    /// Opens a face with outlines. Returns null when that fails and says why in \p problem, as in
    /// "no font file".
    /// \param notices receives a text for each axis that the face does not have, and for each value
    ///        that was out of range and became the nearest that the face allows; may be null
    static std::shared_ptr<const ShapingFace> Open(const FaceFile& file, std::string* problem,
                                                   std::vector<std::string>* notices = nullptr);
    /// The number of faces in a file; 0 when it is no font file.
    static int CountFaces(const std::string& file);

    ~ShapingFace();
    ShapingFace(const ShapingFace&) = delete;
    ShapingFace& operator=(const ShapingFace&) = delete;

    /// A number that no other face in the process ever has.
    std::uint64_t Id() const;
    const FaceFile& File() const;
    /// Names in UTF-8, in English if the font has that. Texts may be empty.
    std::string FamilyName() const;
    std::string StyleName() const;
    std::string FullName() const;
    int Weight() const;  ///< 1 to 1000; 400 is regular, 700 bold
    bool IsItalic() const;
    const FaceMetrics& Metrics() const;
    const std::vector<FaceAxis>& Axes() const;
    const std::vector<FaceInstance>& Instances() const;
    /// The value of each axis in this face, in the order of Axes.
    const std::vector<AxisValue>& AxisValues() const;

    /// All characters that the face has, sorted.
    std::vector<char32_t> Characters() const;
    /// The tags of all OpenType features of the face, sorted, each once.
    std::vector<std::string> Features() const;

    /// The number of a character's glyph; 0 when the face lacks the character.
    std::uint32_t GlyphOf(char32_t character) const;
    /// Whether the face can show a character with its marks, or any other characters that belong
    /// together. Ignorable characters do not count. A letter may be composed of others that the
    /// face has.
    bool Covers(const char32_t* characters, std::size_t count) const;

    /// The box that the font states for a glyph, at the face's axes. No value for a glyph without
    /// an outline, such as a space.
    std::optional<GlyphBox> BoxOf(std::uint32_t glyph) const;

    /// The glyphs of a run in the order in which they stand from left to right.
    /// Positions are whole design units, as numbers of ems. Throws
    /// std::length_error when the font makes more glyphs of the run than limits::MaxGlyphs, or the
    /// shaper lacks memory for them.
    std::vector<ShapedGlyph> Shape(const ShapingRun& run) const;

    /// The layers of a coloured glyph from the lowest to the highest, in the colours of the font's
    /// first palette. Empty for a glyph of one colour, for one with more than
    /// limits::maxColorLayers, with a colour that the palette lacks, or with gradients and
    /// transforms, which version 1 of the table "COLR" has (OpenType).
    std::vector<ColorLayer> ColorLayers(std::uint32_t glyph) const;

    /// Makes a font of this face, instance and axes for GetGlyphOutlineA, which then takes glyph
    /// numbers with GGO_GLYPH_INDEX. \p height is as in LOGFONTA::lfHeight. The caller ends the
    /// font with DeleteObject. Null when the face's outlines cannot be handed over.
    HFONT MakeFont(LONG height) const;

private:
    struct Parts;
    explicit ShapingFace(std::unique_ptr<Parts> parts);

    std::unique_ptr<const Parts> parts_;
};

}  // namespace orvane
