// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/info/InfoText.h"

#include <string>

namespace orvane
{

class OutputFile;

// These functions describe 3D Studio files. They throw Error if a file cannot be read.

/// Whether the file begins like a 3D Studio file. False if the file cannot be read.
bool IsMeshFile(const std::string& path);

enum class ChunkListing
{
    None,
    Tree
};

/// Describes the meshes and materials that an import makes of a file, and the parts that the import
/// skips, with the reasons. With ChunkListing::Tree, adds the tree of all chunks.
std::string DescribeMeshFile(const std::string& path, InfoFormat format, ChunkListing chunks);

/// Writes the vertices, faces and normals of all meshes as text.
void DumpMeshes(const std::string& path, OutputFile& output);

}  // namespace orvane
