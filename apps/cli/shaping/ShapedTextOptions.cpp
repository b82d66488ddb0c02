// SPDX-License-Identifier: MIT
#include "apps/cli/shaping/ShapedTextOptions.h"

#include "apps/cli/Errors.h"
#include "apps/cli/commands/OptionAdder.h"
#include "document/FontChoice.h"
#include "document/TextEncoding.h"
#include "markup/Markup.h"
#include "platform/FontMatching.h"
#include "platform/Limits.h"
#include "platform/Utf8.h"
#include "shaping/ScriptNames.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>

namespace orvane
{

namespace
{

// The names of the values of TextDirection and LineAlignment, in their order.
const std::vector<std::string> directionNames = {"auto", "ltr", "rtl"};
const std::vector<std::string> alignmentNames = {"start", "left", "center", "right", "justify"};

constexpr double leastLength = 0.001;
constexpr double mostLength = 1e6;
constexpr int boldWeight = 700;

template <typename Enum>
Enum ValueOf(const std::vector<std::string>& names, const std::string& name)
{
    return static_cast<Enum>(std::find(names.begin(), names.end(), name) - names.begin());
}

/// The looks that words of a style or, where \p text is a number, the field of this number says.
template <typename Number>
FontLooks ReadLooks(const std::string& text, Number FontLooks::*field, double least, double most,
                    const char* example)
{
    FontLooks looks;
    if (ReadStyleWords(text, &looks))
    {
        return looks;
    }
    double number = least - 1;
    try
    {
        number = ParseNumber(text);
    }
    catch (const Error&)
    {}
    if (number < least || number > most)
    {
        throw OptionError("",
                          "expected a number from " + NumberText(least) + " to " +
                              NumberText(most) + " or a word such as " + example,
                          "\"" + text + "\"");
    }
    looks.*field = static_cast<Number>(number);
    return looks;
}

int ParseWeight(const std::string& text)
{
    return ReadLooks(text, &FontLooks::weight, 1, 1000, "bold").weight;
}

double ParseWidth(const std::string& text)
{
    return ReadLooks(text, &FontLooks::width, 10, 1000, "condensed").width;
}

std::vector<std::string> ParseFeatures(const std::string& text)
{
    std::vector<std::string> features = SplitAtCommas(text);
    for (const std::string& feature : features)
    {
        if (!ParseFontFeature(feature))
        {
            throw OptionError("", "expected OpenType features such as liga=0 or smcp",
                              "\"" + feature + "\"");
        }
    }
    return features;
}

std::vector<AxisValue> ParseAxes(const std::string& text)
{
    constexpr std::size_t tagSize = 4;
    std::vector<AxisValue> axes;
    for (const std::string& part : SplitAtCommas(text))
    {
        if (part.find('=') != tagSize)
        {
            throw OptionError("", "expected axes with their values, such as wght=650,wdth=80",
                              "\"" + part + "\"");
        }
        axes.push_back({part.substr(0, tagSize), ParseNumber(part.substr(tagSize + 1))});
    }
    return axes;
}

void CheckScript(const std::string& text)
{
    if (!ParseScript(text))
    {
        throw OptionError("", "expected four letters (ISO 15924) such as Latn", "\"" + text + "\"");
    }
}

/// Opens fonts, each once, and collects what is not as it was asked for.
class FontOpener
{
public:
    std::shared_ptr<const ShapingFace> Open(const FontQuery& query)
    {
        ChosenFont font = OpenFont(query);
        for (std::string& notice : font.notices)
        {
            if (std::find(notices.begin(), notices.end(), notice) == notices.end())
            {
                notices.push_back(std::move(notice));
            }
        }
        return std::move(font.face);
    }

