// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Straight edges between points of a grid, cut so that they meet only at their ends.

#include "contours/PlanePoint.h"

#include <compare>
#include <cstdint>
#include <string>
#include <vector>

namespace orvane::shapes
{

/// A point of the grid. Coordinates lie between -maxGridCoordinate and maxGridCoordinate.
using contours::GridPoint;
using contours::Turn;

/// The differences of such coordinates in half steps take 30 bits and their products 60, so that
/// the side of a point, even of the corner of a pixel, is exact in 64 bits.
constexpr std::int32_t maxGridCoordinate = (1 << 28) - 1;

/// Whether \p a comes before \p b from left to right and, on one vertical line, from low to high.
inline bool ComesBefore(const GridPoint& a, const GridPoint& b)
{
    return a.x != b.x ? a.x < b.x : a.y < b.y;
}

/// An edge and the line that it is a part of.
struct GridEdge
{
    GridPoint from;         ///< comes before to
    GridPoint to;           ///< differs from from
    std::uint32_t line;     ///< what the caller knows the uncut edge by
    std::int32_t sign = 1;  ///< -1 when from and to are exchanged, compared with the uncut edge
};

/// Counts the steps of a reader's work and ends it with an Error when there are too many.
class WorkLimit
{
public:
    /// \param place for the Error: the file
    WorkLimit(std::string place, std::int64_t maxSteps);
    void Add(std::int64_t steps)
    {
        steps_ += steps;
        if (steps_ > maxSteps_)
        {
            Fail();
        }
    }

private:
    [[noreturn]] void Fail() const;

    std::string place_;
    std::int64_t maxSteps_;
    std::int64_t steps_ = 0;
};

/// Cuts edges wherever they meet, until any two of them have at most their ends in common. A place
/// where two edges cross is rounded to the grid. Edges that pass such a place, or the end of an
/// edge, within half a step are led through it; this bends them by less than a step and takes none
/// across a place. Edges that lie on each other all stay. Throws Error when the search takes more
/// than \p work allows.
void CutWhereTheyMeet(std::vector<GridEdge>& edges, WorkLimit& work);

/// Whether any two edges have more than ends in common, or coincide.
bool DoAnyMeet(const std::vector<GridEdge>& edges, WorkLimit& work);

}  // namespace orvane::shapes
