// SPDX-License-Identifier: MIT
#include "outline/TTPolyContour.h"

#include "contours/DuplicateSearch.h"
#include "contours/Flattening.h"
#include "outline/TTContour.h"

#include <span>

namespace contours = orvane::contours;

namespace
{

contours::CurvePoint CurvePointOf(const TTPoint& point)
{
    using contours::CurvePoint;
    const CurvePoint::Kind kind = point.GetType() == TTPoint::OnCurve ? CurvePoint::Kind::OnCurve
                                  : point.GetType() == TTPoint::OffCurve
                                      ? CurvePoint::Kind::OffCurve
                                      : CurvePoint::Kind::Undecided;
    return {{point.GetX(), point.GetY()}, kind, point.GetQuadraticResolution()};
}

contours::FloatPoint InPlane(const Vector& vector)
{
    return {vector.x, vector.y};
}

Vector InSpace(const contours::FloatPoint& vector)
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
    return IsVertex(index) ? Line(GetVertexOutlinePoint(index), GetNextVertexOutlinePoint(index))
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
    contours::FlattenContour(
        contour.GetPointCount(), [points](int j) { return CurvePointOf(points[j]); },
        contours::VertexSpacing(scale),
        [this](const contours::FloatPoint& place, bool approximate) {
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
    Vector point = InSpace(contours::QuadraticPoint(InPlane(p0), InPlane(p1), InPlane(p2), t));
    point.z = p0.z;
    return point;
}

int TTPolyContour::CalculateVertexNormals()
{
    if (vertexCount < 2)
    {
        return 0;
    }
    const auto pointAt = [this](int index) { return InPlane(GetVertexOutlinePoint(index)); };
    bool previousIsApproximate = GetVertexElement(vertexCount - 1)->IsApproximate();
    contours::ForEachCorner(
        vertexCount, pointAt,
        [&](int i, const contours::FloatPoint& arriving, const contours::FloatPoint& leaving) {
            Vertex& vertex = *GetVertexElement(i);
            vertex.SetNormal(InSpace(arriving), Vertex::PreviousEdge);
            vertex.SetNormal(InSpace(leaving), Vertex::NextEdge);
            vertex.CalculateVertex();

            // A corner beside a sample of a curve belongs to the curve, which is smooth there.
            const bool isApproximate = vertex.IsApproximate();
            if (previousIsApproximate || isApproximate || GetNextVertexElement(i)->IsApproximate())
            {
                vertex.SetUseThisNormal();
            }
            else
            {
                vertex.ClearUseThisNormal();
            }
            previousIsApproximate = isApproximate;
        });
    return 1;
}

void TTPolyContour::AdjustDuplicateVertex(int index)
{
    SetVertexPoint(index,
                   InSpace(contours::ShiftedPlace(InPlane(GetVertexOutlinePoint(index)),
                                                  InPlane(GetVertexNormal(index)),
                                                  InPlane(GetNextVertexOutlinePoint(index)))));
}

void TTPolyContour::CorrectDuplicateVerticies()
{
    const std::span<TTPolyContour> alone(this, 1);
    if (contours::AnyPlaceRepeats(alone))
    {
        contours::DuplicateSearch<TTPolyContour>().SeparateWithin(*this);
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
