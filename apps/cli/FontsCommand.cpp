// SPDX-License-Identifier: MIT
#include "apps/cli/Commands.h"
#include "apps/cli/FontChoice.h"
#include "apps/cli/OutputFile.h"
#include "apps/cli/TextCodes.h"
#include "apps/cli/info/JsonWriter.h"
#include "extrude/Library.h"
#include "extrude/OrvFont.h"
#include "extrude/OrvFontList.h"
#include "platform/Fonts.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <memory>
#include <optional>

namespace
{

struct FontsOptions
{
    std::string filter;
    std::optional<std::string> check;
    bool json = false;
};

bool ContainsIgnoringCase(const std::string& text, const std::string& part)
{
    const auto same = [](unsigned char a, unsigned char b) {
        return std::tolower(a) == std::tolower(b);
    };
    return std::search(text.begin(), text.end(), part.begin(), part.end(), same) != text.end();
}

std::string FieldText(const BYTE* field)
{
    return ToUtf8(reinterpret_cast<const char*>(field));
}

void CheckFont(const std::string& name)
{
    LoadFonts();
    OrvFont& font = *ChooseFont(name);
    const OUTLINECHECK check = CheckOutlines(font);
    WriteToStandardOutput(ToUtf8(font.GetFullName()) + ": " + std::to_string(check.glyphs) +
                          " glyphs, " + std::to_string(check.repaired) + " repaired, " +
                          std::to_string(check.turned) + " turned, " +
                          std::to_string(check.converted) + " converted, " +
                          std::to_string(check.unrepaired) + " could not be repaired\n");
}

void ListFonts(const FontsOptions& options)
{
    LoadFonts();
    const OrvFontList& fonts = *GetFontList();
    std::string names;
    JsonWriter json;
    json.BeginArray();
    for (POSITION position = fonts.GetHeadPosition(); position != nullptr;)
    {
        OrvFont& font = *fonts.GetNext(position);
        const std::string name = ToUtf8(font.GetFullName());
        if (!ContainsIgnoringCase(name, options.filter))
        {
            continue;
        }
        if (!options.json)
        {
            names += name + '\n';
            continue;
        }
        const ENUMLOGFONTA& record = *font.GetEnumLogFont();
        json.BeginObject(JsonWriter::onOneLine);
        json.Member("name", name);
        json.Member("family", ToUtf8(record.elfLogFont.lfFaceName));
        json.Member("style", FieldText(record.elfStyle));
        json.Member("weight", record.elfLogFont.lfWeight);
        json.Member("italic", record.elfLogFont.lfItalic != 0);
        json.EndObject();
    }
    json.EndArray();
    const std::string text = options.json ? json.Result() : names;
    WriteToStandardOutput(text);
}

}  // namespace

void AddFontsCommand(CLI::App& app)
{
    CLI::App& command = *app.add_subcommand("fonts", "List the installed fonts that can be used");
    const auto options = std::make_shared<FontsOptions>();
    CLI::Option* const filter = command.add_option("FILTER", options->filter,
                                                   "Only names that contain this, in either case");
    CLI::Option* const json =
        command.add_flag("--json", options->json, "As a JSON array of objects");
    command
        .add_option("--check", options->check,
                    "How many glyphs of this font were repaired, turned,\n"
                    "converted, or could not be repaired")
        ->option_text("NAME")
        ->excludes(filter, json);
    AddOutlinesOption(command);
    command.callback([options] {
        if (options->check)
        {
            CheckFont(*options->check);
        }
        else
        {
            ListFonts(*options);
        }
    });
}
