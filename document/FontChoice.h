// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class CString;
class OrvFont;
struct OUTLINECHECK;

namespace orvane
{

/// The full names of the fonts for texts that name none, the preferred first: wide and heavy faces
/// make the best solids. The first of these is in a package that the library depends on.
inline constexpr std::array defaultFonts = {"DejaVu Sans Bold", "Liberation Sans Bold",
                                            "DejaVu Serif Bold"};

/// Fills the registry of installed fonts, in the process's code page, unless it has fonts already.
/// \param progress called with a line about each font that is added; may be empty
ORVANE_API void LoadFonts(const std::function<void(const std::string& line)>& progress = {});

/// The registered font of that full name (UTF-8); upper and lower case do not matter when only one
/// font fits. Without a name, returns the default font. The Error for an unknown name suggests
/// similar names.
ORVANE_API OrvFont* ChooseFont(const std::optional<std::string>& name);

/// A font of the same face for texts of a code page. A font stores its letters by their character
/// codes, so texts of different code pages need different fonts. Throws Error when the font's name
/// cannot be written in the code page, or no installed font is found by it.
/// \param font of the registry
ORVANE_API OrvFont* FontForCodePage(OrvFont& font, UINT codePage);

/// Throws Error if the font lacks a character of the text, and names the first such character. The
/// process's code page must be that of the text and the font.
ORVANE_API void CheckCharacters(OrvFont& font, const CString& text);

/// Counts the glyphs of a font, and those among them whose outlines are corrected, by the kind of
/// correction. Throws Error when the font's file cannot be read.
ORVANE_API OUTLINECHECK CheckOutlines(OrvFont& font);

}  // namespace orvane
