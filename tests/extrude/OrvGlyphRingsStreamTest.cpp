// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"
#include "tests/support/GlRecorder.h"
#include "tests/support/GlyphShapes.h"
#include "tests/support/GlyphStreams.h"

#include <gtest/gtest.h>

using namespace glyph_streams;

namespace
{
constexpr auto backZ = &ExtrusionData::backZ;
constexpr auto backRoundZ = &ExtrusionData::backRoundZ;
constexpr auto backBevelZ = &ExtrusionData::backBevelZ;
constexpr auto frontBevelZ = &ExtrusionData::frontBevelZ;
constexpr auto frontRoundZ = &ExtrusionData::frontRoundZ;
constexpr auto frontZ = &ExtrusionData::frontZ;

constexpr Place P = Place::Outline;
constexpr Place R = Place::Round;
constexpr Place B = Place::Bevel;
constexpr Normal face = Normal::Face;
constexpr Normal slant = Normal::Bevel;
constexpr Normal wall = Normal::Wall;

/// A side wall, which has no side: one quad per segment, a normal at each of its ends.
constexpr Quad Wall(Place place, float ExtrusionData::*zA, float ExtrusionData::*zB)
{
    return {Side::Front,
            NormalsPer::End,
            {{place, zA, wall}, {place, zB, wall}, {place, zB, wall}, {place, zA, wall}}};
}

struct Routine
{
    const char* name;
    int (OrvGlyph::*draw)(const ExtrusionData&) const;
    bool faces;                            ///< draws both faces before all else
    std::vector<std::vector<Quad>> bands;  ///< in groups that set the front face anew
};

const std::vector<Routine>& Routines()
{
    static const std::vector<Routine> routines = {
        {"RenderEdgesUnbevelled",
         &OrvGlyph::RenderEdgesUnbevelled,
         false,
         {{Wall(P, backZ, frontZ)}}},
        {"RenderEdgesBevelled",
         &OrvGlyph::RenderEdgesBevelled,
         false,
         {{Wall(B, backBevelZ, frontBevelZ)}}},
        {"RenderEdgesFrontBevelOnly",
         &OrvGlyph::RenderEdgesFrontBevelOnly,
         false,
         {{Wall(B, backZ, frontBevelZ)}}},
        {"RenderEdgesBackBevelOnly",
         &OrvGlyph::RenderEdgesBackBevelOnly,
         false,
         {{Wall(B, backBevelZ, frontZ)}}},
        {"RenderFrontBevelFlat",
         &OrvGlyph::RenderFrontBevelFlat,
         false,
         {{{Side::Front,
            NormalsPer::Contour,
            {{B, frontZ, face}, {P, frontZ, face}, {P, frontZ, face}, {B, frontZ, face}}}}}},
        {"RenderBackBevelFlat",
         &OrvGlyph::RenderBackBevelFlat,
         false,
         {{{Side::Back,
            NormalsPer::Contour,
            {{P, backZ, face}, {B, backZ, face}, {B, backZ, face}, {P, backZ, face}}}}}},
        {"RenderFrontBevelBevelled",
         &OrvGlyph::RenderFrontBevelBevelled,
         false,
         {{{Side::Front,
            NormalsPer::End,
            {{B, frontBevelZ, slant},
             {P, frontZ, slant},
             {P, frontZ, slant},
             {B, frontBevelZ, slant}}}}}},
        {"RenderBackBevelBevelled",
         &OrvGlyph::RenderBackBevelBevelled,
         false,
         {{{Side::Back,
            NormalsPer::End,
            {{P, backZ, slant},
             {B, backBevelZ, slant},
             {B, backBevelZ, slant},
             {P, backZ, slant}}}}}},
        {"RenderBevelled",
         &OrvGlyph::RenderBevelled,
         true,
         {{{Side::Back,
            NormalsPer::End,
            {{B, backBevelZ, slant}, {P, backZ, slant}, {P, backZ, slant}, {B, backBevelZ, slant}}},
           {Side::Front,
            NormalsPer::End,
            {{B, frontBevelZ, slant},
             {P, frontZ, slant},
             {P, frontZ, slant},
             {B, frontBevelZ, slant}},
            1}}}},
        {"RenderFrontRoundRounded",
         &OrvGlyph::RenderFrontRoundRounded,
         false,
         {{{Side::Front,
            NormalsPer::Vertex,
            {{R, frontRoundZ, slant},
             {P, frontZ, face},
             {P, frontZ, face},
             {R, frontRoundZ, slant}}},
           {Side::Front,
            NormalsPer::Vertex,
            {{B, frontBevelZ, wall},
             {R, frontRoundZ, slant},
             {R, frontRoundZ, slant},
             {B, frontBevelZ, wall}}}}}},
        {"RenderBackRoundRounded",
         &OrvGlyph::RenderBackRoundRounded,
         false,
         {{{Side::Back,
            NormalsPer::Vertex,
            {{P, backZ, face}, {R, backRoundZ, slant}, {R, backRoundZ, slant}, {P, backZ, face}}},
           {Side::Back,
            NormalsPer::Vertex,
            {{R, backRoundZ, slant},
             {B, backBevelZ, wall},
             {B, backBevelZ, wall},
             {R, backRoundZ, slant}}}}}},
        {"RenderRounded",
         &OrvGlyph::RenderRounded,
         true,
         {{Wall(B, backBevelZ, frontBevelZ)},
          {{Side::Back,
            NormalsPer::Vertex,
            {{R, backRoundZ, slant}, {P, backZ, face}, {P, backZ, face}, {R, backRoundZ, slant}}},
           {Side::Back,
            NormalsPer::Vertex,
            {{R, backRoundZ, slant},
             {B, backBevelZ, wall},
             {B, backBevelZ, wall},
             {R, backRoundZ, slant}}},
           {Side::Front,
            NormalsPer::Vertex,
            {{R, frontRoundZ, slant},
             {P, frontZ, face},
             {P, frontZ, face},
             {R, frontRoundZ, slant}}},
           {Side::Front,
            NormalsPer::Vertex,
            {{R, frontRoundZ, slant},
             {B, frontBevelZ, wall},
             {B, frontBevelZ, wall},
             {R, frontRoundZ, slant}}}}}},
    };
    return routines;
}

Lines FaceLines(const OrvGlyph& glyph, const ExtrusionData& data)
{
    GlRecording recording;
    glyph.RenderFaces(data);
    return recording.Lines();
}

void ExpectStreams(const Routine& routine, const OrvGlyph& glyph,
                   const std::vector<ExpectedContour>& contours, const ExtrusionData& data)
{
    Lines expected;
    if (routine.faces)
    {
        Append(expected, FaceLines(glyph, data));
    }
    for (const std::vector<Quad>& group : routine.bands)
    {
        const bool mirrored = (data.scale.x < 0) != (data.scale.y < 0);
        expected.push_back(mirrored ? "glFrontFace GL_CW" : "glFrontFace GL_CCW");
        for (const Quad& quad : group)
        {
            Append(expected, BandLines(contours, quad, data));
        }
        expected.push_back("glFrontFace GL_CCW");
    }
    GlRecording recording;
    EXPECT_EQ((glyph.*routine.draw)(data), 1);
    EXPECT_EQ(recording.Lines(), expected) << routine.name;
}

ExtrusionData Bevelled(float width, float depth = 1)
{
    ExtrusionData data;
    data.bevelDepth = width;
    data.scale.z = depth;
    data.CalculateHeights();
    return data;
}

/// The unit square, built from its outline. A static one, because copies borrow its vertices.
const OrvGlyph& Square()
{
    static OrvGlyph square(0, GLYPHMETRICS{});
    static const int built = square.FromTTGlyph(SquareGlyph(), 1000);
    EXPECT_EQ(built, 1);
    return square;
}

class Rings : public testing::TestWithParam<Routine>
{};
}  // namespace

