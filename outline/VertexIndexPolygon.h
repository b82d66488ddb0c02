// SPDX-License-Identifier: MIT
#pragma once

#include "outline/VertexIndexPolyline.h"
#include "platform/Export.h"
#include "platform/Types.h"

/// One primitive of a glyph's face, as the tessellator made it. Its active mark is its own, apart
/// from the polyline's.
class ORVANE_API VertexIndexPolygon : public VertexIndexPolyline
{
public:
    /// GL_TRIANGLES, GL_TRIANGLE_STRIP or GL_TRIANGLE_FAN.
    unsigned long GetType() const { return type; }
    int IsActive() const { return polygonFlags & activeFlag_; }
    /// The index array's figure and this whole object, as for a polyline.
    unsigned long SizeOf() const { return VertexIndexArray::SizeOf() + sizeof *this; }

    void SetType(unsigned long newType) { type = static_cast<DWORD>(newType); }
    void SetActive() { polygonFlags |= activeFlag_; }
    void ClearActive() { polygonFlags &= ~activeFlag_; }

    DWORD polygonFlags = 0;  ///< bit 0 active

protected:
    DWORD type = 0;

private:
    static constexpr DWORD activeFlag_ = 0x1;
};
