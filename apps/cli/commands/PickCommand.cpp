// SPDX-License-Identifier: MIT
#include "apps/cli/Errors.h"
#include "apps/cli/Terminal.h"
#include "apps/cli/commands/Commands.h"
#include "apps/cli/commands/CostOptions.h"
#include "apps/cli/commands/MissingParts.h"
#include "apps/cli/commands/OptionValues.h"
#include "apps/cli/info/JsonWriter.h"
#include "apps/cli/info/NodeTitle.h"
#include "document/OutputFile.h"
#include "document/SceneDocument.h"
#include "document/SceneFraming.h"
#include "document/SceneNames.h"
#include "document/ScenePick.h"
#include "document/TextEncoding.h"
#include "scene/OrvFontString.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "solids/OrvOutlineShape.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace orvane
{

namespace
{

// The most parts that are listed. A scene can have a million of them under one pixel, and each is
// listed with the whole text that it belongs to.
constexpr std::size_t mostParts = 1000;

struct PickOptions
{
    std::string file;
    std::string pixel;
    std::string size;
    bool json = false;
    CostLimits costs;
    Strictness strictness = Strictness::GoOn;
};

/// The letter that begins at an index of a text, in UTF-8.
std::string CharacterOf(const DrawingObject& node, int index)
{
    // LetterEnd finishes a layout, which changes nothing of the text.
    auto& text = const_cast<OrvFontString&>(dynamic_cast<const OrvFontString&>(node));
    const auto first = static_cast<std::size_t>(index);
    const std::string letter =
        text.GetTextString()->Text().substr(first, text.LetterEnd(first) - first);
    return ToUtf8(text, letter);
}

/// The name of an area's material, which is its colour in the SVG file.
std::string AreaName(const DrawingObject& node, int area)
{
    return ToUtf8(dynamic_cast<const OrvOutlineShape&>(node).Material(area).GetName());
}

/// A scene in which something was picked.
struct PickedScene
{
    explicit PickedScene(SceneObject& object) : scene(object), nodes(object) {}

    const SceneObject& scene;
    NodeFinder nodes;
};

std::string LightName(const SceneObject& scene, int index)
{
    return ToUtf8(scene.GetLightByIndex(index)->GetColors().GetName());
}

/// Writes the members of a picked part into the JSON object that is open.
void WritePart(JsonWriter& json, PickedScene& scene, const PickedPart& picked)
{
    if (picked.kind == HitKind::Light)
    {
        json.Member("kind", "light");
        json.Member("light", picked.index);
        json.Member("name", LightName(scene.scene, picked.index));
        json.Member("depth", picked.depth);
        return;
    }
    const DrawingObject& node = scene.nodes.NodeAt(picked.path);
    json.Member("kind", picked.kind == HitKind::Letter     ? "character"
                        : picked.kind == HitKind::Triangle ? "triangle"
                        : picked.kind == HitKind::Area     ? "area"
                                                           : "node");
    json.Key("path");
    json.BeginArray(JsonWriter::Layout::OneLine);
    for (const int index : picked.path)
    {
        json.Value(index);
    }
    json.EndArray();
    json.Member("class", node.GetRuntimeClass()->m_lpszClassName);
    json.Member("name", NameOfNode(node));
    if (picked.kind == HitKind::Letter)
    {
        json.Member("index", picked.index);
        json.Member("character", CharacterOf(node, picked.index));
        json.Member("part", NameOf(picked.part));
    }
    else if (picked.kind == HitKind::Triangle)
    {
        json.Member("index", picked.index);
    }
    else if (picked.kind == HitKind::Area)
    {
        json.Member("index", picked.index);
        json.Member("color", AreaName(node, picked.index));
        json.Member("part", NameOf(picked.part));
    }
    json.Member("depth", picked.depth);
}

/// A JSON object for the nearest part, with an array of the parts behind it; null if nothing was
/// hit.
std::string PartsToJson(PickedScene& scene, const std::vector<PickedPart>& parts)
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
        json.BeginObject(JsonWriter::Layout::OneLine);
        WritePart(json, scene, parts[i]);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.Result();
}

std::string PartToText(PickedScene& scene, const PickedPart& picked)
{
    if (picked.kind == HitKind::Light)
    {
        return "light " + std::to_string(picked.index) + " " +
               Quoted(LightName(scene.scene, picked.index));
    }
    const DrawingObject& node = scene.nodes.NodeAt(picked.path);
    std::string text = PathText(picked.path) + " " + TitleOf(node);
    switch (picked.kind)
    {
        case HitKind::Letter:
            return text + ", character " + std::to_string(picked.index) + " " +
                   Quoted(CharacterOf(node, picked.index)) + ", " + NameOf(picked.part);
        case HitKind::Triangle:
            return text + ", triangle " + std::to_string(picked.index);
        case HitKind::Area:
            return text + ", area " + std::to_string(picked.index) + " " +
                   Quoted(AreaName(node, picked.index)) + ", " + NameOf(picked.part);
        default:
            return text;
    }
}

std::string PartsToText(PickedScene& scene, const std::vector<PickedPart>& parts)
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
    const Size pixel = ParsePixel(options.pixel);
    const Size size = ParseSize(options.size);
    if (pixel.width >= size.width || pixel.height >= size.height)
    {
        throw UsageError("PIXEL: a picture of " + options.size + " has no pixel " + options.pixel);
    }
    const CostWatch watch(options.costs);
    const SceneDocument document = SceneDocument::Load(options.file, FontProgress());
    document.CheckLevels();
    // Pictures are not told, because the answer does not depend on them.
    TellMissingParts(document, {MissingKind::Font, MissingKind::Letter, MissingKind::Character},
                     options.strictness);
    ViewObject view(*document.view);
    SizeView(view, size);
    std::vector<PickedPart> parts = ScenePicker(view).Pick(pixel.width, pixel.height);
    if (parts.size() > mostParts)
    {
        Say(options.file + ": the nearest " + std::to_string(mostParts) + " of " +
            std::to_string(parts.size()) + " parts under the pixel are listed");
        parts.resize(mostParts);
    }
    PickedScene scene(*document.scene);
    WriteToStandardOutput(options.json ? PartsToJson(scene, parts) : PartsToText(scene, parts));
}

}  // namespace

void AddPickCommand(CLI::App& app)
{
    CLI::App& command =
        *app.add_subcommand("pick", "Tell what lies under a pixel of a scene's picture");
    const auto options = std::make_shared<PickOptions>();
    command.add_option("FILE", options->file, "A scene, as \"render --save\" writes it")
        ->required();
    command
        .add_option("PIXEL", options->pixel,
                    "The pixel as X,Y from the left and the top; the first\npixel is 0,0")
        ->required()
        ->check(ReadableBy(ParsePixel));
    command.add_option("--size", options->size, "Width and height of the picture in pixels")
        ->option_text("WxH")
        ->required()
        ->check(ReadableBy(ParseSize));
    command.add_flag("--json", options->json, "Prints a JSON object, or null");
    AddStrictOption(command, options->strictness,
                    "Fails and prints nothing when a font or a letter is\nmissing");
    AddCostOptions(command, options->costs);
    command.callback([options] { Pick(*options); });
}

}  // namespace orvane
