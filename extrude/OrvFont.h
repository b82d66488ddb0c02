// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/OrvGlyphArray.h"
#include "host/CFont.h"
#include "host/CObject.h"
#include "host/CString.h"
#include "host/FlagAccessors.h"
#include "platform/Fonts.h"

#include <cstddef>
#include <functional>
#include <memory>

class DVector;
class DrawingParameters;
class ExtrusionData;
class NamedColor;
class OrvString;

namespace orvane
{
class SurfaceRecorder;

/// Where a text has a letter, in object units.
struct PlacedLetter
{
    std::size_t character;  ///< its index in the text, line ends included
    int line;               ///< 0 for the first line
    int glyphIndex;
    double x;  ///< the letter's origin
    double y;  ///< the baseline
};
}  // namespace orvane

/// One installed TrueType face: its platform fonts, its metrics and its glyphs. A glyph is built
/// when a text first needs it and kept until the font is destroyed.
///
/// Texts are laid out in object units: one em is 1 before the text's scale is applied, x runs to
/// the right, y up, and the front faces of the letters lie at z = 0. Positions are computed in
/// double, although the text stores its spacings and its edge width as floats.
///
/// A glyph index is the position of a character in the font: its character code minus the code of
/// the face's first character.
///
/// Draw on the thread whose OpenGL context is current. Only one thread at a time may use a font.
class ORVANE_API OrvFont : public CObject
{
    DECLARE_DYNAMIC(OrvFont)

public:
    OrvFont();
    ~OrvFont() override;
    OrvFont(const OrvFont&) = delete;
    OrvFont& operator=(const OrvFont&) = delete;

    /// Sets this font up from the two records that the enumeration of installed fonts gives for a
    /// face. Returns 0 when either is null, when the platform cannot make the font, or when the
    /// face has no outline metrics.
    int Create(const ENUMLOGFONTA* record, const NEWTEXTMETRICA* metrics);

    CString GetFullName() const { return fullName; }
    const ENUMLOGFONTA* GetEnumLogFont() const { return &enumLogFont; }
    ENUMLOGFONTA* GetEnumLogFont() { return &enumLogFont; }
    /// The face at a height of 20 pixels, for user interfaces. Owned by this object.
    const CFont* GetWindowsFont() const { return &windowsFont; }
    CFont* GetWindowsFont() { return &windowsFont; }

    // Two marks for hosts. The library neither sets nor reads them.
    ORVANE_FLAG(fontFlags, Loaded, IsLoaded, 0x1);
    ORVANE_FLAG(fontFlags, Preloaded, IsPreloaded, 0x2);

    // The operators compare full names byte by byte, so upper case sorts before lower case.
    bool operator<(const OrvFont* other) const { return CompareName(other) < 0; }
    bool operator<=(const OrvFont* other) const { return CompareName(other) <= 0; }
    bool operator>(const OrvFont* other) const { return CompareName(other) > 0; }
    bool operator>=(const OrvFont* other) const { return CompareName(other) >= 0; }
    bool operator==(const OrvFont* other) const { return CompareName(other) == 0; }

    /// The bytes that this font holds, including the glyphs built so far.
    unsigned long SizeOf() const;

    /// Draws one glyph as a solid, with the text's materials. On selection passes, its faces get
    /// the name 0, its wall 1, and its bevels or rounded edges 2. Returns 0 when the glyph is
    /// invalid or not built.
    int RenderGlyph(int glyphIndex, OrvString* string, const ExtrusionData& extrusion,
                    DrawingParameters* parameters);

    /// Draws one glyph as a wireframe, without lighting, in the colour of the text's extents box.
    /// Returns 0 when the glyph is invalid or not built.
    int DrawGlyph(int glyphIndex, OrvString* string, const ExtrusionData& extrusion,
                  DrawingParameters* parameters);

    /// Draws the text and builds the glyphs that it needs. A carriage return ends a line, together
    /// with a line feed directly after it. Any other line feed is an ordinary character. Returns 0
    /// when drawing is cancelled; the matrix stack is then as it was before.
    int TextOutA(OrvString* string, DrawingParameters* parameters);

    /// Draws the same for a picking pass that asks which character was hit: around each character,
    /// its index in the whole string, line ends included, is pushed as an OpenGL name.
    int DrawNamedCharacters(OrvString* string, DrawingParameters* parameters);

