// SPDX-License-Identifier: MIT
// What outlines tell OpenGL.
#include "scene/DrawingParameters.h"
#include "solids/MeshBuilder.h"
#include "tests/support/OutlineAreas.h"
#include "tests/support/TerminationEvent.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

namespace
{
using orvane::OrvOutlineShape;
using Lines = std::vector<std::string>;

class OrvOutlineShapeStream : public testing::Test
{
protected:
    OrvOutlineShapeStream()
    {
        shape.SetAreas({FrameArea(), FillingArea()});
        shape.SetScale(DVector(2, 1, 0.5));
        parameters.SetRender();
    }

    OrvOutlineShape shape;
    DrawingParameters parameters;
};

TEST_F(OrvOutlineShapeStream, EachAreaHasItsMaterialAndThreeParts)
{
    NamedColor red;
    red.SetDiffuseColor({1, 0, 0, 1});
    shape.SetSurfaceColor(red, 1);
    const GlRecording recording;
    EXPECT_EQ(shape.DrawObject(&parameters), 1);
    EXPECT_TRUE(recording.IsBalanced());
    EXPECT_EQ(recording.Count("glBegin"), 6);
    EXPECT_EQ(recording.Count("glPushMatrix"), 0);
    EXPECT_EQ(
        recording.Only({"glColor4fv"}),
        (Lines{"glColor4fv 0.5 0.5 0.5 1", "glColor4fv 0.5 0.5 0.5 1", "glColor4fv 0.5 0.5 0.5 1",
               "glColor4fv 1 0 0 1", "glColor4fv 1 0 0 1", "glColor4fv 1 0 0 1"}));
}

TEST_F(OrvOutlineShapeStream, AMeshHasTheSameCornersInTheSameOrder)
{
    shape.SetProfile(orvane::ParseProfile("round -0.05"));
    const GlRecording recording;
    EXPECT_EQ(shape.DrawObject(&parameters), 1);
    const std::vector<GlVertex> drawn = recording.Vertices();
    orvane::MeshBuildOptions options;
    options.separateLetters = true;
    const orvane::SolidMesh mesh = orvane::BuildMesh(shape, options);
    ASSERT_EQ(mesh.indices.size(), drawn.size());
    for (std::size_t i = 0; i < drawn.size(); ++i)
    {
        const orvane::MeshVertex& vertex = mesh.vertices[mesh.indices[i]];
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            EXPECT_EQ(vertex.position[axis], static_cast<float>(drawn[i].position[axis]));
            EXPECT_EQ(vertex.normal[axis], static_cast<float>(drawn[i].normal[axis]));
        }
    }
}

TEST_F(OrvOutlineShapeStream, AreasAndPartsHaveNamesInAPickingPass)
{
    shape.AddChild(new DrawingObject);
    parameters.SetSelecting();
    const GlRecording recording;
    EXPECT_EQ(shape.DrawObject(&parameters), 1);
    const Lines parts = {"glPushName 0", "glPopName",    "glPushName 1",
                         "glPopName",    "glPushName 2", "glPopName"};
    Lines expected;
    for (const char* const area : {"glPushName 1", "glPushName 2"})  // after the child's name
    {
        expected.emplace_back(area);
        expected.insert(expected.end(), parts.begin(), parts.end());
        expected.emplace_back("glPopName");
    }
    EXPECT_EQ(recording.Only({"glPushName", "glPopName"}), expected);
}

TEST_F(OrvOutlineShapeStream, WiresAreTheContoursOfBothFaces)
{
    parameters.ClearRender();
    parameters.SetOutline();
    shape.SetAreas({FillingArea()});
    const GlRecording recording;
    EXPECT_EQ(shape.DrawObject(&parameters), 1);
    EXPECT_TRUE(recording.IsBalanced());
    EXPECT_EQ(recording.Only({"glBegin"}), (Lines{"glBegin GL_LINE_LOOP", "glBegin GL_LINE_LOOP"}));
    // The square of 0.5 is centred and twice as wide as it is high.
    EXPECT_EQ(
        recording.Only({"glVertex3d"}),
        (Lines{"glVertex3d -0.5 -0.25 -0.5", "glVertex3d 0.5 -0.25 -0.5",
               "glVertex3d 0.5 0.25 -0.5", "glVertex3d -0.5 0.25 -0.5", "glVertex3d -0.5 -0.25 0",
               "glVertex3d 0.5 -0.25 0", "glVertex3d 0.5 0.25 0", "glVertex3d -0.5 0.25 0"}));
}

TEST_F(OrvOutlineShapeStream, NothingIsBlendedAfterATransparentArea)
{
    NamedColor glass;
    glass.SetDiffuseColor({1, 1, 1, 0.5f});
    shape.SetSurfaceColor(glass, 1);
    const GlRecording recording;
    EXPECT_EQ(shape.DrawObject(&parameters), 1);
    const Lines masks = recording.Only({"glDepthMask"});
    ASSERT_GT(masks.size(), 2u);
    EXPECT_EQ(masks[masks.size() - 2], "glDepthMask GL_FALSE");
    EXPECT_EQ(masks.back(), "glDepthMask GL_TRUE");
    EXPECT_EQ(recording.Only({"glEnable", "glDisable"}).at(0), "glDisable GL_BLEND");
}

TEST_F(OrvOutlineShapeStream, TextureCoordinatesArePlacesInEmsOrScaledPlaces)
{
    shape.GetTexture()->textureFlags = TextureMap::Valid | TextureMap::Textured;
    shape.GetTexture()->SetRepeatRate(3);
    for (const double scaleX : {1.0, 2.0})
    {
        const GlRecording recording;
        EXPECT_EQ(shape.DrawObject(&parameters), 1);
        ASSERT_FALSE(recording.Vertices().empty());
        for (const GlVertex& vertex : recording.Vertices())
        {
            EXPECT_FLOAT_EQ(vertex.texCoord[0], 3 * vertex.position[0] / 2 * scaleX);
            EXPECT_FLOAT_EQ(vertex.texCoord[1], 3 * vertex.position[1]);
        }
        shape.GetTexture()->SetScaleWithObject();
    }
}

TEST_F(OrvOutlineShapeStream, ACancelledDrawingEndsBeforeTheFirstArea)
{
    const TerminationEvent event(true);
    parameters.SetTerminationEvent(event.Get());
    const GlRecording recording;
    EXPECT_EQ(shape.DrawObject(&parameters), 0);
    EXPECT_EQ(recording.Count("glBegin"), 0);
}
}  // namespace
