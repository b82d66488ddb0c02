// SPDX-License-Identifier: MIT
#include "outline/TTPolyContour.h"

#include "outline/DuplicateSearch.h"
#include "outline/TTContour.h"

#include <span>

namespace
{

Vector Place(const TTPoint& point)
{
    return Vector(point.GetX(), point.GetY(), 0.0f);
}

Vector Midpoint(const TTPoint& a, const TTPoint& b)
{
    return (Place(a) + Place(b)) / 2.0f;
}

bool IsOnCurve(const TTPoint& point)
{
    return point.GetType() == TTPoint::OnCurve;
}

/// Turns points along a contour into vertices of a pool, but for those too close to the last.
class VertexEmitter
{
public:
    VertexEmitter(VertexArray& pool, const Vector& start, float spacing)
        : pool_(pool), last_(start), spacing_(spacing)
    {}

    void Emit(const Vector& candidate, bool approximate)
    {
        if (last_.DistanceTo(candidate) > spacing_)
        {
            Vertex vertex;
            vertex.SetPoint(candidate);
            if (approximate)
            {
                vertex.SetApproximate();
            }
            pool_.SetAtGrow(pool_.GetSize(), vertex);
            last_ = candidate;
        }
    }

private:
    VertexArray& pool_;
    Vector last_;  ///< with its fractions
    float spacing_;
};

}  // namespace

Vertex TTPolyContour::GetVertex(int index) const
{
    const Vertex* const vertex = GetVertexElement(index);
    return vertex != nullptr ? *vertex : Vertex();
}

Vector TTPolyContour::GetVertexNormal(int index) const
{
    const Vertex* const vertex = GetVertexElement(index);
    return vertex != nullptr ? vertex->GetNormal(Vertex::VertexEdge) : Vector();
}

Line TTPolyContour::GetEdge(int index) const
{
    return IsVertex_(index) ? Line(GetVertexOutlinePoint(index), GetNextVertexOutlinePoint(index))
                            : Line();
}

void TTPolyContour::SetFirstVertexIndex(int index)
{
    firstVertexIndex = index;
    vertexCount = lastVertexIndex - firstVertexIndex + 1;
}

void TTPolyContour::SetLastVertexIndex(int index)
{
    lastVertexIndex = index;
    vertexCount = lastVertexIndex - firstVertexIndex + 1;
}

void TTPolyContour::SetVertex(int index, const Vertex& vertex)
{
    if (Vertex* const element = GetVertexElement(index))
    {
        *element = vertex;
    }
}

int TTPolyContour::SetVertexPoint(int index, const Vector& point)
{
    Vertex* const vertex = GetVertexElement(index);
    if (vertex == nullptr)
    {
        return 0;
    }
    vertex->SetPoint(point);
    return 1;
}

void TTPolyContour::FromTTContour(const TTContour& contour, float scale)
{
    const int count = contour.GetPointCount();
    const TTPoint* const points = contour.GetPoints();

    SetFirstVertexIndex(vertices->GetSize());
    if (count > 0)
    {
        VertexEmitter emitter(*vertices, Place(points[count - 1]), scale * 0.002f);
        for (int j = 0; j < count; ++j)
        {
            const TTPoint& point = points[j];
            if (IsOnCurve(point))
            {
                emitter.Emit(Place(point), false);
            }
            else if (point.GetType() == TTPoint::OffCurve)
            {
                const TTPoint& previous = points[PreviousRingIndex(j, count)];
                const TTPoint& next = points[NextRingIndex(j, count)];
                const bool closes = j == count - 1;
                const bool endsOnPoint = !closes && IsOnCurve(next);
                const Vector start =
                    IsOnCurve(previous) ? Place(previous) : Midpoint(previous, point);
                const Vector end = closes || endsOnPoint ? Place(next) : Midpoint(point, next);

                const int segments = point.GetQuadraticResolution();
                const float step = 1.0f / segments;
                // The end of the closing piece is point 0, which is a vertex already.
                const int samples = closes ? segments - 1 : segments;
                for (int k = 1; k <= samples; ++k)
                {
                    emitter.Emit(ApproximateQuadraticSpline(start, Place(point), end, k * step),
                                 !(endsOnPoint && k == segments));
                }
                if (endsOnPoint)
                {
                    ++j;  // the last sample was that point
                }
            }
        }
    }
    SetLastVertexIndex(vertices->GetSize() - 1);
    CalculateVertexNormals();
}

Vector TTPolyContour::ApproximateQuadraticSpline(const Vector& p0, const Vector& p1,
                                                 const Vector& p2, float t) const
{
    // Weighed in double from the float t, each weight rounded once: with float weights the first
    // fifth of a right-angled curve of 1000 units lands at 359 instead of 360.
    const double u = 1.0 - double{t};
    const float weight0 = static_cast<float>(u * u);
    const float weight1 = static_cast<float>(2.0 * t * u);
    const float weight2 = static_cast<float>(double{t} * t);
    Vector point = p0 * weight0 + p1 * weight1 + p2 * weight2;
    point.z = p0.z;
    return point;
}

int TTPolyContour::CalculateVertexNormals()
{
    if (vertexCount < 2)
    {
        return 0;
    }
    Vector arriving = GetEdge(vertexCount - 1).GetNormal();
    bool previousIsSampled = GetVertexElement(vertexCount - 1)->IsApproximate();
    for (int i = 0; i < vertexCount; ++i)
    {
        Vertex& vertex = *GetVertexElement(i);
        const Vector leaving = GetEdge(i).GetNormal();
        vertex.SetNormal(arriving, Vertex::PreviousEdge);
        vertex.SetNormal(leaving, Vertex::NextEdge);
        vertex.CalculateVertex();

        const bool isSampled = vertex.IsApproximate();
        if (previousIsSampled || isSampled || GetNextVertexElement(i)->IsApproximate())
        {
            vertex.SetUseThisNormal();
        }
        else
        {
            vertex.ClearUseThisNormal();
        }
        previousIsSampled = isSampled;
        arriving = leaving;
    }
    return 1;
}

void TTPolyContour::AdjustDuplicateVertex(int index)
{
    const Vector place = GetVertexOutlinePoint(index);
    const Vector normal = GetVertexNormal(index);
    Vector towardNext = GetNextVertexOutlinePoint(index) - place;
    towardNext.Normalize();
    const Vector step = normal * 2.0f;
    SetVertexPoint(index, normal.Dot(towardNext) <= 0.0f ? place - step : place + step);
}

void TTPolyContour::CorrectDuplicateVerticies()
{
    if (AnyPlaceRepeats(std::span(this, 1)))
    {
        DuplicateSearch().SeparateWithin(*this);
    }
}

void TTPolyContour::CorrectDuplicateVerticies(const Vector& point)
{
    for (int i = 0; i < vertexCount; ++i)
    {
        const Vector place = GetVertexOutlinePoint(i);
        if (place.x == point.x && place.y == point.y && place.z == point.z)
        {
            AdjustDuplicateVertex(i);
        }
    }
}
