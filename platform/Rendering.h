// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// OpenGL contexts that draw into the bitmap of a memory device context.
///
/// OpenGL's pixels become the bitmap's bits when the context is made not current or deleted, when
/// another bitmap is selected, and in GdiFlush on the context's thread; bits changed meanwhile are
/// lost then. A context that is made current draws over the bits as they are.

#include "platform/DeviceContexts.h"
#include "platform/Export.h"
#include "platform/Types.h"

#if !defined(_WIN32)

constexpr DWORD PFD_DOUBLEBUFFER = 0x01;
constexpr DWORD PFD_STEREO = 0x02;
constexpr DWORD PFD_DRAW_TO_WINDOW = 0x04;
constexpr DWORD PFD_DRAW_TO_BITMAP = 0x08;
constexpr DWORD PFD_SUPPORT_GDI = 0x10;
constexpr DWORD PFD_SUPPORT_OPENGL = 0x20;
constexpr BYTE PFD_TYPE_RGBA = 0;
constexpr BYTE PFD_TYPE_COLORINDEX = 1;
constexpr BYTE PFD_MAIN_PLANE = 0;

struct PIXELFORMATDESCRIPTOR
{
    WORD nSize;
    WORD nVersion;
    DWORD dwFlags;
    BYTE iPixelType;
    BYTE cColorBits;
    BYTE cRedBits;
    BYTE cRedShift;
    BYTE cGreenBits;
    BYTE cGreenShift;
    BYTE cBlueBits;
    BYTE cBlueShift;
    BYTE cAlphaBits;
    BYTE cAlphaShift;
    BYTE cAccumBits;
    BYTE cAccumRedBits;
    BYTE cAccumGreenBits;
    BYTE cAccumBlueBits;
    BYTE cAccumAlphaBits;
    BYTE cDepthBits;
    BYTE cStencilBits;
    BYTE cAuxBuffers;
    BYTE iLayerType;
    BYTE bReserved;
    DWORD dwLayerMask;
    DWORD dwVisibleMask;
    DWORD dwDamageMask;
};
static_assert(sizeof(PIXELFORMATDESCRIPTOR) == 40);

/// The index, from 1, of the format nearest to the wanted one; 0 when there is none: drawing into
/// windows, two buffers, stereo and colour indices are not offered.
ORVANE_API int ChoosePixelFormat(HDC dc, const PIXELFORMATDESCRIPTOR* wanted);

/// Describes a format and returns the largest index. With a null \p description, only that. 0 when
/// there is no such format.
ORVANE_API int DescribePixelFormat(HDC dc, int format, UINT size,
                                   PIXELFORMATDESCRIPTOR* description);

/// 0 when none is set.
ORVANE_API int GetPixelFormat(HDC dc);

/// A device context keeps its format: FALSE for another one later. \p description is not looked at.
ORVANE_API BOOL SetPixelFormat(HDC dc, int format, const PIXELFORMATDESCRIPTOR* description);

/// A context for a device context with a pixel format and a bitmap of 4 bits or more; null when
/// there is no such thing or no OpenGL (GetLastErrorText says why).
ORVANE_API HGLRC wglCreateContext(HDC dc);

/// Deletes a context, which is made not current before. FALSE when it is current on another thread.
ORVANE_API BOOL wglDeleteContext(HGLRC context);

/// Makes a context current on this thread, to draw into the bitmap that \p dc has selected. The
/// device context needs the pixel format that the context was made with. A null \p context only
/// lets the current one go. After FALSE the current context is as it was, unless OpenGL itself
/// refused: then there is none.
ORVANE_API BOOL wglMakeCurrent(HDC dc, HGLRC context);

/// Null when this thread has none of these contexts current.
ORVANE_API HGLRC wglGetCurrentContext();
ORVANE_API HDC wglGetCurrentDC();

/// Lets \p other use the display lists and textures of \p context. FALSE when \p other has been
/// current already.
ORVANE_API BOOL wglShareLists(HGLRC context, HGLRC other);

/// Takes an OpenGL context that a host made for a window of its own, current on this thread, among
/// these contexts: wglGetCurrentContext and wglGetCurrentDC name it, wglMakeCurrent takes it up
/// again after another one, and StretchDIBits draws through it. The host calls this each time that
/// it begins to draw, with the pixels that it draws on, and goes on managing the context.
/// \return a device context of 32 bits with that context's handle in wglGetCurrentContext, the same
/// as long as it is the same context; null when none is current (GetLastErrorText says so). Owned
/// by the platform.
ORVANE_API HDC AdoptCurrentContext(int width, int height);

/// Ends the adoption on this thread; the context stays current for the host. Must be called before
/// the host destroys it. Nothing happens when there is none.
ORVANE_API void ReleaseAdoptedContext();

#endif

/// Has the current context cut a quadrilateral along the same diagonal whether it lies inside the
/// picture or partly outside, which the bands of a larger picture need to agree: colours between
/// its corners depend on it. Of flat shading it changes whose corner's colour counts. Nothing where
/// OpenGL cannot.
ORVANE_API void CutQuadsAlike();
