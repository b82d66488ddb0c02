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

/// Tests with the unit square, whose face consists of a clockwise fan and a counter-clockwise
/// triangle.
class OrvGlyphFaces : public testing::Test
{
protected:
    OrvGlyphFaces() : square(0, GLYPHMETRICS{})
    {
        square.FromTTGlyph(SquareGlyph(), 1000);
        UseFanAndTriangle(square);
    }

    OrvGlyph square;
};

constexpr const char* cw = "glFrontFace GL_CW";
constexpr const char* ccw = "glFrontFace GL_CCW";
}  // namespace

TEST_F(OrvGlyphFaces, TheFrontFaceOfTheUnitSquareHasItsCornersAtZeroAndOneNormal)
{
    const ExtrusionData data;
    UseFan(square);
    GlRecording recording;
    EXPECT_EQ(square.RenderFace(0, Vector(0, 0, 1), 1, data), 1);
    EXPECT_EQ(recording.Lines(), (Lines{
                                     "glFrontFace GL_CW",        //
                                     "glBegin GL_TRIANGLE_FAN",  //
                                     "glNormal3f 0 0 1",         //
                                     "glVertex3f 0 0 0",         //
                                     "glVertex3f 0 1 0",         //
                                     "glVertex3f 1 1 0",         //
                                     "glVertex3f 1 0 0",         //
                                     "glEnd",                    //
                                     "glFrontFace GL_CCW",       //
                                 }));
}

TEST_F(OrvGlyphFaces, AFrontFaceHasItsPolygonsWindingsAndABackFaceTheOpposite)
{
    const ExtrusionData data;
    GlRecording recording;
    EXPECT_EQ(square.RenderFace(2, Vector(0, 0, 1), 1, data), 1);
    const std::string front = recording.Text();
    recording.Clear();
    EXPECT_EQ(square.RenderFace(-2, Vector(0, 0, -1), 0, data), 1);
    EXPECT_TRUE(IsGolden("glyph/square/RenderFace.txt",
                         "# front\n" + front + "# back\n" + recording.Text()));
}

TEST_F(OrvGlyphFaces, MirroringSwapsTheFourModes)
{
    for (const auto& [x, y, mirrored] : {std::tuple{-1.0f, 1.0f, true},
                                         {1.0f, -1.0f, true},
                                         {-1.0f, -1.0f, false},
                                         {0.0f, -1.0f, false}})
    {
        ExtrusionData data;
        data.scale.x = x;
        data.scale.y = y;
        GlRecording recording;
        square.RenderFace(0, Vector(0, 0, 1), 1, data);
        EXPECT_EQ(recording.Only({"glFrontFace"}),
                  mirrored ? (Lines{ccw, cw, ccw}) : (Lines{cw, ccw, ccw}));
        recording.Clear();
        square.RenderFace(0, Vector(0, 0, -1), 0, data);
        EXPECT_EQ(recording.Only({"glFrontFace"}),
                  mirrored ? (Lines{cw, ccw, ccw}) : (Lines{ccw, cw, ccw}));
    }
}

TEST_F(OrvGlyphFaces, EveryPrimitiveHasTheNormalGivenInTheCall)
{
    GlRecording recording;
    square.RenderFace(0, Vector(0.25f, -0.5f, 2), 1, ExtrusionData());
    EXPECT_EQ(recording.Only({"glNormal3f"}),
              (Lines{"glNormal3f 0.25 -0.5 2", "glNormal3f 0.25 -0.5 2"}));
}

TEST_F(OrvGlyphFaces, CallsForTheSquareEqualItsGoldenFile)
{
    EXPECT_TRUE(
        IsGolden("glyph/square/RenderFaces.txt", TextOfDraws(square, &OrvGlyph::RenderFaces)));
}

TEST_F(OrvGlyphFaces, TheBevelDoesNotChangeTheFaces)
{
    ExtrusionData data;
    data.CalculateHeights();
    GlRecording recording;
    square.RenderFaces(data);
    const Lines plain = recording.Lines();
    data.bevelDepth = 0.25f;
    data.CalculateHeights();
    recording.Clear();
    square.RenderFaces(data);
    EXPECT_EQ(recording.Lines(), plain);
}