TEST_P(Rings, OfTheSquareRunThroughItsCornersInEveryScaleAndTexture)
{
    const OrvGlyph& square = Square();
    ForEachDraw([&](const ExtrusionData& data) {
        ExpectStreams(GetParam(), square, {SquareCorners(data.bevelDepth)}, data);
    });
}

TEST_P(Rings, TakeTheStartOfASegmentFromTheLeavingEdgeAndItsEndFromTheArrivingOne)
{
    ForEachDraw([&](const ExtrusionData& data) {
        ExpectStreams(GetParam(), OddGlyph(), CornersOf(OddGlyph(), data.bevelDepth), data);
    });
}

TEST_P(Rings, OfBevelDepthZeroLieOnTheOutlineAndAreStillEmitted)
{
    const ExtrusionData flat = Bevelled(0);
    ExpectStreams(GetParam(), OddGlyph(), CornersOf(OddGlyph(), 0), flat);

    GlRecording recording;
    (OddGlyph().*GetParam().draw)(flat);
    for (const GlVertex& vertex : recording.Vertices())
    {
        EXPECT_TRUE(vertex.position[2] == 0 || vertex.position[2] == -1);
    }
    // Two contours of four vertices and one, four corners a segment, in each band.
    std::size_t bands = 0;
    for (const auto& group : GetParam().bands)
    {
        bands += group.size();
    }
    EXPECT_EQ(recording.Vertices().size(), bands * 4 * 5);
}

