// SPDX-License-Identifier: MIT
// The boxes and sizing handles that a node draws, and the material that it makes current.

#include "scene/DrawingObject.h"
#include "scene/DrawingParameters.h"
#include "tests/support/GoldenFile.h"
#include "tests/support/TestNodes.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

using Lines = std::vector<std::string>;

const Lines textureOff = {"glIsEnabled GL_TEXTURE_2D", "glDisable GL_TEXTURE_2D"};

// A node whose box runs from (0, 0, 0) to (1, 2, 3).
class Boxes : public testing::Test
{
protected:
    Boxes()
    {
        node.SetLocalBounds(Vector(0.0f, 0.0f, 0.0f), Vector(1.0f, 2.0f, 3.0f));
        node.extentsBoxColor.SetDiffuseColor(ColorVector(0.25f, 0.5f, 0.75f, 1.0f));
    }

    // What DrawObject of the node sends.
    Lines Drawn()
    {
        GlRecording recording;
        EXPECT_EQ(node.DrawObject(&parameters), 1);
        return recording.Lines();
    }

    testing::AssertionResult IsDrawnAs(const std::string& name)
    {
        const GlRecording recording;
        EXPECT_EQ(node.DrawObject(&parameters), 1);
        return IsGolden("node/" + name + ".txt", recording.Text());
    }

    DrawingObject node;
    DrawingParameters parameters;
};

TEST_F(Boxes, AnExtentsBoxIsTwoLoopsAndFourLines)
{
    GlRecording recording;
    EXPECT_EQ(node.DrawExtentsBox(&parameters), 1);
    EXPECT_TRUE(IsGolden("node/box.txt", recording.Text()));
    recording.Clear();
    EXPECT_EQ(node.DrawScalingBox(&parameters), 1);
    EXPECT_TRUE(IsGolden("node/box.txt", recording.Text()));
}

TEST_F(Boxes, LightingIsSwitchedOffWhileABoxIsDrawn)
{
    GlRecording recording;
    recording.SetEnabled(GL_LIGHTING, true);
    node.DrawExtentsBox(&parameters);
    EXPECT_TRUE(IsGolden("node/box-where-lighting-is-on.txt", recording.Text()));
}

TEST_F(Boxes, APlainNodeDrawsNoBox)
{
    EXPECT_EQ(Drawn(), textureOff);
    node.SetEditable();
    EXPECT_EQ(Drawn(), textureOff);
}

TEST_F(Boxes, TexturingIsSwitchedOnAgainAfterTheBoxes)
{
    GlRecording recording;
    recording.SetEnabled(GL_TEXTURE_2D, true);
    EXPECT_EQ(node.DrawObject(&parameters), 1);
    EXPECT_EQ(recording.Lines(), (Lines{"glIsEnabled GL_TEXTURE_2D", "glDisable GL_TEXTURE_2D",
                                        "glEnable GL_TEXTURE_2D"}));
}

TEST_F(Boxes, ANodeThatIsNotEditableDrawsItsBoxWhenNodeAndParametersAskForIt)
{
    node.SetShowExtentsBox();
    EXPECT_EQ(Drawn(), textureOff);
    parameters.SetShowExtentsAndHandles();
    EXPECT_TRUE(IsDrawnAs("drawn-with-box"));
    node.ClearShowExtentsBox();
    EXPECT_EQ(Drawn(), textureOff);
    parameters.SetExtentsBox();
    node.SetShowScalingBox();
    EXPECT_EQ(Drawn(), textureOff);
}

TEST_F(Boxes, ANodeThatIsNotEditableCanDrawItsBoxTwice)
{
    node.SetShowExtentsBox();
    node.SetShowScalingBox();
    parameters.SetShowExtentsAndHandles();
    EXPECT_TRUE(IsDrawnAs("drawn-with-two-boxes"));  // the scaling box
    parameters.SetExtentsBox();
    EXPECT_TRUE(IsDrawnAs("drawn-with-two-boxes"));  // everyone's extents box
}

TEST_F(Boxes, AnEditableNodeHasTheExtentsBoxOrTheScalingBox)
{
    node.SetEditable();
    node.SetShowExtentsBox();  // does not matter to an editable node
    node.SetShowScalingBox();
    EXPECT_EQ(Drawn(), textureOff);
    parameters.SetShowExtentsAndHandles();
    EXPECT_TRUE(IsDrawnAs("drawn-with-box"));
    parameters.SetExtentsBox();
    EXPECT_TRUE(IsDrawnAs("drawn-with-box"));
    parameters.ClearShowExtentsAndHandles();
    EXPECT_TRUE(IsDrawnAs("drawn-with-box"));
    node.ClearShowScalingBox();
    parameters.ClearExtentsBox();
    parameters.SetShowExtentsAndHandles();
    EXPECT_EQ(Drawn(), textureOff);
}

class Handles : public Boxes
{};

TEST_F(Handles, PickingNamesFourHandlesBehindTheChildren)
{
    node.AddChild(new DrawingObject);
    node.AddChild(new DrawingObject);
    parameters.SetSelecting();
    GlRecording recording;
    EXPECT_EQ(node.DrawSizingHandles(&parameters), 1);
    EXPECT_EQ(recording.Only({"glPushName", "glPopName"}),
              (Lines{"glPushName 2", "glPopName", "glPushName 3", "glPopName", "glPushName 4",
                     "glPopName", "glPushName 5", "glPopName"}));
    EXPECT_EQ(recording.Lines()[0], "glIsEnabled GL_LIGHTING");
    // Four solid cubes.
    EXPECT_EQ(recording.Count("glBegin"), 4);
    EXPECT_EQ(recording.Vertices().size(), 4U * 24);
    EXPECT_EQ(recording.Vertices()[0].primitive, GLenum{GL_QUADS});
}

