// SPDX-License-Identifier: MIT
#include "apps/cli/commands/ImportOptions.h"

#include "apps/cli/commands/OptionValues.h"
#include "apps/cli/commands/RepeatedOptions.h"

#include <CLI/CLI.hpp>

namespace orvane
{

ImportOptions::ImportOptions(CLI::App& command)
    : command_(command),
      file_(AddRepeatedOption(command, "--import", "FILE",
                              "Adds the meshes of a 3D Studio file (.3ds); may be\n"
                              "repeated. The next three options belong to the\n"
                              "import before them")),
      at_(AddRepeatedOption(
          command, "--import-at", "X,Y,Z",
          "Where the middle of the meshes is, in ems [right of\neverything else]")),
      size_(AddRepeatedOption(
          command, "--import-size", "D [" + NumberText(MeshOptions().size) + "]",
          "Length of the longest edge of the meshes' box in ems;\n0 keeps the units of the file")),
      turn_(AddRepeatedOption(command, "--import-turn", "X,Y,Z [0,0,0]",
                              "Degrees about each axis, in the order of --turn"))
{
    at_->check(ReadableBy(ParsePlace));
    size_->check(NumberBetween(0, 1e6));
    turn_->check(ReadableBy(ParseAngles));
}

std::vector<Import> ImportOptions::Parse() const
{
    return FilesWithOptions<Import>(
        command_, file_, {at_, size_, turn_},
        [this](MeshOptions& options, const CLI::Option* option, const std::string& text) {
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
        });
}

}  // namespace orvane
