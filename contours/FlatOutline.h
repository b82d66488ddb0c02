// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Flattened outlines: a glyph's contours as polygons, computed in the same way as the library
/// builds glyphs, so that a trial tests the same polygons that will be drawn.

#include "contours/NativeOutline.h"
#include "contours/PlanePoint.h"

#include <vector>

namespace orvane::contours
{

/// One vertex of a flattened outline.
struct FlatVertex
{
    ShortPoint point;         ///< in whole units
    ShortPoint vertexNormal;  ///< in units of 1/10,000; zero until vertices are moved apart
};

struct FlatOutline
{
    std::vector<FlatVertex> vertices;  ///< of all contours, one after the other
    std::vector<int> sizes;            ///< for each contour, the number of its vertices
};

/// Calls \p use for each contour, with the index of its first vertex and the index one past its
/// last.
template <typename Use>
void ForEachContour(const FlatOutline& flat, Use use)
{
    int first = 0;
    for (const int size : flat.sizes)
    {
        use(first, first + size);
        first += size;
    }
}

/// Flattens an outline of one pixel per design unit, after rounding its coordinates down to whole
/// units.
FlatOutline Flatten(const NativeOutline& outline, int unitsPerEm);

/// Does the same as Flatten, but replaces the contents of \p flat and uses its memory again.
void FlattenInto(FlatOutline& flat, const NativeOutline& outline, int unitsPerEm);

/// Whether any two vertices lie at the same place.
bool AnyPlaceRepeats(FlatOutline& flat);

/// Moves apart the vertices that lie at the same place, as the library does when it builds a glyph.
void SeparateVertices(FlatOutline& flat);

/// Calls Flatten and then SeparateVertices. The result is what a built glyph hands to the
/// tessellator.
FlatOutline FlattenAndSeparate(const NativeOutline& outline, int unitsPerEm);

}  // namespace orvane::contours
