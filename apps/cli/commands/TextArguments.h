// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace CLI
{
class App;
class Option;
}  // namespace CLI

namespace orvane
{

/// The lines of text of a command: its arguments, each a line, and the file of --text-file after
/// them.
class TextArguments
{
public:
    /// Adds TEXT and --text-file to a command.
    explicit TextArguments(CLI::App& command);
    TextArguments(const TextArguments&) = delete;
    TextArguments& operator=(const TextArguments&) = delete;

    bool AreGiven() const { return !texts_.empty() || !file_.empty(); }
    CLI::Option* FileOption() const { return fileOption_; }

    /// The lines, with spaces in place of tabs (SplitLines in document/TextEncoding.h).
    std::vector<std::string> Lines() const;
    /// The arguments and the content of the file with LF between them. A line end at the end of
    /// one of them is left out.
    /// \param mostBytes the most bytes that are read from the file
    std::string Text(std::size_t mostBytes) const;

private:
    std::vector<std::string> texts_;
    std::string file_;
    CLI::Option* fileOption_;
};

}  // namespace orvane
