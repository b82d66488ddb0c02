// SPDX-License-Identifier: MIT
#pragma once

#include "platform/OpenGL.h"

#include <cstddef>
#include <memory>
#include <type_traits>

#if !defined(APIENTRY)
#define APIENTRY
#endif

namespace orvane
{

/// The version of the current context, such as 2.1; 0 when there is no desktop OpenGL context.
double CurrentOpenGLVersion();

/// The address of an OpenGL function that is newer than OpenGL 1.1 is stored in \p function.
/// Returns false when there is none.
bool FindOpenGLFunction(void*& function, const char* name);

/// Finds functions one after another, and notes whether one of them is missing.
class FunctionFinder
{
public:
    template <typename Function>
    void Find(Function*& function, const char* name)
    {
        void* address = nullptr;
        hasAll_ = FindOpenGLFunction(address, name) && hasAll_;
        function = reinterpret_cast<Function*>(address);
    }
    bool HasAll() const { return hasAll_; }

private:
    bool hasAll_ = true;
};

/// The functions of a context for buffers.
struct BufferFunctions
{
    void(APIENTRY* genBuffers)(GLsizei, GLuint*);
    void(APIENTRY* deleteBuffers)(GLsizei, const GLuint*);
    void(APIENTRY* bindBuffer)(GLenum, GLuint);
    void(APIENTRY* bufferData)(GLenum, std::ptrdiff_t, const void*, GLenum);
    void(APIENTRY* genVertexArrays)(GLsizei, GLuint*);
    void(APIENTRY* deleteVertexArrays)(GLsizei, const GLuint*);
    void(APIENTRY* bindVertexArray)(GLuint);
    void(APIENTRY* setClientActiveTexture)(GLenum);
    void(APIENTRY* drawRangeElements)(GLenum, GLuint, GLuint, GLsizei, GLenum, const void*);
};

/// The functions of the current context for buffers. Null when the context has no buffers or no
/// vertex array objects: they came with OpenGL 3.0, or with an extension of OpenGL 1.5.
std::shared_ptr<const BufferFunctions> FindBufferFunctions();

/// What OpenGL takes for a place in its buffer, in bytes.
inline const void* PlaceInBuffer(std::size_t place)
{
    return reinterpret_cast<const void*>(place);  // NOLINT(performance-no-int-to-ptr)
}

// Names that OpenGL 1.1 does not have.
constexpr GLenum arrayBuffer = 0x8892;
constexpr GLenum elementArrayBuffer = 0x8893;
constexpr GLenum arrayBufferBinding = 0x8894;
constexpr GLenum staticDraw = 0x88E4;
constexpr GLenum vertexArrayBinding = 0x85B5;

}  // namespace orvane
