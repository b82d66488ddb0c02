// SPDX-License-Identifier: MIT
#include "platform/posix/Rendering.h"

#include "platform/OpenGL.h"
#include "platform/Rendering.h"
#include "platform/posix/BitmapPixels.h"
#include "platform/posix/EglSystem.h"
#include "platform/posix/Errors.h"
#include "platform/posix/PixelFormats.h"

#include <mutex>
#include <thread>
#include <utility>

namespace
{

using posix::Bitmap;
using posix::DeviceContext;
using posix::EglSystem;
using posix::Resolve;

// An OpenGL context and the surface that it draws on, which has the size of the bitmap that it drew
// into last.
struct RenderingContext final : posix::HandleObject
{
    explicit RenderingContext(const EglSystem& eglSystem, int format)
        : egl(eglSystem),
          pixelFormat(format),
          config(posix::HasStencil(format) ? eglSystem.stencil : eglSystem.plain)
    {}
    ~RenderingContext() override
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

    bool CreateContext(EGLContext shared);
    bool FitSurface(const Bitmap& bitmap);

    const EglSystem& egl;
    const int pixelFormat;
    const EGLConfig config;
    EGLContext context = EGL_NO_CONTEXT;
    EGLSurface surface = EGL_NO_SURFACE;
    int width = 0;
    int height = 0;
    std::thread::id owner;    // the thread that it is current on
    bool wasCurrent = false;  // ever
    GLenum buffer = GL_BACK;  // the surface's colour buffer
    // What the surface's pixels are a copy of.
    std::weak_ptr<Bitmap> copied;
    std::uint64_t copiedHash = 0;
};

// Guards the owners.
std::mutex ownerLock;

bool RenderingContext::CreateContext(EGLContext shared)
{
    const EGLContext created = posix::CreateEglContext(egl.display, config, shared);
    if (created == EGL_NO_CONTEXT)
    {
        posix::SetError(ERROR_NO_RENDERING, posix::EglError("eglCreateContext"));
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
        posix::SetError(ERROR_NO_RENDERING, size + "OpenGL draws at most " +
                                                std::to_string(egl.maximumWidth) + " x " +
                                                std::to_string(egl.maximumHeight));
        return false;
    }
    const EGLint attributes[] = {EGL_WIDTH, bitmap.width, EGL_HEIGHT, bitmap.height, EGL_NONE};
    const EGLSurface created = eglCreatePbufferSurface(egl.display, config, attributes);
    if (created == EGL_NO_SURFACE)
    {
        posix::SetError(ERROR_NO_RENDERING, size + posix::EglError("eglCreatePbufferSurface"));
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

// Set when the thread's Current is gone. It has no destructor and can be asked even then.
thread_local bool isThreadEnding = false;

// What is current on a thread.
struct Current
{
    ~Current()
    {
        Release();
        isThreadEnding = true;
    }

    // Copies OpenGL's pixels into the bits.
    void Flush()
    {
        if (context == nullptr)
        {
            return;
        }
        if (eglGetCurrentContext() == context->context)
        {
            posix::ReadBits(*bitmap, context->buffer);
            return;
        }
        // Somebody else has made another context current since.
        const posix::KeptCurrent kept(context->egl.display);
        if (eglMakeCurrent(context->egl.display, context->surface, context->surface,
                           context->context))
        {
            posix::ReadBits(*bitmap, context->buffer);
        }
    }

    void Release()
    {
        if (context == nullptr)
        {
            return;
        }
        Flush();
        context->copied = bitmap;
        context->copiedHash = posix::HashOfBits(*bitmap);
        // Somebody else's context stays.
        if (eglGetCurrentContext() == context->context)
        {
            eglMakeCurrent(context->egl.display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        }
        Forget();
    }

    void Forget()
    {
        const std::lock_guard guard(ownerLock);
        context->owner = {};
        context = nullptr;
        bitmap = nullptr;
        handle = nullptr;
        dc = nullptr;
    }

    std::shared_ptr<RenderingContext> context;
    std::shared_ptr<Bitmap> bitmap;  // what it draws into
    HGLRC handle = nullptr;
    HDC dc = nullptr;
};

// Null while the thread ends: there is nothing current any more.
Current* ThisThread()
{
    if (isThreadEnding)
    {
        return nullptr;
    }
    thread_local Current current;
    return &current;
}

// The bitmap that a context can draw into through this device context, else null.
std::shared_ptr<Bitmap> TargetOf(const DeviceContext& dc)
{
    std::shared_ptr<Bitmap> bitmap = Resolve<Bitmap>(dc.bitmap);
    if (bitmap == nullptr || bitmap->bitCount < 4 || dc.pixelFormat == 0)
    {
        SetLastError(ERROR_INVALID_PIXEL_FORMAT);
        return nullptr;
    }
    return bitmap;
}

template <typename Object>
std::shared_ptr<Object> Checked(const void* handle)
{
    std::shared_ptr<Object> object = Resolve<Object>(handle);
    if (object == nullptr)
    {
        SetLastError(ERROR_INVALID_HANDLE);
    }
    return object;
}

// Whether this thread may have the context, which is its own then.
bool TakeOwnership(RenderingContext& context)
{
    const std::lock_guard guard(ownerLock);
    const std::thread::id self = std::this_thread::get_id();
    if (context.owner != std::thread::id() && context.owner != self)
    {
        SetLastError(ERROR_BUSY);
        return false;
    }
    context.owner = self;
    return true;
}

}  // namespace

namespace posix
{

void FlushRendering()
{
    if (Current* const current = ThisThread())
    {
        current->Flush();
    }
}

void EndRenderingInto(HDC dc)
{
    Current* const current = ThisThread();
    if (current != nullptr && current->context != nullptr && current->dc == dc)
    {
        current->Release();
    }
}

void FollowSelection(HDC dc)
{
    Current* const current = ThisThread();
    if (current != nullptr && current->context != nullptr && current->dc == dc &&
        !wglMakeCurrent(dc, current->handle))
    {
        current->Release();
    }
}

}  // namespace posix

HGLRC wglCreateContext(HDC handle)
{
    const std::shared_ptr<DeviceContext> dc = Checked<DeviceContext>(handle);
    const std::shared_ptr<Bitmap> bitmap = dc == nullptr ? nullptr : TargetOf(*dc);
    if (bitmap == nullptr)
    {
        return nullptr;
    }
    std::string reason;
    const EglSystem* const egl = posix::FindEgl(&reason);
    if (egl == nullptr)
    {
        posix::SetError(ERROR_NO_RENDERING, "no OpenGL: " + reason);
        return nullptr;
    }
    const auto context = std::make_shared<RenderingContext>(*egl, dc->pixelFormat);
    if (!context->CreateContext(EGL_NO_CONTEXT) || !context->FitSurface(*bitmap))
    {
        return nullptr;
    }
    return static_cast<HGLRC>(posix::AddHandle(context));
}

BOOL wglDeleteContext(HGLRC handle)
{
    const std::shared_ptr<RenderingContext> context = Checked<RenderingContext>(handle);
    if (context == nullptr || !TakeOwnership(*context))
    {
        return FALSE;
    }
    Current* const current = ThisThread();
    if (current != nullptr && current->context == context)
    {
        current->Release();
    }
    return posix::RemoveHandle(handle) != nullptr;
}

BOOL wglMakeCurrent(HDC dcHandle, HGLRC handle)
{
    Current* const current = ThisThread();
    if (handle == nullptr)
    {
        if (current != nullptr)
        {
            current->Release();
        }
        return TRUE;
    }
    const std::shared_ptr<RenderingContext> context = Checked<RenderingContext>(handle);
    const std::shared_ptr<DeviceContext> dc = Checked<DeviceContext>(dcHandle);
    if (current == nullptr || context == nullptr || dc == nullptr)
    {
        return FALSE;
    }
    const std::shared_ptr<Bitmap> bitmap = TargetOf(*dc);
    if (bitmap == nullptr)
    {
        return FALSE;
    }
    if (dc->pixelFormat != context->pixelFormat)
    {
        SetLastError(ERROR_INVALID_PIXEL_FORMAT);
        return FALSE;
    }
    if (current->handle == handle && current->dc == dcHandle && current->bitmap == bitmap &&
        eglGetCurrentContext() == context->context)
    {
        return TRUE;
    }
    if (!TakeOwnership(*context))
    {
        return FALSE;
    }

    current->Release();
    eglBindAPI(EGL_OPENGL_API);  // of this thread
    TakeOwnership(*context);     // given up by the release when it was current itself
    current->context = context;
    if (!context->FitSurface(*bitmap))
    {
        current->Forget();
        return FALSE;
    }
    if (!eglMakeCurrent(context->egl.display, context->surface, context->surface, context->context))
    {
        posix::SetError(ERROR_NO_RENDERING, posix::EglError("eglMakeCurrent"));
        current->Forget();
        return FALSE;
    }
    current->bitmap = bitmap;
    current->handle = handle;
    current->dc = dcHandle;
    if (!context->wasCurrent)
    {
        context->wasCurrent = true;
        GLint buffer = GL_BACK;
        glGetIntegerv(GL_DRAW_BUFFER, &buffer);
        context->buffer = static_cast<GLenum>(buffer);
    }
    if (context->copied.lock() != bitmap || context->copiedHash != posix::HashOfBits(*bitmap))
    {
        posix::DrawBits(*bitmap, context->buffer);
    }
    return TRUE;
}

HGLRC wglGetCurrentContext()
{
    const Current* const current = ThisThread();
    return current == nullptr ? nullptr : current->handle;
}

HDC wglGetCurrentDC()
{
    const Current* const current = ThisThread();
    return current == nullptr ? nullptr : current->dc;
}

BOOL wglShareLists(HGLRC handle, HGLRC otherHandle)
{
    const std::shared_ptr<RenderingContext> context = Checked<RenderingContext>(handle);
    const std::shared_ptr<RenderingContext> other = Checked<RenderingContext>(otherHandle);
    if (context == nullptr || other == nullptr)
    {
        return FALSE;
    }
    // Sharing is settled when a context is made. One that was never current has nothing to lose.
    if (other->wasCurrent || context == other)
    {
        SetLastError(ERROR_BUSY);
        return FALSE;
    }
    return other->CreateContext(context->context);
}
