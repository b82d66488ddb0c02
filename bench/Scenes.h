// SPDX-License-Identifier: MIT
#pragma once

#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <memory>
#include <string>

class DrawingParameters;
class OrvFont;
class OrvFontString;

/// The face that all figures are measured with, from the registry; the program ends when there is
/// none.
OrvFont* BenchFont();

/// A text of so many characters, in lines of 40, with an edge style (0 square, 1 bevel, 2 round).
/// Its glyphs are built.
std::unique_ptr<OrvFontString> MakeText(int characters, int style);

/// Parameters of a solid draw.
DrawingParameters SolidDraw();

/// A tree of so many one-character texts under the node that is returned, itself one of them. Every
/// node but the last has \p children children. Side by side in a square of 16, around the origin.
std::unique_ptr<DrawingObject> MakeTree(int nodes, int children);

/// The project's name over the names of the three edge styles, each cut as it says, and a view of
/// them that fills a picture of that size.
struct Showcase
{
    Showcase(int width, int height);

    SceneObject scene;
    ViewObject view;
};
