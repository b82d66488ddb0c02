// SPDX-License-Identifier: MIT
#include "import3ds/TriangularMeshObject.h"
#include "material/NamedColorArray.h"
#include "platform/Sync.h"
#include "scene/DrawingParameters.h"
#include "tests/support/GoldenFile.h"
#include "tests/support/Meshes.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace
{

using Lines = std::vector<std::string>;

NamedColor Red(float red)
{
    NamedColor material;
    material.SetAmbientColor(ColorVector());
    material.SetDiffuseColor(ColorVector(red, 0, 0, 1));
    material.SetSpecularColor(ColorVector());
    material.SetEmissionColor(ColorVector());
    return material;
}

/// A square of two faces in material 1, of a material array with diffuse reds 0.25 and 0.5.
class DrawingMeshes : public testing::Test
{
protected:
    DrawingMeshes()
    {
        materials.Add(Red(0.25f));
        materials.Add(Red(0.5f));
        FillSquare(mesh);
        mesh.GetFaces()->ElementAt(0).material = 1;
        mesh.GetFaces()->ElementAt(1).material = 1;
        mesh.SetMaterialColors(&materials);
        mesh.CalculateFaceNormals();
        mesh.CalculateVertexNormals();
    }
    ~DrawingMeshes() override { CloseHandle(termination); }

    HANDLE termination = CreateEventA(nullptr, TRUE, TRUE, nullptr);
    NamedColorArray materials;
    TriangularMeshObject mesh;
    DrawingParameters parameters;
};

TEST_F(DrawingMeshes, ARenderedMeshIsNamedTrianglesWithTwoSidedLightingAndAMaterialWhereItChanges)
{
    GlRecording recording;
    EXPECT_EQ(mesh.DrawRendered(&parameters), 1);
    EXPECT_TRUE(IsGolden("mesh/rendered.txt", recording.Text()));
    EXPECT_TRUE(recording.IsBalanced());
}

TEST_F(DrawingMeshes, AMaterialIsSetWheneverItDiffersFromThePreviousFace)
{
    AddFace(mesh, 0, 1, 2, 0);
    AddFace(mesh, 0, 1, 2, 0);
    AddFace(mesh, 0, 1, 2, 1);
    GlRecording recording;
    mesh.DrawRendered(&parameters);
    EXPECT_EQ(recording.Only({"glColor4fv"}),
              (Lines{"glColor4fv 0.5 0 0 1", "glColor4fv 0.25 0 0 1", "glColor4fv 0.5 0 0 1"}));
}

TEST_F(DrawingMeshes, AMaterialPastTheArrayDrawsWithMaterial0)
{
    mesh.GetFaces()->ElementAt(0).material = 2;
    GlRecording recording;
    mesh.DrawRendered(&parameters);
    mesh.DrawOutline(&parameters);
    EXPECT_EQ(recording.Only({"glColor4fv"}),
              (Lines{"glColor4fv 0.25 0 0 1", "glColor4fv 0.5 0 0 1", "glColor4fv 0.25 0 0 1",
                     "glColor4fv 0.5 0 0 1"}));
}

TEST_F(DrawingMeshes, WithoutMaterialsNothingIsDrawn)
{
    GlRecording recording;
    mesh.SetMaterialColors(nullptr);
    EXPECT_EQ(mesh.DrawRendered(&parameters), 1);
    EXPECT_EQ(mesh.DrawOutline(&parameters), 1);
    NamedColorArray none;
    mesh.SetMaterialColors(&none);
    EXPECT_EQ(mesh.DrawRendered(&parameters), 1);
    EXPECT_EQ(mesh.DrawOutline(&parameters), 1);
    EXPECT_EQ(recording.Lines(), Lines{});
}

/// Two faces at a right angle along the edge from vertex 0 to vertex 1.
class RoofMesh : public DrawingMeshes
{
protected:
    RoofMesh()
    {
        roof.SetMaterialColors(&materials);
        AddVertices(roof, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
        AddFace(roof, 1, 0, 2);
        AddFace(roof, 0, 1, 3);
        roof.CalculateFaceNormals();
        roof.CalculateVertexNormals();
    }
    Lines Normals()
    {
        GlRecording recording;
        roof.DrawRendered(&parameters);
        return recording.Only({"glNormal3fv"});
    }
    TriangularMeshObject roof;
    const std::string up = "glNormal3fv 0 0 1";
    const std::string front = "glNormal3fv 0 1 0";
    const std::string between = "glNormal3fv 0 0.70710677 0.70710677";
};

TEST_F(RoofMesh, AFreshMeshIsFlatShaded)
{
    EXPECT_EQ(Normals(), (Lines{up, up, up, front, front, front}));
}

TEST_F(RoofMesh, CornersAtOrAboveTheThresholdGetTheirVertexNormals)
{
    roof.smoothingThreshold = 0.7f;
    EXPECT_EQ(Normals(), (Lines{between, between, up, between, between, front}));
    roof.smoothingThreshold = 0.71f;
    EXPECT_EQ(Normals(), (Lines{up, up, up, front, front, front}));
}

TEST_F(RoofMesh, AnOppositeVertexNormalCountsAsParallel)
{
    roof.GetVertexNormals()->SetAt(2, Vector(0, 0, -1));
    EXPECT_EQ(Normals(), (Lines{up, up, "glNormal3fv 0 0 -1", front, front, front}));
}

TEST_F(RoofMesh, MissingNormalsAreDrawnAsZeroAndMissingVerticesAsVertex0)
{
    roof.GetVertexNormals()->SetSize(1);
    roof.GetFaceNormals()->SetSize(1);
    roof.GetFaces()->ElementAt(1).c = 4;
    GlRecording recording;
    EXPECT_EQ(roof.DrawRendered(&parameters), 1);
    EXPECT_EQ(recording.Only({"glNormal3fv"}),
              (Lines{up, up, up, "glNormal3fv 0 0 0", "glNormal3fv 0 0 0", "glNormal3fv 0 0 0"}));
    EXPECT_EQ(recording.Only({"glVertex3fv"}).back(), "glVertex3fv 0 0 0");
    recording.Clear();
    roof.GetVerticies()->RemoveAll();
    EXPECT_EQ(roof.DrawRendered(&parameters), 1);
    EXPECT_EQ(roof.DrawOutline(&parameters), 1);
    EXPECT_EQ(recording.Count("glBegin"), 0);
}

TEST_F(DrawingMeshes, AnOutlineIsALineLoopForEachFaceInTheFacesMaterial)
{
    GlRecording recording;
    EXPECT_EQ(mesh.DrawOutline(&parameters), 1);
    EXPECT_TRUE(IsGolden("mesh/outlined.txt", recording.Text()));
}

TEST_F(DrawingMeshes, AnOutlineIsDrawnWithoutLightingWhichIsEnabledAgain)
{
    GlRecording recording;
    recording.SetEnabled(GL_LIGHTING, true);
    mesh.DrawOutline(&parameters);
    EXPECT_EQ(recording.Lines()[1], "glDisable GL_LIGHTING");
    EXPECT_EQ(recording.Lines().back(), "glEnable GL_LIGHTING");
}

TEST_F(DrawingMeshes, AnOutlineHasNamesOnlyWhenPicking)
{
    GlRecording recording;
    mesh.DrawOutline(&parameters);
    EXPECT_EQ(recording.Count("glPushName"), 0);
    parameters.SetSelecting();
    recording.Clear();
    mesh.DrawOutline(&parameters);
    EXPECT_EQ(recording.Only({"glPushName", "glPopName", "glBegin"}),
              (Lines{"glPushName 0", "glBegin GL_LINE_LOOP", "glPopName", "glPushName 1",
                     "glBegin GL_LINE_LOOP", "glPopName"}));
}

// Drawing modes.

TEST_F(DrawingMeshes, TheRenderModeTakesPrecedenceOverTheOutlineMode)
{
    GlRecording recording;
    EXPECT_EQ(mesh.DrawObject(&parameters), 1);
    EXPECT_EQ(recording.Count("glBegin"), 0);
    parameters.SetOutline();
    EXPECT_EQ(mesh.DrawObject(&parameters), 1);
    EXPECT_EQ(recording.Only({"glBegin"}), (Lines{"glBegin GL_LINE_LOOP", "glBegin GL_LINE_LOOP"}));
    recording.Clear();
    parameters.SetRender();
    EXPECT_EQ(mesh.DrawObject(&parameters), 1);
    EXPECT_EQ(recording.Only({"glBegin"}), (Lines{"glBegin GL_TRIANGLES", "glBegin GL_TRIANGLES"}));
}

TEST_F(DrawingMeshes, TheExtentsBoxIsDrawnAfterTheMesh)
{
    parameters.SetRender();
    parameters.SetExtentsBox();
    parameters.SetShowExtentsAndHandles();
    mesh.SetEditable();
    mesh.SetShowExtentsBox();
    GlRecording recording;
    EXPECT_EQ(mesh.DrawObject(&parameters), 1);
    const Lines begins = recording.Only({"glBegin"});
    ASSERT_GT(begins.size(), 2u);
    EXPECT_EQ(begins[1], "glBegin GL_TRIANGLES");
    EXPECT_NE(begins[2], "glBegin GL_TRIANGLES");
}

// Termination.

TEST_F(DrawingMeshes, ATerminatedDrawingDrawsNothingAndReturns0)
{
    parameters.SetTerminationEvent(termination);
    parameters.SetRender();
    GlRecording recording;
    EXPECT_EQ(mesh.DrawObject(&parameters), 0);
    EXPECT_EQ(mesh.DrawRendered(&parameters), 0);
    EXPECT_EQ(mesh.DrawOutline(&parameters), 0);
    EXPECT_EQ(recording.Lines(), Lines{});
    parameters.SetNoTerminate();
    EXPECT_EQ(mesh.DrawObject(&parameters), 1);
}

// Another thread signals the termination event as soon as it sees the first face. If it gets to run
// only after the last one, the drawing is repeated.
TEST_F(DrawingMeshes, ADrawingThatIsTerminatedStopsAfterAMultipleOf50FacesAndRestoresTheState)
{
    constexpr int faces = 20000;
    constexpr int attempts = 1000;
    mesh.GetFaces()->SetSize(faces);
    parameters.SetTerminationEvent(termination);
    for (const bool rendered : {true, false})
    {
        int drawn = faces;
        for (int attempt = 0; drawn == faces && attempt < attempts; ++attempt)
        {
            ResetEvent(termination);
            GlRecording recording;
            recording.SetEnabled(GL_LIGHTING, true);
            std::thread stopper([&] {
                while (recording.Count("glBegin") == 0)
                {
                    std::this_thread::yield();
                }
                SetEvent(termination);
            });
            EXPECT_EQ(rendered ? mesh.DrawRendered(&parameters) : mesh.DrawOutline(&parameters), 1);
            stopper.join();
            drawn = recording.Count("glBegin");
            EXPECT_TRUE(recording.IsBalanced());
            EXPECT_EQ(recording.Lines().back(), rendered ? "glLightModeli GL_LIGHT_MODEL_TWO_SIDE 0"
                                                         : "glEnable GL_LIGHTING");
        }
        EXPECT_GT(drawn, 0);
        EXPECT_LT(drawn, faces);
        EXPECT_EQ(drawn % 50, 0);
    }
}

}  // namespace
