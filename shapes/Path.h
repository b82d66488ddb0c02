// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Paths of lines and curves, as drawing programs have them.

#include "contours/PlanePoint.h"
#include "shapes/Affine.h"
#include "shapes/Region.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace orvane::shapes
{

/// A line or a cubic Bezier curve.
struct PathPiece
{
    std::array<contours::DoublePoint, 4> points;  ///< of a line, the second and third mean nothing
    bool isCurve = false;

    contours::DoublePoint PointAt(double t) const;
    /// Unit vectors along the piece at its ends. Zero for a piece without length.
    contours::DoublePoint StartDirection() const;
    contours::DoublePoint EndDirection() const;
};

/// Pieces that are joined end to end.
struct Subpath
{
    contours::DoublePoint start;
    std::vector<PathPiece> pieces;  ///< may be empty
    bool isClosed = false;          ///< the last piece then ends at the start
};

/// Builds a path. Quadratic curves become cubic ones exactly. Arcs of ellipses become cubic curves
/// of at most 45 degrees, which differ from them by less than 0.0005 % of the larger radius.
class Path
{
public:
    /// Begins a subpath.
    void MoveTo(const contours::DoublePoint& to);
    void LineTo(const contours::DoublePoint& to);
    void QuadraticTo(const contours::DoublePoint& control, const contours::DoublePoint& to);
    void CubicTo(const contours::DoublePoint& first, const contours::DoublePoint& second,
                 const contours::DoublePoint& to);
    /// An arc of an ellipse, by the rules for SVG's arc command: radii that are too small are
    /// enlarged, and without a radius the arc is a line.
    /// \param rotation of the ellipse, in degrees from the x axis towards the y axis
    void ArcTo(const contours::DoublePoint& radii, double rotation, bool isLarge, bool sweeps,
               const contours::DoublePoint& to);
    /// Joins the end of the subpath to its start. What follows begins there.
    void Close();

    const contours::DoublePoint& Current() const { return current_; }
    const std::vector<Subpath>& Subpaths() const { return subpaths_; }

private:
    Subpath& OpenSubpath();

    std::vector<Subpath> subpaths_;
    contours::DoublePoint current_;
    bool isOpen_ = false;  ///< whether the last subpath can be continued
};

/// Counts line segments and ends the reading with an Error when there are more than
/// limits::maxShapeSegments.
class SegmentLimit
{
public:
    /// Sets the place that the Error names.
    void SetPlace(std::string place) { place_ = std::move(place); }
    const std::string& Place() const { return place_; }
    /// \param count at least 0, not NaN; may be infinite
    void Add(double count);

private:
    std::string place_;
    double count_ = 0;
};

/// The number of equal steps of the parameter in which a piece is cut, so that straight lines
/// deviate from it by at most \p tolerance. Counted by \p limit.
int StepsFor(const PathPiece& piece, double tolerance, SegmentLimit& limit);

/// The subpaths as polygons. Those that are open are closed by a straight line.
/// \param tolerance how far a polygon may deviate from its curve, in the units of the path
Contours Flattened(const Path& path, double tolerance, SegmentLimit& limit);

}  // namespace orvane::shapes
