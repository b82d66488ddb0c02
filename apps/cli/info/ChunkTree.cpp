// SPDX-License-Identifier: MIT
#include "apps/cli/info/ChunkTree.h"

#include "apps/cli/info/TextTable.h"
#include "document/FileErrors.h"
#include "host/CFile.h"
#include "import3ds/Chunk3DS.h"
#include "import3ds/ChunkTable.h"

#include <algorithm>

namespace orvane
{

namespace
{

// The deepest level of the tree that is indented further than its parent. Chunks can be nested so
// deeply that lines would become too long to read.
constexpr int deepestIndent = 20;

// Moves the file to the first chunk inside a chunk whose header has just been read. Returns false
// if no chunk lies inside it.
bool EnterContent(CFile& file, const Chunk3DS& chunk)
{
    constexpr DWORD bytesPerFace = 8;
    DWORD position = chunk.start + Chunk3DS::headerSize;
    const ChunkContent content = KindOfChunk(chunk.id).content;
    switch (content.kind)
    {
        case ChunkContent::Kind::Values:
            return false;
        case ChunkContent::Kind::Chunks:
            position += content.bytesBefore;
            break;
        case ChunkContent::Kind::NameThenChunks: {
            BYTE character = 0;
            do
            {
                ++position;
            } while (position < chunk.end && file.Read(&character, 1) == 1 && character != 0);
            break;
        }
        case ChunkContent::Kind::FacesThenChunks: {
            WORD count = 0;
            file.Read(&count, sizeof count);
            position += sizeof count + count * bytesPerFace;
            break;
        }
    }
    file.Seek(position, CFile::begin);
    return position < chunk.end;
}

}  // namespace

std::vector<ChunkEntry> ReadChunkTree(const std::string& path)
try
{
    CFile file(path.c_str(), CFile::modeRead);
    const std::uint64_t fileEnd = file.GetLength();
    std::vector<ChunkEntry> chunks;
    std::vector<std::uint64_t> ends;  // the ends of the chunks around the position, in bytes
    while (file.GetPosition() < fileEnd)
    {
        while (!ends.empty() && file.GetPosition() >= ends.back())
        {
            file.Seek(static_cast<std::int64_t>(ends.back()), CFile::begin);
            ends.pop_back();
        }
        Chunk3DS chunk(&file);
        if (!chunk.Initialize())
        {
            break;
        }
        const std::uint64_t limit = ends.empty() ? fileEnd : std::min(ends.back(), fileEnd);
        chunks.push_back({static_cast<int>(ends.size()), chunk.id, chunk.start, chunk.length,
                          chunk.end <= limit});
        if (EnterContent(file, chunk))
        {
            ends.push_back(std::min<std::uint64_t>(chunk.end, limit));
        }
        else
        {
            chunk.Finalize();
        }
    }
    return chunks;
}
catch (const CFileException& error)
{
    throw orvane::FileError(path, path, error);
}

std::string ChunkTreeText(const std::vector<ChunkEntry>& chunks)
{
    TextTable table;
    table.Add({"offset", "length", "chunk"});
    for (const ChunkEntry& chunk : chunks)
    {
        std::string name(2 * static_cast<std::size_t>(std::min(chunk.depth, deepestIndent)), ' ');
        name += ChunkIdText(chunk.id) + " " + KindOfChunk(chunk.id).name;
        name += chunk.isWhole ? "" : ", ends past the end of its parent or of the file";
        table.Add({std::to_string(chunk.start), std::to_string(chunk.length), name});
    }
    return table.Text();
}

}  // namespace orvane
