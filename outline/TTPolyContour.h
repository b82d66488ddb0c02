// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Line.h"
#include "geometry/Vector.h"
#include "outline/RingIndex.h"
#include "outline/VertexArray.h"
#include "platform/Export.h"

#include <cstdint>

class TTContour;

/// One contour of a flattened glyph: a closed run of consecutive vertices in the glyph's pool, a
/// plain value. Vertex i, from 0, is element firstVertexIndex + i of the pool; the index that the
/// operations take is always i. Copies refer to the same vertices.
///
/// vertexCount is lastVertexIndex - firstVertexIndex + 1: the two setters keep it so.
class ORVANE_API TTPolyContour
{
public:
    int GetVertexCount() const { return vertexCount; }
    int GetFirstVertexIndex() const { return firstVertexIndex; }
    /// The first vertex' index, not the last's: callers count with GetVertexCount. Meant so; see
    /// LastVertexIndexAnswersWithTheFirst.
    int GetLastVertexIndex() const { return firstVertexIndex; }

    /// The vertex after \p index, 0 after the last; -1 for one out of range.
    int GetNextVertexIndex(int index) const { return NextRingIndex(index, vertexCount); }
    /// The vertex before \p index, the last before 0; -1 for one out of range.
    int GetPreviousVertexIndex(int index) const { return PreviousRingIndex(index, vertexCount); }

    /// A pointer into the pool, which moves when the pool grows; null out of range.
    Vertex* GetVertexElement(int index) const
    {
        return IsVertex_(index) ? vertices->GetElement(firstVertexIndex + index) : nullptr;
    }
    Vertex* GetNextVertexElement(int index) const
    {
        return GetVertexElement(GetNextVertexIndex(index));
    }
    Vertex* GetPreviousVertexElement(int index) const
    {
        return GetVertexElement(GetPreviousVertexIndex(index));
    }

    /// Copies; a default vertex out of range.
    Vertex GetVertex(int index) const;
    Vertex GetNextVertex(int index) const { return GetVertex(GetNextVertexIndex(index)); }
    Vertex GetPreviousVertex(int index) const { return GetVertex(GetPreviousVertexIndex(index)); }

    /// The vertex' place with z 0; zero out of range.
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

    /// The averaged normal; zero out of range.
    Vector GetVertexNormal(int index) const;

    /// The edge from the vertex to the next; a default line out of range.
    Line GetEdge(int index) const;
    Line GetNextEdge(int index) const { return GetEdge(GetNextVertexIndex(index)); }
    Line GetPreviousEdge(int index) const { return GetEdge(GetPreviousVertexIndex(index)); }

    void SetFirstVertexIndex(int index);
    void SetLastVertexIndex(int index);
    /// \p pool is borrowed and must outlive the contour and its copies.
    void SetVerticies(VertexArray* pool) { vertices = pool; }
    /// Does nothing out of range.
    void SetVertex(int index, const Vertex& vertex);
    /// Stores x and y without their fractions. 0 out of range.
    int SetVertexPoint(int index, const Vector& point);

    /// Appends the contour's vertices to the pool and takes them as its own. A candidate becomes a
    /// vertex when it lies more than 0.002 x \p scale from the last one; the search begins at the
    /// contour's last point, so of an end that repeats the start, it is the start that is dropped.
    void FromTTContour(const TTContour& contour, float scale);

    /// The point at \p t, 0 to 1, of the quadratic Bezier curve from \p p0 to \p p2 with control
    /// point \p p1, in x and y; z is that of \p p0.
    Vector ApproximateQuadraticSpline(const Vector& p0, const Vector& p1, const Vector& p2,
                                      float t) const;

    /// Gives each vertex the normals of its edges, their average, its miter and its marks. A vertex
    /// is smooth when it or a neighbour was sampled from a spline, and sharp otherwise, whatever
    /// the angle. 0 with fewer than 2 vertices.
    int CalculateVertexNormals();

    /// Moves the vertex by 2 units along its averaged normal, to the side where the next vertex
    /// lies. Normals stay as they are.
    void AdjustDuplicateVertex(int index);
    /// For every two vertices at the same place, in order, moves the later one. A vertex that was
    /// moved counts where it is now.
    void CorrectDuplicateVerticies();
    /// Moves every vertex that lies at \p point.
    void CorrectDuplicateVerticies(const Vector& point);

    std::int32_t firstVertexIndex = -1;
    std::int32_t reserved = 0;  ///< copied, and used by nothing
    std::int32_t lastVertexIndex = -1;
    std::int32_t vertexCount = 0;
    VertexArray* vertices = nullptr;  ///< borrowed; null until SetVerticies

private:
    bool IsVertex_(int index) const { return index >= 0 && index < vertexCount; }
};
