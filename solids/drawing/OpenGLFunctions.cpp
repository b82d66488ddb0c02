// SPDX-License-Identifier: MIT
#include "solids/drawing/OpenGLFunctions.h"

#include "platform/Rendering.h"

#include <charconv>
#include <cstring>
#include <string_view>

namespace orvane
{

namespace
{
/// Whether the current context has buffers and vertex array objects.
bool HasBuffers()
{
    const double version = CurrentOpenGLVersion();
    if (version >= 3.0)
    {
        return true;
    }
    const auto* const extensions = reinterpret_cast<const char*>(glGetString(GL_EXTENSIONS));
    return version >= 1.5 && extensions != nullptr &&
           std::string_view(extensions).find("GL_ARB_vertex_array_object") !=
               std::string_view::npos;
}
}  // namespace

double CurrentOpenGLVersion()
{
    const auto* const text = reinterpret_cast<const char*>(glGetString(GL_VERSION));
    double version = 0;
    if (text != nullptr)
    {
        // std::strtod would read the point as the program's locale says.
        std::from_chars(text, text + std::strlen(text), version);
    }
    return version;
}

bool FindOpenGLFunction(void*& function, const char* name)
{
    function = GetOpenGLFunction(name);
    return function != nullptr;
}

std::shared_ptr<const BufferFunctions> FindBufferFunctions()
{
    if (!HasBuffers())
    {
        return nullptr;
    }
    auto found = std::make_shared<BufferFunctions>();
    FunctionFinder finder;
    finder.Find(found->genBuffers, "glGenBuffers");
    finder.Find(found->deleteBuffers, "glDeleteBuffers");
    finder.Find(found->bindBuffer, "glBindBuffer");
    finder.Find(found->bufferData, "glBufferData");
    finder.Find(found->genVertexArrays, "glGenVertexArrays");
    finder.Find(found->deleteVertexArrays, "glDeleteVertexArrays");
    finder.Find(found->bindVertexArray, "glBindVertexArray");
    finder.Find(found->setClientActiveTexture, "glClientActiveTexture");
    finder.Find(found->drawRangeElements, "glDrawRangeElements");
    return finder.HasAll() ? found : nullptr;
}

}  // namespace orvane
