// SPDX-License-Identifier: MIT
#pragma once

#include "exchange/ByteSink.h"
#include "exchange/MeshScene.h"
#include "orvane/Options.h"
#include "platform/Export.h"

#include <functional>
#include <string>

namespace orvane
{

/// Where a mesh file goes, with the files beside it.
struct MeshFileTarget
{
    ByteSink& main;  ///< borrowed
    /// The name of the file without its folder and its ending, in UTF-8.
    std::string stem;
    /// Opens a file beside the main one and returns its sink, which lives as long as `main`. Empty
    /// when there can be no other file, because the main one goes to standard output; the main file
    /// then does without.
    std::function<ByteSink&(const std::string& name)> openBeside;
};

/// Throws Error when the library was built without a format.
ORVANE_API void CheckFormat(MeshFormat format);

/// Writes a scene that PlaceScene has prepared for the format. Texts in files are UTF-8, and
/// numbers are the same in every locale. Throws Error when the target cannot take the bytes, when
/// the format cannot hold so much, and, with the name of the node, when a number is not finite.
/// \param options the same as for PlaceScene
ORVANE_API void WriteMeshFile(const MeshScene& scene, MeshFormat format,
                              const MeshFileOptions& options, const MeshFileTarget& target);

}  // namespace orvane
