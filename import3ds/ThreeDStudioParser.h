// SPDX-License-Identifier: MIT
#pragma once

#include "import3ds/Chunk3DS.h"
#include "import3ds/ChunkTable.h"
#include "import3ds/ThreeDStudioObject.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace orvane
{

/// Reads chunks of a 3D Studio file into a ThreeDStudioObject, and holds the values that only
/// reading needs: the end of the chunk that is being read, the length of the file, and the numbers
/// of the materials by name. ThreeDStudioObject makes a parser for each import, and for each
/// parsing step that a host calls by itself.
///
/// Bytes are read from the node's file, at its position. The parser never reads past the end of the
/// innermost chunk, and allocates no memory for a list whose elements are not all in the file.
class ThreeDStudioParser
{
public:
    /// \param node borrowed; its file is open.
    explicit ThreeDStudioParser(ThreeDStudioObject& node);
    ThreeDStudioParser(const ThreeDStudioParser&) = delete;
    ThreeDStudioParser& operator=(const ThreeDStudioParser&) = delete;

    /// Reads the root chunk and everything in it. Returns 0 if the file has no length, like a pipe,
    /// or if its first chunk is not a root.
    int ParseFile();

    // The steps of ThreeDStudioObject. Each takes a chunk whose header has been read.

    int Parse3DS(const Chunk3DS& chunk);
    int ParseMaterialData(const Chunk3DS& chunk);
    int ParseMaterialEntry(const Chunk3DS& chunk);
    int ParseNamedObject(const Chunk3DS& chunk);
    std::unique_ptr<TriangularMeshObject> ParseMesh(const Chunk3DS& chunk, const CString& name);
    int ParseVertexArray(TriangularMeshObject& mesh);
    int ParseFaceArray(const Chunk3DS& chunk, TriangularMeshObject& mesh);
    int ParseMeshMaterialGroup(TriangularMeshObject& mesh);
    void ParseMeshMatrix();
    int ParseColor(ColorVector& color);
    int ParseFloatColor(ColorVector& color);
    int ParseColor24(ColorVector& color);
    float ParsePercentage();

    /// Reads a little-endian number. Returns 0 if the chunk ends inside the number.
    template <typename Number>
    Number ReadNumber();
    int ReadVector(Vector& vector);
    int ReadFace(TriangularFace& face);
    int ReadString(CString& text);

private:
    using SkipReason = ThreeDStudioObject::SkipReason;

    /// Makes a chunk the innermost chunk of the parser as long as this object lives.
    class ChunkScope
    {
    public:
        ChunkScope(ThreeDStudioParser& parser, const Chunk3DS& chunk)
            : parser_(parser), outerEnd_(parser.innermostEnd_), outerId_(parser.innermostId_)
        {
            parser.innermostEnd_ = chunk.end;
            parser.innermostId_ = chunk.id;
        }
        ~ChunkScope()
        {
            parser_.innermostEnd_ = outerEnd_;
            parser_.innermostId_ = outerId_;
        }
        ChunkScope(const ChunkScope&) = delete;
        ChunkScope& operator=(const ChunkScope&) = delete;

    private:
        ThreeDStudioParser& parser_;
        DWORD outerEnd_;
        WORD outerId_;
    };

    template <typename HandleChunk>
    int ForEachChunk(const Chunk3DS& parent, HandleChunk handleChunk);
    template <typename HandleChunk>
    bool HandleAndReport(const Chunk3DS& chunk, HandleChunk handleChunk);
    bool EnterEither(Chunk3DS& chunk, ChunkId first, ChunkId second);
    int ReportSkipped(WORD parent, const Chunk3DS& chunk, SkipReason why);
    void ReportPastParent(WORD parent, DWORD parentEnd, const Chunk3DS& chunk);
    void Report(const ThreeDStudioObject::SkippedPart& part);
    void ReportRestSkipped(const Chunk3DS& parent, DWORD from, SkipReason why);

    bool HasReached(DWORD position) const;
    DWORD BytesLeft() const;
    UINT ReadBytes(void* bytes, UINT count);
    void MovePosition(int distance);
    bool ReadBlock(DWORD count);
    std::optional<int> ReadList(DWORD bytesPerElement);

    WORD MaterialNumber(const CString& name);
    void AddMesh(std::unique_ptr<TriangularMeshObject> mesh);

    static constexpr DWORD noEnd = 0xFFFFFFFF;

    ThreeDStudioObject& node_;
    CFile& file_;                              // the node's
    std::optional<std::uint64_t> fileLength_;  // in bytes; no value for a closed file or a pipe
    DWORD innermostEnd_ = noEnd;  // position in the file where the innermost chunk ends
    WORD innermostId_ = 0;        // 0 outside every chunk
    int skippedParts_ = 0;        // the number of parts reported so far
    std::vector<BYTE> block_;     // the elements of the list that was read last

    // The number of the first material of each name, among the first namedMaterials_ materials.
    std::unordered_map<std::string, WORD> materialByName_;
    int namedMaterials_ = 0;
};

// Calls handleChunk for each chunk from the file's position to the parent's end, until one call
// returns 0. A chunk that ends past the parent's end is reported instead, and ends the loop.
// Returns 0 if handleChunk did, or if the bytes at the position are not the header of a chunk.
template <typename HandleChunk>
int ThreeDStudioParser::ForEachChunk(const Chunk3DS& parent, HandleChunk handleChunk)
{
    const ChunkScope scope(*this, parent);
    while (!HasReached(parent.end))
    {
        Chunk3DS chunk(&file_);
        if (!chunk.Initialize())
        {
            ReportRestSkipped(parent, chunk.start, SkipReason::NoHeader);
            return 0;
        }
        if (chunk.end > parent.end)
        {
            ReportPastParent(parent.id, parent.end, chunk);
        }
        else if (!HandleAndReport(chunk, handleChunk))
        {
            ReportRestSkipped(parent, chunk.end, SkipReason::AfterFailure);
            return 0;
        }
        chunk.Finalize();
    }
    return 1;
}

// Calls handleChunk. If it fails and has not reported a reason, reports that the chunk is too
// short.
template <typename HandleChunk>
bool ThreeDStudioParser::HandleAndReport(const Chunk3DS& chunk, HandleChunk handleChunk)
{
    const WORD parent = innermostId_;
    const int skippedBefore = skippedParts_;
    const ChunkScope scope(*this, chunk);
    if (handleChunk(chunk))
    {
        return true;
    }
    if (skippedParts_ == skippedBefore)
    {
        ReportSkipped(parent, chunk, SkipReason::Incomplete);
    }
    return false;
}

}  // namespace orvane
