// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// OpenGL contexts that draw into the bitmap of a memory device context.
///
/// OpenGL's pixels are copied into the bitmap's bits when the context is made not current or
/// deleted, when another bitmap is selected, and in GdiFlush on the context's thread. Changes that
/// the host makes to the bits before that are overwritten. When a context is made current, OpenGL's
/// pixels start out as a copy of the bits.

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

/// The index, from 1, of the pixel format nearest to the wanted format. 0 when the wanted format
/// draws into windows, has two buffers, is stereo or uses colour indices, because no such format is
/// offered.
ORVANE_API int ChoosePixelFormat(HDC dc, const PIXELFORMATDESCRIPTOR* wanted);

/// Describes a pixel format, unless \p description is null, and returns the largest index of a
/// format. 0 when there is no format with the index \p format.
ORVANE_API int DescribePixelFormat(HDC dc, int format, UINT size,
                                   PIXELFORMATDESCRIPTOR* description);

/// The index of the device context's pixel format; 0 when none is set.
ORVANE_API int GetPixelFormat(HDC dc);

/// Sets the pixel format. Returns FALSE when there is no such format or when the device context
/// already has another format, which cannot be changed. \p description is ignored.
ORVANE_API BOOL SetPixelFormat(HDC dc, int format, const PIXELFORMATDESCRIPTOR* description);

/// Makes an OpenGL context for a device context that has a pixel format and a selected bitmap of at
/// least 4 bits a pixel. Null when the device context has no such format or bitmap, or when OpenGL
/// is not available (GetLastErrorText says why).
ORVANE_API HGLRC wglCreateContext(HDC dc);

/// Deletes a context, after making it not current on this thread. FALSE when it is current on
/// another thread.
ORVANE_API BOOL wglDeleteContext(HGLRC context);

/// Makes a context current on this thread, to draw into the bitmap that \p dc has selected. The
/// device context must have the pixel format that the context was made with. With a null \p
/// context, no context is current afterwards. After FALSE the current context is the same as
/// before, or no context is current if OpenGL itself refused.
ORVANE_API BOOL wglMakeCurrent(HDC dc, HGLRC context);

/// The context that is current on this thread, and its device context. Null when no context of
/// wglCreateContext or AdoptCurrentContext is current.
ORVANE_API HGLRC wglGetCurrentContext();
ORVANE_API HDC wglGetCurrentDC();

/// Lets \p other use the display lists and textures of \p context. FALSE when \p other has ever
/// been current.
ORVANE_API BOOL wglShareLists(HGLRC context, HGLRC other);

/// Adopts the OpenGL context that is current on this thread, which a host has made for a window of
/// its own. From then on wglGetCurrentContext and wglGetCurrentDC return handles for it,
/// wglMakeCurrent makes it current again after another context, and StretchDIBits draws through it.
/// The host still owns the context. It calls this each time that it begins to draw, with the width
/// and height in pixels of the surface that it draws on.
/// \return a device context of 32 bits a pixel, owned by the platform; the same for each call with
/// the same context. Null when no context is current (GetLastErrorText says so).
ORVANE_API HDC AdoptCurrentContext(int width, int height);

/// Ends the adoption on this thread, if there is one. The context stays current. The host must call
/// this before it destroys the context.
ORVANE_API void ReleaseAdoptedContext();

#endif

/// Does what wglCreateContext does, but makes a context of a core profile of OpenGL 3.2 or newer,
/// in which OpenGL's fixed functions fail: immediate mode, matrices, lights and materials. Nodes
/// cannot draw themselves there; orvane::ShaderMeshDrawing (solids/ShaderMeshDrawing.h) draws their
/// triangles.
ORVANE_API HGLRC CreateCoreContext(HDC dc);

/// The address of an OpenGL function that is newer than OpenGL 1.1, null when there is none. The
/// address does not tell whether the current context has the function; its version does.
ORVANE_API void* GetOpenGLFunction(const char* name);

/// Makes the current context cut every quadrilateral along the same diagonal, also one that lies
/// partly outside the picture. The colours between its corners depend on the diagonal, so the bands
/// of a large picture would not match otherwise. With flat shading, the colour then comes from
/// another corner than usual. Does nothing if OpenGL lacks the setting.
ORVANE_API void CutQuadsAlike();
