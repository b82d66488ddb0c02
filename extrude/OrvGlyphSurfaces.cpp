// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"
#include "extrude/OrvGlyphRings.h"
#include "geometry/SurfaceRecorder.h"

// OrvGlyph: faces, side walls, edges cut off at 45 degrees, and rounded edges.

using orvane::OpenGLSink;

namespace
{
constexpr Vertex::Faces front = Vertex::FrontFace;
constexpr Vertex::Faces back = Vertex::BackFace;
constexpr Vertex::Faces side = Vertex::SideFace;

constexpr Ring plainWall{RingPoint::Outline, RingNormal::Wall};
constexpr Ring bevelledWall{RingPoint::Bevel, RingNormal::Wall};

// The two rings of a flat band in the plane of a face.
constexpr Ring flatInner{RingPoint::Outline, RingNormal::Face};
constexpr Ring flatOuter{RingPoint::Bevel, RingNormal::Face};

// The two rings of a bevel: the inner one lies at the face, the outer one at the wall.
constexpr Ring bevelInner{RingPoint::Outline, RingNormal::Bevel};
constexpr Ring bevelOuter{RingPoint::Bevel, RingNormal::Bevel};

// The rings of a rounded edge lie on its quarter circle at 0, 45 and 90 degrees, from the face to
// the wall.
constexpr Ring faceRing{RingPoint::Outline, RingNormal::Face};
constexpr Ring roundRing{RingPoint::Round, RingNormal::Bevel};
constexpr Ring wallRing{RingPoint::Bevel, RingNormal::Wall};
}  // namespace

template <typename Sink>
void OrvGlyph::EmitFace(float z, const Vector& normal, int isFront, const ExtrusionData& data,
                        Sink& sink) const
{
    const bool mirrored = IsMirrored(data);
    const PointScales scales(data);
    for (int i = 0; i < facePolygons.GetSize(); ++i)
    {
        const VertexIndexPolygon& polygon = *facePolygons.GetElement(i);
        // The clockwise mark holds for a view from +z. The back face is seen from -z, where the
        // same polygon runs the other way.
        const bool clockwise = (polygon.IsClockwiseWinding() != 0) == (isFront != 0);
        sink.FrontFace(clockwise != mirrored ? GL_CW : GL_CCW);

        // Take the pool from a contour. This glyph's own pool is empty when the glyph is a copy,
        // because the contours of a copy use the pool of the original.
        const Vertex* const pool = contours.GetElement(0)->vertices->GetElement(0);
        const unsigned short* const indices = polygon.GetElement(0);
        sink.Begin(static_cast<GLenum>(polygon.GetType()));
        sink.Normal(normal.x, normal.y, normal.z);
        for (int k = 0; k < polygon.GetSize(); ++k)
        {
            tagVERTEXPOINTS points;
            CalculateVertexPoints(scales, &pool[indices[k]], &points, 0, 0, Vertex::VertexEdge);
            EmitVertex<RingPoint::Outline>(data, points, z, sink);
        }
        sink.End();
    }
    sink.FrontFace(GL_CCW);
}

template <typename Sink>
void OrvGlyph::EmitSurface(GlyphSurface surface, const ExtrusionData& data, Sink& sink) const
{
    if (surface == GlyphSurface::Faces)
    {
        EmitFace(data.backZ, Vector(0.0f, 0.0f, -1.0f), 0, data, sink);
        EmitFace(data.frontZ, Vector(0.0f, 0.0f, 1.0f), 1, data, sink);
        return;
    }
    const OutsideIsFront outside(data, sink);
    switch (surface)
    {
        case GlyphSurface::Faces:
            break;
        case GlyphSurface::PlainWall:
            EmitBand<Band<side, plainWall, plainWall>>(data, data.backZ, data.frontZ, sink);
            break;
        case GlyphSurface::WallOfFrontEdge:
            EmitBand<Band<side, bevelledWall, bevelledWall>>(data, data.backZ, data.frontBevelZ,
                                                             sink);
            break;
        case GlyphSurface::WallOfBackEdge:
            EmitBand<Band<side, bevelledWall, bevelledWall>>(data, data.backBevelZ, data.frontZ,
                                                             sink);
            break;
        case GlyphSurface::WallOfBothEdges:
            EmitBand<Band<side, bevelledWall, bevelledWall>>(data, data.backBevelZ,
                                                             data.frontBevelZ, sink);
            break;
        case GlyphSurface::FrontFlat:
            EmitBand<Band<front, flatOuter, flatInner>>(data, data.frontZ, data.frontZ, sink);
            break;
        case GlyphSurface::BackFlat:
            EmitBand<Band<back, flatInner, flatOuter>>(data, data.backZ, data.backZ, sink);
            break;
        case GlyphSurface::FrontBevel:
            EmitBand<Band<front, bevelOuter, bevelInner>>(data, data.frontBevelZ, data.frontZ,
                                                          sink);
            break;
        case GlyphSurface::BackBevel:
            EmitBand<Band<back, bevelInner, bevelOuter>>(data, data.backZ, data.backBevelZ, sink);
            break;
        case GlyphSurface::FrontRound:
            EmitBand<Band<front, roundRing, faceRing>>(data, data.frontRoundZ, data.frontZ, sink);
            EmitBand<Band<front, wallRing, roundRing>>(data, data.frontBevelZ, data.frontRoundZ,
                                                       sink);
            break;
        case GlyphSurface::BackRound:
            EmitBand<Band<back, faceRing, roundRing>>(data, data.backZ, data.backRoundZ, sink);
            EmitBand<Band<back, roundRing, wallRing>>(data, data.backRoundZ, data.backBevelZ, sink);
            break;
    }
}

