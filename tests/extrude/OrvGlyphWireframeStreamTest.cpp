// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"
#include "tests/support/GlyphShapes.h"
#include "tests/support/GoldenFile.h"
#include "tests/support/gl/GlRecorder.h"
#include "tests/support/gl/GlyphDraws.h"

#include <gtest/gtest.h>

using namespace glyph_draws;

namespace
{
using Lines = std::vector<std::string>;

struct WireframeSet
{
    const char* name;
    DrawGlyph draw;
};

constexpr WireframeSet sets[] = {
    {"Draw", &OrvGlyph::Draw},
    {"DrawFrontFaceBevelled", &OrvGlyph::DrawFrontFaceBevelled},
    {"DrawBackFaceBevelled", &OrvGlyph::DrawBackFaceBevelled},
    {"DrawBothFacesBevelled", &OrvGlyph::DrawBothFacesBevelled},
    {"DrawFrontFaceRounded", &OrvGlyph::DrawFrontFaceRounded},
    {"DrawBackFaceRounded", &OrvGlyph::DrawBackFaceRounded},
    {"DrawBothFacesRounded", &OrvGlyph::DrawBothFacesRounded},
};

class Wireframes : public testing::TestWithParam<WireframeSet>
{};
}  // namespace

TEST_P(Wireframes, CallsForTheSquareEqualItsGoldenFile)
{
    EXPECT_TRUE(IsGolden(std::string("glyph/square/") + GetParam().name + ".txt",
                         TextOfDraws(Square(), GetParam().draw)));
}

TEST_P(Wireframes, CallsForTheOddGlyphEqualItsGoldenFile)
{
    EXPECT_TRUE(IsGolden(std::string("glyph/odd/") + GetParam().name + ".txt",
                         TextOfDraws(OddGlyph(), GetParam().draw)));
}

INSTANTIATE_TEST_SUITE_P(OrvGlyph, Wireframes, testing::ValuesIn(sets),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(OrvGlyphWireframe, TheUnitSquareIsOneLoopThroughItsCornersOnEachFace)
{
    OrvGlyph square(0, GLYPHMETRICS{});
    ASSERT_EQ(square.FromTTGlyph(SquareGlyph(), 1000), 1);
    ExtrusionData data;
    data.CalculateHeights();
    GlRecording recording;
    EXPECT_EQ(square.Draw(data), 1);
    EXPECT_EQ(recording.Lines(), (Lines{
                                     "glBegin GL_LINE_LOOP",  //
                                     "glVertex3f 0 0 -1",     //
                                     "glVertex3f 0 1 -1",     //
                                     "glVertex3f 1 1 -1",     //
                                     "glVertex3f 1 0 -1",     //
                                     "glEnd",                 //
                                     "glBegin GL_LINE_LOOP",  //
                                     "glVertex3f 0 0 0",      //
                                     "glVertex3f 0 1 0",      //
                                     "glVertex3f 1 1 0",      //
                                     "glVertex3f 1 0 0",      //
                                     "glEnd",                 //
                                 }));
}

TEST(OrvGlyphWireframe, AnInteriorCornerIsOneVertexOnTheLettersOutlineAndTwoOnTheOthers)
{
    // The notch is at (500, 500). Its sides run along (-1, -1) and (5, -2).
    OrvGlyph notch(0, GLYPHMETRICS{});
    ASSERT_EQ(notch.FromTTGlyph(NotchGlyph(), 1000), 1);
    ASSERT_NE(notch.contours.GetElement(0)->GetVertexElement(3)->IsInterior(), 0);
    ExtrusionData data;
    data.bevelDepth = 0.1f;
    const auto loop = [&](int kind) {
        GlRecording recording;
        EXPECT_EQ(notch.DrawOutline(kind, 0.5f, data), 1);
        return recording.Vertices();
    };
    EXPECT_EQ(loop(1).size(), 6u);
    const std::vector<GlVertex> bevel = loop(2);
    ASSERT_EQ(bevel.size(), 7u);
    // The left-hand normals of the two sides are (1, -1) / sqrt(2) and (2, 5) / sqrt(29).
    EXPECT_NEAR(bevel[3].position[0], 0.5 + 0.070711, 1e-5);
    EXPECT_NEAR(bevel[3].position[1], 0.5 - 0.070711, 1e-5);
    EXPECT_NEAR(bevel[4].position[0], 0.5 + 0.037139, 1e-5);
    EXPECT_NEAR(bevel[4].position[1], 0.5 + 0.092848, 1e-5);
    EXPECT_EQ(bevel[4].position[2], 0.5);
    const std::vector<GlVertex> round = loop(3);
    ASSERT_EQ(round.size(), 7u);
    EXPECT_NEAR(round[3].position[0], 0.5 + 0.05, 1e-5);
    EXPECT_NEAR(round[4].position[1], 0.5 + 0.065653, 1e-5);
}

TEST(OrvGlyphWireframe, TwoLevelsAreTwoOutlinesInOrder)
{
    ExtrusionData data;
    data.bevelDepth = 0.1f;
    GlRecording recording;
    std::string text;
    for (const int kind : {1, 2, 3})
    {
        recording.Clear();
        EXPECT_EQ(OddGlyph().DrawOutline(kind, 3, -4, data), 1);
        text += "# kind " + std::to_string(kind) + "\n" + recording.Text();
    }
    EXPECT_TRUE(IsGolden("glyph/odd/DrawOutline.txt", text));
}

TEST(OrvGlyphWireframe, ACopyDrawsWithTheVerticesOfItsSource)
{
    const OrvGlyph copy(OddGlyph());
    EXPECT_TRUE(IsGolden("glyph/odd/DrawBothFacesRounded.txt",
                         TextOfDraws(copy, &OrvGlyph::DrawBothFacesRounded)));
}
