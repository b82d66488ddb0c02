// SPDX-License-Identifier: MIT
#pragma once

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
