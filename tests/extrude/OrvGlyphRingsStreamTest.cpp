// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"
#include "tests/support/GoldenFile.h"
#include "tests/support/gl/GlRecorder.h"
#include "tests/support/gl/GlyphDraws.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace glyph_draws;

namespace
{
using Lines = std::vector<std::string>;

struct Routine
{
    const char* name;
    DrawGlyph draw;
    std::size_t bands;  ///< each has one quad for each segment of each contour
};

constexpr Routine routines[] = {
    {"RenderEdgesUnbevelled", &OrvGlyph::RenderEdgesUnbevelled, 1},
    {"RenderEdgesBevelled", &OrvGlyph::RenderEdgesBevelled, 1},
    {"RenderEdgesFrontBevelOnly", &OrvGlyph::RenderEdgesFrontBevelOnly, 1},
    {"RenderEdgesBackBevelOnly", &OrvGlyph::RenderEdgesBackBevelOnly, 1},
    {"RenderFrontBevelFlat", &OrvGlyph::RenderFrontBevelFlat, 1},
    {"RenderBackBevelFlat", &OrvGlyph::RenderBackBevelFlat, 1},
    {"RenderFrontBevelBevelled", &OrvGlyph::RenderFrontBevelBevelled, 1},
    {"RenderBackBevelBevelled", &OrvGlyph::RenderBackBevelBevelled, 1},
    {"RenderBevelled", &OrvGlyph::RenderBevelled, 2},
    {"RenderFrontRoundRounded", &OrvGlyph::RenderFrontRoundRounded, 2},
    {"RenderBackRoundRounded", &OrvGlyph::RenderBackRoundRounded, 2},
    {"RenderRounded", &OrvGlyph::RenderRounded, 5},
};

ExtrusionData Bevelled(float width, float depth = 1)
{
    ExtrusionData data;
    data.bevelDepth = width;
    data.scale.z = depth;
    data.CalculateHeights();
    return data;
}

class Rings : public testing::TestWithParam<Routine>
{};
}  // namespace

TEST_P(Rings, CallsForTheSquareEqualItsGoldenFile)
{
    EXPECT_TRUE(IsGolden(std::string("glyph/square/") + GetParam().name + ".txt",
                         TextOfDraws(Square(), GetParam().draw)));
}

TEST_P(Rings, CallsForTheOddGlyphEqualItsGoldenFile)
{
    EXPECT_TRUE(IsGolden(std::string("glyph/odd/") + GetParam().name + ".txt",
                         TextOfDraws(OddGlyph(), GetParam().draw)));
}

TEST_P(Rings, WithABevelDepthOfZeroEveryQuadIsStillEmitted)
{
    GlRecording recording;
    (OddGlyph().*GetParam().draw)(Bevelled(0));
    for (const GlVertex& vertex : recording.Vertices())
    {
        EXPECT_TRUE(vertex.position[2] == 0 || vertex.position[2] == -1);
    }
    // Each band has a contour of four segments and a contour of one, and four corners for each
    // segment.
    EXPECT_EQ(recording.Vertices().size(), GetParam().bands * 4 * 5);
}

TEST_P(Rings, MirroringSwapsTheFrontFaceAndCounterClockwiseIsSetAtTheEnd)
{
    ExtrusionData data = Bevelled(0.1f);
    for (const auto& [x, y, mode] : {std::tuple{-1.0f, 1.0f, "glFrontFace GL_CW"},
                                     {1.0f, -1.0f, "glFrontFace GL_CW"},
                                     {-1.0f, -1.0f, "glFrontFace GL_CCW"},
                                     {0.0f, -1.0f, "glFrontFace GL_CCW"}})
    {
        data.scale.x = x;
        data.scale.y = y;
        GlRecording recording;
        (OddGlyph().*GetParam().draw)(data);
        const Lines modes = recording.Only({"glFrontFace"});
        ASSERT_GE(modes.size(), 2u);
        EXPECT_EQ(modes[modes.size() - 2], mode);
        EXPECT_EQ(modes.back(), "glFrontFace GL_CCW");
    }
}

