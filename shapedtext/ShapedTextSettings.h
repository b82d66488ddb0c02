// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The fonts, the style and the lines of a text of any language. Lengths are in ems.

#include "material/NamedColor.h"
#include "shapedtext/LineSettings.h"
#include "shaping/FontQuery.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvane
{

class EmbeddedFont;

/// Tells a face from others of the same name, on this machine and on others.
struct FaceIdentity
{
    std::string family;  ///< empty: unknown
    std::string style;
    std::string fullName;
    std::string fileName;        ///< of its file, without folders
    int index = 0;               ///< as FaceFile::index
    std::uint32_t checksum = 0;  ///< CRC-32 of the file; 0: unknown
    std::vector<AxisValue> axes;
};

/// A font that a text names.
struct ShapedFont
{
    FontQuery query;
    /// The face that was found for the query when the text was made. A text from a file keeps the
    /// face that its author had, also where another one takes its place.
    FaceIdentity face;
    /// The file of the face, where a saved text has it in its record; null where not.
    std::shared_ptr<const EmbeddedFont> embedded;
};

/// How letters look.
struct ShapedStyle
{
    /// Indices in ShapedTextSettings::fonts, those that are preferred first. A span without fonts
    /// has those of the text.
    std::vector<std::size_t> fonts;
    /// Whether letters that no font of the style has are set in an installed font that has them.
    bool usesInstalledFonts = true;
    double size = 1;       ///< from 0.001 to 1,000
    double rise = 0;       ///< of the baseline, from -1,000 to 1,000
    std::string language;  ///< see TextStyle::language
    std::string script;    ///< see TextStyle::script
    /// OpenType features, limits::maxSpanSettings at most.
    std::vector<std::string> features;
    /// Materials of a span's letters. Without a value those of the text.
    std::optional<NamedColor> face;
    std::optional<NamedColor> edge;
    std::optional<NamedColor> bevel;
};

/// A part of a text: bytes of its UTF-8, from the first to the one after the last.
struct ShapedSpan
{
    std::size_t begin = 0;
    std::size_t end = 0;
    ShapedStyle style;
};

struct ShapedTextSettings : LineSettings
{
    std::vector<ShapedFont> fonts;  ///< limits::maxTextFonts at most
    ShapedStyle style;              ///< of everything that is in no span
    /// In the order of the text, without overlaps; limits::maxTextSpans at most.
    std::vector<ShapedSpan> spans;
    /// Whether glyphs for which the font has coloured layers are made of a solid for each colour.
    bool usesColorGlyphs = false;
};

}  // namespace orvane
