// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Pixel formats and contexts in the stream tests, whose program defines their functions itself, as
/// it does OpenGL's. Without a FakeRendering they do what they always do.

#include "platform/Rendering.h"
#include "platform/Types.h"

#include <functional>

/// While it lives nothing is asked of the real ones. Each call is a line of the recording among
/// OpenGL's:
///
///     ChoosePixelFormat 0x38 24       the request's flags and colour bits
///     SetPixelFormat 3
///     DescribePixelFormat 3
///     wglCreateContext
///     wglMakeCurrent context          or null
///     wglDeleteContext
///     StretchDIBits 0 0 4 4 0 0 4 4   destination, source
///
/// One at a time.
class FakeRendering
{
public:
    FakeRendering();
    ~FakeRendering();
    FakeRendering(const FakeRendering&) = delete;
    FakeRendering& operator=(const FakeRendering&) = delete;

    int chosenFormat = 3;     ///< what ChoosePixelFormat answers
    int colorBits = 24;       ///< what DescribePixelFormat says of every format
    bool hasContexts = true;  ///< else none can be created
    bool refusesNew = false;  ///< no context becomes current but the one that is
    int copiedRows = -1;      ///< what StretchDIBits answers; -1: the source's height
    HDC currentDc = nullptr;  ///< what wglGetCurrentDC answers; wglMakeCurrent sets it
    PIXELFORMATDESCRIPTOR requested{};
};

/// Called after every MapViewOfFile while it is set.
extern std::function<void()> afterMapViewOfFile;

/// Called before every WaitForSingleObject while it is set, as if another thread were at work just
/// before this one gets what it waits for.
extern std::function<void()> beforeWaitForSingleObject;
