// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// How OrvGlyph emits the sides of a letter: rings, the bands of quads between them, vertices and
/// normals. Inline, because the code runs for every vertex of every draw. Only the sources of
/// OrvGlyph include this header. A sink takes what is emitted; see extrude/SurfaceSink.h.
///
/// A ring is one closed run around a contour at one z. A band joins two rings with quads. Every
/// side surface of a letter is a band: the wall, a bevel, a flat band in the plane of a face, and
/// each of the two bands of a rounded edge.

#include "extrude/ExtrusionData.h"
#include "extrude/OrvGlyph.h"
#include "extrude/SurfaceSink.h"
#include "extrude/VertexPoints.h"

/// Which outline a ring runs along; see tagVERTEXPOINTS.
enum class RingPoint
{
    Outline,  ///< the letter's own outline
    Round,    ///< the outline at the middle of a rounded edge
    Bevel     ///< the outline at the wall
};

/// Where the normals of a ring's vertices point.
enum class RingNormal
{
    Face,   ///< out of the front or back face, along z
    Bevel,  ///< half-way between Face and Wall
    Wall    ///< out of the wall, in the plane of the letter
};

/// The outline and the normals of a ring. Its z is not a member, because z is known only at run
/// time; it is an argument of EmitBand.
struct Ring
{
    RingPoint point;
    RingNormal normal;
};

/// The properties of a band that are known at compile time.
/// \tparam nextFace the face next to the band, which decides where Face and Bevel normals point;
/// SideFace for the wall.
/// \tparam firstRing the ring where each quad begins and ends.
/// \tparam secondRing the other ring.
/// \tparam farEdge the edge that decides how the vertex at the far end of a segment is moved
/// outward. This is PreviousEdge, the segment itself, except in RenderBevelled.
template <Vertex::Faces nextFace, Ring firstRing, Ring secondRing,
          Vertex::Edges farEdge = Vertex::PreviousEdge>
struct Band
{
    static constexpr Vertex::Faces face = nextFace;
    static constexpr Ring a = firstRing;
    static constexpr Ring b = secondRing;
    static constexpr Vertex::Edges endEdge = farEdge;
};

/// Whether a negative scale in x or y, but not both, mirrors a letter and so reverses all its
/// windings.
inline bool IsMirrored(const ExtrusionData& data)
{
    return !(double{data.scale.x} * data.scale.y >= 0);
}

/// As long as an object lives, the sink treats the outside of a letter as its front: GL_CW is the
/// front of a letter that is mirrored, GL_CCW that of any other. The destructor sets GL_CCW.
template <typename Sink>
class OutsideIsFront
{
public:
    OutsideIsFront(const ExtrusionData& data, Sink& sink) : sink_(sink)
    {
        sink_.FrontFace(IsMirrored(data) ? GL_CW : GL_CCW);
    }
    ~OutsideIsFront() { sink_.FrontFace(GL_CCW); }
    OutsideIsFront(const OutsideIsFront&) = delete;
    OutsideIsFront& operator=(const OutsideIsFront&) = delete;

private:
    Sink& sink_;
};

/// Returns \p from + \p factor * \p offset, component by component.
inline Vector2D Moved(const Vector2D& from, const Vector2D& factor, const Vector2D& offset)
{
    return Vector2D(factor.x * offset.x + from.x, factor.y * offset.y + from.y);
}

inline int OrvGlyph::CalculateVertexPoints(const PointScales& scales, const Vertex* vertex,
                                           tagVERTEXPOINTS* points, int wantBevel, int wantRound,
                                           Vertex::Edges edges) const
{
    const Vector2D place = vertex->GetPoint() * inverseScale;
    points->point = Vector2D(place.x * scales.scale.x, place.y * scales.scale.y);
    if (scales.wantTexPoints)
    {
        points->texPoint = Vector2D(scales.sign.x * place.x, scales.sign.y * place.y);
    }
    if (wantBevel)
    {
        const Vector2D offset = vertex->GetBevelPoint(scales.bevelDepth, edges);
        points->bevelPoint = Moved(points->point, scales.bevelScale, offset);
        if (scales.wantTexPoints)
        {
            points->texBevelPoint = Moved(points->texPoint, scales.inverseScale, offset);
        }
    }
    if (wantRound)
    {
        const Vector2D offset = vertex->GetRoundPoint(scales.bevelDepth, edges);
        points->roundPoint = Moved(points->point, scales.bevelScale, offset);
        if (scales.wantTexPoints)
        {
            points->texRoundPoint = Moved(points->texPoint, scales.inverseScale, offset);
        }
    }
    return 1;
}

