// SPDX-License-Identifier: MIT
#pragma once

#include "scene/OrvString.h"

class OrvFont;

/// A text with the font that measures and draws it. The front faces lie in z = 0, the letters
/// extend to -z; the text is centred on y = 0 and stands to the right of x = 0, across it or to
/// the left by its justification.
///
/// The font is borrowed, as a rule from the registry (GetFontList), and must outlive the node's use
/// of it.
class ORVANE_API OrvFontString : public OrvString
{
    DECLARE_SERIAL(OrvFontString)

public:
    OrvFontString();
    /// Shares the font.
    OrvFontString(const OrvFontString& other);
    ~OrvFontString() override;
    OrvFontString& operator=(const OrvFontString& other);

    /// \param newFont borrowed, may be null. Bounds stay until CalculateBounds.
    void AttachFont(OrvFont* newFont) { font = newFont; }
    OrvFont* GetFont() const { return font; }

    /// Measures the text, which sets the node's dimensions, and bounds it. Returns 1, also without
    /// a font, when only the children contribute.
    int CalculateBounds() override;

    /// Returns 0 when drawing is cancelled.
    int DrawObject(DrawingParameters* parameters) override;

    /// As for every node when bevels scale. Otherwise x and y of the scaled dimensions become the
    /// new extents without the minimum size, and the scale follows; a handle dragged past its
    /// anchor mirrors the text. Returns 1.
    int Resize(const DVector& point, int handle) override;

    /// Keeps the size that the text had when it was last measured, after its content has changed.
    /// Returns 1.
    int ScaleToFitOldDimensions();

    int RestoreFromUndo() override;
    int SaveToUndo() override;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

protected:
    OrvFont* font = nullptr;
};
