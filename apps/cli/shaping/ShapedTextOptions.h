// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/commands/MissingParts.h"
#include "apps/cli/commands/TextArguments.h"
#include "orvane/ShapedText.h"
#include "shaping/FontQuery.h"

#include <optional>
#include <string>
#include <vector>

namespace CLI
{
class App;
class Option;
}  // namespace CLI

namespace orvane
{

/// The options of a command that sets texts of any language: markup, fonts, shaping and lines.
class ShapedTextOptions
{
public:
    /// Adds the options to a command, which must live as long as this object.
    explicit ShapedTextOptions(CLI::App& command);
    ShapedTextOptions(const ShapedTextOptions&) = delete;
    ShapedTextOptions& operator=(const ShapedTextOptions&) = delete;

    CLI::Option* NameOption() const { return name_; }
    /// All options but that of the font's name.
    const std::vector<CLI::Option*>& Others() const { return all_; }
    CLI::Option* WrapOption() const { return wrap_; }

    /// The value of --font, if it was given.
    std::optional<std::string> FontName() const;
    /// How the text is set, without its look. Throws UsageError and Error.
    /// \param strictness with Strictness::Fail, letters are set in the named fonts alone
    ShapedOptions Read(Strictness strictness) const;
    /// The text, with its markup.
    std::string ReadText(const TextArguments& texts) const;

private:
    void AddFontOptions();
    void AddShapingOptions();
    void AddLineOptions();
    /// The font of the text, without spans.
    FontQuery Query() const;

    CLI::App& command_;
    CLI::Option* name_ = nullptr;
    CLI::Option* wrap_ = nullptr;
    std::vector<CLI::Option*> all_;
    ShapedOptions set_;  ///< what needs no further reading
    FontQuery font_;
    bool isItalic_ = false;
    std::string weight_;
    std::string width_;
    std::vector<std::string> fallbacks_;
    std::string axes_;
    std::string features_;
    std::string direction_;
    std::optional<double> lineHeight_;
    std::string tabStops_;
};

}  // namespace orvane
