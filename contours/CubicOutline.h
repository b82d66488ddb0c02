// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Outlines of cubic curves, as fonts with a CFF table have them, converted to quadratic curves.

#include "contours/NativeOutline.h"
#include "contours/PlanePoint.h"

#include <array>
#include <vector>

namespace orvane::contours
{

/// A quadratic Bezier curve that starts where the one before it ends. Both points have whole
/// coordinates, in design units.
struct QuadraticPiece
{
    DoublePoint control;
    DoublePoint end;
};

/// Approximates a cubic Bezier curve by one to twelve quadratic pieces. The first piece starts at
/// the cubic's first point, rounded to whole units. The function takes the smallest number of
/// pieces that all stay within half a unit of the cubic. If even twelve do not, it takes the number
/// of pieces with the smallest deviation. Each control point lies at most one unit, in x and in y,
/// from the place where the cubic's tangents at the two ends of the piece meet. If these tangents
/// are nearly parallel or meet on the wrong side, the control point makes the piece pass close to
/// the middle of its part of the cubic instead.
/// \param cubic start, two control points and end, in units
std::vector<QuadraticPiece> QuadraticsOf(const std::array<DoublePoint, 4>& cubic);

/// Builds an outline from contours of lines, quadratic and cubic curves. Coordinates are in design
/// units and are rounded to whole units. Cubic curves are approximated by quadratic ones. Each
/// contour is reversed, because CFF contours run with the filled area on their left, and contours
/// of a NativeOutline with the filled area on their right.
class CubicOutlineBuilder
{
public:
    /// Ends the current contour, if there is one, and begins another at \p to. Must be called
    /// before the first line or curve.
    void MoveTo(const DoublePoint& to);
    void LineTo(const DoublePoint& to);
    void QuadraticTo(const DoublePoint& control, const DoublePoint& to);
    void CubicTo(const DoublePoint& first, const DoublePoint& second, const DoublePoint& to);

    /// Ends the current contour and returns the outline.
    NativeOutline Take();

private:
    void EndContour();
    void AddPoint(const DoublePoint& place, bool onCurve);

    NativeOutline outline_;
    DoublePoint last_;  ///< where the next line or curve starts, not rounded
    bool isOpen_ = false;
};

}  // namespace orvane::contours
