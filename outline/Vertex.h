// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Point.h"
#include "geometry/Truncate.h"
#include "geometry/Vector.h"
#include "geometry/Vector2D.h"
#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdint>

/// One corner of a flattened contour. It stores its position, in whole outline units, and three
/// unit normals: the normal of the edge that arrives at the corner, the normal of the edge that
/// leaves it, and the average of the two. The normals lie in the plane of the letter and point out
/// of the filled area. Their x and y are stored as 16-bit integers in units of 1/10000.
///
/// At a corner, the bevels of the two edges meet in a tip, the miter, which lies further from the
/// corner than the bevels are wide. A corner is marked as smooth when it belongs to a flattened
/// curve, and as interior when it is a sharp notch in the letter, whose bevels get no miter.
///
/// The getters are inline, because drawing calls them for every vertex.
class ORVANE_API Vertex
{
public:
    /// Selects one of the normals.
    enum Edges : int
    {
        PreviousEdge = 1,  ///< the normal of the edge that arrives
        VertexEdge = 2,    ///< the average of the two edges' normals
        NextEdge = 3       ///< the normal of the edge that leaves
    };

    /// The face of the letter that a bevel adjoins, given by the face's normal.
    enum Faces : int
    {
        BackFace = 1,   ///< (0, 0, -1)
        SideFace = 2,   ///< the wall; its normal is that of the edge
        FrontFace = 3,  ///< (0, 0, 1)
    };

    Vector2D GetPoint() const { return Vector2D(point.x, point.y); }
    Vector GetNormal(Edges edge) const { return UnitNormal(this->*NormalField(edge)); }

    /// The normal of the side wall at this corner. It is the average normal if the corner is smooth
    /// and not interior, otherwise the normal of \p edge.
    Vector GetEdgeNormal(Edges edge) const
    {
        constexpr DWORD both = useThisNormalFlag | interiorFlag;
        return UnitNormal((flags & both) == useThisNormalFlag ? vertexNormal
                                                              : StoredEdgeNormal(edge));
    }

    /// The normal of a 45 degree bevel at this corner, half-way between the normal of the face and
    /// the normal of the wall. Every smooth corner uses the average normal for the wall here, even
    /// a corner that is marked as interior. GetEdgeNormal uses the normal of \p edge there. The
    /// difference is required; see BevelNormalIgnoresTheInteriorMark.
    Vector GetBevelNormal(Faces face, Edges edge) const
    {
        const Vector base =
            UnitNormal(ShouldUseThisNormal() ? vertexNormal : StoredEdgeNormal(edge));
        Vector normal = (FaceNormal(face, base) + base) / 2.0f;
        normal.Normalize();
        return normal;
    }

    /// The offset from the outline to the outer ring of a bevel, in the plane of the letter. An
    /// interior corner moves along the normal of \p edge. Any other corner moves along the average
    /// normal, further than \p distance by its miter, so that the bevels of both edges are \p
    /// distance wide.
    Vector2D GetBevelPoint(float distance, Edges edge) const
    {
        if (IsInterior())
        {
            const Point2D& normal = StoredEdgeNormal(edge);
            return Vector2D(distance * normal.x * storedUnit, distance * normal.y * storedUnit);
        }
        const float reach = miterScale * storedUnit * distance;
        return Vector2D(reach * (vertexNormal.x * storedUnit),
                        reach * (vertexNormal.y * storedUnit));
    }

    /// The offset from the outline to the middle ring of a rounded edge, which lies at 45 degrees
    /// on a quarter circle: 0.7071 of the bevel's offset.
    Vector2D GetRoundPoint(float distance, Edges edge) const
    {
        return GetBevelPoint(distance, edge) * 0.7071f;
    }

    int ShouldUseThisNormal() const { return flags & useThisNormalFlag; }
    int IsApproximate() const { return flags & approximateFlag; }
    int IsInterior() const { return flags & interiorFlag; }

    /// Stores the whole parts of x and y.
    void SetPoint(const Vector& newPoint)
    {
        point.SetPoint(TruncateToShort(newPoint.x), TruncateToShort(newPoint.y));
    }
    /// Stores x and y in units of 1/10000, rounded towards zero. z is not stored.
    void SetNormal(const Vector& normal, Edges edge);

    void SetUseThisNormal() { flags |= useThisNormalFlag; }
    void ClearUseThisNormal() { flags &= ~useThisNormalFlag; }
    void SetApproximate() { flags |= approximateFlag; }
    void ClearApproximate() { flags &= ~approximateFlag; }
    void SetInterior() { flags |= interiorFlag; }
    void ClearInterior() { flags &= ~interiorFlag; }

    /// Computes the average normal, the miter and the interior mark from the normals of the two
    /// edges.
    void CalculateVertex();

    /// How far a bevel reaches at this corner, as a multiple of the bevel's width, in units of
    /// 1/10000: 10000 to 40000, that is 1 to 4 widths. 0 until CalculateVertex has run.
    std::int32_t miterScale = 0;
    /// Bit 0 marks a smooth corner, whose wall uses the average normal. Bit 1 marks an approximate
    /// corner, which was sampled from a curve. Bit 2 marks an interior corner, a sharp notch
    /// without a miter.
    DWORD flags = 0;
    Point2D nextEdgeNormal;
    Point2D vertexNormal;
    Point2D point;
    Point2D previousEdgeNormal;

private:
    static constexpr DWORD useThisNormalFlag = 0x1;
    static constexpr DWORD approximateFlag = 0x2;
    static constexpr DWORD interiorFlag = 0x4;
    static constexpr float storedUnit = 0.0001f;

    static Vector UnitNormal(const Point2D& stored)
    {
        return Vector(stored.x * storedUnit, stored.y * storedUnit, 0.0f);
    }

    static Vector FaceNormal(Faces face, const Vector& edgeNormal)
    {
        switch (face)
        {
            case BackFace:
                return Vector(0.0f, 0.0f, -1.0f);
            case SideFace:
                return edgeNormal;
            case FrontFace:
                return Vector(0.0f, 0.0f, 1.0f);
            default:
                return Vector();
        }
    }

    const Point2D& StoredEdgeNormal(Edges edge) const
    {
        return edge == PreviousEdge ? previousEdgeNormal : nextEdgeNormal;
    }

    /// The member that stores the normal of \p edge.
    static Point2D Vertex::*NormalField(Edges edge)
    {
        switch (edge)
        {
            case PreviousEdge:
                return &Vertex::previousEdgeNormal;
            case NextEdge:
                return &Vertex::nextEdgeNormal;
            default:
                return &Vertex::vertexNormal;
        }
    }
};
