// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/commands/MissingParts.h"
#include "apps/cli/commands/TextArguments.h"
#include "orvane/Options.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class OrvFontString;

namespace orvane
{

class ShapedTextOptions;

/// The options of ShapedTextOptions, without --font: those that a tool does not have that was built
/// without ORVANE_WITH_SHAPING, and that --plain does not take.
extern const std::vector<std::string> shapedOptionNames;

/// The text of a scene and what sets it: a text of any language or, with --plain, the characters of
/// one code page, one after another.
class SceneText
{
public:
    /// The options are added to the command in two steps, between which it may add its own. The
    /// command must live as long as this object.
    explicit SceneText(CLI::App& command);
    ~SceneText();
    SceneText(const SceneText&) = delete;
    SceneText& operator=(const SceneText&) = delete;
    /// Adds --plain and the options about fonts, shaping and lines.
    void AddSettings();

    bool IsGiven() const { return lines_.AreGiven(); }
    /// The options without TEXT.
    const std::vector<CLI::Option*>& All() const { return all_; }
    /// Whether lines may be justified.
    static bool CanJustify();

    /// Throws UsageError when the options contradict each other.
    void Check(bool isJustified) const;
    /// The text as a node without its texture. Tells on standard error what is missing, and throws
    /// Error for it when the command is to fail.
    std::unique_ptr<OrvFontString> Make(const TextOptions& look, bool isJustified,
                                        Strictness strictness) const;

private:
    std::unique_ptr<OrvFontString> MakePlain(const TextOptions& look) const;

    CLI::App& command_;
    TextArguments lines_;
    bool isPlain_ = false;
    std::optional<std::string> font_;            ///< without ORVANE_WITH_SHAPING
    std::shared_ptr<ShapedTextOptions> shaped_;  ///< null without ORVANE_WITH_SHAPING
    std::vector<CLI::Option*> all_;
};

}  // namespace orvane
