// SPDX-License-Identifier: MIT
#include "apps/cli/commands/OutlinesOption.h"

#include "platform/Fonts.h"

#include <CLI/CLI.hpp>

void AddOutlinesOption(CLI::App& command)
{
    static const std::vector<std::string> names = {"as-is", "repaired"};
    command
        .add_option_function<std::string>(
            "--outlines",
            [](const std::string& name) {
                SetProcessOutlines(name == names[0] ? OUTLINES_AS_IS : OUTLINES_REPAIRED);
            },
            "What is taken of the fonts: their outlines as they\n"
            "are, or with overlaps, directions and cubic curves\n"
            "put right")
        ->option_text("as-is|repaired [repaired]")
        ->check(CLI::IsMember(names));
}
