// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Glyphs for tests: native outline buffers built record by record, outlines from lists of points,
/// and a set of shapes that most questions about letters can be asked of. All are in outline units
/// with y up, outer contours clockwise.

#include "outline/TTGlyph.h"
#include "platform/Fonts.h"
#include "tests/support/RecordBytes.h"

#include <initializer_list>
#include <vector>

/// Coordinates of the native outline, in whole and fractional units.
struct OutlinePlace
{
    double x;
    double y;
};

/// Builds the buffer that GetGlyphOutlineA fills (GGO_NATIVE).
class NativeOutline
{
public:
    /// Begins a contour.
    NativeOutline& Start(OutlinePlace start);
    /// Adds a run to the contour begun last.
    NativeOutline& Lines(std::initializer_list<OutlinePlace> places)
    {
        return Curve(TT_PRIM_LINE, places);
    }
    NativeOutline& Spline(std::initializer_list<OutlinePlace> places)
    {
        return Curve(TT_PRIM_QSPLINE, places);
    }
    NativeOutline& Curve(WORD type, std::initializer_list<OutlinePlace> places);

    Bytes Get() const;

private:
    struct Polygon
    {
        RecordBytes start;
        RecordBytes curves;
    };
    std::vector<Polygon> polygons_;
};

/// The glyph that the buffer describes.
TTGlyph ReadOutline(Bytes buffer);

/// A point on the curve.
TTPoint On(int x, int y);
/// A control point with its number of segments.
TTPoint Off(int x, int y, int resolution = 5);

using OutlinePoints = std::vector<TTPoint>;

TTContour MakeContour(const OutlinePoints& points);

/// A defined glyph of such contours.
TTGlyph MakeGlyph(const std::vector<OutlinePoints>& contours);

/// Four sharp corners: (0, 0), (0, 1000), (1000, 1000), (1000, 0).
TTGlyph SquareGlyph();

/// The square with a hole from 250 to 750, which runs the other way.
TTGlyph SquareWithHoleGlyph();

/// Straight sides and one quarter of a curve: (0, 0), (0, 1000), control (1000, 1000), (1000, 0).
TTGlyph QuarterGlyph();

/// Nothing but curves, all on-curve points but the first implied: a disc of radius 500 about
/// (500, 500), roughly.
TTGlyph DiscGlyph();

/// A spike 1000 high and 80 wide: its tip turns back by 175 degrees.
TTGlyph HairpinGlyph();

/// A square of which the right side is notched down to (500, 500): the notch is a concave corner
/// sharper than a right angle.
TTGlyph NotchGlyph();

/// Two squares that share the corner (500, 500).
TTGlyph TouchingGlyph();

/// A bow tie: the outline crosses itself at (500, 500).
TTGlyph CrossingGlyph();

/// Defined and without contours, as a space is.
TTGlyph EmptyGlyph();
