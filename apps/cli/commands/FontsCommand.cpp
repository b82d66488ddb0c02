// SPDX-License-Identifier: MIT
#include "apps/cli/PrintableText.h"
#include "apps/cli/Terminal.h"
#include "apps/cli/commands/Commands.h"
#include "apps/cli/commands/FontList.h"
#include "apps/cli/commands/OutlinesOption.h"
#if defined(ORVANE_WITH_SHAPING)
#include "apps/cli/shaping/FontSearch.h"
#include "apps/cli/shaping/FontSheet.h"
#endif
#include "document/FontChoice.h"
#include "document/OutputFile.h"
#include "document/TextEncoding.h"
#include "extrude/OrvFont.h"
#include "host/AsciiCase.h"
#include "orvane/orvane.h"
#include "platform/Fonts.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>

namespace orvane
{

namespace
{

struct FontsOptions
{
    std::string filter;
    std::optional<std::string> check;
    bool json = false;
#if defined(ORVANE_WITH_SHAPING)
    FontSearch search;
    std::string output;
#endif
};

bool ContainsIgnoringCase(const std::string& text, const std::string& part)
{
    return LowerAscii(text).find(LowerAscii(part)) != std::string::npos;
}

void CheckFont(const std::string& name)
{
    LoadFonts(FontProgress());
    OrvFont& font = *ChooseFont(name);
    const OUTLINECHECK check = CheckOutlines(font);
    WriteToStandardOutput(
        Printable(ToUtf8(font.GetFullName())) + ": " + std::to_string(check.glyphs) + " glyphs, " +
        std::to_string(check.repaired) + " repaired, " + std::to_string(check.turned) +
        " turned, " + std::to_string(check.converted) + " converted, " +
        std::to_string(check.unrepaired) + " could not be repaired\n");
}

void ListFonts(const FontsOptions& options)
{
    LoadFonts(FontProgress());
    FontList list;
    for (const FontInfo& font : Fonts())
    {
        if (ContainsIgnoringCase(font.name, options.filter))
        {
            list.Add(font);
        }
    }
    WriteToStandardOutput(list.Result(options.json));
}

}  // namespace

void AddFontsCommand(CLI::App& app)
{
    CLI::App& command = *app.add_subcommand("fonts", "List the installed fonts that can be used");
    const auto options = std::make_shared<FontsOptions>();
    CLI::Option* const filter = command.add_option(
        "FILTER", options->filter, "Lists only names that contain this, in upper or lower\ncase");
    CLI::Option* const json =
        command.add_flag("--json", options->json, "Prints a JSON array of objects");
    [[maybe_unused]] CLI::Option* const check =  // used with ORVANE_WITH_SHAPING alone
        command
            .add_option("--check", options->check,
                        "Counts how many glyphs of this font were repaired,\n"
                        "turned, converted, or could not be repaired")
            ->option_text("NAME")
            ->excludes(filter, json);
#if defined(ORVANE_WITH_SHAPING)
    for (CLI::Option* const option : AddFontSearchOptions(command, options->search))
    {
        check->excludes(option);
    }
    CLI::Option* const sheet = command.get_option("--sample");
    sheet->excludes(json, command.get_option("--families"));
    sheet->needs(command
                     .add_option("-o,--output", options->output,
                                 "The picture file of --sample, PNG or BMP by its name")
                     ->option_text("FILE")
                     ->needs(sheet));
#endif
    AddOutlinesOption(command);
    command.callback([options] {
        if (options->check)
        {
            CheckFont(*options->check);
            return;
        }
#if defined(ORVANE_WITH_SHAPING)
        const auto isListed = [&](const std::string& name) {
            return ContainsIgnoringCase(name, options->filter);
        };
        if (options->search.isSheet)
        {
            DrawFontSheet(FindFamilies(options->search, isListed), options->output);
            return;
        }
        if (options->search.IsAsked())
        {
            WriteToStandardOutput(SearchFonts(options->search, options->json, isListed));
            return;
        }
#endif
        ListFonts(*options);
    });
}

}  // namespace orvane
