// SPDX-License-Identifier: MIT
// What a text with profiles tells OpenGL around its triangles.
#include "solids/OrvProfileString.h"

#include "document/FontChoice.h"
#include "scene/DrawingParameters.h"
#include "solids/MeshCache.h"
#include "tests/support/Allocations.h"
#include "tests/support/StubFont.h"
#include "tests/support/TerminationEvent.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <new>

namespace
{
using orvane::BevelSides;
using orvane::OrvProfileString;
using Lines = std::vector<std::string>;

class OrvProfileStringStream : public testing::Test
{
protected:
    OrvProfileStringStream()
    {
        text.AttachFont(&font);
        text.SetTextString("AB");
        text.SetProfile(orvane::ParseProfile("0,0 0.125,-0.125"));
        text.SetScale(DVector(1, 1, 0.5));
        text.CalculateBounds();
        parameters.SetRender();
    }

    StubFont font;
    OrvProfileString text;
    DrawingParameters parameters;
};

TEST_F(OrvProfileStringStream, LettersStandWhereTheFontPlacesThem)
{
    const GlRecording recording;
    EXPECT_EQ(text.DrawObject(&parameters), 1);
    EXPECT_TRUE(recording.IsBalanced());
    Lines places;
    font.PlaceLetters(&text, [&](const orvane::PlacedLetter& letter) {
        places.push_back(GlLine("glTranslated", letter.x, letter.y, 0));
    });
    EXPECT_EQ(recording.Only({"glTranslated"}), places);
    EXPECT_EQ(recording.Count("glBegin"), 6);  // face, wall and profile of each letter
}

TEST_F(OrvProfileStringStream, PartsHaveNamesInAPickingPass)
{
    parameters.SetSelecting();
    text.SetTextString("A");
    const GlRecording recording;
    EXPECT_EQ(text.DrawObject(&parameters), 1);
    EXPECT_EQ(recording.Only({"glPushName", "glPopName"}),
              (Lines{"glPushName 0", "glPopName", "glPushName 1", "glPopName", "glPushName 2",
                     "glPopName"}));
}

TEST_F(OrvProfileStringStream, CharactersHaveTheirIndicesAndAJoinedLineThatOfItsFirst)
{
    const auto names = [this] {
        const GlRecording recording;
        EXPECT_EQ(text.DrawNamedCharacters(&parameters), 1);
        return recording.Only({"glPushName"});
    };
    text.SetTextString("AB\r\nC");
    EXPECT_EQ(names(), (Lines{"glPushName 0", "glPushName 1", "glPushName 4"}));
    text.SetFusion(orvane::LetterFusion::Line);
    EXPECT_EQ(names(), (Lines{"glPushName 0", "glPushName 4"}));
    text.SetFusion(orvane::LetterFusion::Text);
    EXPECT_EQ(names(), (Lines{"glPushName 0"}));
}

TEST_F(OrvProfileStringStream, TextureCoordinatesArePlacesInEmsOrScaledPlaces)
{
    text.SetTextString("A");
    text.SetProfile(orvane::ParseProfile("0,0"));
    text.SetScale(DVector(2, 4, 0.5));
    text.GetTexture()->textureFlags = TextureMap::Valid | TextureMap::Textured;
    text.GetTexture()->SetRepeatRate(3);
    for (const double scaleX : {1.0, 2.0})
    {
        const double scaleY = scaleX == 1 ? 1 : 4;
        const GlRecording recording;
        EXPECT_EQ(text.DrawObject(&parameters), 1);
        ASSERT_FALSE(recording.Vertices().empty());
        for (const GlVertex& vertex : recording.Vertices())
        {
            EXPECT_FLOAT_EQ(vertex.texCoord[0], 3 * vertex.position[0] / 2 * scaleX);
            EXPECT_FLOAT_EQ(vertex.texCoord[1], 3 * vertex.position[1] / 4 * scaleY);
        }
        text.GetTexture()->SetScaleWithObject();
    }
}

TEST_F(OrvProfileStringStream, ACancelledDrawingEndsBeforeTheFirstLetter)
{
    const TerminationEvent event(true);
    parameters.SetTerminationEvent(event.Get());
    const GlRecording recording;
    EXPECT_EQ(text.DrawObject(&parameters), 0);
    EXPECT_EQ(recording.Count("glBegin"), 0);
}

/// The number of lines that a text of one letter draws in outline mode.
class OrvProfileStringLines : public OrvProfileStringStream
{
protected:
    OrvProfileStringLines()
    {
        parameters.ClearRender();
        parameters.SetOutline();
        text.SetTextString("A");  // a square
    }

