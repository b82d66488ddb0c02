// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"
#include "extrude/OrvGlyphRings.h"

// OrvGlyph: the front and the back face.

int OrvGlyph::RenderFace(float z, const Vector& normal, int front, const ExtrusionData& data) const
{
    const bool mirrored = OutsideIsFront::IsMirrored(data);
    const PointScales scales(data);
    for (int i = 0; i < facePolygons.GetSize(); ++i)
    {
        const VertexIndexPolygon& polygon = *facePolygons.GetElement(i);
        // The clockwise mark holds for a view from +z. The back face is seen from -z, where the
        // same polygon runs the other way.
        const bool clockwise = (polygon.IsClockwiseWinding() != 0) == (front != 0);
        glFrontFace(clockwise != mirrored ? GL_CW : GL_CCW);

        // Take the pool from a contour. This glyph's own pool is empty when the glyph is a copy,
        // because the contours of a copy use the pool of the original.
        const Vertex* const pool = contours.GetElement(0)->vertices->GetElement(0);
        const unsigned short* const indices = polygon.GetElement(0);
        glBegin(static_cast<GLenum>(polygon.GetType()));
        glNormal3f(normal.x, normal.y, normal.z);
        for (int k = 0; k < polygon.GetSize(); ++k)
        {
            tagVERTEXPOINTS points;
            CalculateVertexPoints(scales, &pool[indices[k]], &points, 0, 0, Vertex::VertexEdge);
            EmitVertex<RingPoint::Outline>(data, points, z);
        }
        glEnd();
    }
    glFrontFace(GL_CCW);
    return 1;
}

int OrvGlyph::RenderFaces(const ExtrusionData& data) const
{
    RenderFace(data.backZ, Vector(0.0f, 0.0f, -1.0f), 0, data);
    return RenderFace(data.frontZ, Vector(0.0f, 0.0f, 1.0f), 1, data);
}
