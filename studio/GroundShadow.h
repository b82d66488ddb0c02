// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"

#include <vector>

class DrawingObject;

namespace orvane
{

/// How much of a large lamp's light does not come to a plane. The lamp hangs above the scene, a
/// little in front of it and to its left.
struct ShadowMap
{
    double left = 0;   ///< x of the first column's left side
    double far = 0;    ///< z of the first row's far side
    double width = 0;  ///< of the map in the plane, like height
    double height = 0;
    int columns = 0;
    int rows = 0;
    /// From 0, all light, to 255, no light; row by row, the far one first. The outermost pixels of
    /// the map are 0.
    std::vector<unsigned char> pixels;
};

/// Triangles in the coordinates of a scene: three corners each, and three numbers each corner.
using TriangleCorners = std::vector<float>;

/// The shadow of triangles on the plane through \p ground, where y is up. A map of 0 x 0 pixels
/// when there is no triangle above the plane.
ORVANE_API ShadowMap MakeShadow(const TriangleCorners& triangles, double ground);

/// The soft shadow of all solids of a scene on the ground below them.
///
/// It belongs to the OpenGL context that is current in its constructor. That context must be
/// current in Draw and in the destructor.
class ORVANE_API GroundShadow
{
public:
    explicit GroundShadow(DrawingObject& scene);
    ~GroundShadow();
    GroundShadow(const GroundShadow&) = delete;
    GroundShadow& operator=(const GroundShadow&) = delete;

    /// Darkens the ground, with OpenGL's matrices as they are for the scene's parent. Writes no
    /// depths. Draws nothing when the ground is seen from below.
    void Draw() const;

private:
    const DrawingObject& scene_;
    double ground_ = 0;  ///< y of the ground in the scene
    ShadowMap map_;      ///< without its pixels
    unsigned texture_ = 0;
};

}  // namespace orvane
