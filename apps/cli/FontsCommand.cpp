// SPDX-License-Identifier: MIT
#include "apps/cli/Commands.h"
#include "apps/cli/FontChoice.h"
#include "apps/cli/JsonWriter.h"
#include "apps/cli/OutputFile.h"
#include "apps/cli/TextCodes.h"
#include "extrude/Library.h"
#include "extrude/OrvFont.h"
#include "extrude/OrvFontList.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
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

std::string FieldText(const BYTE* field)
{
    return ToUtf8(reinterpret_cast<const char*>(field));
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
        names += name + '\n';
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
    command.add_option("FILTER", options->filter, "Only names that contain this, in either case");
    command.add_flag("--json", options->json, "As a JSON array of objects");
    command.callback([options] { ListFonts(*options); });
}
