// SPDX-License-Identifier: MIT
#include "scene/OrvFontString.h"

#include "extrude/OrvGlyph.h"
#include "platform/Sync.h"
#include "scene/DrawingParameters.h"
#include "tests/support/GoldenFile.h"
#include "tests/support/StubFont.h"
#include "tests/support/gl/GlRecorder.h"
#include "tests/support/gl/GlyphDraws.h"

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

NamedColor Diffuse(float red, float green, float blue)
{
    NamedColor color;
    color.SetDiffuseColor(ColorVector(red, green, blue, 1));
    return color;
}

TEST_F(OrvFontStringStream, DrawsTheTextThenTheBoxesOfEveryNode)
{
    glyph_draws::UseFan(*font.Glyph('A'));
    glyph_draws::UseFan(*font.Glyph('B'));
    string.SetScale(DVector(1, 1, 1));
    string.SetBevelStyle(0);
    string.SetBevelDepth(0);
    string.SetInterCharacterSpacing(0.125f);
    string.SetUnscaledDimensions(DVector(1, 2, 1));
    string.SetFirstLineOffset(0.75f);
    string.SetFaceColor(Diffuse(0.25f, 0.25f, 0.25f));
    string.SetEdgeColor(Diffuse(0.5f, 0.5f, 0.5f));
    string.extentsBoxColor = Diffuse(0.25f, 0.5f, 0.75f);
    string.SetLocalBounds(Vector(0, 0, 0), Vector(1, 2, 3));
    string.SetEditable();
    parameters.SetRender();
    parameters.SetExtentsBox();
    const GlRecording recording;
    EXPECT_EQ(string.DrawObject(&parameters), 1);
    EXPECT_TRUE(IsGolden("text/solid-with-box.txt", recording.Text()));
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
