// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/SurfaceSink.h"
#include "geometry/MeshVertex.h"
#include "material/ApplyMaterial.h"
#include "material/NamedColor.h"
#include "platform/OpenGL.h"
#include "scene/DrawingParameters.h"

namespace orvane
{

/// Draws letters and other solids, and gives their parts names in a selection pass: the numbers of
/// MeshPart.
class LetterDrawing : public OpenGLSink
{
public:
    explicit LetterDrawing(const DrawingParameters& parameters)
        : naming_(parameters.IsSelecting() != 0),
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
        ApplyBlendedMaterial(material);
        if (material.IsTransparent() && keepsDepth_)
        {
            glDepthMask(GL_TRUE);
        }
    }

private:
    bool naming_;
    bool keepsDepth_;
};

}  // namespace orvane
