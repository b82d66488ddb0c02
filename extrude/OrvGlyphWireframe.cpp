// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"
#include "extrude/OrvGlyphRings.h"

namespace
{
constexpr int kOutline = 1;
constexpr int kBevelOutline = 2;
constexpr int kRoundOutline = 3;
}  // namespace

int OrvGlyph::DrawOutline(int kind, float z, const ExtrusionData& data) const
{
    const PointScales scales(data);
    const bool moved = kind == kBevelOutline || kind == kRoundOutline;
    for (int c = 0; c < contourCount; ++c)
    {
        const TTPolyContour& contour = *contours.GetElement(c);
        glBegin(GL_LINE_LOOP);
        for (int i = 0; i < contour.GetVertexCount(); ++i)
        {
            const Vertex& vertex = *contour.GetVertexElement(i);
            tagVERTEXPOINTS points;
            const auto emit = [&](Vertex::Edges edge) {
                CalculateVertexPoints(scales, &vertex, &points, kind == kBevelOutline,
                                      kind == kRoundOutline, edge);
                const Vector2D& place = kind == kBevelOutline   ? points.bevelPoint
                                        : kind == kRoundOutline ? points.roundPoint
                                                                : points.point;
                glVertex3f(place.x, place.y, z);
            };
            // Such a corner has no miter: it appears on the lines of both its edges.
            emit(Vertex::PreviousEdge);
            if (moved && vertex.IsInterior())
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
    return DrawOutline(kOutline, data.backZ, data.frontZ, data);
}

int OrvGlyph::DrawFrontFaceBevelled(const ExtrusionData& data) const
{
    DrawOutline(kOutline, data.frontZ, data);
    DrawOutline(kBevelOutline, data.backZ, data);
    return DrawOutline(kBevelOutline, data.frontBevelZ, data);
}

int OrvGlyph::DrawBackFaceBevelled(const ExtrusionData& data) const
{
    DrawOutline(kOutline, data.backZ, data);
    DrawOutline(kBevelOutline, data.frontZ, data);
    return DrawOutline(kBevelOutline, data.backBevelZ, data);
}

int OrvGlyph::DrawBothFacesBevelled(const ExtrusionData& data) const
{
    DrawOutline(kOutline, data.backZ, data.frontZ, data);
    return DrawOutline(kBevelOutline, data.backBevelZ, data.frontBevelZ, data);
}

int OrvGlyph::DrawFrontFaceRounded(const ExtrusionData& data) const
{
    DrawOutline(kOutline, data.frontZ, data);
    DrawOutline(kBevelOutline, data.frontBevelZ, data);
    DrawOutline(kBevelOutline, data.backZ, data);
    return DrawOutline(kRoundOutline, data.frontRoundZ, data);
}

// Draws the front outline twice, plain and bevelled, unlike the bevelled set: meant so, see the
// wireframe stream tests.
int OrvGlyph::DrawBackFaceRounded(const ExtrusionData& data) const
{
    DrawOutline(kOutline, data.backZ, data.frontZ, data);
    DrawOutline(kBevelOutline, data.backBevelZ, data);
    DrawOutline(kRoundOutline, data.backRoundZ, data);
    return DrawOutline(kBevelOutline, data.frontZ, data);
}

int OrvGlyph::DrawBothFacesRounded(const ExtrusionData& data) const
{
    DrawBothFacesBevelled(data);
    return DrawOutline(kRoundOutline, data.backRoundZ, data.frontRoundZ, data);
}
