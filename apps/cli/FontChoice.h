// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

class CString;
class OrvFont;
struct OUTLINECHECK;

namespace CLI
{
class App;
}

/// Adds --outlines as-is|repaired to a command: what is taken of the fonts when they are loaded.
void AddOutlinesOption(CLI::App& command);

/// Fills the registry of installed fonts, showing on a terminal's standard error which one is being
/// added.
void LoadFonts();

/// The font of that full name (in UTF-8); letter case does not matter when only one fits. No name
/// gives the tool's default font. Throws Failure, suggesting near names, when there is none.
OrvFont* ChooseFont(const std::optional<std::string>& name);

/// Throws Failure, naming the first character of the text (in the process's code page) that the
/// font lacks.
void CheckCharacters(OrvFont& font, const CString& text);

/// What there is to repair in a font's outlines. Throws Failure when its file cannot be read.
OUTLINECHECK CheckOutlines(OrvFont& font);

/// Up to \p most of the names that are most like \p name, the nearest first.
std::vector<std::string> NearNames(const std::string& name, const std::vector<std::string>& names,
                                   std::size_t most);
