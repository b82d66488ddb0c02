// SPDX-License-Identifier: MIT
#pragma once

#include "material/Color.h"
#include "platform/OpenGL.h"

/// Makes the material current in OpenGL, for nodes and letters alike. \p face is GL_FRONT, GL_BACK
/// or GL_FRONT_AND_BACK.
///
/// A material that emits nothing sends ambient, diffuse, specular, emission and shininess, and its
/// diffuse colour becomes the current one. A self-lit one keeps ambient and diffuse as they are in
/// OpenGL, and its emission becomes the current colour.
ORVANE_API void ApplyMaterial(GLenum face, const Color& material);
