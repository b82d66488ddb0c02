// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"

#include "extrude/ExtrusionData.h"
#include "tests/support/GlyphShapes.h"
#include "tests/support/HeadlessContext.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace
{
constexpr int size = 160;
constexpr Rgb background = {0, 0, 255};

/// An edge style and its location, with the numbers that a text uses. Style: 0 square, 1 bevel, 2
/// round. Location: 0 front, 1 back, 2 both.
struct Edge
{
    int style;
    int location;
};
constexpr Edge edges[] = {{0, 2}, {1, 0}, {1, 1}, {1, 2}, {2, 0}, {2, 1}, {2, 2}};

void DrawSolid(const OrvGlyph& glyph, const Edge& edge, const ExtrusionData& data)
{
    glyph.RenderFaces(data);
    if (edge.style == 0)
    {
        glyph.RenderEdgesUnbevelled(data);
        return;
    }
    const bool round = edge.style == 2;
    switch (edge.location)
    {
        case 0:
            glyph.RenderEdgesFrontBevelOnly(data);
            round ? glyph.RenderFrontRoundRounded(data) : glyph.RenderFrontBevelBevelled(data);
            glyph.RenderBackBevelFlat(data);
            break;
        case 1:
            glyph.RenderEdgesBackBevelOnly(data);
            glyph.RenderFrontBevelFlat(data);
            round ? glyph.RenderBackRoundRounded(data) : glyph.RenderBackBevelBevelled(data);
            break;
        default:
            glyph.RenderEdgesBevelled(data);
            round ? glyph.RenderFrontRoundRounded(data) : glyph.RenderFrontBevelBevelled(data);
            round ? glyph.RenderBackRoundRounded(data) : glyph.RenderBackBevelBevelled(data);
            break;
    }
}

/// A ring with the radii 0.5 and 0.25 around (0.5, 0.5), in ems.
TTGlyph RoundO()
{
    return MakeGlyph({{On(0, 500), Off(0, 1000), Off(1000, 1000), Off(1000, 0), Off(0, 0)},
                      {On(250, 500), Off(250, 250), Off(750, 250), Off(750, 750), Off(250, 750)}});
}

class OrvGlyphPixels : public testing::Test
{
protected:
    OrvGlyphPixels() : context(size, size), glyph(0, GLYPHMETRICS{})
    {
        glyph.FromTTGlyph(RoundO(), 1000);
        data.bevelDepth = 0.08f;
        data.scale.z = 0.4f;
        data.CalculateHeights();
    }

    /// Begins a picture. The view is 2.4 units wide, with the middle of the glyph in its centre,
    /// and is turned about x and then about y.
    void Begin(float aboutX, float aboutY) const
    {
        glViewport(0, 0, size, size);
        glClearColor(0, 0, 1, 1);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_NORMALIZE);
        glDisable(GL_DITHER);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(-1.2, 1.2, -1.2, 1.2, -2, 2);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glRotatef(aboutX, 1, 0, 0);
        glRotatef(aboutY, 0, 1, 0);
        glTranslatef(-0.5f * data.scale.x, -0.5f * data.scale.y, 0.5f * data.scale.z);
    }

    /// Draws the solid in white and returns the picture. Front or back sides are left out; 0 leaves
    /// out neither.
    Picture Draw(const Edge& edge, GLenum cull) const
    {
        cull != 0 ? glEnable(GL_CULL_FACE) : glDisable(GL_CULL_FACE);
        if (cull != 0)
        {
            glCullFace(cull);
        }
        glColor3f(1, 1, 1);
        DrawSolid(glyph, edge, data);
        return context.ReadPixels();
    }

    /// Draws the solid lit from a direction, without back sides.
    Picture DrawLit(const Edge& edge, float x, float y, float z) const
    {
        const GLfloat direction[] = {x, y, z, 0};
        const GLfloat white[] = {1, 1, 1, 1};
        const GLfloat dim[] = {0.2f, 0.2f, 0.2f, 1};
        glPushMatrix();
        glLoadIdentity();
        glLightfv(GL_LIGHT0, GL_POSITION, direction);
        glPopMatrix();
        glLightfv(GL_LIGHT0, GL_DIFFUSE, white);
        glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, dim);
        glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, white);
        glEnable(GL_LIGHTING);
        glEnable(GL_LIGHT0);
        const Picture picture = Draw(edge, GL_BACK);
        glDisable(GL_LIGHTING);
        return picture;
    }

    static int Column(double x) { return static_cast<int>((x + 1.2) / 2.4 * size); }

    HeadlessContext context;
    OrvGlyph glyph;
    ExtrusionData data;
};
}  // namespace