    std::vector<GlVertex> Ends(const char* profile, BevelSides sides)
    {
        text.SetProfile(orvane::ParseProfile(profile));
        text.SetBevelLocation(static_cast<int>(sides));
        const GlRecording recording;
        EXPECT_EQ(text.DrawObject(&parameters), 1);
        EXPECT_EQ(recording.Only({"glBegin"}), Lines{"glBegin GL_LINES"});
        EXPECT_TRUE(recording.IsBalanced());
        return recording.Vertices();
    }
    std::size_t Count(const char* profile, BevelSides sides = BevelSides::Front)
    {
        return Ends(profile, sides).size() / 2;
    }
};

TEST_F(OrvProfileStringLines, AreTheRingsOfTheStepsAndTheSharpEdges)
{
    // Two rings of four lines, and the four edges of the wall.
    EXPECT_EQ(Count("0,0"), 12u);
    // Three rings, four edges of the chamfer and four of the wall.
    EXPECT_EQ(Count("0,0 0.125,-0.125"), 20u);
    EXPECT_EQ(Count("0,0 0.125,-0.125", BevelSides::Back), 20u);
    EXPECT_EQ(Count("0,0 0.125,-0.125", BevelSides::Both), 28u);
    // Seven rings of the profile and one of the back, six planes and the wall.
    EXPECT_EQ(Count("round 0.125"), 8u * 4 + 7 * 4);
    // A ledge in the plane of the face: its border is seen, the diagonals across it are not.
    EXPECT_EQ(Count("0,0 0.125,0"), 3u * 4 + 4);
}

TEST_F(OrvProfileStringLines, LieWhereTheRingsLie)
{
    int ends[3] = {};  // of the lines along the face, the bevel's lower ring and the back
    for (const GlVertex& end : Ends("0,0 0.125,-0.25", BevelSides::Front))
    {
        const double z = end.position[2];
        const bool isFace = z == 0;
        const double reach = isFace ? 0 : 0.125;
        EXPECT_TRUE(std::fabs(end.position[0] + reach) < 1e-5 ||
                    std::fabs(end.position[0] - 1 - reach) < 1e-5)
            << end.position[0];
        ++ends[isFace ? 0 : z == -0.25 ? 1 : 2];
        EXPECT_TRUE(isFace || z == -0.25 || z == -0.5) << z;
    }
    // Four lines along each ring, and four from each ring to the next.
    EXPECT_EQ(ends[0], 8 + 4);
    EXPECT_EQ(ends[1], 8 + 4 + 4);
    EXPECT_EQ(ends[2], 8 + 4);
}

TEST_F(OrvProfileStringLines, AreOnlyRingsWhereALetterIsSmooth)
{
    orvane::LoadFonts();
    text.AttachFont(orvane::ChooseFont("DejaVu Sans"));
    text.SetTextString("o");
    for (const char* const profile : {"0,0", "chamfer 0.02", "round -0.02"})
    {
        const std::vector<GlVertex> ends = Ends(profile, BevelSides::Both);
        EXPECT_GT(ends.size(), 100u);
        for (std::size_t i = 0; i < ends.size(); i += 2)
        {
            EXPECT_EQ(ends[i].position[2], ends[i + 1].position[2]) << profile;
        }
    }
}

TEST_F(OrvProfileStringLines, HaveTheNamesOfFacesAndCharactersInAPickingPass)
{
    parameters.SetSelecting();
    text.SetTextString("AB");
    const GlRecording recording;
    EXPECT_EQ(text.DrawNamedCharacters(&parameters), 1);
    EXPECT_EQ(recording.Only({"glPushName"}),
              (Lines{"glPushName 0", "glPushName 0", "glPushName 1", "glPushName 0"}));
}

/// A text that has no memory left when it draws its second letter.
class ForgetfulText : public OrvProfileString
{
public:
    void PlaceSolids(const std::function<void(const orvane::PlacedLetter&)>& visit) override
    {
        OrvProfileString::PlaceSolids([&](const orvane::PlacedLetter& letter) {
            if (letter.character == 1)
            {
                SetMemoryJudge([](const void*) { return true; });
            }
            visit(letter);
        });
    }
};

TEST_F(OrvProfileStringStream, ASolidForWhichThereIsNoMemoryLeavesNoMatrixBehind)
{
    for (const bool isRendered : {true, false})
    {
        ForgetfulText forgetful;
        static_cast<OrvProfileString&>(forgetful) = text;
        parameters.SetFlags(isRendered ? DrawingParameters::renderBit
                                       : DrawingParameters::outlineBit);
        const GlRecording recording;
        bool isRefused = false;
        try
        {
            forgetful.DrawObject(&parameters);
        }
        catch (const std::bad_alloc&)
        {
            isRefused = true;
        }
        SetMemoryJudge(nullptr);
        EXPECT_TRUE(isRefused);
        EXPECT_EQ(recording.Count("glBegin"), isRendered ? 3 : 1) << "The first letter is drawn.";
        EXPECT_EQ(recording.MatrixDepth(), 1);
        EXPECT_EQ(recording.NameDepth(), 0);
    }
}

// With a mesh cache. The recorder stands for a context of OpenGL 1.1, which has no buffers.

TEST_F(OrvProfileStringStream, WithACacheEachSolidIsDrawnFromArraysWhereItStands)
{
    orvane::MeshCache cache;
    parameters.SetSolidDrawer(&cache);
    text.SetTextString("ADB");  // D has no outline
    for (int draw = 0; draw < 2; ++draw)
    {
        const GlRecording recording;
        EXPECT_EQ(text.DrawObject(&parameters), 1);
        EXPECT_TRUE(recording.IsBalanced());
        EXPECT_EQ(recording.Count("glBegin"), 0);
        EXPECT_EQ(recording.Count("glDrawElements"), 2);
        Lines places;
        font.PlaceLetters(&text, [&](const orvane::PlacedLetter& letter) {
            places.push_back(GlLine("glTranslated", letter.x, letter.y, 0));
        });
        EXPECT_EQ(recording.Only({"glTranslated"}), places);
    }
}

TEST_F(OrvProfileStringStream, WithACacheMaterialsAreThoseOfImmediateMode)
{
    for (const int surface : {0, 1, 2})
    {
        NamedColor color;
        color.SetDiffuseColor(ColorVector(0.25f * static_cast<float>(surface), 0, 0, 0.5f));
        text.SetSurfaceColor(color, surface);
    }
    orvane::MeshCache cache;
    const auto stateCalls = [this](orvane::SolidDrawer* drawer) {
        parameters.SetSolidDrawer(drawer);
        const GlRecording recording;
        EXPECT_EQ(text.DrawObject(&parameters), 1);
        return recording.Only({"glMaterialfv", "glMaterialf", "glColor4fv", "glBlendFunc",
                               "glDepthMask", "glEnable", "glDisable", "glPushMatrix",
                               "glPopMatrix", "glTranslated"});
    };
    const Lines expected = stateCalls(nullptr);
    EXPECT_GT(expected.size(), 30u);
    EXPECT_EQ(stateCalls(&cache), expected);
}

TEST_F(OrvProfileStringStream, JoinedLettersAreDrawnAnewWhenTheTextChanges)
{
    orvane::MeshCache cache;
    parameters.SetSolidDrawer(&cache);
    text.SetFusion(orvane::LetterFusion::Text);
    const auto indices = [this] {
        const GlRecording recording;
        EXPECT_EQ(text.DrawObject(&parameters), 1);
        return recording.Only({"glDrawElements"});
    };
    text.SetTextString("A");
    const Lines one = indices();
    EXPECT_EQ(one.size(), 1u);
    text.SetTextString("A\r\n\r\n\r\nA");
    const Lines two = indices();
    EXPECT_EQ(two.size(), 1u);
    EXPECT_NE(two, one);
    text.SetTextString("A");
    EXPECT_EQ(indices(), one);
}

TEST_F(OrvProfileStringStream, OutlinesAndPickingPassesDoNotAskTheCache)
{
    orvane::MeshCache cache;
    for (const DWORD bits : {DWORD{DrawingParameters::outlineBit},
                             DWORD{DrawingParameters::renderBit | DrawingParameters::selectingBit}})
    {
        parameters.SetFlags(bits);
        parameters.SetSolidDrawer(&cache);
        const GlRecording recording;
        EXPECT_EQ(text.DrawObject(&parameters), 1);
        EXPECT_GT(recording.Count("glBegin"), 0);
    }
    EXPECT_EQ(cache.Bytes(), 0u);
}
}  // namespace
