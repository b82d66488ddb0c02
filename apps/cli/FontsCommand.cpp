// SPDX-License-Identifier: MIT
#include "apps/cli/Commands.h"
#include "apps/cli/FontChoice.h"
#include "apps/cli/OutputFile.h"
#include "apps/cli/TextCodes.h"
#include "extrude/Library.h"
#include "extrude/OrvFont.h"
#include "extrude/OrvFontList.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <memory>

namespace
{

struct FontsOptions
{
    std::string filter;
    bool json = false;
};

bool ContainsIgnoringCase(const std::string& text, const std::string& part)
{
    const auto same = [](unsigned char a, unsigned char b) {
        return std::tolower(a) == std::tolower(b);
    };
    return std::search(text.begin(), text.end(), part.begin(), part.end(), same) != text.end();
}

std::string JsonText(const std::string& text)
{
    std::string json = "\"";
    for (const unsigned char c : text)
    {
        if (c == '"' || c == '\\')
        {
            json += {'\\', static_cast<char>(c)};
        }
        else if (c < 0x20)
        {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", c);
            json += escape;
        }
        else
        {
            json += static_cast<char>(c);
        }
    }
    return json + '"';
}

std::string FieldText(const BYTE* field)
{
    return ToUtf8(reinterpret_cast<const char*>(field));
}

void ListFonts(const FontsOptions& options)
{
    LoadFonts();
    const OrvFontList& fonts = *GetFontList();
    std::string text;
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
            text += name + '\n';
            continue;
        }
        const ENUMLOGFONTA& record = *font.GetEnumLogFont();
        text += text.empty() ? "\n" : ",\n";
        text += "  {\"name\": " + JsonText(name) +
                ", \"family\": " + JsonText(ToUtf8(record.elfLogFont.lfFaceName)) +
                ", \"style\": " + JsonText(FieldText(record.elfStyle)) +
                ", \"weight\": " + std::to_string(record.elfLogFont.lfWeight) +
                ", \"italic\": " + (record.elfLogFont.lfItalic != 0 ? "true" : "false") + "}";
    }
    if (options.json)
    {
        text = "[" + text + (text.empty() ? "]\n" : "\n]\n");
    }
    OutputFile output("-");
    output.Write(text.data(), text.size());
    output.Commit();
}

}  // namespace

void AddFontsCommand(CLI::App& app)
{
    CLI::App& command = *app.add_subcommand("fonts", "List the installed fonts that can be used");
    const auto options = std::make_shared<FontsOptions>();
    command.add_option("FILTER", options->filter, "Only names that contain this, in either case");
    command.add_flag("--json", options->json, "As a JSON array of objects");
    command.callback([options] { ListFonts(*options); });
}
