// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"
#include "extrude/OrvGlyphRings.h"

// OrvGlyph: rounded edges.

namespace
{
constexpr Vertex::Faces front = Vertex::FrontFace;
constexpr Vertex::Faces back = Vertex::BackFace;

// The rings of a rounded edge lie on its quarter circle at 0, 45 and 90 degrees, from the face to
// the wall.
constexpr Ring faceRing{RingPoint::Outline, RingNormal::Face};
constexpr Ring roundRing{RingPoint::Round, RingNormal::Bevel};
constexpr Ring wallRing{RingPoint::Bevel, RingNormal::Wall};
}  // namespace

int OrvGlyph::RenderFrontRoundRounded(const ExtrusionData& data) const
{
    const OutsideIsFront outside(data);
    EmitBand<Band<front, roundRing, faceRing>>(data, data.frontRoundZ, data.frontZ);
    EmitBand<Band<front, wallRing, roundRing>>(data, data.frontBevelZ, data.frontRoundZ);
    return 1;
}

int OrvGlyph::RenderBackRoundRounded(const ExtrusionData& data) const
{
    const OutsideIsFront outside(data);
    EmitBand<Band<back, faceRing, roundRing>>(data, data.backZ, data.backRoundZ);
    EmitBand<Band<back, roundRing, wallRing>>(data, data.backRoundZ, data.backBevelZ);
    return 1;
}

// RenderRounded does not draw its bands exactly as the two functions above do. The quads of the
// back edge's band at the face and of the front edge's band at the wall run in the opposite
// direction. That is required; see RenderRoundedTurnsTheBackFaceBandAndTheFrontWallBand.
int OrvGlyph::RenderRounded(const ExtrusionData& data) const
{
    RenderFaces(data);
    RenderEdgesBevelled(data);
    const OutsideIsFront outside(data);
    EmitBand<Band<back, roundRing, faceRing>>(data, data.backRoundZ, data.backZ);
    EmitBand<Band<back, roundRing, wallRing>>(data, data.backRoundZ, data.backBevelZ);
    EmitBand<Band<front, roundRing, faceRing>>(data, data.frontRoundZ, data.frontZ);
    EmitBand<Band<front, roundRing, wallRing>>(data, data.frontRoundZ, data.frontBevelZ);
    return 1;
}
