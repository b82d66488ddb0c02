// SPDX-License-Identifier: MIT
#include "apps/cli/ImportOptions.h"

#include "apps/cli/Arguments.h"
#include "apps/cli/Errors.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>

struct ImportOptions::Options
{
    CLI::App& command;
    CLI::Option* file;
    CLI::Option* at;
    CLI::Option* size;
    CLI::Option* turn;
};

ImportOptions::ImportOptions(CLI::App& command)
{
    const auto option = [&command](const char* name, const char* type, const char* description) {
        // What they say is read in Parse, in the order of the command line.
        return command
            .add_option_function<std::vector<std::string>>(
                name, [](const std::vector<std::string>&) {}, description)
            ->option_text(type)
            ->expected(1)
            ->allow_extra_args(false)
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    };
    options_ = std::make_unique<Options>(Options{
        command,
        option("--import", "FILE",
               "The meshes of a 3D Studio file (.3ds); may be repeated.\n"
               "The next three are for the import before them"),
        option("--import-at", "X,Y,Z", "Where its middle is, in ems [right of what is there]"),
        option("--import-size", "D [2]", "Length of its longest edge in ems; 0 keeps the file's"),
        option("--import-turn", "X,Y,Z [0,0,0]", "Degrees about each axis, as --turn"),
    });
}

ImportOptions::~ImportOptions() = default;

bool ImportOptions::AreGiven() const
{
    return options_->file->count() != 0;
}

std::vector<ImportLook> ImportOptions::Parse() const
{
    std::vector<ImportLook> imports;
    std::map<const CLI::Option*, std::size_t> used;
    for (const CLI::Option* const option : options_->command.parse_order())
    {
        const Options& o = *options_;
        if (option != o.file && option != o.at && option != o.size && option != o.turn)
        {
            continue;
        }
        const std::string name = option->get_name();
        const std::string text = option->results().at(used[option]++);
        if (option == o.file)
        {
            imports.push_back({});
            imports.back().file = text;
            continue;
        }
        if (imports.empty())
        {
            throw UsageError(name + ": there is no --import before it");
        }
        ImportLook& import = imports.back();
        const auto triple = [&](const std::string& form) {
            const std::vector<double> numbers = ParseNumbers(name, text, 3, form);
            return std::array<double, 3>{numbers[0], numbers[1], numbers[2]};
        };
        if (option == o.at)
        {
            import.at = triple("a place as X,Y,Z");
        }
        else if (option == o.turn)
        {
            import.turn = triple("three angles in degrees as X,Y,Z");
        }
        else
        {
            import.size = ParseNumber(name, text, 0, 1e6);
        }
    }
    return imports;
}
