// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Limits.h"
#include "shapedtext/ColorGlyphs.h"
#include "shapedtext/GlyphCache.h"
#include "shaping/TextShaper.h"

#include <memory>

namespace orvane
{

/// What texts of any language share. Like fonts, it is used by one thread at a time. It lives as
/// long as a text does, so that a program that has closed its documents finds fonts that were
/// installed meanwhile.
class SharedShaping
{
public:
    explicit SharedShaping(std::size_t mostGlyphBytes = limits::maxKeptGlyphBytes)
        : glyphs(mostGlyphBytes)
    {}

    TextShaper shaper;
    GlyphCache glyphs;
    ColorGlyphs colors;

    /// The object of the process, made anew when no text has one.
    static std::shared_ptr<SharedShaping> Get();
};

}  // namespace orvane
