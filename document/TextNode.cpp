// SPDX-License-Identifier: MIT
#include "document/TextNode.h"

#include "document/Colors.h"
#include "document/OptionRange.h"
#include "document/SceneDocument.h"
#include "document/TextEncoding.h"
#include "document/materials/MaterialLibrary.h"
#include "extrude/OrvFont.h"
#include "extrude/OrvGlyph.h"
#include "geometry/DVector.h"
#include "material/NamedColor.h"
#include "platform/CodePages.h"
#include "scene/SceneObject.h"
#include "solids/OrvProfileString.h"

#include <bitset>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace orvane
{

namespace
{

std::unique_ptr<OrvFontString> MakeNodeWithEdges(const TextOptions& options)
{
    if (options.profile)
    {
        auto node = std::make_unique<OrvProfileString>();
        node->SetProfile(ParseProfile(*options.profile, options.bevelWidth));
        node->SetFusion(options.fusion);
        return node;
    }
    auto node = std::make_unique<OrvFontString>();
    node->SetBevelStyle(static_cast<int>(options.edgeStyle));
    node->SetBevelDepth(static_cast<float>(options.bevelWidth));
    return node;
}

/// The glyph that a font draws for a character. Null when none is built or none is drawn.
const OrvGlyph* GlyphOf(const OrvFont& font, unsigned char character)
{
    const int first = font.textMetric.tmFirstChar;
    int index = character - first;
    if (index < 0 || index >= font.glyphs.GetSize())
    {
        index = font.textMetric.tmDefaultChar - first;
    }
    return index >= 0 && index < font.glyphs.GetSize() ? font.glyphs.GetAt(index) : nullptr;
}

/// Collects the letters that cannot be built from the texts of a document.
class MissingLetterSearch
{
public:
    explicit MissingLetterSearch(UINT codePage) : codePage_(codePage) {}

    const std::vector<MissingLetter>& Found() const { return found_; }

    void LookAt(const std::string& text, OrvFont& font)
    {
        const std::string name = CodePageToUtf8(static_cast<LPCSTR>(font.GetFullName()), codePage_);
        std::bitset<256>& known = known_[name];
        std::string letters;  // the text's letters that no other text has in this font
        for (const char letter : text)
        {
            const auto code = static_cast<unsigned char>(letter);
            if (!known[code] && letter != '\r' && letter != '\n')
            {
                known.set(code);
                letters += letter;
            }
        }
        if (letters.empty())
        {
            return;
        }
        OrvFontString measured;
        measured.AttachFont(&font);
        measured.SetTextString(CString(letters.data(), static_cast<int>(letters.size())));
        measured.CalculateBounds();  // builds the glyphs
        for (const char letter : letters)
        {
            const OrvGlyph* const glyph = GlyphOf(font, static_cast<unsigned char>(letter));
            if (glyph != nullptr && glyph->IsInvalid())
            {
                found_.push_back({name, CodePageToUtf8(std::string(1, letter), codePage_)});
            }
        }
    }

    /// Looks at a text in UTF-8.
    void LookAt(OrvProfileString& text)
    {
        for (const UnreadLetter& unread : text.UnreadLetters())
        {
            if (toldOfUtf8_.emplace(unread.font, unread.letter).second)
            {
                found_.push_back({unread.font, unread.letter});
            }
        }
    }

private:
    UINT codePage_;
    std::map<std::string, std::bitset<256>> known_;  ///< by the names of fonts
    std::set<std::pair<std::string, std::string>> toldOfUtf8_;
    std::vector<MissingLetter> found_;
};

}  // namespace

void CheckTextOptions(const TextOptions& options)
{
    CheckRange("bevelWidth", options.bevelWidth, 0, 100);
    CheckRange("depth", options.depth, 0, 100);
    CheckRange("characterSpacing", options.characterSpacing, -100, 100);
    CheckRange("lineSpacing", options.lineSpacing, -100, 100);
    if (options.profile)
    {
        ParseProfile(*options.profile, options.bevelWidth);
    }
    if (options.texture)
    {
        CheckRange("repeat", options.texture->repeat, 0.001, 1000);
    }
}

void SetLook(OrvFontString& node, const TextOptions& options)
{
    const ColorVector face = ToColorVector(options.faceColor);
    const ColorVector white(1, 1, 1, face.alpha);
    const ColorVector edge =
        options.edgeColor ? ToColorVector(*options.edgeColor) : Shade(face, 0.5f);
    const ColorVector bevel =
        options.bevelColor ? ToColorVector(*options.bevelColor) : Mix(face, white, 0.3f);

    node.SetBevelLocation(static_cast<int>(options.bevelSides));
    node.SetJustification(static_cast<int>(options.alignment));
    node.SetInterCharacterSpacing(static_cast<float>(options.characterSpacing));
    node.SetInterLineSpacing(static_cast<float>(options.lineSpacing));
    const std::optional<std::string>& all = options.faceMaterial;
    node.SetFaceColor(all ? MaterialNamed("faceMaterial", *all) : FaceMaterial(face));
    const auto& ofEdge = options.edgeMaterial || options.edgeColor ? options.edgeMaterial : all;
    node.SetEdgeColor(ofEdge ? MaterialNamed("edgeMaterial", *ofEdge) : EdgeMaterial(edge));
    const auto& ofBevel = options.bevelMaterial || options.bevelColor ? options.bevelMaterial : all;
    node.SetBevelColor(ofBevel ? MaterialNamed("bevelMaterial", *ofBevel) : BevelMaterial(bevel));
    node.extentsBoxColor = MakeMaterial("Outline", face, 0, 0);
    node.SetScale(DVector(1.0, 1.0, options.depth));
    node.CalculateMaximumBevelDepth();
}

NamedColor FaceMaterial(const ColorVector& color)
{
    return MakeMaterial("Face", color, 0.1f, 16);
}

NamedColor EdgeMaterial(const ColorVector& color)
{
    return MakeMaterial("Edge", color, 0.35f, 40);
}

NamedColor BevelMaterial(const ColorVector& color)
{
    return MakeMaterial("Bevel", color, 0.6f, 48);
}

std::unique_ptr<OrvFontString> MakeTextNode(const CString& text, OrvFont* font,
                                            const TextOptions& options)
{
    std::unique_ptr<OrvFontString> node = MakeNodeWithEdges(options);
    node->AttachFont(font);
    node->SetTextString(text);
    SetLook(*node, options);
    return node;
}

std::vector<MissingLetter> MissingLettersOf(const SceneDocument& document)
{
    const CodePageScope scope(document.codePage);
    MissingLetterSearch search(document.codePage);
    VisitDescendents(*document.scene, [&search](DrawingObject& node) {
        auto* const text = dynamic_cast<OrvFontString*>(&node);
        auto* const profiled = dynamic_cast<OrvProfileString*>(text);
        if (profiled != nullptr && profiled->IsUtf8())
        {
            search.LookAt(*profiled);
        }
        else if (text != nullptr && text->GetFont() != nullptr)
        {
            search.LookAt(text->GetTextString()->Text(), *text->GetFont());
        }
        return true;
    });
    return search.Found();
}

}  // namespace orvane
