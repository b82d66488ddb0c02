// SPDX-License-Identifier: MIT
#include "platform/OpenGL.h"

#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <thread>

namespace
{

using Lines = std::vector<std::string>;

TEST(GlRecorder, ACallIsItsNameAndItsArguments)
{
    const GLfloat color[] = {1, 0.1F, 0.25F, 1};
    const GLdouble point[] = {0.1, -0.0, 1e300};
    GlRecording recording;
    glBegin(GL_QUADS);
    glVertex3f(0, 1, -0.5F);
    glVertex3dv(point);
    glEnd();
    glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, color);
    glMaterialf(GL_FRONT, GL_SHININESS, 64);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1);
    glDepthMask(GL_FALSE);
    glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glDrawPixels(2, 3, GL_RGB, GL_UNSIGNED_BYTE, color);
    glColor3ub(255, 0, 7);
    EXPECT_EQ(recording.Lines(), (Lines{
                                     "glBegin GL_QUADS",
                                     "glVertex3f 0 1 -0.5",
                                     "glVertex3dv 0.1 -0 1e+300",
                                     "glEnd",
                                     "glMaterialfv GL_FRONT_AND_BACK GL_DIFFUSE 1 0.1 0.25 1",
                                     "glMaterialf GL_FRONT GL_SHININESS 64",
                                     "glTexEnvi GL_TEXTURE_ENV GL_TEXTURE_ENV_MODE GL_MODULATE",
                                     "glLightModeli GL_LIGHT_MODEL_TWO_SIDE 1",
                                     "glDepthMask GL_FALSE",
                                     "glBlendFunc GL_ONE GL_ONE_MINUS_SRC_ALPHA",
                                     "glClear GL_DEPTH_BUFFER_BIT|GL_COLOR_BUFFER_BIT",
                                     "glPushAttrib GL_ALL_ATTRIB_BITS",
                                     "glDrawPixels 2 3 GL_RGB GL_UNSIGNED_BYTE data",
                                     "glColor3ub 255 0 7",
                                 }));
    EXPECT_EQ(GlLine("glVertex3f", 0.0F, 0.1F, -0.5F), "glVertex3f 0 0.1 -0.5");
    EXPECT_EQ(GlLine("glEnable", "GL_BLEND"), "glEnable GL_BLEND");
}

TEST(GlRecorder, FiltersByFunction)
{
    GlRecording recording;
    glEnable(GL_BLEND);
    glNormal3f(0, 0, 1);
    glVertex2f(1, 2);
    glVertex2f(3, 4);
    EXPECT_EQ(recording.Only({"glVertex2f"}), (Lines{"glVertex2f 1 2", "glVertex2f 3 4"}));
    EXPECT_EQ(recording.Without({"glVertex2f", "glEnable"}), (Lines{"glNormal3f 0 0 1"}));
    EXPECT_EQ(recording.Count("glVertex2f"), 2);
    EXPECT_EQ(recording.Count("glVertex"), 0);
    recording.Clear();
    EXPECT_EQ(recording.Text(), "");
}

TEST(GlRecorder, NothingIsRecordedOutsideARecording)
{
    glEnable(GL_BLEND);
    GlRecording recording;
    EXPECT_EQ(recording.Text(), "");
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_EQ(recording.Text(), "glIsEnabled GL_BLEND\n");
}

TEST(GlRecorder, AVertexCarriesTheStateInForce)
{
    GlRecording recording;
    glColor4f(1, 0.5F, 0, 1);
    glBegin(GL_TRIANGLES);
    glNormal3f(0, 1, 0);
    glTexCoord2f(0.25F, 0.75F);
    glVertex3f(1, 2, 3);
    glEnd();
    glBegin(GL_QUAD_STRIP);
    glVertex2d(4, 5);
    glEnd();
    const std::vector<GlVertex> vertices = recording.Vertices();
    ASSERT_EQ(vertices.size(), 2U);
    EXPECT_EQ(vertices[0],
              (GlVertex{GL_TRIANGLES, 0, {1, 2, 3}, {0, 1, 0}, {0.25, 0.75}, {1, 0.5, 0, 1}}));
    EXPECT_EQ(vertices[1].primitive, GLenum{GL_QUAD_STRIP});
    EXPECT_EQ(vertices[1].primitiveIndex, 1);
    EXPECT_EQ(vertices[1].position, (std::array<double, 3>{4, 5, 0}));
}

