// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Reads SVG files as flat areas, each of one colour, that can become solids.

#include "platform/Export.h"
#include "shapes/Region.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace orvane
{

/// A colour of 8 bits a channel. An alpha of 255 is opaque.
struct SvgColor
{
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;
    std::uint8_t alpha = 255;

    bool operator==(const SvgColor&) const = default;
};

/// Everything that a picture shows in one colour.
///
/// The contours do not cross, neither do those of different shapes. Each has the shape on its left:
/// outer contours run counter-clockwise and those of holes clockwise, so that the non-zero and the
/// even-odd rule fill the same. Contours may touch at single corners.
struct SvgShape
{
    SvgColor color;
    /// In ems: the height of the picture's viewBox is 1. x runs to the right from the viewBox's
    /// left border, y upward from its lower border.
    shapes::Contours contours;
};

/// Something in a file that is not read, or not as other programs show it.
struct SvgNotice
{
    std::size_t line = 0;  ///< of the first place in the file, from 1
    std::string element;   ///< the name of the element there, such as "text"
    std::string problem;   ///< such as "is not supported and left out"
};

struct SvgOptions
{
    /// Ems: how far straight lines may deviate from the curves that they stand for. From 0.000001
    /// to 0.1.
    double tolerance = 0.0002;
    /// What currentColor means where the file gives it no color.
    SvgColor currentColor;
};

/// A picture, cut into shapes.
struct SvgDrawing
{
    double width = 0;  ///< of the viewBox, in ems; its height is 1
    /// One for each colour, in the order in which the colours are first painted. Each place of the
    /// picture belongs to the shape that was painted last there. The parts of shapes that later
    /// ones cover are cut away, and a colour that is covered entirely has no shape. A partly
    /// transparent colour covers as an opaque one does. What lies outside of the picture's viewport
    /// is cut off.
    std::vector<SvgShape> shapes;
    /// Each kind of problem once, in the order of the file's reading, at most limits::maxSvgNotices
    /// and one that says that there were more.
    std::vector<SvgNotice> notices;
};

/// Reads an SVG file that is in memory. References to other files are ignored with a notice. Throws
/// Error, which names the file and the line, when the bytes are no SVG file or go beyond a limit of
/// platform/Limits.h, and OptionError for an option.
///
/// A file without a viewBox has the one that its width and height make. A file without either is as
/// large as what it draws.
/// \param name of the file, for errors
ORVANE_API SvgDrawing ReadSvg(std::string_view bytes, const std::string& name,
                              const SvgOptions& options = {});

}  // namespace orvane
