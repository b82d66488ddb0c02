// SPDX-License-Identifier: MIT
// The part of ThreeDStudioParser that reads the values inside chunks: colours, percentages, numbers
// and texts.
#include "import3ds/ThreeDStudioParser.h"
#include "import3ds/TriangularFace.h"

#include <algorithm>

namespace orvane
{

// Returns the number of bytes read. A failure to read counts as the end of the file.
UINT ThreeDStudioParser::ReadBytes(void* bytes, UINT count)
try
{
    return file_.Read(bytes, count);
}
catch (const CFileException&)
{
    return 0;
}

// Moves the file's position by a number of bytes, backwards if the number is negative.
void ThreeDStudioParser::MovePosition(int distance)
try
{
    file_.Seek(distance, CFile::current);
}
catch (const CFileException&)
{
    // The next read fails and is handled there.
}

// Whether the file's position is at or past a given position, which may be past the file's end.
bool ThreeDStudioParser::HasReached(DWORD position) const
try
{
    return file_.GetPosition() >= position;
}
catch (const CFileException&)
{
    return false;
}

// The number of bytes from the file's position to the end of the innermost chunk, or to the end of
// the file if that comes first.
DWORD ThreeDStudioParser::BytesLeft() const
try
{
    const std::uint64_t position = file_.GetPosition();
    const std::uint64_t end = std::min<std::uint64_t>(innermostEnd_, fileLength_.value_or(0));
    return position < end ? static_cast<DWORD>(end - position) : 0;
}
catch (const CFileException&)
{
    return 0;
}

// Reads \p count bytes into block_. If the chunk has fewer bytes left, allocates no memory and
// returns false.
bool ThreeDStudioParser::ReadBlock(DWORD count)
{
    if (count > BytesLeft())
    {
        return false;
    }
    if (block_.size() < count)
    {
        block_.resize(count);
    }
    return ReadBytes(block_.data(), count) == count;
}

// Reads a 16-bit count, and then that number of elements into block_. Returns the count, or no
// value if the chunk ends inside the list.
std::optional<int> ThreeDStudioParser::ReadList(DWORD bytesPerElement)
{
    WORD count = 0;
    if (BytesLeft() < sizeof count || ReadBytes(&count, sizeof count) != sizeof count ||
        !ReadBlock(count * bytesPerElement))
    {
        return std::nullopt;
    }
    return count;
}

template <typename Number>
Number ThreeDStudioParser::ReadNumber()
{
    Number number{};
    if (BytesLeft() < sizeof number || ReadBytes(&number, sizeof number) != sizeof number)
    {
        return {};
    }
    return number;
}

template BYTE ThreeDStudioParser::ReadNumber<BYTE>();
template WORD ThreeDStudioParser::ReadNumber<WORD>();
template DWORD ThreeDStudioParser::ReadNumber<DWORD>();
template float ThreeDStudioParser::ReadNumber<float>();

int ThreeDStudioParser::ReadVector(Vector& vector)
{
    const bool complete = BytesLeft() >= 3 * sizeof(float);
    vector.x = ReadNumber<float>();
    vector.y = ReadNumber<float>();
    vector.z = ReadNumber<float>();
    return complete ? 1 : 0;
}

int ThreeDStudioParser::ReadFace(TriangularFace& face)
{
    const bool complete = BytesLeft() >= 4 * sizeof(WORD);
    face.a = ReadNumber<WORD>();
    face.b = ReadNumber<WORD>();
    face.c = ReadNumber<WORD>();
    face.faceFlags = ReadNumber<WORD>();
    return complete ? 1 : 0;
}

int ThreeDStudioParser::ReadString(CString& text)
{
    constexpr DWORD longest = 80;
    const DWORD available = std::min(longest, BytesLeft());
    char characters[longest];
    const UINT count = ReadBytes(characters, available);
    const UINT length =
        static_cast<UINT>(std::find(characters, characters + count, '\0') - characters);
    const bool terminated = length < count;
    if (terminated)
    {
        MovePosition(static_cast<int>(length + 1) - static_cast<int>(count));
    }
    text = CString(characters, static_cast<int>(length));
    return terminated || length == longest ? 1 : 0;
}

// Reads headers up to the first with one of the two ids, and leaves the file at the first byte
// after that header. Returns false if there is no such chunk.
bool ThreeDStudioParser::EnterEither(Chunk3DS& chunk, ChunkId first, ChunkId second)
{
    while (BytesLeft() != 0 && chunk.Initialize())
    {
        const bool isInside = chunk.end <= innermostEnd_;
        const auto id = static_cast<ChunkId>(chunk.id);
        if (isInside && (id == first || id == second))
        {
            return true;
        }
        if (isInside)
        {
            ReportSkipped(innermostId_, chunk, SkipReason::NotUsed);
        }
        else
        {
            ReportPastParent(innermostId_, innermostEnd_, chunk);
        }
        chunk.Finalize();
    }
    return false;
}

int ThreeDStudioParser::ParseColor(ColorVector& color)
{
    Chunk3DS chunk(&file_);
    if (!EnterEither(chunk, ChunkId::FloatColor, ChunkId::ByteColor))
    {
        return 0;
    }
    const ChunkScope scope(*this, chunk);
    const bool isFloat = static_cast<ChunkId>(chunk.id) == ChunkId::FloatColor;
    const int result = isFloat ? ParseFloatColor(color) : ParseColor24(color);
    chunk.Finalize();
    return result;
}

int ThreeDStudioParser::ParseFloatColor(ColorVector& color)
{
    Vector components;
    if (!ReadVector(components))
    {
        return 0;
    }
    color.SetColorVector(components.x, components.y, components.z, color.alpha);
    return 1;
}

int ThreeDStudioParser::ParseColor24(ColorVector& color)
{
    if (BytesLeft() < 3)
    {
        return 0;
    }
    const unsigned long red = ReadNumber<BYTE>();
    const unsigned long green = ReadNumber<BYTE>();
    const unsigned long blue = ReadNumber<BYTE>();
    color = red | green << 8 | blue << 16;
    return 1;
}

float ThreeDStudioParser::ParsePercentage()
{
    Chunk3DS chunk(&file_);
    if (!EnterEither(chunk, ChunkId::WholePercentage, ChunkId::FloatPercentage))
    {
        return 0.0f;
    }
    const ChunkScope scope(*this, chunk);
    const bool isWhole = static_cast<ChunkId>(chunk.id) == ChunkId::WholePercentage;
    const float percentage =
        isWhole ? static_cast<float>(ReadNumber<WORD>() * 0.01) : ReadNumber<float>();
    chunk.Finalize();
    return percentage;
}

}  // namespace orvane
