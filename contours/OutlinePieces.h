// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// An outline as a sequence of lines and curves, which can be sampled and cut.

#include "contours/NativeOutline.h"
#include "contours/PlanePoint.h"

#include <vector>

namespace orvane::contours
{

/// A line or a quadratic Bezier curve of a contour, in whole units. The control point of a line is
/// its middle. Parameters run from 0 at the start to 1 at the end.
struct OutlinePiece
{
    DoublePoint start;
    DoublePoint control;
    DoublePoint end;
    bool isCurved = false;
    bool startsImplied = false;  ///< the start is an implied point; see NativeOutline
    bool endsImplied = false;

    DoublePoint PointAt(double t) const { return Blossom(t, t); }

    /// The polar form of the curve: the control point of the part between the parameters \p s and
    /// \p t (Ramshaw, "Blossoms are polar forms", 1989).
    DoublePoint Blossom(double s, double t) const
    {
        return start * ((1 - s) * (1 - t)) + control * (s * (1 - t) + t * (1 - s)) + end * (s * t);
    }

    /// The derivative of the curve with respect to the parameter, in units.
    DoublePoint Derivative(double t) const
    {
        return (control - start) * (2 * (1 - t)) + (end - control) * (2 * t);
    }
};

/// The pieces of each contour, in order. Each piece starts where the piece before it ends, and the
/// first piece starts where the last one ends. Coordinates are rounded down to whole units.
std::vector<std::vector<OutlinePiece>> PiecesOf(const NativeOutline& outline);

}  // namespace orvane::contours
