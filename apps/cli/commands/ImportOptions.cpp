// SPDX-License-Identifier: MIT
#include "apps/cli/commands/ImportOptions.h"

#include "apps/cli/Errors.h"
#include "apps/cli/commands/OptionValues.h"

#include <CLI/CLI.hpp>

#include <map>

namespace orvane
{

namespace
{

/// An option whose values are kept as text, because Parse needs their order.
CLI::Option* Add(CLI::App& command, const char* name, const std::string& type,
                 const char* description)
{
    return command
        .add_option_function<std::vector<std::string>>(
            name, [](const std::vector<std::string>&) {}, description)
        ->option_text(type)
        ->expected(1)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

}  // namespace

ImportOptions::ImportOptions(CLI::App& command)
    : command_(command),
      file_(Add(command, "--import", "FILE",
                "Adds the meshes of a 3D Studio file (.3ds); may be\n"
                "repeated. The next three options belong to the\n"
                "import before them")),
      at_(Add(command, "--import-at", "X,Y,Z",
              "Where the middle of the meshes is, in ems [right of\neverything else]")),
      size_(Add(
          command, "--import-size", "D [" + NumberText(MeshOptions().size) + "]",
          "Length of the longest edge of the meshes' box in ems;\n0 keeps the units of the file")),
      turn_(Add(command, "--import-turn", "X,Y,Z [0,0,0]",
                "Degrees about each axis, in the order of --turn"))
{
    at_->check(ReadableBy(ParsePlace));
    size_->check(NumberBetween(0, 1e6));
    turn_->check(ReadableBy(ParseAngles));
}

std::vector<Import> ImportOptions::Parse() const
{
    std::vector<Import> imports;
    std::map<const CLI::Option*, std::size_t> used;
    for (const CLI::Option* const option : command_.parse_order())
    {
        if (option != file_ && option != at_ && option != size_ && option != turn_)
        {
            continue;
        }
        const std::string text = option->results().at(used[option]++);
        if (option == file_)
        {
            imports.push_back({text, {}});
            continue;
        }
        if (imports.empty())
        {
            throw UsageError(option->get_name() + ": there is no --import before it");
        }
        MeshOptions& options = imports.back().options;
        if (option == at_)
        {
            options.at = ParsePlace(text);
        }
        else if (option == turn_)
        {
            options.turn = ParseAngles(text);
        }
        else
        {
            options.size = ParseNumber(text);
        }
    }
    return imports;
}

}  // namespace orvane
