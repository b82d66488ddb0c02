// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What the drawing routines of a glyph must emit, worked out anew from places, offsets and normals
/// of the corners of its contours.

#include "extrude/ExtrusionData.h"
#include "extrude/OrvGlyph.h"
#include "tests/support/GlRecorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace glyph_streams
{

using Lines = std::vector<std::string>;

/// A corner of a contour. Of the pairs, the first is for the edge that arrives.
struct ExpectedCorner
{
    Vector2D place;  ///< in ems
    bool interior;
    Vector2D offset[2];  ///< of a bevel, before the bevel scale
    Vector wall[2];      ///< normals of the wall,
    Vector front[2];     ///< and of 45 degrees to the front
    Vector back[2];      ///< and to the back
};
using ExpectedContour = std::vector<ExpectedCorner>;

/// The corners of the square from (0, 0) to (1, 1), clockwise from the origin, by hand.
ExpectedContour SquareCorners(float bevelDepth);

/// The corners of a glyph as its vertices' getters give them.
std::vector<ExpectedContour> CornersOf(const OrvGlyph& glyph, float bevelDepth);

/// A glyph whose corners are all different: sharp, smooth, interior, and interior and smooth, with
/// three different normals and a miter each; its second contour has one vertex, its third none.
/// It has no face.
OrvGlyph& OddGlyph();

enum class Place
{
    Outline,
    Round,
    Bevel
};
enum class Normal
{
    Face,
    Bevel,
    Wall
};
enum class NormalsPer
{
    Contour,
    End,
    Vertex
};
enum class Side
{
    Front,
    Back
};

/// One vertex of a quad.
struct At
{
    Place place;
    float ExtrusionData::*z;
    Normal normal;
};

/// The quad that stands on each segment: two vertices at the segment's start, two at its end. The
/// normals of the end are those of the edge that arrives; its offset is so too unless told.
struct Quad
{
    Side side;
    NormalsPer normals;
    At corners[4];
    int endOffset = 0;
};

/// The calls of one band of quads round all contours.
Lines BandLines(const std::vector<ExpectedContour>& contours, const Quad& quad,
                const ExtrusionData& data);

/// Place and texture point of a corner. \p edge 0 for the offset of the edge that arrives.
Vector2D PlaceOf(const ExpectedCorner& corner, Place place, int edge, const ExtrusionData& data);
Vector2D TextureOf(const ExpectedCorner& corner, Place place, int edge, const ExtrusionData& data);

/// The lines of one vertex, without its normal.
Lines VertexLines(const ExpectedCorner& corner, Place place, int edge, float z,
                  const ExtrusionData& data);

/// Draws with each scale (plain, mirrored in x, stretched, mirrored in y and stretched, mirrored
/// twice, flat in x), with bevels scaled and not, without texture and with it in both ways; bevels
/// are 0.1 wide. \p check(data).
template <typename Check>
void ForEachDraw(Check check)
{
    const float scales[][3] = {{1, 1, 1},     {-1, 1, 1},     {2, 3, 0.5f},
                               {2, -3, 0.5f}, {-0.5f, -2, 1}, {0, 1, 1}};
    for (const auto& scale : scales)
    {
        for (const DWORD flags : {0, 1, 2, 3, 6, 7})
        {
            ExtrusionData data;
            data.scale = Vector(scale[0], scale[1], scale[2]);
            data.bevelDepth = 0.1f;
            data.flags = flags;
            data.SetTextureRepeat(3);
            data.CalculateHeights();
            SCOPED_TRACE("scale " + GlNumber(scale[0]) + " " + GlNumber(scale[1]) + ", flags " +
                         GlNumber(flags));
            check(data);
        }
    }
}

inline void Append(Lines& lines, const Lines& more)
{
    lines.insert(lines.end(), more.begin(), more.end());
}

}  // namespace glyph_streams
