// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Types.h"

#include <functional>
#include <string>

class PosterTarget;
class ViewObject;

/// Where a picture goes and how it is drawn.
struct PosterSettings
{
    std::string output;  ///< a name that ends in .png or .bmp, or - for PNG to standard output
    int width = 1280;    ///< pixels
    int height = 720;
    int bits = 24;          ///< per pixel of a BMP: 8, 16, 24 or 32
    int dotsPerInch = 0;    ///< for the file's header; 0 for none
    int samples = 0;        ///< per pixel and direction, 1 to 4; 0 chooses by the size
    HANDLE stop = nullptr;  ///< an event; when it is signalled the drawing stops
    std::function<void(double)> progress;  ///< called with the share done, 0 to 1; may be empty
};

/// Checks what can be checked of the settings alone. Throws UsageError for what makes no sense, and
/// Failure for a BMP beyond its format's 4 GiB, offering PNG.
void CheckPoster(const PosterSettings& settings);

/// Draws what the view shows, in its own drawing mode, band by band, into a target made for these
/// settings, which appears when it is complete. Memory does not grow with the picture. Throws
/// Failure; also when it was stopped.
void DrawPoster(const ViewObject& view, const PosterSettings& settings, PosterTarget& target);
