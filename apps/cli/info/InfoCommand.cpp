// SPDX-License-Identifier: MIT
#include "apps/cli/commands/Commands.h"
#include "apps/cli/commands/CostOptions.h"
#include "apps/cli/info/MeshFileInfo.h"
#include "apps/cli/info/SceneInfo.h"
#include "document/OutputFile.h"
#include "orvane/Error.h"

#include <CLI/CLI.hpp>

#include <memory>
#include <optional>

namespace orvane
{

namespace
{

struct InfoOptions
{
    std::string file;
    bool json = false;
    bool chunks = false;
    std::optional<std::string> dump;
    CostLimits costs;
};

void PrintInfo(const InfoOptions& options)
{
    const CostWatch watch(options.costs);
    const bool isMeshFile = IsMeshFile(options.file);
    if (!isMeshFile && (options.chunks || options.dump))
    {
        throw Error(options.file,
                    std::string(options.dump ? "--dump" : "--chunks") +
                        " works only with 3D Studio files, and this file is of another kind");
    }
    if (options.dump)
    {
        OutputFile output(*options.dump);
        DumpMeshes(options.file, output);
        output.Commit();
        return;
    }
    const InfoFormat format = options.json ? InfoFormat::Json : InfoFormat::Text;
    const ChunkListing chunks = options.chunks ? ChunkListing::Tree : ChunkListing::None;
    WriteToStandardOutput(isMeshFile ? DescribeMeshFile(options.file, format, chunks)
                                     : DescribeScene(options.file, format));
}

}  // namespace

void AddInfoCommand(CLI::App& app)
{
    CLI::App& command =
        *app.add_subcommand("info", "Print what is in a scene or in a 3D Studio file");
    const auto options = std::make_shared<InfoOptions>();
    command
        .add_option("FILE", options->file,
                    "A scene that \"render --save\" wrote, or a 3D\nStudio file (.3ds)")
        ->required();
    command.add_flag("--json", options->json, "Print a JSON object");
    command.add_flag("--chunks", options->chunks,
                     "3D Studio files only: print the tree of all\nchunks too");
    command
        .add_option("--dump", options->dump,
                    "3D Studio files only: write the vertices, faces\nand normals as text into "
                    "FILE and print nothing\nelse; - is standard output")
        ->option_text("FILE");
    AddCostOptions(command, options->costs);
    command.callback([options] { PrintInfo(*options); });
}

}  // namespace orvane
