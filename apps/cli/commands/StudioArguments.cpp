// SPDX-License-Identifier: MIT
#include "apps/cli/commands/StudioArguments.h"

#include "apps/cli/Errors.h"
#include "apps/cli/commands/OptionAdder.h"
#include "studio/Environment.h"

#include <CLI/CLI.hpp>

namespace orvane
{

void StudioArguments::AddTo(CLI::App& command)
{
    OptionAdder add(command);
    add("--renderer", renderer_, "classic|studio [" + renderer_ + "]",
        "How solids are drawn: with lamps alone, or with\nshaders, reflections and materials")
        ->check(CLI::IsMember({"classic", "studio"}));
    std::string names;
    for (const std::string& name : EnvironmentNames())
    {
        names += name + "|";
    }
    ofStudio_ = {
        add("--environment", options_.environment,
            names + "FILE.hdr [" + options_.environment + "]",
            "What surrounds the scene and is mirrored by it"),
        add("--environment-turn", options_.environmentTurn, "A [0]",
            "Turns it about the vertical axis, in degrees")
            ->check(NumberBetween(-360, 360)),
        add("--exposure", options_.exposure, "F [1]", "Multiplies all light")
            ->check(NumberBetween(0.01, 100)),
        command.add_flag("--ground", options_.hasGround,
                         "Lays a soft shadow on the ground below the scene"),
    };
}

std::optional<StudioOptions> StudioArguments::Check() const
{
    if (renderer_ == "studio")
    {
        return options_;
    }
    for (const CLI::Option* const option : ofStudio_)
    {
        if (option->count() > 0)
        {
            throw UsageError(option->get_name() + ": --renderer studio is required");
        }
    }
    return std::nullopt;
}

}  // namespace orvane
