// SPDX-License-Identifier: MIT
#pragma once

#include "outline/TTPolyContourArray.h"
#include "outline/VertexArray.h"
#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdint>

class TTGlyph;

/// A glyph's outline with its curves flattened to straight segments. All vertices lie in one pool,
/// and each contour is a run of successive vertices in the pool. Positions of vertices are in whole
/// outline units. Bounds are in ems, that is, in outline units divided by the scale.
///
/// The contours of a copy use the vertices of the original, and the copy's own pool is empty. So a
/// copy can be used only while the original exists. That is required; see
/// ACopyUsesTheVertexPoolOfItsSource.
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
    int IsComposite() const { return flags & compositeFlag; }
    int IsDefined() const { return flags & definedFlag; }
    /// The bytes of this object and of all allocated vertices and contours.
    unsigned long SizeOf() const;

    /// Empties the pool and replaces all contours by \p count empty ones that use this pool.
    void SetContourCount(int count);
    void SetXMax(float value) { xMax = value; }
    void SetXMin(float value) { xMin = value; }
    void SetYMax(float value) { yMax = value; }
    void SetYMin(float value) { yMin = value; }
    void SetComposite() { flags |= compositeFlag; }
    void ClearComposite() { flags &= ~compositeFlag; }
    void SetDefined() { flags |= definedFlag; }
    void ClearDefined() { flags &= ~definedFlag; }

    /// Builds everything anew from an outline. The outline's composite and defined marks are added
    /// to those that this glyph has already.
    /// \param newScale outline units per em; 0 counts as 1.
    void FromTTGlyph(const TTGlyph& glyph, float newScale);

    /// Moves apart the vertices that lie at the same place, because the tessellator cannot fill an
    /// outline in which two vertices coincide. First compares the vertices within each contour,
    /// then the vertices of each contour with the vertices of all later contours. When two vertices
    /// coincide, the later vertex is moved and is compared at its new place from then on. The time
    /// is nearly proportional to the number of vertices and moves.
    void CorrectDuplicateVerticies();

    VertexArray vertices;  ///< the pool of all contours
    TTPolyContourArray contours;
    DWORD flags = 0;            ///< bit 0 composite, bit 1 defined
    float inverseScale = 0.0f;  ///< 1 / scale: ems per outline unit
    std::int32_t totalVertexCount = 0;
    float scale = 0.0f;  ///< outline units per em

protected:
    std::int32_t contourCount = 0;
    float xMax = 0.0f;  ///< the bounds of all vertices, in ems
    float xMin = 0.0f;
    float yMax = 0.0f;
    float yMin = 0.0f;

private:
    static constexpr DWORD compositeFlag = 0x1;
    static constexpr DWORD definedFlag = 0x2;

    void CalculateBounds();
};
