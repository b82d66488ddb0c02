// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/EdgeStyle.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <memory>
#include <string>

class DrawingParameters;
class OrvFont;
class OrvFontString;

/// The font that all figures are measured with, DejaVu Sans. Ends the program when it is not
/// installed.
OrvFont* BenchFont();

/// Makes a text of \p characters characters in lines of 40, with all its glyphs built.
std::unique_ptr<OrvFontString> MakeText(int characters, orvane::EdgeStyle style);

/// The parameters that draw a node and its children as solids.
DrawingParameters SolidDraw();

/// Makes a tree of \p nodes texts of one character each and returns its root. The root and each
/// further node have \p children children, as long as there are nodes left. The letters stand side
/// by side in a square around the origin, 16 units wide.
std::unique_ptr<DrawingObject> MakeTree(int nodes, int children);

/// A scene with the word "Orvane" above the words "square", "bevel" and "round", each word with the
/// edges that it names, and a view in which the words fill a picture of \p width by \p height
/// pixels.
struct Showcase
{
    Showcase(int width, int height);

    SceneObject scene;
    ViewObject view;
};
