// SPDX-License-Identifier: MIT
#include "import3ds/ThreeDStudioObject.h"
#include "import3ds/TriangularFace.h"

#include <algorithm>

// The values inside chunks: colours, percentages, numbers and texts.

namespace
{

constexpr WORD floatColor = 0x0010;
constexpr WORD byteColor = 0x0011;
constexpr WORD wholePercentage = 0x0030;
constexpr WORD floatPercentage = 0x0031;

}  // namespace

// How many bytes were there. One that cannot be read counts as not there.
UINT ThreeDStudioObject::ReadBytes_(void* bytes, UINT count)
try
{
    return file.Read(bytes, count);
}
catch (const CFileException&)
{
    return 0;
}

// Moves the file's position, back for a negative count.
void ThreeDStudioObject::SkipBytes_(int count)
try
{
    file.Seek(count, CFile::current);
}
catch (const CFileException&)
{
    // What follows cannot be read either.
}

// Whether the file's position is at or behind another one. It may lie behind the file's end.
bool ThreeDStudioObject::HasReached_(DWORD position) const
try
{
    return file.GetPosition() >= position;
}
catch (const CFileException&)
{
    return false;
}

// From the file's position to the end of the chunk, or of the file when that comes first.
DWORD ThreeDStudioObject::BytesLeft_() const
try
{
    const std::uint64_t position = file.GetPosition();
    const std::uint64_t length = fileLength_ ? *fileLength_ : file.GetLength();
    const std::uint64_t end = std::min<std::uint64_t>(limit_, length);
    return position < end ? static_cast<DWORD>(end - position) : 0;
}
catch (const CFileException&)
{
    return 0;
}

// Reads bytes in one piece into block_. False, with nothing allocated, when they are not all there.
bool ThreeDStudioObject::ReadBlock_(DWORD count)
{
    if (count > BytesLeft_())
    {
        return false;
    }
    if (block_.size() < count)
    {
        block_.resize(count);
    }
    return ReadBytes_(block_.data(), count) == count;
}

// Reads a word, and as many elements into block_. False as above.
bool ThreeDStudioObject::ReadList_(int* count, DWORD bytesPerElement)
{
    WORD number = 0;
    if (BytesLeft_() < sizeof number || ReadBytes_(&number, sizeof number) != sizeof number)
    {
        return false;
    }
    *count = number;
    return ReadBlock_(number * bytesPerElement);
}

template <typename Number>
Number ThreeDStudioObject::ReadNumber_()
{
    Number number{};
    if (BytesLeft_() < sizeof number || ReadBytes_(&number, sizeof number) != sizeof number)
    {
        return {};
    }
    return number;
}

BYTE ThreeDStudioObject::ReadBYTE()
{
    return ReadNumber_<BYTE>();
}

WORD ThreeDStudioObject::ReadWORD()
{
    return ReadNumber_<WORD>();
}

DWORD ThreeDStudioObject::ReadDWORD()
{
    return ReadNumber_<DWORD>();
}

float ThreeDStudioObject::ReadFloat()
{
    return ReadNumber_<float>();
}

int ThreeDStudioObject::ReadVector(Vector* vector)
{
    const bool complete = BytesLeft_() >= 3 * sizeof(float);
    vector->x = ReadFloat();
    vector->y = ReadFloat();
    vector->z = ReadFloat();
    return complete ? 1 : 0;
}

int ThreeDStudioObject::ReadFace(TriangularFace* face)
{
    const bool complete = BytesLeft_() >= 4 * sizeof(WORD);
    face->a = ReadWORD();
    face->b = ReadWORD();
    face->c = ReadWORD();
    face->faceFlags = ReadWORD();
    return complete ? 1 : 0;
}

int ThreeDStudioObject::ReadString(CString* text)
{
    constexpr DWORD longest = 80;
    const DWORD available = std::min(longest, BytesLeft_());
    char characters[longest];
    const UINT count = ReadBytes_(characters, available);
    const UINT length =
        static_cast<UINT>(std::find(characters, characters + count, '\0') - characters);
    const bool terminated = length < count;
    if (terminated)
    {
        SkipBytes_(static_cast<int>(length + 1) - static_cast<int>(count));
    }
    *text = CString(characters, static_cast<int>(length));
    return terminated || length == longest ? 1 : 0;
}

// Reads headers until one has either id, and leaves the file behind it. False when none has.
bool ThreeDStudioObject::EnterChunk_(Chunk3DS* chunk, WORD id, WORD otherId)
{
    while (BytesLeft_() != 0 && chunk->Initialize())
    {
        if (chunk->end <= limit_ && (chunk->id == id || chunk->id == otherId))
        {
            return true;
        }
        Skip_(innermostId_, *chunk, chunk->end <= limit_ ? Skip::notUsed : Skip::pastParent);
        chunk->Finalize();
    }
    return false;
}

int ThreeDStudioObject::ParseColor(ColorVector* color)
{
    Chunk3DS chunk(&file);
    if (!EnterChunk_(&chunk, floatColor, byteColor))
    {
        return 0;
    }
    const ChunkLimit_ limit(*this, chunk);
    const int result = chunk.id == floatColor ? ParseFloatColor(color) : ParseColor24(color);
    chunk.Finalize();
    return result;
}

int ThreeDStudioObject::ParseFloatColor(ColorVector* color)
{
    Vector components;
    if (!ReadVector(&components))
    {
        return 0;
    }
    color->SetColorVector(components.x, components.y, components.z, color->alpha);
    return 1;
}

int ThreeDStudioObject::ParseColor24(ColorVector* color)
{
    if (BytesLeft_() < 3)
    {
        return 0;
    }
    const unsigned long red = ReadBYTE();
    const unsigned long green = ReadBYTE();
    const unsigned long blue = ReadBYTE();
    *color = red | green << 8 | blue << 16;
    return 1;
}

float ThreeDStudioObject::ParsePercentage()
{
    Chunk3DS chunk(&file);
    if (!EnterChunk_(&chunk, wholePercentage, floatPercentage))
    {
        return 0.0f;
    }
    const ChunkLimit_ limit(*this, chunk);
    const float percentage =
        chunk.id == wholePercentage ? static_cast<float>(ReadWORD() * 0.01) : ReadFloat();
    chunk.Finalize();
    return percentage;
}
