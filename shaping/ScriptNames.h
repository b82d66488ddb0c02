// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Scripts for messages: their names, and the Debian packages that have fonts for them.

#include "platform/Export.h"
#include "platform/ShapingFace.h"

#include <string>

namespace orvane
{

/// The four letters of a script (ISO 15924), such as "Latn".
ORVANE_API std::string ScriptLetters(ScriptTag script);

/// The name that Unicode gives a script, such as "Latin". Empty for characters of no script and of
/// several scripts, and for a script that is not known.
ORVANE_API std::string ScriptName(ScriptTag script);

/// The package of Debian 12 whose fonts have most characters of a script; for commonScript, most
/// symbols. Empty where no package is known.
ORVANE_API std::string PackageForScript(ScriptTag script);
/// The same for a character. No font has control characters.
ORVANE_API std::string PackageFor(char32_t character);

}  // namespace orvane
