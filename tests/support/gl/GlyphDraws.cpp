// SPDX-License-Identifier: MIT
#include "tests/support/gl/GlyphDraws.h"

#include "tests/support/GlyphShapes.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace glyph_draws
{
namespace
{

/// A vertex of the odd glyph: its place in units of 1/1000 em, its miter and its normals in units
/// of 1/10000.
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

struct Draw
{
    float scale[3];
    float bevelWidth;
    DWORD flags;  // 1 scaled bevels, 2 texture, 4 texture that stretches with the object
};
constexpr Draw draws[] = {
    {{1, 1, 1}, 0, 0},        {{1, 1, 1}, 0.1f, 0},      {{1, 1, 1}, 0.1f, 2},
    {{1, 1, 1}, 0.1f, 4},     {{-1, 1, 1}, 0.1f, 1},     {{-1, 1, 1}, 0.1f, 2},
    {{2, 3, 0.5f}, 0.1f, 0},  {{2, 3, 0.5f}, 0.1f, 1},   {{2, 3, 0.5f}, 0.1f, 3},
    {{2, 3, 0.5f}, 0.1f, 6},  {{2, 3, 0.5f}, 0.1f, 7},   {{2, -3, 0.5f}, 0.1f, 2},
    {{2, -3, 0.5f}, 0.1f, 7}, {{-0.5f, -2, 1}, 0.1f, 3}, {{-0.5f, -2, 1}, 0.1f, 6},
    {{0, 1, 1}, 0.1f, 2},     {{0, 1, 1}, 0.1f, 7},
};
constexpr float textureRepeat = 3;

VertexIndexPolygon Polygon(GLenum type, std::initializer_list<unsigned short> indices,
                           bool clockwise)
{
    VertexIndexPolygon polygon;
    polygon.SetType(type);
    for (const unsigned short index : indices)
    {
        polygon.Add(index);
    }
    if (clockwise)
    {
        polygon.SetClockwiseWinding();
    }
    return polygon;
}

}  // namespace

void UseFan(OrvGlyph& glyph)
{
    glyph.facePolygons.RemoveAll();
    glyph.facePolygons.Add(Polygon(GL_TRIANGLE_FAN, {0, 1, 2, 3}, true));
}

void UseFanAndTriangle(OrvGlyph& glyph)
{
    UseFan(glyph);
    glyph.facePolygons.Add(Polygon(GL_TRIANGLES, {2, 1, 0}, false));
}

const OrvGlyph& Square()
{
    // The glyph is built in place, because a copy would use the vertices of a glyph that no longer
    // exists.
    static OrvGlyph square(0, GLYPHMETRICS{});
    if (square.GetContourCount() == 0)
    {
        EXPECT_EQ(square.FromTTGlyph(SquareGlyph(), 1000), 1);
        UseFanAndTriangle(square);
    }
    return square;
}

const OrvGlyph& OddGlyph()
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

std::string TextOfDraws(const OrvGlyph& glyph, DrawGlyph draw)
{
    std::string text;
    for (const Draw& numbers : draws)
    {
        ExtrusionData data;
        data.scale = Vector(numbers.scale[0], numbers.scale[1], numbers.scale[2]);
        data.bevelDepth = numbers.bevelWidth;
        data.flags = numbers.flags;
        data.SetTextureRepeat(textureRepeat);
        data.CalculateHeights();
        text += "# scale " + GlNumber(numbers.scale[0]) + " " + GlNumber(numbers.scale[1]) + " " +
                GlNumber(numbers.scale[2]) + ", bevel " + GlNumber(numbers.bevelWidth) +
                ", flags " + GlNumber(numbers.flags) + "\n";
        const GlRecording recording;
        EXPECT_EQ((glyph.*draw)(data), 1);
        text += recording.Text();
    }
    return text;
}

}  // namespace glyph_draws