TEST(GlRecorder, QueriesAnswerTheStateAndWhatIsSet)
{
    GlRecording recording;
    glEnable(GL_LIGHTING);
    glMatrixMode(GL_PROJECTION);
    glViewport(1, 2, 30, 40);
    GLint values[4] = {};
    glGetIntegerv(GL_MATRIX_MODE, values);
    EXPECT_EQ(values[0], GL_PROJECTION);
    glGetIntegerv(GL_VIEWPORT, values);
    EXPECT_EQ(values[3], 40);
    GLdouble matrix[16] = {};
    glGetDoublev(GL_MODELVIEW_MATRIX, matrix);
    EXPECT_EQ(matrix[5], 1);
    recording.SetDouble(GL_MODELVIEW_MATRIX, std::vector<double>(16, 2.5));
    glGetDoublev(GL_MODELVIEW_MATRIX, matrix);
    EXPECT_EQ(matrix[15], 2.5);
    EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
    recording.SetEnabled(GL_LIGHTING, false);
    EXPECT_FALSE(glIsEnabled(GL_LIGHTING));
    recording.SetInteger(GL_MAX_LIGHTS, {3});
    glGetIntegerv(GL_MAX_LIGHTS, values);
    EXPECT_EQ(values[0], 3);
    EXPECT_STREQ(reinterpret_cast<const char*>(glGetString(GL_VERSION)), "1.1 recorder");
}

TEST(GlRecorder, PoppedAttributesComeBack)
{
    GlRecording recording;
    glPushAttrib(GL_ENABLE_BIT);
    glEnable(GL_BLEND);
    glDisable(GL_DITHER);
    glFrontFace(GL_CW);
    glPopAttrib();
    EXPECT_FALSE(glIsEnabled(GL_BLEND));
    EXPECT_TRUE(glIsEnabled(GL_DITHER));
    GLint face = 0;
    glGetIntegerv(GL_FRONT_FACE, &face);
    EXPECT_EQ(face, GL_CW);
    EXPECT_TRUE(recording.IsBalanced());
}

TEST(GlRecorder, ErrorsComeWhenTheyAreAskedFor)
{
    GlRecording recording;
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    recording.AddErrorAfter("glPushMatrix", GL_STACK_OVERFLOW, 2);
    glPushMatrix();
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    glPushMatrix();
    EXPECT_EQ(glGetError(), GLenum{GL_STACK_OVERFLOW});
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    recording.AddError(GL_INVALID_ENUM);
    EXPECT_EQ(glGetError(), GLenum{GL_INVALID_ENUM});
}

TEST(GlRecorder, StacksAreCountedAndOverflow)
{
    GlRecording recording;
    for (int i = 1; i < 32; ++i)
    {
        glPushMatrix();
    }
    EXPECT_EQ(glGetError(), GLenum{GL_NO_ERROR});
    EXPECT_EQ(recording.MatrixDepth(), 32);
    EXPECT_FALSE(recording.IsBalanced());
    glPushMatrix();
    EXPECT_EQ(glGetError(), GLenum{GL_STACK_OVERFLOW});
    EXPECT_EQ(recording.MatrixDepth(), 32);
    for (int i = 1; i < 32; ++i)
    {
        glPopMatrix();
    }
    EXPECT_TRUE(recording.IsBalanced());
    glPopMatrix();
    EXPECT_EQ(glGetError(), GLenum{GL_STACK_UNDERFLOW});
    glPushName(1);
    EXPECT_EQ(recording.NameDepth(), 1);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    EXPECT_EQ(recording.MatrixDepth(GL_PROJECTION), 2);
    EXPECT_EQ(recording.MatrixDepth(), 1);
    glBegin(GL_LINES);
    EXPECT_TRUE(recording.IsInsideBegin());
}

