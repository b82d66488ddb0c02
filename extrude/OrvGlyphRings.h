// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The inside of the drawing routines: what they all emit, inline because it runs for every vertex.

#include "extrude/ExtrusionData.h"
#include "extrude/OrvGlyph.h"
#include "extrude/VertexPoints.h"
#include "platform/OpenGL.h"

/// Which of a vertex's places a ring runs along.
enum class RingPoint
{
    Outline,
    Round,
    Bevel
};

/// What the normals of a ring are.
enum class RingNormal
{
    Face,   ///< that of the face beside it
    Bevel,  ///< half-way between the face and the wall
    Wall
};

/// A ring is the outline moved to one of its places, with a rule for its normals. Its z comes with
/// the draw.
struct Ring
{
    RingPoint point;
    RingNormal normal;
};

/// A band of quads from ring A to ring B, beside the front or the back face.
/// \tparam EndEdge whose offset the end of a segment takes.
template <Vertex::Faces Face, Ring A, Ring B, Vertex::Edges EndEdge = Vertex::PreviousEdge>
struct Band
{
    static constexpr Vertex::Faces face = Face;
    static constexpr Ring a = A;
    static constexpr Ring b = B;
    static constexpr Vertex::Edges endEdge = EndEdge;
};

/// Makes the outside of a letter the front while it lives: scaling it by a negative area reverses
/// all windings.
class OutsideIsFront
{
public:
    explicit OutsideIsFront(const ExtrusionData& data)
    {
        glFrontFace(IsMirrored(data) ? GL_CW : GL_CCW);
    }
    ~OutsideIsFront() { glFrontFace(GL_CCW); }
    OutsideIsFront(const OutsideIsFront&) = delete;
    OutsideIsFront& operator=(const OutsideIsFront&) = delete;

    static bool IsMirrored(const ExtrusionData& data)
    {
        return !(double{data.scale.x} * data.scale.y >= 0);
    }
};

/// offset x factor + from, by component.
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

/// One vertex at a place and z, with its texture coordinate when texturing.
template <RingPoint Point>
void EmitVertex(const ExtrusionData& data, const tagVERTEXPOINTS& points, float z)
{
    const auto choose = [](const Vector2D& outline, const Vector2D& round, const Vector2D& bevel) {
        return Point == RingPoint::Outline ? outline : Point == RingPoint::Round ? round : bevel;
    };
    const Vector2D place = choose(points.point, points.roundPoint, points.bevelPoint);
    if (data.ShouldTexture())
    {
        const Vector2D unscaled =
            choose(points.texPoint, points.texRoundPoint, points.texBevelPoint);
        const Vector2D coordinate =
            (data.ShouldScaleTextureWithObject() ? place : unscaled) * data.textureRepeat;
        glTexCoord2fv(coordinate);
    }
    glVertex3f(place.x, place.y, z);
}

inline void EmitFaceNormal(Vertex::Faces face)
{
    glNormal3f(0.0f, 0.0f, face == Vertex::FrontFace ? 1.0f : -1.0f);
}

template <RingNormal Normal, Vertex::Faces Face>
void EmitNormal(const Vertex& vertex, Vertex::Edges edge)
{
    if constexpr (Normal == RingNormal::Face)
    {
        EmitFaceNormal(Face);
    }
    else
    {
        const Vector normal = Normal == RingNormal::Bevel ? vertex.GetBevelNormal(Face, edge)
                                                          : vertex.GetEdgeNormal(edge);
        glNormal3f(normal.x, normal.y, normal.z);
    }
}

/// Joins ring a to ring b with one quad per outline segment, round every contour, each contour
/// between its own glBegin and glEnd.
///
/// Quads run a[i], b[i], b[j], a[j], j following i and the last joining the first. Normals and
/// offsets are taken per segment end, so smooth curves stay smooth and corners sharp. A normal is
/// emitted where it can change: once per contour when both rings have the face's, once per segment
/// end when they share another rule, and else for each vertex.
template <typename Band>
void OrvGlyph::EmitRing_(const ExtrusionData& data, float zA, float zB) const
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
        glBegin(GL_QUADS);
        if constexpr (oneNormalPerContour)
        {
            EmitFaceNormal(Band::face);
        }
        for (int i = 0; i < count; ++i)
        {
            const Vertex& start = first[i];
            const Vertex& end = first[i + 1 < count ? i + 1 : 0];
            tagVERTEXPOINTS points;

            CalculateVertexPoints(scales, &start, &points, wantBevel, wantRound, Vertex::NextEdge);
            if constexpr (!oneNormalPerContour)
            {
                EmitNormal<a.normal, Band::face>(start, Vertex::NextEdge);
            }
            EmitVertex<a.point>(data, points, zA);
            if constexpr (!oneNormalPerEnd)
            {
                EmitNormal<b.normal, Band::face>(start, Vertex::NextEdge);
            }
            EmitVertex<b.point>(data, points, zB);

            CalculateVertexPoints(scales, &end, &points, wantBevel, wantRound, Band::endEdge);
            if constexpr (!oneNormalPerContour)
            {
                EmitNormal<b.normal, Band::face>(end, Vertex::PreviousEdge);
            }
            EmitVertex<b.point>(data, points, zB);
            if constexpr (!oneNormalPerEnd)
            {
                EmitNormal<a.normal, Band::face>(end, Vertex::PreviousEdge);
            }
            EmitVertex<a.point>(data, points, zA);
        }
        glEnd();
    }
}
