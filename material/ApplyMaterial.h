// SPDX-License-Identifier: MIT
#pragma once

#include "material/Color.h"
#include "platform/OpenGL.h"

/// Makes the material current in OpenGL, for nodes and letters alike. \p face is GL_FRONT, GL_BACK
/// or GL_FRONT_AND_BACK.
///
/// For a material that does not emit light, all of ambient, diffuse, specular, emission and
/// shininess are set, and the diffuse colour becomes OpenGL's current colour. For a material that
/// emits light, OpenGL keeps its ambient and diffuse settings, and the emission becomes the current
/// colour.
ORVANE_API void ApplyMaterial(GLenum face, const Color& material);

namespace orvane
{

/// Is told of materials, for drawing with shaders.
class ORVANE_API MaterialObserver
{
public:
    /// ApplyMaterial has made the material current.
    virtual void UseMaterial(const ::Color& material) = 0;

protected:
    ~MaterialObserver() = default;
};

/// From now on, ApplyMaterial on this thread tells this observer of materials. Null for none.
/// Returns the observer before.
ORVANE_API MaterialObserver* ObserveMaterials(MaterialObserver* observer);

}  // namespace orvane

/// Makes the material current for front and back faces, and switches blending on for a transparent
/// material, which then writes no depths, and off for an opaque one.
void ApplyBlendedMaterial(const Color& material);
