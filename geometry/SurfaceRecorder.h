// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/MeshVertex.h"
#include "geometry/Vector2D.h"
#include "platform/Export.h"
#include "platform/OpenGL.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

class NamedColor;

namespace orvane
{

/// A sink (extrude/SurfaceSink.h) that keeps the triangles of one letter. Corners share a vertex
/// when their positions, normals and texture coordinates are equal. The corners of a triangle run
/// counter-clockwise seen from outside the letter. A quad becomes two triangles: corners 0, 1, 3
/// and corners 1, 2, 3.
class ORVANE_API SurfaceRecorder
{
public:
    /// Consecutive triangles of the same part and material.
    struct Run
    {
        MeshPart part;
        const NamedColor* material;  ///< borrowed from the text
        std::size_t firstIndex;
        std::size_t indexCount;
    };

    /// The diagonals that quads are cut along.
    enum class Diagonals
    {
        UsualAndRendered,
        Usual  ///< RenderedIndices stays empty, which is faster
    };

    explicit SurfaceRecorder(Diagonals diagonals = Diagonals::UsualAndRendered);

    /// Forgets the letter. Texture coordinates are 0, 0 until the next call of TexCoord.
    void Clear();

    const std::vector<MeshVertex>& Vertices() const { return vertices_; }
    const std::vector<std::uint32_t>& Indices() const { return indices_; }
    const std::vector<Run>& Runs() const { return runs_; }
    /// The same triangles in the same order, but quads are cut between corners 0 and 2: the
    /// software renderer does so in immediate mode, unless a quad lies partly outside the picture.
    /// The last corner of a triangle is that of the drawing; the others may have changed places.
    const std::vector<std::uint32_t>& RenderedIndices() const { return renderedIndices_; }

    // What a letter is drawn with. Each holds for the vertices that follow.
    void BeginPart(MeshPart part) { part_ = part; }
    void EndPart() {}
    void UseMaterial(const NamedColor& material) { material_ = &material; }

    void FrontFace(GLenum mode) { clockwise_ = mode == GL_CW; }
    void Begin(GLenum primitive);
    void End() {}
    void Normal(float x, float y, float z)
    {
        normalX_ = x;
        next_[2] = PairOf(y, z);
    }
    void TexCoord(const Vector2D& coordinate) { next_[3] = PairOf(coordinate.x, coordinate.y); }
    void Vertex(float x, float y, float z);

private:
    /// The bits of a MeshVertex: two of its numbers in each word. Vertices are put together, hashed
    /// and compared as words, because a processor waits when it reads a word that was just written
    /// as two numbers.
    using VertexBits = std::array<std::uint64_t, sizeof(MeshVertex) / sizeof(std::uint64_t)>;

    /// Two numbers as they lie in memory. Negative zero becomes zero, so that equal numbers have
    /// equal bits.
    static std::uint64_t PairOf(float first, float second)
    {
        return std::bit_cast<std::uint64_t>(std::array<float, 2>{first + 0.0f, second + 0.0f});
    }
    static std::size_t HashOf(const VertexBits& vertex);
    /// Whether the next vertex is this one. A number that is no number is equal to itself.
    bool IsNext(std::uint32_t index) const;
    /// Whether the next vertex, corner 0 or 1 of a quad, is corner 3 or 2 of the quad before it in
    /// a band. Where a band is smooth, this spares the search.
    bool IsCornerOfQuadBefore(std::size_t corner) const;
    /// The index of the next vertex, which is added if it is new.
    std::uint32_t IndexOfNext();
    void Grow();
    void AddQuad();
    /// A triangle that is the same whatever the diagonals of quads are.
    void AddTriangle(std::uint32_t a, std::uint32_t b, std::uint32_t c);
    /// Counts indices of the part and material in hand that are about to be added.
    void AddToRun(std::size_t indexCount);

    std::vector<MeshVertex> vertices_;
    std::vector<std::uint32_t> indices_;
    std::vector<Run> runs_;
    std::vector<std::uint32_t> renderedIndices_;
    /// Open addressing: the index of a vertex plus 1, or 0 in a free slot. Its size is a power
    /// of 2.
    std::vector<std::uint32_t> slots_;

    Diagonals diagonals_;
    MeshPart part_ = MeshPart::Face;
    const NamedColor* material_ = nullptr;
    bool clockwise_ = false;
    float normalX_ = 0;
    VertexBits next_ = {};  ///< the vertex that is being put together
    GLenum primitive_ = GL_TRIANGLES;
    std::size_t count_ = 0;          ///< vertices since Begin
    std::uint32_t corners_[4] = {};  ///< of the primitive in hand
};

}  // namespace orvane
