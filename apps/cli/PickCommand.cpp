// SPDX-License-Identifier: MIT
#include "apps/cli/Arguments.h"
#include "apps/cli/Commands.h"
#include "apps/cli/Errors.h"
#include "apps/cli/OutputFile.h"
#include "apps/cli/SceneDocument.h"
#include "apps/cli/ScenePick.h"
#include "apps/cli/TextCodes.h"
#include "apps/cli/info/JsonWriter.h"
#include "platform/CodePages.h"
#include "platform/Fonts.h"
#include "scene/OrvString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

#include <CLI/CLI.hpp>

#include <array>
#include <memory>

namespace
{

struct PickOptions
{
    std::string file;
    std::string place;
    std::string size;
    bool json = false;
};

/// A character of a text, in UTF-8.
std::string CharacterOf(const OrvString& text, int index)
{
    return CodePageToUtf8(std::string(1, (*text.GetTextString())[index]), GetACP());
}

const DrawingObject& NodeAt(const SceneObject& scene, const NodePath& path)
{
    const DrawingObject* node = &scene;
    for (const int index : path)
    {
        node = node->GetChildByIndex(index);
    }
    return *node;
}

std::string LightName(const SceneObject& scene, int index)
{
    return ToUtf8(scene.GetLightByIndex(index)->GetColors().GetName());
}

/// The members of a picked part, into an object that is open.
void WritePart(JsonWriter& json, const SceneObject& scene, const PickedPart& picked)
{
    if (picked.kind == PickedPart::light)
    {
        json.Member("kind", "light");
        json.Member("light", picked.index);
        json.Member("name", LightName(scene, picked.index));
        json.Member("depth", picked.depth);
        return;
    }
    const DrawingObject& node = NodeAt(scene, picked.path);
    json.Member("kind", picked.kind == PickedPart::character  ? "character"
                        : picked.kind == PickedPart::triangle ? "triangle"
                                                              : "node");
    json.Key("path");
    json.BeginArray(JsonWriter::onOneLine);
    for (const int index : picked.path)
    {
        json.Value(index);
    }
    json.EndArray();
    json.Member("class", node.GetRuntimeClass()->m_lpszClassName);
    json.Member("name", NameOfNode(node));
    if (picked.kind == PickedPart::character)
    {
        json.Member("index", picked.index);
        json.Member("character", CharacterOf(dynamic_cast<const OrvString&>(node), picked.index));
        json.Member("part", picked.part);
    }
    else if (picked.kind == PickedPart::triangle)
    {
        json.Member("index", picked.index);
    }
    json.Member("depth", picked.depth);
}

/// The nearest, with what is behind it; null when there is nothing.
std::string PartsToJson(const SceneObject& scene, const std::vector<PickedPart>& parts)
{
    JsonWriter json;
    if (parts.empty())
    {
        json.Null();
        return json.Result();
    }
    json.BeginObject();
    WritePart(json, scene, parts.front());
    json.Key("behind");
    json.BeginArray();
    for (std::size_t i = 1; i < parts.size(); ++i)
    {
        json.BeginObject(JsonWriter::onOneLine);
        WritePart(json, scene, parts[i]);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.Result();
}

std::string PartToText(const SceneObject& scene, const PickedPart& picked)
{
    if (picked.kind == PickedPart::light)
    {
        return "light " + std::to_string(picked.index) + " " +
               Quoted(LightName(scene, picked.index));
    }
    const DrawingObject& node = NodeAt(scene, picked.path);
    std::string text = PathText(picked.path) + " " + TitleOf(node);
    switch (picked.kind)
    {
        case PickedPart::character:
            return text + ", character " + std::to_string(picked.index) + " " +
                   Quoted(CharacterOf(dynamic_cast<const OrvString&>(node), picked.index)) + ", " +
                   picked.part;
        case PickedPart::triangle:
            return text + ", triangle " + std::to_string(picked.index);
        default:
            return text;
    }
}

std::string PartsToText(const SceneObject& scene, const std::vector<PickedPart>& parts)
{
    if (parts.empty())
    {
        return "nothing but the background\n";
    }
    std::string text;
    for (const PickedPart& each : parts)
    {
        text += (text.empty() ? "" : "behind it: ") + PartToText(scene, each) + "\n";
    }
    return text;
}

void Pick(const PickOptions& options)
{
    const std::array<int, 2> place = ParsePair("PIXEL", options.place, ',', "X,Y, both at least 0");
    const std::array<int, 2> size = ParseSize(options.size);
    if (place[0] >= size[0] || place[1] >= size[1])
    {
        throw UsageError("PIXEL: a picture of " + options.size + " has no pixel " + options.place);
    }
    SceneDocument document = SceneDocument::Load(options.file);
    const std::vector<PickedPart> parts =
        ScenePicker(document, size[0], size[1]).Pick(place[0], place[1]);
    const std::string text =
        options.json ? PartsToJson(*document.scene, parts) : PartsToText(*document.scene, parts);
    WriteToStandardOutput(text);
}

}  // namespace

void AddPickCommand(CLI::App& app)
{
    CLI::App& command =
        *app.add_subcommand("pick", "Tell what is under a pixel of a scene's picture");
    const auto options = std::make_shared<PickOptions>();
    command.add_option("FILE", options->file, "A scene, as \"render --save\" writes it")
        ->required();
    command
        .add_option("PIXEL", options->place,
                    "The pixel as X,Y, from the left and the top, where the\nfirst is 0,0")
        ->required();
    command.add_option("--size", options->size, "Width and height of the picture in pixels")
        ->option_text("WxH")
        ->required();
    command.add_flag("--json", options->json, "As a JSON object, or null");
    command.callback([options] { Pick(*options); });
}