    /// Builds the glyphs that a text needs, and calls \p visit with each letter and its place, in
    /// the order of the text. TextOutA draws the letters at the same places.
    void PlaceLetters(OrvString* string,
                      const std::function<void(const orvane::PlacedLetter&)>& visit);
    /// Records the surfaces that RenderGlyph draws. Records nothing when the glyph is invalid or
    /// not built.
    void RecordGlyph(int glyphIndex, const OrvString& string, const ExtrusionData& extrusion,
                     orvane::SurfaceRecorder& recorder) const;

    /// Measures the text at two scales. Also calls SetFirstLineOffset to store in the text how far
    /// the text's highest point lies above its first baseline, at the text's scale. An empty text
    /// gets sizes of 0 and keeps its offset. A text whose glyphs are all invalid gets the offset
    /// -10,000,000, which is required; see AnInvalidGlyphAddsNeitherWidthNorSpacing.
    /// \param unscaledSize receives the size at scale 1 or -1, the signs of the text's scale.
    /// \param scaledSize receives the size at the text's scale.
    /// \param third receives zeros.
    void CalculateStringExtents(OrvString* string, DVector* unscaledSize, DVector* scaledSize,
                                DVector* third);

    /// Makes a material current in OpenGL. A transparent material switches blending on and writing
    /// to the depth buffer off; an opaque one does the opposite. Returns 1.
    int SetMaterialColors(const NamedColor& material);

    OrvGlyphArray glyphs;  ///< by glyph index; null where a glyph is not built
    int glyphCount = 0;    ///< the last character's code minus the first character's code, plus 1
    /// The face at a size at which one pixel is one design unit, so that outlines are in design
    /// units.
    CFont outlineFont;
    NEWTEXTMETRICA textMetric = {};                ///< the metrics given to Create
    OUTLINETEXTMETRICA* outlineMetrics = nullptr;  ///< owned
    DWORD outlineMetricsSize = 0;                  ///< in bytes

protected:
    enum class CharacterNames
    {
        None,
        Indices
    };
    int DrawText(OrvString* string, DrawingParameters* parameters, CharacterNames names);
    /// Tells \p target where the lines and letters of a text are. Returns 0 as soon as the target
    /// wants to stop.
    template <typename Target>
    int LayOut(OrvString* string, const ExtrusionData& extrusion, Target& target);
    /// Emits the surfaces of a letter with the materials and the edge style of a text.
    template <typename Sink>
    static void EmitGlyph(const OrvGlyph& glyph, const OrvString& string,
                          const ExtrusionData& extrusion, Sink& sink);

    /// Builds a glyph. When the platform has no outline for the character, a message box reports
    /// it, the glyph becomes an invalid one, and the result is 1. Returns 0 and changes nothing
    /// when the glyph exists already, when the index is out of range, or when the glyph mutex
    /// cannot be taken.
    int ConstructOrvGlyph(int glyphIndex);
    int CreateWindowsFont();
    /// Computes glyphCount and empties the glyphs.
    void SetGlyphCount();

    /// The distance to the next character, in design units. Builds the glyph when it is not built
    /// yet. 0 for a glyph that is invalid, cannot be built or is out of range.
    int GetGlyphAdvanceWidth(unsigned short glyphIndex);

    /// The glyph index of a character code. A code that is not between the face's first and last
    /// character gets the index of the face's default character. The code one past the last
    /// character is an exception: it gets glyphCount, which is out of range.
    int LookupGlyphIndex(unsigned short character) const;

    DWORD fontFlags = 0;
    CString fullName;
    CFont windowsFont;
    ENUMLOGFONTA enumLogFont = {};

private:
    int CompareName(const OrvFont* other) const;
    /// The glyph, or null when it is invalid, not built, or out of range.
    OrvGlyph* ValidGlyph(int glyphIndex) const;
    /// The design units in one em; 0 for a font without outline metrics.
    UINT EmSquare() const;
    /// The distance to the next character, in ems. Builds the glyph when it is not built yet.
    double AdvanceInEms(int glyphIndex);

    std::unique_ptr<std::byte[]> outlineMetricsBytes_;
};
