// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

#include <array>
#include <span>
#include <string>

/// \file
/// The chunks of 3D Studio files: their ids, their names, their contents, and which chunks an
/// import reads. ThreeDStudioObject reads by this table, `orvane info` describes files with it, and
/// docs/3ds.md lists it.

namespace orvane
{

/// The ids of the chunks that an import reads, and of LocalAxes, which it reads and drops.
enum class ChunkId : WORD
{
    None = 0,
    File = 1,  ///< not a chunk: the file itself, as the parent of the root chunk
    FloatColor = 0x0010,
    ByteColor = 0x0011,
    WholePercentage = 0x0030,
    FloatPercentage = 0x0031,
    EditorData = 0x3D3D,
    NamedObject = 0x4000,
    ObjectHidden = 0x4010,
    ObjectShadow = 0x4012,
    TriangleMesh = 0x4100,
    VertexList = 0x4110,
    FaceList = 0x4120,
    FaceMaterials = 0x4130,
    LocalAxes = 0x4160,
    MaterialName = 0xA000,
    AmbientColor = 0xA010,
    DiffuseColor = 0xA020,
    SpecularColor = 0xA030,
    Shininess = 0xA040,
    Transparency = 0xA050,
    SelfIllumination = 0xA080,
    MaterialEntry = 0xAFFF,
    Project = 0xC23D,
    Main = 0x4D4D
};

/// The kind of content that follows a chunk's header.
struct ChunkContent
{
    enum class Kind : BYTE
    {
        Values,          ///< values only, no chunks
        Chunks,          ///< bytesBefore bytes of values, then chunks
        NameThenChunks,  ///< a text with its final zero byte, then chunks
        FacesThenChunks  ///< a 16-bit count, as many faces of 8 bytes, then chunks
    };

    Kind kind;
    BYTE bytesBefore = 0;
};

/// One row of the table.
struct ChunkKind
{
    WORD id;
    const char* name;
    ChunkContent content;
    /// The parents in which an import reads the chunk. All are None if an import never reads it.
    std::array<ChunkId, 3> readIn = {};
    /// The reason for skipping the chunk. If null, an import skips the chunk only inside other
    /// parents, where it has no meaning.
    const char* whySkipped = nullptr;

    ORVANE_API bool IsReadIn(ChunkId parent) const;
};

/// All rows, in ascending order of the ids.
ORVANE_API std::span<const ChunkKind> AllChunkKinds();

/// The row of an id. An id that is not in the table gets a row with the name "unknown".
ORVANE_API const ChunkKind& KindOfChunk(WORD id);

/// The id as in "0x4D4D".
ORVANE_API std::string ChunkIdText(WORD id);

}  // namespace orvane
