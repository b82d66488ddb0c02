// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/commands/OptionValues.h"
#include "document/Colors.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace orvane
{

/// Adds options to a command.
class OptionAdder
{
public:
    explicit OptionAdder(CLI::App& command) : command_(command) {}

    template <typename Value>
    CLI::Option* operator()(const char* name, Value& value, const std::string& type,
                            const std::string& description)
    {
        return command_.add_option(name, value, description)->option_text(type);
    }

    /// An option with named values, whose default is shown in the help text.
    template <typename Enum>
    CLI::Option* Choice(const char* name, Enum& value, const std::string& description)
    {
        const std::vector<std::string> names = NamesOf<Enum>();
        return (*this)(name, value, Alternatives(names) + " [" + NameOf(value) + "]", description)
            ->check(CLI::IsMember(names));
    }
    CLI::Option* Length(const char* name, double& value, double least, double most,
                        const std::string& description)
    {
        return (*this)(name, value, "D [" + NumberText(value) + "]", description)
            ->check(NumberBetween(least, most));
    }
    template <typename Value>
    CLI::Option* Colour(const char* name, Value& value, const std::string& type,
                        const std::string& description)
    {
        return (*this)(name, value, type, description)->check(ReadableBy(ParseColor));
    }

private:
    CLI::App& command_;
};

}  // namespace orvane
