// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Vector2D.h"
#include "platform/OpenGL.h"

/// \file
/// What takes the surfaces of letters. A sink has these functions, which mean what OpenGL's
/// functions of these names mean, and is chosen when the code is compiled, because they are called
/// for every vertex of every draw. There are two: OpenGLSink draws, and orvane::SurfaceRecorder
/// keeps the triangles.

namespace orvane
{

/// Draws in OpenGL's immediate mode.
struct OpenGLSink
{
    static void FrontFace(GLenum mode) { glFrontFace(mode); }
    static void Begin(GLenum primitive) { glBegin(primitive); }
    static void End() { glEnd(); }
    static void Normal(float x, float y, float z) { glNormal3f(x, y, z); }
    static void TexCoord(const Vector2D& coordinate) { glTexCoord2fv(coordinate); }
    static void Vertex(float x, float y, float z) { glVertex3f(x, y, z); }
};

}  // namespace orvane
