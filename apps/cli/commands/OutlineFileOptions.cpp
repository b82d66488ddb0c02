// SPDX-License-Identifier: MIT
#include "apps/cli/commands/OutlineFileOptions.h"

#include "apps/cli/Errors.h"
#include "apps/cli/commands/OptionValues.h"
#include "apps/cli/commands/RepeatedOptions.h"

#include <CLI/CLI.hpp>

namespace orvane
{

OutlineFileOptions::OutlineFileOptions(CLI::App& command)
    : command_(command),
      file_(AddRepeatedOption(command, "--outline-file", "FILE",
                              "Adds the areas of an SVG file as solids, one for each\n"
                              "colour; may be repeated. The next three options belong\n"
                              "to the file before them")),
      at_(AddRepeatedOption(command, "--outline-at", "X,Y,Z",
                            "Where the middle of the solids is, in ems [the origin,\n"
                            "or right of everything else]")),
      width_(AddRepeatedOption(command, "--outline-width", "D",
                               "Width of all that the file draws, in ems")),
      height_(AddRepeatedOption(command, "--outline-height", "D",
                                "Height of all that the file draws, in place of its\n"
                                "width; without either, the file's viewBox is 1 em high"))
{
    at_->check(ReadableBy(ParsePlace));
    width_->check(NumberBetween(0.001, 1000));
    height_->check(NumberBetween(0.001, 1000));
    all = {file_, at_, width_, height_};
}

std::vector<OutlineFile> OutlineFileOptions::Parse() const
{
    return FilesWithOptions<OutlineFile>(
        command_, file_, {at_, width_, height_},
        [this](OutlineOptions& options, const CLI::Option* option, const std::string& text) {
            if (option == at_)
            {
                options.at = ParsePlace(text);
                return;
            }
            (option == width_ ? options.width : options.height) = ParseNumber(text);
            if (options.width && options.height)
            {
                throw UsageError(
                    "--outline-height: cannot be combined with "
                    "--outline-width");
            }
        });
}

}  // namespace orvane
