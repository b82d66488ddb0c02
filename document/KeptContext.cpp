// SPDX-License-Identifier: MIT
#include "document/KeptContext.h"

#include "orvane/Error.h"
#include "platform/OpenGL.h"

#include <string>

namespace orvane
{

KeptContext::KeptContext() : dc_(wglGetCurrentDC()), context_(wglGetCurrentContext())
{
    if (context_ == nullptr)
    {
        // The size may be wrong here: only the drawing of bitmaps needs it, and nothing draws
        // bitmaps in this context until this object makes the context current again.
        dc_ = AdoptCurrentContext(1, 1);
        context_ = wglGetCurrentContext();
        isAdopted_ = dc_ != nullptr;
    }
}

KeptContext::~KeptContext()
{
    wglMakeCurrent(dc_, context_);
    if (isAdopted_)
    {
        ReleaseAdoptedContext();
    }
}

AdoptedContext::AdoptedContext(int width, int height)
    : isAdopted_(wglGetCurrentContext() == nullptr && AdoptCurrentContext(width, height) != nullptr)
{}

AdoptedContext::~AdoptedContext()
{
    if (isAdopted_)
    {
        ReleaseAdoptedContext();
    }
}

void CheckCurrentContext()
{
    const GLubyte* const version = glGetString(GL_VERSION);
    if (version == nullptr)
    {
        throw Error("OpenGL", "no context is current on this thread");
    }
    // Letters need matrix stacks. A context of the core profile or of OpenGL ES has no matrix
    // stacks, so glMatrixMode fails in it.
    while (glGetError() != GL_NO_ERROR)
    {}
    GLint mode = GL_MODELVIEW;
    glGetIntegerv(GL_MATRIX_MODE, &mode);
    glMatrixMode(GL_MODELVIEW);
    if (glGetError() != GL_NO_ERROR)
    {
        throw Error(
            "OpenGL",
            "a context of version \"" + std::string(reinterpret_cast<const char*>(version)) + "\"",
            "a context of the compatibility profile, which can draw letters");
    }
    glMatrixMode(static_cast<GLenum>(mode));
    GLint program = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    if (program != 0)
    {
        throw Error("OpenGL", "a shader program in use",
                    "no program in use (call glUseProgram(0))");
    }
}

}  // namespace orvane