INSTANTIATE_TEST_SUITE_P(OrvGlyph, Rings, testing::ValuesIn(routines),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(OrvGlyphRings, TheWallOfTheUnitSquareIsFourQuadsFromBackToFront)
{
    const OrvGlyph& square = Square();
    GlRecording recording;
    EXPECT_EQ(square.RenderEdgesUnbevelled(Bevelled(0)), 1);
    EXPECT_EQ(recording.Lines(), (Lines{
                                     "glFrontFace GL_CCW",  //
                                     "glBegin GL_QUADS",    //
                                     "glNormal3f -1 0 0",   // the left side
                                     "glVertex3f 0 0 -1",   //
                                     "glVertex3f 0 0 0",    //
                                     "glNormal3f -1 0 0",   //
                                     "glVertex3f 0 1 0",    //
                                     "glVertex3f 0 1 -1",   //
                                     "glNormal3f 0 1 0",    // the top
                                     "glVertex3f 0 1 -1",   //
                                     "glVertex3f 0 1 0",    //
                                     "glNormal3f 0 1 0",    //
                                     "glVertex3f 1 1 0",    //
                                     "glVertex3f 1 1 -1",   //
                                     "glNormal3f 1 0 0",    // the right side
                                     "glVertex3f 1 1 -1",   //
                                     "glVertex3f 1 1 0",    //
                                     "glNormal3f 1 0 0",    //
                                     "glVertex3f 1 0 0",    //
                                     "glVertex3f 1 0 -1",   //
                                     "glNormal3f 0 -1 0",   // the bottom
                                     "glVertex3f 1 0 -1",   //
                                     "glVertex3f 1 0 0",    //
                                     "glNormal3f 0 -1 0",   //
                                     "glVertex3f 0 0 0",    //
                                     "glVertex3f 0 0 -1",   //
                                     "glEnd",               //
                                     "glFrontFace GL_CCW",  //
                                 }));
}

TEST(OrvGlyphRings, RenderEdgesJoinsTheTwoLevelsAlongTheOutlineOrTheBevel)
{
    GlRecording recording;
    std::string text;
    for (const int bevelled : {0, 1, 2})
    {
        recording.Clear();
        EXPECT_EQ(OddGlyph().RenderEdges(bevelled, 5, -7, Bevelled(0.1f)), 1);
        text += "# bevelled " + std::to_string(bevelled) + "\n" + recording.Text();
    }
    EXPECT_TRUE(IsGolden("glyph/odd/RenderEdges.txt", text));
}

TEST(OrvGlyphRings, RoundedRingsLieAt02929OfTheWidthInZAnd07071OutsideTheOutline)
{
    const OrvGlyph& square = Square();
    GlRecording recording;
    square.RenderFrontRoundRounded(Bevelled(0.1f));
    const std::vector<GlVertex> vertices = recording.Vertices();
    ASSERT_EQ(vertices.size(), 32u);
    // The first quad of each band belongs to the left side. Vertices 0 and 1 lie on the round ring
    // and the face ring, vertices 16 and 17 on the wall ring and the round ring.
    EXPECT_NEAR(vertices[0].position[0], -0.07071, 2e-6);
    EXPECT_NEAR(vertices[0].position[2], -0.02929, 1e-7);
    EXPECT_EQ(vertices[1].position, (std::array<double, 3>{0, 0, 0}));
    EXPECT_NEAR(vertices[16].position[0], -0.1, 3e-6);
    EXPECT_NEAR(vertices[16].position[2], -0.1, 1e-8);
    EXPECT_EQ(vertices[17].position, vertices[0].position);
}

// Required: the inverse scales of x and y are both 0 when scale.x is 0, so the bevel does not move
// the texture coordinates.
TEST(OrvGlyphRings, AScaleOfZeroInXCountsAsPositiveAndMakesBothInverseScalesZero)
{
    const OrvGlyph& square = Square();
    ExtrusionData data = Bevelled(0.1f);
    data.SetTexture();
    data.scale.x = 0;
    data.scale.y = 2;
    GlRecording recording;
    square.RenderFrontBevelFlat(data);
    const std::vector<GlVertex> vertices = recording.Vertices();
    ASSERT_EQ(vertices.size(), 16u);
    // The second segment starts at the top left corner. Vertex 4 is this corner on the bevel,
    // vertex 5 the corner on the outline.
    EXPECT_NEAR(vertices[4].position[0], -0.1, 3e-6);
    EXPECT_NEAR(vertices[4].position[1], 2.1, 3e-6);
    EXPECT_EQ(vertices[4].texCoord, (std::array<double, 2>{0, 1}));
    EXPECT_EQ(vertices[5].position, (std::array<double, 3>{0, 2, 0}));
    EXPECT_EQ(vertices[5].texCoord, (std::array<double, 2>{0, 1}));
}

TEST(OrvGlyphRings, AScaleOfZeroInYGivesInfiniteTextureCoordinates)
{
    const OrvGlyph& square = Square();
    ExtrusionData data = Bevelled(0.1f);
    data.SetTexture();
    data.scale.y = 0;
    GlRecording recording;
    square.RenderFrontBevelFlat(data);
    const Lines textures = recording.Only({"glTexCoord2fv"});
    ASSERT_EQ(textures.size(), 16u);
    EXPECT_TRUE(textures[0].ends_with(" -inf")) << textures[0];
    EXPECT_EQ(textures[1], "glTexCoord2fv 0 0");
    EXPECT_EQ(textures[2], "glTexCoord2fv 0 1");
    EXPECT_TRUE(textures[3].ends_with(" inf")) << textures[3];
}

TEST(OrvGlyphRings, RenderBevelledTurnsItsBackQuadsAndUsesLeavingOffsetsInFront)
{
    // The third corner, (-0.25, 1.1), is interior: a bevel of 0.1 moves it along the normals of its
    // two edges, by (0.08, -0.06) when it ends a segment and by (-0.08, -0.06) when it starts one.
    const ExtrusionData data = Bevelled(0.1f);
    GlRecording recording;
    EXPECT_EQ(OddGlyph().RenderBevelled(data), 1);
    const std::vector<GlVertex> vertices = recording.Vertices();
    ASSERT_EQ(vertices.size(), 40u);
    const auto expectPlace = [&](const GlVertex& vertex, double x, double y) {
        EXPECT_NEAR(vertex.position[0], x, 1e-6);
        EXPECT_NEAR(vertex.position[1], y, 1e-6);
    };
    // The second segment ends at the interior corner. The back bevel begins at vertex 0, the front
    // bevel at vertex 20.
    EXPECT_EQ(vertices[4].position[2], double{-0.9f});
    EXPECT_EQ(vertices[5].position[2], -1.0);
    expectPlace(vertices[7], -0.17, 1.04);
    EXPECT_EQ(vertices[24].position[2], double{-0.1f});
    EXPECT_EQ(vertices[25].position[2], 0.0);
    // The vertex has the place for the leaving edge and the normal of the arriving edge.
    expectPlace(vertices[27], -0.33, 1.04);
    EXPECT_NEAR(vertices[27].normal[0], 0.8 / std::sqrt(2.0), 1e-6);

    // RenderBackBevelBevelled begins on the face instead.
    recording.Clear();
    OddGlyph().RenderBackBevelBevelled(data);
    EXPECT_EQ(recording.Vertices()[0].position[2], -1.0);
}

TEST(OrvGlyphRings, RenderRoundedTurnsTheBackFaceBandAndTheFrontWallBand)
{
    const ExtrusionData data = Bevelled(0.1f);
    GlRecording recording;
    EXPECT_EQ(OddGlyph().RenderRounded(data), 1);
    const std::vector<GlVertex> vertices = recording.Vertices();
    ASSERT_EQ(vertices.size(), 100u);  // the wall and four more bands, 20 vertices each
    // A bevel of 0.1 on a letter 1 deep has its round rings 0.02929 from the faces.
    const auto start = [&](int band) { return vertices[20 * band].position[2]; };
    EXPECT_NEAR(start(1), -0.97071, 1e-6);
    EXPECT_NEAR(start(2), -0.97071, 1e-6);
    EXPECT_NEAR(start(3), -0.02929, 1e-6);
    EXPECT_NEAR(start(4), -0.02929, 1e-6);

    recording.Clear();
    OddGlyph().RenderBackRoundRounded(data);
    EXPECT_EQ(recording.Vertices()[0].position[2], -1.0);
    recording.Clear();
    OddGlyph().RenderFrontRoundRounded(data);
    EXPECT_EQ(recording.Vertices()[20].position[2], double{-0.1f});
}

// The two routines that a font calls for the edges of a letter that is rounded only at the back.
TEST(OrvGlyphRings, RoundedOnlyAtTheBackHasAFlatBandInFrontAndTwoBandsBehind)
{
    const ExtrusionData data = Bevelled(0.1f);
    GlRecording recording;
    OddGlyph().RenderFrontBevelFlat(data);
    OddGlyph().RenderBackRoundRounded(data);
    const std::vector<GlVertex> vertices = recording.Vertices();
    ASSERT_EQ(vertices.size(), 60u);
    for (int i = 0; i < 60; ++i)
    {
        EXPECT_EQ(vertices[i].position[2] == 0, i < 20);
    }
}

TEST(OrvGlyphRings, BevelsOfHalfTheDepthMeetSoThatNoWallIsLeft)
{
    const ExtrusionData data = Bevelled(0.25f, 0.5f);
    EXPECT_EQ(data.backBevelZ, -0.25f);
    EXPECT_EQ(data.frontBevelZ, -0.25f);
}

TEST(OrvGlyphRings, TheBevelKeepsItsWidthUnlessItScalesWithTheObject)
{
    const OrvGlyph& square = Square();
    ExtrusionData data = Bevelled(0.1f);
    data.scale.x = -2;
    data.scale.y = 3;
    const auto firstVertex = [&] {
        GlRecording recording;
        square.RenderFrontBevelFlat(data);
        return recording.Vertices().at(4).position;  // the top left corner, on the bevel
    };
    EXPECT_NEAR(firstVertex()[0], 0.1, 1e-5);
    EXPECT_NEAR(firstVertex()[1], 3.1, 1e-5);
    data.SetScaleBevels();
    EXPECT_NEAR(firstVertex()[0], 0.2, 1e-5);
    EXPECT_NEAR(firstVertex()[1], 3.3, 1e-5);
}
