// SPDX-License-Identifier: MIT
#include "import3ds/Chunk3DS.h"

#include "host/CFile.h"

#include <cstring>
#include <limits>

Chunk3DS::~Chunk3DS() = default;

int Chunk3DS::Initialize()
try
{
    if (file == nullptr)
    {
        return 0;
    }
    const std::uint64_t position = file->GetPosition();
    if (position > std::numeric_limits<DWORD>::max())
    {
        return 0;
    }
    start = static_cast<DWORD>(position);

    BYTE header[headerSize];
    if (file->Read(header, headerSize) != headerSize)
    {
        return 0;
    }
    std::memcpy(&id, header, sizeof id);
    std::memcpy(&length, header + sizeof id, sizeof length);
    end = start + length;
    return length >= headerSize && end > start ? 1 : 0;
}
catch (const CFileException&)
{
    return 0;  // a failure to read counts as the end of the file
}

int Chunk3DS::Finalize()
try
{
    if (file == nullptr)
    {
        return 0;
    }
    // Most chunks have been read to their end already, and a seek costs a system call.
    if (file->GetPosition() != end)
    {
        file->Seek(end, CFile::begin);
    }
    return 1;
}
catch (const CFileException&)
{
    return 0;
}
