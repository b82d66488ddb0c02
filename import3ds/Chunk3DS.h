// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "platform/Types.h"

class CFile;

/// The header of one chunk of a 3D Studio file: an id of 2 bytes and a length of 4 bytes,
/// little-endian. The length includes these six bytes. A new Chunk3DS has zero in every field
/// except the file.
class ORVANE_API Chunk3DS
{
public:
    /// The size of a header in bytes.
    static constexpr DWORD headerSize = 6;

    explicit Chunk3DS(CFile* newFile) : file(newFile) {}
    Chunk3DS(const Chunk3DS& other) = default;
    Chunk3DS& operator=(const Chunk3DS& other) = default;
    virtual ~Chunk3DS();

    /// Reads the header at the file's position and leaves the file at the first byte after it.
    /// Returns 0 without a file, if the file ends inside the header, if the length is less than 6,
    /// and if the end does not fit in 32 bits.
    int Initialize();
    /// Moves the file's position to the chunk's end, which may be past the end of the file. Returns
    /// 0 without a file, and if the position cannot be moved.
    int Finalize();

    CFile* file;       ///< open; borrowed, may be null
    DWORD start = 0;   ///< position of the header in the file
    DWORD end = 0;     ///< start + length: position of the first byte after the chunk
    DWORD length = 0;  ///< in bytes, the header included
    WORD id = 0;
};
