// SPDX-License-Identifier: MIT
// Elements, their places and their sizes. Areas are in squares of a picture of 10 by 10 units.
#include "tests/shapes/SvgReading.h"

#include <cmath>
#include <numbers>

using orvane::SvgDrawing;

namespace
{

constexpr double pi = std::numbers::pi;

std::string OnlyCorners(const std::string& elements)
{
    const SvgDrawing drawing = ReadElements(elements);
    EXPECT_EQ(drawing.shapes.size(), 1u) << elements;
    if (drawing.shapes.empty())
    {
        return "";
    }
    EXPECT_EQ(drawing.shapes[0].contours.size(), 1u) << elements;
    return CornersOf(drawing.shapes[0].contours[0]);
}

}  // namespace

TEST(SvgFile, TheViewBoxIsOneEmHighAndYPointsUp)
{
    const SvgDrawing drawing = orvane::ReadSvg(
        "<svg viewBox='10 20 40 20'><rect x='10' y='20' width='10' height='5'/></svg>", "test.svg");
    EXPECT_DOUBLE_EQ(drawing.width, 2);
    ASSERT_EQ(drawing.shapes.size(), 1u);
    // The rectangle lies in the upper left corner: half an em wide and a quarter high.
    const orvane::shapes::Contour& contour = drawing.shapes[0].contours.at(0);
    ASSERT_EQ(contour.size(), 4u);
    for (const orvane::contours::DoublePoint& corner : contour)
    {
        EXPECT_TRUE(corner.x == 0 || corner.x == 0.5) << corner.x;
        EXPECT_TRUE(corner.y == 0.75 || corner.y == 1) << corner.y;
    }
    EXPECT_DOUBLE_EQ(orvane::shapes::SignedArea(contour), 0.125);
}

TEST(SvgFile, BasicShapesHaveTheAreasOfTheirFormulas)
{
    EXPECT_NEAR(BlackArea("<rect x='1' y='2' width='3' height='4'/>"), 12, 1e-3);
    EXPECT_NEAR(BlackArea("<rect width='10%' height='50%'/>"), 5, 1e-3);
    EXPECT_NEAR(BlackArea("<rect width='8' height='8' rx='2'/>"), 64 - (4 - pi) * 4, 0.03);
    EXPECT_NEAR(BlackArea("<rect width='8' height='8' rx='2' ry='1'/>"), 64 - (4 - pi) * 2, 0.03);
    EXPECT_NEAR(BlackArea("<rect width='8' height='8' ry='9'/>"), pi * 16, 0.05);
    EXPECT_NEAR(BlackArea("<circle cx='5' cy='5' r='4'/>"), pi * 16, 0.05);
    EXPECT_NEAR(BlackArea("<ellipse cx='5' cy='5' rx='4' ry='2'/>"), pi * 8, 0.05);
    EXPECT_NEAR(BlackArea("<polygon points='1,1 9,1 9,9'/>"), 32, 1e-3);
    EXPECT_NEAR(BlackArea("<polyline points='1,1 9,1 9,9 1,9'/>"), 64, 1e-3);
    EXPECT_NEAR(BlackArea("<line x1='1' y1='5' x2='9' y2='5' stroke='black'/>"), 8, 1e-3);
    EXPECT_NEAR(BlackArea("<path d='M5 1A4 4 0 0 1 5 9z'/>"), pi * 8, 0.05);
    // The parabola y = x * (4 - x) has an area of 4 * 4 * 4 / 6 above the x axis.
    EXPECT_NEAR(BlackArea("<path d='M0 0Q2 8 4 0z'/>"), 64.0 / 6, 0.02);
}

TEST(SvgFile, TheToleranceDecidesHowManyCornersACircleHas)
{
    orvane::SvgOptions options;
    options.tolerance = 0.02;
    // A circle of 0.4 em as a polygon whose sides lie within 0.02 em of it has at least
    // pi / acos(1 - 0.02 / 0.4) = 9.9 corners; it is made of eight curves of two steps each.
    const SvgDrawing coarse = ReadElements("<circle cx='5' cy='5' r='4'/>", options);
    EXPECT_EQ(coarse.shapes.at(0).contours.at(0).size(), 16u);
    options.tolerance = 0.0002;
    const SvgDrawing fine = ReadElements("<circle cx='5' cy='5' r='4'/>", options);
    EXPECT_GE(fine.shapes.at(0).contours.at(0).size(), 99u);
    EXPECT_LE(fine.shapes.at(0).contours.at(0).size(), 120u);
    options.tolerance = std::nan("");
    EXPECT_THROW(ReadElements("", options), orvane::OptionError);
    options.tolerance = 0;
    EXPECT_THROW(ReadElements("", options), orvane::OptionError);
}

