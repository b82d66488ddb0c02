// SPDX-License-Identifier: MIT
#include "apps/cli/commands/OutlinesOption.h"

#include "platform/Fonts.h"

#include <CLI/CLI.hpp>

namespace orvane
{

void AddOutlinesOption(CLI::App& command)
{
    static const std::vector<std::string> names = {"as-is", "repaired"};
    command
        .add_option_function<std::string>(
            "--outlines",
            [](const std::string& name) {
                SetProcessOutlines(name == names[0] ? OUTLINES_AS_IS : OUTLINES_REPAIRED);
            },
            "Whether overlaps, directions and cubic curves in the\n"
            "outlines of fonts are repaired")
        ->option_text("as-is|repaired [repaired]")
        ->check(CLI::IsMember(names));
}

}  // namespace orvane
