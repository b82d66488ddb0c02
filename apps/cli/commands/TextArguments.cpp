// SPDX-License-Identifier: MIT
#include "apps/cli/commands/TextArguments.h"

#include "apps/cli/commands/OptionAdder.h"
#include "document/TextEncoding.h"

#include <CLI/CLI.hpp>

namespace orvane
{

TextArguments::TextArguments(CLI::App& command)
{
    const int most = CLI::detail::expected_max_vector_size;
    // If an option allows extra arguments, CLI11 reads the text "[a,b]" as a list. So this option
    // expects the largest possible number of texts and allows no extra arguments. The test
    // TextThatLooksLikeAnythingElseIsText checks this.
    command
        .add_option(
            "TEXT", CLI::callback_t([this](const CLI::results_t& texts) {
                texts_ = texts;
                return true;
            }),
            "Each argument is a line, in UTF-8; put -- before\nlines that begin with a minus")
        ->expected(most, most)
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->option_text("...");
    fileOption_ = OptionAdder(command)("--text-file", file_, "FILE",
                                       "Reads more lines, in UTF-8; they come after TEXT");
}

std::vector<std::string> TextArguments::Lines() const
{
    std::vector<std::string> lines;
    for (const std::string& text : texts_)
    {
        const std::vector<std::string> more = SplitLines(text);
        lines.insert(lines.end(), more.begin(), more.end());
        if (more.empty())
        {
            lines.emplace_back();
        }
    }
    if (!file_.empty())
    {
        const std::vector<std::string> more = ReadLines(file_);
        lines.insert(lines.end(), more.begin(), more.end());
    }
    return lines;
}

std::string TextArguments::Text(std::size_t mostBytes) const
{
    std::vector<std::string> parts = texts_;
    if (!file_.empty())
    {
        parts.push_back(ReadText(file_, mostBytes));
    }
    std::string text;
    for (std::size_t n = 0; n < parts.size(); ++n)
    {
        std::string& part = parts[n];
        // The end of the last line begins no line of its own.
        for (const char end : {'\n', '\r'})
        {
            if (!part.empty() && part.back() == end)
            {
                part.pop_back();
            }
        }
        text += n == 0 ? "" : "\n";
        text += part;
    }
    return text;
}

}  // namespace orvane
