// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"
#include "platform/Export.h"
#include "solids/SolidMesh.h"

#include <string>

namespace orvane
{

/// Tells what MeshFileOptions::solid has replaced in a mesh (MeshFileOptions::note), and which
/// letters do not have the profile and which nodes are not closed nevertheless
/// (MeshFileOptions::warn). Throws Error when there are such letters or nodes and nobody is to be
/// told. Does nothing unless `solid` is set. The process's code page must be that of the texts.
/// \param mesh its nodes are still those of a scene
/// \param path begins the message of the Error
ORVANE_API void TellSolidNotes(const SolidMesh& mesh, const MeshFileOptions& options,
                               const std::string& path);

}  // namespace orvane
