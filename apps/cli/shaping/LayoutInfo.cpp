// SPDX-License-Identifier: MIT
#include "apps/cli/shaping/LayoutInfo.h"

#include "apps/cli/PrintableText.h"
#include "apps/cli/commands/OptionValues.h"
#include "apps/cli/info/JsonWriter.h"
#include "platform/Utf8.h"
#include "shaping/CheckedText.h"
#include "shaping/ScriptNames.h"

#include <memory>

namespace orvane
{

namespace
{

/// The number of a font in its collection.
int NumberInFile(const FaceFile& file)
{
    return file.index & 0xFFFF;
}

}  // namespace

void WriteAxes(JsonWriter& json, const std::vector<AxisValue>& axes)
{
    json.Key("axes");
    json.BeginObject();
    for (const AxisValue& axis : axes)
    {
        json.Member(axis.tag, axis.value);
    }
    json.EndObject();
}

std::string AxesText(const std::vector<AxisValue>& axes)
{
    std::string text;
    for (const AxisValue& axis : axes)
    {
        text += ", " + Printable(axis.tag) + "=" + NumberText(axis.value);
    }
    return text;
}

void WriteFaces(JsonWriter& json, std::string_view key, const TextLayout& layout)
{
    json.Key(key);
    json.BeginArray();
    for (const std::shared_ptr<const ShapingFace>& face : layout.faces)
    {
        json.BeginObject(JsonWriter::Layout::OneLine);
        json.Member("name", face->FullName());
        json.Member("family", face->FamilyName());
        json.Member("style", face->StyleName());
        json.Member("file", face->File().file);
        json.Member("index", NumberInFile(face->File()));
        WriteAxes(json, face->AxisValues());
        json.EndObject();
    }
    json.EndArray();
}

std::string FaceText(const ShapingFace& face)
{
    std::string text = Quoted(face.FullName()) + " in " + Quoted(face.File().file);
    const int number = NumberInFile(face.File());
    text += number == 0 ? "" : ", number " + std::to_string(number);
    return text + AxesText(face.AxisValues());
}

void WriteMissing(JsonWriter& json, const std::vector<MissingCharacter>& missing)
{
    json.Key("missing");
    json.BeginArray();
    for (const MissingCharacter& each : missing)
    {
        const ScriptTag script = ScriptOf(each.character);
        const std::string package = PackageFor(each.character);
        json.BeginObject(JsonWriter::Layout::OneLine);
        json.Member("character", Utf8Of(each.character));
        json.Member("codePoint", CodePointName(each.character));
        json.Member("offset", each.offset);
        json.Member("script", ScriptLetters(script));
        json.Key("package");
        if (package.empty())
        {
            json.Null();
        }
        else
        {
            json.Value(package);
        }
        json.EndObject();
    }
    json.EndArray();
}

}  // namespace orvane
