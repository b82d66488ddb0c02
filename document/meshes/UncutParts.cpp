// SPDX-License-Identifier: MIT
#include "document/meshes/UncutParts.h"

#include "document/SceneDocument.h"
#include "document/TextEncoding.h"
#include "extrude/OrvFont.h"
#include "platform/Utf8.h"
#include "scene/DescendentWalk.h"
#include "scene/SceneObject.h"
#include "solids/OrvOutlineShape.h"
#include "solids/OrvProfileString.h"
#include "solids/SolidMesh.h"

#include <set>
#include <utility>

namespace orvane
{

namespace
{

/// Collects sentences, each once, in the order in which they come.
class Sentences
{
public:
    void Add(std::vector<std::string> sentences)
    {
        for (std::string& sentence : sentences)
        {
            if (known_.insert(sentence).second)
            {
                ordered_.push_back(std::move(sentence));
            }
        }
    }
    std::vector<std::string> Take() { return std::move(ordered_); }

private:
    std::set<std::string> known_;
    std::vector<std::string> ordered_;
};

/// The beginning of a text's first line, in quotes.
std::string NameOf(const OrvFontString& text, const std::string& letters)
{
    constexpr std::size_t mostBytes = 40;
    const std::string line = ToUtf8(text, letters.substr(0, letters.find_first_of("\r\n")));
    const std::string name = FirstBytes(line, mostBytes);
    return '"' + name + '"' + (name.size() < line.size() ? "..." : "");
}

bool HasSize(const OrvFontString& text)
{
    const DVector scale = text.GetScale();
    return scale.x != 0 && scale.y != 0 && scale.z != 0;
}

const char* OutcomeOf(const UncutSolid& solid)
{
    return solid.isLeftOut ? " is left out: " : " keeps square edges: ";
}

/// \param uncut the solids of the text that do not have the profile
std::vector<std::string> SentencesOf(OrvFontString& text, LetterFusion fusion,
                                     const std::vector<UncutSolid>& uncut)
{
    const std::string letters = text.GetTextString()->Text();
    if (!HasSize(text) && letters.find_first_not_of(" \r\n") != std::string::npos)
    {
        return {"the text " + NameOf(text, letters) +
                " is left out: solids need a width, a height and a depth"};
    }
    std::vector<std::string> sentences;
    const std::string font =
        uncut.empty() ? "" : ToUtf8(text, text.GetFont()->GetFullName().Text());
    for (const UncutSolid& solid : uncut)
    {
        if (fusion != LetterFusion::Separate)
        {
            // The solid may have other parts that do have the profile.
            const std::string line = fusion == LetterFusion::Line
                                         ? "line " + std::to_string(solid.line + 1) + " of "
                                         : "";
            sentences.push_back("parts of " + line + "the text " + NameOf(text, letters) +
                                (solid.isLeftOut ? " are left out: " : " keep square edges: ") +
                                solid.problem);
            continue;
        }
        const std::size_t length = text.LetterEnd(solid.index) - solid.index;
        sentences.push_back("the letter \"" + ToUtf8(text, letters.substr(solid.index, length)) +
                            "\" of the font \"" + font + '"' + OutcomeOf(solid) + solid.problem);
    }
    return sentences;
}

}  // namespace

std::vector<std::string> UncutLettersOf(const SolidMesh& mesh)
{
    Sentences sentences;
    for (const MeshNode& node : mesh.nodes)
    {
        if (!node.uncut.empty())
        {
            sentences.Add(SentencesOf(dynamic_cast<OrvFontString&>(*node.object),
                                      LetterFusion::Separate, node.uncut));
        }
    }
    return sentences.Take();
}

std::vector<std::string> UncutAreasOf(OrvOutlineShape& outlines)
{
    std::vector<std::string> sentences;
    for (const UncutSolid& solid : outlines.UncutSolids())
    {
        const std::string color = outlines.Material(static_cast<int>(solid.index)).GetName();
        sentences.push_back("the area of the colour " + color + OutcomeOf(solid) + solid.problem);
    }
    return sentences;
}

std::vector<std::string> UncutTextsOf(const SceneDocument& document)
{
    const CodePageScope scope(document.codePage);
    Sentences sentences;
    VisitDescendents(*document.scene, [&sentences](DrawingObject& node) {
        auto* const text = dynamic_cast<OrvProfileString*>(&node);
        if (text != nullptr && text->GetFont() != nullptr && text->HasProfile())
        {
            sentences.Add(SentencesOf(*text, text->GetFusion(), text->UncutSolids()));
        }
        return true;
    });
    return sentences.Take();
}

std::vector<std::string> UncutOutlinesOf(const SceneDocument& document)
{
    Sentences sentences;
    VisitDescendents(*document.scene, [&sentences](DrawingObject& node) {
        if (auto* const outlines = dynamic_cast<OrvOutlineShape*>(&node))
        {
            sentences.Add(UncutAreasOf(*outlines));
        }
        return true;
    });
    return sentences.Take();
}

}  // namespace orvane
