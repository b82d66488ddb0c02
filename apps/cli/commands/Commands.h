// SPDX-License-Identifier: MIT
#pragma once

namespace CLI
{
class App;
}

namespace orvane
{

// Each function adds one subcommand, which runs when the command line names it. A subcommand throws
// UsageError or Error.
void AddRenderCommand(CLI::App& app);
void AddExportCommand(CLI::App& app);
void AddFontsCommand(CLI::App& app);
void AddInfoCommand(CLI::App& app);
void AddLayoutCommand(CLI::App& app);  ///< not without ORVANE_WITH_SHAPING
void AddMaterialsCommand(CLI::App& app);
void AddPickCommand(CLI::App& app);
void AddShowcaseCommand(CLI::App& app);

}  // namespace orvane
