// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// One writer for each format of mesh files; WriteMeshFile calls them with meshes that CheckMesh
/// has checked.

#include "exchange/MeshWriter.h"

namespace orvane
{

void WriteStl(const SolidMesh& mesh, const MeshFileOptions& options, const MeshFileTarget& target);
void WritePly(const SolidMesh& mesh, const MeshFileOptions& options, const MeshFileTarget& target);
void WriteObj(const SolidMesh& mesh, const MeshFileOptions& options, const MeshFileTarget& target);
/// \param isBinary GLB; else glTF, with everything in one JSON text
void WriteGltf(const MeshScene& scene, const MeshFileOptions& options, const MeshFileTarget& target,
               bool isBinary);
void WriteThreeMf(const SolidMesh& mesh, const MeshFileOptions& options,
                  const MeshFileTarget& target);

}  // namespace orvane
