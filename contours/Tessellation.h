// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Fills flattened outlines with triangles, using GLU's tessellator.

#include "platform/OpenGL.h"

#include <span>

namespace orvane::contours
{

/// A vertex as the tessellator takes it. The tessellator keeps pointers to both members until the
/// polygon ends.
struct Corner
{
    GLdouble place[3];
    unsigned short index;  ///< handed to FaceSink::Add
};

/// Receives the primitives that the tessellator makes, one after the other. When one of these
/// functions throws, TessellateFaces throws the same exception when GLU is done.
class FaceSink
{
public:
    /// \param type GL_TRIANGLES, GL_TRIANGLE_FAN or GL_TRIANGLE_STRIP
    virtual void Begin(GLenum type) = 0;
    virtual void Add(unsigned short index) = 0;
    virtual void End() = 0;

protected:
    ~FaceSink() = default;
};

/// Fills contours with triangles, fans and strips by the odd rule: a place is filled when a line
/// from it to the outside crosses the contours an odd number of times. So holes stay open whichever
/// way their contours run. Contours that cross are an error: GLU would need a combine callback to
/// make a vertex where two edges cross, and there is none.
/// \param corners the corners of all contours, one contour after the other
/// \param sizes the number of corners of each contour
/// \return false when the contours cannot be filled; the caller must then throw away the primitives
/// in \p sink. Throws std::bad_alloc when there is too little memory.
bool TessellateFaces(std::span<Corner> corners, std::span<const int> sizes, FaceSink& sink);

}  // namespace orvane::contours
