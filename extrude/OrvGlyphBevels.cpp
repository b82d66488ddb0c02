// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"
#include "extrude/OrvGlyphRings.h"

namespace
{
constexpr Vertex::Faces kFront = Vertex::FrontFace;
constexpr Vertex::Faces kBack = Vertex::BackFace;

constexpr Ring kPlainWall{RingPoint::Outline, RingNormal::Wall};
constexpr Ring kBevelledWall{RingPoint::Bevel, RingNormal::Wall};
constexpr Ring kFlatInner{RingPoint::Outline, RingNormal::Face};
constexpr Ring kFlatOuter{RingPoint::Bevel, RingNormal::Face};
constexpr Ring kBevelInner{RingPoint::Outline, RingNormal::Bevel};
constexpr Ring kBevelOuter{RingPoint::Bevel, RingNormal::Bevel};
}  // namespace

int OrvGlyph::RenderEdges(int bevelled, float zA, float zB, const ExtrusionData& data) const
{
    const OutsideIsFront outside(data);
    if (bevelled)
    {
        EmitRing_<Band<Vertex::SideFace, kBevelledWall, kBevelledWall>>(data, zA, zB);
    }
    else
    {
        EmitRing_<Band<Vertex::SideFace, kPlainWall, kPlainWall>>(data, zA, zB);
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
    EmitRing_<Band<kFront, kFlatOuter, kFlatInner>>(data, data.frontZ, data.frontZ);
    return 1;
}

int OrvGlyph::RenderBackBevelFlat(const ExtrusionData& data) const
{
    const OutsideIsFront outside(data);
    EmitRing_<Band<kBack, kFlatInner, kFlatOuter>>(data, data.backZ, data.backZ);
    return 1;
}

int OrvGlyph::RenderFrontBevelBevelled(const ExtrusionData& data) const
{
    const OutsideIsFront outside(data);
    EmitRing_<Band<kFront, kBevelOuter, kBevelInner>>(data, data.frontBevelZ, data.frontZ);
    return 1;
}

int OrvGlyph::RenderBackBevelBevelled(const ExtrusionData& data) const
{
    const OutsideIsFront outside(data);
    EmitRing_<Band<kBack, kBevelInner, kBevelOuter>>(data, data.backZ, data.backBevelZ);
    return 1;
}

// Not the two bevels above: the back one runs the other way round, and the ends of the front one's
// segments take the offset of the edge that leaves. Both meant so; see
// BevelledInOneCallTurnsTheBackBevelAndTakesLeavingOffsetsInFront.
int OrvGlyph::RenderBevelled(const ExtrusionData& data) const
{
    RenderFaces(data);
    const OutsideIsFront outside(data);
    EmitRing_<Band<kBack, kBevelOuter, kBevelInner>>(data, data.backBevelZ, data.backZ);
    EmitRing_<Band<kFront, kBevelOuter, kBevelInner, Vertex::NextEdge>>(data, data.frontBevelZ,
                                                                        data.frontZ);
    return 1;
}
