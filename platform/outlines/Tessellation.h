// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// How the faces of a flattened outline are filled.

#include "platform/OpenGL.h"

#include <span>

namespace outlines
{

/// What the tessellator is given of a vertex. It keeps a pointer to the index until the polygon
/// ends.
struct Corner
{
    GLdouble place[3];
    unsigned short index;
};

/// Takes the primitives that the tessellator makes, one after the other. What throws ends as an
/// error of the tessellation.
class FaceSink
{
public:
    virtual void Begin(GLenum type) = 0;
    virtual void Add(unsigned short index) = 0;
    virtual void End() = 0;

protected:
    ~FaceSink() = default;
};

/// Fills contours with triangles, fans and strips by the odd rule, which leaves holes open whatever
/// their direction. There is no combine callback: contours that cross are an error.
/// \param corners of all contours, one after the other
/// \param sizes of the contours; their sum is the number of corners
/// \return false for an error; what the sink has got until then is worth nothing
bool TessellateFaces(std::span<Corner> corners, std::span<const int> sizes, FaceSink& sink);

}  // namespace outlines
