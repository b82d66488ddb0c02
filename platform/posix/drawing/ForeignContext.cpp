// SPDX-License-Identifier: MIT
#include "platform/posix/drawing/ForeignContext.h"

#include "platform/Errors.h"
#include "platform/posix/ErrorText.h"
#include "platform/posix/drawing/EglSystem.h"

#include <GL/glx.h>

namespace posix
{
namespace
{

class ForeignEglContext final : public ForeignContext
{
public:
    bool IsCurrent() const override { return eglGetCurrentContext() == context_; }

    bool MakeCurrent() const override
    {
        if (!eglMakeCurrent(display_, draw_, read_, context_))
        {
            SetError(ERROR_NO_RENDERING, EglError("eglMakeCurrent"));
            return false;
        }
        return true;
    }

    void MakeNotCurrent() const override
    {
        eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    }

private:
    EGLDisplay display_ = eglGetCurrentDisplay();
    EGLSurface draw_ = eglGetCurrentSurface(EGL_DRAW);
    EGLSurface read_ = eglGetCurrentSurface(EGL_READ);
    EGLContext context_ = eglGetCurrentContext();
};

class ForeignGlxContext final : public ForeignContext
{
public:
    bool IsCurrent() const override { return glXGetCurrentContext() == context_; }

    bool MakeCurrent() const override
    {
        if (!glXMakeContextCurrent(display_, draw_, read_, context_))
        {
            SetError(ERROR_NO_RENDERING, "glXMakeContextCurrent refused the host's context");
            return false;
        }
        return true;
    }

    void MakeNotCurrent() const override { glXMakeContextCurrent(display_, 0, 0, nullptr); }

private:
    Display* display_ = glXGetCurrentDisplay();
    GLXDrawable draw_ = glXGetCurrentDrawable();
    GLXDrawable read_ = glXGetCurrentReadDrawable();
    GLXContext context_ = glXGetCurrentContext();
};

}  // namespace

std::unique_ptr<ForeignContext> CurrentEglContext()
{
    eglBindAPI(EGL_OPENGL_API);  // per thread
    return eglGetCurrentContext() == EGL_NO_CONTEXT ? nullptr
                                                    : std::make_unique<ForeignEglContext>();
}

std::unique_ptr<ForeignContext> CurrentGlxContext()
{
    return glXGetCurrentContext() == nullptr ? nullptr : std::make_unique<ForeignGlxContext>();
}

}  // namespace posix
