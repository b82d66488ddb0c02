// SPDX-License-Identifier: MIT
#include "outline/Vertex.h"

#include "contours/VertexNormals.h"

#include <algorithm>
#include <cmath>

namespace contours = orvane::contours;

void Vertex::SetNormal(const Vector& normal, Edges edge)
{
    (this->*NormalField(edge))
        .SetPoint(contours::StoredNormal(normal.x), contours::StoredNormal(normal.y));
}

void Vertex::CalculateVertex()
{
    const Vector arriving = GetNormal(PreviousEdge);
    const Vector leaving = GetNormal(NextEdge);

    const contours::FloatPoint halfway =
        contours::AverageNormal({arriving.x, arriving.y}, {leaving.x, leaving.y});
    const Vector average(halfway.x, halfway.y, 0.0f);
    SetNormal(average, VertexEdge);

    // The sharper a corner, the further out lies its miter. Four bevel widths are the limit.
    const float cosineOfHalfTurn = std::max(std::fabs(average.Dot(leaving)), 0.25f);
    miterScale = TruncateToLong(10000.0f / cosineOfHalfTurn);

    // A left turn is a notch in the filled area. The bevels of a notch sharper than a right angle
    // (whose cosine here is 0.7071) would reach across each other with a miter, so the corner gets
    // none.
    const bool turnsLeft = (arriving * leaving).z > 0.0f;
    if (turnsLeft && cosineOfHalfTurn < 0.707f)
    {
        SetInterior();
    }
    else
    {
        ClearInterior();
    }
}