std::vector<std::array<double, 3>>* tessellated = nullptr;

void TakeVertex(void* data)
{
    const double* const point = static_cast<const double*>(data);
    tessellated->push_back({point[0], point[1], point[2]});
}

TEST(GlRecorder, TheTessellatorWorks)
{
    std::vector<std::array<double, 3>> corners;
    tessellated = &corners;
    double square[4][3] = {{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}};
    GlRecording recording;
    GLUtesselator* const tess = gluNewTess();
    gluTessCallback(tess, GLU_TESS_VERTEX, reinterpret_cast<_GLUfuncptr>(&TakeVertex));
    gluBeginPolygon(tess);
    gluNextContour(tess, GLU_EXTERIOR);
    for (double* const corner : square)
    {
        gluTessVertex(tess, corner, corner);
    }
    gluEndPolygon(tess);
    gluDeleteTess(tess);
    EXPECT_GE(corners.size(), 4U);
    EXPECT_EQ(recording.Lines(), (Lines{
                                     "gluNewTess",
                                     "gluTessCallback GLU_TESS_VERTEX data",
                                     "gluBeginPolygon",
                                     "gluNextContour GLU_EXTERIOR",
                                     "gluTessVertex 0 0 0",
                                     "gluTessVertex 2 0 0",
                                     "gluTessVertex 2 2 0",
                                     "gluTessVertex 0 2 0",
                                     "gluEndPolygon",
                                     "gluDeleteTess",
                                 }));
}

TEST(GlRecorder, CallsThatGluMakesAreMarkedAsInner)
{
    GlRecording recording;
    GLUquadric* const quadric = gluNewQuadric();
    gluCylinder(quadric, 0.5, 0, 1, 8, 1);
    gluDeleteQuadric(quadric);
    EXPECT_EQ(recording.Lines(),
              (Lines{"gluNewQuadric", "gluCylinder 0.5 0 1 8 1", "gluDeleteQuadric"}));
    EXPECT_EQ(recording.Vertices().size(), 0U);
    const Lines all = recording.AllLines();
    EXPECT_GT(all.size(), 3U + 2U * 8U);
    EXPECT_EQ(all[2].substr(0, 4), "  gl");
    EXPECT_TRUE(recording.IsBalanced());
}

TEST(GlRecorder, GluScalesImagesAndBuildsMipmaps)
{
    GlRecording recording;
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    const GLubyte image[2 * 2 * 3] = {9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9, 9};
    GLubyte scaled[4 * 4 * 3] = {};
    EXPECT_EQ(gluScaleImage(GL_RGB, 2, 2, GL_UNSIGNED_BYTE, image, 4, 4, GL_UNSIGNED_BYTE, scaled),
              0);
    EXPECT_EQ(scaled[0], 9);
    EXPECT_EQ(scaled[47], 9);
    EXPECT_EQ(gluBuild2DMipmaps(GL_TEXTURE_2D, 3, 2, 2, GL_RGB, GL_UNSIGNED_BYTE, image), 0);
    int levels = 0;
    for (const std::string& line : recording.AllLines())
    {
        levels += line.starts_with("  glTexImage2D GL_TEXTURE_2D ") ? 1 : 0;
    }
    EXPECT_EQ(levels, 2);
    EXPECT_EQ(recording.Count("gluBuild2DMipmaps"), 1);
    EXPECT_STREQ(reinterpret_cast<const char*>(gluErrorString(GL_STACK_OVERFLOW)),
                 "stack overflow");
}

TEST(GlRecorder, CallsOfOtherThreadsAreRecorded)
{
    GlRecording recording;
    std::thread([] { glFlush(); }).join();
    EXPECT_EQ(recording.Text(), "glFlush\n");
}

}  // namespace
