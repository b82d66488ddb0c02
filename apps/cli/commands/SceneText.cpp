// SPDX-License-Identifier: MIT
#include "apps/cli/commands/SceneText.h"

#include "apps/cli/Errors.h"
#include "apps/cli/Terminal.h"
#include "apps/cli/commands/OptionAdder.h"
#if defined(ORVANE_WITH_SHAPING)
#include "apps/cli/shaping/ShapedParts.h"
#include "apps/cli/shaping/ShapedTextOptions.h"
#include "document/texts/ShapedTextNode.h"
#endif
#include "document/FontChoice.h"
#include "document/TextEncoding.h"
#include "document/TextNode.h"
#include "platform/CodePages.h"
#include "platform/Fonts.h"

#include <CLI/CLI.hpp>

namespace orvane
{

const std::vector<std::string> shapedOptionNames = {
    "--markup",    "--font-pattern", "--font-file",   "--font-index", "--weight",
    "--width",     "--italic",       "--instance",    "--axis",       "--fallback",
    "--language",  "--script",       "--direction",   "--features",   "--wrap",
    "--tab-stops", "--tab-interval", "--break-words", "--line-height"};

SceneText::SceneText(CLI::App& command) : command_(command), lines_(command)
{
    all_ = {lines_.FileOption()};
}

SceneText::~SceneText() = default;

void SceneText::Check(bool isJustified) const
{
    const auto isGiven = [this](const std::string& name) {
        return command_.get_option(name)->count() > 0;
    };
    if (isPlain_ || !CanJustify())
    {
        for (const std::string& name : shapedOptionNames)
        {
            if (isGiven(name))
            {
                throw UsageError(
                    name + (CanJustify() ? ": --plain has no such option"
                                         : ": this tool was built without texts of any language "
                                           "(ORVANE_WITH_SHAPING=OFF)"));
            }
        }
        if (isJustified)
        {
            throw UsageError("--align justify: not with --plain");
        }
        return;
    }
    if (isJustified && !isGiven("--wrap"))
    {
        throw UsageError("--align justify: --wrap is required");
    }
}

#if defined(ORVANE_WITH_SHAPING)

bool SceneText::CanJustify()
{
    return true;
}

void SceneText::AddSettings()
{
    all_.push_back(command_.add_flag("--plain", isPlain_,
                                     "Sets the characters of one code page side by side,\n"
                                     "without kerning"));
    shaped_ = std::make_shared<ShapedTextOptions>(command_);
    all_.push_back(shaped_->NameOption());
    all_.insert(all_.end(), shaped_->Others().begin(), shaped_->Others().end());
}

std::unique_ptr<OrvFontString> SceneText::Make(const TextOptions& look, bool isJustified,
                                               Strictness strictness) const
{
    if (isPlain_)
    {
        TextOptions plain = look;
        plain.font = shaped_->FontName();
        return MakePlain(plain);
    }
    ShapedOptions options = shaped_->Read(strictness);
    options.look = look;
    options.isJustified = isJustified;
    std::unique_ptr<OrvShapedString> text = MakeShapedText(shaped_->ReadText(lines_), options);
    TellFontNotices(text->GetFontNotices(), strictness);
    TellMissingCharacters(text->GetMissingCharacters(), strictness);
    return text;
}

#else

bool SceneText::CanJustify()
{
    return false;
}

void SceneText::AddSettings()
{
    OptionAdder add(command_);
    all_.push_back(
        command_.add_flag("--plain", isPlain_, "Has no effect in this build of the tool"));
    all_.push_back(add("--font", font_, "NAME",
                       "A full name as \"orvane fonts\" lists it [DejaVu Sans\nBold, or the first "
                       "of some others]"));
    for (const std::string& name : shapedOptionNames)
    {
        // Hidden, and with a value or without one: Check refuses it.
        all_.push_back(command_
                           .add_option_function<std::vector<std::string> >(
                               name, [](const std::vector<std::string>&) {})
                           ->expected(0, 1)
                           ->group(""));
    }
}

std::unique_ptr<OrvFontString> SceneText::Make(const TextOptions& look, bool, Strictness) const
{
    TextOptions plain = look;
    plain.font = font_;
    return MakePlain(plain);
}

#endif

std::unique_ptr<OrvFontString> SceneText::MakePlain(const TextOptions& look) const
{
    const EncodedText encoded = EncodeLines(lines_.Lines());
    SetProcessCodePage(encoded.codePage);
    LoadFonts(FontProgress());  // after SetProcessCodePage, because fonts keep the code page
    OrvFont* const font = ChooseFont(look.font);
    CheckCharacters(*font, encoded.text);
    return MakeTextNode(encoded.text, font, look);
}

}  // namespace orvane