TEST(SvgFile, TransformsOfElementsAreNested)
{
    EXPECT_EQ(OnlyCorners("<g transform='translate(2 1)'><rect transform='scale(3)' width='1' "
                          "height='2'/></g>"),
              "2,1 2,7 5,1 5,7");
    EXPECT_EQ(OnlyCorners("<rect transform='matrix(0 1 -1 0 8 0)' width='5' height='2'/>"),
              "6,0 6,5 8,0 8,5");
    // A mirrored picture is filled all the same.
    EXPECT_NEAR(BlackArea("<rect transform='translate(9 0) scale(-1 1)' width='5' height='2'/>"),
                10, 1e-3);
    EXPECT_TRUE(ReadElements("<rect transform='scale(0 1)' width='5' height='2'/>").shapes.empty());
}

TEST(SvgFile, TheSameColourIsOneShapeAndLaterColoursCutIt)
{
    const SvgDrawing drawing = ReadElements(
        "<rect width='4' height='4' fill='red'/>"
        "<rect x='6' width='4' height='4' fill='blue'/>"
        "<rect x='2' width='6' height='2' fill='#f00'/>");
    ASSERT_EQ(drawing.shapes.size(), 2u);
    EXPECT_EQ(drawing.shapes[0].color, red);
    EXPECT_NEAR(AreaOf(drawing.shapes[0]), 16 + 12 - 4, 1e-3);
    EXPECT_EQ(drawing.shapes[0].contours.size(), 1u);
    EXPECT_EQ(drawing.shapes[1].color, blue);
    EXPECT_NEAR(AreaOf(drawing.shapes[1]), 16 - 4, 1e-3);
}

TEST(SvgFile, WhatLiesOutsideOfTheViewportIsCutOff)
{
    EXPECT_EQ(OnlyCorners("<rect x='-5' y='8' width='10' height='90'/>"), "0,8 0,10 5,8 5,10");
    EXPECT_TRUE(ReadElements("<rect x='11' width='9' height='9'/>").shapes.empty());
}

TEST(SvgFile, UseRepeatsElements)
{
    EXPECT_EQ(OnlyCorners("<defs><rect id='r' width='2' height='1'/></defs>"
                          "<use href='#r' x='3' y='4' transform='scale(2)'/>"),
              "6,8 6,10 10,8 10,10");
    EXPECT_NEAR(AreaOf(ReadElements("<defs><g id='g'><rect width='2' height='1'/></g></defs>"
                                    "<use xlink:href='#g' fill='red'/><use href='#g' x='5'/>"),
                       red),
                2, 1e-3);
}

TEST(SvgFile, SymbolsAreFittedAndClipped)
{
    // The symbol of 2 by 2 is shown 4 by 4 from 1, 1. Its square of 3 by 3 ends at its border.
    EXPECT_EQ(OnlyCorners("<symbol id='s' viewBox='0 0 2 2'><rect width='3' height='3'/></symbol>"
                          "<use href='#s' x='1' y='1' width='4' height='4'/>"),
              "1,1 1,5 5,1 5,5");
    EXPECT_EQ(OnlyCorners("<symbol id='s' viewBox='0 0 2 2' overflow='visible'><rect width='3' "
                          "height='3'/></symbol><use href='#s' x='1' y='1' width='4' height='4'/>"),
              "1,1 1,7 7,1 7,7");
}

TEST(SvgFile, InnerPicturesHaveViewportsOfTheirOwn)
{
    EXPECT_EQ(OnlyCorners("<svg x='2' y='3' width='4' height='2' viewBox='0 0 1 1' "
                          "preserveAspectRatio='none'><rect width='50%' height='1'/></svg>"),
              "2,3 2,5 4,3 4,5");
}

TEST(SvgFile, ASwitchDrawsItsFirstChildThatAsksForNothing)
{
    EXPECT_EQ(OnlyCorners("<switch><rect systemLanguage='de' width='1' height='1'/><rect width='2' "
                          "height='2'/><rect width='3' height='3'/></switch>"),
              "0,0 0,2 2,0 2,2");
}

