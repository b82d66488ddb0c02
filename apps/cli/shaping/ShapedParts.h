// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/commands/MissingParts.h"
#include "shaping/TextLayout.h"

#include <string>
#include <vector>

namespace orvane
{

class SceneDocument;

/// Sentences about characters that no font has: for each script its first characters and, where one
/// is known, the package that has them.
/// \param strictness with Strictness::Fail, only the named fonts were searched
std::vector<std::string> SentencesAbout(const std::vector<MissingCharacter>& missing,
                                        Strictness strictness);

/// These sentences about the texts of any language in a document, each once.
std::vector<std::string> MissingCharactersOf(const SceneDocument& document);

/// Sentences about fonts of such texts that are installed, but not as the texts ask for, each once.
std::vector<std::string> FontNoticesOf(const SceneDocument& document);

/// Tells on standard error which characters no font has. Throws Error when there are any and the
/// command is to fail.
void TellMissingCharacters(const std::vector<MissingCharacter>& missing, Strictness strictness);

/// Tells on standard error what is not as it was asked for with fonts. Throws Error when there is
/// anything and the command is to fail.
void TellFontNotices(const std::vector<std::string>& notices, Strictness strictness);

}  // namespace orvane
