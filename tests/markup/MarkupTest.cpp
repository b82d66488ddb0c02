// SPDX-License-Identifier: MIT
#include "markup/Markup.h"

#include "orvane/Error.h"
#include "platform/Limits.h"

#include <gtest/gtest.h>

#include <string>

using orvane::EscapeMarkup;
using orvane::MarkedText;
using orvane::ParseMarkup;
using orvane::SpanStyle;
using orvane::TextSpan;

namespace
{

namespace limits = orvane::limits;

std::string Repeated(const std::string& text, std::size_t count)
{
    std::string repeated;
    for (std::size_t i = 0; i < count; ++i)
    {
        repeated += text;
    }
    return repeated;
}

/// The text of a span.
std::string TextOf(const MarkedText& text, std::size_t span)
{
    const TextSpan& found = text.spans.at(span);
    return text.text.substr(found.begin, found.end - found.begin);
}

/// The message of the error that a text gives.
std::string ErrorOf(const std::string& markup)
{
    try
    {
        ParseMarkup(markup);
    }
    catch (const orvane::Error& error)
    {
        return error.what();
    }
    return "no error";
}

}  // namespace

TEST(Markup, ATextWithoutMarkupIsOneSpan)
{
    const MarkedText text = ParseMarkup("Straße\n> 2");
    EXPECT_EQ(text.text, "Straße\n> 2");
    ASSERT_EQ(text.spans.size(), 1u);
    EXPECT_EQ(text.spans[0].begin, 0u);
    EXPECT_EQ(text.spans[0].end, 11u);
    EXPECT_FALSE(text.spans[0].style.bold);
    EXPECT_EQ(text.spans[0].style.size, 1);
}

TEST(Markup, AnEmptyTextHasNoSpans)
{
    EXPECT_TRUE(ParseMarkup("").spans.empty());
    EXPECT_TRUE(ParseMarkup("<b></b><span/>").spans.empty());
    EXPECT_EQ(ParseMarkup("<b></b>").text, "");
}

TEST(Markup, ElementsChangeTheStyleOfTheirText)
{
    const MarkedText text = ParseMarkup("a<b>b<i>c</i></b>d<i>e</i>");
    EXPECT_EQ(text.text, "abcde");
    ASSERT_EQ(text.spans.size(), 5u);
    const bool bold[] = {false, true, true, false, false};
    const bool italic[] = {false, false, true, false, true};
    for (std::size_t i = 0; i < 5; ++i)
    {
        EXPECT_EQ(TextOf(text, i), std::string(1, static_cast<char>('a' + i)));
        EXPECT_EQ(text.spans[i].style.bold, bold[i]) << i;
        EXPECT_EQ(text.spans[i].style.italic, italic[i]) << i;
    }
}

TEST(Markup, NeighboursOfEqualStyleAreOneSpan)
{
    const MarkedText text = ParseMarkup("<b>ab</b><b>cd</b>&amp;<span>e</span>");
    ASSERT_EQ(text.spans.size(), 2u);
    EXPECT_EQ(TextOf(text, 0), "abcd");
    EXPECT_EQ(TextOf(text, 1), "&e");
}

TEST(Markup, SizesAreFactorsOfTheSizeAround)
{
    const MarkedText text = ParseMarkup(
        "<span size='2'>a<span size=\"150%\">b</span><big>c</big></span><small>d</small>");
    ASSERT_EQ(text.spans.size(), 4u);
    EXPECT_EQ(text.spans[0].style.size, 2);
    EXPECT_EQ(text.spans[1].style.size, 3);
    EXPECT_DOUBLE_EQ(text.spans[2].style.size, 2.4);
    EXPECT_DOUBLE_EQ(text.spans[3].style.size, 1 / 1.2);
}

TEST(Markup, RisesAreEmsOfTheSizeAround)
{
    const MarkedText text = ParseMarkup(
        "<span size='2'><span rise='0.25' size='3'>a</span><sup>b<sub>c</sub></sup></span>");
    ASSERT_EQ(text.spans.size(), 3u);
    EXPECT_EQ(text.spans[0].style.rise, 0.5);
    EXPECT_EQ(text.spans[0].style.size, 6);
    EXPECT_DOUBLE_EQ(text.spans[1].style.rise, 0.7);
    // The letters b are 2 / 1.2 times as large as the text, and c is lowered by 0.15 of that.
    EXPECT_DOUBLE_EQ(text.spans[2].style.rise, 0.7 - 0.15 * 2 / 1.2);
    EXPECT_DOUBLE_EQ(text.spans[2].style.size, 2 / 1.44);
}

