// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "shapedtext/ShapedTextSettings.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvane
{

/// A font that a text names and that is not there.
struct SubstitutedFont
{
    std::string name;  ///< as the text names it
    std::string used;  ///< the full name of the font in its place; empty when there is none
};

/// The fonts of a text, opened.
struct TextFonts
{
    /// By the index of the font. Null where no font could be opened.
    std::vector<std::shared_ptr<const ShapingFace>> faces;
    /// Takes the part of the fonts of a text that names none. Null when no font is installed.
    std::shared_ptr<const ShapingFace> standard;
    std::vector<SubstitutedFont> substituted;
    /// Sentences about faces that are not as the text asks for.
    std::vector<std::string> notices;
};

/// Opens the fonts of a text. Throws what OpenFont throws.
ORVANE_API TextFonts OpenTextFonts(const std::vector<ShapedFont>& fonts);

/// Says which file may be read where a stored text names one; empty when there is none.
using FontFileFinder = std::function<std::string(const std::string& name)>;

/// Opens the fonts of a text that was stored. Another font takes the place of one that is not
/// there. Throws OptionError for a query that makes no sense.
TextFonts OpenStoredFonts(const std::vector<ShapedFont>& fonts, const FontFileFinder& findFile);

FaceIdentity IdentityOf(const ShapingFace& face);

/// The CRC-32 of a file; 0 when it cannot be read. The numbers of the last files are remembered,
/// limits::maxTextFonts at most, and found again as long as the files do not change.
std::uint32_t ChecksumOf(const std::string& file);

}  // namespace orvane
