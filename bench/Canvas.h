// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Bitmaps.h"
#include "platform/Rendering.h"

#include <functional>

/// An off-screen context that is current for as long as this lives, with a camera, depth, culling
/// and a light.
class Canvas
{
public:
    static constexpr int width = 640;
    static constexpr int height = 360;

    explicit Canvas(int pictureWidth = width, int pictureHeight = height);
    ~Canvas();
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

private:
    HDC dc_;
    HBITMAP bitmap_;
    HGDIOBJ previous_;
    HGLRC context_;
};

/// Clears, draws and waits until it is drawn.
void Frame(const std::function<void()>& draw);
