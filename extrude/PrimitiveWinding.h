// SPDX-License-Identifier: MIT
#pragma once

#include "outline/Vertex.h"
#include "platform/OpenGL.h"

#include <cstdint>
#include <span>

/// Returns the z component of (p0 - p1) x (p2 - p1), in square outline units: positive for a
/// triangle that runs clockwise (y is up), negative for one that runs counter-clockwise, 0 for a
/// triangle without area. The result needs up to 34 bits, because coordinates have 16 bits.
inline std::int64_t TriangleTurn(const Point2D& p0, const Point2D& p1, const Point2D& p2)
{
    return (std::int64_t{p0.x} - p1.x) * (std::int64_t{p2.y} - p1.y) -
           (std::int64_t{p0.y} - p1.y) * (std::int64_t{p2.x} - p1.x);
}

/// Returns TriangleTurn of the first triangle, in OpenGL's drawing order, that has an area; 0 when
/// no triangle of the primitive has an area. One triangle is enough, because all triangles of a
/// primitive run the same way.
/// \param type GL_TRIANGLE_FAN, GL_TRIANGLE_STRIP, or anything else for separate triangles.
/// \param indices positions in \p pool.
inline std::int64_t PrimitiveTurn(GLenum type, std::span<const unsigned short> indices,
                                  const Vertex* pool)
{
    const auto turn = [&](std::int64_t a, std::int64_t b, std::int64_t c) {
        return TriangleTurn(pool[indices[a]].point, pool[indices[b]].point, pool[indices[c]].point);
    };
    // A triangle that begins at end or later would need an index behind the last one.
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
        // The triangles of a strip alternate: first (i, i + 1, i + 2), then, with i moved on by 2,
        // (i, i - 1, i + 1). The loop compares i with the same end in both cases, so the last
        // triangle of a strip with an even number of vertices is never tested. That is required;
        // see OnlyTheFirstTriangleOfAStripOfFourDecides.
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

/// Whether a primitive runs clockwise, seen from +z. False for a primitive without area.
inline bool RunsClockwise(GLenum type, std::span<const unsigned short> indices, const Vertex* pool)
{
    return PrimitiveTurn(type, indices, pool) > 0;
}
