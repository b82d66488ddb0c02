// SPDX-License-Identifier: MIT
#pragma once

#include "shapedtext/ShapedTextSettings.h"

/// The settings of a text in an installed font, which takes no letters from other fonts.
inline orvane::ShapedTextSettings InFont(const char* name)
{
    orvane::ShapedTextSettings settings;
    settings.fonts.emplace_back().query.name = name;
    settings.style.fonts = {0};
    settings.style.usesInstalledFonts = false;
    return settings;
}
