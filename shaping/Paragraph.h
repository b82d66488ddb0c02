// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Paragraphs, split into items of one face, script, language, direction and style, and shaped.

#include "shaping/Bidi.h"
#include "shaping/CheckedText.h"
#include "shaping/FaceFinder.h"
#include "shaping/LineBreaks.h"
#include "shaping/RunCache.h"
#include "shaping/TextLayout.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane
{

/// A style that was checked, and what was read from its texts.
struct ReadyStyle
{
    const TextStyle* style = nullptr;
    std::vector<FontFeature> features;
    std::optional<ScriptTag> script;
    /// The first style that shapes alike. Fonts are not compared: items have faces.
    std::size_t alike = 0;
};

/// A text and its styles, checked.
struct ReadyText
{
    CheckedText text;
    std::vector<ReadyStyle> styles;      ///< first LayoutOptions::style, then those of the spans
    std::vector<std::uint32_t> styleOf;  ///< of each character, in \c styles
    std::string userLanguage;
};

enum class ItemKind
{
    Text,
    Tab,
    LineEnd  ///< a line end inside a paragraph; it takes no room
};

/// Characters of a paragraph that are shaped together.
struct TextItem
{
    std::size_t begin = 0;
    std::size_t end = 0;
    ItemKind kind = ItemKind::Text;
    std::shared_ptr<const ShapingFace> face;
    ScriptTag script = commonScript;
    std::string language;
    std::uint8_t level = 0;
    std::size_t style = 0;  ///< in ReadyText::styles
    RunGlyphs glyphs;       ///< null except for Text

    bool IsRightToLeft() const { return level % 2 != 0; }
};

/// A paragraph that was shaped in one piece. Places are counted in characters from its begin.
struct Paragraph
{
    std::size_t first = 0;       ///< its first character in the text
    std::u32string_view text;    ///< without the line end
    std::size_t firstStyle = 0;  ///< of its first character or, if it is empty, of its line end
    BidiLevels levels;
    std::vector<TextItem> items;  ///< in the order of the text
    std::vector<bool> breaks;     ///< for each character whether a line may end after it
    /// For each character the width of the glyphs whose cluster it begins.
    std::vector<double> advances;
    /// For each character 1 if the glyphs do not change when a line begins with it, else
    /// 0.
    std::vector<char> isSafeStart;
};

/// Whether a character ends a line inside a paragraph.
bool EndsLine(char32_t character);

/// Checks a text and its options. Throws Error for the text and OptionError for an option.
ReadyText Prepare(std::string_view utf8, const LayoutOptions& options);

/// Splits a text into paragraphs and shapes them.
/// \param findsBreaks whether to find where lines may end; without that, Paragraph::breaks is empty
/// \param missing receives each character that no font has, once
std::vector<Paragraph> ShapeParagraphs(const ReadyText& ready, TextDirection direction,
                                       bool findsBreaks, FaceFinder* finder, RunCache* cache,
                                       std::vector<MissingCharacter>* missing);

/// The run of the characters from \p begin to \p end of an item.
ShapingRun RunOf(const ReadyText& ready, const Paragraph& paragraph, const TextItem& item,
                 std::size_t begin, std::size_t end);

}  // namespace orvane
