// SPDX-License-Identifier: MIT
#include "platform/posix/drawing/RenderingContext.h"

#include "platform/Errors.h"
#include "platform/posix/ErrorText.h"
#include "platform/posix/drawing/BitmapPixels.h"
#include "platform/posix/drawing/PixelFormats.h"
#include "platform/posix/drawing/RenderedPixels.h"

#include <mutex>
#include <new>
#include <utility>

namespace posix
{
namespace
{

/// Guards the owners of all contexts.
std::mutex ownerLock;

/// Set when the thread's CurrentContext has been destroyed. This variable has no destructor, so it
/// can be read even after that.
thread_local bool isThreadEnding = false;

}  // namespace

RenderingContext::RenderingContext(const EglSystem& eglSystem, int format,
                                   ContextProfile contextProfile)
    : egl(eglSystem),
      pixelFormat(format),
      config(HasStencil(format) ? eglSystem.stencil : eglSystem.plain),
      profile(contextProfile)
{}

RenderingContext::~RenderingContext()
{
    if (surface != EGL_NO_SURFACE)
    {
        eglDestroySurface(egl.display, surface);
    }
    if (context != EGL_NO_CONTEXT)
    {
        eglDestroyContext(egl.display, context);
    }
}

bool RenderingContext::CreateContext(EGLContext shared)
{
    const EGLContext created = CreateEglContext(egl.display, config, shared, profile);
    if (created == EGL_NO_CONTEXT)
    {
        SetError(ERROR_NO_RENDERING, EglError("eglCreateContext"));
        return false;
    }
    if (context != EGL_NO_CONTEXT)
    {
        eglDestroyContext(egl.display, context);
    }
    context = created;
    return true;
}

bool RenderingContext::FitSurface(const Bitmap& bitmap)
{
    if (surface != EGL_NO_SURFACE && width == bitmap.width && height == bitmap.height)
    {
        return true;
    }
    const std::string size =
        std::to_string(bitmap.width) + " x " + std::to_string(bitmap.height) + " pixels: ";
    if (bitmap.width > egl.maximumWidth || bitmap.height > egl.maximumHeight)
    {
        SetError(ERROR_NO_RENDERING, size + "OpenGL draws at most " +
                                         std::to_string(egl.maximumWidth) + " x " +
                                         std::to_string(egl.maximumHeight));
        return false;
    }
    const EGLint attributes[] = {EGL_WIDTH, bitmap.width, EGL_HEIGHT, bitmap.height, EGL_NONE};
    const EGLSurface created = eglCreatePbufferSurface(egl.display, config, attributes);
    if (created == EGL_NO_SURFACE)
    {
        SetError(ERROR_NO_RENDERING, size + EglError("eglCreatePbufferSurface"));
        return false;
    }
    if (surface != EGL_NO_SURFACE)
    {
        eglDestroySurface(egl.display, surface);
    }
    surface = created;
    width = bitmap.width;
    height = bitmap.height;
    copied.reset();
    return true;
}

bool RenderingContext::TakeOwnership()
{
    const std::lock_guard guard(ownerLock);
    const std::thread::id self = std::this_thread::get_id();
    if (owner_ != std::thread::id() && owner_ != self)
    {
        SetLastError(ERROR_BUSY);
        return false;
    }
    owner_ = self;
    return true;
}

void RenderingContext::GiveUpOwnership()
{
    const std::lock_guard guard(ownerLock);
    owner_ = {};
}

CurrentContext::~CurrentContext()
{
    ForgetAdopted();
    Release();
    isThreadEnding = true;
}

void CurrentContext::Flush() const
{
    if (context != nullptr)
    {
        CallInContext([this] { ReadBits(*bitmap, context->buffer, context->profile); });
    }
}

bool CurrentContext::Release()
{
    if (context == nullptr)
    {
        ReleaseAdopted();
        return true;
    }
    bool isCopied = true;
    try
    {
        Flush();
        context->copied = bitmap;
        context->copiedHash = HashOfBits(*bitmap);
    }
    catch (const std::bad_alloc&)
    {
        // Destructors release contexts, so this is no exception for the caller.
        isCopied = false;
        context->copied.reset();
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    }
    // A context that the host has made current since stays current.
    if (eglGetCurrentContext() == context->context)
    {
        eglMakeCurrent(context->egl.display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
    }
    Forget();
    return isCopied;
}

void CurrentContext::Forget()
{
    context->GiveUpOwnership();
    context = nullptr;
    bitmap = nullptr;
    handle = nullptr;
    dc = nullptr;
}

void CurrentContext::ReleaseAdopted()
{
    if (isAdopted && adopted->context->IsCurrent())
    {
        adopted->context->MakeNotCurrent();
    }
    isAdopted = false;
}

void CurrentContext::ForgetAdopted()
{
    isAdopted = false;
    if (const std::shared_ptr<AdoptedContext> forgotten = std::exchange(adopted, nullptr))
    {
        DeleteDC(forgotten->dc);
        RemoveHandle(forgotten->handle);
    }
}

CurrentContext* CurrentOfThread()
{
    if (isThreadEnding)
    {
        return nullptr;
    }
    thread_local CurrentContext current;
    return &current;
}

}  // namespace posix
