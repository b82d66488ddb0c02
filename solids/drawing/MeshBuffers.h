// SPDX-License-Identifier: MIT
#pragma once

#include "platform/OpenGL.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace orvane
{

struct BufferFunctions;

/// The vertices and triangles of one drawing: in buffers of the OpenGL context, or in the program's
/// memory when the context has no buffers.
///
/// Each function, the destructor too, needs the context that was current at the first call.
class MeshBuffers
{
public:
    /// \param functions null for arrays in the program's memory
    explicit MeshBuffers(std::shared_ptr<const BufferFunctions> functions);
    ~MeshBuffers();
    MeshBuffers(const MeshBuffers&) = delete;
    MeshBuffers& operator=(const MeshBuffers&) = delete;

    /// The floats of a vertex: u and v when it is textured, then the normal, then the position.
    static constexpr std::size_t FloatsPerVertex(bool isTextured) { return isTextured ? 8 : 6; }

    /// \param numbers of the vertices
    /// \param indices of vertices, three for each triangle
    void Set(const std::vector<float>& numbers, bool isTextured,
             const std::vector<std::uint32_t>& indices);
    void Free();
    std::size_t Bytes() const { return bytes_; }

    /// As long as it lives, OpenGL reads the vertices of these buffers. Afterwards its arrays are
    /// as they were before.
    class Binding
    {
    public:
        explicit Binding(const MeshBuffers& buffers);
        ~Binding();
        Binding(const Binding&) = delete;
        Binding& operator=(const Binding&) = delete;

        void DrawTriangles(std::size_t firstIndex, std::size_t indexCount) const;
        /// Like the function above. The indices are \p firstVertex to \p lastVertex, which some
        /// renderers draw faster when they know it.
        void DrawTriangles(std::size_t firstIndex, std::size_t indexCount, std::size_t firstVertex,
                           std::size_t lastVertex) const;

    private:
        const MeshBuffers& buffers_;
        GLint previousArrays_ = 0;
    };

private:
    /// What OpenGL takes for the place of an index.
    const void* AddressOf(std::size_t index) const;

    std::shared_ptr<const BufferFunctions> functions_;
    GLuint arrays_ = 0;       ///< a vertex array object; 0 when there are no vertices
    GLuint buffers_[2] = {};  ///< of vertices and of indices
    bool isTextured_ = false;
    bool hasShortIndices_ = false;  ///< of 16 bits, otherwise of 32
    std::size_t bytes_ = 0;
    std::vector<float> vertices_;     ///< empty when they are in a buffer
    std::vector<std::byte> indices_;  ///< empty when they are in a buffer
};

}  // namespace orvane
