// SPDX-License-Identifier: MIT
#pragma once

#include "material/NamedColor.h"

#include <array>

namespace orvane
{

/// A material by what it is made of, as glTF has it and as the studio renderer draws it. Colours
/// are linear: twice the number is twice the light.
struct MetallicRoughness
{
    std::array<double, 4> baseColor = {};  ///< red, green, blue and opacity, 0 to 1
    std::array<double, 3> emission = {};
    bool isMetal = false;
    double roughness = 1;  ///< 0 for a mirror, 1 for chalk
};

/// The linear value, 0 to 1, of a colour's red, green or blue as a screen shows it (sRGB).
double LinearFromScreen(double value);

/// Red, green, blue and alpha, each 0 to 1. A value that is no number becomes 0.
std::array<float, 4> UsualColor(const ColorVector& color);

/// What a material of OpenGL is made of, judged by its looks. The rule:
///
/// The base colour is the diffuse colour, and the opacity is its alpha. A material is metal when
/// its name has a word for a metal ("Old Gold"), when its highlight is tinted like its body, as
/// only metals tint their highlights, or when its diffuse colour has the hue of gold: 36 to 46
/// degrees, with a saturation of at least 0.45. Any other material is a dielectric. The roughness r
/// follows from the shininess n so that the highlights are equally wide: n = 2 / r^4 - 2.
MetallicRoughness ToMetallicRoughness(const NamedColor& material);

}  // namespace orvane
