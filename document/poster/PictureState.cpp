// SPDX-License-Identifier: MIT
#include "document/poster/PictureState.h"

#include "platform/OpenGL.h"
#include "platform/Rendering.h"

#include <algorithm>
#include <iterator>

namespace orvane
{

namespace
{

struct MatrixStack
{
    GLenum mode;
    GLenum depth;
};
constexpr MatrixStack matrices[] = {{GL_TEXTURE, GL_TEXTURE_STACK_DEPTH},
                                    {GL_PROJECTION, GL_PROJECTION_STACK_DEPTH},
                                    {GL_MODELVIEW, GL_MODELVIEW_STACK_DEPTH}};

}  // namespace

double WireWidth(const Size& size, DrawingMode mode)
{
    constexpr double wiresPerPicture = 480;  // a wire is 1/480 of the picture's shorter side wide
    return mode == DrawingMode::Outline
               ? std::max(1.0, std::min(size.width, size.height) / wiresPerPicture)
               : 0;
}

void PrepareForPicture(double wireWidth)
{
    glEnable(GL_NORMALIZE);
    CutQuadsAlike();  // so that neighbouring bands of a picture match
    if (wireWidth > 0)
    {
        glLineWidth(static_cast<GLfloat>(wireWidth));
    }
}

void ResetHostState()
{
    for (const GLenum capability : {GL_ALPHA_TEST,
                                    GL_BLEND,
                                    GL_COLOR_LOGIC_OP,
                                    GL_COLOR_MATERIAL,
                                    GL_FOG,
                                    GL_LIGHTING,
                                    GL_LINE_SMOOTH,
                                    GL_LINE_STIPPLE,
                                    GL_POLYGON_SMOOTH,
                                    GL_POLYGON_STIPPLE,
                                    GL_POLYGON_OFFSET_FILL,
                                    GL_POLYGON_OFFSET_LINE,
                                    GL_STENCIL_TEST,
                                    GL_TEXTURE_1D,
                                    GL_TEXTURE_2D,
                                    GL_TEXTURE_GEN_S,
                                    GL_TEXTURE_GEN_T,
                                    GL_TEXTURE_GEN_R,
                                    GL_TEXTURE_GEN_Q,
                                    GL_CLIP_PLANE0,
                                    GL_CLIP_PLANE1,
                                    GL_CLIP_PLANE2,
                                    GL_CLIP_PLANE3,
                                    GL_CLIP_PLANE4,
                                    GL_CLIP_PLANE5})
    {
        glDisable(capability);
    }
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    glCullFace(GL_BACK);
    glFrontFace(GL_CCW);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
    glDepthMask(GL_TRUE);
    glDepthFunc(GL_LESS);
    glDepthRange(0, 1);
    glClearDepth(1);
    glLineWidth(1);
    for (const MatrixStack& matrix : matrices)
    {
        glMatrixMode(matrix.mode);
        glLoadIdentity();
    }
}

KeptState::KeptState()
{
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glPushClientAttrib(GL_CLIENT_ALL_ATTRIB_BITS);
    for (std::size_t i = 0; i < std::size(matrices); ++i)
    {
        glMatrixMode(matrices[i].mode);
        glGetIntegerv(matrices[i].depth, &depths_[i]);
        glPushMatrix();
    }
}

KeptState::~KeptState()
{
    for (std::size_t i = 0; i < std::size(matrices); ++i)
    {
        // There are more matrices to pop when an exception has ended the drawing.
        glMatrixMode(matrices[i].mode);
        GLint depth = depths_[i];
        for (glGetIntegerv(matrices[i].depth, &depth); depth > depths_[i]; --depth)
        {
            glPopMatrix();
        }
    }
    glPopClientAttrib();
    glPopAttrib();
}

}  // namespace orvane
