// SPDX-License-Identifier: MIT
#include "tests/support/GlyphStreams.h"

namespace glyph_streams
{
namespace
{
float Sign(float value)
{
    return value < 0 ? -1.0f : 1.0f;
}

// The vertices of the odd glyph. Normals in 1/10000; the approximate mark plays no part.
struct OddVertex
{
    short x, y;
    int miterScale;
    DWORD flags;  // 1 smooth, 4 interior
    short previous[2], average[2], next[2];
};
constexpr OddVertex oddVertices[] = {
    {0, 0, 14142, 0, {-10000, 0}, {-7071, 7071}, {0, 10000}},
    {300, 700, 10353, 1, {-6000, 8000}, {-2588, 9659}, {0, 9998}},
    {-250, 1100, 40000, 4, {8000, -6000}, {0, -10000}, {-8000, -6000}},
    {1024, -512, 20000, 5, {0, -10000}, {9659, 2588}, {10000, 0}},
    {77, -33, 12345, 0, {5000, 8660}, {6000, 8000}, {-8660, 5000}},
};

std::string NormalLine(const Vector& normal)
{
    return GlLine("glNormal3f", normal.x, normal.y, normal.z);
}
}  // namespace

ExpectedContour SquareCorners(float bevelDepth)
{
    // Half a right angle's turn: the miter is 10000 / cos 45 degrees, the average's parts 7071.
    const float o = 14142 * 0.0001f * bevelDepth * (7071 * 0.0001f);
    constexpr float h = 0.70710678f;
    const Vector left(-1, 0, 0), up(0, 1, 0), right(1, 0, 0), down(0, -1, 0);
    const auto corner = [](float x, float y, float ox, float oy, const Vector& arriving,
                           const Vector& leaving) {
        const auto towards = [](const Vector& normal, float z) {
            return Vector(normal.x * h, normal.y * h, z * h);
        };
        return ExpectedCorner{{x, y},
                              false,
                              {{ox, oy}, {ox, oy}},
                              {arriving, leaving},
                              {towards(arriving, 1), towards(leaving, 1)},
                              {towards(arriving, -1), towards(leaving, -1)}};
    };
    return {corner(0, 0, -o, -o, down, left), corner(0, 1, -o, o, left, up),
            corner(1, 1, o, o, up, right), corner(1, 0, o, -o, right, down)};
}

std::vector<ExpectedContour> CornersOf(const OrvGlyph& glyph, float bevelDepth)
{
    std::vector<ExpectedContour> contours;
    for (int c = 0; c < glyph.GetContourCount(); ++c)
    {
        const TTPolyContour& contour = *glyph.contours.GetElement(c);
        contours.emplace_back();
        for (int i = 0; i < contour.GetVertexCount(); ++i)
        {
            const Vertex& v = *contour.GetVertexElement(i);
            const Vertex::Edges a = Vertex::PreviousEdge;
            const Vertex::Edges b = Vertex::NextEdge;
            contours.back().push_back(
                {{v.point.x * glyph.inverseScale, v.point.y * glyph.inverseScale},
                 v.IsInterior() != 0,
                 {v.GetBevelPoint(bevelDepth, a), v.GetBevelPoint(bevelDepth, b)},
                 {v.GetEdgeNormal(a), v.GetEdgeNormal(b)},
                 {v.GetBevelNormal(Vertex::FrontFace, a), v.GetBevelNormal(Vertex::FrontFace, b)},
                 {v.GetBevelNormal(Vertex::BackFace, a), v.GetBevelNormal(Vertex::BackFace, b)}});
        }
    }
    return contours;
}

OrvGlyph& OddGlyph()
{
    static OrvGlyph glyph(0, GLYPHMETRICS{});
    if (glyph.GetContourCount() == 0)
    {
        glyph.SetContourCount(3);
        glyph.inverseScale = 1.0f / 1000;
        for (const OddVertex& odd : oddVertices)
        {
            Vertex vertex;
            vertex.point.SetPoint(odd.x, odd.y);
            vertex.miterScale = odd.miterScale;
            vertex.flags = odd.flags;
            vertex.previousEdgeNormal.SetPoint(odd.previous[0], odd.previous[1]);
            vertex.vertexNormal.SetPoint(odd.average[0], odd.average[1]);
            vertex.nextEdgeNormal.SetPoint(odd.next[0], odd.next[1]);
            glyph.vertices.Add(vertex);
        }
        const int firsts[] = {0, 4, 5, 5};
        for (int c = 0; c < 3; ++c)
        {
            glyph.contours.GetElement(c)->SetFirstVertexIndex(firsts[c]);
            glyph.contours.GetElement(c)->SetLastVertexIndex(firsts[c + 1] - 1);
        }
    }
    return glyph;
}

Vector2D PlaceOf(const ExpectedCorner& corner, Place place, int edge, const ExtrusionData& data)
{
    const float sx = data.scale.x;
    const float sy = data.scale.y;
    const bool scaled = (data.flags & 1) != 0;
    const float bx = scaled ? sx : Sign(sx);
    const float by = scaled ? sy : Sign(sy);
    const Vector2D point(corner.place.x * sx, corner.place.y * sy);
    if (place == Place::Outline)
    {
        return point;
    }
    const float part = place == Place::Round ? 0.7071f : 1.0f;
    return {bx * (corner.offset[edge].x * part) + point.x,
            by * (corner.offset[edge].y * part) + point.y};
}

Vector2D TextureOf(const ExpectedCorner& corner, Place place, int edge, const ExtrusionData& data)
{
    const float repeat = data.textureRepeat;
    if ((data.flags & 4) != 0)
    {
        const Vector2D point = PlaceOf(corner, place, edge, data);
        return {point.x * repeat, point.y * repeat};
    }
    const float sx = data.scale.x;
    const float ix = sx == 0 ? 0 : 1 / sx;
    const float iy = sx == 0 ? 0 : 1 / data.scale.y;  // by x: so it is
    const Vector2D point(Sign(sx) * corner.place.x, Sign(data.scale.y) * corner.place.y);
    if (place == Place::Outline)
    {
        return {point.x * repeat, point.y * repeat};
    }
    const float part = place == Place::Round ? 0.7071f : 1.0f;
    return {(ix * (corner.offset[edge].x * part) + point.x) * repeat,
            (iy * (corner.offset[edge].y * part) + point.y) * repeat};
}

Lines VertexLines(const ExpectedCorner& corner, Place place, int edge, float z,
                  const ExtrusionData& data)
{
    Lines lines;
    if ((data.flags & 2) != 0)
    {
        const Vector2D texture = TextureOf(corner, place, edge, data);
        lines.push_back(GlLine("glTexCoord2fv", texture.x, texture.y));
    }
    const Vector2D point = PlaceOf(corner, place, edge, data);
    lines.push_back(GlLine("glVertex3f", point.x, point.y, z));
    return lines;
}

Lines BandLines(const std::vector<ExpectedContour>& contours, const Quad& quad,
                const ExtrusionData& data)
{
    const Vector face(0, 0, quad.side == Side::Front ? 1.0f : -1.0f);
    Lines lines;
    for (const ExpectedContour& contour : contours)
    {
        lines.push_back("glBegin GL_QUADS");
        if (quad.normals == NormalsPer::Contour)
        {
            lines.push_back(NormalLine(face));
        }
        for (std::size_t i = 0; i < contour.size(); ++i)
        {
            for (int k = 0; k < 4; ++k)
            {
                const bool atEnd = k >= 2;
                const int edge = atEnd ? 0 : 1;
                const At& at = quad.corners[k];
                const ExpectedCorner& corner = contour[atEnd ? (i + 1) % contour.size() : i];
                if (quad.normals == NormalsPer::Vertex ||
                    (quad.normals == NormalsPer::End && k % 2 == 0))
                {
                    lines.push_back(NormalLine(at.normal == Normal::Face   ? face
                                               : at.normal == Normal::Wall ? corner.wall[edge]
                                               : quad.side == Side::Front  ? corner.front[edge]
                                                                           : corner.back[edge]));
                }
                Append(lines, VertexLines(corner, at.place, atEnd ? quad.endOffset : edge,
                                          data.*at.z, data));
            }
        }
        lines.push_back("glEnd");
    }
    return lines;
}

}  // namespace glyph_streams
