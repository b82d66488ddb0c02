// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"

#include <initializer_list>
#include <string>
#include <vector>

namespace CLI
{
class App;
}

namespace orvane
{

class SceneDocument;

/// Whether a command goes on when a part of the scene is missing.
enum class Strictness
{
    GoOn,
    Fail
};

/// The parts that a scene can name without showing them as it asks for.
enum class MissingKind
{
    Picture,
    Font,
    Letter,
    Character,      ///< that no font has, of texts of any language
    TextProfile,    ///< of the solids of texts that were drawn or made into a mesh
    OutlineProfile  ///< of such solids of outlines
};

/// Tells the first problems on standard error, and how many more there are: a file can have a
/// million of them.
/// \param place begins each message
/// \param rest ends the message about those that are not told
void TellFirst(const std::string& place, const std::vector<std::string>& problems,
               const char* rest);

/// Tells on standard error which parts of these kinds are missing, each once. Throws Error when
/// there are any and the command is to fail.
void TellMissingParts(const SceneDocument& document, std::initializer_list<MissingKind> kinds,
                      Strictness strictness);

/// Tells on standard error what an SVG file has that is not shown as other programs show it. Throws
/// Error when there is anything and the command is to fail.
void TellNotices(const std::string& file, const std::vector<std::string>& notices,
                 Strictness strictness);

/// For PictureOptions::warn: tells the same of a picture that could not be read while it was drawn.
/// Empty, so that the drawing throws Error, when the command is to fail.
MissingPictureFunction LostPictureTeller(const SceneDocument& document, Strictness strictness);

/// Adds --strict to a command.
void AddStrictOption(CLI::App& command, Strictness& strictness, const std::string& description);

}  // namespace orvane
