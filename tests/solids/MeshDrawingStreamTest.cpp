// SPDX-License-Identifier: MIT
// When nodes are drawn with a mesh cache, and the calls that are then made. The recorder stands for
// a context of OpenGL 1.1, which has no buffers.
#include "import3ds/TriangularMeshObject.h"
#include "material/NamedColorArray.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvFontString.h"
#include "solids/MeshCache.h"
#include "tests/support/Meshes.h"
#include "tests/support/StubFont.h"
#include "tests/support/TerminationEvent.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

class MeshDrawingStream : public testing::Test
{
protected:
    MeshDrawingStream()
    {
        text.AttachFont(&font);
        text.SetTextString("AB\rCDA");
        text.CalculateBounds();
        FillSquare(square);
        square.CalculateFaceNormals();
        square.SetMaterialColors(&materials);
        materials.Add(NamedColor());
        parameters.SetRender();
        parameters.SetShowObject();
        parameters.SetSolidDrawer(&cache);
    }

    /// The calls of one draw with the parameters.
    std::vector<std::string> Lines(DrawingObject& node, int result = 1)
    {
        const GlRecording recording;
        EXPECT_EQ(node.Draw(&parameters), result);
        return recording.Lines();
    }
    static int Count(const std::vector<std::string>& lines, const std::string& start)
    {
        return static_cast<int>(std::count_if(lines.begin(), lines.end(), [&](const auto& line) {
            return line.compare(0, start.size(), start) == 0;
        }));
    }

    orvane::MeshCache cache;
    StubFont font;
    OrvFontString text;
    NamedColorArray materials;
    TriangularMeshObject square;
    DrawingParameters parameters;
};

TEST_F(MeshDrawingStream, NewParametersHaveNoDrawer)
{
    EXPECT_EQ(DrawingParameters().GetSolidDrawer(), nullptr);
}

TEST_F(MeshDrawingStream, ALetterOfOneMaterialIsOneCallWithoutImmediateMode)
{
    for (int draw = 0; draw < 2; ++draw)
    {
        const std::vector<std::string> lines = Lines(text);
        EXPECT_EQ(Count(lines, "glBegin"), 0);
        EXPECT_EQ(Count(lines, "glVertex3f"), 0);
        // Four letters with outlines: boxes of twelve triangles. D has no outline.
        EXPECT_EQ(Count(lines, "glDrawElements GL_TRIANGLES 36 GL_UNSIGNED_SHORT"), 4);
        EXPECT_EQ(Count(lines, "glDrawElements"), 4);
        EXPECT_EQ(Count(lines, "glMaterialf GL_FRONT_AND_BACK GL_SHININESS"), 1);
        EXPECT_EQ(Count(lines, "glPushClientAttrib"), 1);
        EXPECT_EQ(Count(lines, "glPopClientAttrib"), 1);
    }
}

TEST_F(MeshDrawingStream, LettersOfSeveralMaterialsAreDrawnInTheOrderOfImmediateMode)
{
    for (const int surface : {0, 1, 2})
    {
        NamedColor color;
        color.SetDiffuseColor(ColorVector(0.25f * static_cast<float>(surface), 0, 0, 0.5f));
        text.SetSurfaceColor(color, surface);
    }
    text.SetBevelDepth(0.125f);
    for (const int style : {0, 1, 2})
    {
        SCOPED_TRACE(style);
        text.SetBevelStyle(style);
        const auto stateCalls = [this](orvane::SolidDrawer* drawer) {
            parameters.SetSolidDrawer(drawer);
            const GlRecording recording;
            EXPECT_EQ(text.Draw(&parameters), 1);
            return recording.Only({"glMaterialfv", "glMaterialf", "glColor4fv", "glBlendFunc",
                                   "glDepthMask", "glEnable", "glDisable", "glPushMatrix",
                                   "glPopMatrix"});
        };
        const std::vector<std::string> expected = stateCalls(nullptr);
        EXPECT_GT(expected.size(), 30u);
        EXPECT_EQ(stateCalls(&cache), expected);
    }
    text.SetBevelStyle(0);
    // Two faces of two triangles, then four walls of two triangles, of four letters.
    const std::vector<std::string> lines = Lines(text);
    EXPECT_EQ(Count(lines, "glDrawElements GL_TRIANGLES 12 "), 4);
    EXPECT_EQ(Count(lines, "glDrawElements GL_TRIANGLES 24 "), 4);
}

TEST_F(MeshDrawingStream, AnImportedMeshIsOneCallWithItsOwnState)
{
    const std::vector<std::string> lines = Lines(square);
    EXPECT_EQ(Count(lines, "glBegin"), 0);
    EXPECT_EQ(Count(lines, "glDrawElements GL_TRIANGLES 6 "), 1);
    EXPECT_EQ(Count(lines, "glFrontFace GL_CW"), 1);
    EXPECT_EQ(Count(lines, "glDisable GL_CULL_FACE"), 1);
}

TEST_F(MeshDrawingStream, WithoutTheCacheAndForOutlinesAndPickingTheCallsAreTheUsualOnes)
{
    struct Mode
    {
        const char* name;
        DWORD bits;
        bool cached;
    };
    for (const Mode& mode :
         {Mode{"no cache", DrawingParameters::renderBit, false},
          Mode{"outline", DrawingParameters::outlineBit, true},
          Mode{"picking", DrawingParameters::renderBit | DrawingParameters::selectingBit, true}})
    {
        SCOPED_TRACE(mode.name);
        parameters.SetFlags(mode.bits | DrawingParameters::showObjectBit);
        for (DrawingObject* const node :
             {static_cast<DrawingObject*>(&text), static_cast<DrawingObject*>(&square)})
        {
            parameters.SetSolidDrawer(nullptr);
            const std::vector<std::string> expected = Lines(*node);
            EXPECT_GT(Count(expected, "glBegin"), 0);
            parameters.SetSolidDrawer(mode.cached ? &cache : nullptr);
            EXPECT_EQ(Lines(*node), expected);
        }
    }
    EXPECT_EQ(cache.Bytes(), 0u);
}

TEST_F(MeshDrawingStream, ACancelledDrawingStops)
{
    TerminationEvent event(false);
    parameters.SetTerminationEvent(event.Get());
    const std::vector<std::string> all = Lines(text);
    EXPECT_EQ(Count(all, "glDrawElements"), 4);
    event.Signal();
    for (DrawingObject* const node :
         {static_cast<DrawingObject*>(&text), static_cast<DrawingObject*>(&square)})
    {
        EXPECT_EQ(Count(Lines(*node, 0), "glDrawElements"), 0);
    }
}

TEST_F(MeshDrawingStream, AnEmptyTextMakesNoCalls)
{
    text.SetTextString("");
    const std::vector<std::string> lines = Lines(text);
    EXPECT_EQ(Count(lines, "glDrawElements"), 0);
    EXPECT_EQ(Count(lines, "glMaterial"), 0);
}
}  // namespace
