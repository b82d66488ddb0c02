// SPDX-License-Identifier: MIT
#include "apps/cli/shaping/ShapedTextOptions.h"

#include "apps/cli/Errors.h"
#include "apps/cli/commands/OptionAdder.h"
#include "document/OptionRange.h"
#include "document/texts/ShapedTextNode.h"
#include "platform/FontMatching.h"
#include "platform/Limits.h"
#include "shaping/ScriptNames.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace orvane
{

namespace
{

// The names of the values of TextDirection, in their order.
const std::vector<std::string> directionNames = {"auto", "ltr", "rtl"};

constexpr double leastLength = 0.001;
constexpr double mostLength = 1e6;

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

/// Whether tab stops can be read: numbers, each larger than the one before.
void CheckTabStops(const std::string& text)
{
    double before = 0;
    for (const std::string& part : SplitAtCommas(text))
    {
        const double stop = ParseNumber(part);
        if (stop <= before || stop > mostLength)
        {
            throw OptionError("",
                              "expected numbers up to " + NumberText(mostLength) +
                                  ", each larger than the one before",
                              "\"" + text + "\"");
        }
        before = stop;
    }
}

}  // namespace

ShapedTextOptions::ShapedTextOptions(CLI::App& command)
    : command_(command), direction_(directionNames.front())
{
    all_.push_back(command.add_flag("--markup", set_.isMarkup,
                                    "The text has markup such as <b> and <span font=...>"));
    AddFontOptions();
    AddShapingOptions();
    AddLineOptions();
}

void ShapedTextOptions::AddFontOptions()
{
    OptionAdder add(command_);
    name_ = add("--font", font_.name, "NAME",
                "A family, with or without words of its style, or a full\nname [DejaVu Sans Bold, "
                "or the first of some others]");
    CLI::Option* const pattern =
        add("--font-pattern", font_.pattern, "PATTERN",
            "The font that fontconfig chooses for a pattern, such\nas serif:bold")
            ->excludes(name_);
    CLI::Option* const file =
        add("--font-file", font_.file, "FILE", "A font file, which need not be installed")
            ->excludes(name_, pattern);
    all_.insert(
        all_.end(),
        {pattern, file,
         add("--font-index", font_.index, "N [0]", "The number of the font in a collection")
             ->check(IntegerBetween(0, 0xFFFF))
             ->needs(file),
         add("--weight", weight_, "N|WORD", "1 to 1000, or a word such as light or semibold")
             ->check(ReadableBy(ParseWeight)),
         add("--width", width_, "N|WORD",
             "Percent of the normal width, 10 to 1000, or a word such\nas condensed")
             ->check(ReadableBy(ParseWidth)),
         command_.add_flag("--italic", isItalic_, "Italic or oblique letters"),
         add("--instance", font_.instance, "NAME", "A named instance of a variable font"),
         add("--axis", axes_, "LIST", "Axes of a variable font, such as wght=650,wdth=80")
             ->check(ReadableBy(ParseAxes)),
         add("--fallback", fallbacks_, "NAME",
             "A font for characters that --font lacks, before the\ninstalled fonts are searched; "
             "may be repeated")
             ->allow_extra_args(false)});
}

void ShapedTextOptions::AddShapingOptions()
{
    OptionAdder add(command_);
    all_.insert(
        all_.end(),
        {add("--language", set_.language, "TAG",
             "The language, such as sr or zh-Hant [by the script]"),
         add("--script", set_.script, "TAG", "The script, such as Latn [by the characters]")
             ->check(ReadableBy(CheckScript)),
         add("--direction", direction_, Alternatives(directionNames) + " [" + direction_ + "]",
             "The direction of every paragraph; auto takes that of\nits first letter")
             ->check(CLI::IsMember(directionNames)),
         add("--features", features_, "LIST", "OpenType features, such as liga=0,smcp")
             ->check(ReadableBy(ParseFeatures))});
}

void ShapedTextOptions::AddLineOptions()
{
    OptionAdder add(command_);
    wrap_ = add("--wrap", set_.width, "D", "Breaks lines at this width in ems")
                ->check(NumberBetween(leastLength, mostLength));
    all_.insert(
        all_.end(),
        {wrap_,
         command_
             .add_flag("--break-words", set_.breaksWords,
                       "Breaks words that are wider than --wrap, which\notherwise stick out")
             ->needs(wrap_),
         add("--line-height", lineHeight_, "F",
             "The distance of lines, as a factor of that of the fonts\n[an em, or that of the "
             "largest letters]")
             ->check(NumberBetween(0, 100)),
         add("--tab-stops", tabStops_, "LIST",
             "Where tabs lead to, in ems from the start of the line,\nsuch as 1.5,4")
             ->check(ReadableBy(CheckTabStops)),
         add("--tab-interval", set_.tabInterval, "D [" + NumberText(set_.tabInterval) + "]",
             "The distance of the tab stops after those, in ems")
             ->check(NumberBetween(leastLength, 1000))});
}

FontQuery ShapedTextOptions::Query() const
{
    FontQuery query = font_;
    if (name_->count() > 0 && query.name.empty())
    {
        throw UsageError("--font: the name is empty");
    }
    if (query.name.empty() && query.pattern.empty() && query.file.empty())
    {
        query.name = DefaultShapedFont();
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

std::optional<std::string> ShapedTextOptions::FontName() const
{
    return name_->count() > 0 ? std::optional(font_.name) : std::nullopt;
}

ShapedOptions ShapedTextOptions::Read(Strictness strictness) const
{
    ShapedOptions options = set_;
    options.direction = ValueOf<TextDirection>(directionNames, direction_);
    options.lineHeight = lineHeight_;
    if (!features_.empty())
    {
        options.features = ParseFeatures(features_);
    }
    if (!tabStops_.empty())
    {
        for (const std::string& stop : SplitAtCommas(tabStops_))
        {
            options.tabStops.push_back(ParseNumber(stop));
        }
    }
    options.usesInstalledFonts = strictness == Strictness::GoOn;
    CheckName("font", font_.name);
    CheckName("font-pattern", font_.pattern);
    options.fonts = {Query()};
    for (const std::string& name : fallbacks_)
    {
        CheckName("fallback", name);
        options.fonts.emplace_back().name = name;
    }
    return options;
}

std::string ShapedTextOptions::ReadText(const TextArguments& texts) const
{
    return texts.Text(set_.isMarkup ? limits::maxMarkupBytes : limits::maxTextBytes);
}

}  // namespace orvane
