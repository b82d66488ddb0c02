// SPDX-License-Identifier: MIT
#include "scene/OrvFontString.h"

#include "platform/Sync.h"
#include "scene/DrawingParameters.h"
#include "tests/support/StubFont.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

namespace
{
using Lines = std::vector<std::string>;

/// Signals an event when its first wireframe glyph asks for the colour.
struct SelfStoppingString : OrvFontString
{
    NamedColor GetExtentsBoxColor() const override
    {
        SetEvent(event);
        return OrvFontString::GetExtentsBoxColor();
    }
    HANDLE event = nullptr;
};

class OrvFontStringStream : public testing::Test
{
protected:
    OrvFontStringStream() : event(CreateEventA(nullptr, TRUE, FALSE, nullptr))
    {
        string.AttachFont(&font);
        string.SetTextString("AB");
        string.event = event;
        parameters.SetTerminationEvent(event);
    }
    ~OrvFontStringStream() override { CloseHandle(event); }

    HANDLE event;
    StubFont font;
    SelfStoppingString string;
    DrawingParameters parameters;
};

TEST_F(OrvFontStringStream, DrawsTheTextThenTheBoxesOfEveryNode)
{
    string.SetEditable();
    parameters.SetRender();
    parameters.SetExtentsBox();
    string.extentsBoxColor.SetDiffuseColor(ColorVector(1, 0, 0, 1));
    const GlRecording recording;
    EXPECT_EQ(string.DrawObject(&parameters), 1);
    const Lines lines = recording.Lines();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.front(), "glPushMatrix");
    const auto textEnd = std::find(lines.begin(), lines.end(), "glPopMatrix");
    const auto box = std::find(lines.begin(), lines.end(), "glBegin GL_LINES");
    ASSERT_NE(textEnd, lines.end());
    ASSERT_NE(box, lines.end());
    EXPECT_LT(textEnd, box);
    EXPECT_EQ(std::count(textEnd, lines.end(), "glBegin GL_LINE_LOOP"), 2);
}

TEST_F(OrvFontStringStream, WithoutRenderOrOutlineOnlyTheBoxesAreDrawn)
{
    const auto texts = [&] {
        const GlRecording recording;
        EXPECT_EQ(string.DrawObject(&parameters), 1);
        return recording.Count("glPushMatrix");
    };
    EXPECT_EQ(texts(), 0);
    parameters.SetRender();
    EXPECT_EQ(texts(), 1);
    parameters.ClearRender();
    parameters.SetOutline();
    parameters.SetNoTerminate();
    EXPECT_EQ(texts(), 1);
}

TEST_F(OrvFontStringStream, WithoutAFontNothingIsDrawnNotEvenABox)
{
    string.AttachFont(nullptr);
    string.SetEditable();
    parameters.SetRender();
    parameters.SetExtentsBox();
    const GlRecording recording;
    EXPECT_EQ(string.DrawObject(&parameters), 1);
    EXPECT_EQ(recording.Lines(), Lines{});
}

TEST_F(OrvFontStringStream, ACancelledDrawGivesZeroAtOnce)
{
    SetEvent(event);
    parameters.SetRender();
    const GlRecording recording;
    EXPECT_EQ(string.DrawObject(&parameters), 0);
    EXPECT_EQ(recording.Lines(), Lines{});
}

TEST_F(OrvFontStringStream, ATextCancelledBetweenGlyphsGivesZeroAndDrawsNoBox)
{
    parameters.SetOutline();
    parameters.SetExtentsBox();
    string.SetEditable();
    const GlRecording recording;
    EXPECT_EQ(string.DrawObject(&parameters), 0);
    // A is two outlines, B none, and no box follows.
    EXPECT_EQ(recording.Count("glBegin"), 2);
    EXPECT_TRUE(recording.IsBalanced());
}
}  // namespace
