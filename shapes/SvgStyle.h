// SPDX-License-Identifier: MIT
#pragma once

#include "shapes/Layers.h"
#include "shapes/Strokes.h"
#include "shapes/SvgFile.h"
#include "shapes/SvgText.h"

#include <string>
#include <string_view>

namespace orvane::shapes
{

/// What an area is painted with.
struct SvgPaint
{
    enum class Kind
    {
        None,
        Color,
        CurrentColor
    };
    Kind kind = Kind::None;
    SvgColor color;
    /// The id of the gradient or pattern that the paint refers to; kind and color then tell what to
    /// take when there is none of this id.
    std::string server;
};

/// The properties of an element that its picture depends on.
struct SvgStyle
{
    // Inherited by the elements inside:
    SvgColor color;
    SvgPaint fill = {SvgPaint::Kind::Color, {}, {}};
    SvgPaint stroke;
    double fillOpacity = 1;
    double strokeOpacity = 1;
    FillRule fillRule = FillRule::NonZero;
    FillRule clipRule = FillRule::NonZero;
    StrokeStyle pen;
    bool isVisible = true;
    bool strokesFirst = false;

    // The element's own:
    double opacity = 1;
    bool isDisplayed = true;
    bool isOverflowVisible = false;
    std::string clip;  ///< the id of its clipPath, or empty
    SvgPaint stopColor = {SvgPaint::Kind::Color, {}, {}};
    double stopOpacity = 1;

    /// The style of an element inside, before any of its properties are set.
    SvgStyle Inherited() const;
};

/// Sets a property. Names without a meaning for SvgStyle are ignored. Throws SvgSyntaxError when
/// the value is none that the property can have; the style is then unchanged.
/// \param parent the style of the element around, for the value "inherit"
void SetProperty(SvgStyle& style, const SvgStyle& parent, std::string_view name,
                 std::string_view value, const SvgViewport& viewport);

/// The id in "url(#id)" or "url('#id')"; empty when the text has another form.
std::string IdInUrl(std::string_view text);

}  // namespace orvane::shapes