TEST(Markup, FontAndColoursAreThoseOfTheInnermostSpanThatNamesThem)
{
    const MarkedText text = ParseMarkup(
        "<span font='Inter Bold' color='#ff0000' edge='#0f0'>a<span font='Gelasio'"
        " bevel='#0000ff80'>b</span></span>");
    ASSERT_EQ(text.spans.size(), 2u);
    const SpanStyle& outer = text.spans[0].style;
    const SpanStyle& inner = text.spans[1].style;
    EXPECT_EQ(outer.font, "Inter Bold");
    EXPECT_EQ(inner.font, "Gelasio");
    ASSERT_TRUE(inner.face && inner.edge && inner.bevel);
    EXPECT_EQ(inner.face->red, 1);
    EXPECT_EQ(inner.face->green, 0);
    EXPECT_EQ(inner.edge->green, 1);
    EXPECT_EQ(inner.bevel->blue, 1);
    EXPECT_EQ(inner.bevel->alpha, 128.0f / 255.0f);
    EXPECT_FALSE(outer.bevel);
}

TEST(Markup, FeaturesAddUpAndAnAxisHasTheInnermostValue)
{
    const MarkedText text = ParseMarkup(
        "<span features='liga=0, smcp' axes='wght=650,wdth=80'>"
        "<span features='liga=1' axes='wght=-1.5'>a</span></span>");
    ASSERT_EQ(text.spans.size(), 1u);
    const SpanStyle& style = text.spans[0].style;
    EXPECT_EQ(style.features, (std::vector<std::string>{"liga=0", "smcp", "liga=1"}));
    ASSERT_EQ(style.axes.size(), 2u);
    EXPECT_EQ(style.axes[0].tag, "wght");
    EXPECT_EQ(style.axes[0].value, -1.5);
    EXPECT_EQ(style.axes[1].tag, "wdth");
    EXPECT_EQ(style.axes[1].value, 80);
}

TEST(Markup, EntitiesAreTheirCharacters)
{
    EXPECT_EQ(ParseMarkup("&lt;&gt;&amp;&quot;&apos;&#233;&#xe9;&#x10FFFF;").text,
              "<>&\"'éé\xF4\x8F\xBF\xBF");
    EXPECT_EQ(ParseMarkup("<span font='A &amp; B'>a</span>").spans[0].style.font, "A & B");
}

TEST(Markup, AnEscapedTextIsReadAsItself)
{
    EXPECT_EQ(EscapeMarkup("a < b && c > \"d\""), "a &lt; b &amp;&amp; c &gt; \"d\"");
    EXPECT_EQ(ParseMarkup(EscapeMarkup("a < b && c > \"d\" é\n")).text, "a < b && c > \"d\" é\n");
}

