// SPDX-License-Identifier: MIT
// What a shaped text tells OpenGL around its triangles.
#include "shapedtext/OrvShapedString.h"

#include "scene/DrawingParameters.h"
#include "tests/shapedtext/ShapedSettings.h"
#include "tests/support/TerminationEvent.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

namespace
{
using orvane::OrvShapedString;
using orvane::ShapedTextSettings;
using Lines = std::vector<std::string>;

class OrvShapedStringStream : public testing::Test
{
protected:
    OrvShapedStringStream() { parameters.SetRender(); }

    void Set(const char* characters)
    {
        text.SetText(characters, settings);
        text.CalculateBounds();
    }

    ShapedTextSettings settings = InFont("DejaVu Sans");
    OrvShapedString text;
    DrawingParameters parameters;
};

TEST_F(OrvShapedStringStream, LettersAreNamedByTheirFirstBytes)
{
    // The ligature of "ffi" is one letter; an o with a diaeresis has two bytes. A Hebrew line is
    // drawn from its end.
    Set("\u00F6ffi\n\u05D0\u05D1");
    const Lines expected = {"glPushName 0", "glPushName 2", "glPushName 8", "glPushName 6"};
    parameters.SetSelecting();
    for (const bool hasProfile : {false, true})
    {
        text.SetHasProfile(hasProfile);
        const GlRecording recording;
        EXPECT_EQ(text.DrawNamedCharacters(&parameters), 1);
        EXPECT_TRUE(recording.IsBalanced());
        Lines names;
        int depth = 0;
        for (const std::string& line : recording.Only({"glPushName", "glPopName"}))
        {
            depth += line == "glPopName" ? -1 : 1;
            if (depth == 1 && line != "glPopName")
            {
                names.push_back(line);
            }
        }
        EXPECT_EQ(names, expected) << hasProfile;
    }
}

TEST_F(OrvShapedStringStream, MarksBelongToTheirLetter)
{
    Set("x\u0304a");
    parameters.SetSelecting();
    const GlRecording recording;
    EXPECT_EQ(text.DrawNamedCharacters(&parameters), 1);
    const Lines names = recording.Only({"glPushName"});
    // The letter, its mark and the next letter, each with faces and walls.
    const Lines expected = {"glPushName 0", "glPushName 0", "glPushName 1",
                            "glPushName 0", "glPushName 0", "glPushName 1",
                            "glPushName 3", "glPushName 0", "glPushName 1"};
    EXPECT_EQ(names, expected);
}

TEST_F(OrvShapedStringStream, AStoppedDrawingLeavesTheMatricesAsTheyWere)
{
    Set("HH\nHH");
    const TerminationEvent event(true);
    parameters.SetTerminationEvent(event.Get());
    const GlRecording recording;
    EXPECT_EQ(text.DrawObject(&parameters), 0);
    EXPECT_TRUE(recording.IsBalanced());
    EXPECT_EQ(recording.Count("glBegin"), 0);
}

TEST_F(OrvShapedStringStream, WiresHaveTheColourOfTheText)
{
    Set("H");
    parameters.ClearRender();
    parameters.SetOutline();
    const GlRecording recording;
    EXPECT_EQ(text.DrawObject(&parameters), 1);
    EXPECT_TRUE(recording.IsBalanced());
    EXPECT_GT(recording.Count("glVertex3f"), 0);
    EXPECT_EQ(recording.Count("glNormal3f"), 0);
}

TEST_F(OrvShapedStringStream, NothingIsDrawnAsBoxesButTheBox)
{
    Set("H");
    parameters.ClearRender();
    const GlRecording recording;
    EXPECT_EQ(text.DrawNamedCharacters(&parameters), 1);
    EXPECT_EQ(recording.Lines(), Lines());
}

}  // namespace
