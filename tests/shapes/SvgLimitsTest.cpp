// SPDX-License-Identifier: MIT
// Files that are damaged, hostile or too large.
#include "document/outlines/OutlineImport.h"
#include "platform/Limits.h"
#include "tests/shapes/SvgReading.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

using namespace orvane;

namespace
{

std::string Repeated(const std::string& text, int count)
{
    std::string result;
    for (int i = 0; i < count; ++i)
    {
        result += text;
    }
    return result;
}

std::string Picture(const std::string& elements)
{
    return "<svg viewBox='0 0 10 10'>" + elements + "</svg>";
}

}  // namespace

TEST(SvgLimits, WhatIsNoSvgFileIsRefusedWithItsLine)
{
    EXPECT_EQ(ErrorOf("<svg>\n<g>\n</svg>"),
              "test.svg: line 3: found start-end tags mismatch, expected an SVG file in UTF-8");
    EXPECT_EQ(ErrorOf(""),
              "test.svg: line 1: found no document element found, expected an SVG file "
              "in UTF-8");
    EXPECT_EQ(ErrorOf("\n<html></html>"),
              "test.svg: line 2: found the element <html>, expected <svg>");
    EXPECT_NE(ErrorOf(std::string("\xFF\xFE<\0s\0v\0g\0", 10)), "");
    EXPECT_NE(ErrorOf(std::string(1000, '\0')), "");
    EXPECT_NE(ErrorOf("\x89PNG\r\n"), "");
}

TEST(SvgLimits, EntitiesAreRefused)
{
    EXPECT_EQ(ErrorOf("<?xml version='1.0'?>\n<!DOCTYPE svg [\n<!ENTITY a 'aaaa'>\n<!ENTITY b "
                      "'&a;&a;'> ]><svg viewBox='0 0 1 1'/>"),
              "test.svg: line 2: found a declaration <!ENTITY, expected a document type without "
              "entities");
    EXPECT_EQ(ErrorOf("<!DOCTYPE svg PUBLIC '-//W3C//DTD SVG 1.1//EN' 'svg11.dtd'>"
                      "<svg viewBox='0 0 1 1'/>"),
              "");
}

TEST(SvgLimits, AttributesThatMakeNoSenseAreRefusedWithTheirPlace)
{
    EXPECT_EQ(ErrorOf(Picture("\n<path d='M1 1L2'/>")),
              "test.svg: line 2: <path>: d, character 7: found the end, expected a number");
    EXPECT_EQ(ErrorOf(Picture("<rect width='-1'/>")),
              "test.svg: line 1: <rect>: width, character 1: found a negative length, expected a "
              "length that is not negative");
    EXPECT_EQ(
        ErrorOf(Picture("<circle r='1e999'/>")),
        "test.svg: line 1: <circle>: r, character 1: found \"1e999\", expected a number below "
        "1.8e308");
    EXPECT_EQ(ErrorOf(Picture("<g transform='scale(nan)'/>")),
              "test.svg: line 1: <g>: transform, character 7: found \"nan)\", expected a number");
    EXPECT_EQ(
        ErrorOf(Picture("<polygon points='1 2 3'/>")),
        "test.svg: line 1: <polygon>: points, character 6: found an odd number of coordinates, "
        "expected an x and a y for each point");
    EXPECT_EQ(ErrorOf("<svg viewBox='0 0 0 1'/>"),
              "test.svg: line 1: <svg>: viewBox, character 1: found \"0 0 0 1\", expected four "
              "numbers, a width and a height above 0");
    EXPECT_EQ(
        ErrorOf("<svg width='0' viewBox='0 0 1 1'/>"),
        "test.svg: line 1: <svg>: found a width or height of 0, expected a picture with an area");
}

TEST(SvgLimits, AFileTakesAtMost16MiB)
{
    const std::string start = "<svg viewBox='0 0 1 1'><!--";
    const std::string end = "--></svg>";
    std::string bytes =
        start + std::string(limits::maxSvgBytes - start.size() - end.size(), 'x') + end;
    EXPECT_EQ(ErrorOf(bytes), "");
    bytes.insert(start.size(), "x");
    EXPECT_EQ(ErrorOf(bytes), "test.svg: found 16777217 bytes, expected at most 16777216");
}

TEST(SvgLimits, ElementsNest256Deep)
{
    // The svg element is the first level and the rectangle the last one.
    const auto nested = [](int groups) {
        return Picture(Repeated("<g>", groups) + "<rect width='1' height='1'/>" +
                       Repeated("</g>", groups));
    };
    EXPECT_EQ(ErrorOf(nested(254)), "");
    EXPECT_EQ(ErrorOf(nested(255)),
              "test.svg: line 1: <rect>: found 257 elements inside each other, "
              "expected at most 256");
    EXPECT_NE(ErrorOf(nested(1'000'000)), "");
}

