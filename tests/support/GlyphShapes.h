// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Glyphs for tests: native outline buffers built record by record, outlines from lists of points,
/// and a set of shapes with the features that letters have. All are in outline units with y up, and
/// outer contours run clockwise.

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

/// Builds a buffer like those that GetGlyphOutlineA fills, in the format GGO_NATIVE.
class NativeOutline
{
public:
    /// Begins a contour at \p start.
    NativeOutline& Start(OutlinePlace start);
    /// Adds a run of lines to the contour that was begun last.
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

/// A glyph of the given contours, marked as defined.
TTGlyph MakeGlyph(const std::vector<OutlinePoints>& contours);

/// Four sharp corners: (0, 0), (0, 1000), (1000, 1000), (1000, 0).
TTGlyph SquareGlyph();

/// The square of SquareGlyph with a square hole from 250 to 750. The hole runs counter-clockwise.
TTGlyph SquareWithHoleGlyph();

/// Two straight sides and one curve: (0, 0), (0, 1000), control point (1000, 1000), (1000, 0).
TTGlyph QuarterGlyph();

/// Roughly a disc of radius 500 around (500, 500). It has only curves, and all points on the curve
/// except the first are implied.
TTGlyph DiscGlyph();

/// A spike 1000 high and 80 wide: its tip turns back by 175 degrees.
TTGlyph HairpinGlyph();

/// A square with a notch that reaches from the right side to (500, 500). The tip of the notch is a
/// concave corner sharper than a right angle.
TTGlyph NotchGlyph();

/// Two squares that share the corner (500, 500).
TTGlyph TouchingGlyph();

/// A bow tie: the outline crosses itself at (500, 500).
TTGlyph CrossingGlyph();

/// A glyph without contours that is marked as defined, like a space.
TTGlyph EmptyGlyph();
