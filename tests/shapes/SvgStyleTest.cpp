// SPDX-License-Identifier: MIT
// Where properties come from and which of them win. Areas are in squares of a picture of 10 by 10.
#include "tests/shapes/SvgReading.h"

using orvane::SvgColor;

namespace
{

const std::string square = "width='4' height='4'";

SvgColor OnlyColor(const std::string& elements)
{
    const orvane::SvgDrawing drawing = ReadElements(elements);
    EXPECT_EQ(drawing.shapes.size(), 1u) << elements;
    return drawing.shapes.empty() ? SvgColor{1, 2, 3, 4} : drawing.shapes[0].color;
}

}  // namespace

TEST(SvgStyle, ElementsInheritFromThoseAround)
{
    EXPECT_EQ(OnlyColor("<g fill='red'><g><rect " + square + "/></g></g>"), red);
    EXPECT_EQ(OnlyColor("<g fill='red'><rect fill='blue' " + square + "/></g>"), blue);
    EXPECT_EQ(
        OnlyColor("<g fill='red'><g fill='blue'><rect fill='inherit' " + square + "/></g></g>"),
        blue);
    EXPECT_EQ(OnlyColor("<rect " + square + "/>"), black);
}

TEST(SvgStyle, TheStyleAttributeWinsOverRulesAndRulesOverAttributes)
{
    const std::string rule = "<style>rect { fill: lime }</style>";
    EXPECT_EQ(OnlyColor(rule + "<rect fill='red' " + square + "/>"), lime);
    EXPECT_EQ(OnlyColor(rule + "<rect style='fill: blue' " + square + "/>"), blue);
    EXPECT_EQ(OnlyColor("<style>rect { fill: lime !important }</style><rect style='fill:blue' " +
                        square + "/>"),
              lime);
}

TEST(SvgStyle, IdsWinOverClassesAndClassesOverNames)
{
    const std::string rect = "<rect id='a' class='x b' " + square + "/>";
    EXPECT_EQ(OnlyColor("<style>.b{fill:lime} rect{fill:red}</style>" + rect), lime);
    EXPECT_EQ(OnlyColor("<style>#a{fill:blue} .b{fill:lime}</style>" + rect), blue);
    EXPECT_EQ(OnlyColor("<style>rect.b{fill:blue} .b{fill:lime}</style>" + rect), blue);
    EXPECT_EQ(OnlyColor("<style>.x.b{fill:blue} .b{fill:lime}</style>" + rect), blue);
    EXPECT_EQ(OnlyColor("<style>*{fill:lime} .c{fill:red}</style>" + rect), lime);
    EXPECT_EQ(OnlyColor("<style>.b{fill:red} .b{fill:lime}</style>" + rect), lime);
    EXPECT_EQ(OnlyColor("<style><![CDATA[ /* .b{} */ .q, .b { fill : lime ; } ]]></style>" + rect),
              lime);
}

TEST(SvgStyle, CurrentColorIsTheColorProperty)
{
    EXPECT_EQ(OnlyColor("<g color='red'><rect fill='currentColor' " + square + "/></g>"), red);
    EXPECT_EQ(OnlyColor("<g fill='currentColor'><rect color='blue' " + square + "/></g>"), blue);
    orvane::SvgOptions options;
    options.currentColor = lime;
    EXPECT_EQ(
        ReadElements("<rect fill='currentColor' " + square + "/>", options).shapes.at(0).color,
        lime);
}

TEST(SvgStyle, OpacitiesMultiply)
{
    // 0.5 * 0.5 * 255 = 63.75.
    EXPECT_EQ(
        OnlyColor("<g opacity='0.5'><rect fill='red' fill-opacity='50%' " + square + "/></g>"),
        (SvgColor{255, 0, 0, 64}));
    EXPECT_EQ(OnlyColor("<g opacity='1'><rect fill='#ff000080' " + square + "/></g>"),
              (SvgColor{255, 0, 0, 128}));
    EXPECT_TRUE(ReadElements("<rect opacity='0' " + square + "/>").shapes.empty());
}

TEST(SvgStyle, NothingIsPaintedThatIsHiddenOrNotDisplayed)
{
    EXPECT_TRUE(ReadElements("<g display='none'><rect " + square + "/></g>").shapes.empty());
    EXPECT_TRUE(ReadElements("<g visibility='hidden'><rect " + square + "/></g>").shapes.empty());
    EXPECT_EQ(OnlyColor("<g visibility='hidden'><rect visibility='visible' " + square + "/></g>"),
              black);
    EXPECT_TRUE(ReadElements("<rect fill='none' " + square + "/>").shapes.empty());
}

TEST(SvgStyle, FillRulesDecideAboutHoles)
{
    const std::string nested = "<path d='M0 0H6V6H0zM2 2H4V4H2z' fill-rule='";
    EXPECT_NEAR(BlackArea(nested + "nonzero'/>"), 36, 1e-3);
    EXPECT_NEAR(BlackArea(nested + "evenodd'/>"), 32, 1e-3);
}

TEST(SvgStyle, PaintOrderPutsTheStrokeBelowTheFill)
{
    const std::string rect =
        "<rect x='2' y='2' width='6' height='6' fill='red' stroke='blue' "
        "stroke-width='2'";
    EXPECT_NEAR(AreaOf(ReadElements(rect + "/>"), red), 16, 1e-3);
    EXPECT_NEAR(AreaOf(ReadElements(rect + " paint-order='stroke'/>"), red), 36, 1e-3);
}

TEST(SvgStyle, AGradientGivesItsFirstStop)
{
    const std::string gradients =
        "<linearGradient id='a'><stop stop-color='red'/><stop stop-color='blue'/></linearGradient>"
        "<radialGradient id='b' href='#a'/>"
        "<linearGradient id='c'><stop style='stop-color:lime;stop-opacity:.2'/></linearGradient>";
    EXPECT_EQ(OnlyColor(gradients + "<rect fill='url(#a)' " + square + "/>"), red);
    EXPECT_EQ(OnlyColor(gradients + "<rect fill='url(&quot;#b&quot;)' " + square + "/>"), red);
    EXPECT_EQ(OnlyColor(gradients + "<rect fill='url(#c)' " + square + "/>"),
              (SvgColor{0, 255, 0, 51}));
    EXPECT_EQ(OnlyColor("<rect fill='url(#none) blue' " + square + "/>"), blue);
    EXPECT_TRUE(ReadElements("<rect fill='url(#none)' " + square + "/>").shapes.empty());
}
