// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Chunks of 3D Studio files as bytes, for tests and benchmarks.

#include "tests/support/RecordBytes.h"

#include <initializer_list>
#include <string>

/// The parts one behind the other: chunks or other bytes.
inline RecordBytes Joined(std::initializer_list<RecordBytes> parts)
{
    RecordBytes bytes;
    for (const RecordBytes& part : parts)
    {
        bytes.Append(part);
    }
    return bytes;
}

/// A chunk: a header with the right length, then the parts.
inline RecordBytes ChunkOf(WORD id, std::initializer_list<RecordBytes> parts = {})
{
    const RecordBytes content = Joined(parts);
    return RecordBytes()
        .Word(id)
        .Dword(static_cast<DWORD>(6 + content.Get().size()))
        .Append(content);
}

/// A text and its final zero byte.
inline RecordBytes ZeroTerminated(const std::string& text)
{
    return RecordBytes().Raw(text.c_str(), text.size() + 1);
}

inline RecordBytes Words(std::initializer_list<WORD> words)
{
    RecordBytes bytes;
    for (const WORD word : words)
    {
        bytes.Word(word);
    }
    return bytes;
}
