// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

class OrvFont;

/// Fills the registry of installed fonts, showing on a terminal's standard error which one is being
/// added.
void LoadFonts();

/// The font of that full name (in UTF-8); letter case does not matter when only one fits. An empty
/// name gives the tool's default font. Throws Failure, suggesting near names, when there is none.
OrvFont* ChooseFont(const std::string& name);

/// Up to \p most of the names that are most like \p name, the nearest first.
std::vector<std::string> NearNames(const std::string& name, const std::vector<std::string>& names,
                                   std::size_t most);
