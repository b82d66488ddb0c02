// SPDX-License-Identifier: MIT
#include "apps/cli/commands/Commands.h"
#include "apps/cli/info/MeshFileInfo.h"
#include "apps/cli/info/SceneInfo.h"
#include "document/OutputFile.h"
#include "orvane/Error.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>

using namespace orvane;

namespace
{

struct InfoOptions
{
    std::string file;
    bool json = false;
    bool chunks = false;
    std::optional<std::string> dump;
};

void Tell(const InfoOptions& options)
{
    const bool isMeshFile = IsMeshFile(options.file);
    if (!isMeshFile && (options.chunks || options.dump))
    {
        throw Error(options.file, std::string("is no 3D Studio file, which ") +
                                      (options.dump ? "--dump" : "--chunks") + " is for");
    }
    if (options.dump)
    {
        OutputFile output(*options.dump);
        DumpMeshes(options.file, output);
        output.Commit();
        return;
    }
    WriteToStandardOutput(isMeshFile ? TellMeshFile(options.file, options.json, options.chunks)
                                     : TellScene(options.file, options.json));
}

}  // namespace

void AddInfoCommand(CLI::App& app)
{
    CLI::App& command =
        *app.add_subcommand("info", "Tell what is in the file of a scene, or of meshes");
    const auto options = std::make_shared<InfoOptions>();
    command
        .add_option("FILE", options->file,
                    "A scene, as \"render --save\" writes it, or a 3D\nStudio file (.3ds)")
        ->required();
    command.add_flag("--json", options->json, "As a JSON object");
    command.add_flag("--chunks", options->chunks,
                     "Of a 3D Studio file, the tree of its chunks too");
    command
        .add_option("--dump", options->dump,
                    "Writes its vertices, faces and normals as text\ninstead; - is standard output")
        ->option_text("FILE");
    command.callback([options] { Tell(*options); });
}
