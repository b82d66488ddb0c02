// SPDX-License-Identifier: MIT
#pragma once

#include "material/Color.h"
#include "platform/OpenGL.h"

/// Makes the material current in OpenGL, for nodes and letters alike. \p face is GL_FRONT, GL_BACK
/// or GL_FRONT_AND_BACK.
///
/// A material that does not emit light sets ambient, diffuse, specular, emission and shininess, and
/// its diffuse colour becomes OpenGL's current colour. A material that emits light does not set
/// ambient and diffuse, and its emission becomes the current colour.
ORVANE_API void ApplyMaterial(GLenum face, const Color& material);
