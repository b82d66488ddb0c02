// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/Errors.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

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
void ForEachInOrder(const CLI::App& command, const std::vector<const CLI::Option*>& options,
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

/// The values of an option that names files, each with the values of the options that follow it on
/// the command line and belong to it. Throws UsageError for such an option that has no file before
/// it.
/// \tparam File has a member `file`, its name, and a member `options`
/// \param ofFile the options that belong to a file
/// \param set is called as set(options, option, text) with their values
template <typename File, typename Set>
std::vector<File> FilesWithOptions(const CLI::App& command, const CLI::Option* file,
                                   std::initializer_list<const CLI::Option*> ofFile, Set set)
{
    std::vector<const CLI::Option*> options = ofFile;
    options.push_back(file);
    std::vector<File> files;
    ForEachInOrder(command, options, [&](const CLI::Option* option, const std::string& text) {
        if (option == file)
        {
            files.push_back({text, {}});
            return;
        }
        if (files.empty())
        {
            throw UsageError(option->get_name() + ": there is no " + file->get_name() +
                             " before it");
        }
        set(files.back().options, option, text);
    });
    return files;
}

}  // namespace orvane
