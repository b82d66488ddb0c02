// SPDX-License-Identifier: MIT
// What a font sends to OpenGL: the order of materials, names and parts of one glyph.
#include "extrude/OrvFont.h"

#include "extrude/ExtrusionData.h"
#include "extrude/OrvGlyph.h"
#include "material/NamedColor.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvString.h"
#include "tests/support/GoldenFile.h"
#include "tests/support/StubFont.h"
#include "tests/support/gl/GlRecorder.h"
#include "tests/support/gl/GlyphDraws.h"

#include <gtest/gtest.h>

namespace
{
using Lines = std::vector<std::string>;
using Routine = decltype(&OrvGlyph::RenderFaces);

NamedColor Grey(float diffuse)
{
    NamedColor color;
    color.SetDiffuseColor(ColorVector(diffuse, diffuse, diffuse, 1.0f));
    return color;
}

/// The materials of the texts below, told apart by the diffuse colour.
constexpr float faceGrey = 0.25f;
constexpr float edgeGrey = 0.5f;
constexpr float bevelGrey = 0.75f;

/// What makes the material of that grey current.
Lines Material(float grey)
{
    return {GlLine("glMaterialfv", "GL_FRONT_AND_BACK", "GL_AMBIENT", 0.5f, 0.5f, 0.5f, 1),
            GlLine("glMaterialfv", "GL_FRONT_AND_BACK", "GL_DIFFUSE", grey, grey, grey, 1),
            GlLine("glMaterialfv", "GL_FRONT_AND_BACK", "GL_SPECULAR", 0.5f, 0.5f, 0.5f, 1),
            GlLine("glMaterialfv", "GL_FRONT_AND_BACK", "GL_EMISSION", 0, 0, 0, 1),
            GlLine("glMaterialf", "GL_FRONT_AND_BACK", "GL_SHININESS", 64),
            GlLine("glColor4fv", grey, grey, grey, 1),
            "glDisable GL_BLEND",
            "glDepthMask GL_TRUE"};
}

class OrvFontStream : public testing::Test
{
protected:
    OrvFontStream()
    {
        string.SetFaceColor(Grey(faceGrey));
        string.SetEdgeColor(Grey(edgeGrey));
        string.SetBevelColor(Grey(bevelGrey));
        string.extentsBoxColor = Grey(1.0f);
        string.SetScale(DVector(1, 1, 1));
        string.SetBevelDepth(0.125f);
    }

    void Style(int style, int location)
    {
        string.SetBevelStyle(style);
        string.SetBevelLocation(location);
    }

    /// What drawing A sends.
    Lines Rendered()
    {
        const ExtrusionData extrusion = string.GetExtrusionData();
        GlRecording recording;
        EXPECT_EQ(font.RenderGlyph(0, &string, extrusion, &parameters), 1);
        nameDepth = recording.NameDepth();
        return recording.Lines();
    }
    Lines Drawn(bool lit)
    {
        const ExtrusionData extrusion = string.GetExtrusionData();
        GlRecording recording;
        recording.SetEnabled(GL_LIGHTING, lit);
        EXPECT_EQ(font.DrawGlyph(0, &string, extrusion, &parameters), 1);
        return recording.Lines();
    }

    /// What routines of A's glyph send, one after the other.
    Lines Parts(std::initializer_list<Routine> routines)
    {
        const ExtrusionData extrusion = string.GetExtrusionData();
        const GlRecording recording;
        for (const Routine routine : routines)
        {
            (font.Glyph('A')->*routine)(extrusion);
        }
        return recording.Lines();
    }