template void OrvGlyph::EmitSurface(GlyphSurface, const ExtrusionData&, OpenGLSink&) const;
template void OrvGlyph::EmitSurface(GlyphSurface, const ExtrusionData&,
                                    orvane::SurfaceRecorder&) const;

int OrvGlyph::RenderSurface(GlyphSurface surface, const ExtrusionData& data) const
{
    OpenGLSink gl;
    EmitSurface(surface, data, gl);
    return 1;
}

int OrvGlyph::RenderFace(float z, const Vector& normal, int isFront,
                         const ExtrusionData& data) const
{
    OpenGLSink gl;
    EmitFace(z, normal, isFront, data, gl);
    return 1;
}

int OrvGlyph::RenderFaces(const ExtrusionData& data) const
{
    return RenderSurface(GlyphSurface::Faces, data);
}

int OrvGlyph::RenderEdges(int bevelled, float zA, float zB, const ExtrusionData& data) const
{
    OpenGLSink gl;
    const OutsideIsFront outside(data, gl);
    if (bevelled)
    {
        EmitBand<Band<side, bevelledWall, bevelledWall>>(data, zA, zB, gl);
    }
    else
    {
        EmitBand<Band<side, plainWall, plainWall>>(data, zA, zB, gl);
    }
    return 1;
}

int OrvGlyph::RenderEdgesUnbevelled(const ExtrusionData& data) const
{
    return RenderSurface(GlyphSurface::PlainWall, data);
}

int OrvGlyph::RenderEdgesBevelled(const ExtrusionData& data) const
{
    return RenderSurface(GlyphSurface::WallOfBothEdges, data);
}

int OrvGlyph::RenderEdgesFrontBevelOnly(const ExtrusionData& data) const
{
    return RenderSurface(GlyphSurface::WallOfFrontEdge, data);
}

int OrvGlyph::RenderEdgesBackBevelOnly(const ExtrusionData& data) const
{
    return RenderSurface(GlyphSurface::WallOfBackEdge, data);
}

int OrvGlyph::RenderFrontBevelFlat(const ExtrusionData& data) const
{
    return RenderSurface(GlyphSurface::FrontFlat, data);
}

int OrvGlyph::RenderBackBevelFlat(const ExtrusionData& data) const
{
    return RenderSurface(GlyphSurface::BackFlat, data);
}

int OrvGlyph::RenderFrontBevelBevelled(const ExtrusionData& data) const
{
    return RenderSurface(GlyphSurface::FrontBevel, data);
}

int OrvGlyph::RenderBackBevelBevelled(const ExtrusionData& data) const
{
    return RenderSurface(GlyphSurface::BackBevel, data);
}

int OrvGlyph::RenderFrontRoundRounded(const ExtrusionData& data) const
{
    return RenderSurface(GlyphSurface::FrontRound, data);
}

int OrvGlyph::RenderBackRoundRounded(const ExtrusionData& data) const
{
    return RenderSurface(GlyphSurface::BackRound, data);
}

// RenderBevelled does not draw its bevels exactly as the two functions above do. The quads of its
// back bevel run in the opposite direction. In its front bevel the far end of each segment takes
// its offset from the next segment instead of its own. Both differences are required; see
// RenderBevelledTurnsItsBackQuadsAndUsesLeavingOffsetsInFront.
int OrvGlyph::RenderBevelled(const ExtrusionData& data) const
{
    RenderFaces(data);
    OpenGLSink gl;
    const OutsideIsFront outside(data, gl);
    EmitBand<Band<back, bevelOuter, bevelInner>>(data, data.backBevelZ, data.backZ, gl);
    EmitBand<Band<front, bevelOuter, bevelInner, Vertex::NextEdge>>(data, data.frontBevelZ,
                                                                    data.frontZ, gl);
    return 1;
}

// RenderRounded does not draw its bands exactly as the two functions above do. The quads of the
// back edge's band at the face and of the front edge's band at the wall run in the opposite
// direction. That is required; see RenderRoundedTurnsTheBackFaceBandAndTheFrontWallBand.
int OrvGlyph::RenderRounded(const ExtrusionData& data) const
{
    RenderFaces(data);
    RenderEdgesBevelled(data);
    OpenGLSink gl;
    const OutsideIsFront outside(data, gl);
    EmitBand<Band<back, roundRing, faceRing>>(data, data.backRoundZ, data.backZ, gl);
    EmitBand<Band<back, roundRing, wallRing>>(data, data.backRoundZ, data.backBevelZ, gl);
    EmitBand<Band<front, roundRing, faceRing>>(data, data.frontRoundZ, data.frontZ, gl);
    EmitBand<Band<front, roundRing, wallRing>>(data, data.frontRoundZ, data.frontBevelZ, gl);
    return 1;
}