    std::vector<std::string> notices;
};

/// The name of the font for texts without one.
std::string DefaultFontName()
{
    for (const char* const name : defaultFonts)
    {
        if (FindFontByFullName(name))
        {
            return name;
        }
    }
    const std::vector<std::string> families = InstalledFamilies();
    if (families.empty())
    {
        throw Error("fonts", "no font is installed (try the package fonts-dejavu-core)");
    }
    return families.front();
}

/// The font of a part of a text. A font of its own does not take over the looks around it.
FontQuery QueryOf(const SpanStyle& span, FontQuery query)
{
    if (!span.font.empty())
    {
        query = FontQuery();
        query.name = span.font;
    }
    if (span.bold)
    {
        query.weight = boldWeight;
    }
    if (span.italic)
    {
        query.isItalic = true;
    }
    query.axes.insert(query.axes.end(), span.axes.begin(), span.axes.end());
    return query;
}

/// What two spans with the same font have in common.
std::string FontKey(const SpanStyle& span)
{
    std::string key = span.font + '\0' + (span.bold ? 'b' : '-') + (span.italic ? 'i' : '-');
    for (const AxisValue& axis : span.axes)
    {
        key += axis.tag + '=' + std::to_string(axis.value) + ',';
    }
    return key;
}

/// Sets the spans of a text with markup.
void AddSpans(const std::vector<TextSpan>& spans, const FontQuery& query, FontOpener& fonts,
              LayoutOptions& options)
{
    std::map<std::string, std::shared_ptr<const ShapingFace>> opened;
    for (const TextSpan& span : spans)
    {
        StyledSpan styled = {span.begin, span.end, options.style};
        std::shared_ptr<const ShapingFace>& face = opened[FontKey(span.style)];
        if (face == nullptr)
        {
            face = fonts.Open(QueryOf(span.style, query));
        }
        // The font of the text has letters that the font of the span lacks.
        std::vector<std::shared_ptr<const ShapingFace>>& faces = styled.style.fonts.faces;
        if (face != faces.front())
        {
            faces.insert(faces.begin(), face);
        }
        styled.style.size = span.style.size;
        styled.style.rise = span.style.rise;
        styled.style.features.insert(styled.style.features.end(), span.style.features.begin(),
                                     span.style.features.end());
        options.spans.push_back(std::move(styled));
    }
}

}  // namespace

ShapedTextOptions::ShapedTextOptions(CLI::App& command)
    : command_(command),
      texts_(command),
      direction_(directionNames.front()),
      alignment_(alignmentNames.front())
{
    command.add_flag("--markup", hasMarkup_, "The text has markup such as <b> and <span font=...>");
    AddFontOptions();
    AddShapingOptions();
    AddLineOptions();
}

void ShapedTextOptions::AddFontOptions()
{
    OptionAdder add(command_);
    CLI::Option* const name =
        add("--font", font_.name, "NAME",
            "A family, with or without words of its style, or a full\nname [DejaVu Sans Bold, or "
            "the first of some others]");
    CLI::Option* const pattern =
        add("--font-pattern", font_.pattern, "PATTERN",
            "The font that fontconfig chooses for a pattern, such\nas serif:bold")
            ->excludes(name);
    CLI::Option* const file =
        add("--font-file", font_.file, "FILE", "A font file, which need not be installed")
            ->excludes(name, pattern);
    add("--font-index", font_.index, "N [0]", "The number of the font in a collection")
        ->check(IntegerBetween(0, 0xFFFF))
        ->needs(file);
    add("--weight", weight_, "N|WORD", "1 to 1000, or a word such as light or semibold")
        ->check(ReadableBy(ParseWeight));
    add("--width", width_, "N|WORD",
        "Percent of the normal width, 10 to 1000, or a word such\nas condensed")
        ->check(ReadableBy(ParseWidth));
    command_.add_flag("--italic", isItalic_, "Italic or oblique letters");
    add("--instance", font_.instance, "NAME", "A named instance of a variable font");
    add("--axis", axes_, "LIST", "Axes of a variable font, such as wght=650,wdth=80")
        ->check(ReadableBy(ParseAxes));
    add("--fallback", fallbacks_, "NAME",
        "A font for characters that --font lacks, before the\ninstalled fonts are searched; may "
        "be repeated")
        ->allow_extra_args(false);
}

void ShapedTextOptions::AddShapingOptions()
{
    OptionAdder add(command_);
    add("--language", layout_.style.language, "TAG",
        "The language, such as sr or zh-Hant [by the script]");
    add("--script", layout_.style.script, "TAG", "The script, such as Latn [by the characters]")
        ->check(ReadableBy(CheckScript));
    add("--direction", direction_, Alternatives(directionNames) + " [" + direction_ + "]",
        "The direction of every paragraph; auto takes that of\nits first letter")
        ->check(CLI::IsMember(directionNames));
    add("--features", features_, "LIST", "OpenType features, such as liga=0,smcp")
        ->check(ReadableBy(ParseFeatures));
}

void ShapedTextOptions::AddLineOptions()
{
    OptionAdder add(command_);
    add("--wrap", layout_.width, "D", "Breaks lines at this width in ems")
        ->check(NumberBetween(leastLength, mostLength));
    add("--align", alignment_, Alternatives(alignmentNames) + " [" + alignment_ + "]",
        "How the lines are aligned")
        ->check(CLI::IsMember(alignmentNames));
    add("--line-height", layout_.lineHeight, "F [" + NumberText(layout_.lineHeight) + "]",
        "The distance of lines, as a factor of that of the fonts")
        ->check(NumberBetween(0, 100));
}

FontQuery ShapedTextOptions::Query() const
{
    FontQuery query = font_;
    if (query.name.empty() && query.pattern.empty() && query.file.empty())
    {
        query.name = DefaultFontName();
    }
    if (!weight_.empty())
    {
        query.weight = ParseWeight(weight_);
    }
    if (!width_.empty())
    {
        query.width = ParseWidth(width_);
    }
    if (isItalic_)
    {
        query.isItalic = true;
    }
    if (!axes_.empty())
    {
        query.axes = ParseAxes(axes_);
    }
    return query;
}

ShapedText ShapedTextOptions::Read(Strictness strictness) const
{
    if (!texts_.AreGiven())
    {
        throw UsageError("a text is required");
    }
    ShapedText shaped;
    shaped.options = layout_;
    LayoutOptions& options = shaped.options;
    options.direction = ValueOf<TextDirection>(directionNames, direction_);
    options.alignment = ValueOf<LineAlignment>(alignmentNames, alignment_);
    if (!features_.empty())
    {
        options.style.features = ParseFeatures(features_);
    }
    MarkedText marked;
    shaped.text = texts_.Text(hasMarkup_ ? limits::maxMarkupBytes : limits::maxTextBytes);
    if (hasMarkup_)
    {
        marked = ParseMarkup(shaped.text);
        shaped.text = marked.text;
    }
    FontOpener fonts;
    const FontQuery query = Query();
    FontChain& chain = options.style.fonts;
    chain.usesInstalledFonts = strictness == Strictness::GoOn;
    chain.faces = {fonts.Open(query)};
    for (const std::string& name : fallbacks_)
    {
        FontQuery fallback;
        fallback.name = name;
        chain.faces.push_back(fonts.Open(fallback));
    }
    AddSpans(marked.spans, query, fonts, options);
    TellFirst("", fonts.notices, " more notices about fonts");
    return shaped;
}

void TellMissingCharacters(const std::vector<MissingCharacter>& missing, Strictness strictness)
{
    constexpr std::size_t mostNamed = 10;
    std::map<ScriptTag, std::vector<char32_t>> byScript;
    for (const MissingCharacter& each : missing)
    {
        byScript[ScriptOf(each.character)].push_back(each.character);
    }
    std::vector<std::string> problems;
    for (const auto& [script, characters] : byScript)
    {
        std::string problem =
            strictness == Strictness::Fail ? "the named fonts lack " : "no installed font has ";
        for (std::size_t n = 0; n < std::min(characters.size(), mostNamed); ++n)
        {
            problem += (n == 0 ? "" : ", ") + Describe(Utf8Of(characters[n]));
        }
        if (characters.size() > mostNamed)
        {
            problem += " and " + std::to_string(characters.size() - mostNamed) + " more";
        }
        const std::string name = ScriptName(script);
        problem += name.empty() ? "" : ", script " + name;
        const std::string package = PackageForScript(script);
        if (strictness == Strictness::GoOn && !package.empty())
        {
            problem += " (try the package " + package + ")";
        }
        problems.push_back(problem);
    }
    TellFirst("", problems, " more scripts have characters that no font has");
    if (strictness == Strictness::Fail && !missing.empty())
    {
        throw Error("text", "--strict: characters are missing");
    }
}

}  // namespace orvane
