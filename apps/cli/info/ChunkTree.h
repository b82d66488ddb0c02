// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Types.h"

#include <string>
#include <vector>

namespace orvane
{

/// One chunk of a 3D Studio file.
struct ChunkEntry
{
    int depth;  ///< the number of chunks that it is nested in
    WORD id;
    DWORD start;   ///< of the header in the file
    DWORD length;  ///< with the header
    bool isWhole;  ///< it ends inside the chunk that it is in, and inside the file
};

/// All chunks in the order of the file. The chunks inside a chunk are listed if the table of chunks
/// has its id. The list ends where no header can be read. Throws Error if the file cannot be read.
std::vector<ChunkEntry> ReadChunkTree(const std::string& path);

/// The tree as lines, each indented by its depth.
std::string ChunkTreeText(const std::vector<ChunkEntry>& chunks);

}  // namespace orvane
