// SPDX-License-Identifier: MIT
#pragma once

#include "outline/VertexIndexPolyline.h"
#include "platform/Export.h"
#include "platform/Types.h"

/// One OpenGL primitive of a glyph's face, as the tessellator made it. Its active mark is separate
/// from that of its base class.
class ORVANE_API VertexIndexPolygon : public VertexIndexPolyline
{
public:
    /// GL_TRIANGLES, GL_TRIANGLE_STRIP or GL_TRIANGLE_FAN.
    unsigned long GetType() const { return type; }
    int IsActive() const { return polygonFlags & activeFlag; }
    /// The bytes of the index array plus the bytes of this object. As in VertexIndexPolyline, the
    /// members of the index array count twice.
    unsigned long SizeOf() const { return VertexIndexArray::SizeOf() + sizeof *this; }

    void SetType(unsigned long newType) { type = static_cast<DWORD>(newType); }
    void SetActive() { polygonFlags |= activeFlag; }
    void ClearActive() { polygonFlags &= ~activeFlag; }

    DWORD polygonFlags = 0;  ///< bit 0 active

protected:
    DWORD type = 0;

private:
    static constexpr DWORD activeFlag = 0x1;
};
