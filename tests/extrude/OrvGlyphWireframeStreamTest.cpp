// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"
#include "tests/support/GlRecorder.h"
#include "tests/support/GlyphShapes.h"
#include "tests/support/GlyphStreams.h"

#include <gtest/gtest.h>

using namespace glyph_streams;

namespace
{
struct Outline
{
    int kind;
    float ExtrusionData::*z;
};

struct WireframeSet
{
    const char* name;
    int (OrvGlyph::*draw)(const ExtrusionData&) const;
    std::vector<Outline> outlines;
};

const std::vector<WireframeSet>& Sets()
{
    constexpr auto backZ = &ExtrusionData::backZ;
    constexpr auto backRoundZ = &ExtrusionData::backRoundZ;
    constexpr auto backBevelZ = &ExtrusionData::backBevelZ;
    constexpr auto frontBevelZ = &ExtrusionData::frontBevelZ;
    constexpr auto frontRoundZ = &ExtrusionData::frontRoundZ;
    constexpr auto frontZ = &ExtrusionData::frontZ;
    static const std::vector<WireframeSet> sets = {
        {"Draw", &OrvGlyph::Draw, {{1, backZ}, {1, frontZ}}},
        {"DrawFrontFaceBevelled",
         &OrvGlyph::DrawFrontFaceBevelled,
         {{1, frontZ}, {2, backZ}, {2, frontBevelZ}}},
        {"DrawBackFaceBevelled",
         &OrvGlyph::DrawBackFaceBevelled,
         {{1, backZ}, {2, frontZ}, {2, backBevelZ}}},
        {"DrawBothFacesBevelled",
         &OrvGlyph::DrawBothFacesBevelled,
         {{1, backZ}, {1, frontZ}, {2, backBevelZ}, {2, frontBevelZ}}},
        {"DrawFrontFaceRounded",
         &OrvGlyph::DrawFrontFaceRounded,
         {{1, frontZ}, {2, frontBevelZ}, {2, backZ}, {3, frontRoundZ}}},
        {"DrawBackFaceRounded",
         &OrvGlyph::DrawBackFaceRounded,
         {{1, backZ}, {1, frontZ}, {2, backBevelZ}, {3, backRoundZ}, {2, frontZ}}},
        {"DrawBothFacesRounded",
         &OrvGlyph::DrawBothFacesRounded,
         {{1, backZ},
          {1, frontZ},
          {2, backBevelZ},
          {2, frontBevelZ},
          {3, backRoundZ},
          {3, frontRoundZ}}},
    };
    return sets;
}

Lines OutlineLines(const std::vector<ExpectedContour>& contours, int kind, float z,
                   const ExtrusionData& data)
{
    const Place place = kind == 2 ? Place::Bevel : kind == 3 ? Place::Round : Place::Outline;
    Lines lines;
    const auto add = [&](const ExpectedCorner& corner, int edge) {
        const Vector2D point = PlaceOf(corner, place, edge, data);
        lines.push_back(GlLine("glVertex3f", point.x, point.y, z));
    };
    for (const ExpectedContour& contour : contours)
    {
        lines.push_back("glBegin GL_LINE_LOOP");
        for (const ExpectedCorner& corner : contour)
        {
            add(corner, 0);
            if (kind != 1 && corner.interior)
            {
                add(corner, 1);
            }
        }
        lines.push_back("glEnd");
    }
    return lines;
}

class Wireframes : public testing::TestWithParam<WireframeSet>
{};
}  // namespace

TEST_P(Wireframes, AreTheirOutlinesInOrderWithoutNormalsTexturesOrFrontFaces)
{
    OrvGlyph square(0, GLYPHMETRICS{});
    ASSERT_EQ(square.FromTTGlyph(SquareGlyph(), 1000), 1);
    ForEachDraw([&](const ExtrusionData& data) {
        Lines ofSquare;
        Lines ofOdd;
        for (const Outline& outline : GetParam().outlines)
        {
            Append(ofSquare, OutlineLines({SquareCorners(data.bevelDepth)}, outline.kind,
                                          data.*outline.z, data));
            Append(ofOdd, OutlineLines(CornersOf(OddGlyph(), data.bevelDepth), outline.kind,
                                       data.*outline.z, data));
        }
        GlRecording recording;
        EXPECT_EQ((square.*GetParam().draw)(data), 1);
        EXPECT_EQ(recording.Lines(), ofSquare);
        recording.Clear();
        EXPECT_EQ((OddGlyph().*GetParam().draw)(data), 1);
        EXPECT_EQ(recording.Lines(), ofOdd);
    });
}

INSTANTIATE_TEST_SUITE_P(OrvGlyph, Wireframes, testing::ValuesIn(Sets()),
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

TEST(OrvGlyphWireframe, AnInteriorCornerAppearsOnceOnTheOutlineAndTwiceOnTheOthers)
{
    // The notch is at (500, 500), its sides run along (-1, -1) and (5, -2).
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
    // Left-hand normals of the two sides: (1, -1) / sqrt 2 and (2, 5) / sqrt 29.
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

TEST(OrvGlyphWireframe, TwoHeightsAreTwoOutlinesInOrder)
{
    const ExtrusionData data;
    for (const int kind : {1, 2, 3})
    {
        GlRecording recording;
        OddGlyph().DrawOutline(kind, 3, data);
        OddGlyph().DrawOutline(kind, -4, data);
        const Lines expected = recording.Lines();
        recording.Clear();
        EXPECT_EQ(OddGlyph().DrawOutline(kind, 3, -4, data), 1);
        EXPECT_EQ(recording.Lines(), expected);
    }
}

TEST(OrvGlyphWireframe, ACopyDrawsFromItsSource)
{
    ExtrusionData data;
    data.bevelDepth = 0.1f;
    data.CalculateHeights();
    GlRecording recording;
    OddGlyph().DrawBothFacesRounded(data);
    const Lines original = recording.Lines();
    const OrvGlyph copy(OddGlyph());
    recording.Clear();
    copy.DrawBothFacesRounded(data);
    EXPECT_EQ(recording.Lines(), original);
}
