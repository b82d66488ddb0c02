// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"
#include "extrude/OrvGlyphRings.h"

// OrvGlyph: side walls and edges cut off at 45 degrees.

namespace
{
constexpr Vertex::Faces front = Vertex::FrontFace;
constexpr Vertex::Faces back = Vertex::BackFace;

constexpr Ring plainWall{RingPoint::Outline, RingNormal::Wall};
constexpr Ring bevelledWall{RingPoint::Bevel, RingNormal::Wall};

// The two rings of a flat band in the plane of a face.
constexpr Ring flatInner{RingPoint::Outline, RingNormal::Face};
constexpr Ring flatOuter{RingPoint::Bevel, RingNormal::Face};

// The two rings of a bevel: the inner one lies at the face, the outer one at the wall.
constexpr Ring bevelInner{RingPoint::Outline, RingNormal::Bevel};
constexpr Ring bevelOuter{RingPoint::Bevel, RingNormal::Bevel};
}  // namespace

int OrvGlyph::RenderEdges(int bevelled, float zA, float zB, const ExtrusionData& data) const
{
    const OutsideIsFront outside(data);
    if (bevelled)
    {
        EmitBand<Band<Vertex::SideFace, bevelledWall, bevelledWall>>(data, zA, zB);
    }
    else
    {
        EmitBand<Band<Vertex::SideFace, plainWall, plainWall>>(data, zA, zB);
    }
    return 1;
}

int OrvGlyph::RenderEdgesUnbevelled(const ExtrusionData& data) const
{
    return RenderEdges(0, data.backZ, data.frontZ, data);
}

int OrvGlyph::RenderEdgesBevelled(const ExtrusionData& data) const
{
    return RenderEdges(1, data.backBevelZ, data.frontBevelZ, data);
}

int OrvGlyph::RenderEdgesFrontBevelOnly(const ExtrusionData& data) const
{
    return RenderEdges(1, data.backZ, data.frontBevelZ, data);
}

int OrvGlyph::RenderEdgesBackBevelOnly(const ExtrusionData& data) const
{
    return RenderEdges(1, data.backBevelZ, data.frontZ, data);
}

int OrvGlyph::RenderFrontBevelFlat(const ExtrusionData& data) const
{
    const OutsideIsFront outside(data);
    EmitBand<Band<front, flatOuter, flatInner>>(data, data.frontZ, data.frontZ);
    return 1;
}

int OrvGlyph::RenderBackBevelFlat(const ExtrusionData& data) const
{
    const OutsideIsFront outside(data);
    EmitBand<Band<back, flatInner, flatOuter>>(data, data.backZ, data.backZ);
    return 1;
}

int OrvGlyph::RenderFrontBevelBevelled(const ExtrusionData& data) const
{
    const OutsideIsFront outside(data);
    EmitBand<Band<front, bevelOuter, bevelInner>>(data, data.frontBevelZ, data.frontZ);
    return 1;
}

int OrvGlyph::RenderBackBevelBevelled(const ExtrusionData& data) const
{
    const OutsideIsFront outside(data);
    EmitBand<Band<back, bevelInner, bevelOuter>>(data, data.backZ, data.backBevelZ);
    return 1;
}

// RenderBevelled does not draw its bevels exactly as the two functions above do. The quads of its
// back bevel run in the opposite direction. In its front bevel the far end of each segment takes
// its offset from the next segment instead of its own. Both differences are required; see
// RenderBevelledTurnsItsBackQuadsAndUsesLeavingOffsetsInFront.
int OrvGlyph::RenderBevelled(const ExtrusionData& data) const
{
    RenderFaces(data);
    const OutsideIsFront outside(data);
    EmitBand<Band<back, bevelOuter, bevelInner>>(data, data.backBevelZ, data.backZ);
    EmitBand<Band<front, bevelOuter, bevelInner, Vertex::NextEdge>>(data, data.frontBevelZ,
                                                                    data.frontZ);
    return 1;
}
