// SPDX-License-Identifier: MIT
#pragma once

#include <CLI/CLI.hpp>

#include <algorithm>
#include <initializer_list>
#include <map>
#include <string>

namespace orvane
{

/// Adds an option that may be given several times. Its values are kept as text, because their order
/// matters: ForEachInOrder finds them.
inline CLI::Option* AddRepeatedOption(CLI::App& command, const char* name, const std::string& type,
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

/// Calls \p visit(option, text) with each value of some repeated options, in the order of the
/// command line.
template <typename Visit>
void ForEachInOrder(const CLI::App& command, std::initializer_list<const CLI::Option*> options,
                    Visit visit)
{
    std::map<const CLI::Option*, std::size_t> used;
    for (const CLI::Option* const option : command.parse_order())
    {
        if (std::find(options.begin(), options.end(), option) != options.end())
        {
            visit(option, option->results().at(used[option]++));
        }
    }
}

}  // namespace orvane
