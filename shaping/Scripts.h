// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "platform/ShapingFace.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvane
{

/// The script of each character of a paragraph. Characters of no script of their own have that of
/// the letter before them, and at the start that of the first letter. A closing bracket has the
/// script that its opening bracket has. commonScript only where no character has a script.
ORVANE_API std::vector<ScriptTag> ResolveScripts(std::u32string_view paragraph);

/// The language in which a script is most likely written: \p userLanguage if it is written in the
/// script, else the script's most common language. Empty for scripts of many languages and where
/// none is known. Han characters are Chinese unless the paragraph has kana or Hangul.
ORVANE_API std::string LikelyLanguage(ScriptTag script, const std::vector<ScriptTag>& paragraph,
                                      const std::string& userLanguage);

}  // namespace orvane