TEST_P(Rings, OfAMirroredGlyphAreMadeTheFrontAndCounterClockwiseIsLeftBehind)
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

INSTANTIATE_TEST_SUITE_P(OrvGlyph, Rings, testing::ValuesIn(Routines()),
                         [](const auto& info) { return std::string(info.param.name); });

// Written out, once: every other stream is made of the same parts.
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

TEST(OrvGlyphRings, RenderEdgesTakesTheHeightsItIsGiven)
{
    ExtrusionData data = Bevelled(0.1f);
    for (const int bevelled : {0, 1, 2})
    {
        ExtrusionData heights = data;
        heights.backZ = 5;
        heights.frontZ = -7;
        const Quad quad = Wall(bevelled ? B : P, backZ, frontZ);
        Lines expected = {"glFrontFace GL_CCW"};
        Append(expected, BandLines(CornersOf(OddGlyph(), 0.1f), quad, heights));
        expected.push_back("glFrontFace GL_CCW");

        GlRecording recording;
        EXPECT_EQ(OddGlyph().RenderEdges(bevelled, 5, -7, data), 1);
        EXPECT_EQ(recording.Lines(), expected);
    }
}

TEST(OrvGlyphRings, RoundedRingsOfATenthLieAtTheFourPlaceHeightsAndOffsets)
{
    const OrvGlyph& square = Square();
    GlRecording recording;
    square.RenderFrontRoundRounded(Bevelled(0.1f));
    const std::vector<GlVertex> vertices = recording.Vertices();
    ASSERT_EQ(vertices.size(), 32u);
    // Of the left side: the round ring and the face ring, then the wall ring and the round ring.
    EXPECT_NEAR(vertices[0].position[0], -0.07071, 2e-6);
    EXPECT_NEAR(vertices[0].position[2], -0.02929, 1e-7);
    EXPECT_EQ(vertices[1].position, (std::array<double, 3>{0, 0, 0}));
    EXPECT_NEAR(vertices[16].position[0], -0.1, 3e-6);
    EXPECT_NEAR(vertices[16].position[2], -0.1, 1e-8);
    EXPECT_EQ(vertices[17].position, vertices[0].position);
}

