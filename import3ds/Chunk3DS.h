// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

class CFile;

/// The header of one chunk of a 3D Studio file: a 2-byte id and a 4-byte length, which counts these
/// six bytes too; little-endian. A new one has every field 0 but the file.
class ORVANE_API Chunk3DS
{
public:
    /// Bytes of a header.
    static constexpr DWORD headerSize = 6;

    explicit Chunk3DS(CFile* newFile) : file(newFile) {}
    Chunk3DS(const Chunk3DS& other) = default;
    Chunk3DS& operator=(const Chunk3DS& other) = default;
    virtual ~Chunk3DS();

    /// Reads the header at the file's position and leaves the file behind it. 0 without a file, for
    /// a header that cannot be read whole, for a length below that of the header, and for an end
    /// that does not fit in 32 bits.
    int Initialize();
    /// Moves the file to the chunk's end, which may lie behind that of the file. 0 without a file,
    /// or one that cannot be moved.
    int Finalize();

    CFile* file;       ///< open; borrowed, may be null
    DWORD start = 0;   ///< position of the header in the file
    DWORD end = 0;     ///< start + length, the position just behind the chunk
    DWORD length = 0;  ///< in bytes, the header included
    WORD id = 0;
};
