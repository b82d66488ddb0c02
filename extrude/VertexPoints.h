// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/ExtrusionData.h"
#include "geometry/Vector2D.h"

#include <cmath>

/// Where one outline vertex lies in the rings of an extruded letter, and where their texture is
/// taken. In object units, but the texture points without the object's scale.
struct tagVERTEXPOINTS
{
    Vector2D point;
    Vector2D bevelPoint;  ///< point moved by the bevel's offset; only when asked for
    Vector2D roundPoint;  ///< point moved by the rounded edge's offset; only when asked for

    // Only when texturing without the object's scale.
    Vector2D texPoint;
    Vector2D texBevelPoint;
    Vector2D texRoundPoint;
};

/// What the points of every vertex of one draw have in common: worked out once per draw, not once
/// per vertex.
class PointScales
{
public:
    /// Implicit: it is the same input, only digested.
    PointScales(const ExtrusionData& data)
        : scale(data.scale.x, data.scale.y),
          sign(SignOf_(data.scale.x), SignOf_(data.scale.y)),
          bevelScale(data.ShouldScaleBevels() ? scale : sign),
          // Both look at x: meant so. A y of 0 gives infinite texture offsets, which do no harm;
          // see AHeightOfZeroTexturesBevelsAtInfinity.
          inverseScale(scale.x == 0 ? 0 : 1 / scale.x, scale.x == 0 ? 0 : 1 / scale.y),
          bevelDepth(data.bevelDepth),
          wantTexPoints(data.ShouldTexture() && !data.ShouldScaleTextureWithObject())
    {}

    Vector2D scale;
    Vector2D sign;          ///< of the scale, 1 for 0
    Vector2D bevelScale;    ///< factor on offsets
    Vector2D inverseScale;  ///< factor on texture offsets
    float bevelDepth;
    bool wantTexPoints;

private:
    static float SignOf_(float value) { return value == 0 ? 1 : value / std::fabs(value); }
};
