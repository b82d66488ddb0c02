// SPDX-License-Identifier: MIT
// Areas are in squares of a picture of 10 by 10 units.
#include "tests/shapes/SvgReading.h"

#include <numbers>

namespace
{

std::string Stroke(const std::string& path, const std::string& attributes)
{
    return "<path fill='none' stroke='#000' d='" + path + "' " + attributes + "/>";
}

constexpr double pi = std::numbers::pi;

}  // namespace

TEST(Strokes, ALineBecomesARectangle)
{
    const auto drawing = ReadElements(Stroke("M2 5H8", "stroke-width='2'"));
    ASSERT_EQ(drawing.shapes.size(), 1u);
    ASSERT_EQ(drawing.shapes[0].contours.size(), 1u);
    EXPECT_EQ(CornersOf(drawing.shapes[0].contours[0]), "2,4 2,6 8,4 8,6");
}

TEST(Strokes, CapsLengthenALine)
{
    EXPECT_NEAR(BlackArea(Stroke("M2 5H8", "stroke-width='2' stroke-linecap='square'")), 16, 1e-3);
    EXPECT_NEAR(BlackArea(Stroke("M2 5H8", "stroke-width='2' stroke-linecap='round'")), 12 + pi,
                0.02);
}

TEST(Strokes, JoinsFillTheOuterCorner)
{
    // Two bars of 5 by 2 that share a square of 1 by 1 inside; the corner outside is a square of 1
    // by 1, of which a bevel leaves half and a round join a quarter of a circle.
    const std::string corner = "M7 2H3V7";
    EXPECT_NEAR(BlackArea(Stroke(corner, "stroke-width='2'")), 8 + 10 - 1 + 1, 1e-3);
    EXPECT_NEAR(BlackArea(Stroke(corner, "stroke-width='2' stroke-linejoin='bevel'")),
                8 + 10 - 1 + 0.5, 1e-3);
    EXPECT_NEAR(BlackArea(Stroke(corner, "stroke-width='2' stroke-linejoin='round'")),
                8 + 10 - 1 + pi / 4, 0.01);
}

TEST(Strokes, AMiterBeyondTheLimitBecomesABevel)
{
    // The miter of a right angle is 1.414 widths long.
    const std::string corner = "M7 2H3V7";
    EXPECT_NEAR(BlackArea(Stroke(corner, "stroke-width='2' stroke-miterlimit='1.42'")), 18, 1e-3);
    EXPECT_NEAR(BlackArea(Stroke(corner, "stroke-width='2' stroke-miterlimit='1.41'")), 17.5, 1e-3);
}

TEST(Strokes, AClosedPathHasAJoinAtItsStartAndAHole)
{
    const auto drawing = ReadElements(Stroke("M2 2H8V8H2Z", "stroke-width='2'"));
    ASSERT_EQ(drawing.shapes[0].contours.size(), 2u);
    EXPECT_EQ(CornersOf(drawing.shapes[0].contours[0]), "1,1 1,9 9,1 9,9");
    EXPECT_EQ(CornersOf(drawing.shapes[0].contours[1]), "3,3 3,7 7,3 7,7");
    EXPECT_NEAR(AreaOf(drawing.shapes[0]), 64 - 16, 1e-3);
}

TEST(Strokes, APathThatReturnsToItsStartWithoutClosingHasNoJoinThere)
{
    EXPECT_NEAR(BlackArea(Stroke("M2 2H8V8H2V2", "stroke-width='2'")), 48 - 1, 1e-3);
}

TEST(Strokes, ACircleBecomesARing)
{
    EXPECT_NEAR(
        BlackArea("<circle cx='5' cy='5' r='3' fill='none' stroke='black' stroke-width='2'/>"),
        pi * (16 - 4), 0.1);
}

TEST(Strokes, APenWiderThanACircleLeavesNoHole)
{
    // The pen reaches from the centre 1 unit beyond to the other side.
    const auto drawing =
        ReadElements("<circle cx='5' cy='5' r='1' fill='none' stroke='black' stroke-width='4'/>");
    EXPECT_EQ(drawing.shapes[0].contours.size(), 1u);
    EXPECT_NEAR(AreaOf(drawing.shapes[0]), pi * 9, 0.1);
}

