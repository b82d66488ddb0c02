// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ShapingFace.h"

#include <functional>
#include <memory>
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
    bool isSheet = false;             ///< a picture of the families in place of a list
    std::optional<std::string> text;  ///< only fonts that can set this text are listed

    bool IsAsked() const { return tellsFamilies || text; }
};

/// Whether fonts of a full name or, in a list of families, of a family are listed.
using FontFilter = std::function<bool(const std::string& name)>;

/// A family, its styles, and the face whose details are told.
struct FontFamily
{
    std::string name;
    std::vector<std::string> styles;
    std::shared_ptr<const ShapingFace> face;  ///< never null
};

struct CoveredScript
{
    ScriptTag script = commonScript;
    int characters = 0;
};

/// Adds --families, --sample and --for to a command, and returns them.
std::vector<CLI::Option*> AddFontSearchOptions(CLI::App& command, FontSearch& search);

/// The families that the search asks for, in the order of their names.
std::vector<FontFamily> FindFamilies(const FontSearch& search, const FontFilter& isListed);

/// The list as text or JSON.
std::string SearchFonts(const FontSearch& search, bool asJson, const FontFilter& isListed);

/// The scripts that a face covers, those with the most characters first.
std::vector<CoveredScript> ScriptsOf(const ShapingFace& face);

}  // namespace orvane
