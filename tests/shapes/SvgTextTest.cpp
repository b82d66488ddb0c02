// SPDX-License-Identifier: MIT
#include "shapes/SvgText.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace orvane::shapes;
using orvane::contours::DoublePoint;

namespace
{

template <typename Parse>
std::string SyntaxErrorOf(Parse parse)
{
    try
    {
        parse();
    }
    catch (const SvgSyntaxError& error)
    {
        return std::to_string(error.At()) + ": " + error.what();
    }
    return "";
}

std::string PathErrorOf(const std::string& data)
{
    SegmentLimit limit;
    return SyntaxErrorOf([&] { ParsePathData(data, limit); });
}

Path PathOfData(const std::string& data)
{
    SegmentLimit limit;
    return ParsePathData(data, limit);
}

/// The ends of the pieces of all subpaths, as in "M1,1 3,1 z".
std::string EndsOf(const std::string& data)
{
    const Path path = PathOfData(data);
    std::string text;
    const auto add = [&](const char* before, const DoublePoint& point) {
        char place[64];
        std::snprintf(place, sizeof place, "%s%s%g,%g", text.empty() ? "" : " ", before, point.x,
                      point.y);
        text += place;
    };
    for (const Subpath& subpath : path.Subpaths())
    {
        add("M", subpath.start);
        for (const PathPiece& piece : subpath.pieces)
        {
            add("", piece.points[3]);
        }
        text += subpath.isClosed ? " z" : "";
    }
    return text;
}

}  // namespace

TEST(SvgText, NumbersNeedNoSpaceBetweenThem)
{
    EXPECT_EQ(ParseNumbers("1-2.5.5+3e1,4"), (std::vector<double>{1, -2.5, 0.5, 30, 4}));
    EXPECT_EQ(ParseNumbers(" "), std::vector<double>());
    EXPECT_EQ(ParseNumbers("1e-999 -0.0000"), (std::vector<double>{0, 0}));
}

TEST(SvgText, NumbersThatAreNoneOrInfiniteAreRefused)
{
    const auto errorOf = [](const char* text) {
        return SyntaxErrorOf([&] { ParseNumbers(text); });
    };
    EXPECT_EQ(errorOf("1 nan"), "2: found \"nan\", expected a number");
    EXPECT_EQ(errorOf("inf"), "0: found \"inf\", expected a number");
    EXPECT_EQ(errorOf("1 1e999"), "2: found \"1e999\", expected a number below 1.8e308");
    EXPECT_EQ(errorOf("0x10"), "1: found \"x10\", expected a number");
    EXPECT_EQ(errorOf("1,,2"), "2: found \",2\", expected a number");
    EXPECT_EQ(errorOf("--1"), "0: found \"--1\", expected a number");
}

TEST(SvgText, LengthsHaveUnits)
{
    EXPECT_DOUBLE_EQ(ParseLength("1in", 0), 96);
    EXPECT_DOUBLE_EQ(ParseLength("2.54cm", 0), 96);
    EXPECT_DOUBLE_EQ(ParseLength("25.4mm", 0), 96);
    EXPECT_DOUBLE_EQ(ParseLength(" 72pt ", 0), 96);
    EXPECT_DOUBLE_EQ(ParseLength("6pc", 0), 96);
    EXPECT_DOUBLE_EQ(ParseLength("7px", 0), 7);
    EXPECT_DOUBLE_EQ(ParseLength("2em", 0), 32);
    EXPECT_DOUBLE_EQ(ParseLength("25%", 8), 2);
    EXPECT_EQ(SyntaxErrorOf([] { ParseLength("3furlongs", 0); }),
              "1: found \"furlongs\", expected a unit of length");
    EXPECT_EQ(SyntaxErrorOf([] { ParseLength("3 4", 0); }), "2: found \"4\", expected one length");
}

TEST(SvgText, TransformsApplyFromTheRight)
{
    // 1, 1 is scaled to 2, 3, and then moved.
    EXPECT_EQ(ParseTransforms("translate(10, 20) scale(2 3)")({1, 1}), (DoublePoint{12, 23}));
    EXPECT_EQ(ParseTransforms("translate(5),scale(2)")({1, 1}), (DoublePoint{7, 2}));
    EXPECT_EQ(ParseTransforms("matrix(1 2 3 4 5 6)")({1, 1}), (DoublePoint{9, 12}));
}

TEST(SvgText, TurnsAndSkewsAreInDegrees)
{
    // y points downward, so that a turn by 90 degrees takes the x axis to the y axis.
    const DoublePoint turned = ParseTransforms("rotate(90)")({1, 0});
    EXPECT_NEAR(turned.x, 0, 1e-15);
    EXPECT_NEAR(turned.y, 1, 1e-15);
    const DoublePoint around = ParseTransforms("rotate(180 5 5)")({4, 5});
    EXPECT_NEAR(around.x, 6, 1e-12);
    EXPECT_NEAR(around.y, 5, 1e-12);
    EXPECT_NEAR(ParseTransforms("skewX(45)")({0, 2}).x, 2, 1e-12);
    EXPECT_NEAR(ParseTransforms("skewY(45)")({2, 0}).y, 2, 1e-12);
}

TEST(SvgText, TransformsThatAreNoneAreRefused)
{
    const auto errorOf = [](const char* text) {
        return SyntaxErrorOf([&] { ParseTransforms(text); });
    };
    EXPECT_EQ(errorOf("turn(3)"),
              "0: found \"turn(3)\", expected a known transform with as many numbers as it takes");
    EXPECT_EQ(errorOf("scale(1 2 3)"),
              "0: found \"scale(1 2 3)\", expected a known transform with "
              "as many numbers as it takes");
    EXPECT_EQ(errorOf("scale 2"), "0: found \"scale 2\", expected a transform such as scale(2)");
    EXPECT_EQ(errorOf("scale(2"), "7: found the end, expected a number");
}

