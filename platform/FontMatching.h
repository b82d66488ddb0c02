// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Chooses installed fonts by names and by the characters that they must have. Names are in UTF-8.

#include "platform/Export.h"
#include "platform/ShapingFace.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane
{

/// The looks of a face among those of its family.
struct FontLooks
{
    int weight = 400;    ///< 1 to 1000; 400 is regular, 700 bold
    double width = 100;  ///< percent of the normal width
    bool isItalic = false;
};

/// An installed face.
struct InstalledFont
{
    FaceFile file;
    std::string family;
    std::string style;
    std::string fullName;
    FontLooks looks;
};

/// The face of a family that is nearest to the looks. A variable family has an instance for every
/// weight and width that it allows. No value when no font with outlines has that family's name.
/// Case does not count.
ORVANE_API std::optional<InstalledFont> FindFontOfFamily(std::string_view family,
                                                         const FontLooks& looks);

/// The face with a full name or a PostScript name. Case does not count.
ORVANE_API std::optional<InstalledFont> FindFontByFullName(std::string_view name);

/// The face that the machine's font configuration chooses for a pattern, such as
/// "serif:bold:lang=fa". No value when the pattern cannot be read or no font is installed.
ORVANE_API std::optional<InstalledFont> FindFontByPattern(std::string_view pattern);

/// The faces that have a character, at most \p count, in the order in which the machine's font
/// configuration prefers them for a language.
/// \param language a BCP 47 tag; may be empty
ORVANE_API std::vector<InstalledFont> FindFallbackFonts(char32_t character,
                                                        const std::string& language,
                                                        const FontLooks& looks, std::size_t count);

/// All installed faces with outlines, sorted by family, style and file, each once. The named
/// instances of a variable font are faces of their own.
ORVANE_API std::vector<InstalledFont> InstalledFonts();

/// The names of all families with outlines, sorted, each once.
ORVANE_API std::vector<std::string> InstalledFamilies();

}  // namespace orvane
