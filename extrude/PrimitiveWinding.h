// SPDX-License-Identifier: MIT
#pragma once

#include "outline/Vertex.h"
#include "platform/OpenGL.h"

#include <cstdint>
#include <span>

/// z of (p0 - p1) x (p2 - p1), in whole outline units: positive when the triangle runs clockwise
/// with y up. 64 bits, since 16-bit coordinates give up to 34.
inline std::int64_t TriangleTurn(const Point2D& p0, const Point2D& p1, const Point2D& p2)
{
    return (std::int64_t{p0.x} - p1.x) * (std::int64_t{p2.y} - p1.y) -
           (std::int64_t{p0.y} - p1.y) * (std::int64_t{p2.x} - p1.x);
}

/// The turn of a primitive's first triangle that has one, in the order in which OpenGL draws them;
/// 0 when all are degenerate. A primitive's other triangles run the same way.
/// \param type GL_TRIANGLE_FAN, GL_TRIANGLE_STRIP, or anything else for separate triangles
/// \param indices into \p pool
inline std::int64_t PrimitiveTurn(GLenum type, std::span<const unsigned short> indices,
                                  const Vertex* pool)
{
    const auto turn = [&](std::int64_t a, std::int64_t b, std::int64_t c) {
        return TriangleTurn(pool[indices[a]].point, pool[indices[b]].point, pool[indices[c]].point);
    };
    // The triangles begin before it.
    const std::int64_t end = std::ssize(indices) - 2;
    std::int64_t found = 0;
    if (type == GL_TRIANGLE_FAN)
    {
        for (std::int64_t i = 0; i < end && found == 0; ++i)
        {
            found = turn(0, i + 1, i + 2);
        }
    }
    else if (type == GL_TRIANGLE_STRIP)
    {
        // i steps over an odd triangle's first corner, so that of an even number of vertices the
        // last triangle is not looked at: meant so, see AStripOfFourIsJudgedByItsFirstTriangleOnly.
        bool odd = false;
        for (std::int64_t i = 0; i < end && found == 0; odd = !odd)
        {
            if (odd)
            {
                found = turn(i, i - 1, i + 1);
            }
            else
            {
                found = turn(i, i + 1, i + 2);
                i += 2;
            }
        }
    }
    else
    {
        for (std::int64_t i = 0; i < end && found == 0; i += 3)
        {
            found = turn(i, i + 1, i + 2);
        }
    }
    return found;
}

/// The clockwise bit of a primitive: clear for one without area.
inline bool RunsClockwise(GLenum type, std::span<const unsigned short> indices, const Vertex* pool)
{
    return PrimitiveTurn(type, indices, pool) > 0;
}
