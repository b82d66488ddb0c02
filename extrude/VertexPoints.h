// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/ExtrusionData.h"
#include "geometry/Vector2D.h"

#include <cmath>

/// Where one vertex of the outline lies in an extruded letter: in the plane of the letter, in
/// object units. A letter has three outlines: its own at the faces, one moved outward by the width
/// of the edge at the wall, and one between them at the middle of a rounded edge.
struct tagVERTEXPOINTS
{
    Vector2D point;       ///< on the letter's own outline
    Vector2D bevelPoint;  ///< on the wall's outline; filled only when asked for
    Vector2D roundPoint;  ///< on the middle outline; filled only when asked for

    // The same three points before the object's scale is applied. They are the texture coordinates
    // of a texture that does not stretch with the object, and are filled only when the draw has
    // such a texture.
    Vector2D texPoint;
    Vector2D texBevelPoint;
    Vector2D texRoundPoint;
};

/// The values that all vertices of one draw share, computed once per draw.
class PointScales
{
public:
    explicit PointScales(const ExtrusionData& data)
        : scale(data.scale.x, data.scale.y),
          sign(SignOf(data.scale.x), SignOf(data.scale.y)),
          bevelScale(data.ShouldScaleBevels() ? scale : sign),
          // Both divisions are skipped only when scale.x is 0, which is required. When only scale.y
          // is 0, the texture coordinate's offset along y becomes infinite, which OpenGL accepts;
          // see AScaleOfZeroInYGivesInfiniteTextureCoordinates.
          inverseScale(scale.x == 0 ? 0 : 1 / scale.x, scale.x == 0 ? 0 : 1 / scale.y),
          bevelDepth(data.bevelDepth),
          wantTexPoints(data.ShouldTexture() && !data.ShouldScaleTextureWithObject())
    {}

    Vector2D scale;
    Vector2D sign;          ///< the signs of scale, -1 or 1; 1 where scale is 0
    Vector2D bevelScale;    ///< factor on the offsets of bevelPoint and roundPoint
    Vector2D inverseScale;  ///< factor on the offsets of texBevelPoint and texRoundPoint
    float bevelDepth;       ///< the width of the edge
    bool wantTexPoints;     ///< whether the three texture points are filled

private:
    static float SignOf(float value) { return value == 0 ? 1 : value / std::fabs(value); }
};
