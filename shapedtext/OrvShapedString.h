// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "shapedtext/ShapedTextSettings.h"
#include "shapedtext/TextFonts.h"
#include "shaping/TextLayout.h"
#include "solids/OrvProfileString.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvane
{

class GlyphSlots;
class SharedShaping;
struct LaidText;

/// A text of any language. It is in UTF-8; its letters are shaped and ordered as their scripts
/// demand, with the kerning, the ligatures and the features of its fonts, and its parts may have
/// fonts, sizes and colours of their own.
///
/// Its edges are those of an OrvProfileString or, without a profile, the square, bevelled or
/// rounded ones of other texts. Materials, alignment, bevels and spacings mean what they mean for
/// other texts, except that letters which touch each other, such as Arabic ones, are not moved
/// apart. While letters are joined (SetFusion), they have the colours of the text. A text on a path
/// (LineSettings::path) stands where the path is, and its bounds are those of its letters.
///
/// The base class's text is the UTF-8. Change it with SetText. After a change through
/// SetTextString, bytes that are not UTF-8 count as U+FFFD, and a text that cannot be laid out is
/// empty. The fonts are the text's own: GetFont returns an object that only names and draws them,
/// and AttachFont must not be called.
///
/// In a picking pass, a letter or ligature with its marks has the offset of its first byte as its
/// name. Only one thread at a time may use texts of this class.
///
/// Its record is that of OrvString, then the version, then the fields in the order of
/// OrvShapedStringArchive.cpp.
class ORVANE_API OrvShapedString : public OrvProfileString
{
    DECLARE_SERIAL(OrvShapedString)

public:
    /// An empty text without a profile, in the machine's standard font.
    OrvShapedString();
    OrvShapedString(const OrvShapedString& other);
    ~OrvShapedString() override;
    OrvShapedString& operator=(const OrvShapedString& other);

    /// Sets the text and how it is set. Throws Error for a text that is not UTF-8 or too long, or a
    /// font that is not there, and OptionError for a setting that makes no sense. Nothing has
    /// changed then. The bounds change at the next CalculateBounds.
    void SetText(std::string_view utf8, const ShapedTextSettings& settings);
    /// Sets another text in the same way, without spans.
    void SetText(std::string_view utf8);
    /// The text in UTF-8.
    const std::string& GetText() const { return textString.Text(); }
    const ShapedTextSettings& GetSettings() const { return settings_; }

    /// Puts the fonts that letters are set in into the text, so that they are stored with it. Fonts
    /// that the text does not name are added to those that it names. Returns sentences about those
    /// that are left out.
    std::vector<std::string> EmbedFonts();

    void SetHasProfile(bool hasProfile);
    bool HasProfile() const override { return hasProfile_; }
    bool HasLetterColors() const override;
    std::unique_ptr<OrvProfileString> CopyWithProfile(const EdgeProfile& profile) const override;

    /// The layout before the node's scale, spacings and alignment are applied.
    const TextLayout& GetLayout();
    /// Characters that no font has, each once. A mark of the font stands in their place.
    const std::vector<MissingCharacter>& GetMissingCharacters();
    std::vector<UnreadLetter> UnreadLetters() override;
    /// Fonts that the text names and that are not installed. Only a text from a file has them.
    const std::vector<SubstitutedFont>& GetSubstitutedFonts() const { return fonts_->substituted; }
    /// Sentences about fonts that are not as the text asks for.
    const std::vector<std::string>& GetFontNotices() const { return fonts_->notices; }

    bool IsUtf8() const override { return true; }
    std::size_t LetterEnd(std::size_t letter) override;

    int CalculateBounds() override;
    int DrawNamedCharacters(DrawingParameters* parameters) override;
    void PlaceSolids(const std::function<void(const PlacedLetter&)>& visit) override;
    void RecordSolid(int glyphIndex, SurfaceRecorder& recorder) override;

    int SaveToUndo() override;
    int RestoreFromUndo() override;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);
    void DeserializeVersion2(CArchive& archive);

protected:
    void MeasureText(DVector* unscaledSize, DVector* scaledSize) override;
    int DrawLettersDirectly(DrawingParameters* parameters) override;
    void PlaceLetters(const std::function<void(const PlacedLetter&)>& visit) override;
    PlaneRegion RegionOfLetter(int glyphIndex) const override;
    SurfaceMaterials MaterialsOf(int solid) const override;

private:
    /// The materials of letters that have some of their own, and a text that has them and the edges
    /// of this one.
    struct LetterPaint
    {
        NamedColor face;
        NamedColor edge;
        NamedColor bevel;
        OrvString text;
    };

    void Deserialize(CArchive& archive, DWORD version);
    /// The layout of the current text.
    const LaidText& CurrentLayout();
    void SetText(std::string_view utf8, ShapedTextSettings settings, TextFonts fonts);
    /// The extrusion of a letter of a size.
    ExtrusionData ExtrusionOf(int slot) const;
    /// The materials of a letter that has some of its own; null for other letters.
    const LetterPaint* PaintOf(int slot) const;
    int DrawGlyphs(DrawingParameters* parameters, bool named);
    void DrawGlyph(int slot, DrawingParameters* parameters);
    void FindTransparency();
    void SetBoundsOnPath();

    bool hasProfile_ = false;
    ShapedTextSettings settings_;
    std::shared_ptr<SharedShaping> shared_;
    std::shared_ptr<const TextFonts> fonts_;
    /// Of these settings; never null. Copies of the text share it, as OrvFontString's \c font.
    std::shared_ptr<GlyphSlots> slots_;
    std::shared_ptr<const LaidText> laid_;  ///< null until it is needed
    /// By span and colour. Filled anew each time, so that copies may share them.
    mutable std::map<std::pair<std::size_t, std::string>, std::shared_ptr<LetterPaint>> paints_;
    DVector pathLow_;  ///< the corners of the box around the letters on a path, when last measured
    DVector pathHigh_;
};

}  // namespace orvane