TEST(SvgFile, ClipPathsCutWhatTheyClip)
{
    const std::string clip =
        "<clipPath id='c'><rect width='3' height='3'/><rect x='5' width='2' "
        "height='3'/></clipPath>";
    EXPECT_NEAR(BlackArea(clip + "<rect y='1' width='10' height='9' clip-path='url(#c)'/>"), 6 + 4,
                1e-3);
    EXPECT_NEAR(
        BlackArea(clip + "<g clip-path='url(#c)'><g clip-path='url(#c)' "
                         "transform='translate(1 0)'><rect width='10' height='10'/></g></g>"),
        6 + 3, 1e-3);
    EXPECT_TRUE(ReadElements("<clipPath id='c'/><rect width='9' height='9' clip-path='url(#c)'/>")
                    .shapes.empty());
    EXPECT_NEAR(BlackArea("<clipPath id='c'><path clip-rule='evenodd' "
                          "d='M0 0H6V6H0zM2 2H4V4H2z'/></clipPath>"
                          "<rect width='9' height='9' clip-path='url(#c)'/>"),
                32, 1e-3);
}

TEST(SvgFile, ThousandsOfElementsMayHaveTheSameClip)
{
    std::string elements = "<clipPath id='c'><rect width='5' height='10'/></clipPath>";
    for (int i = 0; i < 5000; ++i)
    {
        elements += "<rect clip-path='url(#c)' y='" + std::to_string(i * 0.002) +
                    "' width='10' height='0.001'/>";
    }
    EXPECT_NEAR(BlackArea(elements), 5000 * 5 * 0.001, 0.05);
}

TEST(SvgFile, AWidthAndAHeightMakeAViewBox)
{
    const SvgDrawing drawing = orvane::ReadSvg(
        "<svg width='1in' height='48'><rect width='48' height='48'/></svg>", "test.svg");
    EXPECT_DOUBLE_EQ(drawing.width, 2);
    EXPECT_NEAR(AreaOf(drawing.shapes.at(0)), 100, 1e-3);
}

TEST(SvgFile, AFileWithoutASizeIsAsLargeAsWhatItDraws)
{
    const SvgDrawing drawing = orvane::ReadSvg(
        "<svg><rect x='100' y='200' width='30' height='10'/><rect x='100' y='210' width='10' "
        "height='10' fill='red'/></svg>",
        "test.svg");
    EXPECT_DOUBLE_EQ(drawing.width, 30.0 / 20);
    EXPECT_NEAR(AreaOf(drawing, black), 75, 1e-3);
    EXPECT_NEAR(AreaOf(drawing, red), 25, 1e-3);
    EXPECT_TRUE(orvane::ReadSvg("<svg/>", "test.svg").shapes.empty());
}

TEST(SvgFile, AViewportOfAnotherShapeShowsWhatLiesBesideTheViewBox)
{
    // The viewport is twice as wide as the viewBox, which lies in its middle.
    const std::string rect = "<rect x='-9' width='30' height='10'/></svg>";
    const SvgDrawing wide =
        orvane::ReadSvg("<svg width='20' height='10' viewBox='0 0 10 10'>" + rect, "test.svg");
    EXPECT_DOUBLE_EQ(wide.width, 1);
    EXPECT_EQ(CornersOf(wide.shapes.at(0).contours.at(0)), "-5,0 -5,10 15,0 15,10");
    const SvgDrawing stretched = orvane::ReadSvg(
        "<svg width='20' height='10' viewBox='0 0 10 10' preserveAspectRatio='none'>" + rect,
        "test.svg");
    EXPECT_DOUBLE_EQ(stretched.width, 2);
    EXPECT_EQ(CornersOf(stretched.shapes.at(0).contours.at(0)), "0,0 0,10 20,0 20,10");
}

TEST(SvgFile, ElementsMayHaveAPrefix)
{
    EXPECT_NEAR(AreaOf(orvane::ReadSvg("<s:svg viewBox='0 0 10 10'><s:rect width='2' height='2'/>"
                                       "<rect width='9' height='9'/></s:svg>",
                                       "test.svg")
                           .shapes.at(0)),
                4, 1e-3);
}
