// SPDX-License-Identifier: MIT
#pragma once

#include "scene/OrvString.h"

#include <cstddef>
#include <functional>

class OrvFont;

namespace orvane
{
struct PlacedLetter;
class SurfaceRecorder;
}  // namespace orvane

/// A text with the font that measures and draws it. The front faces lie in the plane z = 0, and the
/// letters extend towards negative z. Vertically the text is centred on y = 0. A left-justified
/// text begins at x = 0, a centred text has its middle at x = 0, and a right-justified text ends at
/// x = 0.
///
/// The font is borrowed, usually from the registry (GetFontList), and must exist as long as the
/// node uses it.
class ORVANE_API OrvFontString : public OrvString
{
    DECLARE_SERIAL(OrvFontString)

public:
    OrvFontString();
    /// The copy uses the same font.
    OrvFontString(const OrvFontString& other);
    ~OrvFontString() override;
    OrvFontString& operator=(const OrvFontString& other);

    /// \param newFont borrowed, may be null. The bounds change at the next CalculateBounds.
    void AttachFont(OrvFont* newFont) { font = newFont; }
    OrvFont* GetFont() const { return font; }

    /// Measures the text, which sets the node's dimensions, and computes the bounds of text and
    /// children. Without a font the bounds are those of the children. Always returns 1.
    int CalculateBounds() override;

    /// Returns 0 when drawing is cancelled.
    int DrawObject(DrawingParameters* parameters) override;

    /// If ScaleBevels is set, resizes like DrawingObject::Resize. Otherwise the scaled width and
    /// height become the new extents minus the minimum size, and the scale is derived from them. A
    /// handle that is dragged past the opposite handle mirrors the text. Always returns 1.
    int Resize(const DVector& point, int handle) override;

    /// Programs call this after they have changed the characters. It scales the text to the width
    /// and height that the text had when it was last measured. Without ScaleBevels it also
    /// multiplies the allowable bevel depth by the smaller of the horizontal and the vertical
    /// factor, and stores the product as the bevel depth. Always returns 1.
    int ScaleToFitOldDimensions();

    int RestoreFromUndo() override;
    int SaveToUndo() override;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

    // The solids that a text is made of. Here each letter is a solid; a derived class may have
    // others.

    /// Calls \p visit with each solid and its place, in the order of the text. Its glyphIndex is
    /// what RecordSolid takes.
    virtual void PlaceSolids(const std::function<void(const orvane::PlacedLetter&)>& visit);
    /// Records the surfaces of a solid. Records nothing for a letter that is not built.
    virtual void RecordSolid(int glyphIndex, orvane::SurfaceRecorder& recorder);
    /// Draws the text for a picking pass that asks which character was hit: around each solid, the
    /// index of its first character is pushed as an OpenGL name. Returns 0 when drawing is
    /// cancelled.
    virtual int DrawNamedCharacters(DrawingParameters* parameters);

    /// Whether the text is in UTF-8, whatever the process's code page is. Its fonts are then not
    /// those of the registry, and GetFont returns an object of the text's own.
    virtual bool IsUtf8() const { return false; }
    /// The byte after the letter that DrawNamedCharacters names by its first byte.
    virtual std::size_t LetterEnd(std::size_t letter) { return letter + 1; }

protected:
    /// Measures the text, which has a font; see OrvFont::CalculateStringExtents.
    virtual void MeasureText(DVector* unscaledSize, DVector* scaledSize);
    /// Draws the text's solids or outlines in immediate mode. The text has a font. Returns 0 when
    /// drawing is cancelled.
    virtual int DrawLettersDirectly(DrawingParameters* parameters);

    OrvFont* font = nullptr;

private:
    /// The same, but solids are drawn with the drawer of the parameters if it draws them.
    int DrawLetters(DrawingParameters* parameters);
};