    StubFont font;
    OrvString string;
    DrawingParameters parameters;
    int nameDepth = 0;
};

Lines Joined(std::initializer_list<Lines> parts)
{
    Lines joined;
    for (const Lines& part : parts)
    {
        joined.insert(joined.end(), part.begin(), part.end());
    }
    return joined;
}

std::string Text(const Lines& lines)
{
    std::string text;
    for (const std::string& line : lines)
    {
        text += line + '\n';
    }
    return text;
}

// Materials.

Lines MaterialCalls(const NamedColor& color)
{
    StubFont font;
    const GlRecording recording;
    EXPECT_EQ(font.SetMaterialColors(color), 1);
    return recording.Lines();
}

TEST_F(OrvFontStream, AnOpaqueMaterialLeavesBlendingOffAndDepthWritesOn)
{
    EXPECT_EQ(MaterialCalls(Grey(0.25f)), Material(0.25f));
}

TEST_F(OrvFontStream, AnAlphaOf099TurnsBlendingOnAndDepthWritesOff)
{
    NamedColor color;
    color.SetDiffuseColor(ColorVector(0.5f, 0.5f, 0.5f, 0.99f));
    const Lines lines = MaterialCalls(color);
    ASSERT_EQ(lines.size(), 9u);
    EXPECT_EQ(Lines(lines.end() - 4, lines.end()),
              (Lines{"glColor4fv 0.5 0.5 0.5 0.99", "glEnable GL_BLEND",
                     "glBlendFunc GL_SRC_ALPHA GL_ONE_MINUS_SRC_ALPHA", "glDepthMask GL_FALSE"}));
}

TEST_F(OrvFontStream, ASelfLitMaterialSendsNeitherAmbientNorDiffuse)
{
    NamedColor color = Grey(0.25f);
    color.SetEmissionColor(ColorVector(0.25f, 0, 0, 1));
    EXPECT_EQ(MaterialCalls(color),
              (Lines{"glMaterialfv GL_FRONT_AND_BACK GL_SPECULAR 0.5 0.5 0.5 1",
                     "glMaterialfv GL_FRONT_AND_BACK GL_EMISSION 0.25 0 0 1",
                     "glMaterialf GL_FRONT_AND_BACK GL_SHININESS 64", "glColor4fv 0.25 0 0 1",
                     "glDisable GL_BLEND", "glDepthMask GL_TRUE"}));
}

// Solid glyphs.

struct StyleCase
{
    const char* name;
    int style;
    int location;
};
constexpr StyleCase styleCases[] = {
    {"square", 0, 2},        {"bevelled-front", 1, 0}, {"bevelled-back", 1, 1},
    {"bevelled-both", 1, 2}, {"rounded-front", 2, 0},  {"rounded-back", 2, 1},
    {"rounded-both", 2, 2},
};

TEST_F(OrvFontStream, EveryStyleOfASolidLetterIsThatOfItsGoldenFile)
{
    glyph_draws::UseFan(*font.Glyph('A'));
    for (const StyleCase& test : styleCases)
    {
        Style(test.style, test.location);
        EXPECT_TRUE(IsGolden(std::string("letter/") + test.name + ".txt", Text(Rendered())));
    }
}

TEST_F(OrvFontStream, EveryStyleOfAWireframeLetterIsThatOfItsGoldenFile)
{
    for (const StyleCase& test : styleCases)
    {
        Style(test.style, test.location);
        EXPECT_TRUE(
            IsGolden(std::string("letter/") + test.name + "-wireframe.txt", Text(Drawn(true))));
    }
}

TEST_F(OrvFontStream, TheLocationOfASquareEdgeMakesNoDifference)
{
    Style(0, 2);
    const Lines solid = Rendered();
    const Lines wireframe = Drawn(true);
    for (const int location : {0, 1})
    {
        Style(0, location);
        EXPECT_EQ(Rendered(), solid);
        EXPECT_EQ(Drawn(true), wireframe);
    }
}

TEST_F(OrvFontStream, AWallKeepsTheFaceMaterialUnlessTheEdgeMaterialIsUsed)
{
    Style(0, 2);
    string.ClearUseEdgeColor();
    EXPECT_EQ(Rendered(), Joined({Material(faceGrey), Parts({&OrvGlyph::RenderFaces,
                                                             &OrvGlyph::RenderEdgesUnbevelled})}));
}

TEST_F(OrvFontStream, BevelsWithoutTheirMaterialGoBackToThatOfTheFaceAfterAnEdgeMaterial)
{
    Style(1, 2);
    string.ClearUseBevelColor();
    const Lines wall = Parts({&OrvGlyph::RenderEdgesBevelled});
    const Lines rings =
        Parts({&OrvGlyph::RenderFrontBevelBevelled, &OrvGlyph::RenderBackBevelBevelled});
    const Lines faces = Parts({&OrvGlyph::RenderFaces});
    EXPECT_EQ(Rendered(), Joined({Material(faceGrey), faces, Material(edgeGrey), wall,
                                  Material(faceGrey), rings}));

    // Without an edge material the face's is still current.
    string.ClearUseEdgeColor();
    EXPECT_EQ(Rendered(), Joined({Material(faceGrey), faces, wall, rings}));
}

TEST_F(OrvFontStream, BevelsThatMeetLeaveNoWallAndNoEdgeMaterial)
{
    struct Case
    {
        int location;
        float depth;
        Routine front;
        Routine back;
    };
    // The letter is 1 deep: one bevel of 1, or two of 0.5, use it up.
    const Case cases[] = {
        {0, 1.0f, &OrvGlyph::RenderFrontBevelBevelled, &OrvGlyph::RenderBackBevelFlat},
        {1, 1.0f, &OrvGlyph::RenderFrontBevelFlat, &OrvGlyph::RenderBackBevelBevelled},
        {2, 0.5f, &OrvGlyph::RenderFrontBevelBevelled, &OrvGlyph::RenderBackBevelBevelled}};
    for (const Case& test : cases)
    {
        SCOPED_TRACE(test.location);
        Style(1, test.location);
        string.SetBevelDepth(test.depth);
        string.ClearUseBevelColor();
        EXPECT_EQ(Rendered(), Joined({Material(faceGrey),
                                      Parts({&OrvGlyph::RenderFaces, test.front, test.back})}));
    }
}

TEST_F(OrvFontStream, SelectionNamesFacesWallAndBevels012)
{
    parameters.SetSelecting();
    Style(1, 2);
    EXPECT_EQ(
        Rendered(),
        Joined({Material(faceGrey),
                {"glPushName 0"},
                Parts({&OrvGlyph::RenderFaces}),
                {"glPopName", "glPushName 1"},
                Material(edgeGrey),
                Parts({&OrvGlyph::RenderEdgesBevelled}),
                {"glPopName", "glPushName 2"},
                Material(bevelGrey),
                Parts({&OrvGlyph::RenderFrontBevelBevelled, &OrvGlyph::RenderBackBevelBevelled}),
                {"glPopName"}}));
    Style(0, 2);
    EXPECT_EQ(Rendered(), Joined({Material(faceGrey),
                                  {"glPushName 0"},
                                  Parts({&OrvGlyph::RenderFaces}),
                                  {"glPopName", "glPushName 1"},
                                  Material(edgeGrey),
                                  Parts({&OrvGlyph::RenderEdgesUnbevelled}),
                                  {"glPopName"}}));
}

TEST_F(OrvFontStream, AnUnknownStyleDrawsTheFacesAndLeavesItsNamePushed)
{
    parameters.SetSelecting();
    for (const int style : {-1, 3})
    {
        Style(style, 2);
        EXPECT_EQ(Rendered(), Joined({Material(faceGrey),
                                      {"glPushName 0"},
                                      Parts({&OrvGlyph::RenderFaces}),
                                      {"glPopName", "glPushName 1"}}));
        EXPECT_EQ(nameDepth, 1);
    }
}

TEST_F(OrvFontStream, AnUnknownLocationHasNoWallAndNoRings)
{
    Style(1, 3);
    EXPECT_EQ(Rendered(),
              Joined({Material(faceGrey), Parts({&OrvGlyph::RenderFaces}), Material(bevelGrey)}));
}

// Wireframes.

TEST_F(OrvFontStream, AWireframeGlyphLeavesLightingOffWhereItWasOff)
{
    Style(0, 2);
    EXPECT_EQ(Drawn(false), Joined({Material(1.0f),
                                    {"glIsEnabled GL_LIGHTING"},
                                    Parts({&OrvGlyph::Draw}),
                                    {"glDisable GL_COLOR_MATERIAL"}}));
}

TEST_F(OrvFontStream, AWireframeGlyphIsNamed0AndAnUnknownStyleHasNoOutline)
{
    parameters.SetSelecting();
    Style(0, 2);
    EXPECT_EQ(Drawn(false), Joined({Material(1.0f),
                                    {"glIsEnabled GL_LIGHTING", "glPushName 0"},
                                    Parts({&OrvGlyph::Draw}),
                                    {"glPopName", "glDisable GL_COLOR_MATERIAL"}}));
    Style(3, 2);
    EXPECT_EQ(Drawn(false), Joined({Material(1.0f),
                                    {"glIsEnabled GL_LIGHTING", "glPushName 0", "glPopName",
                                     "glDisable GL_COLOR_MATERIAL"}}));
}

TEST_F(OrvFontStream, AnEmptyInvalidOrMissingSlotDrawsNothing)
{
    font.Glyph('B')->SetInvalid();
    delete font.glyphs.GetAt(2);
    font.glyphs.SetAt(2, nullptr);
    const ExtrusionData extrusion = string.GetExtrusionData();
    const GlRecording recording;
    for (const int index : {-1, 1, 2, 4})
    {
        EXPECT_EQ(font.RenderGlyph(index, &string, extrusion, &parameters), 0) << index;
        EXPECT_EQ(font.DrawGlyph(index, &string, extrusion, &parameters), 0) << index;
    }
    EXPECT_EQ(recording.Lines(), Lines{});
}

TEST_F(OrvFontStream, ASlotFromTheGlyphCountOnDrawsNothing)
{
    font.glyphCount = 1;
    const ExtrusionData extrusion = string.GetExtrusionData();
    const GlRecording recording;
    EXPECT_EQ(font.RenderGlyph(1, &string, extrusion, &parameters), 0);
    EXPECT_EQ(font.DrawGlyph(1, &string, extrusion, &parameters), 0);
    EXPECT_EQ(recording.Lines(), Lines{});
}
}  // namespace
