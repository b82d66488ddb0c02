// SPDX-License-Identifier: MIT
// The calls that a font makes to OpenGL: the order of materials, names and parts of one glyph.
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

NamedColor Grey(float diffuse)
{
    NamedColor color;
    color.SetDiffuseColor(ColorVector(diffuse, diffuse, diffuse, 1.0f));
    return color;
}

class OrvFontStream : public testing::Test
{
protected:
    OrvFontStream()
    {
        // The materials are told apart by the diffuse colour.
        string.SetFaceColor(Grey(0.25f));
        string.SetEdgeColor(Grey(0.5f));
        string.SetBevelColor(Grey(0.75f));
        string.extentsBoxColor = Grey(1.0f);
        string.SetScale(DVector(1, 1, 1));
        string.SetBevelDepth(0.125f);
        glyph_draws::UseFan(*font.Glyph('A'));
    }

    void Style(int style, int location)
    {
        string.SetBevelStyle(style);
        string.SetBevelLocation(location);
    }

    /// Draws A as a solid. Returns whether the calls equal the golden file of that name in letter/.
    testing::AssertionResult IsSolid(const std::string& name)
    {
        const ExtrusionData extrusion = string.GetExtrusionData();
        GlRecording recording;
        EXPECT_EQ(font.RenderGlyph(0, &string, extrusion, &parameters), 1);
        nameDepth = recording.NameDepth();
        return IsGolden("letter/" + name + ".txt", recording.Text());
    }
    testing::AssertionResult IsWireframe(const std::string& name, bool lit)
    {
        const ExtrusionData extrusion = string.GetExtrusionData();
        GlRecording recording;
        recording.SetEnabled(GL_LIGHTING, lit);
        EXPECT_EQ(font.DrawGlyph(0, &string, extrusion, &parameters), 1);
        return IsGolden("letter/" + name + ".txt", recording.Text());
    }

    StubFont font;
    OrvString string;
    DrawingParameters parameters;
    int nameDepth = 0;
};

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
    EXPECT_EQ(MaterialCalls(Grey(0.25f)),
              (Lines{"glMaterialfv GL_FRONT_AND_BACK GL_AMBIENT 0.5 0.5 0.5 1",
                     "glMaterialfv GL_FRONT_AND_BACK GL_DIFFUSE 0.25 0.25 0.25 1",
                     "glMaterialfv GL_FRONT_AND_BACK GL_SPECULAR 0.5 0.5 0.5 1",
                     "glMaterialfv GL_FRONT_AND_BACK GL_EMISSION 0 0 0 1",
                     "glMaterialf GL_FRONT_AND_BACK GL_SHININESS 64", "glColor4fv 0.25 0.25 0.25 1",
                     "glDisable GL_BLEND", "glDepthMask GL_TRUE"}));
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

TEST_F(OrvFontStream, TheCallsForASolidLetterInEveryStyleEqualItsGoldenFile)
{
    for (const StyleCase& test : styleCases)
    {
        Style(test.style, test.location);
        EXPECT_TRUE(IsSolid(test.name));
    }
}

TEST_F(OrvFontStream, TheCallsForAWireframeLetterInEveryStyleEqualItsGoldenFile)
{
    for (const StyleCase& test : styleCases)
    {
        Style(test.style, test.location);
        EXPECT_TRUE(IsWireframe(std::string(test.name) + "-wireframe", true));
    }
}

TEST_F(OrvFontStream, TheLocationOfASquareEdgeMakesNoDifference)
{
    for (const int location : {0, 1, 2})
    {
        Style(0, location);
        EXPECT_TRUE(IsSolid("square"));
        EXPECT_TRUE(IsWireframe("square-wireframe", true));
    }
}

TEST_F(OrvFontStream, AWallKeepsTheFaceMaterialUnlessTheEdgeMaterialIsUsed)
{
    Style(0, 2);
    string.ClearUseEdgeColor();
    EXPECT_TRUE(IsSolid("square-in-face-material"));
}

TEST_F(OrvFontStream, BevelsWithoutAMaterialOfTheirOwnUseThatOfTheFace)
{
    Style(1, 2);
    string.ClearUseBevelColor();
    EXPECT_TRUE(IsSolid("bevelled-both-without-bevel-material"));
    // Without an edge material, the material of the faces is still current.
    string.ClearUseEdgeColor();
    EXPECT_TRUE(IsSolid("bevelled-both-in-face-material"));
}

TEST_F(OrvFontStream, BevelsThatMeetLeaveNoWallAndNoEdgeMaterial)
{
    // The letter is 1 deep, so one bevel 1 wide, or two bevels 0.5 wide, leave no wall.
    string.ClearUseBevelColor();
    string.SetBevelDepth(1.0f);
    Style(1, 0);
    EXPECT_TRUE(IsSolid("bevelled-front-without-wall"));
    Style(1, 1);
    EXPECT_TRUE(IsSolid("bevelled-back-without-wall"));
    string.SetBevelDepth(0.5f);
    Style(1, 2);
    EXPECT_TRUE(IsSolid("bevelled-both-without-wall"));
}

TEST_F(OrvFontStream, SelectionGivesFacesTheName0WallsTheName1AndBevelsTheName2)
{
    parameters.SetSelecting();
    Style(1, 2);
    EXPECT_TRUE(IsSolid("bevelled-both-picked"));
    Style(0, 2);
    EXPECT_TRUE(IsSolid("square-picked"));
}

TEST_F(OrvFontStream, AnUnknownStyleDrawsTheFacesAndLeavesItsNamePushed)
{
    parameters.SetSelecting();
    for (const int style : {-1, 3})
    {
        Style(style, 2);
        EXPECT_TRUE(IsSolid("unknown-style-picked"));
        EXPECT_EQ(nameDepth, 1);
    }
}

TEST_F(OrvFontStream, AnUnknownLocationHasNoWallAndNoRings)
{
    Style(1, 3);
    EXPECT_TRUE(IsSolid("bevelled-at-unknown-location"));
}

// Wireframes.

TEST_F(OrvFontStream, AWireframeGlyphLeavesLightingOffWhereItWasOff)
{
    Style(0, 2);
    EXPECT_TRUE(IsWireframe("square-wireframe-unlit", false));
}

TEST_F(OrvFontStream, AWireframeGlyphIsNamed0AndAnUnknownStyleHasNoOutline)
{
    parameters.SetSelecting();
    Style(0, 2);
    EXPECT_TRUE(IsWireframe("square-wireframe-picked", false));
    Style(3, 2);
    EXPECT_TRUE(IsWireframe("unknown-style-wireframe-picked", false));
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

TEST_F(OrvFontStream, AnIndexNotBelowTheGlyphCountDrawsNothing)
{
    font.glyphCount = 1;
    const ExtrusionData extrusion = string.GetExtrusionData();
    const GlRecording recording;
    EXPECT_EQ(font.RenderGlyph(1, &string, extrusion, &parameters), 0);
    EXPECT_EQ(font.DrawGlyph(1, &string, extrusion, &parameters), 0);
    EXPECT_EQ(recording.Lines(), Lines{});
}
}  // namespace
