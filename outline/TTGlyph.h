// SPDX-License-Identifier: MIT
#pragma once

#include "outline/TTContour.h"
#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdint>
#include <memory>

/// The outline of a glyph: contours of points on the curve and control points beside it, in whole
/// outline units, with y up. A contour runs so that the filled area lies on its right.
///
/// Copies share one array of contours, which is freed with the last copy. SetContourCount and
/// FromGlyphOutline give this glyph a new array that it does not share.
class ORVANE_API TTGlyph
{
public:
    short GetContourCount() const { return contourCount; }
    /// Null for a glyph without contours.
    TTContour* GetContours() const { return contours.get(); }
    int GetOffCurvePointCount() const;
    /// The bytes of this object, its contours and their points.
    unsigned long SizeOf() const;

    int IsComposite() const { return flags & compositeFlag; }
    int IsDefined() const { return flags & definedFlag; }
    unsigned long GetLength() const { return length; }
    unsigned long GetOffset() const { return offset; }
    short GetXMax() const { return xMax; }
    short GetXMin() const { return xMin; }
    short GetYMax() const { return yMax; }
    short GetYMin() const { return yMin; }

    /// Replaces all contours by \p count empty ones. A count below 0 counts as 0.
    void SetContourCount(short count);
    void SetComposite() { flags |= compositeFlag; }
    void ClearComposite() { flags &= ~compositeFlag; }
    void SetDefined() { flags |= definedFlag; }
    void ClearDefined() { flags &= ~definedFlag; }
    void SetLength(unsigned long newLength) { length = static_cast<DWORD>(newLength); }
    void SetOffset(unsigned long newOffset) { offset = static_cast<DWORD>(newOffset); }
    void SetXMax(short value) { xMax = value; }
    void SetXMin(short value) { xMin = value; }
    void SetYMax(short value) { yMax = value; }
    void SetYMin(short value) { yMin = value; }

    /// Replaces the contours by those in a buffer that GetGlyphOutlineA filled, in format
    /// GGO_NATIVE, and marks the glyph as defined. The bounds, length and offset do not change.
    /// Returns 1.
    /// \param buffer may have any alignment.
    /// \param bufferLength in bytes.
    ///
    /// Coordinates are rounded down to whole units: 10.75 gives 10, -3.25 gives -4. Each control
    /// point is later flattened into 5 segments. Reading ends at the first broken record. The
    /// contours before that record are kept. Of the contour that contains the record, the curves
    /// before the record are kept.
    int FromGlyphOutline(void* buffer, unsigned long bufferLength);

protected:
    std::int16_t contourCount = 0;
    std::shared_ptr<TTContour[]> contours;
    DWORD flags = 0;  ///< bit 0 composite, bit 1 defined
    // The library only stores length, offset and bounds for hosts. It neither computes nor uses
    // them.
    DWORD length = 0;
    DWORD offset = 0;
    std::int16_t xMax = 0;
    std::int16_t xMin = 0;
    std::int16_t yMax = 0;
    std::int16_t yMin = 0;

private:
    static constexpr DWORD compositeFlag = 0x1;
    static constexpr DWORD definedFlag = 0x2;
};
