// SPDX-License-Identifier: MIT
#include "apps/cli/Commands.h"
#include "apps/cli/OutputFile.h"
#include "apps/cli/SceneInfo.h"

#include <CLI/CLI.hpp>

#include <memory>

namespace
{

struct InfoOptions
{
    std::string file;
    bool json = false;
};

void Tell(const InfoOptions& options)
{
    WriteToStandardOutput(TellScene(options.file, options.json));
}

}  // namespace

void AddInfoCommand(CLI::App& app)
{
    CLI::App& command = *app.add_subcommand("info", "Tell what is in the file of a scene");
    const auto options = std::make_shared<InfoOptions>();
    command.add_option("FILE", options->file, "A scene, as \"render --save\" writes it")
        ->required();
    command.add_flag("--json", options->json, "As a JSON object");
    command.callback([options] { Tell(*options); });
}
