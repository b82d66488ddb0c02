// SPDX-License-Identifier: MIT
// Texts on circles and along paths.
#include "extrude/EdgeStyle.h"
#include "orvane/Error.h"
#include "shapedtext/GlyphSlots.h"
#include "shapedtext/OrvShapedString.h"
#include "shapedtext/PathLine.h"
#include "solids/MeshBuilder.h"
#include "solids/MeshMeasures.h"
#include "tests/shapedtext/ShapedSettings.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace
{
using orvane::Alignment;
using orvane::OrvShapedString;
using orvane::PathLine;
using orvane::PathSide;
using orvane::PlacedLetter;
using orvane::TextPath;

// In DejaVu Sans, of 2,048 units per em, H has an advance of 1,540 units. Its outline is 1,493
// units high and lies from 201 to 1,339 units beside its origin.
constexpr double em = 2048;
constexpr double widthOfH = 1540 / em;
constexpr double heightOfH = 1493 / em;

TextPath Circle(double radius)
{
    TextPath path;
    path.radius = radius;
    return path;
}

TextPath Data(const char* data)
{
    TextPath path;
    path.data = data;
    return path;
}

class TextOnPath : public testing::Test
{
protected:
    TextOnPath()
    {
        text.SetScale(DVector(1, 1, 0.25));
        text.ClearAdjustSpacingForBevels();
    }

    void Set(const std::string& characters, const TextPath& path,
             Alignment alignment = Alignment::Left)
    {
        orvane::ShapedTextSettings settings = InFont("DejaVu Sans");
        settings.path = path;
        text.SetJustification(static_cast<int>(alignment));
        text.SetText(characters, settings);
        text.CalculateBounds();
    }
    std::vector<PlacedLetter> Letters()
    {
        std::vector<PlacedLetter> letters;
        text.PlaceSolids([&](const PlacedLetter& letter) { letters.push_back(letter); });
        return letters;
    }
    double AngleOf(const PlacedLetter& letter)
    {
        return dynamic_cast<orvane::GlyphSlots&>(*text.GetFont()).ShapeAt(letter.glyphIndex).angle;
    }
    void ExpectRefused(const std::string& characters, const orvane::ShapedTextSettings& settings,
                       const char* place)
    {
        try
        {
            text.SetText(characters, settings);
            ADD_FAILURE() << "no error";
        }
        catch (const orvane::Error& error)
        {
            EXPECT_EQ(error.Place(), place) << error.what();
        }
    }
    void ExpectRefused(const TextPath& path, const char* place)
    {
        orvane::ShapedTextSettings settings = InFont("DejaVu Sans");
        settings.path = path;
        ExpectRefused("H", settings, place);
    }

    OrvShapedString text;
};

TEST_F(TextOnPath, ACentredLetterStandsUprightOnTheTopOfACircle)
{
    Set("H", Circle(2), Alignment::Center);
    const PlacedLetter letter = Letters().at(0);
    EXPECT_NEAR(letter.x, -widthOfH / 2, 1e-9);
    EXPECT_NEAR(letter.y, 2, 1e-9);
    EXPECT_NEAR(AngleOf(letter), 0, 1e-12);
}

TEST_F(TextOnPath, LettersAreTurnedToTheCircleInTheirMiddles)
{
    Set("H", Circle(2));
    // The middle lies half an advance behind the top, on a circle of radius 2.
    const double angle = widthOfH / 2 / 2;
    const PlacedLetter letter = Letters().at(0);
    EXPECT_NEAR(AngleOf(letter), -angle, 1e-9);
    EXPECT_NEAR(letter.x, 2 * std::sin(angle) - std::cos(angle) * widthOfH / 2, 1e-9);
    EXPECT_NEAR(letter.y, 2 * std::cos(angle) + std::sin(angle) * widthOfH / 2, 1e-9);
}

TEST_F(TextOnPath, OnTheOtherSideATextRunsAgainstThePath)
{
    TextPath path = Circle(2);
    path.side = PathSide::Right;
    path.start = 0.5;
    Set("HH", path, Alignment::Center);
    // Both letters stand inside of the circle at its bottom and are read from left to right.
    const double angle = widthOfH / 2 / 2;
    EXPECT_NEAR(AngleOf(Letters().at(0)), -angle, 1e-9);
    EXPECT_NEAR(AngleOf(Letters().at(1)), angle, 1e-9);
    EXPECT_LT(Letters()[0].x, Letters()[1].x);
    EXPECT_NEAR(Letters()[1].x, 2 * std::sin(angle) - std::cos(angle) * widthOfH / 2, 1e-9);
    EXPECT_NEAR(Letters()[1].y, -2 * std::cos(angle) - std::sin(angle) * widthOfH / 2, 1e-9);
}

TEST_F(TextOnPath, LettersStayRigidAndTheBoundsHoldThem)
{
    // Upwards: a letter is turned to the left.
    for (const bool hasProfile : {false, true})
    {
        SCOPED_TRACE(hasProfile);
        text.SetHasProfile(hasProfile);
        text.SetProfile(orvane::ParseProfile("0,0"));
        Set("H", Data("M1 2V-4"));
        const orvane::MeshMeasures measured = MeasureMesh(orvane::BuildMesh(text)).all;
        const double expected[] = {1 - heightOfH, -2 + 201 / em, 1, -2 + 1339 / em};
        for (const int axis : {0, 1})
        {
            EXPECT_NEAR(measured.bounds.minimum[axis], expected[axis], 1e-3);
            EXPECT_NEAR(measured.bounds.maximum[axis], expected[2 + axis], 1e-3);
        }
        EXPECT_NEAR(text.GetBoundsLocalMinimum().x, expected[0], 1e-3);
        EXPECT_NEAR(text.GetBoundsLocalMinimum().y, expected[1], 1e-3);
        EXPECT_NEAR(text.GetBoundsLocalMaximum().x, expected[2], 1e-3);
        EXPECT_NEAR(text.GetBoundsLocalMaximum().y, expected[3], 1e-3);
        EXPECT_NEAR(text.GetUnscaledDimensions().x, heightOfH, 1e-3);
        EXPECT_NEAR(text.GetUnscaledDimensions().y, (1339 - 201) / em, 1e-3);
    }
}

TEST_F(TextOnPath, LettersBeyondTheEndsGoStraightOn)
{
    Set("HHH", Data("M0 0H1"));
    for (const std::size_t i : {0, 1, 2})
    {
        EXPECT_NEAR(Letters().at(i).x, static_cast<double>(i) * widthOfH, 1e-9);
        EXPECT_NEAR(Letters().at(i).y, 0, 1e-9);
    }
    Set("HHH", Data("M0 0H1"), Alignment::Right);
    EXPECT_NEAR(Letters().at(0).x, 1 - 3 * widthOfH, 1e-9);
    Set("HHH", Data("M0 0H1"), Alignment::Center);
    EXPECT_NEAR(Letters().at(0).x, 0.5 - 1.5 * widthOfH, 1e-9);
}

TEST_F(TextOnPath, SpacingAndScaleCount)
{
    text.SetInterCharacterSpacing(0.5f);
    Set("HH", Data("M0 0H9"));
    EXPECT_NEAR(Letters().at(1).x, widthOfH + 0.5, 1e-9);
    text.SetScale(DVector(2, 3, 1));
    text.CalculateBounds();
    EXPECT_NEAR(Letters().at(1).x, 2 * widthOfH + 0.5, 1e-9);
    EXPECT_NEAR(text.GetBoundsLocalMaximum().y, 3 * heightOfH, 1e-5);
}

TEST_F(TextOnPath, MarksStayWithTheirLetter)
{
    Set("ax\u0304", Circle(1), Alignment::Center);
    const std::vector<PlacedLetter> letters = Letters();
    ASSERT_EQ(letters.size(), 3u);
    EXPECT_EQ(AngleOf(letters[1]), AngleOf(letters[2]));
    EXPECT_NE(AngleOf(letters[0]), AngleOf(letters[1]));
    EXPECT_EQ(letters[1].character, letters[2].character);
}

TEST_F(TextOnPath, JoinedLettersOfACircleAreOneSolid)
{
    text.SetHasProfile(true);
    text.SetProfile(orvane::ParseProfile("chamfer -0.01"));
    text.SetFusion(orvane::LetterFusion::Line);
    Set("HH", Circle(2), Alignment::Center);
    ASSERT_EQ(Letters().size(), 1u);
    EXPECT_TRUE(MeasureMesh(orvane::BuildMesh(text)).all.isClosed);
}

TEST_F(TextOnPath, UndoBringsTheStraightLineBack)
{
    Set("H", Circle(2), Alignment::Center);
    text.SaveToUndo();
    text.SetText("H", InFont("DejaVu Sans"));
    text.CalculateBounds();
    EXPECT_NEAR(text.GetBoundsLocalMaximum().y, heightOfH / 2, 1e-6);
    text.RestoreFromUndo();
    text.CalculateBounds();
    EXPECT_NEAR(text.GetBoundsLocalMaximum().y, 2 + heightOfH, 1e-5);
}

TEST_F(TextOnPath, APathThatMakesNoSenseIsRefused)
{
    ExpectRefused(TextPath(), "radius");
    ExpectRefused(Circle(1001), "radius");
    ExpectRefused(Circle(std::nan("")), "radius");
    ExpectRefused(Data("M0 0 L1"), "path: character 7");
    ExpectRefused(Data("L1 1"), "path: character 0");
    ExpectRefused(Data("M1 1"), "path");
    ExpectRefused(Data("M0 0L1e7 0"), "path");
    TextPath both = Circle(1);
    both.data = "M0 0H1";
    ExpectRefused(both, "path");
    TextPath wrong = Circle(1);
    wrong.start = 1.5;
    ExpectRefused(wrong, "start");
    wrong = Data("M0 0H1");
    wrong.unit = 0;
    ExpectRefused(wrong, "unit");
    orvane::ShapedTextSettings settings = InFont("DejaVu Sans");
    settings.path = Circle(2);
    ExpectRefused("two\nlines", settings, "text");
    settings.width = 3;
    ExpectRefused("H", settings, "path");
    settings.width = 0;
    settings.fit = orvane::FitBox();
    ExpectRefused("H", settings, "path");
}

void ExpectNear(const orvane::contours::DoublePoint& a, const orvane::contours::DoublePoint& b,
                double tolerance)
{
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
}

TEST(PathLine, ArcsOfAPathAreTheCircleThatTheyDraw)
{
    const PathLine circle(Circle(2));
    const PathLine arcs(Data("M0-2A2 2 0 0 1 0 2A2 2 0 0 1 0-2Z"));
    for (double way = -1; way < 14; way += 0.7)
    {
        ExpectNear(circle.PointAt(way), arcs.PointAt(way), 2e-3);
    }
}

TEST(PathLine, AClosedPathHasNoEnds)
{
    const PathLine square(Data("M0 0H4V-4H0Z"));
    ExpectNear(square.PointAt(0.5), {0.5, 0}, 1e-12);
    ExpectNear(square.PointAt(16.5), {0.5, 0}, 1e-12);
    ExpectNear(square.PointAt(-0.5), {0, 0.5}, 1e-12);
    EXPECT_EQ(square.StartOf(Alignment::Center), 0);
    TextPath reversed = Data("M0 0H4V-4H0Z");
    reversed.side = PathSide::Right;
    reversed.start = 0.25;
    // A quarter of the way is the corner at 4, 0; from there the text runs back.
    const PathLine back(reversed);
    ExpectNear(back.PointAt(back.StartOf(Alignment::Left) + 1), {3, 0}, 1e-12);
}

TEST(PathLine, GapsBetweenThePartsOfAPathAreNoPartOfTheWay)
{
    TextPath path = Data("M0 0H1M5 0H6");
    path.unit = 2;
    const PathLine line(path);
    ExpectNear(line.PointAt(1.5), {1.5, 0}, 1e-12);
    ExpectNear(line.PointAt(2.5), {10.5, 0}, 1e-12);
    ExpectNear(line.PointAt(5), {13, 0}, 1e-12);
    ExpectNear(line.PointAt(-1), {-1, 0}, 1e-12);
    EXPECT_EQ(line.StartOf(Alignment::Right), 4);
    path.side = PathSide::Right;
    const PathLine back(path);
    ExpectNear(back.PointAt(0.5), {11.5, 0}, 1e-12);
    ExpectNear(back.PointAt(2.5), {1.5, 0}, 1e-12);
}

}  // namespace
