// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Types.h"

#include <string>
#include <vector>

namespace orvane
{

/// One chunk of a 3D Studio file, as it is stored.
struct ChunkEntry
{
    int depth;  ///< how many chunks it is in
    WORD id;
    DWORD start;   ///< of the header in the file
    DWORD length;  ///< with the header
    bool isWhole;  ///< it ends inside the chunk that it is in, and inside the file
};

/// The chunks in the order of the file, of those whose kind is known also what is inside. The list
/// ends where no header can be read. Throws orvane::Error for a file that cannot be read.
std::vector<ChunkEntry> ReadChunkTree(const std::string& path);

/// The tree as lines, each indented by the depth.
std::string ChunkTreeText(const std::vector<ChunkEntry>& chunks);

}  // namespace orvane
