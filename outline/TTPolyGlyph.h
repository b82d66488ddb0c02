// SPDX-License-Identifier: MIT
#pragma once

#include "outline/TTPolyContourArray.h"
#include "outline/VertexArray.h"
#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdint>

class TTGlyph;

/// A glyph outline flattened into polygons: a pool of vertices, and contours that are runs in it.
/// Vertices stay in whole outline units; only the bounds are divided by the scale.
///
/// A copy has an empty pool of its own, and contours that borrow the pool of the source: it is
/// usable while the source lives. Meant so; see ACopyDrawsFromThePoolOfItsSource.
class ORVANE_API TTPolyGlyph
{
public:
    TTPolyGlyph() = default;
    TTPolyGlyph(const TTPolyGlyph& other) { *this = other; }
    TTPolyGlyph& operator=(const TTPolyGlyph& other);

    int GetContourCount() const { return contourCount; }
    float GetXMax() const { return xMax; }
    float GetXMin() const { return xMin; }
    float GetYMax() const { return yMax; }
    float GetYMin() const { return yMin; }
    float GetWidth() const { return xMax - xMin; }
    float GetHeight() const { return yMax - yMin; }
    int IsComposite() const { return flags & compositeFlag_; }
    int IsDefined() const { return flags & definedFlag_; }
    /// Bytes of this object and of all allocated vertices and contours.
    unsigned long SizeOf() const;

    /// Empties the pool and replaces all contours by \p count empty ones that use it.
    void SetContourCount(int count);
    void SetXMax(float value) { xMax = value; }
    void SetXMin(float value) { xMin = value; }
    void SetYMax(float value) { yMax = value; }
    void SetYMin(float value) { yMin = value; }
    void SetComposite() { flags |= compositeFlag_; }
    void ClearComposite() { flags &= ~compositeFlag_; }
    void SetDefined() { flags |= definedFlag_; }
    void ClearDefined() { flags &= ~definedFlag_; }

    /// Rebuilds everything from an outline of which \p newScale units make one unit of output (0
    /// counts as 1). The outline's marks are added to those already set.
    void FromTTGlyph(const TTGlyph& glyph, float newScale);

    /// Moves vertices that lie at the same place apart: within each contour, then each contour's
    /// against all later contours. The first of them stays; a vertex that was moved counts where it
    /// is now. Time is nearly proportional to the vertices and the moves made.
    void CorrectDuplicateVerticies();

    VertexArray vertices;  ///< the pool
    TTPolyContourArray contours;
    DWORD flags = 0;            ///< bit 0 composite, bit 1 defined
    float inverseScale = 0.0f;  ///< 1 / scale
    std::int32_t totalVertexCount = 0;
    float scale = 0.0f;  ///< outline units in one unit of output

protected:
    std::int32_t contourCount = 0;
    float xMax = 0.0f;  ///< the bounds, in units of output
    float xMin = 0.0f;
    float yMax = 0.0f;
    float yMin = 0.0f;

private:
    static constexpr DWORD compositeFlag_ = 0x1;
    static constexpr DWORD definedFlag_ = 0x2;

    void CalculateBounds_();
};
