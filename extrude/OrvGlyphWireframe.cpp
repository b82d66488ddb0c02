// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"
#include "extrude/OrvGlyphRings.h"

// OrvGlyph: wireframes.

namespace
{
// The values of the parameter kind of DrawOutline.
constexpr int letterOutline = 1;
constexpr int bevelOutline = 2;
constexpr int roundOutline = 3;
}  // namespace

int OrvGlyph::DrawOutline(int kind, float z, const ExtrusionData& data) const
{
    const PointScales scales(data);
    const bool hasOffset = kind == bevelOutline || kind == roundOutline;
    for (int c = 0; c < contourCount; ++c)
    {
        const TTPolyContour& contour = *contours.GetElement(c);
        glBegin(GL_LINE_LOOP);
        for (int i = 0; i < contour.GetVertexCount(); ++i)
        {
            const Vertex& vertex = *contour.GetVertexElement(i);
            tagVERTEXPOINTS points;
            const auto emit = [&](Vertex::Edges edge) {
                CalculateVertexPoints(scales, &vertex, &points, kind == bevelOutline,
                                      kind == roundOutline, edge);
                const Vector2D& place = kind == bevelOutline   ? points.bevelPoint
                                        : kind == roundOutline ? points.roundPoint
                                                               : points.point;
                glVertex3f(place.x, place.y, z);
            };
            // An interior corner has no miter. Each of its two edges moves the corner to a place of
            // its own, and the line runs through both places.
            emit(Vertex::PreviousEdge);
            if (hasOffset && vertex.IsInterior())
            {
                emit(Vertex::NextEdge);
            }
        }
        glEnd();
    }
    return 1;
}

int OrvGlyph::DrawOutline(int kind, float z1, float z2, const ExtrusionData& data) const
{
    DrawOutline(kind, z1, data);
    return DrawOutline(kind, z2, data);
}

int OrvGlyph::Draw(const ExtrusionData& data) const
{
    return DrawOutline(letterOutline, data.backZ, data.frontZ, data);
}

int OrvGlyph::DrawFrontFaceBevelled(const ExtrusionData& data) const
{
    DrawOutline(letterOutline, data.frontZ, data);
    DrawOutline(bevelOutline, data.backZ, data);
    return DrawOutline(bevelOutline, data.frontBevelZ, data);
}

int OrvGlyph::DrawBackFaceBevelled(const ExtrusionData& data) const
{
    DrawOutline(letterOutline, data.backZ, data);
    DrawOutline(bevelOutline, data.frontZ, data);
    return DrawOutline(bevelOutline, data.backBevelZ, data);
}

int OrvGlyph::DrawBothFacesBevelled(const ExtrusionData& data) const
{
    DrawOutline(letterOutline, data.backZ, data.frontZ, data);
    return DrawOutline(bevelOutline, data.backBevelZ, data.frontBevelZ, data);
}

int OrvGlyph::DrawFrontFaceRounded(const ExtrusionData& data) const
{
    DrawOutline(letterOutline, data.frontZ, data);
    DrawOutline(bevelOutline, data.frontBevelZ, data);
    DrawOutline(bevelOutline, data.backZ, data);
    return DrawOutline(roundOutline, data.frontRoundZ, data);
}

// At the front this function draws two outlines, the letter's own and the wall's.
// DrawBackFaceBevelled draws only the wall's outline there. The difference is required; see
// tests/golden/glyph/square/DrawBackFaceRounded.txt.
int OrvGlyph::DrawBackFaceRounded(const ExtrusionData& data) const
{
    DrawOutline(letterOutline, data.backZ, data.frontZ, data);
    DrawOutline(bevelOutline, data.backBevelZ, data);
    DrawOutline(roundOutline, data.backRoundZ, data);
    return DrawOutline(bevelOutline, data.frontZ, data);
}

int OrvGlyph::DrawBothFacesRounded(const ExtrusionData& data) const
{
    DrawBothFacesBevelled(data);
    return DrawOutline(roundOutline, data.backRoundZ, data.frontRoundZ, data);
}
