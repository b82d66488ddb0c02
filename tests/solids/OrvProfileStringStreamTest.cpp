// SPDX-License-Identifier: MIT
// What a text with profiles tells OpenGL around its triangles.
#include "solids/OrvProfileString.h"

#include "scene/DrawingParameters.h"
#include "tests/support/StubFont.h"
#include "tests/support/TerminationEvent.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

namespace
{
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

TEST_F(OrvProfileStringStream, OutlinesAreThoseOfTheLetters)
{
    parameters.ClearRender();
    parameters.SetOutline();
    const GlRecording recording;
    EXPECT_EQ(text.DrawObject(&parameters), 1);
    EXPECT_GT(recording.Count("glBegin"), 0);
    EXPECT_TRUE(
        recording.Only({"glBegin"}) ==
        Lines(static_cast<std::size_t>(recording.Count("glBegin")), "glBegin GL_LINE_LOOP"));
}
}  // namespace
