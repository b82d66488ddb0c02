// SPDX-License-Identifier: MIT
// For glProvokingVertex, which is younger than the header's own functions.
#define GL_GLEXT_PROTOTYPES

#include "platform/Rendering.h"

#include "platform/OpenGL.h"
#include "platform/posix/Errors.h"
#include "platform/posix/drawing/BitmapPixels.h"
#include "platform/posix/drawing/CurrentRendering.h"
#include "platform/posix/drawing/EglSystem.h"
#include "platform/posix/drawing/PixelFormats.h"
#include "platform/posix/drawing/RenderedPixels.h"

#include <functional>
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

// A context that a host made, and what it draws on.
struct AdoptedContext final : posix::HandleObject
{
    bool IsCurrent() const { return eglGetCurrentContext() == context; }

    EGLDisplay display = EGL_NO_DISPLAY;
    EGLSurface draw = EGL_NO_SURFACE;
    EGLSurface read = EGL_NO_SURFACE;
    EGLContext context = EGL_NO_CONTEXT;
    posix::SurfaceSize size = {0, 0};
    HDC dc = nullptr;
    HGLRC handle = nullptr;
};

// Set when the thread's Current is gone. It has no destructor and can be asked even then.
thread_local bool isThreadEnding = false;

// What is current on a thread.
struct Current
{
    ~Current()
    {
        ForgetAdopted();
        Release();
        isThreadEnding = true;
    }

    // Calls a function while this context is OpenGL's.
    template <typename Function>
    void Inside(Function function) const
    {
        if (eglGetCurrentContext() == context->context)
        {
            function();
            return;
        }
        // Somebody else has made another context current since.
        const posix::KeptCurrent kept(context->egl.display);
        if (eglMakeCurrent(context->egl.display, context->surface, context->surface,
                           context->context))
        {
            function();
        }
    }

    // Copies OpenGL's pixels into the bits.
    void Flush() const
    {
        if (context != nullptr)
        {
            Inside([this] { posix::ReadBits(*bitmap, context->buffer); });
        }
    }

    void Release()
    {
        if (context == nullptr)
        {
            LetAdoptedGo();
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

    // The host's context is its own again, but no longer current.
    void LetAdoptedGo()
    {
        if (isAdopted && adopted->IsCurrent())
        {
            eglMakeCurrent(adopted->display, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
        }
        isAdopted = false;
    }

    // The host's context goes on as it is.
    void ForgetAdopted()
    {
        isAdopted = false;
        if (const std::shared_ptr<AdoptedContext> forgotten = std::exchange(adopted, nullptr))
        {
            DeleteDC(forgotten->dc);
            posix::RemoveHandle(forgotten->handle);
        }
    }

    // At most one of the two is current.
    std::shared_ptr<RenderingContext> context;
    bool isAdopted = false;
    std::shared_ptr<AdoptedContext> adopted;  // as long as it is adopted, current or not
    std::shared_ptr<Bitmap> bitmap;           // what the context draws into
    HGLRC handle = nullptr;                   // of the context
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

// Takes up the adopted context again, on what it drew on before.
BOOL MakeAdoptedCurrent(Current& current, HDC dc)
{
    AdoptedContext& adopted = *current.adopted;
    if (dc != adopted.dc)
    {
        SetLastError(ERROR_INVALID_PIXEL_FORMAT);
        return FALSE;
    }
    if (current.isAdopted && adopted.IsCurrent())
    {
        return TRUE;
    }
    current.Release();
    if (!eglMakeCurrent(adopted.display, adopted.draw, adopted.read, adopted.context))
    {
        posix::SetError(ERROR_NO_RENDERING, posix::EglError("eglMakeCurrent"));
        return FALSE;
    }
    current.isAdopted = true;
    return TRUE;
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

void FlushRenderingOf(const void* bits)
{
    const Current* const current = ThisThread();
    if (current == nullptr || current->context == nullptr)
    {
        return;
    }
    const BYTE* const begin = current->bitmap->bits;
    const BYTE* const end = begin + current->bitmap->Size();
    if (!std::less<>()(bits, static_cast<const void*>(begin)) &&
        std::less<>()(bits, static_cast<const void*>(end)))
    {
        current->Flush();
    }
}

std::optional<SurfaceSize> RenderedSurface(HDC dc, const Bitmap* bitmap)
{
    const Current* const current = ThisThread();
    if (current == nullptr)
    {
        return std::nullopt;
    }
    if (current->isAdopted && current->adopted->dc == dc)
    {
        return current->adopted->size;
    }
    if (current->context != nullptr && current->bitmap.get() == bitmap)
    {
        return SurfaceSize{bitmap->width, bitmap->height};
    }
    return std::nullopt;
}

void DrawRendered(int x, int y, int width, int height, const BYTE* bgra)
{
    const Current* const current = ThisThread();
    if (current == nullptr)
    {
        return;
    }
    if (current->isAdopted)
    {
        DrawPixels(x, y, width, height, bgra, asItIs);
    }
    else if (current->context != nullptr)
    {
        current->Inside([&] { DrawPixels(x, y, width, height, bgra, current->context->buffer); });
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
    if (current != nullptr && current->adopted != nullptr && current->adopted->handle == handle)
    {
        return MakeAdoptedCurrent(*current, dcHandle);
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
    return current == nullptr   ? nullptr
           : current->isAdopted ? current->adopted->handle
                                : current->handle;
}

HDC wglGetCurrentDC()
{
    const Current* const current = ThisThread();
    return current == nullptr ? nullptr : current->isAdopted ? current->adopted->dc : current->dc;
}

HDC AdoptCurrentContext(int width, int height)
{
    Current* const current = ThisThread();
    eglBindAPI(EGL_OPENGL_API);  // of this thread
    const EGLContext context = eglGetCurrentContext();
    if (current == nullptr || context == EGL_NO_CONTEXT || width <= 0 || height <= 0)
    {
        posix::SetError(ERROR_NO_RENDERING, "no OpenGL context is current that could be adopted");
        return nullptr;
    }
    if (current->context != nullptr && current->context->context == context)
    {
        SetLastError(ERROR_BUSY);  // it is one of these contexts already
        return nullptr;
    }
    if (current->adopted == nullptr || current->adopted->context != context)
    {
        ReleaseAdoptedContext();
        const auto adopted = std::make_shared<AdoptedContext>();
        adopted->context = context;
        adopted->dc = CreateCompatibleDC(nullptr);
        adopted->handle = static_cast<HGLRC>(posix::AddHandle(adopted));
        SetPixelFormat(adopted->dc, 1, nullptr);  // 32 bits
        current->adopted = adopted;
    }
    AdoptedContext& adopted = *current->adopted;
    adopted.display = eglGetCurrentDisplay();
    adopted.draw = eglGetCurrentSurface(EGL_DRAW);
    adopted.read = eglGetCurrentSurface(EGL_READ);
    adopted.size = {width, height};
    if (current->context != nullptr)
    {
        current->Release();  // the host's context stays
    }
    current->isAdopted = true;
    return adopted.dc;
}

void ReleaseAdoptedContext()
{
    Current* const current = ThisThread();
    if (current != nullptr)
    {
        current->ForgetAdopted();
    }
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

void CutQuadsAlike()
{
    // The clipper splits them as if the first vertex counted, whatever is set.
    glProvokingVertex(GL_FIRST_VERTEX_CONVENTION);
}
