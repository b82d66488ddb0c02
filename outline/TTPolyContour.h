// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Line.h"
#include "geometry/Vector.h"
#include "outline/RingIndex.h"
#include "outline/VertexArray.h"
#include "platform/Export.h"

#include <cstdint>

class TTContour;

/// One contour of a flattened glyph. Its vertices lie one after the other in the glyph's vertex
/// pool: vertex i, counted from 0, is element firstVertexIndex + i of the pool. firstVertexIndex
/// and lastVertexIndex are positions in the pool. Every other index in this class is the number i
/// of a vertex within the contour. The contour runs from its last vertex back to vertex 0. Copies
/// of a contour refer to the same vertices.
///
/// vertexCount is always lastVertexIndex - firstVertexIndex + 1. SetFirstVertexIndex and
/// SetLastVertexIndex compute it.
class ORVANE_API TTPolyContour
{
public:
    int GetVertexCount() const { return vertexCount; }
    int GetFirstVertexIndex() const { return firstVertexIndex; }
    /// Returns the same as GetFirstVertexIndex, not the last vertex's index. That is required; see
    /// GetLastVertexIndexReturnsTheFirstIndex. Use GetVertexCount to count the vertices.
    int GetLastVertexIndex() const { return firstVertexIndex; }

    // In all functions below, an index is out of range when it is not 0 to vertexCount - 1.

    /// The index after \p index. The last index is followed by 0. Returns -1 when \p index is out
    /// of range.
    int GetNextVertexIndex(int index) const { return NextRingIndex(index, vertexCount); }
    /// The index before \p index. 0 is preceded by the last index. Returns -1 when \p index is out
    /// of range.
    int GetPreviousVertexIndex(int index) const { return PreviousRingIndex(index, vertexCount); }

    /// A pointer into the pool, valid until the pool grows. Null when \p index is out of range.
    Vertex* GetVertexElement(int index) const
    {
        return IsVertex(index) ? vertices->GetElement(firstVertexIndex + index) : nullptr;
    }
    Vertex* GetNextVertexElement(int index) const
    {
        return GetVertexElement(GetNextVertexIndex(index));
    }
    Vertex* GetPreviousVertexElement(int index) const
    {
        return GetVertexElement(GetPreviousVertexIndex(index));
    }

    /// Returns a copy of a vertex, or a default vertex when \p index is out of range.
    Vertex GetVertex(int index) const;
    Vertex GetNextVertex(int index) const { return GetVertex(GetNextVertexIndex(index)); }
    Vertex GetPreviousVertex(int index) const { return GetVertex(GetPreviousVertexIndex(index)); }

    /// Returns the position of a vertex, with z = 0, or the zero vector when \p index is out of
    /// range.
    Vector GetVertexOutlinePoint(int index) const
    {
        const Vertex* const vertex = GetVertexElement(index);
        return vertex != nullptr ? Vector(vertex->point) : Vector();
    }
    Vector GetNextVertexOutlinePoint(int index) const
    {
        return GetVertexOutlinePoint(GetNextVertexIndex(index));
    }
    Vector GetPreviousVertexOutlinePoint(int index) const
    {
        return GetVertexOutlinePoint(GetPreviousVertexIndex(index));
    }

    /// Returns the average of the normals of a vertex's two edges, or the zero vector when \p index
    /// is out of range.
    Vector GetVertexNormal(int index) const;

    /// Returns the edge from a vertex to the next, or a default line when \p index is out of range.
    Line GetEdge(int index) const;
    Line GetNextEdge(int index) const { return GetEdge(GetNextVertexIndex(index)); }
    Line GetPreviousEdge(int index) const { return GetEdge(GetPreviousVertexIndex(index)); }

    void SetFirstVertexIndex(int index);
    void SetLastVertexIndex(int index);
    /// \p pool is borrowed and must outlive the contour and its copies.
    void SetVerticies(VertexArray* pool) { vertices = pool; }
    /// Does nothing when \p index is out of range.
    void SetVertex(int index, const Vertex& vertex);
    /// Sets a vertex's position to the whole parts of x and y. Returns 0 when \p index is out of
    /// range.
    int SetVertexPoint(int index, const Vector& point);

    /// Flattens a contour, appends the resulting vertices to the pool, makes them this contour's
    /// vertices and calls CalculateVertexNormals.
    ///
    /// A point of the flattened curve becomes a vertex when it lies more than 0.002 x \p scale
    /// outline units from the vertex before it. Point 0 is compared with the contour's last point,
    /// so when a contour ends where it starts, point 0 is dropped and the last point is kept.
    /// \param scale outline units per em.
    void FromTTContour(const TTContour& contour, float scale);

    /// The point of a quadratic Bezier curve from \p p0 to \p p2 with the control point \p p1. x
    /// and y lie on the curve; z is copied from \p p0.
    /// \param t from 0 at p0 to 1 at p2.
    Vector ApproximateQuadraticSpline(const Vector& p0, const Vector& p1, const Vector& p2,
                                      float t) const;

    /// Computes each vertex's two edge normals, their average, the miter, and the smooth and
    /// interior marks. A vertex is marked as smooth when it or one of its two neighbours was
    /// sampled from a curve; otherwise it is a sharp corner, whatever its angle. Returns 0 and does
    /// nothing when there are fewer than 2 vertices.
    int CalculateVertexNormals();

    /// Moves a vertex by 2 outline units along its average normal, forwards or backwards, to the
    /// side where the next vertex lies; backwards when the next vertex lies at a right angle to the
    /// normal. Normals do not change.
    void AdjustDuplicateVertex(int index);
    /// Compares all pairs of vertices in order. When two vertices lie at the same place, moves the
    /// later of the two and compares it at its new place from then on.
    void CorrectDuplicateVerticies();
    /// Moves every vertex that lies at \p point.
    void CorrectDuplicateVerticies(const Vector& point);

    std::int32_t firstVertexIndex = -1;
    std::int32_t reserved = 0;  ///< not used, but copied
    std::int32_t lastVertexIndex = -1;
    std::int32_t vertexCount = 0;
    VertexArray* vertices = nullptr;  ///< borrowed; null until SetVerticies

private:
    bool IsVertex(int index) const { return index >= 0 && index < vertexCount; }
};