TEST_F(Handles, BackHandlesAreOpenAndFrontHandlesAreClosed)
{
    GlRecording recording;
    recording.SetEnabled(GL_LIGHTING, true);
    EXPECT_EQ(node.DrawSizingHandles(&parameters), 1);
    const std::vector<GlVertex> vertices = recording.Vertices();
    ASSERT_EQ(vertices.size(), 4U * 16 + 4U * 24);
    const DVector centers[] = {DVector(0.0, 0.0, 3.0), DVector(0.0, 2.0, 3.0),
                               DVector(1.0, 2.0, 3.0), DVector(1.0, 0.0, 3.0),
                               DVector(0.0, 0.0, 0.0), DVector(0.0, 2.0, 0.0),
                               DVector(1.0, 2.0, 0.0), DVector(1.0, 0.0, 0.0)};
    for (std::size_t i = 0; i < vertices.size(); ++i)
    {
        const bool open = i < 4 * 16;
        const std::size_t handle = open ? 4 + i / 16 : (i - 4 * 16) / 24;
        const DVector& center = centers[handle];
        // Every corner lies half an edge from the centre on each axis.
        const double half = 0.05f / 2;
        EXPECT_NEAR(std::abs(vertices[i].position[0] - center.x), half, 1e-7);
        EXPECT_NEAR(std::abs(vertices[i].position[1] - center.y), half, 1e-7);
        EXPECT_NEAR(std::abs(vertices[i].position[2] - center.z), half, 1e-7);
        EXPECT_EQ(vertices[i].primitive == GL_QUADS, !open);
    }
    EXPECT_EQ(recording.Only({"glPushName"}), Lines{});
    EXPECT_EQ(recording.Lines()[1], "glDisable GL_LIGHTING");
    EXPECT_EQ(recording.Lines().back(), "glEnable GL_LIGHTING");
}

TEST_F(Handles, TheFacesOfAClosedHandlePointOutwards)
{
    GlRecording recording;
    const float edge = 2.0f;
    node.DrawClosedSizingHandle(Vector(0.0f, 0.0f, 0.0f), edge);
    const std::vector<GlVertex> vertices = recording.Vertices();
    ASSERT_EQ(vertices.size(), 24U);
    for (std::size_t quad = 0; quad < 24; quad += 4)
    {
        DVector corners[4];
        DVector middle;
        for (std::size_t i = 0; i < 4; ++i)
        {
            const auto& position = vertices[quad + i].position;
            corners[i] = DVector(position[0], position[1], position[2]);
            middle += corners[i] * 0.25;
        }
        EXPECT_EQ(middle.Length(), 1.0);
        const DVector normal = (corners[1] - corners[0]) * (corners[2] - corners[1]);
        EXPECT_GT(normal.Dot(middle), 0.0);
    }
}

TEST_F(Handles, AnOpenHandleIsTheEdgesOfACube)
{
    GlRecording recording;
    const float edge = 2.0f;
    node.DrawOpenSizingHandle(Vector(5.0f, 0.0f, 0.0f), edge);
    EXPECT_EQ(recording.Only({"glBegin"}),
              (Lines{"glBegin GL_LINE_LOOP", "glBegin GL_LINE_LOOP", "glBegin GL_LINES"}));
    EXPECT_EQ(recording.Lines()[1], "glVertex3dv 4 -1 1");
}

TEST(DrawingObjectMaterials, APlainMaterialIsSentWholeForBothFaces)
{
    DrawingObject node;
    NamedColor material("red");
    material.SetDiffuseColor(ColorVector(1.0f, 0.0f, 0.0f, 1.0f));
    GlRecording recording;
    node.PrepareMaterialColors(material);
    EXPECT_EQ(recording.Lines(),
              (Lines{"glMaterialfv GL_FRONT_AND_BACK GL_AMBIENT 0.5 0.5 0.5 1",
                     "glMaterialfv GL_FRONT_AND_BACK GL_DIFFUSE 1 0 0 1",
                     "glMaterialfv GL_FRONT_AND_BACK GL_SPECULAR 0.5 0.5 0.5 1",
                     "glMaterialfv GL_FRONT_AND_BACK GL_EMISSION 0 0 0 1",
                     "glMaterialf GL_FRONT_AND_BACK GL_SHININESS 64", "glColor4fv 1 0 0 1"}));
}

TEST(DrawingObjectMaterials, ASelfLitMaterialSendsNoAmbientOrDiffuse)
{
    DrawingObject node;
    NamedColor material("glow");
    material.SetEmissionColor(ColorVector(0.25f, 0.0f, 0.0f, 1.0f));
    GlRecording recording;
    node.PrepareMaterialColors(material);
    EXPECT_EQ(recording.Lines(),
              (Lines{"glMaterialfv GL_FRONT_AND_BACK GL_SPECULAR 0.5 0.5 0.5 1",
                     "glMaterialfv GL_FRONT_AND_BACK GL_EMISSION 0.25 0 0 1",
                     "glMaterialf GL_FRONT_AND_BACK GL_SHININESS 64", "glColor4fv 0.25 0 0 1"}));
}

}  // namespace
