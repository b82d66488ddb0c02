// SPDX-License-Identifier: MIT
#include "outline/TTPolyContour.h"

#include "outline/TTContour.h"
#include "platform/outlines/DuplicateSearch.h"
#include "platform/outlines/Flattening.h"

#include <span>

namespace
{

outlines::CurvePoint CurvePointOf(const TTPoint& point)
{
    using outlines::CurvePoint;
    const CurvePoint::Kind kind = point.GetType() == TTPoint::OnCurve    ? CurvePoint::OnCurve
                                  : point.GetType() == TTPoint::OffCurve ? CurvePoint::OffCurve
                                                                         : CurvePoint::Undecided;
    return {point.GetX(), point.GetY(), kind, point.GetQuadraticResolution()};
}

outlines::PlaneVector InPlane(const Vector& vector)
{
    return {vector.x, vector.y};
}

Vector InSpace(const outlines::PlaneVector& vector)
{
    return Vector(vector.x, vector.y, 0.0f);
}

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
    const TTPoint* const points = contour.GetPoints();
    SetFirstVertexIndex(vertices->GetSize());
    outlines::FlattenContour(
        contour.GetPointCount(), [points](int j) { return CurvePointOf(points[j]); },
        outlines::VertexSpacing(scale),
        [this](const outlines::PlaneVector& place, bool approximate) {
            Vertex vertex;
            vertex.SetPoint(InSpace(place));
            if (approximate)
            {
                vertex.SetApproximate();
            }
            vertices->SetAtGrow(vertices->GetSize(), vertex);
        });
    SetLastVertexIndex(vertices->GetSize() - 1);
    CalculateVertexNormals();
}

Vector TTPolyContour::ApproximateQuadraticSpline(const Vector& p0, const Vector& p1,
                                                 const Vector& p2, float t) const
{
    Vector point = InSpace(outlines::QuadraticPoint(InPlane(p0), InPlane(p1), InPlane(p2), t));
    point.z = p0.z;
    return point;
}

int TTPolyContour::CalculateVertexNormals()
{
    if (vertexCount < 2)
    {
        return 0;
    }
    const auto normalOfEdge = [this](int index) {
        return InSpace(outlines::EdgeNormal(InPlane(GetVertexOutlinePoint(index)),
                                            InPlane(GetNextVertexOutlinePoint(index))));
    };
    Vector arriving = normalOfEdge(vertexCount - 1);
    bool previousIsSampled = GetVertexElement(vertexCount - 1)->IsApproximate();
    for (int i = 0; i < vertexCount; ++i)
    {
        Vertex& vertex = *GetVertexElement(i);
        const Vector leaving = normalOfEdge(i);
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
    SetVertexPoint(index,
                   InSpace(outlines::ShiftedPlace(InPlane(GetVertexOutlinePoint(index)),
                                                  InPlane(GetVertexNormal(index)),
                                                  InPlane(GetNextVertexOutlinePoint(index)))));
}

void TTPolyContour::CorrectDuplicateVerticies()
{
    const std::span<TTPolyContour> alone(this, 1);
    if (outlines::AnyPlaceRepeats(alone))
    {
        outlines::DuplicateSearch<TTPolyContour>().SeparateWithin(*this);
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
