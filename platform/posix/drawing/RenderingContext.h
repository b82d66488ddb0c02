// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The OpenGL contexts of this backend, and the context that is current on each thread.

#include "platform/OpenGL.h"
#include "platform/posix/drawing/BitmapObject.h"
#include "platform/posix/drawing/CurrentRendering.h"
#include "platform/posix/drawing/EglSystem.h"
#include "platform/posix/drawing/ForeignContext.h"

#include <cstdint>
#include <memory>
#include <thread>

namespace posix
{

/// A context that wglCreateContext made, and the surface that it draws on. The surface has the size
/// of the bitmap that the context drew into last.
struct RenderingContext final : HandleObject
{
    RenderingContext(const EglSystem& eglSystem, int format, ContextProfile contextProfile);
    ~RenderingContext() override;

    /// Makes the OpenGL context, which replaces an earlier one. \p shared may be EGL_NO_CONTEXT;
    /// otherwise the new context shares lists and textures with it. False, with the error set, when
    /// OpenGL refuses.
    bool CreateContext(EGLContext shared);

    /// Makes a surface of the bitmap's size, unless the surface has that size already. False, with
    /// the error set, when OpenGL refuses.
    bool FitSurface(const Bitmap& bitmap);

    /// Makes this thread the owner. False, with ERROR_BUSY set, when the context is current on
    /// another thread.
    bool TakeOwnership();
    void GiveUpOwnership();

    const EglSystem& egl;
    const int pixelFormat;
    const EGLConfig config;
    const ContextProfile profile;
    EGLContext context = EGL_NO_CONTEXT;
    EGLSurface surface = EGL_NO_SURFACE;
    int width = 0;  ///< of the surface, pixels
    int height = 0;
    bool wasCurrent = false;       ///< whether it has ever been current
    GLenum buffer = GL_BACK;       ///< the surface's colour buffer
    std::weak_ptr<Bitmap> copied;  ///< the bitmap whose bits equal the surface's pixels, if any
    std::uint64_t copiedHash = 0;  ///< HashOfBits of that bitmap when it was copied

private:
    std::thread::id owner_;  ///< the thread that it is current on; guarded by a mutex
};

/// A context that a host made and that AdoptCurrentContext has taken in.
struct AdoptedContext final : HandleObject
{
    std::unique_ptr<ForeignContext> context;  ///< as it was when the host adopted it last
    SurfaceSize size = {0, 0};
    HDC dc = nullptr;        ///< made for this context and deleted with the adoption
    HGLRC handle = nullptr;  ///< removed with the adoption
};

/// The current OpenGL context of one thread: a RenderingContext, an adopted context, or no context.
struct CurrentContext
{
    ~CurrentContext();

    /// Calls a function while \c context is OpenGL's current context. \c context must not be null.
    template <typename Function>
    void CallInContext(Function function) const
    {
        if (eglGetCurrentContext() == context->context)
        {
            function();
            return;
        }
        // The host has made another context current since, which becomes current again afterwards.
        const KeptCurrent kept(context->egl.display);
        if (eglMakeCurrent(context->egl.display, context->surface, context->surface,
                           context->context))
        {
            function();
        }
    }

    /// Copies OpenGL's pixels into the bits of \c bitmap, unless \c context is null.
    void Flush() const;

    /// Flushes, and makes the current context not current. Returns false, with the reason as the
    /// last error, when there was no memory to copy the pixels; the context is then not current
    /// either.
    bool Release();

    /// Drops \c context without a flush.
    void Forget();

    /// Makes the adopted context not current. It stays adopted.
    void ReleaseAdopted();

    /// Ends the adoption. The host's context stays current.
    void ForgetAdopted();

    std::shared_ptr<RenderingContext> context;  ///< null unless a RenderingContext is current
    bool isAdopted = false;                     ///< whether the adopted context is current
    std::shared_ptr<AdoptedContext> adopted;    ///< also while it is not current; null for none
    std::shared_ptr<Bitmap> bitmap;             ///< the bitmap that \c context draws into
    HGLRC handle = nullptr;                     ///< of \c context
    HDC dc = nullptr;                           ///< the device context that it was made current on
};

/// The CurrentContext of the calling thread. Null while the thread ends, when no context is current
/// any more.
CurrentContext* CurrentOfThread();

}  // namespace posix
