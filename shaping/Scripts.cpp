// SPDX-License-Identifier: MIT
#include "shaping/Scripts.h"

#include <fribidi.h>

#include <algorithm>
#include <optional>

namespace orvane
{
namespace
{

struct ScriptLanguages
{
    ScriptTag script;
    /// Languages that are written in the script, each with a space before and after it. The first
    /// is taken when nothing is known of the user.
    std::string_view languages;
};

constexpr ScriptTag han = MakeScriptTag("Hani");
constexpr ScriptTag hangul = MakeScriptTag("Hang");
constexpr ScriptTag hiragana = MakeScriptTag("Hira");
constexpr ScriptTag katakana = MakeScriptTag("Kana");

constexpr ScriptLanguages scriptLanguages[] = {
    {MakeScriptTag("Arab"), " ar fa ur ps ckb sd ug "},
    {MakeScriptTag("Armn"), " hy "},
    {MakeScriptTag("Beng"), " bn as "},
    {MakeScriptTag("Cyrl"), " ru uk be bg mk sr kk ky mn tg tt "},
    {MakeScriptTag("Deva"), " hi mr ne sa "},
    {MakeScriptTag("Ethi"), " am ti "},
    {MakeScriptTag("Geor"), " ka "},
    {MakeScriptTag("Grek"), " el "},
    {MakeScriptTag("Gujr"), " gu "},
    {MakeScriptTag("Guru"), " pa "},
    {hangul, " ko "},
    {han, " zh ja yue "},
    {MakeScriptTag("Hebr"), " he yi "},
    {hiragana, " ja "},
    {katakana, " ja "},
    {MakeScriptTag("Khmr"), " km "},
    {MakeScriptTag("Knda"), " kn "},
    {MakeScriptTag("Laoo"), " lo "},
    {MakeScriptTag("Mlym"), " ml "},
    {MakeScriptTag("Mymr"), " my "},
    {MakeScriptTag("Orya"), " or "},
    {MakeScriptTag("Sinh"), " si "},
    {MakeScriptTag("Taml"), " ta "},
    {MakeScriptTag("Telu"), " te "},
    {MakeScriptTag("Thai"), " th "},
    {MakeScriptTag("Tibt"), " bo dz "},
};

std::string_view LanguagesOf(ScriptTag script)
{
    for (const ScriptLanguages& row : scriptLanguages)
    {
        if (row.script == script)
        {
            return row.languages;
        }
    }
    return {};
}

/// A language without its region, with a space before and after it.
std::string Padded(const std::string& language)
{
    return ' ' + language.substr(0, language.find('-')) + ' ';
}

struct OpenBracket
{
    FriBidiBracketType id;
    std::size_t at;  ///< its character, whose script the closing bracket takes on
};

/// The script of a character by itself, quickly for ASCII.
ScriptTag OwnScript(char32_t c)
{
    constexpr char32_t afterAscii = 0x80;
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
    return c >= afterAscii ? ScriptOf(c) : isLetter ? MakeScriptTag("Latn") : commonScript;
}

FriBidiBracketType BracketOf(char32_t character)
{
    if (character == ' ')
    {
        return FRIBIDI_NO_BRACKET;
    }
    return fribidi_get_bracket(static_cast<FriBidiChar>(character));
}

}  // namespace

std::vector<ScriptTag> ResolveScripts(std::u32string_view paragraph)
{
    // Deeper brackets are as rare as in FriBidi, which keeps as many.
    constexpr std::size_t mostBrackets = 63;
    std::vector<ScriptTag> scripts(paragraph.size(), commonScript);
    std::vector<OpenBracket> open;
    ScriptTag last = commonScript;
    for (std::size_t n = 0; n < paragraph.size(); ++n)
    {
        const ScriptTag own = OwnScript(paragraph[n]);
        if (own != commonScript && own != inheritedScript && own != unknownScript)
        {
            if (last == commonScript)
            {
                std::fill_n(scripts.begin(), n, own);
            }
            last = own;
            scripts[n] = own;
            continue;
        }
        scripts[n] = own == inheritedScript && n > 0 ? scripts[n - 1] : last;
        const FriBidiBracketType bracket = own == commonScript && paragraph[n] < 0x10000
                                               ? BracketOf(paragraph[n])
                                               : FRIBIDI_NO_BRACKET;
        if (bracket == FRIBIDI_NO_BRACKET)
        {
            continue;
        }
        if (FRIBIDI_IS_BRACKET_OPEN(bracket))
        {
            if (open.size() < mostBrackets)
            {
                open.push_back({FRIBIDI_BRACKET_ID(bracket), n});
            }
            continue;
        }
        const auto opening = std::find_if(
            open.rbegin(), open.rend(),
            [&](const OpenBracket& entry) { return entry.id == FRIBIDI_BRACKET_ID(bracket); });
        if (opening != open.rend())
        {
            last = scripts[n] = scripts[opening->at];
            open.erase(std::prev(opening.base()), open.end());
        }
    }
    return scripts;
}

std::string LikelyLanguage(ScriptTag script, const std::vector<ScriptTag>& paragraph,
                           const std::string& userLanguage)
{
    const auto has = [&](ScriptTag other) {
        return std::find(paragraph.begin(), paragraph.end(), other) != paragraph.end();
    };
    if (script == han && (has(hiragana) || has(katakana)))
    {
        return "ja";
    }
    if (script == han && has(hangul))
    {
        return "ko";
    }
    const std::string user = Padded(userLanguage);
    const std::string_view languages = LanguagesOf(script);
    if (!languages.empty())
    {
        return languages.find(user) != std::string_view::npos
                   ? userLanguage
                   : std::string(languages.substr(1, languages.find(' ', 1) - 1));
    }
    // A user whose language has another script writes Latin letters in an unknown language.
    const bool isOther = std::any_of(std::begin(scriptLanguages), std::end(scriptLanguages),
                                     [&](const ScriptLanguages& row) {
                                         return row.languages.find(user) != std::string_view::npos;
                                     });
    return script == MakeScriptTag("Latn") && !isOther ? userLanguage : std::string();
}

}  // namespace orvane
