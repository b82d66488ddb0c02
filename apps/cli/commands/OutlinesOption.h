// SPDX-License-Identifier: MIT
#pragma once

namespace CLI
{
class App;
}

namespace orvane
{

/// Adds --outlines as-is|repaired to a command: whether the outlines of fonts are repaired when the
/// fonts are loaded.
void AddOutlinesOption(CLI::App& command);

}  // namespace orvane
