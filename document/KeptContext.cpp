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
        // The size is only for drawing bitmaps, which does not happen here.
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
    // Contexts of the core profile, and of OpenGL ES, do not know the matrix stacks.
    while (glGetError() != GL_NO_ERROR)
    {}
    GLint depth = 0;
    glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &depth);
    if (glGetError() != GL_NO_ERROR)
    {
        throw Error(
            "OpenGL",
            "a context of version \"" + std::string(reinterpret_cast<const char*>(version)) + "\"",
            "a context of the compatibility profile, which draws letters");
    }
}

}  // namespace orvane
