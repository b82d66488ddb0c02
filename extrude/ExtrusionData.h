// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Vector.h"
#include "platform/Export.h"
#include "platform/Types.h"

/// How deep a letter is, how wide its bevel is, where the rings of its outline lie, and how its
/// scale and textures apply: the input of one extruded draw. A text object makes a fresh one for
/// each draw, and nobody stores it.
///
/// The front face lies in z = 0 and the letter reaches into -z by its depth, scale.z. Offsets, z
/// and depth are in object units, one em being 1. A new one has depth 1, no bevel, and all its
/// rings at 0 until CalculateHeights has run.
class ORVANE_API ExtrusionData
{
public:
    /// Bevel and round offsets are multiplied by scale.x and scale.y. When clear, they take only
    /// the signs of these, so that a bevel keeps its width whatever the object's scale.
    void SetScaleBevels() { flags |= scaleBevelsFlag_; }
    void ClearScaleBevels() { flags &= ~scaleBevelsFlag_; }
    int ShouldScaleBevels() const { return static_cast<int>(flags & scaleBevelsFlag_); }

    /// Every vertex is preceded by a texture coordinate.
    void SetTexture() { flags |= textureFlag_; }
    void ClearTexture() { flags &= ~textureFlag_; }
    int ShouldTexture() const { return static_cast<int>(flags & textureFlag_); }

    /// Texture coordinates are taken from the scaled position, so that the texture stretches with
    /// the object; when clear, from the unscaled one.
    void SetScaleTextureWithObject() { flags |= scaleTextureFlag_; }
    void ClearScaleTextureWithObject() { flags &= ~scaleTextureFlag_; }
    int ShouldScaleTextureWithObject() const { return static_cast<int>(flags & scaleTextureFlag_); }

    void SetTextureRepeat(float repeat) { textureRepeat = repeat; }

    /// Places the rings by bevelDepth and scale.z. Whether both bevels fit into the depth is the
    /// caller's care. Returns 1.
    int CalculateHeights();

    float backBevelZ = 0;  ///< where the back bevel meets the wall
    float backZ = 0;       ///< the back face
    float backRoundZ = 0;  ///< the middle ring of the back rounded edge
    float bevelDepth = 0;  ///< width of bevels and rounded edges
    DWORD flags = 0;
    float frontBevelZ = 0;
    float frontZ = 0;
    float frontRoundZ = 0;
    Vector scale{1.0f, 1.0f, 1.0f};
    float textureRepeat = 1.0f;  ///< factor on texture coordinates

private:
    static constexpr DWORD scaleBevelsFlag_ = 0x1;
    static constexpr DWORD textureFlag_ = 0x2;
    static constexpr DWORD scaleTextureFlag_ = 0x4;
};
