// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The border of the area that polygons fill together, by the non-zero rule (see NonZeroArea).

#include "contours/PlanePoint.h"

#include <array>
#include <cstddef>
#include <deque>
#include <exception>
#include <vector>

namespace orvane::contours
{

/// Tells from which piece of the original outline a vertex was sampled, and where on it. A piece is
/// a line or a curve between two points, named by its number.
struct PieceTag
{
    int piece = 0;
    double t = 0;  ///< 0 at the piece's start, 1 at its end
};

/// A vertex of a polygon or of the border.
struct UnionVertex
{
    std::array<double, 3> place = {};  ///< x and y in units, and z = 0, which GLU needs
    std::array<PieceTag, 8> tags = {};
    std::size_t tagCount = 0;

    DoublePoint Point() const { return {place[0], place[1]}; }

    /// Adds a tag. Does nothing if the vertex has the same tag or eight tags already.
    void AddTag(const PieceTag& tag);
};

/// Polygons and, after Unite, the border of the area that they fill together. Unite finds the
/// border with GLU's tessellator, which it asks for the boundary only.
///
/// Where two edges cross, the border gets a new vertex. The new vertex gets one tag from each edge
/// whose two ends lie on the same piece: that piece, and a t interpolated linearly between the t of
/// the two ends.
class OutlineUnion
{
public:
    /// Begins a polygon. The vertices that are added next belong to it.
    void BeginContour() { contours_.emplace_back(); }
    /// Adds a vertex without tags. The reference stays valid as long as the union.
    UnionVertex& AddVertex(double x, double y);

    /// Finds the border. Returns false and leaves no loops when the tessellator reports an error.
    /// Throws std::bad_alloc when there is too little memory.
    bool Unite();

    /// After Unite: the closed loops of the border, with the filled area on their left. The
    /// vertices belong to the union.
    const std::vector<std::vector<const UnionVertex*>>& Loops() const { return loops_; }

    /// After Unite: the area inside the border, in square units.
    double Area() const;

private:
    friend struct UnionCallbacks;

    std::deque<UnionVertex> vertices_;
    std::vector<std::vector<UnionVertex*>> contours_;
    std::vector<std::vector<const UnionVertex*>> loops_;
    bool failed_ = false;
    bool isOutOfMemory_ = false;
    std::exception_ptr exception_;  ///< thrown in a function that the tessellator called
};

/// The area inside a closed loop, in square units; positive when the loop runs counter-clockwise.
double SignedArea(const std::vector<const UnionVertex*>& loop);

/// Whether a loop has fewer than three vertices or an average width of less than one unit. Rounding
/// leaves such slivers between edges that nearly coincide.
bool IsSliver(const std::vector<const UnionVertex*>& loop);

}  // namespace orvane::contours
