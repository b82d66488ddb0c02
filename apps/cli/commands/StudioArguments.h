// SPDX-License-Identifier: MIT
#pragma once

#include "studio/StudioOptions.h"

#include <optional>
#include <string>
#include <vector>

namespace CLI
{
class App;
class Option;
}  // namespace CLI

namespace orvane
{

/// The options of a command for how solids are drawn: --renderer and those of the studio renderer.
class StudioArguments
{
public:
    void AddTo(CLI::App& command);
    /// No value for the classic renderer. Throws UsageError for options that it does not know.
    std::optional<StudioOptions> Check() const;

private:
    std::vector<const CLI::Option*> ofStudio_;
    std::string renderer_ = "classic";
    StudioOptions options_;
};

}  // namespace orvane