/// Emits the texture coordinate of the point on the outline \p outline. A function of its own,
/// which is not inlined: few draws are textured, and all others are faster without it between.
template <RingPoint outline, typename Sink>
[[gnu::noinline]] void EmitTexCoord(const ExtrusionData& data, const tagVERTEXPOINTS& points,
                                    const Vector2D& place, Sink& sink)
{
    const Vector2D unscaled = outline == RingPoint::Outline ? points.texPoint
                              : outline == RingPoint::Round ? points.texRoundPoint
                                                            : points.texBevelPoint;
    const Vector2D coordinate =
        (data.ShouldScaleTextureWithObject() ? place : unscaled) * data.textureRepeat;
    sink.TexCoord(coordinate);
}

/// Emits one vertex: the point on the outline \p outline, at \p z. When the draw is textured, the
/// texture coordinate comes first.
template <RingPoint outline, typename Sink>
inline void EmitVertex(const ExtrusionData& data, const tagVERTEXPOINTS& points, float z,
                       Sink& sink)
{
    const Vector2D& place = outline == RingPoint::Outline ? points.point
                            : outline == RingPoint::Round ? points.roundPoint
                                                          : points.bevelPoint;
    if (data.ShouldTexture())
    {
        EmitTexCoord<outline>(data, points, place, sink);
    }
    sink.Vertex(place.x, place.y, z);
}

template <typename Sink>
void EmitFaceNormal(Vertex::Faces face, Sink& sink)
{
    sink.Normal(0.0f, 0.0f, face == Vertex::FrontFace ? 1.0f : -1.0f);
}

template <RingNormal rule, Vertex::Faces face, typename Sink>
void EmitNormal(const Vertex& vertex, Vertex::Edges edge, Sink& sink)
{
    if constexpr (rule == RingNormal::Face)
    {
        EmitFaceNormal(face, sink);
    }
    else
    {
        const Vector normal = rule == RingNormal::Bevel ? vertex.GetBevelNormal(face, edge)
                                                        : vertex.GetEdgeNormal(edge);
        sink.Normal(normal.x, normal.y, normal.z);
    }
}

/// Emits a band: joins ring a at \p zA to ring b at \p zB with one quad for each segment of the
/// outline, around every contour. Each contour is one Begin and End.
///
/// The quad of the segment from vertex i to the next vertex j has the corners a[i], b[i], b[j],
/// a[j] in this order. The last segment of a contour ends at its first vertex.
///
/// Each end of a segment asks its vertex for the offset and the normal that belong to this segment.
/// On a smooth curve, the two segments that meet at a vertex get the same normal there, so the
/// shading is smooth; at a sharp corner each gets its own, so the corner stays visible.
///
/// Normal is called only where the normal can change: once for each contour when both rings
/// have Face normals, once for each segment end when both rings share another rule, otherwise once
/// for each vertex.
template <typename Band, typename Sink>
void OrvGlyph::EmitBand(const ExtrusionData& data, float zA, float zB, Sink& sink) const
{
    constexpr Ring a = Band::a;
    constexpr Ring b = Band::b;
    constexpr bool wantBevel = a.point == RingPoint::Bevel || b.point == RingPoint::Bevel;
    constexpr bool wantRound = a.point == RingPoint::Round || b.point == RingPoint::Round;
    constexpr bool oneNormalPerEnd = a.normal == b.normal;
    constexpr bool oneNormalPerContour = oneNormalPerEnd && a.normal == RingNormal::Face;

    const PointScales scales(data);
    for (int c = 0; c < contourCount; ++c)
    {
        const TTPolyContour& contour = *contours.GetElement(c);
        const int count = contour.GetVertexCount();
        const Vertex* const first = contour.GetVertexElement(0);
        sink.Begin(GL_QUADS);
        if constexpr (oneNormalPerContour)
        {
            EmitFaceNormal(Band::face, sink);
        }
        for (int i = 0; i < count; ++i)
        {
            const Vertex& start = first[i];
            const Vertex& end = first[i + 1 < count ? i + 1 : 0];
            tagVERTEXPOINTS points;

            CalculateVertexPoints(scales, &start, &points, wantBevel, wantRound, Vertex::NextEdge);
            if constexpr (!oneNormalPerContour)
            {
                EmitNormal<a.normal, Band::face>(start, Vertex::NextEdge, sink);
            }
            EmitVertex<a.point>(data, points, zA, sink);
            if constexpr (!oneNormalPerEnd)
            {
                EmitNormal<b.normal, Band::face>(start, Vertex::NextEdge, sink);
            }
            EmitVertex<b.point>(data, points, zB, sink);

            CalculateVertexPoints(scales, &end, &points, wantBevel, wantRound, Band::endEdge);
            if constexpr (!oneNormalPerContour)
            {
                EmitNormal<b.normal, Band::face>(end, Vertex::PreviousEdge, sink);
            }
            EmitVertex<b.point>(data, points, zB, sink);
            if constexpr (!oneNormalPerEnd)
            {
                EmitNormal<a.normal, Band::face>(end, Vertex::PreviousEdge, sink);
            }
            EmitVertex<a.point>(data, points, zA, sink);
        }
        sink.End();
    }
}
