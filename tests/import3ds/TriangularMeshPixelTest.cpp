// SPDX-License-Identifier: MIT
#include "scene/DrawingParameters.h"
#include "tests/support/Chunks.h"
#include "tests/support/HeadlessContext.h"

namespace
{

constexpr int size = 64;

RecordBytes Material(const char* name, BYTE red, BYTE green)
{
    const RecordBytes color = ChunkOf(0x0011, {RecordBytes().Byte(red).Byte(green).Byte(0)});
    return MaterialChunk(name, {ChunkOf(0xA020, {color})});
}

/// A cube from -1 to 1, the top (the file's +z) green, the rest red; corners counter-clockwise
/// from outside.
Bytes CubeFile()
{
    const RecordBytes vertices = VertexChunk({-1, -1, -1, 1, -1, -1, 1, 1, -1, -1, 1, -1,  //
                                              -1, -1, 1,  1, -1, 1,  1, 1, 1,  -1, 1, 1});
    const RecordBytes faces = FaceChunk(
        {0, 2, 1, 0, 0, 3, 2, 0,   // bottom
         4, 5, 6, 0, 4, 6, 7, 0,   // top
         0, 1, 5, 0, 0, 5, 4, 0,   // front, the file's -y
         2, 3, 7, 0, 2, 7, 6, 0,   // back
         1, 2, 6, 0, 1, 6, 5, 0,   // right
         3, 0, 4, 0, 3, 4, 7, 0},  // left
        {MaterialGroup("red", {0, 1, 4, 5, 6, 7, 8, 9, 10, 11}), MaterialGroup("green", {2, 3})});
    return FileOf({Material("red", 255, 0), Material("green", 0, 255),
                   ObjectChunk("cube", {ChunkOf(0x4100, {vertices, faces})})});
}

/// The cube seen from a direction, lit from a direction, with the depth test and without ambient
/// light.
class ImportedCube : public testing::Test
{
protected:
    ImportedCube() : context(size, size), cube(CubeFile()) {}

    Rgb Center(float turnX, float turnY, float lightX, float lightY, float lightZ)
    {
        const GLfloat direction[] = {lightX, lightY, lightZ, 0};
        const GLfloat dark[] = {0, 0, 0, 1};
        glViewport(0, 0, size, size);
        glClearColor(0, 0, 1, 1);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glEnable(GL_DEPTH_TEST);
        glDisable(GL_DITHER);
        glEnable(GL_LIGHTING);
        glEnable(GL_LIGHT0);
        glLightModelfv(GL_LIGHT_MODEL_AMBIENT, dark);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-2, 2, -2, 2, -4, 4);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glLightfv(GL_LIGHT0, GL_POSITION, direction);
        glRotatef(turnX, 1, 0, 0);
        glRotatef(turnY, 0, 1, 0);
        DrawingParameters parameters;
        parameters.SetRender();
        parameters.SetShowChildren();
        EXPECT_EQ(cube.Draw(&parameters), 1);
        return context.Pixel(size / 2, size / 2);
    }

    HeadlessContext context;
    Imported cube;
    const Rgb red = {255, 0, 0};
    const Rgb green = {0, 255, 0};
    const Rgb black = {0, 0, 0};
};

TEST_F(ImportedCube, StandsUprightAndIsLitFromOutside)
{
    REQUIRE_CONTEXT(context);
    ASSERT_EQ(cube.GetChildCount(), 1);
    // With the light behind the viewer, every visible side is bright.
    EXPECT_EQ(Center(0, 0, 0, 0, 1), red);
    EXPECT_EQ(Center(90, 0, 0, 0, 1), green);  // from above
    EXPECT_EQ(Center(-90, 0, 0, 0, 1), red);
    EXPECT_EQ(Center(0, 90, 0, 0, 1), red);
    EXPECT_EQ(Center(0, 180, 0, 0, 1), red);
    EXPECT_EQ(Center(0, -90, 0, 0, 1), red);
    // With the light behind the cube, no visible side is bright.
    EXPECT_EQ(Center(0, 0, 0, 0, -1), black);
    EXPECT_EQ(Center(90, 0, 0, 0, -1), black);
    EXPECT_EQ(context.Pixel(2, 2), (Rgb{0, 0, 255}));
}

}  // namespace
