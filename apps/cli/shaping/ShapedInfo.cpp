// SPDX-License-Identifier: MIT
#include "apps/cli/shaping/ShapedInfo.h"

#include "apps/cli/PrintableText.h"
#include "apps/cli/info/InfoText.h"
#include "apps/cli/info/JsonWriter.h"
#include "apps/cli/info/TextTable.h"
#include "apps/cli/shaping/LayoutInfo.h"
#include "apps/cli/shaping/ShapedParts.h"
#include "document/Colors.h"
#include "platform/Utf8.h"
#include "shapedtext/OrvShapedString.h"

#include <cstdio>
#include <memory>
#include <string_view>

namespace orvane
{

namespace
{

std::string NumbersText(const std::vector<double>& numbers)
{
    std::string text;
    for (const double number : numbers)
    {
        text += (text.empty() ? "" : " ") + ShortNumber(number);
    }
    return text;
}

std::string DirectionName(TextDirection direction)
{
    switch (direction)
    {
        case TextDirection::LeftToRight:
            return "ltr";
        case TextDirection::RightToLeft:
            return "rtl";
        default:
            return "auto";
    }
}

/// The bytes of a part of a text, as far as it has them.
std::string PartOf(const std::string& text, const ShapedSpan& span)
{
    const std::size_t begin = std::min(span.begin, text.size());
    return ValidUtf8(std::string_view(text).substr(begin, std::max(span.end, begin) - begin));
}

std::string ChecksumText(std::uint32_t checksum)
{
    char text[16];
    std::snprintf(text, sizeof text, "%08X", checksum);
    return text;
}

/// What a text asks for, and the face that it had when it was made.
std::string AskedText(const ShapedFont& font)
{
    const FontQuery& query = font.query;
    std::string text = !query.name.empty()      ? Quoted(query.name)
                       : !query.pattern.empty() ? "pattern " + Quoted(query.pattern)
                                                : "file " + Quoted(query.file);
    text += query.index != 0 ? ", number " + std::to_string(query.index) : "";
    text += query.weight ? ", weight " + std::to_string(*query.weight) : "";
    text += query.width ? ", width " + ShortNumber(*query.width) + " %" : "";
    text += query.isItalic ? (*query.isItalic ? ", italic" : ", upright") : "";
    text += query.instance.empty() ? "" : ", instance " + Quoted(query.instance);
    text += AxesText(query.axes);
    const FaceIdentity& face = font.face;
    if (!face.fullName.empty())
    {
        text += "; was " + Quoted(face.fullName) + AxesText(face.axes);
        text += face.fileName.empty() ? "" : " in " + Quoted(face.fileName);
        text += face.checksum == 0 ? "" : ", CRC " + ChecksumText(face.checksum);
    }
    return text;
}

std::string LinesText(const LineSettings& lines)
{
    std::string text = "direction " + DirectionName(lines.direction);
    text += lines.width > 0 ? ", wrapped at " + ShortNumber(lines.width) : "";
    text += lines.breaksWords ? ", words are broken" : "";
    text += lines.isJustified ? ", justified" : "";
    text += lines.lineHeight ? ", line height " + ShortNumber(*lines.lineHeight) : "";
    text += lines.tabStops.empty() ? "" : ", tab stops " + NumbersText(lines.tabStops);
    return text + ", tabs every " + ShortNumber(lines.tabInterval);
}

std::string ListText(const std::vector<std::string>& parts)
{
    std::string text;
    for (const std::string& part : parts)
    {
        text += (text.empty() ? "" : ",") + Printable(part);
    }
    return text;
}

/// How letters look that have a style.
std::string StyleText(const ShapedStyle& style)
{
    std::string text = "size " + ShortNumber(style.size);
    text += style.rise != 0 ? ", rise " + ShortNumber(style.rise) : "";
    for (const std::size_t font : style.fonts)
    {
        text += ", font " + std::to_string(font);
    }
    text += style.language.empty() ? "" : ", language " + Printable(style.language);
    text += style.script.empty() ? "" : ", script " + Printable(style.script);
    text += style.features.empty() ? "" : ", features " + ListText(style.features);
    text += style.face ? ", face " + ColorText(style.face->GetDiffuseColor()) : "";
    text += style.edge ? ", edge " + ColorText(style.edge->GetDiffuseColor()) : "";
    text += style.bevel ? ", bevel " + ColorText(style.bevel->GetDiffuseColor()) : "";
    return text;
}

void WriteQuery(JsonWriter& json, const FontQuery& query)
{
    for (const auto& [key, value] : {std::pair<const char*, const std::string&>("name", query.name),
                                     {"pattern", query.pattern},
                                     {"file", query.file}})
    {
        if (!value.empty())
        {
            json.Member(key, value);
        }
    }
    json.Member("index", query.index);
    if (query.weight)
    {
        json.Member("weight", *query.weight);
    }
    if (query.width)
    {
        json.Member("width", *query.width);
    }
    if (query.isItalic)
    {
        json.Member("italic", *query.isItalic);
    }
    if (!query.instance.empty())
    {
        json.Member("instance", query.instance);
    }
    WriteAxes(json, query.axes);
}

void WriteIdentity(JsonWriter& json, const FaceIdentity& face)
{
    json.Key("was");
    json.BeginObject();
    json.Member("name", face.fullName);
    json.Member("family", face.family);
    json.Member("style", face.style);
    json.Member("fileName", face.fileName);
    json.Member("checksum", ChecksumText(face.checksum));
    WriteAxes(json, face.axes);
    json.EndObject();
}

void WriteTexts(JsonWriter& json, const char* key, const std::vector<std::string>& texts)
{
    json.Key(key);
    json.BeginArray(JsonWriter::Layout::OneLine);
    for (const std::string& text : texts)
    {
        json.Value(text);
    }
    json.EndArray();
}

void WriteColorOf(JsonWriter& json, const char* key, const std::optional<NamedColor>& material)
{
    if (material)
    {
        json.Member(key, ColorText(material->GetDiffuseColor()));
    }
}

void WriteStyle(JsonWriter& json, const ShapedStyle& style)
{
    json.Key("fonts");
    json.BeginArray(JsonWriter::Layout::OneLine);
    for (const std::size_t font : style.fonts)
    {
        json.Value(font);
    }
    json.EndArray();
    json.Member("usesInstalledFonts", style.usesInstalledFonts);
    json.Member("fontSize", style.size);
    json.Member("rise", style.rise);
    json.Member("language", style.language);
    json.Member("script", style.script);
    WriteTexts(json, "features", style.features);
    WriteColorOf(json, "face", style.face);
    WriteColorOf(json, "edge", style.edge);
    WriteColorOf(json, "bevel", style.bevel);
}

void WriteLines(JsonWriter& json, const LineSettings& lines)
{
    json.Key("lines");
    json.BeginObject();
    json.Member("direction", DirectionName(lines.direction));
    json.Member("width", lines.width);
    json.Member("breaksWords", lines.breaksWords);
    json.Member("justified", lines.isJustified);
    json.Key("lineHeight");
    lines.lineHeight ? json.Value(*lines.lineHeight) : json.Null();
    json.Key("tabStops");
    json.BeginArray(JsonWriter::Layout::OneLine);
    for (const double stop : lines.tabStops)
    {
        json.Value(stop);
    }
    json.EndArray();
    json.Member("tabInterval", lines.tabInterval);
    json.EndObject();
}

}  // namespace

OrvShapedString* AsShapedText(const OrvString& text)
{
    // Questions about the layout finish it, which changes nothing of the text.
    return const_cast<OrvShapedString*>(dynamic_cast<const OrvShapedString*>(&text));
}

void AddRowsOfShapedText(TextTable& table, OrvShapedString& text)
{
    const ShapedTextSettings& settings = text.GetSettings();
    for (std::size_t n = 0; n < settings.fonts.size(); ++n)
    {
        table.Add({"", "asks for " + std::to_string(n), AskedText(settings.fonts[n])});
    }
    for (const std::shared_ptr<const ShapingFace>& face : text.GetLayout().faces)
    {
        table.Add({"", "takes", FaceText(*face)});
    }
    table.Add({"", "set in", StyleText(settings.style)});
    table.Add({"", "lines", LinesText(settings)});
    for (const ShapedSpan& span : settings.spans)
    {
        table.Add({"", "span",
                   "bytes " + std::to_string(span.begin) + "-" + std::to_string(span.end) + " " +
                       Quoted(PartOf(text.GetText(), span)) + ", " + StyleText(span.style)});
    }
    for (const std::string& sentence :
         SentencesAbout(text.GetMissingCharacters(), Strictness::GoOn))
    {
        table.Add({"", "missing", sentence});
    }
}

void WriteShapedText(JsonWriter& json, OrvShapedString& text)
{
    const ShapedTextSettings& settings = text.GetSettings();
    json.Key("fontsAskedFor");
    json.BeginArray();
    for (const ShapedFont& font : settings.fonts)
    {
        json.BeginObject(JsonWriter::Layout::OneLine);
        WriteQuery(json, font.query);
        WriteIdentity(json, font.face);
        json.EndObject();
    }
    json.EndArray();
    WriteFaces(json, "fontsTaken", text.GetLayout());
    json.Key("setIn");
    json.BeginObject(JsonWriter::Layout::OneLine);
    WriteStyle(json, settings.style);
    json.EndObject();
    WriteLines(json, settings);
    json.Key("spans");
    json.BeginArray();
    for (const ShapedSpan& span : settings.spans)
    {
        json.BeginObject(JsonWriter::Layout::OneLine);
        json.Member("begin", span.begin);
        json.Member("end", span.end);
        json.Member("text", PartOf(text.GetText(), span));
        WriteStyle(json, span.style);
        json.EndObject();
    }
    json.EndArray();
    WriteMissing(json, text.GetMissingCharacters());
}

}  // namespace orvane
