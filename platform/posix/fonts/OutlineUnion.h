// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The boundary of what polygons fill by the non-zero rule.

#include "platform/Export.h"

#include <array>
#include <cstddef>
#include <deque>
#include <vector>

namespace posix
{

/// A vertex' place on a piece of the outline that it was taken from.
struct PieceTag
{
    int piece = 0;
    double t = 0;  ///< 0 at the piece's start, 1 at its end
};

struct UnionVertex
{
    std::array<double, 3> place = {};  ///< z is 0
    std::array<PieceTag, 8> tags = {};
    std::size_t tagCount = 0;

    /// A tag beyond the room for them, or of a piece that the vertex has, is dropped.
    ORVANE_API void Add(const PieceTag& tag);
};

/// Contours and, once united, the boundary. Vertices that arise where edges meet get the tags of
/// both: on an edge between two vertices of one piece, the parameter that lies as far between.
class OutlineUnion
{
public:
    /// Begins a contour; the vertices added next are its own.
    void BeginContour() { contours_.emplace_back(); }
    ORVANE_API UnionVertex& AddVertex(double x, double y);

    /// Finds the boundary. False when the tessellator reports an error.
    ORVANE_API bool Unite();

    /// Closed loops with what is filled on their left.
    const std::vector<std::vector<const UnionVertex*>>& Loops() const { return loops_; }

    /// The area inside the boundary.
    ORVANE_API double Area() const;

private:
    friend struct UnionCallbacks;

    std::deque<UnionVertex> vertices_;
    std::vector<std::vector<UnionVertex*>> contours_;
    std::vector<std::vector<const UnionVertex*>> loops_;
    bool failed_ = false;
};

/// The area of a closed loop, positive when it runs counter-clockwise.
ORVANE_API double SignedArea(const std::vector<const UnionVertex*>& loop);

}  // namespace posix
