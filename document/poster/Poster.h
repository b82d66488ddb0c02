// SPDX-License-Identifier: MIT
#pragma once

#include "orvane/Options.h"
#include "pictures/RowFormat.h"
#include "platform/Export.h"

#include <cstddef>
#include <string>

class ViewObject;

namespace orvane
{

class PosterTarget;

/// Says which picture file to make of a view.
struct ORVANE_API PosterSettings
{
    PosterSettings() = default;
    PosterSettings(std::string outputPath, const PictureOptions& pictureOptions, const Size& size);

    int Width() const { return size.width; }
    int Height() const { return size.height; }
    bool IsBmp() const;
    /// The pixels of the picture, if it is no BMP.
    RowFormat Rows() const;
    /// Whether the drawing is dithered, and has one sample a pixel therefore.
    bool IsDithered() const { return IsBmp() && options.bits < 24; }
    /// Bits per pixel of the bitmap that the picture is drawn into.
    int DrawnBits() const;
    /// The bytes of a row of pixels as a PosterTarget takes them.
    std::size_t RowBytes() const;

    std::string output;  ///< see FormatOf; "-" is a PNG to standard output
    Size size = defaultPictureSize;
    PictureOptions options;  ///< its size is ignored
};

/// Checks everything that can be checked without a scene. Throws OptionError for values that make
/// no sense, and Error for a BMP beyond the 4 GiB of its format, with the advice to write a PNG.
ORVANE_API void CheckPoster(const PosterSettings& settings);

/// Draws the scene that the view shows, in the view's own drawing mode, into a target that was made
/// for these settings. The file appears when the picture is complete. The picture is drawn in
/// bands, so the memory that is needed does not grow with the picture's height. Neither the view
/// nor its scene is changed.
///
/// Throws Error, and Cancelled when the drawing was cancelled. The OpenGL context that was current
/// before is not current afterwards; see KeptContext.
ORVANE_API void DrawPoster(const ViewObject& view, const PosterSettings& settings,
                           PosterTarget& target);

/// The same without the last step: the picture is complete and on the disk, but its file appears
/// only when the caller commits the target's output.
ORVANE_API void DrawUncommittedPoster(const ViewObject& view, const PosterSettings& settings,
                                      PosterTarget& target);

}  // namespace orvane
