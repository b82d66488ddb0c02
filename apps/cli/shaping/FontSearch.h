// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace CLI
{
class App;
class Option;
}  // namespace CLI

namespace orvane
{

/// What a list of fonts tells, and of which fonts.
struct FontSearch
{
    bool tellsFamilies = false;       ///< families with their details in place of names of fonts
    std::optional<std::string> text;  ///< only fonts that can set this text are listed

    bool IsAsked() const { return tellsFamilies || text; }
};

/// Adds --families and --for to a command, and returns them.
std::vector<CLI::Option*> AddFontSearchOptions(CLI::App& command, FontSearch& search);

/// The list as text or JSON.
/// \param isListed whether fonts of a full name or, in a list of families, of a family are listed
std::string SearchFonts(const FontSearch& search, bool asJson,
                        const std::function<bool(const std::string& name)>& isListed);

}  // namespace orvane
