// SPDX-License-Identifier: MIT
#include "apps/cli/Errors.h"
#include "apps/cli/PrintableText.h"
#include "apps/cli/commands/Commands.h"
#include "apps/cli/commands/CostOptions.h"
#include "apps/cli/commands/OptionAdder.h"
#include "apps/cli/info/JsonWriter.h"
#include "apps/cli/info/TextTable.h"
#include "apps/cli/shaping/LayoutInfo.h"
#include "apps/cli/shaping/ShapedParts.h"
#include "apps/cli/shaping/ShapedTextOptions.h"
#include "document/OutputFile.h"
#include "document/texts/ShapedTextNode.h"
#include "shapedtext/LaidText.h"
#include "shapedtext/TextFonts.h"
#include "shaping/TextShaper.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string_view>

namespace orvane
{

namespace
{

// The names of the values of LineAlignment, in their order.
const std::vector<std::string> alignmentNames = {"start", "left", "center", "right", "justify"};

struct Options
{
    explicit Options(CLI::App& command) : texts(command), set(command) {}

    TextArguments texts;
    ShapedTextOptions set;
    std::string alignment = alignmentNames.front();
    bool json = false;
    Strictness strictness = Strictness::GoOn;
    CostLimits costs;
};

std::string_view TextOf(std::string_view text, const PlacedGlyph& glyph)
{
    return text.substr(glyph.textBegin, glyph.textEnd - glyph.textBegin);
}

/// The box of a glyph at its place.
std::optional<GlyphBox> PlacedBox(const TextLayout& layout, const PlacedGlyph& glyph)
{
    const std::optional<GlyphBox> box = layout.faces[glyph.face]->BoxOf(glyph.glyph);
    if (!box)
    {
        return std::nullopt;
    }
    return GlyphBox{glyph.x + box->left * glyph.size, glyph.y + box->bottom * glyph.size,
                    glyph.x + box->right * glyph.size, glyph.y + box->top * glyph.size};
}

/// The smallest box around the glyphs from \p first to \p end - 1.
std::optional<GlyphBox> BoxOfCluster(const TextLayout& layout, std::size_t first, std::size_t end)
{
    std::optional<GlyphBox> whole;
    for (std::size_t n = first; n < end; ++n)
    {
        const std::optional<GlyphBox> box = PlacedBox(layout, layout.glyphs[n]);
        if (!whole || !box)
        {
            whole = whole ? whole : box;
            continue;
        }
        whole->left = std::min(whole->left, box->left);
        whole->bottom = std::min(whole->bottom, box->bottom);
        whole->right = std::max(whole->right, box->right);
        whole->top = std::max(whole->top, box->top);
    }
    return whole;
}

/// The end of the glyphs of the same characters.
std::size_t EndOfCluster(const TextLayout& layout, std::size_t first, std::size_t end)
{
    const PlacedGlyph& glyph = layout.glyphs[first];
    std::size_t last = first + 1;
    while (last < end && layout.glyphs[last].textBegin == glyph.textBegin &&
           layout.glyphs[last].textEnd == glyph.textEnd)
    {
        ++last;
    }
    return last;
}

void WriteBox(JsonWriter& json, const std::optional<GlyphBox>& box)
{
    if (box)
    {
        json.Numbers("box", box->left, box->bottom, box->right, box->top);
        return;
    }
    json.Key("box");
    json.Null();
}

/// Writes the glyphs from \p first to \p end - 1, which stand for the same characters.
void WriteCluster(JsonWriter& json, std::string_view text, const TextLayout& layout,
                  std::size_t first, std::size_t end)
{
    const PlacedGlyph& leftmost = layout.glyphs[first];
    json.BeginObject();
    json.Member("begin", leftmost.textBegin);
    json.Member("end", leftmost.textEnd);
    json.Member("text", TextOf(text, leftmost));
    json.Member("rightToLeft", leftmost.isRightToLeft);
    WriteBox(json, BoxOfCluster(layout, first, end));
    json.Key("glyphs");
    json.BeginArray();
    for (std::size_t n = first; n < end; ++n)
    {
        const PlacedGlyph& glyph = layout.glyphs[n];
        json.BeginObject(JsonWriter::Layout::OneLine);
        json.Member("font", glyph.face);
        json.Member("id", glyph.glyph);
        json.Member("x", glyph.x);
        json.Member("y", glyph.y);
        json.Member("advance", glyph.advance);
        json.Member("size", glyph.size);
        WriteBox(json, PlacedBox(layout, glyph));
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
}

void WriteLine(JsonWriter& json, std::string_view text, const TextLayout& layout,
               const TextLine& line)
{
    json.BeginObject();
    json.Member("begin", line.textBegin);
    json.Member("end", line.textEnd);
    json.Member("rightToLeft", line.isRightToLeft);
    json.Member("endsParagraph", line.endsParagraph);
    json.Member("left", line.left);
    json.Member("width", line.width);
    json.Member("baseline", line.baseline);
    json.Member("ascent", line.ascent);
    json.Member("descent", line.descent);
    json.Key("clusters");
    json.BeginArray();
    const std::size_t end = line.firstGlyph + line.glyphCount;
    for (std::size_t first = line.firstGlyph; first < end;)
    {
        const std::size_t next = EndOfCluster(layout, first, end);
        WriteCluster(json, text, layout, first, next);
        first = next;
    }
    json.EndArray();
    json.EndObject();
}

std::string LayoutToJson(std::string_view text, const TextLayout& layout)
{
    JsonWriter json;
    json.BeginObject();
    json.Member("text", text);
    json.Member("width", layout.width);
    json.Member("top", layout.top);
    json.Member("bottom", layout.bottom);
    WriteFaces(json, "fonts", layout);
    json.Key("lines");
    json.BeginArray();
    for (const TextLine& line : layout.lines)
    {
        WriteLine(json, text, layout, line);
    }
    json.EndArray();
    WriteMissing(json, layout.missing);
    json.EndObject();
    return json.Result();
}

/// The numbers with a blank between them.
std::string NumbersText(std::initializer_list<double> numbers)
{
    std::string text;
    for (const double number : numbers)
    {
        text += (text.empty() ? "" : " ") + NumberText(number);
    }
    return text;
}

/// The glyphs of a line, one a row.
std::string GlyphTable(std::string_view text, const TextLayout& layout, const TextLine& line)
{
    TextTable table;
    table.Add({"bytes", "text", "font", "glyph", "x", "y", "advance", "box"});
    for (std::size_t n = line.firstGlyph; n < line.firstGlyph + line.glyphCount; ++n)
    {
        const PlacedGlyph& glyph = layout.glyphs[n];
        const std::optional<GlyphBox> box = PlacedBox(layout, glyph);
        table.Add({std::to_string(glyph.textBegin) + "-" + std::to_string(glyph.textEnd),
                   Quoted(TextOf(text, glyph)), std::to_string(glyph.face),
                   std::to_string(glyph.glyph), NumberText(glyph.x), NumberText(glyph.y),
                   NumberText(glyph.advance),
                   box ? NumbersText({box->left, box->bottom, box->right, box->top}) : "none"});
    }
    return table.Text();
}

std::string LayoutToText(std::string_view text, const TextLayout& layout)
{
    std::string told;
    for (std::size_t n = 0; n < layout.faces.size(); ++n)
    {
        told += "font " + std::to_string(n) + ": " + FaceText(*layout.faces[n]) + "\n";
    }
    for (std::size_t n = 0; n < layout.lines.size(); ++n)
    {
        const TextLine& line = layout.lines[n];
        told += "line " + std::to_string(n) + ": bytes " + std::to_string(line.textBegin) + "-" +
                std::to_string(line.textEnd) + ", " +
                (line.isRightToLeft ? "right to left" : "left to right") + ", x " +
                NumberText(line.left) + " to " + NumberText(line.left + line.width) +
                ", baseline " + NumberText(line.baseline) + ", ascent " + NumberText(line.ascent) +
                ", descent " + NumberText(line.descent) + "\n" + GlyphTable(text, layout, line);
    }
    return told;
}

void PrintLayout(const Options& options)
{
    const CostWatch watch(options.costs);
    if (!options.texts.AreGiven())
    {
        throw UsageError("a text is required");
    }
    const ShapedOptions set = options.set.Read(options.strictness);
    const PreparedText text = PrepareShapedText(options.set.ReadText(options.texts), set);
    const TextFonts fonts = OpenTextFonts(text.settings.fonts);
    TellFontNotices(fonts.notices, options.strictness);
    LayoutOptions how = LayoutOptionsOf(text.settings, fonts);
    how.alignment = static_cast<LineAlignment>(
        std::find(alignmentNames.begin(), alignmentNames.end(), options.alignment) -
        alignmentNames.begin());
    const TextLayout layout = TextShaper().LayOut(text.text, how);
    TellMissingCharacters(layout.missing, options.strictness);
    WriteToStandardOutput(options.json ? LayoutToJson(text.text, layout)
                                       : LayoutToText(text.text, layout));
}

}  // namespace

void AddLayoutCommand(CLI::App& app)
{
    CLI::App& command =
        *app.add_subcommand("layout", "Tell the glyphs and the lines of a text of any language");
    const auto options = std::make_shared<Options>(command);
    OptionAdder add(command);
    add("--align", options->alignment,
        Alternatives(alignmentNames) + " [" + options->alignment + "]", "How the lines are aligned")
        ->check(CLI::IsMember(alignmentNames));
    command.add_flag("--json", options->json, "Prints a JSON object");
    AddStrictOption(
        command, options->strictness,
        "Takes no other fonts than those that are named; fails\nand prints nothing when "
        "they lack a character");
    AddCostOptions(command, options->costs);
    command.callback([options] { PrintLayout(*options); });
}

}  // namespace orvane
