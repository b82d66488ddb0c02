// SPDX-License-Identifier: MIT
#pragma once

#include "apps/cli/Picture.h"
#include "material/ColorVector.h"

#include <functional>

class DrawingObject;

/// What a picture is made of besides its contents.
struct PictureSettings
{
    int width = 1280;
    int height = 720;
    ColorVector background{0, 0, 0, 1};
    bool outline = false;  ///< wireframe instead of solid, lit surfaces
    int samples = 0;  ///< samples per pixel and direction, 1 to 4; 0 chooses by the picture's size
    std::function<void(double)> progress;  ///< called with the share done, 0 to 1; may be empty
};

/// Draws a tree of nodes, framed whole with a margin, under two lights that stay with the camera.
/// Throws Failure when no OpenGL context can be had.
Picture RenderPicture(DrawingObject& root, const PictureSettings& settings);
