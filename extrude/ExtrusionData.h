// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Vector.h"
#include "platform/Export.h"
#include "platform/Types.h"

/// The settings of one draw of an extruded text: the depth of the letters, the width of their
/// edges, the scale, and how texture coordinates are made. A text makes a new object for each draw;
/// objects are not stored.
///
/// Lengths are in object units. In x and y, one em of a letter's outline is 1 unit, times scale.x
/// and scale.y. In z, scale.z itself is the depth of the letters. The front face of a letter lies
/// at z = 0 and looks to +z; the back face lies at z = -scale.z and looks to -z.
///
/// A letter may have a bevelled or rounded edge between its front face and its side wall, and
/// another one between its wall and its back face. An edge of width w takes up a length of w in z.
/// So outlines are drawn at up to six levels in z. From front to back they are, for edges of width
/// w:
///
///     frontZ       0                  the front face
///     frontRoundZ  -0.2929 w          the middle of a rounded front edge
///     frontBevelZ  -w                 the front edge meets the wall
///     backBevelZ   w - depth          the wall meets the back edge
///     backRoundZ   0.2929 w - depth   the middle of a rounded back edge
///     backZ        -depth             the back face
///
/// A new object has depth 1 and edges of width 0. Its levels are all 0 until CalculateHeights has
/// run.
class ORVANE_API ExtrusionData
{
public:
    // Each test below returns the flag's own bit (1, 2 or 4) when the flag is set, otherwise 0.

    /// While set, the width of edges is multiplied by scale.x in x and by scale.y in y. While
    /// clear, it is multiplied by the signs of scale.x and scale.y, so that edges keep their width
    /// whatever the scale.
    void SetScaleBevels() { flags |= scaleBevelsFlag; }
    void ClearScaleBevels() { flags &= ~scaleBevelsFlag; }
    int ShouldScaleBevels() const { return static_cast<int>(flags & scaleBevelsFlag); }

    /// While set, a texture coordinate is emitted before each vertex.
    void SetTexture() { flags |= textureFlag; }
    void ClearTexture() { flags &= ~textureFlag; }
    int ShouldTexture() const { return static_cast<int>(flags & textureFlag); }

    /// While set, a vertex's texture coordinate is its position after scaling, so that the texture
    /// stretches with the object. While clear, it is the position before scaling.
    void SetScaleTextureWithObject() { flags |= scaleTextureFlag; }
    void ClearScaleTextureWithObject() { flags &= ~scaleTextureFlag; }
    int ShouldScaleTextureWithObject() const { return static_cast<int>(flags & scaleTextureFlag); }

    void SetTextureRepeat(float repeat) { textureRepeat = repeat; }

    /// Computes the six levels from bevelDepth and scale.z. The caller makes sure that both edges
    /// fit into the depth; this function does not check it. Returns 1.
    int CalculateHeights();

    float backBevelZ = 0;
    float backZ = 0;
    float backRoundZ = 0;
    float bevelDepth = 0;  ///< the width of bevelled and rounded edges, before any scale
    DWORD flags = 0;
    float frontBevelZ = 0;
    float frontZ = 0;
    float frontRoundZ = 0;
    Vector scale{1.0f, 1.0f, 1.0f};  ///< z is the depth of the letters
    float textureRepeat = 1.0f;      ///< the factor by which texture coordinates are multiplied

private:
    static constexpr DWORD scaleBevelsFlag = 0x1;
    static constexpr DWORD textureFlag = 0x2;
    static constexpr DWORD scaleTextureFlag = 0x4;
};