TEST_F(OrvGlyphFaces, WithoutPolygonsAFaceOnlySetsCounterClockwise)
{
    square.facePolygons.RemoveAll();
    ExtrusionData data;
    data.scale.x = -1;
    GlRecording recording;
    EXPECT_EQ(square.RenderFace(0, Vector(0, 0, 1), 1, data), 1);
    EXPECT_EQ(recording.Lines(), (Lines{ccw}));
}

TEST_F(OrvGlyphFaces, ACopyDrawsFromTheVerticesOfItsSource)
{
    const OrvGlyph copy(square);
    EXPECT_TRUE(
        IsGolden("glyph/square/RenderFaces.txt", TextOfDraws(copy, &OrvGlyph::RenderFaces)));
}

TEST_F(OrvGlyphFaces, AGlyphWithoutFacesStillDrawsItsWallsAndBevels)
{
    OrvGlyph crossing(0, GLYPHMETRICS{});
    ASSERT_EQ(crossing.FromTTGlyph(CrossingGlyph(), 1000), 1);
    ExtrusionData data;
    data.bevelDepth = 0.1f;
    data.CalculateHeights();
    GlRecording recording;
    crossing.RenderFaces(data);
    EXPECT_EQ(recording.Lines(), (Lines{ccw, ccw}));
    recording.Clear();
    crossing.RenderEdgesBevelled(data);
    crossing.RenderFrontBevelBevelled(data);
    crossing.RenderBackBevelBevelled(data);
    EXPECT_EQ(recording.Count("glVertex3f"), 3 * 4 * 4);
}

TEST_F(OrvGlyphFaces, RenderDrawsASolidWithSquareEdgesWhateverItsSecondArgument)
{
    ExtrusionData data;
    data.bevelDepth = 0.1f;
    data.CalculateHeights();
    GlRecording recording;
    for (const int argument : {0, 1, -5})
    {
        recording.Clear();
        EXPECT_EQ(square.Render(data, argument), 1);
        EXPECT_TRUE(IsGolden("glyph/square/Render.txt", recording.Text()));
    }
}

TEST_F(OrvGlyphFaces, PreparingTheTransparencyPassCallsNothing)
{
    GlRecording recording;
    EXPECT_EQ(square.PrepareTransparencyPass(0), 1);
    EXPECT_EQ(square.PrepareTransparencyPass(7), 1);
    EXPECT_EQ(recording.Lines(), Lines());
}

TEST_F(OrvGlyphFaces, BuildingAGlyphCallsTheTessellatorInOrderWithoutACombineCallback)
{
    GlRecording recording;
    OrvGlyph glyph(0, GLYPHMETRICS{});
    EXPECT_EQ(glyph.FromTTGlyph(SquareWithHoleGlyph(), 1000), 1);
    Lines calls;
    for (const std::string& line : recording.Lines())
    {
        calls.push_back(line.substr(0, line.find(' ')));
    }
    Lines expected = {"gluNewTess"};
    expected.insert(expected.end(), 5, "gluTessCallback");
    expected.push_back("gluBeginPolygon");
    expected.insert(expected.end(), 4, "gluTessVertex");
    expected.push_back("gluNextContour");
    expected.insert(expected.end(), 4, "gluTessVertex");
    expected.insert(expected.end(), {"gluEndPolygon", "gluDeleteTess"});
    EXPECT_EQ(calls, expected);
    for (const std::string& line : recording.Only({"gluTessCallback"}))
    {
        EXPECT_EQ(line.find("COMBINE"), std::string::npos) << line;
    }
    EXPECT_EQ(recording.Only({"gluNextContour"}), (Lines{"gluNextContour GLU_UNKNOWN"}));
    // The tessellator gets positions in outline units.
    EXPECT_EQ(recording.Only({"gluTessVertex"}).at(2), "gluTessVertex 1000 1000 0");
}
