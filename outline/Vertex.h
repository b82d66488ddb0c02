// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Point.h"
#include "geometry/Truncate.h"
#include "geometry/Vector.h"
#include "geometry/Vector2D.h"
#include "platform/Export.h"
#include "platform/Types.h"

#include <cstdint>

/// One corner of a flattened contour, a plain value: its place in whole outline units, and the
/// normals of its two edges and their average, as 16-bit numbers of 1/10000. The normals point out
/// of the filled area.
///
/// The getters are inline because drawing asks each vertex for its points and normals.
class ORVANE_API Vertex
{
public:
    /// Which normal.
    enum Edges : int
    {
        PreviousEdge = 1,  ///< of the edge that arrives
        VertexEdge = 2,    ///< the average
        NextEdge = 3       ///< of the edge that leaves
    };

    /// Which way the faces beside a bevel look.
    enum Faces : int
    {
        BackFace = 1,   ///< (0, 0, -1)
        SideFace = 2,   ///< as the edge's normal
        FrontFace = 3,  ///< (0, 0, 1)
    };

    Vector2D GetPoint() const { return Vector2D(point.x, point.y); }
    Vector GetNormal(Edges edge) const { return UnitNormal_(this->*NormalField_(edge)); }

    /// The normal with which a side wall ends here: of the edge asked for at a sharp corner, the
    /// average on a curve that is not interior.
    Vector GetEdgeNormal(Edges edge) const
    {
        constexpr DWORD both = useThisNormalFlag_ | interiorFlag_;
        return UnitNormal_((flags & both) == useThisNormalFlag_ ? vertexNormal : EdgeNormal_(edge));
    }

    /// The normal half-way between a face and the edge; the average stands for the edge on any
    /// curve. Interior corners are no exception here, unlike GetEdgeNormal: meant so, see
    /// BevelNormalIgnoresTheInteriorMark.
    Vector GetBevelNormal(Faces face, Edges edge) const
    {
        const Vector base = UnitNormal_(ShouldUseThisNormal() ? vertexNormal : EdgeNormal_(edge));
        Vector normal = (FaceNormal_(face, base) + base) / 2.0f;
        normal.Normalize();
        return normal;
    }

    /// How far the outline moves in its plane for a bevel \p distance wide.
    Vector2D GetBevelPoint(float distance, Edges edge) const
    {
        if (IsInterior())
        {
            const Point2D& normal = EdgeNormal_(edge);
            return Vector2D(distance * normal.x * unit_, distance * normal.y * unit_);
        }
        const float reach = miterScale * unit_ * distance;
        return Vector2D(reach * (vertexNormal.x * unit_), reach * (vertexNormal.y * unit_));
    }

    /// The same for the middle ring of a rounded edge, at 45 degrees.
    Vector2D GetRoundPoint(float distance, Edges edge) const
    {
        return GetBevelPoint(distance, edge) * 0.7071f;
    }

    int ShouldUseThisNormal() const { return flags & useThisNormalFlag_; }
    int IsApproximate() const { return flags & approximateFlag_; }
    int IsInterior() const { return flags & interiorFlag_; }

    /// Drops the fractions.
    void SetPoint(const Vector& newPoint)
    {
        point.SetPoint(TruncateToShort(newPoint.x), TruncateToShort(newPoint.y));
    }
    /// Stores x and y in 1/10000, without what is beyond; drops z.
    void SetNormal(const Vector& normal, Edges edge);

    void SetUseThisNormal() { flags |= useThisNormalFlag_; }
    void ClearUseThisNormal() { flags &= ~useThisNormalFlag_; }
    void SetApproximate() { flags |= approximateFlag_; }
    void ClearApproximate() { flags &= ~approximateFlag_; }
    void SetInterior() { flags |= interiorFlag_; }
    void ClearInterior() { flags &= ~interiorFlag_; }

    /// From the normals of the two edges: the average, the miter and the interior mark.
    void CalculateVertex();

    /// 1/10000 of the factor that keeps a bevel's width round this corner; at most four. 0 until
    /// CalculateVertex.
    std::int32_t miterScale = 0;
    /// Bit 0: use the average (the corner is smooth). Bit 1: approximate, sampled from a spline.
    /// Bit 2: interior, a sharp concave corner that takes no miter.
    DWORD flags = 0;
    Point2D nextEdgeNormal;
    Point2D vertexNormal;
    Point2D point;
    Point2D previousEdgeNormal;

private:
    static constexpr DWORD useThisNormalFlag_ = 0x1;
    static constexpr DWORD approximateFlag_ = 0x2;
    static constexpr DWORD interiorFlag_ = 0x4;
    static constexpr float unit_ = 0.0001f;

    static Vector UnitNormal_(const Point2D& stored)
    {
        return Vector(stored.x * unit_, stored.y * unit_, 0.0f);
    }

    static Vector FaceNormal_(Faces face, const Vector& edgeNormal)
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

    const Point2D& EdgeNormal_(Edges edge) const
    {
        return edge == PreviousEdge ? previousEdgeNormal : nextEdgeNormal;
    }

    /// The field behind GetNormal and SetNormal.
    static Point2D Vertex::*NormalField_(Edges edge)
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
