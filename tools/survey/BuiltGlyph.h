// SPDX-License-Identifier: MIT
#pragma once

#include "contours/NativeOutline.h"
#include "contours/PlanePoint.h"

#include <vector>

/// A glyph that the library has built from an outline, judged by its faces and walls. It does not
/// use the library's own trial of outlines, so that the survey would notice a mistake in that.
struct BuiltGlyph
{
    BuiltGlyph(const orvane::contours::NativeOutline& outline, int unitsPerEm);

    bool hasNoCaps = false;      ///< the tessellator refused the outline
    bool hasFalseHoles = false;  ///< the caps' area is not that of the non-zero rule
    int contourCount = 0;        ///< contours that have vertices
    int wrongContours = 0;       ///< contours with the filled area on their left
    double capArea = 0;          ///< in square units
};
