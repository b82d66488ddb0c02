// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Bitmaps that OpenGL draws into, in tests.

#include "platform/Errors.h"
#include "platform/OpenGL.h"
#include "platform/Rendering.h"
#include "tests/support/Bitmaps.h"

#include <string>

/// A request for drawing into bitmaps of that many bits.
inline PIXELFORMATDESCRIPTOR Wanted(int colorBits)
{
    PIXELFORMATDESCRIPTOR wanted{};
    wanted.nSize = sizeof wanted;
    wanted.nVersion = 1;
    wanted.dwFlags = PFD_DRAW_TO_BITMAP | PFD_SUPPORT_GDI | PFD_SUPPORT_OPENGL;
    wanted.iPixelType = PFD_TYPE_RGBA;
    wanted.cColorBits = static_cast<BYTE>(colorBits);
    wanted.cDepthBits = 32;
    wanted.iLayerType = PFD_MAIN_PLANE;
    return wanted;
}

/// A bitmap with a context that is current on this thread.
struct Drawing : SelectedBitmap
{
    /// \param create wglCreateContext or CreateCoreContext
    explicit Drawing(const BitmapDescription& description, HGLRC (*create)(HDC) = &wglCreateContext)
        : SelectedBitmap(description)
    {
        const PIXELFORMATDESCRIPTOR wanted = Wanted(description.header.biBitCount);
        SetPixelFormat(dc, ChoosePixelFormat(dc, &wanted), &wanted);
        context = create(dc);
        isValid = context != nullptr && wglMakeCurrent(dc, context) != FALSE;
        reason = GetLastErrorText();
    }
    ~Drawing() { wglDeleteContext(context); }

    bool IsValid() const { return isValid; }
    const std::string& Reason() const { return reason; }

    HGLRC context = nullptr;
    bool isValid = false;
    std::string reason;
};

inline void ClearTo(float red, float green, float blue)
{
    glClearColor(red, green, blue, 1);
    glClear(GL_COLOR_BUFFER_BIT);
}

/// The same for one pixel.
inline void ClearPixelTo(int x, int y, float red, float green, float blue)
{
    glEnable(GL_SCISSOR_TEST);
    glScissor(x, y, 1, 1);
    ClearTo(red, green, blue);
    glDisable(GL_SCISSOR_TEST);
}
