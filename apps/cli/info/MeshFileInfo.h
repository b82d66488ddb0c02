// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace orvane
{
class OutputFile;
}

// What is in a 3D Studio file. All but the first throw orvane::Error when it cannot be read.

/// Whether the file begins as such a file does.
bool IsMeshFile(const std::string& path);

/// The meshes and materials that an import makes of it, and what it skips and why; for people or as
/// one JSON object. With \p chunks, the tree of its chunks too.
std::string TellMeshFile(const std::string& path, bool json, bool chunks);

/// The vertices, faces and normals of all meshes as text.
void DumpMeshes(const std::string& path, orvane::OutputFile& output);
