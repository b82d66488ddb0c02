// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Nodes that are drawn in immediate mode and with a mesh cache, for tests that compare both.

#include "document/FontChoice.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvFontString.h"
#include "solids/MeshCache.h"
#include "tests/support/HeadlessContext.h"

#include <gtest/gtest.h>

#include <vector>

inline NamedColor MaterialOf(float red, float green, float blue, float alpha = 1)
{
    NamedColor color;
    color.SetAmbientColor(ColorVector(red / 2, green / 2, blue / 2, 1));
    color.SetDiffuseColor(ColorVector(red, green, blue, alpha));
    return color;
}

/// A node that is drawn in immediate mode and with a cache, seen from above at the right.
class MeshDrawingPixels : public testing::TestWithParam<orvane::MeshCache::Storage>
{
protected:
    MeshDrawingPixels()
    {
        orvane::LoadFonts();
        text.AttachFont(orvane::ChooseFont("DejaVu Serif"));
        text.SetTextString("Rag\r\n&8i");
        text.SetJustification(1);
        text.SetFaceColor(MaterialOf(0.9f, 0.3f, 0.1f));
        text.SetEdgeColor(MaterialOf(0.1f, 0.8f, 0.2f));
        text.SetBevelColor(MaterialOf(0.2f, 0.3f, 0.9f));
        text.SetBevelDepth(0.05f);
        text.SetScale(DVector(0.9, 0.9, 0.4));
        text.CalculateBounds();

        glEnable(GL_DEPTH_TEST);
        glEnable(GL_CULL_FACE);
        glEnable(GL_LIGHTING);
        glEnable(GL_LIGHT0);
        glMatrixMode(GL_PROJECTION);
        glFrustum(-0.16, 0.16, -0.1, 0.1, 0.4, 20);
        glMatrixMode(GL_MODELVIEW);
        glTranslated(0, 0, -6.5);
        glRotated(20, 1, -1, 0);
    }

    Picture Drawn(DrawingObject& node, orvane::SolidDrawer* drawer)
    {
        DrawingParameters parameters;
        parameters.SetRender();
        parameters.SetShowTextures();
        parameters.SetShowObject();
        parameters.SetShowChildren();
        parameters.SetSolidDrawer(drawer);
        glDepthMask(GL_TRUE);
        glClearColor(0.2f, 0.2f, 0.3f, 1);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        EXPECT_EQ(node.Draw(&parameters), 1);
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        return context.ReadPixels();
    }

    /// Draws in immediate mode, then twice with the cache: when the triangles are made, and from
    /// what is kept.
    void ExpectSamePicture(DrawingObject& node)
    {
        const Picture expected = Drawn(node, nullptr);
        EXPECT_TRUE(PicturesMatch(expected, Drawn(node, &cache), "mesh-first"));
        EXPECT_TRUE(PicturesMatch(expected, Drawn(node, &cache), "mesh-again"));
    }

    HeadlessContext context{320, 200};
    orvane::MeshCache cache{GetParam()};
    OrvFontString text;
};

/// The OpenGL state that drawing changes.
inline std::vector<float> StateOfOpenGL()
{
    std::vector<float> state;
    const auto add = [&state](std::size_t count, const auto& get) {
        float numbers[16] = {};
        get(numbers);
        state.insert(state.end(), numbers, numbers + count);
    };
    for (const GLenum face : {GL_FRONT, GL_BACK})
    {
        for (const GLenum name : {GL_AMBIENT, GL_DIFFUSE, GL_SPECULAR, GL_EMISSION})
        {
            add(4, [&](float* numbers) { glGetMaterialfv(face, name, numbers); });
        }
        add(1, [&](float* numbers) { glGetMaterialfv(face, GL_SHININESS, numbers); });
    }
    for (const GLenum name : {GL_CURRENT_COLOR,
                              GL_CURRENT_NORMAL,
                              GL_CURRENT_TEXTURE_COORDS,
                              GL_MODELVIEW_MATRIX,
                              GL_BLEND,
                              GL_BLEND_SRC,
                              GL_BLEND_DST,
                              GL_DEPTH_WRITEMASK,
                              GL_FRONT_FACE,
                              GL_CULL_FACE,
                              GL_LIGHT_MODEL_TWO_SIDE,
                              GL_TEXTURE_2D,
                              GL_VERTEX_ARRAY,
                              GL_NORMAL_ARRAY,
                              GL_TEXTURE_COORD_ARRAY,
                              GL_COLOR_ARRAY,
                              GL_VERTEX_ARRAY_SIZE,
                              GL_ARRAY_BUFFER_BINDING,
                              GL_ELEMENT_ARRAY_BUFFER_BINDING,
                              GL_VERTEX_ARRAY_BINDING})
    {
        add(name == GL_MODELVIEW_MATRIX ? 16 : 4,
            [&](float* numbers) { glGetFloatv(name, numbers); });
    }
    return state;
}