TEST(SvgText, EveryPathCommandIsReadInBothForms)
{
    EXPECT_EQ(EndsOf("M1 1L2 3H5V7Z"), "M1,1 2,3 5,3 5,7 1,1 z");
    EXPECT_EQ(EndsOf("m1 1l1 2h3v4z"), "M1,1 2,3 5,3 5,7 1,1 z");
    EXPECT_EQ(EndsOf("M1 1C2 2 3 3 4 5S6 6 7 8"), "M1,1 4,5 7,8");
    EXPECT_EQ(EndsOf("m1 1c2 2 3 3 4 5s6 6 7 8"), "M1,1 5,6 12,14");
    EXPECT_EQ(EndsOf("M1 1Q2 2 3 4T6 6"), "M1,1 3,4 6,6");
    EXPECT_EQ(EndsOf("m1 1q2 2 3 4t6 6"), "M1,1 4,5 10,11");
    EXPECT_EQ(EndsOf("M1 1A0 0 0 0 0 3 3a0 0 0 0 0 3 3"), "M1,1 3,3 6,6");
}

TEST(SvgText, RepeatedArgumentsRepeatTheCommandAndThoseOfMovesAreLines)
{
    EXPECT_EQ(EndsOf("M1 1 2 2,3 3"), "M1,1 2,2 3,3");
    EXPECT_EQ(EndsOf("m1 1 2 2 3 3"), "M1,1 3,3 6,6");
    EXPECT_EQ(EndsOf("M0 0h1 2 3"), "M0,0 1,0 3,0 6,0");
    EXPECT_EQ(EndsOf("M1-1.5.5 2L3,3"), "M1,-1.5 0.5,2 3,3");
}

TEST(SvgText, SmoothCurvesMirrorTheControlPointBeforeThem)
{
    // The last control point, 4, 5, is mirrored at 6, 6 to 8, 7.
    const Path cubic = PathOfData("M0 0C1 1 4 5 6 6S9 9 10 6");
    EXPECT_EQ(cubic.Subpaths()[0].pieces[1].points[1], (DoublePoint{8, 7}));
    // Without a curve before it, the control point is the start.
    const Path alone = PathOfData("M1 2S9 9 10 6");
    EXPECT_EQ(alone.Subpaths()[0].pieces[0].points[1], (DoublePoint{1, 2}));
    // 2, 2 mirrored at 4, 0 is 6, -2; a cubic's control point lies two thirds of the way to it.
    const Path quadratic = PathOfData("M0 0Q2 2 4 0T8 0");
    const DoublePoint control = quadratic.Subpaths()[0].pieces[1].points[1];
    EXPECT_NEAR(control.x, 4 + 2 * 2.0 / 3, 1e-12);
    EXPECT_NEAR(control.y, -2 * 2.0 / 3, 1e-12);
}

TEST(SvgText, FlagsOfArcsNeedNoSpaceAfterThem)
{
    EXPECT_EQ(EndsOf("M0 0a1 1 0 013 4"), EndsOf("M0 0a1 1 0 0 1 3 4"));
}

TEST(SvgText, PathDataThatIsNoneIsRefusedWithItsPlace)
{
    EXPECT_EQ(PathErrorOf("L1 1"),
              "0: found \"L1 1\", expected M or m, with which path data begins");
    EXPECT_EQ(PathErrorOf("M1 1 X"), "5: found \"X\", expected a path command");
    EXPECT_EQ(PathErrorOf("M1"), "2: found the end, expected a number");
    EXPECT_EQ(PathErrorOf("M0 0L1 2 3"), "10: found the end, expected a number");
    EXPECT_EQ(PathErrorOf("M0 0A1 1 0 2 1 3 4"), "11: found \"2 1 3 4\", expected 0 or 1");
    EXPECT_EQ(PathErrorOf("M0 0L1e400 2"), "5: found \"1e400 2\", expected a number below 1.8e308");
    EXPECT_EQ(PathErrorOf(""), "");
}

TEST(SvgText, AViewBoxIsFittedIntoItsViewport)
{
    const std::vector<double> box = {10, 10, 20, 20};
    const SvgViewport wide = {80, 40};
    const auto cornerBy = [&](const char* ratio) { return ViewBoxMap(box, wide, ratio)({10, 10}); };
    // Fitted by its height, 40 by 40, into a viewport of 80 by 40.
    EXPECT_EQ(cornerBy(""), (DoublePoint{20, 0}));
    EXPECT_EQ(cornerBy("xMinYMin meet"), (DoublePoint{0, 0}));
    EXPECT_EQ(cornerBy("xMaxYMid"), (DoublePoint{40, 0}));
    // As wide as the viewport, 80 by 80.
    EXPECT_EQ(cornerBy("xMidYMid slice"), (DoublePoint{0, -20}));
    EXPECT_EQ(cornerBy("xMidYMax slice"), (DoublePoint{0, -40}));
    EXPECT_EQ(ViewBoxMap(box, wide, "none")({30, 30}), (DoublePoint{80, 40}));
    EXPECT_EQ(SyntaxErrorOf([&] { cornerBy("middle"); }),
              "0: found \"middle\", expected an alignment such as xMidYMid");
    EXPECT_EQ(SyntaxErrorOf([&] { cornerBy("xMudYMid"); }),
              "0: found \"xMudYMid\", expected an alignment such as xMidYMid");
}
