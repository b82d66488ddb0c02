// SPDX-License-Identifier: MIT
#pragma once

#include "host/CString.h"
#include "material/ColorVector.h"

#include <memory>
#include <optional>
#include <string>

class OrvFont;
class OrvFontString;

/// How a text is cut and coloured. Lengths are in ems.
struct TextLook
{
    enum Style
    {
        square,
        bevel,
        round
    };
    enum BevelOn
    {
        front,
        back,
        both
    };
    enum Align
    {
        left,
        center,
        right
    };

    Style style = bevel;
    BevelOn bevelOn = both;
    Align align = center;
    double bevelWidth = 0.035;
    double depth = 0.3;
    double characterSpacing = 0;
    double lineSpacing = 0;
    ColorVector faceColor{0.95f, 0.70f, 0.20f, 1};
    std::optional<ColorVector> edgeColor;   ///< derived from the face's when not given
    std::optional<ColorVector> bevelColor;  ///< likewise
};

/// A text node, ready to draw. \p text is in the process's code page, its lines separated by CR LF.
std::unique_ptr<OrvFontString> MakeTextNode(const CString& text, OrvFont* font,
                                            const TextLook& look);
