// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/commands/MissingParts.h"
#include "apps/cli/commands/TextArguments.h"
#include "shaping/FontQuery.h"
#include "shaping/TextLayout.h"

#include <string>
#include <vector>

namespace orvane
{

/// A text of any language and how it is set.
struct ShapedText
{
    std::string text;  ///< in UTF-8, without markup; lines end with LF
    LayoutOptions options;
};

/// The options of a command that sets texts of any language: the text, fonts, shaping and lines.
class ShapedTextOptions
{
public:
    /// Adds the options to a command, which must live as long as this object.
    explicit ShapedTextOptions(CLI::App& command);

    /// Reads the text and opens its fonts. What is not as it was asked for is told on standard
    /// error. Throws UsageError and Error.
    /// \param strictness with Strictness::Fail, letters are set in the named fonts alone
    ShapedText Read(Strictness strictness) const;

private:
    void AddFontOptions();
    void AddShapingOptions();
    void AddLineOptions();
    /// The font of the text, without spans.
    FontQuery Query() const;

    CLI::App& command_;
    TextArguments texts_;
    bool hasMarkup_ = false;
    FontQuery font_;
    bool isItalic_ = false;
    std::string weight_;
    std::string width_;
    std::vector<std::string> fallbacks_;
    std::string axes_;
    std::string features_;
    std::string direction_;
    std::string alignment_;
    LayoutOptions layout_;
};

/// Tells on standard error which characters no font has: for each script its first characters and,
/// where one is known, the package that has them. Throws Error when there are any and the command
/// is to fail.
void TellMissingCharacters(const std::vector<MissingCharacter>& missing, Strictness strictness);

}  // namespace orvane
