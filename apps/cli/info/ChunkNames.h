// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Types.h"

/// What is known of the chunks of 3D Studio files.
struct ChunkKind
{
    WORD id;
    const char* name;
    /// How many bytes stand before the chunks inside, or one of the constants below.
    int contentBytes;
    /// Why an import does nothing with it; null for one that it reads.
    const char* unused;
};

// Instead of a number of bytes.
constexpr int noChunksInside = -1;
constexpr int textBefore = -2;   ///< a text with its zero
constexpr int facesBefore = -4;  ///< a count and as many faces

/// One with the name "unknown" for what is not known.
const ChunkKind& KindOfChunk(WORD id);
