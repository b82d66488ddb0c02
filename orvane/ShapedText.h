// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Texts of any language, in any font. This header is there when the library was built with
/// ORVANE_WITH_SHAPING.
///
///     orvane::AddShapedText(document, "Straße Ελλάδα السلام");

#include "orvane/orvane.h"
#include "platform/Export.h"
#include "shaping/Bidi.h"
#include "shaping/FontQuery.h"

#include <optional>
#include <string>
#include <vector>

namespace orvane
{

/// How a text of any language is set. Lengths are in ems.
struct ShapedOptions
{
    /// The edges, the materials, the depth, the alignment and the spacings. Letters that touch each
    /// other, such as Arabic ones, are not moved apart by bevels and spacing.
    TextOptions look;
    /// The fonts; each letter is set in the first that has it. Without fonts the text has the font
    /// of \c look, which may then be a family, with or without words of its style, as well.
    std::vector<FontQuery> fonts;
    /// Whether letters that no font has are set in an installed font that has them.
    bool usesInstalledFonts = true;
    /// Whether a character that no font has, or a font that is not as it was asked for, is an
    /// Error.
    bool isStrict = false;
    /// Whether the text has markup, as ParseMarkup (markup/Markup.h) describes it.
    bool isMarkup = false;

    double size = 1;       ///< of the em square: 0.001 to 1000
    std::string language;  ///< a BCP 47 tag such as "sr-Latn"; empty: that of each script
    std::string script;    ///< four letters such as "Latn"; empty: that of the characters
    std::vector<std::string> features;  ///< OpenType features: "smcp", "liga=0", "-kern"
    TextDirection direction = TextDirection::Auto;

    /// The width at which lines are broken, without the room that bevels and spacing add: 0 to
    /// 1000000. 0: lines end at line ends alone.
    double width = 0;
    bool breaksWords = false;  ///< whether words that are wider than a line are broken
    /// Whether lines are made as wide as \c width, except at ends of paragraphs.
    bool isJustified = false;
    /// The distance of baselines, as a factor of that which the fonts ask for: 0 to 100. Without a
    /// value baselines are one em apart, or the size of the largest letter of the lower line.
    std::optional<double> lineHeight;
    std::vector<double> tabStops;  ///< from the start of a line, each larger than the one before
    double tabInterval = 2;        ///< of the tab stops after those: 0.001 to 1000
};

struct AddedText
{
    Node node;
    /// Sentences about characters that no font has, and about fonts that are not as they were asked
    /// for.
    std::vector<std::string> notices;
};

/// Adds a text in UTF-8, which stands around the origin. Throws Error for a text that is not UTF-8,
/// for markup that cannot be read, and for a font that is not there.
[[nodiscard]] ORVANE_API AddedText AddShapedText(Document& document, const std::string& text,
                                                 const ShapedOptions& options = {});

}  // namespace orvane