TEST_F(OrvGlyphPixels, ALitBevelledOShowsItsHoleAndNoBackgroundInItsBody)
{
    REQUIRE_CONTEXT(context);
    Begin(0, 0);
    const Picture picture = DrawLit({1, 2}, 0, 0, 1);
    // The outline is a ring from radius 0.25 to radius 0.5. The bevels widen it by 0.08 on both
    // sides.
    for (int y = 0; y < size; ++y)
    {
        for (int x = 0; x < size; ++x)
        {
            const double radius =
                std::hypot((x + 0.5) / size * 2.4 - 1.2, (y + 0.5) / size * 2.4 - 1.2);
            const Rgb pixel = picture.At(x, y);
            if (radius < 0.13 || radius > 0.64)
            {
                EXPECT_EQ(pixel, background) << x << ' ' << y;
            }
            else if (radius > 0.19 && radius < 0.55)
            {
                EXPECT_NE(pixel, background) << x << ' ' << y;
                EXPECT_EQ(pixel.red, pixel.blue) << x << ' ' << y;
            }
        }
    }
    // The face is turned to the light, so its ambient part is 0.2 * 0.2 and its diffuse part is 1.
    // The bevel is turned away by 45 degrees.
    EXPECT_GE(picture.At(Column(0.375), size / 2).red, 254);
    EXPECT_NEAR(picture.At(Column(0.54), size / 2).red, 255 * (0.04 + 0.7071), 6);
}

TEST_F(OrvGlyphPixels, LightFromOneSideFallsOnTheBevelsThatFaceIt)
{
    REQUIRE_CONTEXT(context);
    for (const int style : {1, 2})
    {
        Begin(0, 0);
        const Picture picture = DrawLit({style, 2}, -1, 0, 0);
        const int row = size / 2;
        // The bevels outside on the left and in the hole on the right face -x, where the light is.
        EXPECT_GT(picture.At(Column(-0.54), row).red, 100);
        EXPECT_GT(picture.At(Column(0.21), row).red, 100);
        // The bevels outside on the right and in the hole on the left face away and get only
        // ambient light.
        EXPECT_NEAR(picture.At(Column(0.54), row).red, 10, 2);
        EXPECT_NEAR(picture.At(Column(-0.21), row).red, 10, 2);
    }
}

TEST_F(OrvGlyphPixels, EveryEdgeStyleIsAClosedSolidEvenWhenMirrored)
{
    REQUIRE_CONTEXT(context);
    const float views[][2] = {{0, 0}, {20, 30}, {-35, 60}, {80, 10}, {15, 180}, {-25, 215}};
    const float scales[][2] = {{1, 1}, {-1, 1}, {1.3f, -0.8f}, {-1, -1}};
    for (const auto& scale : scales)
    {
        data.scale.x = scale[0];
        data.scale.y = scale[1];
        for (const Edge& edge : edges)
        {
            for (const auto& view : views)
            {
                SCOPED_TRACE("style " + std::to_string(edge.style) + " at " +
                             std::to_string(edge.location) + ", view " + std::to_string(view[0]) +
                             " " + std::to_string(view[1]) + ", scale " + std::to_string(scale[0]) +
                             " " + std::to_string(scale[1]));
                Begin(view[0], view[1]);
                const Picture all = Draw(edge, 0);
                const float middle = context.Depth(Column(-0.37), size / 2);
                EXPECT_GT(all.CountOther(background), 2000);
                // Every line of sight that meets a closed solid enters it through a front side and
                // leaves it through a back side. So the picture covers the same pixels with front
                // sides only as with back sides only.
                Begin(view[0], view[1]);
                EXPECT_EQ(Draw(edge, GL_BACK).bytes, all.bytes);
                EXPECT_NEAR(context.Depth(Column(-0.37), size / 2), middle, 1e-4);
                Begin(view[0], view[1]);
                EXPECT_EQ(Draw(edge, GL_FRONT).bytes, all.bytes);
            }
        }
    }
}

TEST_F(OrvGlyphPixels, WithoutItsWallTheSolidLooksDifferent)
{
    REQUIRE_CONTEXT(context);
    Begin(20, 40);
    const Picture whole = Draw({0, 2}, GL_BACK);
    Begin(20, 40);
    glyph.RenderFaces(data);
    EXPECT_NE(context.ReadPixels().bytes, whole.bytes);
}
