// SPDX-License-Identifier: MIT
#pragma once

#include "outline/RingIndex.h"
#include "outline/VertexIndexArray.h"
#include "platform/Export.h"
#include "platform/Types.h"

/// A closed run of vertex indices, which can be marked as active and as clockwise. The functions
/// take the position of a vertex index in the run, counted from 0. A position is out of range when
/// it is negative or not less than the size of the run.
class ORVANE_API VertexIndexPolyline : public VertexIndexArray
{
public:
    /// The position after \p index. The last position is followed by 0. Returns -1 when \p index is
    /// out of range.
    int GetNextVertexIndex(int index) const { return NextRingIndex(index, size); }
    /// The position before \p index. 0 is preceded by the last position. Returns -1 when \p index
    /// is out of range.
    int GetPreviousVertexIndex(int index) const { return PreviousRingIndex(index, size); }
    // The vertex index at the next or previous position; 0 when \p index is out of range.
    unsigned short GetNextVertex(int index) const { return VertexAt(GetNextVertexIndex(index)); }
    unsigned short GetPreviousVertex(int index) const
    {
        return VertexAt(GetPreviousVertexIndex(index));
    }

    int IsActive() const { return polylineFlags & activeFlag; }
    int IsClockwiseWinding() const { return polylineFlags & clockwiseFlag; }

    /// The bytes of the index array plus the bytes of this object. The members of the index array
    /// are part of both, so they count twice. That is required; see
    /// PolylineSizeCountsItsArrayTwice.
    unsigned long SizeOf() const { return VertexIndexArray::SizeOf() + sizeof *this; }

    void SetVertex(int index, const unsigned short& vertex) { SetAtGrow(index, vertex); }
    void RemoveAllVerticies() { SetSize(0); }
    void SetActive() { polylineFlags |= activeFlag; }
    void ClearActive() { polylineFlags &= ~activeFlag; }
    void SetClockwiseWinding() { polylineFlags |= clockwiseFlag; }
    void ClearClockwiseWinding() { polylineFlags &= ~clockwiseFlag; }

    DWORD polylineFlags = 0;  ///< bit 0 active, bit 1 clockwise

private:
    static constexpr DWORD activeFlag = 0x1;
    static constexpr DWORD clockwiseFlag = 0x2;

    unsigned short VertexAt(int index) const { return index < 0 ? 0 : data[index]; }
};
