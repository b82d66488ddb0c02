// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"
#include "platform/Export.h"
#include "platform/ShapingFace.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane
{

/// How a part of a text differs from the text around it.
struct SpanStyle
{
    /// A font's family with its style, such as "Inter Semi Bold". Empty: the font of the text.
    std::string font;
    bool bold = false;
    bool italic = false;
    /// The size of the letters: 1 is the size of the text, 0.01 the least and 100 the most.
    double size = 1;
    /// How far the baseline lies above that of the text, in ems of the text's size.
    double rise = 0;
    std::optional<Color> face;
    std::optional<Color> edge;
    std::optional<Color> bevel;
    /// OpenType features, such as "liga=0" or "smcp". A later one overrules an earlier one.
    std::vector<std::string> features;
    /// Each axis once.
    std::vector<AxisValue> axes;
};

/// Bytes \p begin to \p end - 1 of a text, which have one style.
struct TextSpan
{
    std::size_t begin = 0;
    std::size_t end = 0;
    SpanStyle style;
};

/// A text in UTF-8 without its markup.
struct MarkedText
{
    std::string text;
    /// In the order of the text. Together they cover it; none is empty. Texts that touch and have
    /// equal styles are one span.
    std::vector<TextSpan> spans;
};

/// Reads a text with markup, which is a part of what Pango reads
/// (https://docs.gtk.org/Pango/pango_markup.html):
///
/// - <b>, <i>: bold, italic
/// - <big>, <small>: 1.2 times and 1 / 1.2 times the size
/// - <sup>, <sub>: 1 / 1.2 times the size, raised by 0.35 or lowered by 0.15 ems of the size around
/// - <span font="Inter Bold" size="1.5" color="gold" edge="#884400" bevel="white" rise="0.1"
///   features="liga=0,smcp" axes="wght=650,wdth=80">, with any of these attributes. A size is a
///   factor or a percentage ("150%") of the size around, a rise is in ems of the size around.
/// - &amp; &lt; &gt; &quot; &apos; &#233; &#xE9;
///
/// Line breaks are those of the text. Elements lie inside each other; the inner one overrules.
/// Throws Error with the line and the column of a mistake, both counted from 1, the column in
/// characters.
/// \param markup in UTF-8, limits::maxMarkupBytes bytes at most
ORVANE_API MarkedText ParseMarkup(std::string_view markup);

/// The text as markup that ParseMarkup reads as the same text.
ORVANE_API std::string EscapeMarkup(std::string_view text);

}  // namespace orvane
