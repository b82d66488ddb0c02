// SPDX-License-Identifier: MIT
#include "apps/cli/Errors.h"
#include "apps/cli/Terminal.h"
#include "apps/cli/commands/Commands.h"
#include "apps/cli/commands/CostOptions.h"
#include "apps/cli/commands/OptionAdder.h"
#include "apps/cli/commands/OutlinesOption.h"
#include "apps/cli/commands/SceneSource.h"
#include "apps/cli/info/JsonWriter.h"
#include "document/OutputFile.h"
#include "document/meshes/MeshFile.h"
#include "document/meshes/SceneMesh.h"
#include "document/meshes/SolidNotes.h"
#include "orvane/orvane.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "solids/MeshMeasures.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>

namespace orvane
{

namespace
{

/// The values of the options. CLI11 has checked each value by itself.
struct ExportOptions
{
    explicit ExportOptions(CLI::App& command) : source(command, SceneUse::Mesh) {}

    SceneSource source;
    std::string output;
    MeshFileOptions mesh;
    bool json = false;
    CostLimits costs;
};

/// The unit of the numbers in a file; "none" when the program that reads the file decides.
std::string UnitOf(MeshFormat format, LengthUnit unit)
{
    const bool isGltf = format == MeshFormat::Glb || format == MeshFormat::Gltf;
    const bool isUnnamed3mf = format == MeshFormat::ThreeMf && unit == LengthUnit::Plain;
    return isGltf || isUnnamed3mf ? "m" : NameOf(unit);
}

void WriteCorner(JsonWriter& json, const char* key, const std::array<float, 3>& corner)
{
    json.Numbers(key, corner[0], corner[1], corner[2]);
}

/// Writes measures as members of the JSON object that is open.
void WriteMeasures(JsonWriter& json, const MeshMeasures& measures)
{
    json.Member("triangles", measures.triangles);
    json.Member("vertices", measures.vertices);
    json.Key("bounds");
    if (measures.bounds.IsEmpty())
    {
        json.Null();
    }
    else
    {
        json.BeginObject(JsonWriter::Layout::OneLine);
        WriteCorner(json, "minimum", measures.bounds.minimum);
        WriteCorner(json, "maximum", measures.bounds.maximum);
        json.EndObject();
    }
    json.Member("closed", measures.isClosed);
    json.Key("volume");
    measures.isClosed ? json.Value(measures.volume) : json.Null();
    json.Member("area", measures.area);
}

std::string MeasuresToJson(const MeshScene& scene, const ExportOptions& options, MeshFormat format)
{
    const SolidMeasures measures = MeasureMesh(scene.mesh);
    JsonWriter json;
    json.BeginObject();
    json.Member("file", options.output);
    json.Member("format", NameOf(format));
    json.Member("unit", UnitOf(format, options.mesh.unit));
    WriteMeasures(json, measures.all);
    json.Key("parts");
    json.BeginArray();
    for (std::size_t i = 0; i < measures.nodes.size(); ++i)
    {
        json.BeginObject();
        json.Member("name", scene.mesh.nodes[i].name);
        WriteMeasures(json, measures.nodes[i]);
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    return json.Result();
}

/// The options, with functions that tell on standard error what --solid did and could not do. With
/// --strict, a mesh that is not closed is an error.
MeshFileOptions NotesOf(const ExportOptions& options)
{
    const auto say = [](const std::string& message) { Say(message); };
    MeshFileOptions mesh = options.mesh;
    mesh.note = say;
    if (options.source.strictness == Strictness::GoOn)
    {
        mesh.warn = say;
    }
    return mesh;
}

void Export(const ExportOptions& options)
{
    if (options.json && options.output == "-")
    {
        throw UsageError("export: --json prints to standard output, where --output - writes to");
    }
    const SceneSource::Request request = options.source.Check();
    const CostWatch watch(options.costs);
    // A place that cannot be written to is found before the scene is built, which may take long.
    MeshFile file(options.output, options.mesh);
    MeshScene scene;
    PlaceScene(scene, file.Format(), options.mesh);  // checks the options
    std::optional<Size> size;
    const SceneDocument document = options.source.Make(request, size, false);
    scene = MakeMeshScene(*document.view, file.Format(), options.mesh);
    TellSolidNotes(scene.mesh, NotesOf(options), options.output);
    options.source.TellUncutSolids(document);
    PlaceScene(scene, file.Format(), options.mesh);
    file.Write(scene);
    file.Commit();
    if (options.json)
    {
        WriteToStandardOutput(MeasuresToJson(scene, options, file.Format()));
    }
}

void AddFile(OptionAdder& add, ExportOptions& o)
{
    const std::vector<std::string> formats = NamesOf<MeshFormat>();
    MeshFileOptions& mesh = o.mesh;
    add("-o,--output", o.output, "FILE",
        "The mesh file: .glb, .gltf, .stl, .3mf, .obj or .ply;\n- writes to standard output")
        ->required();
    add("--format", mesh.format, Alternatives(formats),
        "The format, in place of the ending of the name")
        ->check(CLI::IsMember(formats));
    add.Choice("--unit", mesh.unit, "The unit of length in the file");
    add("--em", mesh.em, "D [" + NumberText(mesh.em) + "]",
        "How large one em, the size of the font, is in units")
        ->check(NumberBetween(1e-6, 1e6));
    add.Choice("--up", mesh.up, "The axis that points up in the file");
}

}  // namespace

void AddExportCommand(CLI::App& app)
{
    CLI::App& command =
        *app.add_subcommand("export", "Write lines of text and meshes into a mesh file");
    const auto options = std::make_shared<ExportOptions>(command);
    ExportOptions& o = *options;
    OptionAdder add(command);
    o.source.AddTexts();
    AddFile(add, o);
    command.add_flag("--solid", o.mesh.solid,
                     "Closed meshes only: square, bevelled and rounded edges\nbecome profiles of "
                     "the same measures");
    command.add_flag("--json", o.json,
                     "Prints a JSON object with the measures of each text\nand mesh");
    AddCostOptions(command, o.costs);
    AddOutlinesOption(command);
    o.source.AddSceneFileAndLook();
    o.source.AddSurroundings();
    command.callback([options] { Export(*options); });
}

}  // namespace orvane
