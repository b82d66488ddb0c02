// SPDX-License-Identifier: MIT
// For glProvokingVertex, which GL/gl.h does not declare otherwise.
#define GL_GLEXT_PROTOTYPES

#include "platform/Rendering.h"

#include "platform/Errors.h"
#include "platform/posix/ErrorText.h"
#include "platform/posix/drawing/BitmapPixels.h"
#include "platform/posix/drawing/RenderedPixels.h"
#include "platform/posix/drawing/RenderingContext.h"

#include <utility>

namespace
{

using posix::AdoptedContext;
using posix::Bitmap;
using posix::ContextProfile;
using posix::CurrentContext;
using posix::CurrentOfThread;
using posix::DeviceContext;
using posix::EglSystem;
using posix::ForeignContext;
using posix::RenderingContext;
using posix::Resolve;
using posix::ResolveOrRefuse;

/// The bitmap that a context can draw into through this device context. Null, with the error set,
/// when there is none.
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

/// Makes the adopted context current again, on the surfaces that it drew on before.
BOOL MakeAdoptedCurrent(CurrentContext& current, HDC dc)
{
    AdoptedContext& adopted = *current.adopted;
    if (dc != adopted.dc)
    {
        SetLastError(ERROR_INVALID_PIXEL_FORMAT);
        return FALSE;
    }
    if (current.isAdopted && adopted.context->IsCurrent())
    {
        return TRUE;
    }
    current.Release();
    if (!adopted.context->MakeCurrent())
    {
        return FALSE;
    }
    current.isAdopted = true;
    return TRUE;
}

HGLRC CreateContext(HDC handle, ContextProfile profile)
{
    const std::shared_ptr<DeviceContext> dc = ResolveOrRefuse<DeviceContext>(handle);
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
    const auto context = std::make_shared<RenderingContext>(*egl, dc->pixelFormat, profile);
    if (!context->CreateContext(EGL_NO_CONTEXT) || !context->FitSurface(*bitmap))
    {
        return nullptr;
    }
    return static_cast<HGLRC>(posix::AddHandle(context));
}

}  // namespace

HGLRC wglCreateContext(HDC dc)
{
    return CreateContext(dc, ContextProfile::FixedFunctions);
}

HGLRC CreateCoreContext(HDC dc)
{
    return CreateContext(dc, ContextProfile::Core);
}

BOOL wglDeleteContext(HGLRC handle)
{
    const std::shared_ptr<RenderingContext> context = ResolveOrRefuse<RenderingContext>(handle);
    if (context == nullptr || !context->TakeOwnership())
    {
        return FALSE;
    }
    CurrentContext* const current = CurrentOfThread();
    if (current != nullptr && current->context == context)
    {
        current->Release();
    }
    return posix::RemoveHandle(handle) != nullptr;
}

BOOL wglMakeCurrent(HDC dcHandle, HGLRC handle)
{
    CurrentContext* const current = CurrentOfThread();
    if (handle == nullptr)
    {
        return current == nullptr || current->Release();
    }
    if (current != nullptr && current->adopted != nullptr && current->adopted->handle == handle)
    {
        return MakeAdoptedCurrent(*current, dcHandle);
    }
    const std::shared_ptr<RenderingContext> context = ResolveOrRefuse<RenderingContext>(handle);
    const std::shared_ptr<DeviceContext> dc = ResolveOrRefuse<DeviceContext>(dcHandle);
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
    if (!context->TakeOwnership())
    {
        return FALSE;
    }

    if (!current->Release())
    {
        context->GiveUpOwnership();
        return FALSE;
    }
    eglBindAPI(EGL_OPENGL_API);  // per thread
    context->TakeOwnership();    // Release gives it up if the context was current here
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
        posix::DrawBits(*bitmap, context->buffer, context->profile);
    }
    return TRUE;
}

HGLRC wglGetCurrentContext()
{
    const CurrentContext* const current = CurrentOfThread();
    return current == nullptr   ? nullptr
           : current->isAdopted ? current->adopted->handle
                                : current->handle;
}

HDC wglGetCurrentDC()
{
    const CurrentContext* const current = CurrentOfThread();
    return current == nullptr ? nullptr : current->isAdopted ? current->adopted->dc : current->dc;
}

HDC AdoptCurrentContext(int width, int height)
{
    CurrentContext* const current = CurrentOfThread();
    std::unique_ptr<ForeignContext> context = posix::CurrentEglContext();
    if (context == nullptr)
    {
        context = posix::CurrentGlxContext();
    }
    if (current == nullptr || context == nullptr || width <= 0 || height <= 0)
    {
        posix::SetError(ERROR_NO_RENDERING, "no OpenGL context is current that could be adopted");
        return nullptr;
    }
    if (current->context != nullptr && current->context->context == eglGetCurrentContext())
    {
        SetLastError(ERROR_BUSY);  // the context was made by wglCreateContext
        return nullptr;
    }
    if (current->adopted == nullptr || !current->adopted->context->IsCurrent())
    {
        ReleaseAdoptedContext();
        const auto adopted = std::make_shared<AdoptedContext>();
        adopted->dc = CreateCompatibleDC(nullptr);
        adopted->handle = static_cast<HGLRC>(posix::AddHandle(adopted));
        SetPixelFormat(adopted->dc, 1, nullptr);  // the format of 32 bits
        current->adopted = adopted;
    }
    AdoptedContext& adopted = *current->adopted;
    adopted.context = std::move(context);
    adopted.size = {width, height};
    if (current->context != nullptr)
    {
        current->Release();  // leaves the host's context current
    }
    current->isAdopted = true;
    return adopted.dc;
}

void ReleaseAdoptedContext()
{
    CurrentContext* const current = CurrentOfThread();
    if (current != nullptr)
    {
        current->ForgetAdopted();
    }
}

BOOL wglShareLists(HGLRC handle, HGLRC otherHandle)
{
    const std::shared_ptr<RenderingContext> context = ResolveOrRefuse<RenderingContext>(handle);
    const std::shared_ptr<RenderingContext> other = ResolveOrRefuse<RenderingContext>(otherHandle);
    if (context == nullptr || other == nullptr)
    {
        return FALSE;
    }
    // OpenGL contexts can share only from the moment they are made, so the other context is made
    // again. Nothing is lost by that, because the other context has never been current.
    if (other->wasCurrent || context == other)
    {
        SetLastError(ERROR_BUSY);
        return FALSE;
    }
    return other->CreateContext(context->context);
}

void* GetOpenGLFunction(const char* name)
{
    return reinterpret_cast<void*>(eglGetProcAddress(name));
}

void CutQuadsAlike()
{
    // The clipper of the software renderer always splits quadrilaterals by this convention.
    glProvokingVertex(GL_FIRST_VERTEX_CONVENTION);
}
