// SPDX-License-Identifier: MIT
#include "apps/cli/shaping/FontSearch.h"

#include "apps/cli/PrintableText.h"
#include "apps/cli/commands/FontList.h"
#include "apps/cli/commands/OptionValues.h"
#include "apps/cli/info/JsonWriter.h"
#include "platform/FontMatching.h"
#include "shaping/ScriptNames.h"
#include "shaping/TextShaper.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>
#include <memory>
#include <string_view>
#include <utility>

namespace orvane
{

namespace
{

/// A script counts as covered from this many of its characters on. The smallest scripts have 18;
/// Greek fonts have 14 Coptic letters that belong to the Greek block.
constexpr int leastCharacters = 15;

bool CanSet(TextShaper& shaper, const InstalledFont& font, const std::string& text)
{
    LayoutOptions options;
    options.style.fonts.faces = {ShapingFace::Open(font.file, nullptr)};
    options.style.fonts.usesInstalledFonts = false;
    return options.style.fonts.faces.front() != nullptr &&
           shaper.LayOut(text, options).missing.empty();
}

/// The installed fonts that can set the text, if there is one.
std::vector<InstalledFont> FontsFor(const FontSearch& search)
{
    std::vector<InstalledFont> fonts = InstalledFonts();
    if (search.text)
    {
        TextShaper shaper;
        std::erase_if(
            fonts, [&](const InstalledFont& font) { return !CanSet(shaper, font, *search.text); });
    }
    return fonts;
}

/// The families of the fonts, which are sorted by them. Families that are not listed, and those
/// whose files cannot be opened, are left out.
std::vector<FontFamily> FamiliesOf(const std::vector<InstalledFont>& fonts,
                                   const FontFilter& isListed)
{
    std::vector<FontFamily> families;
    for (const InstalledFont& font : fonts)
    {
        if (!isListed(font.family))
        {
            continue;
        }
        if (families.empty() || families.back().name != font.family)
        {
            const std::optional<InstalledFont> regular = FindFontOfFamily(font.family, FontLooks());
            families.push_back(
                {font.family, {}, ShapingFace::Open((regular ? *regular : font).file, nullptr)});
        }
        std::vector<std::string>& styles = families.back().styles;
        if (styles.empty() || styles.back() != font.style)
        {
            styles.push_back(font.style);
        }
    }
    std::erase_if(families, [](const FontFamily& family) { return family.face == nullptr; });
    return families;
}

void WriteTexts(JsonWriter& json, std::string_view key, const std::vector<std::string>& texts)
{
    json.Key(key);
    json.BeginArray(JsonWriter::Layout::OneLine);
    for (const std::string& text : texts)
    {
        json.Value(text);
    }
    json.EndArray();
}

void WriteFamily(JsonWriter& json, const FontFamily& family)
{
    json.BeginObject();
    json.Member("family", family.name);
    WriteTexts(json, "styles", family.styles);
    json.Key("scripts");
    json.BeginArray();
    for (const CoveredScript& covered : ScriptsOf(*family.face))
    {
        json.BeginObject(JsonWriter::Layout::OneLine);
        json.Member("script", ScriptLetters(covered.script));
        json.Member("name", ScriptName(covered.script));
        json.Member("characters", covered.characters);
        json.EndObject();
    }
    json.EndArray();
    json.Key("axes");
    json.BeginArray();
    for (const FaceAxis& axis : family.face->Axes())
    {
        json.BeginObject(JsonWriter::Layout::OneLine);
        json.Member("tag", axis.tag);
        json.Member("name", axis.name);
        json.Member("minimum", axis.minimum);
        json.Member("default", axis.normal);
        json.Member("maximum", axis.maximum);
        json.EndObject();
    }
    json.EndArray();
    WriteTexts(json, "features", family.face->Features());
    json.EndObject();
}

std::string Joined(const std::vector<std::string>& texts)
{
    std::string joined;
    for (const std::string& text : texts)
    {
        joined += (joined.empty() ? "" : ", ") + Printable(text);
    }
    return joined;
}

/// A line about a family; nothing when there is nothing to tell.
std::string DetailLine(const char* title, const std::vector<std::string>& details)
{
    return details.empty() ? "" : std::string("  ") + title + ": " + Joined(details) + '\n';
}

std::string FamilyText(const FontFamily& family)
{
    std::vector<std::string> scripts;
    for (const CoveredScript& covered : ScriptsOf(*family.face))
    {
        scripts.push_back(ScriptName(covered.script) + " " + std::to_string(covered.characters));
    }
    std::vector<std::string> axes;
    for (const FaceAxis& axis : family.face->Axes())
    {
        axes.push_back(axis.tag + " " + NumberText(axis.minimum) + " to " +
                       NumberText(axis.maximum) + " [" + NumberText(axis.normal) + "]");
    }
    return Printable(family.name) + '\n' + DetailLine("styles", family.styles) +
           DetailLine("scripts", scripts) + DetailLine("axes", axes) +
           DetailLine("features", family.face->Features());
}

}  // namespace

std::vector<CoveredScript> ScriptsOf(const ShapingFace& face)
{
    std::map<ScriptTag, int> counts;
    for (const char32_t character : face.Characters())
    {
        ++counts[ScriptOf(character)];
    }
    std::vector<CoveredScript> scripts;
    for (const auto& [script, characters] : counts)
    {
        if (characters >= leastCharacters && !ScriptName(script).empty())
        {
            scripts.push_back({script, characters});
        }
    }
    std::stable_sort(
        scripts.begin(), scripts.end(),
        [](const CoveredScript& a, const CoveredScript& b) { return a.characters > b.characters; });
    return scripts;
}

std::vector<CLI::Option*> AddFontSearchOptions(CLI::App& command, FontSearch& search)
{
    return {
        command.add_flag("--families", search.tellsFamilies,
                         "Lists families with their styles, scripts, axes and\n"
                         "OpenType features"),
        command.add_flag("--sample", search.isSheet,
                         "Draws a picture with the names of the families, each\nset in itself"),
        command
            .add_option("--for", search.text, "Lists only fonts that have all characters of a text")
            ->option_text("TEXT")};
}

std::vector<FontFamily> FindFamilies(const FontSearch& search, const FontFilter& isListed)
{
    return FamiliesOf(FontsFor(search), isListed);
}

std::string SearchFonts(const FontSearch& search, bool asJson, const FontFilter& isListed)
{
    const std::vector<InstalledFont> fonts = FontsFor(search);
    if (!search.tellsFamilies)
    {
        FontList list;
        for (const InstalledFont& font : fonts)
        {
            if (isListed(font.fullName))
            {
                list.Add({font.fullName, font.family, font.style, font.looks.weight,
                          font.looks.isItalic});
            }
        }
        return list.Result(asJson);
    }
    std::string text;
    JsonWriter json;
    json.BeginArray();
    for (const FontFamily& family : FamiliesOf(fonts, isListed))
    {
        text += FamilyText(family);
        WriteFamily(json, family);
    }
    json.EndArray();
    return asJson ? json.Result() : text;
}

}  // namespace orvane
