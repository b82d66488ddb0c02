// SPDX-License-Identifier: MIT
#include "apps/cli/shaping/ShapedParts.h"

#include "document/SceneDocument.h"
#include "document/TextEncoding.h"
#include "orvane/Error.h"
#include "platform/Utf8.h"
#include "scene/DescendentWalk.h"
#include "scene/SceneObject.h"
#include "shapedtext/OrvShapedString.h"
#include "shaping/ScriptNames.h"

#include <algorithm>
#include <map>

namespace orvane
{

namespace
{

/// Calls visit(text) for every text of any language in a document.
template <typename Visit>
void ForEachShapedText(const SceneDocument& document, Visit visit)
{
    VisitDescendents(*document.scene, [&visit](DrawingObject& node) {
        if (auto* const text = dynamic_cast<OrvShapedString*>(&node))
        {
            visit(*text);
        }
        return true;
    });
}

}  // namespace

std::vector<std::string> SentencesAbout(const std::vector<MissingCharacter>& missing,
                                        Strictness strictness)
{
    constexpr std::size_t mostNamed = 10;
    std::map<ScriptTag, std::vector<char32_t>> byScript;
    for (const MissingCharacter& each : missing)
    {
        byScript[ScriptOf(each.character)].push_back(each.character);
    }
    std::vector<std::string> sentences;
    for (const auto& [script, characters] : byScript)
    {
        std::string sentence =
            strictness == Strictness::Fail ? "the named fonts lack " : "no installed font has ";
        for (std::size_t n = 0; n < std::min(characters.size(), mostNamed); ++n)
        {
            sentence += (n == 0 ? "" : ", ") + Describe(Utf8Of(characters[n]));
        }
        if (characters.size() > mostNamed)
        {
            sentence += " and " + std::to_string(characters.size() - mostNamed) + " more";
        }
        const std::string name = ScriptName(script);
        sentence += name.empty() ? "" : ", script " + name;
        const auto packaged =
            std::find_if(characters.begin(), characters.end(),
                         [](char32_t character) { return !PackageFor(character).empty(); });
        const std::string package = packaged != characters.end() ? PackageFor(*packaged) : "";
        if (strictness == Strictness::GoOn && !package.empty())
        {
            sentence += " (try the package " + package + ")";
        }
        sentences.push_back(std::move(sentence));
    }
    return sentences;
}

void TellMissingCharacters(const std::vector<MissingCharacter>& missing, Strictness strictness)
{
    TellFirst("", SentencesAbout(missing, strictness),
              " more scripts have characters that no font has");
    if (strictness == Strictness::Fail && !missing.empty())
    {
        throw Error("text", "--strict: characters are missing");
    }
}

std::vector<std::string> MissingCharactersOf(const SceneDocument& document)
{
    std::vector<MissingCharacter> missing;
    ForEachShapedText(document, [&missing](OrvShapedString& text) {
        for (const MissingCharacter& each : text.GetMissingCharacters())
        {
            if (std::none_of(missing.begin(), missing.end(), [&](const MissingCharacter& known) {
                    return known.character == each.character;
                }))
            {
                missing.push_back(each);
            }
        }
    });
    return SentencesAbout(missing, Strictness::GoOn);
}

std::vector<std::string> FontNoticesOf(const SceneDocument& document)
{
    std::vector<std::string> notices;
    ForEachShapedText(document, [&notices](const OrvShapedString& text) {
        if (!text.GetSubstitutedFonts().empty())
        {
            return;  // the document tells them
        }
        for (const std::string& notice : text.GetFontNotices())
        {
            if (std::find(notices.begin(), notices.end(), notice) == notices.end())
            {
                notices.push_back(notice);
            }
        }
    });
    return notices;
}

void TellFontNotices(const std::vector<std::string>& notices, Strictness strictness)
{
    TellFirst("", notices, " more notices about fonts");
    if (strictness == Strictness::Fail && !notices.empty())
    {
        throw Error("fonts", "--strict: a font is not as it is asked for");
    }
}

}  // namespace orvane