TEST(Markup, MistakesAreToldWithLineAndColumn)
{
    const std::pair<const char*, const char*> cases[] = {
        {"ab\nc<u>d</u>",
         "markup: line 2, column 2: found the element <u>, expected <b>, <i>, <big>, <small>, "
         "<sup>, <sub> or <span>"},
        {"ß<b>x</i>",
         "markup: line 1, column 6: found </i>, expected </b>, which ends the innermost element"},
        {"</b>", "markup: line 1, column 1: found </b>, expected <b> before it"},
        {"a<b>x", "markup: line 1, column 2: found <b> that nothing ends, expected </b> after it"},
        {"a < b",
         "markup: line 1, column 4: found \" \", expected an element such as <b>, or &lt; for the "
         "sign itself"},
        {"a & b",
         "markup: line 1, column 3: found \"&\" that begins no entity, expected &amp; for the sign "
         "itself, &lt;, &gt;, &quot;, &apos;, &#233; or &#xE9;"},
        {"&#xD800;",
         "markup: line 1, column 1: found \"&#xD800;\", expected the number of a character"},
        {"&#0;", "markup: line 1, column 1: found \"&#0;\", expected the number of a character"},
        {"&#12x;",
         "markup: line 1, column 1: found \"&#12x;\", expected the number of a character"},
        {"<b",
         "markup: line 1, column 3: found the end, expected \">\" at the end of the "
         "element's start"},
        {"<span size=2>",
         "markup: line 1, column 12: found \"2\", expected \"\"\" before the "
         "value of an attribute"},
        {"<span size>",
         "markup: line 1, column 11: found \">\", expected \"=\" after the name of "
         "an attribute"},
        {"<span size='2'font='x'>",
         "markup: line 1, column 15: found \"f\", expected a space before an attribute"},
        {"<span size='2' size='3'>",
         "markup: line 1, column 16: found a second attribute size, expected each attribute once"},
        {"<span size='big'>",
         "markup: line 1, column 7: found \"big\", expected a factor above 0, "
         "such as 1.5 or 150%"},
        {"<span size='nan'>",
         "markup: line 1, column 7: found \"nan\", expected a factor above 0, "
         "such as 1.5 or 150%"},
        {"<span size='101'>",
         "markup: line 1, column 7: found \"101\", expected letters of 0.01 to "
         "100 times the size of the text"},
        {"<span rise='nan'>",
         "markup: line 1, column 7: found \"nan\", expected letters at most "
         "100 ems above or below the text"},
        {"<span rise='x'>",
         "markup: line 1, column 7: found \"x\", expected a number of ems, such "
         "as 0.2 or -0.1"},
        {"<span color='redd'>",
         "markup: line 1, column 7: found \"redd\", expected a colour: a "
         "name such as navy, #rgb or #rrggbb"},
        {"<span font=''>", "markup: line 1, column 7: found a name of 0 bytes, expected 1 to 1024"},
        {"<span features='liga=x'>",
         "markup: line 1, column 7: found \"liga=x\", expected a "
         "feature of four characters, such as smcp or liga=0"},
        {"<span features='liga=1e2'>",
         "markup: line 1, column 7: found \"liga=1e2\", expected a "
         "feature of four characters, such as smcp or liga=0"},
        {"<span features='ligature'>",
         "markup: line 1, column 7: found \"ligature\", expected a "
         "feature of four characters, such as smcp or liga=0"},
        {"<span axes='wght'>",
         "markup: line 1, column 7: found \"wght\", expected an axis of four "
         "characters with a value, such as wght=650"},
        {"<span axes='wght=inf'>",
         "markup: line 1, column 7: found \"wght=inf\", expected an axis "
         "of four characters with a value, such as wght=650"},
        {"<span colour='red'>",
         "markup: line 1, column 7: found the attribute colour, expected "
         "font, size, color, edge, bevel, rise, features or axes"},
        {"<b size='2'>",
         "markup: line 1, column 4: found \"s\", expected \">\" at the end of the "
         "element's start"},
        {"é\xFF", "markup: line 1, column 2: found the byte FF, expected UTF-8"},
        {"a\x1B[0m", "markup: line 1, column 2: found the control character 27, expected text"},
    };
    for (const auto& [markup, message] : cases)
    {
        EXPECT_EQ(ErrorOf(markup), message) << markup;
    }
}

TEST(Markup, TheLongestMarkupIsRead)
{
    const std::string longest(limits::maxMarkupBytes, 'a');
    EXPECT_EQ(ParseMarkup(longest).text, longest);
    EXPECT_EQ(ErrorOf(longest + "a"), "markup: found 1048577 bytes, expected at most 1048576");
}

TEST(Markup, ElementsLieInsideEachOtherUpToTheLimit)
{
    const std::size_t most = limits::maxMarkupNesting;
    EXPECT_EQ(ParseMarkup(Repeated("<b>", most) + "a" + Repeated("</b>", most)).text, "a");
    EXPECT_EQ(ErrorOf(Repeated("<b>", most + 1)),
              "markup: line 1, column 193: found more than 64 elements inside each other, "
              "expected at most 64");
}

TEST(Markup, ATextHasSpansUpToTheLimit)
{
    const std::string pair = "a<b>b</b>";
    const MarkedText text = ParseMarkup(Repeated(pair, limits::maxTextSpans / 2));
    EXPECT_EQ(text.spans.size(), limits::maxTextSpans);
    EXPECT_EQ(ErrorOf(Repeated(pair, limits::maxTextSpans / 2) + "a"),
              "markup: line 1, column 45001: found more than 10000 spans, expected at most 10000");
}

TEST(Markup, AStyleHasSettingsUpToTheLimit)
{
    const std::size_t most = limits::maxSpanSettings;
    const auto features = [](std::size_t count) {
        return "<span features='smcp" + Repeated(",smcp", count - 1) + "'>a</span>";
    };
    EXPECT_EQ(ParseMarkup(features(most)).spans[0].style.features.size(), most);
    EXPECT_EQ(ErrorOf(features(most + 1)),
              "markup: line 1, column 7: found 65 features, expected at most 64");
    std::string axes = "<span axes='a000=1";
    for (std::size_t i = 1; i < most; ++i)
    {
        axes += ",a" + std::to_string(100 + i) + "=1";
    }
    EXPECT_EQ(ParseMarkup(axes + "'>a</span>").spans[0].style.axes.size(), most);
    EXPECT_EQ(ErrorOf(axes + ",last=1'>a</span>"),
              "markup: line 1, column 7: found 65 axes, expected at most 64");
}