TEST(Strokes, DashesAndGapsTakeTurns)
{
    // Dashes of 2 at 0, 3 and 6, the last of 1 at 9.
    const auto drawing = ReadElements(Stroke("M0 5H10", "stroke-dasharray='2 1'"));
    EXPECT_EQ(drawing.shapes[0].contours.size(), 4u);
    EXPECT_NEAR(AreaOf(drawing.shapes[0]), 7, 1e-3);
}

TEST(Strokes, TheOffsetMovesTheDashesBack)
{
    // The line starts 2.5 into the pattern of 3: half a gap, then dashes at 0.5, 3.5 and 6.5, and
    // half a dash from 9.5.
    EXPECT_NEAR(BlackArea(Stroke("M0 5H10", "stroke-dasharray='2 1' stroke-dashoffset='2.5'")), 6.5,
                1e-3);
    EXPECT_NEAR(BlackArea(Stroke("M0 5H10", "stroke-dasharray='2 1' stroke-dashoffset='-0.5'")),
                6.5, 1e-3);
}

TEST(Strokes, AnOddNumberOfDashesIsGoneThroughTwice)
{
    // 3 on, 3 off, 3 on, 1 off.
    EXPECT_NEAR(BlackArea(Stroke("M0 5H10", "stroke-dasharray='3'")), 6, 1e-3);
}

TEST(Strokes, ADashRunsOnOverTheCornerOfAClosedPath)
{
    // The square of 6 has a length of 24. The pattern of 8 on and 4 off, begun 4 into the dash, is
    // on from 20 to 28, over the start, and on from 8 to 16, over the corner at 12.
    const auto drawing = ReadElements(
        Stroke("M2 2H8V8H2Z", "stroke-width='2' stroke-dasharray='8 4' stroke-dashoffset='4'"));
    ASSERT_EQ(drawing.shapes[0].contours.size(), 2u);
    // Each has two arms of 4 by 2, which overlap in a square of 1 by 1; the miter fills another
    // one.
    EXPECT_NEAR(AreaOf(drawing.shapes[0]), 2 * (8 + 8 - 1 + 1), 1e-3);
}

TEST(Strokes, DashesWithoutLengthAreDots)
{
    // Dots of diameter 1 at 0, 2, 4, 6 and 8; half of the first lies outside of the picture.
    const auto drawing =
        ReadElements(Stroke("M0 5H9", "stroke-linecap='round' stroke-dasharray='0 2'"));
    EXPECT_EQ(drawing.shapes[0].contours.size(), 5u);
    EXPECT_NEAR(AreaOf(drawing.shapes[0]), 4.5 * pi / 4, 0.02);
}

TEST(Strokes, PathLengthScalesTheDashes)
{
    // The path of length 10 counts as 100 long, so dashes of 20 and 10 are 2 and 1 long.
    EXPECT_NEAR(BlackArea(Stroke("M0 5H10", "pathLength='100' stroke-dasharray='20 10'")), 7, 1e-3);
}

TEST(Strokes, ASubpathWithoutLengthShowsItsCaps)
{
    EXPECT_NEAR(BlackArea(Stroke("M5 5z", "stroke-width='2' stroke-linecap='square'")), 4, 1e-3);
    EXPECT_NEAR(BlackArea(Stroke("M5 5h0", "stroke-width='2' stroke-linecap='round'")), pi, 0.02);
    EXPECT_EQ(BlackArea(Stroke("M5 5h0", "stroke-width='2'")), 0);
    EXPECT_EQ(BlackArea(Stroke("M5 5", "stroke-width='2' stroke-linecap='round'")), 0);
}

TEST(Strokes, ATransformStretchesThePen)
{
    // A vertical line of width 1 that is stretched to 4 along x, and a horizontal one that is not.
    EXPECT_NEAR(BlackArea(Stroke("M1 1V9", "transform='scale(4 1)'")), 4 * 8, 1e-3);
    EXPECT_NEAR(BlackArea(Stroke("M0 5H2", "transform='scale(4 1)'")), 8 * 1, 1e-3);
}

TEST(Strokes, AHairpinTurnsByItsJoin)
{
    const auto hairpin = [](const std::string& join) {
        return BlackArea(Stroke("M2 5H8H5", "stroke-width='2' stroke-linejoin='" + join + "'"));
    };
    EXPECT_NEAR(hairpin("miter"), 12, 1e-3);
    EXPECT_NEAR(hairpin("round"), 12 + pi / 2, 0.02);
}
