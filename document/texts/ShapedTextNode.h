// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// What AddShapedText does, in steps, for programs that build their scenes themselves.

#include "orvane/ShapedText.h"
#include "platform/Export.h"
#include "shapedtext/OrvShapedString.h"
#include "shapedtext/ShapedTextSettings.h"

#include <memory>
#include <string>

namespace orvane
{

/// The font of texts that name none: the first of defaultFonts (document/FontChoice.h) that is
/// installed or, without these, the first of all full names. Throws Error when no font is
/// installed.
ORVANE_API std::string DefaultShapedFont();

/// A text without markup, and how it is set.
struct PreparedText
{
    std::string text;
    ShapedTextSettings settings;
};

/// Reads the markup of a text and makes the settings of its options. The look is not used, but for
/// its font. Throws Error for markup that cannot be read.
ORVANE_API PreparedText PrepareShapedText(const std::string& text, const ShapedOptions& options);

/// A text node that is ready to be added to a scene, without its texture. Throws what AddShapedText
/// throws, but not for isStrict.
ORVANE_API std::unique_ptr<OrvShapedString> MakeShapedText(const std::string& text,
                                                           const ShapedOptions& options);

}  // namespace orvane
