// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Texts of any language, in any font. This header is there when the library was built with
/// ORVANE_WITH_SHAPING.
///
///     orvane::AddShapedText(document, "Straße Ελλάδα السلام");

#include "orvane/orvane.h"
#include "platform/Export.h"
#include "shapedtext/LineSettings.h"
#include "shaping/FontQuery.h"

#include <string>
#include <vector>

namespace orvane
{

/// How a text of any language is set. Lengths are in ems.
struct ShapedOptions : LineSettings
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
    /// Whether glyphs for which the font has coloured layers are made of a solid for each colour.
    /// Joined letters (TextOptions::fusion) have the colours of the text.
    bool usesColorGlyphs = false;
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

/// Puts the files of the fonts that the texts of any language in a document use into it, so that
/// Save() stores them and the document looks the same where they are not installed. A font that
/// took the place of a font without a letter becomes one of the fonts that the text names.
///
/// Returns a sentence for each font that is left out: one whose licence bits (fsType in its table
/// "OS/2") do not allow it, one that is missing, and one of more than limits::maxEmbeddedFontBytes.
ORVANE_API std::vector<std::string> EmbedFonts(Document& document);

}  // namespace orvane
