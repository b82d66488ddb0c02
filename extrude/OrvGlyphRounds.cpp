// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"
#include "extrude/OrvGlyphRings.h"

namespace
{
constexpr Vertex::Faces kFront = Vertex::FrontFace;
constexpr Vertex::Faces kBack = Vertex::BackFace;

// The quarter circle at 0, 45 and 90 degrees.
constexpr Ring kFaceRing{RingPoint::Outline, RingNormal::Face};
constexpr Ring kRoundRing{RingPoint::Round, RingNormal::Bevel};
constexpr Ring kWallRing{RingPoint::Bevel, RingNormal::Wall};
}  // namespace

int OrvGlyph::RenderFrontRoundRounded(const ExtrusionData& data) const
{
    const OutsideIsFront outside(data);
    EmitRing_<Band<kFront, kRoundRing, kFaceRing>>(data, data.frontRoundZ, data.frontZ);
    EmitRing_<Band<kFront, kWallRing, kRoundRing>>(data, data.frontBevelZ, data.frontRoundZ);
    return 1;
}

int OrvGlyph::RenderBackRoundRounded(const ExtrusionData& data) const
{
    const OutsideIsFront outside(data);
    EmitRing_<Band<kBack, kFaceRing, kRoundRing>>(data, data.backZ, data.backRoundZ);
    EmitRing_<Band<kBack, kRoundRing, kWallRing>>(data, data.backRoundZ, data.backBevelZ);
    return 1;
}

// Not the two edges above: the back edge's first band and the front edge's second run the other
// way round. Meant so; see RoundedInOneCallTurnsTheBackFaceBandAndTheFrontWallBand.
int OrvGlyph::RenderRounded(const ExtrusionData& data) const
{
    RenderFaces(data);
    RenderEdgesBevelled(data);
    const OutsideIsFront outside(data);
    EmitRing_<Band<kBack, kRoundRing, kFaceRing>>(data, data.backRoundZ, data.backZ);
    EmitRing_<Band<kBack, kRoundRing, kWallRing>>(data, data.backRoundZ, data.backBevelZ);
    EmitRing_<Band<kFront, kRoundRing, kFaceRing>>(data, data.frontRoundZ, data.frontZ);
    EmitRing_<Band<kFront, kRoundRing, kWallRing>>(data, data.frontRoundZ, data.frontBevelZ);
    return 1;
}