TEST(SvgLimits, ElementsThatUseThemselvesNestTooDeep)
{
    EXPECT_EQ(
        ErrorOf(Picture("<g id='a'><use href='#a'/></g>")),
        "test.svg: line 1: <use>: found 257 elements inside each other, expected at most 256");
    EXPECT_EQ(
        ErrorOf(Picture("<clipPath id='c' clip-path='url(#c)'/><g clip-path='url(#c)'/>")),
        "test.svg: line 1: <clipPath>: found 257 elements inside each other, expected at most "
        "256");
    EXPECT_EQ(
        ErrorOf(Picture("<clipPath id='c'><use id='u' href='#u'/></clipPath>"
                        "<g clip-path='url(#c)'/>")),
        "test.svg: line 1: <use>: found 257 elements inside each other, expected at most 256");
    EXPECT_EQ(ErrorOf(Picture("<linearGradient id='a' href='#b'/><linearGradient id='b' href='#a'/>"
                              "<rect width='1' height='1' fill='url(#a)'/>")),
              "");
}

TEST(SvgLimits, AtMost200000ElementsAreDrawn)
{
    EXPECT_EQ(ErrorOf(Picture(Repeated("<g/>", 199'999))), "");
    EXPECT_EQ(ErrorOf(Picture(Repeated("<g/>", 200'000))),
              "test.svg: line 1: <g>: found more than 200000 elements, those that use elements "
              "repeat included, expected at most that many");
}

TEST(SvgLimits, AFewUseElementsCannotAskForMillions)
{
    std::string elements = "<defs><rect id='a0' width='1' height='1'/>";
    for (int i = 1; i < 20; ++i)
    {
        const std::string use = "<use href='#a" + std::to_string(i - 1) + "'/>";
        elements += "<g id='a" + std::to_string(i) + "'>" + Repeated(use, 10) + "</g>";
    }
    EXPECT_NE(ErrorOf(Picture(elements + "</defs><use href='#a19'/>")).find("200000 elements"),
              std::string::npos);
}

TEST(SvgLimits, AtMost100NoticesAndAHintAreGiven)
{
    const auto noticesFor = [](int count) {
        std::string elements;
        for (int i = 0; i < count; ++i)
        {
            elements += "<unknown" + std::to_string(i) + "/>";
        }
        return ReadElements(elements).notices;
    };
    EXPECT_EQ(noticesFor(100).back().problem, "is not supported and left out");
    EXPECT_EQ(noticesFor(500).size(), 101u);
    EXPECT_EQ(noticesFor(500).back().problem, "has a problem; there are more that are not told");
}

TEST(SvgLimits, APatternHasAtMost1000Dashes)
{
    const auto noticesFor = [](int count) {
        return ReadElements("<path stroke='red' d='M0 0H1' stroke-dasharray='" +
                            Repeated("1 ", count) + "'/>")
            .notices.size();
    };
    EXPECT_EQ(noticesFor(1000), 0u);
    EXPECT_EQ(noticesFor(1001), 1u);
}

TEST(SvgLimits, AFileHasAtMost1000Colours)
{
    const auto squares = [](int count) {
        std::string elements;
        for (int i = 0; i < count; ++i)
        {
            char rectangle[80];
            std::snprintf(rectangle, sizeof rectangle,
                          "<rect x='%g' width='.01' height='1' fill='#%06x'/>", i * 0.01, i);
            elements += rectangle;
        }
        return Picture(elements);
    };
    EXPECT_EQ(ReadSvg(squares(1000), "test.svg").shapes.size(), 1000u);
    EXPECT_EQ(ErrorOf(squares(1001)),
              "test.svg: line 1: <rect>: found more than 1000 colors, expected at most that many");
}

TEST(SvgLimits, AMillionLineSegmentsAreRead)
{
    const std::string most = "<path d='M1 1" + Repeated("h1v1", 499'999) + "'/>";
    EXPECT_EQ(ErrorOf(Picture(most + "<path d='M0 0h1v1'/>")), "");
    const std::string expected =
        "test.svg: line 1: <path>: found more than 1000000 line segments, curves and strokes cut "
        "into lines, expected at most that many";
    EXPECT_EQ(ErrorOf(Picture(most + "<path d='M0 0h1v1h1'/>")), expected);
    EXPECT_EQ(ErrorOf(Picture("<path d='" + Repeated("M1 1", 1'000'001) + "'/>")), expected);
    // A curve of many segments, a stroke of many dashes and a path that is used many times.
    EXPECT_EQ(ErrorOf(Picture("<path transform='scale(1e9)' d='M0 0Q1 9e9 9 9'/>")), expected);
    EXPECT_EQ(ErrorOf(Picture("<path stroke='red' stroke-dasharray='1e-9' d='M0 0H9'/>")),
              expected);
    EXPECT_EQ(ErrorOf(Picture("<path id='a' d='M1 1" + Repeated("h1v1", 5'000) + "'/>" +
                              Repeated("<use href='#a'/>", 100))),
              expected);
}

TEST(SvgLimits, CoordinatesLieWithinAMillionEms)
{
    // The polygon reaches from the picture to the limit, or beyond.
    EXPECT_EQ(ErrorOf(Picture("<polygon points='0,0 9999990,0 0,9'/>")), "");
    const std::string expected =
        "found a coordinate more than 1000000 times the picture's height "
        "away, expected a smaller one";
    EXPECT_EQ(ErrorOf(Picture("<polygon points='0,0 10000010,0 0,9'/>")),
              "test.svg: line 1: <polygon>: " + expected);
    EXPECT_EQ(ErrorOf(Picture("<polygon points='0,0 1e308,1e308 0,9' transform='scale(1e308)'/>")),
              "test.svg: line 1: <polygon>: " + expected);
    EXPECT_EQ(ErrorOf(Picture("<g transform='scale(1e308)scale(1e308)'/>")),
              "test.svg: line 1: <g>: transform: found numbers that multiply to more than 1.8e308, "
              "expected smaller ones");
    EXPECT_EQ(ErrorOf("<svg viewBox='0 0 2e6 1'/>"),
              "test.svg: line 1: <svg>: found a viewport or viewBox of 2000000.000000 times the "
              "viewBox's height, expected at most 1000000.000000");
}

TEST(SvgLimits, OutlinesThatCrossTooOftenAreRefused)
{
    // 10,000 long lines in all directions, each of which crosses nearly all others.
    std::string data;
    for (int i = 0; i < 10'000; ++i)
    {
        const double share = i / 10'000.0;
        char line[80];
        std::snprintf(line, sizeof line, "M0 %.4fL10 %.4fV%.4fz", 10 * share, 10 * (1 - share),
                      10 * (1 - share) + 0.0005);
        data += line;
    }
    EXPECT_EQ(ErrorOf(Picture("<path d='" + data + "'/>")),
              "test.svg: found a picture that takes more than 1000000000 steps, expected one with "
              "fewer crossings "
              "and repetitions");
}

TEST(SvgLimits, LongAttributesCannotBeReadAgainAndAgain)
{
    const std::string expected =
        "test.svg: found a picture that takes more than 1000000000 steps, "
        "expected one with fewer crossings and repetitions";
    const std::string spaces(1'000'000, ' ');
    const std::string uses = Repeated("<use href='#a'/>", 1000);
    EXPECT_EQ(ErrorOf(Picture("<path id='a' d='" + spaces + "'/>" + uses)), expected);
    EXPECT_EQ(ErrorOf(Picture("<path id='a' class='" + spaces + "'/>" + uses)), expected);
    EXPECT_EQ(ErrorOf(Picture("<style>" + Repeated(".a.b{x:y}", 10'000) + "</style>" +
                              Repeated("<g class='a'/>", 20'000))),
              expected);
    EXPECT_EQ(
        ErrorOf(Picture("<g id='a'>" + Repeated("<desc/>", 100'000) + "</g>" + Repeated(uses, 2))),
        expected);
}

TEST(SvgLimits, OnlyRegularFilesAreRead)
{
    const std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) / ("svg-" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    const auto errorOf = [](const std::filesystem::path& path) {
        try
        {
            ReadSvgFile(path.string());
        }
        catch (const Error& error)
        {
            return error.Problem();
        }
        return std::string();
    };
    const std::filesystem::path pipe = folder / "pipe.svg";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(errorOf(pipe), "is a pipe or a device, expected a regular file");
    EXPECT_NE(errorOf(folder), "");
    EXPECT_NE(errorOf(folder / "missing.svg"), "");
    std::ofstream(folder / "square.svg") << Picture("<rect width='5' height='5'/>");
    EXPECT_NEAR(AreaOf(ReadSvgFile((folder / "square.svg").string()).shapes.at(0)), 25, 1e-3);
    std::filesystem::remove_all(folder);
}
