// SPDX-License-Identifier: MIT
#include "shaping/FontQuery.h"

#include "document/OptionRange.h"
#include "host/AsciiCase.h"
#include "host/SimilarNames.h"
#include "orvane/Error.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace orvane
{
namespace
{

enum class Trait
{
    Weight,
    Width,
    Slant
};

struct StyleWord
{
    std::string_view word;  ///< in lower case, without blanks and hyphens
    Trait trait;
    int value;
};

constexpr StyleWord styleWords[] = {
    {"thin", Trait::Weight, 100},         {"hairline", Trait::Weight, 100},
    {"extralight", Trait::Weight, 200},   {"ultralight", Trait::Weight, 200},
    {"light", Trait::Weight, 300},        {"semilight", Trait::Weight, 350},
    {"demilight", Trait::Weight, 350},    {"book", Trait::Weight, 380},
    {"regular", Trait::Weight, 400},      {"normal", Trait::Weight, 400},
    {"roman", Trait::Weight, 400},        {"medium", Trait::Weight, 500},
    {"demi", Trait::Weight, 600},         {"semibold", Trait::Weight, 600},
    {"demibold", Trait::Weight, 600},     {"bold", Trait::Weight, 700},
    {"extrabold", Trait::Weight, 800},    {"ultrabold", Trait::Weight, 800},
    {"black", Trait::Weight, 900},        {"heavy", Trait::Weight, 900},
    {"extrablack", Trait::Weight, 950},   {"ultrablack", Trait::Weight, 950},
    {"ultracondensed", Trait::Width, 50}, {"extracondensed", Trait::Width, 63},
    {"condensed", Trait::Width, 75},      {"narrow", Trait::Width, 75},
    {"semicondensed", Trait::Width, 87},  {"semiexpanded", Trait::Width, 113},
    {"expanded", Trait::Width, 125},      {"extended", Trait::Width, 125},
    {"wide", Trait::Width, 125},          {"extraexpanded", Trait::Width, 150},
    {"ultraexpanded", Trait::Width, 200}, {"italic", Trait::Slant, 1},
    {"oblique", Trait::Slant, 1},         {"upright", Trait::Slant, 0},
};

/// The words of a text: blanks, hyphens and underscores separate them.
std::vector<std::string> WordsOf(std::string_view text)
{
    std::vector<std::string> words(1);
    for (const char c : LowerAscii(std::string(text)))
    {
        if (c != ' ' && c != '-' && c != '_')
        {
            words.back() += c;
        }
        else if (!words.back().empty())
        {
            words.emplace_back();
        }
    }
    if (words.back().empty())
    {
        words.pop_back();
    }
    return words;
}

const StyleWord* FindStyleWord(const std::string& word)
{
    const auto* const known =
        std::find_if(std::begin(styleWords), std::end(styleWords),
                     [&](const StyleWord& entry) { return entry.word == word; });
    return known != std::end(styleWords) ? known : nullptr;
}

bool IsDegree(const std::string& word)
{
    return word == "semi" || word == "extra" || word == "ultra" || word == "demi";
}

std::string PlaceOf(const std::string& name)
{
    return "font \"" + name + "\"";
}

FontLooks WithQuery(FontLooks looks, const FontQuery& query)
{
    looks.weight = query.weight.value_or(looks.weight);
    looks.width = query.width.value_or(looks.width);
    looks.isItalic = query.isItalic.value_or(looks.isItalic);
    return looks;
}

void TellOtherLooks(const std::string& name, const FontLooks& wanted, const InstalledFont& found,
                    std::vector<std::string>* notices)
{
    // fontconfig rounds widths to whole percents.
    if (found.looks.weight != wanted.weight || found.looks.isItalic != wanted.isItalic ||
        std::abs(found.looks.width - wanted.width) > 1)
    {
        notices->push_back(PlaceOf(name) + ": the nearest that is installed is \"" + found.family +
                           (found.style.empty() ? "" : " ") + found.style + "\"");
    }
}

/// The error for a name that no installed font has. It tells similar names.
Error UnknownFont(const std::string& name)
{
    constexpr std::size_t mostNames = 5;
    std::set<std::string> names;
    for (const InstalledFont& font : InstalledFonts())
    {
        names.insert(font.fullName);
    }
    if (names.empty())
    {
        return Error("fonts", "no font is installed (try the package fonts-dejavu-core)");
    }
    std::string problem;
    for (const std::string& similar : SimilarNames(name, {names.begin(), names.end()}, mostNames))
    {
        problem += (problem.empty() ? "\"" : ", \"") + similar + "\"";
    }
    return Error(PlaceOf(name), "not installed; near names: " + problem);
}

/// The installed font of a name, with or without words of its style.
InstalledFont FindByName(const FontQuery& query, std::vector<std::string>* notices)
{
    const bool hasLooks = query.weight || query.width || query.isItalic;
    const FontLooks looks = WithQuery({}, query);
    if (std::optional<InstalledFont> font = FindFontOfFamily(query.name, looks))
    {
        if (hasLooks)
        {
            TellOtherLooks(query.name, looks, *font, notices);
        }
        return *std::move(font);
    }
    if (!hasLooks)
    {
        if (std::optional<InstalledFont> font = FindFontByFullName(query.name))
        {
            return *std::move(font);
        }
    }
    // The longest name of a family counts: "Arial Black" is no black face of "Arial".
    for (std::size_t end = query.name.find_last_of(" -"); end != std::string::npos && end > 0;
         end = query.name.find_last_of(" -", end - 1))
    {
        FontLooks styled;
        if (!ReadStyleWords(std::string_view(query.name).substr(end + 1), &styled))
        {
            break;
        }
        styled = WithQuery(styled, query);
        if (std::optional<InstalledFont> font = FindFontOfFamily(query.name.substr(0, end), styled))
        {
            TellOtherLooks(query.name, styled, *font, notices);
            return *std::move(font);
        }
    }
    if (hasLooks)
    {
        if (std::optional<InstalledFont> font = FindFontByFullName(query.name))
        {
            TellOtherLooks(query.name, looks, *font, notices);
            return *std::move(font);
        }
    }
    throw UnknownFont(query.name);
}

std::shared_ptr<const ShapingFace> OpenFace(const FaceFile& file, std::vector<std::string>* notices)
{
    std::string problem;
    std::vector<std::string> told;
    std::shared_ptr<const ShapingFace> face = ShapingFace::Open(file, &problem, &told);
    const int number = file.index & 0xFFFF;
    const std::string place =
        number == 0 ? file.file : file.file + ", face " + std::to_string(number);
    if (!face)
    {
        throw Error(place, problem);
    }
    for (const std::string& notice : told)
    {
        notices->push_back(place);
        notices->back().append(": ").append(notice);
    }
    return face;
}

/// The number of a named instance of a face, from 1.
int InstanceOf(const ShapingFace& face, const std::string& name)
{
    std::string known;
    const std::vector<FaceInstance>& instances = face.Instances();
    for (std::size_t n = 0; n < instances.size(); ++n)
    {
        if (LowerAscii(instances[n].name) == LowerAscii(name))
        {
            return static_cast<int>(n) + 1;
        }
        known += n == 0 ? "" : ", ";
        known += instances[n].name;
    }
    throw OptionError("instance",
                      known.empty() ? "the font has no named instances" : "one of " + known, name);
}

void SetAxis(std::vector<AxisValue>* axes, const AxisValue& value)
{
    const auto known = std::find_if(axes->begin(), axes->end(),
                                    [&](const AxisValue& axis) { return axis.tag == value.tag; });
    if (known != axes->end())
    {
        known->value = value.value;
    }
    else
    {
        axes->push_back(value);
    }
}

/// Sets the axes that a file's looks mean, if the face has them.
void SetLooks(const ShapingFace& face, const FontQuery& query, std::vector<AxisValue>* axes)
{
    const auto set = [&](const char* tag, double value) {
        const std::vector<FaceAxis>& has = face.Axes();
        if (std::any_of(has.begin(), has.end(),
                        [tag](const FaceAxis& axis) { return axis.tag == tag; }))
        {
            SetAxis(axes, {tag, value});
        }
    };
    if (query.weight)
    {
        set("wght", *query.weight);
    }
    if (query.width)
    {
        set("wdth", *query.width);
    }
    if (query.isItalic)
    {
        set("ital", *query.isItalic ? 1 : 0);
    }
}

void CheckQuery(const FontQuery& query)
{
    const int given = (query.name.empty() ? 0 : 1) + (query.pattern.empty() ? 0 : 1) +
                      (query.file.empty() ? 0 : 1);
    if (given != 1)
    {
        throw OptionError("name", "exactly one of name, pattern and file",
                          std::to_string(given) + " of them");
    }
    CheckName("name", query.name);
    CheckName("pattern", query.pattern);
    CheckRange("index", query.index, 0, 0xFFFF);
    CheckRange("weight", query.weight.value_or(400), 1, 1000);
    CheckRange("width", query.width.value_or(100), 10, 1000);
    for (const AxisValue& axis : query.axes)
    {
        if (axis.tag.size() != 4)
        {
            throw OptionError("axes", "tags of four letters", "\"" + axis.tag + "\"");
        }
    }
}

}  // namespace

bool ReadStyleWords(std::string_view words, FontLooks* looks)
{
    FontLooks changed = *looks;
    const std::vector<std::string> parts = WordsOf(words);
    for (std::size_t n = 0; n < parts.size(); ++n)
    {
        const StyleWord* word = IsDegree(parts[n]) && n + 1 < parts.size()
                                    ? FindStyleWord(parts[n] + parts[n + 1])
                                    : nullptr;
        if (word != nullptr)
        {
            ++n;
        }
        else
        {
            word = FindStyleWord(parts[n]);
        }
        if (word == nullptr)
        {
            return false;
        }
        switch (word->trait)
        {
            case Trait::Weight:
                changed.weight = word->value;
                break;
            case Trait::Width:
                changed.width = word->value;
                break;
            case Trait::Slant:
                changed.isItalic = word->value != 0;
                break;
        }
    }
    *looks = changed;
    return !parts.empty();
}

ChosenFont OpenFont(const FontQuery& query)
{
    CheckQuery(query);
    ChosenFont chosen;
    FaceFile file;
    if (!query.name.empty())
    {
        file = FindByName(query, &chosen.notices).file;
    }
    else if (!query.pattern.empty())
    {
        const std::optional<InstalledFont> font = FindFontByPattern(query.pattern);
        if (!font)
        {
            throw Error("font pattern \"" + query.pattern + "\"",
                        "is no pattern, or no font is installed");
        }
        file = font->file;
    }
    else
    {
        file = {query.file, query.index, {}};
    }
    if (!query.instance.empty() || !query.file.empty())
    {
        std::vector<std::string> ignored;
        const std::shared_ptr<const ShapingFace> face =
            OpenFace({file.file, file.index & 0xFFFF, {}}, &ignored);
        if (!query.instance.empty())
        {
            file.index = (file.index & 0xFFFF) | InstanceOf(*face, query.instance) << 16;
            file.axes.clear();
        }
        SetLooks(*face, query, &file.axes);
    }
    for (const AxisValue& axis : query.axes)
    {
        SetAxis(&file.axes, axis);
    }
    chosen.face = OpenFace(file, &chosen.notices);
    return chosen;
}

}  // namespace orvane
