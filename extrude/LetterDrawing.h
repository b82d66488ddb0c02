// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/OrvFont.h"
#include "extrude/SurfaceSink.h"
#include "geometry/MeshVertex.h"
#include "material/NamedColor.h"
#include "platform/OpenGL.h"
#include "scene/DrawingParameters.h"

namespace orvane
{

/// Draws letters, and gives their parts names in a selection pass: the numbers of MeshPart.
class LetterDrawing : public OpenGLSink
{
public:
    LetterDrawing(OrvFont& font, const DrawingParameters& parameters)
        : font_(font),
          naming_(parameters.IsSelecting() != 0),
          keepsDepth_(parameters.ShouldKeepTransparentDepth())
    {}

    void BeginPart(MeshPart part) const
    {
        if (naming_)
        {
            glPushName(static_cast<GLuint>(part));
        }
    }
    void EndPart() const
    {
        if (naming_)
        {
            glPopName();
        }
    }
    void UseMaterial(const NamedColor& material) const
    {
        font_.SetMaterialColors(material);
        if (material.IsTransparent() && keepsDepth_)
        {
            glDepthMask(GL_TRUE);
        }
    }

private:
    OrvFont& font_;
    bool naming_;
    bool keepsDepth_;
};

}  // namespace orvane
