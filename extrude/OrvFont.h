// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/OrvGlyphArray.h"
#include "host/CFont.h"
#include "host/CObject.h"
#include "host/CString.h"
#include "host/FlagAccessors.h"
#include "platform/Fonts.h"

#include <cstddef>
#include <memory>

class DVector;
class DrawingParameters;
class ExtrusionData;
class NamedColor;
class OrvString;

/// One installed TrueType face: its platform fonts, its metrics, and its glyphs, each built when a
/// text first needs it and kept until the font ends.
///
/// Texts are laid out in object units: one em is 1 before the text's scale, x runs right, y up, and
/// the front of the letters lies in z = 0. Layout is done in double, from the float values of the
/// text's spacings and bevel.
///
/// Drawing belongs to the thread whose OpenGL context is current; one thread at a time uses a font.
class ORVANE_API OrvFont : public CObject
{
    DECLARE_DYNAMIC(OrvFont)

public:
    OrvFont();
    ~OrvFont() override;
    OrvFont(const OrvFont&) = delete;
    OrvFont& operator=(const OrvFont&) = delete;

    /// Takes a face from its enumeration records. Returns 0 when either is null, or the face has
    /// no outline metrics.
    int Create(const ENUMLOGFONTA* record, const NEWTEXTMETRICA* metrics);

    CString GetFullName() const { return fullName; }
    const ENUMLOGFONTA* GetEnumLogFont() const { return &enumLogFont; }
    ENUMLOGFONTA* GetEnumLogFont() { return &enumLogFont; }
    /// The face at 20 pixels, for a user interface. Owned by this.
    const CFont* GetWindowsFont() const { return &windowsFont; }
    CFont* GetWindowsFont() { return &windowsFont; }

    ORVANE_FLAG(fontFlags, Loaded, IsLoaded, 0x1);
    ORVANE_FLAG(fontFlags, Preloaded, IsPreloaded, 0x2);

    /// Full names, byte by byte: upper case sorts before lower case.
    bool operator<(const OrvFont* other) const { return CompareName(other) < 0; }
    bool operator<=(const OrvFont* other) const { return CompareName(other) <= 0; }
    bool operator>(const OrvFont* other) const { return CompareName(other) > 0; }
    bool operator>=(const OrvFont* other) const { return CompareName(other) >= 0; }
    bool operator==(const OrvFont* other) const { return CompareName(other) == 0; }

    /// Bytes held, with the glyphs built so far.
    unsigned long SizeOf() const;

    /// Draws one built glyph solid, with the text's materials. On selection passes its faces, walls
    /// and bevels are named 0, 1 and 2. Returns 0 when the slot holds no valid glyph.
    int RenderGlyph(int glyphIndex, OrvString* string, const ExtrusionData& extrusion,
                    DrawingParameters* parameters);

    /// Draws one built glyph as wireframe, unlit, in the text's extents-box colour. Returns 0 when
    /// the slot holds no valid glyph.
    int DrawGlyph(int glyphIndex, OrvString* string, const ExtrusionData& extrusion,
                  DrawingParameters* parameters);

    /// Draws the text, building glyphs as needed. A carriage return ends a line, with the line feed
    /// that may follow it; any other line feed is a character. Returns 0, the matrix stack as it
    /// was, when drawing is cancelled.
    int TextOutA(OrvString* string, DrawingParameters* parameters);

    /// The same, of the characters from \p first up to \p end alone (indices into the whole string,
    /// line ends included), at their places in the text. Tells which character a picked part is of.
    int DrawCharacters(OrvString* string, DrawingParameters* parameters, std::size_t first,
                       std::size_t end);

    /// Measures the text at scale 1 (the signs of its scale kept) and at its scale, and stores in
    /// it the offset of its first line. \p third becomes zero, as do the others for an empty text.
    void CalculateStringExtents(OrvString* string, DVector* unscaledSize, DVector* scaledSize,
                                DVector* third);

    /// Makes a material current, with blending and without depth writes when it is transparent.
    /// Returns 1.
    int SetMaterialColors(const NamedColor& material);

    OrvGlyphArray glyphs;            ///< by character code, from the face's first to its last
    int glyphCount = 0;              ///< last character - first character + 1
    CFont outlineFont;               ///< one em square high in pixels: outlines in design units
    NEWTEXTMETRICA textMetric = {};  ///< as enumerated
    OUTLINETEXTMETRICA* outlineMetrics = nullptr;  ///< owned
    DWORD outlineMetricsSize = 0;                  ///< bytes

protected:
    /// Builds slot \p glyphIndex. A character that the platform cannot outline is reported in a
    /// message box and becomes an invalid glyph. Returns 0 when the slot is taken or does not
    /// exist, or the outline cannot be converted; the slot then stays as it is.
    int ConstructOrvGlyph(int glyphIndex);
    int CreateWindowsFont();
    void SetGlyphCount();

    /// Design units; builds the glyph if need be. 0 for one that is invalid, cannot be built or
    /// does not exist.
    int GetGlyphAdvanceWidth(unsigned short glyphIndex);

    /// The slot of a character, the default character's for one outside the face.
    int LookupGlyphIndex(unsigned short character) const;

    DWORD fontFlags = 0;
    CString fullName;
    CFont windowsFont;
    ENUMLOGFONTA enumLogFont = {};

private:
    int CompareName(const OrvFont* other) const;
    /// Null unless the slot exists and holds a valid glyph.
    OrvGlyph* ValidGlyph(int glyphIndex) const;
    /// The design resolution, 0 for a font that was not created.
    UINT EmSquare() const;
    /// A glyph's advance in ems; builds the glyph if need be.
    double AdvanceInEms(int glyphIndex);

    std::unique_ptr<std::byte[]> outlineMetricsBytes_;
};
