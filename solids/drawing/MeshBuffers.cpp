// SPDX-License-Identifier: MIT
#include "solids/drawing/MeshBuffers.h"

#include "solids/drawing/OpenGLFunctions.h"

#include <cstring>
#include <utility>

namespace orvane
{

namespace
{
// Names that OpenGL 1.1 does not have.
constexpr GLenum clientActiveTexture = 0x84E1;
constexpr GLenum firstTextureUnit = 0x84C0;

/// The format of MeshBuffers' vertices, as glInterleavedArrays names it.
GLenum FormatOf(bool isTextured)
{
    return isTextured ? GL_T2F_N3F_V3F : GL_N3F_V3F;
}
}  // namespace

MeshBuffers::MeshBuffers(std::shared_ptr<const BufferFunctions> functions)
    : functions_(std::move(functions))
{}

MeshBuffers::~MeshBuffers()
{
    Free();
}

void MeshBuffers::Free()
{
    vertices_ = {};
    indices_ = {};
    bytes_ = 0;
    if (arrays_ != 0)
    {
        functions_->deleteVertexArrays(1, &arrays_);
        functions_->deleteBuffers(2, buffers_);
        arrays_ = 0;
    }
}

void MeshBuffers::Set(const std::vector<float>& numbers, bool isTextured,
                      const std::vector<std::uint32_t>& indices)
{
    isTextured_ = isTextured;
    hasShortIndices_ = numbers.size() / FloatsPerVertex(isTextured) <= 1u << 16;
    std::vector<std::byte> indexBytes(indices.size() * (hasShortIndices_ ? 2 : 4));
    if (hasShortIndices_)
    {
        const std::vector<std::uint16_t> shortIndices(indices.begin(), indices.end());
        std::memcpy(indexBytes.data(), shortIndices.data(), indexBytes.size());
    }
    else
    {
        std::memcpy(indexBytes.data(), indices.data(), indexBytes.size());
    }
    const std::size_t vertexBytes = numbers.size() * sizeof(float);
    bytes_ = vertexBytes + indexBytes.size();
    if (functions_ == nullptr)
    {
        vertices_ = numbers;
        indices_ = std::move(indexBytes);
        return;
    }

    if (arrays_ == 0)
    {
        functions_->genVertexArrays(1, &arrays_);
        functions_->genBuffers(2, buffers_);
    }
    GLint previousBuffer = 0;
    GLint previousUnit = 0;
    glGetIntegerv(arrayBufferBinding, &previousBuffer);
    glGetIntegerv(clientActiveTexture, &previousUnit);
    {
        const Binding binding(*this);
        functions_->setClientActiveTexture(firstTextureUnit);
        functions_->bindBuffer(arrayBuffer, buffers_[0]);
        functions_->bufferData(arrayBuffer, static_cast<std::ptrdiff_t>(vertexBytes),
                               numbers.data(), staticDraw);
        glInterleavedArrays(FormatOf(isTextured), 0, nullptr);
        // The vertex array object keeps this buffer bound.
        functions_->bindBuffer(elementArrayBuffer, buffers_[1]);
        functions_->bufferData(elementArrayBuffer, static_cast<std::ptrdiff_t>(indexBytes.size()),
                               indexBytes.data(), staticDraw);
    }
    functions_->setClientActiveTexture(static_cast<GLenum>(previousUnit));
    functions_->bindBuffer(arrayBuffer, static_cast<GLuint>(previousBuffer));
}

const void* MeshBuffers::AddressOf(std::size_t index) const
{
    const auto start = reinterpret_cast<std::uintptr_t>(indices_.data());
    // Without memory of its own, an offset into OpenGL's buffer.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<const void*>(start + index * (hasShortIndices_ ? 2 : 4));
}

MeshBuffers::Binding::Binding(const MeshBuffers& buffers) : buffers_(buffers)
{
    if (buffers_.functions_ == nullptr)
    {
        glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
        glInterleavedArrays(FormatOf(buffers_.isTextured_), 0, buffers_.vertices_.data());
        return;
    }
    glGetIntegerv(vertexArrayBinding, &previousArrays_);
    buffers_.functions_->bindVertexArray(buffers_.arrays_);
}

MeshBuffers::Binding::~Binding()
{
    if (buffers_.functions_ == nullptr)
    {
        glPopClientAttrib();
        return;
    }
    buffers_.functions_->bindVertexArray(static_cast<GLuint>(previousArrays_));
}

void MeshBuffers::Binding::DrawTriangles(std::size_t firstIndex, std::size_t indexCount) const
{
    glDrawElements(GL_TRIANGLES, static_cast<GLsizei>(indexCount),
                   buffers_.hasShortIndices_ ? GL_UNSIGNED_SHORT : GL_UNSIGNED_INT,
                   buffers_.AddressOf(firstIndex));
}

void MeshBuffers::Binding::DrawTriangles(std::size_t firstIndex, std::size_t indexCount,
                                         std::size_t firstVertex, std::size_t lastVertex) const
{
    if (buffers_.functions_ == nullptr)
    {
        DrawTriangles(firstIndex, indexCount);
        return;
    }
    buffers_.functions_->drawRangeElements(
        GL_TRIANGLES, static_cast<GLuint>(firstVertex), static_cast<GLuint>(lastVertex),
        static_cast<GLsizei>(indexCount),
        buffers_.hasShortIndices_ ? GL_UNSIGNED_SHORT : GL_UNSIGNED_INT,
        buffers_.AddressOf(firstIndex));
}

}  // namespace orvane
