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

    // The sharper a corner, the further its miter reaches. A hairpin's miter would reach to
    // infinity, so the reach is limited to four bevel widths.
    const float cosineOfHalfTurn = std::max(std::fabs(average.Dot(leaving)), 0.25f);
    miterScale = TruncateToLong(10000.0f / cosineOfHalfTurn);

    // A left turn is a notch in the filled area. If the notch is sharper than a right angle (for
    // which cosineOfHalfTurn is 0.7071), mitered bevels of its two edges would cross each other, so
    // the corner gets no miter.
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
