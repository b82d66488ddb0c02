// SPDX-License-Identifier: MIT
#include "bench/Canvas.h"

#include "platform/Errors.h"
#include "platform/OpenGL.h"

#include <cstdio>
#include <cstdlib>

Canvas::Canvas(int pictureWidth, int pictureHeight) : dc_(CreateCompatibleDC(nullptr))
{
    BITMAPINFO info{};
    info.bmiHeader = {
        sizeof info.bmiHeader, pictureWidth, pictureHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    bitmap_ = CreateDIBSection(dc_, &info, DIB_RGB_COLORS, nullptr, nullptr, 0);
    previous_ = SelectObject(dc_, bitmap_);
    PIXELFORMATDESCRIPTOR format{};
    format.nSize = sizeof format;
    format.nVersion = 1;
    format.dwFlags = PFD_DRAW_TO_BITMAP | PFD_SUPPORT_OPENGL;
    format.cColorBits = 32;
    SetPixelFormat(dc_, ChoosePixelFormat(dc_, &format), &format);
    context_ = wglCreateContext(dc_);
    if (!wglMakeCurrent(dc_, context_))
    {
        std::fprintf(stderr, "bench: no OpenGL context: %s\n", GetLastErrorText().c_str());
        std::exit(1);
    }
    glMatrixMode(GL_PROJECTION);
    glFrustum(-0.16, 0.16, -0.09, 0.09, 0.2, 100);
    glMatrixMode(GL_MODELVIEW);
    glTranslated(0, 0, -20);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
}

Canvas::~Canvas()
{
    wglMakeCurrent(nullptr, nullptr);
    wglDeleteContext(context_);
    SelectObject(dc_, previous_);
    DeleteObject(bitmap_);
    DeleteDC(dc_);
}

void Frame(const std::function<void()>& draw)
{
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    draw();
    glFinish();
}
