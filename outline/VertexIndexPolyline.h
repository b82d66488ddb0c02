// SPDX-License-Identifier: MIT
#pragma once

#include "outline/RingIndex.h"
#include "outline/VertexIndexArray.h"
#include "platform/Export.h"
#include "platform/Types.h"

/// A closed run of vertex indices with an active mark and a winding.
class ORVANE_API VertexIndexPolyline : public VertexIndexArray
{
public:
    /// The position after \p index, 0 after the last; -1 for a position out of range.
    int GetNextVertexIndex(int index) const { return NextRingIndex(index, size); }
    /// The position before \p index, the last before 0; -1 for a position out of range.
    int GetPreviousVertexIndex(int index) const { return PreviousRingIndex(index, size); }
    /// The index stored there; 0 for a position out of range.
    unsigned short GetNextVertex(int index) const { return At_(GetNextVertexIndex(index)); }
    unsigned short GetPreviousVertex(int index) const { return At_(GetPreviousVertexIndex(index)); }

    int IsActive() const { return polylineFlags & activeFlag_; }
    int IsClockwiseWinding() const { return polylineFlags & clockwiseFlag_; }

    /// The index array's figure and this whole object, so the array's record counts twice. Meant
    /// so: see PolylineSizeCountsItsArrayRecordTwice.
    unsigned long SizeOf() const { return VertexIndexArray::SizeOf() + sizeof *this; }

    void SetVertex(int index, const unsigned short& vertex) { SetAtGrow(index, vertex); }
    void RemoveAllVerticies() { SetSize(0); }
    void SetActive() { polylineFlags |= activeFlag_; }
    void ClearActive() { polylineFlags &= ~activeFlag_; }
    void SetClockwiseWinding() { polylineFlags |= clockwiseFlag_; }
    void ClearClockwiseWinding() { polylineFlags &= ~clockwiseFlag_; }

    DWORD polylineFlags = 0;  ///< bit 0 active, bit 1 clockwise

private:
    static constexpr DWORD activeFlag_ = 0x1;
    static constexpr DWORD clockwiseFlag_ = 0x2;

    unsigned short At_(int index) const { return index < 0 ? 0 : data[index]; }
};
