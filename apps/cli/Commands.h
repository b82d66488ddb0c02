// SPDX-License-Identifier: MIT
#pragma once

namespace CLI
{
class App;
}

// Each adds one subcommand, which runs when the command line names it. It throws Failure or
// UsageError.
void AddRenderCommand(CLI::App& app);
void AddFontsCommand(CLI::App& app);
void AddInfoCommand(CLI::App& app);
void AddPickCommand(CLI::App& app);
void AddShowcaseCommand(CLI::App& app);
