// SPDX-License-Identifier: MIT
#pragma once

#include "outline/TTContour.h"
#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdint>
#include <memory>

/// A glyph outline as contours of on- and off-curve points, in whole outline units with y up. The
/// filled area lies on the right of the direction of travel.
///
/// Copies share the array of contours; the last owner frees it. SetContourCount and
/// FromGlyphOutline give this glyph an array of its own.
class ORVANE_API TTGlyph
{
public:
    short GetContourCount() const { return contourCount; }
    /// Null for a glyph without contours.
    TTContour* GetContours() const { return contours.get(); }
    int GetOffCurvePointCount() const;
    /// Bytes of this object, its contours and their points.
    unsigned long SizeOf() const;

    int IsComposite() const { return flags & compositeFlag_; }
    int IsDefined() const { return flags & definedFlag_; }
    unsigned long GetLength() const { return length; }
    unsigned long GetOffset() const { return offset; }
    short GetXMax() const { return xMax; }
    short GetXMin() const { return xMin; }
    short GetYMax() const { return yMax; }
    short GetYMin() const { return yMin; }

    /// Replaces all contours by empty ones. A count below 0 is taken as 0.
    void SetContourCount(short count);
    void SetComposite() { flags |= compositeFlag_; }
    void ClearComposite() { flags &= ~compositeFlag_; }
    void SetDefined() { flags |= definedFlag_; }
    void ClearDefined() { flags &= ~definedFlag_; }
    void SetLength(unsigned long newLength) { length = static_cast<DWORD>(newLength); }
    void SetOffset(unsigned long newOffset) { offset = static_cast<DWORD>(newOffset); }
    void SetXMax(short value) { xMax = value; }
    void SetXMin(short value) { xMin = value; }
    void SetYMax(short value) { yMax = value; }
    void SetYMin(short value) { yMin = value; }

    /// Replaces the contours by those of a buffer that GetGlyphOutlineA filled (GGO_NATIVE) with
    /// \p bufferLength bytes, and marks the glyph as defined; the bounds, length and offset stay.
    /// The buffer needs no alignment.
    ///
    /// Coordinates keep their whole part (10.75 gives 10, -3.25 gives -4). A control point gets 5
    /// segments. A broken record ends the reading: the contours before it and the whole curves
    /// before it in its own contour are kept. Always returns 1.
    int FromGlyphOutline(void* buffer, unsigned long bufferLength);

protected:
    std::int16_t contourCount = 0;
    std::shared_ptr<TTContour[]> contours;
    DWORD flags = 0;  ///< bit 0 composite, bit 1 defined
    DWORD length = 0;
    DWORD offset = 0;
    std::int16_t xMax = 0;
    std::int16_t xMin = 0;
    std::int16_t yMax = 0;
    std::int16_t yMin = 0;

private:
    static constexpr DWORD compositeFlag_ = 0x1;
    static constexpr DWORD definedFlag_ = 0x2;
};