// Both inverse scales ask whether x is 0.
TEST(OrvGlyphRings, AWidthOfZeroCountsAsPositiveAndHasTheInverseScaleZero)
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
    // The second segment starts at the top left corner: first on the bevel, then on the outline.
    EXPECT_NEAR(vertices[4].position[0], -0.1, 3e-6);
    EXPECT_NEAR(vertices[4].position[1], 2.1, 3e-6);
    EXPECT_EQ(vertices[4].texCoord, (std::array<double, 2>{0, 1}));
    EXPECT_EQ(vertices[5].position, (std::array<double, 3>{0, 2, 0}));
    EXPECT_EQ(vertices[5].texCoord, (std::array<double, 2>{0, 1}));
}

TEST(OrvGlyphRings, AHeightOfZeroTexturesBevelsAtInfinity)
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

TEST(OrvGlyphRings, BevelledInOneCallTurnsTheBackBevelAndTakesLeavingOffsetsInFront)
{
    // The third corner is interior: its two offsets differ.
    const ExtrusionData data = Bevelled(0.1f);
    const std::vector<ExpectedContour> contours = CornersOf(OddGlyph(), 0.1f);
    const ExpectedCorner& interior = contours[0][2];
    ASSERT_TRUE(interior.interior);

    GlRecording recording;
    EXPECT_EQ(OddGlyph().RenderBevelled(data), 1);
    const std::vector<GlVertex> vertices = recording.Vertices();
    ASSERT_EQ(vertices.size(), 40u);
    const auto place = [&](int index) {
        return Vector2D(static_cast<float>(vertices[index].position[0]),
                        static_cast<float>(vertices[index].position[1]));
    };
    const auto expectPlace = [&](int index, int edge) {
        const Vector2D expected = PlaceOf(interior, Place::Bevel, edge, data);
        EXPECT_EQ(place(index).x, expected.x);
        EXPECT_EQ(place(index).y, expected.y);
    };
    // The second segment ends at the interior corner: back bevel from 0, front bevel from 20.
    EXPECT_EQ(vertices[4].position[2], double{data.backBevelZ});
    EXPECT_EQ(vertices[5].position[2], double{data.backZ});
    expectPlace(7, 0);
    EXPECT_EQ(vertices[24].position[2], double{data.frontBevelZ});
    EXPECT_EQ(vertices[25].position[2], double{data.frontZ});
    expectPlace(27, 1);
    EXPECT_EQ(vertices[27].normal[0], double{interior.front[0].x});

    // The one-sided back bevel begins on the face.
    recording.Clear();
    OddGlyph().RenderBackBevelBevelled(data);
    EXPECT_EQ(recording.Vertices()[0].position[2], double{data.backZ});
}

TEST(OrvGlyphRings, RoundedInOneCallTurnsTheBackFaceBandAndTheFrontWallBand)
{
    const ExtrusionData data = Bevelled(0.1f);
    GlRecording recording;
    EXPECT_EQ(OddGlyph().RenderRounded(data), 1);
    const std::vector<GlVertex> vertices = recording.Vertices();
    ASSERT_EQ(vertices.size(), 100u);  // the wall and four bands of 20
    const auto start = [&](int band) { return vertices[20 * band].position[2]; };
    EXPECT_EQ(start(1), double{data.backRoundZ});
    EXPECT_EQ(start(2), double{data.backRoundZ});
    EXPECT_EQ(start(3), double{data.frontRoundZ});
    EXPECT_EQ(start(4), double{data.frontRoundZ});

    recording.Clear();
    OddGlyph().RenderBackRoundRounded(data);
    EXPECT_EQ(recording.Vertices()[0].position[2], double{data.backZ});
    recording.Clear();
    OddGlyph().RenderFrontRoundRounded(data);
    EXPECT_EQ(recording.Vertices()[20].position[2], double{data.frontBevelZ});
}

// What the font draws for a rounded letter with the location back only.
TEST(OrvGlyphRings, ABackOnlyRoundIsTheFlatRingInFrontAndTheTwoBandsBehind)
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
    EXPECT_EQ(data.backBevelZ, data.frontBevelZ);
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
