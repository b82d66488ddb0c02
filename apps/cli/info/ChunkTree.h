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
    int depth;  ///< the number of chunks around this chunk
    WORD id;
    DWORD start;   ///< position of the header in the file, in bytes
    DWORD length;  ///< in bytes, with the header
    bool isWhole;  ///< whether the chunk ends inside its parent and inside the file
};

/// All chunks in the order of the file. The chunks inside a chunk are listed if
/// import3ds/ChunkTable.cpp has the id of the outer chunk. The list ends where no header can be
/// read. Throws Error if the file cannot be read.
std::vector<ChunkEntry> ReadChunkTree(const std::string& path);

/// The tree as lines, each indented by its depth.
std::string ChunkTreeText(const std::vector<ChunkEntry>& chunks);

}  // namespace orvane
