// SPDX-License-Identifier: MIT
#include "shapes/SvgPainter.h"

#include "platform/Limits.h"
#include "shapes/SvgElements.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace orvane::shapes
{

using contours::DoublePoint;

namespace
{

/// Elements that draw nothing where they stand.
constexpr std::array<std::string_view, 19> silentElements = {
    "clipPath", "color-profile",  "cursor", "defs",     "desc",      "filter", "font",
    "marker",   "linearGradient", "mask",   "metadata", "pattern",   "script", "radialGradient",
    "style",    "symbol",         "title",  "view",     "solidcolor"};

bool IsSilent(std::string_view name)
{
    return std::find(silentElements.begin(), silentElements.end(), name) != silentElements.end();
}

/// The value of a root's width or height; empty when it is missing or relative.
std::optional<double> AbsoluteSize(const SvgDocument& document, const char* attribute)
{
    const pugi::xml_attribute size = document.Root().attribute(attribute);
    const std::string_view text = Trimmed(size.value());
    if (!size || text.ends_with('%') || text == "auto")
    {
        return {};
    }
    return document.SizeOf(document.Root(), attribute, 0, 0);
}

/// \param viewBox of the root
SvgFrame FrameOf(const SvgDocument& document, const std::vector<double>& viewBox)
{
    const std::optional<double> width = AbsoluteSize(document, "width");
    const std::optional<double> height = AbsoluteSize(document, "height");
    const double aspect = viewBox[2] / viewBox[3];
    SvgViewport viewport = {viewBox[2], viewBox[3]};
    if (width || height)
    {
        viewport.width = width ? *width : *height * aspect;
        viewport.height = height ? *height : *width / aspect;
    }
    if (!(viewport.width > 0 && viewport.height > 0))
    {
        throw Error(document.PlaceOf(document.Root()), "a width or height of 0",
                    "a picture with an area");
    }
    const Affine toViewport = document.ParseAttribute(
        document.Root(), "preserveAspectRatio",
        [&](std::string_view ratio) { return ViewBoxMap(viewBox, viewport, ratio); });
    const DoublePoint origin = toViewport({viewBox[0], viewBox[1] + viewBox[3]});
    const double scale = 1 / (viewBox[3] * toViewport.d);
    const Affine toEms = Affine::Scale(scale, -scale) * Affine::Translation(-origin.x, -origin.y);
    return {toEms * toViewport, toEms({0, viewport.height}), toEms({viewport.width, 0}),
            viewBox[2] * toViewport.a * scale};
}

}  // namespace

SvgPainter::SvgPainter(SvgDocument& document, const SvgOptions& options)
    : document_(document), options_(options)
{}

void SvgPainter::Paint()
{
    const std::vector<double> viewBox = OuterViewBox();
    frame_ = FrameOf(document_, viewBox);
    for (const double number : {frame_.low.x, frame_.low.y, frame_.high.x, frame_.high.y})
    {
        if (!(std::abs(number) <= limits::maxShapeCoordinate))
        {
            throw Error(document_.PlaceOf(document_.Root()),
                        "a viewport or viewBox of " + std::to_string(number) +
                            " times the viewBox's height",
                        "at most " + std::to_string(limits::maxShapeCoordinate));
        }
    }
    State state;
    state.viewport = {viewBox[2], viewBox[3]};
    state.toEms = frame_.toEms;
    state.viewportClip = AddViewportClip(frame_.low, frame_.high, Affine(), -1);
    PaintRoot(state);
}

std::vector<double> SvgPainter::OuterViewBox()
{
    std::vector<double> box = document_.ViewBoxOf(document_.Root());
    if (!box.empty())
    {
        return box;
    }
    const std::optional<double> width = AbsoluteSize(document_, "width");
    const std::optional<double> height = AbsoluteSize(document_, "height");
    return width && height && *width > 0 && *height > 0 ? std::vector<double>{0, 0, *width, *height}
                                                        : MeasuredBox();
}

std::vector<double> SvgPainter::MeasuredBox()
{
    constexpr double most = std::numeric_limits<double>::max();
    isMeasuring_ = true;
    low_ = {most, most};
    high_ = {-most, -most};
    PaintRoot(State());
    isMeasuring_ = false;
    layers_.clear();
    clips_.clear();
    viewportClips_.clear();
    clipIndices_.clear();
    segments_ = {};
    elements_ = 0;
    const bool hasArea = low_.x < high_.x && low_.y < high_.y;
    return hasArea ? std::vector<double>{low_.x, low_.y, high_.x - low_.x, high_.y - low_.y}
                   : std::vector<double>{0, 0, 1, 1};
}

void SvgPainter::PaintRoot(State state)
{
    state.style.color = options_.currentColor;
    if (const std::optional<State> inside = Entered(document_.Root(), state))
    {
        PaintChildren(document_.Root(), *inside);
    }
}

std::optional<SvgPainter::State> SvgPainter::Entered(pugi::xml_node element, const State& outer)
{
    State state = outer;
    if (++state.depth > limits::maxSvgNesting)
    {
        throw Error(document_.PlaceOf(element),
                    std::to_string(state.depth) + " elements inside each other",
                    "at most " + std::to_string(limits::maxSvgNesting));
    }
    if (++elements_ > limits::maxSvgElements)
    {
        throw Error(document_.PlaceOf(element),
                    "more than " + std::to_string(limits::maxSvgElements) +
                        " elements, those that use elements repeat included",
                    "at most that many");
    }
    state.style = document_.StyleOf(element, outer.style, outer.viewport);
    if (!state.style.isDisplayed)
    {
        return {};
    }
    state.opacity *= state.style.opacity;
    state.toEms = state.toEms * document_.TransformOf(element, "transform");
    const Affine& map = state.toEms;
    for (const double number : {map.a, map.b, map.c, map.d, map.e, map.f})
    {
        if (!std::isfinite(number))
        {
            throw Error(document_.PlaceOf(element) + ": transform",
                        "numbers that multiply to more than 1.8e308", "smaller ones");
        }
    }
    if (!state.style.clip.empty())
    {
        state.clip = ClipOf(element, state.style.clip, state);
    }
    return state;
}

void SvgPainter::PaintChildren(pugi::xml_node element, const State& state)
{
    for (const pugi::xml_node child : element.children())
    {
        PaintElement(child, state);
    }
}

void SvgPainter::PaintElement(pugi::xml_node element, const State& outer)
{
    const std::string_view name = document_.NameOf(element);
    document_.CountBytes(name.size());
    if (name.empty() || IsSilent(name))
    {
        return;
    }
    const std::optional<State> state = Entered(element, outer);
    if (!state)
    {
        return;
    }
    if (DrawsPath(name))
    {
        PaintPath(element, *state);
    }
    else if (name == "g" || name == "a")
    {
        PaintChildren(element, *state);
    }
    else if (name == "svg")
    {
        PaintViewport(element, {}, *state);
    }
    else if (name == "use")
    {
        PaintUse(element, *state);
    }
    else if (name == "switch")
    {
        PaintSwitch(element, *state);
    }
    else
    {
        document_.AddNotice(element, "is not supported and left out");
    }
}

void SvgPainter::PaintSwitch(pugi::xml_node element, const State& state)
{
    for (const pugi::xml_node child : element.children())
    {
        document_.CountBytes(0);
        // The first child that asks for nothing is drawn, and no other.
        if (!document_.NameOf(child).empty() && !child.attribute("requiredExtensions") &&
            !child.attribute("systemLanguage"))
        {
            PaintElement(child, state);
            return;
        }
    }
}

void SvgPainter::PaintUse(pugi::xml_node element, const State& state)
{
    const pugi::xml_node target = document_.Referenced(element);
    const std::string_view name = document_.NameOf(target);
    State moved = state;
    moved.toEms = state.toEms *
                  Affine::Translation(document_.LengthOf(element, "x", state.viewport.width, 0),
                                      document_.LengthOf(element, "y", state.viewport.height, 0));
    if (name != "symbol" && name != "svg")
    {
        PaintElement(target, moved);
    }
    else if (const std::optional<State> inside = Entered(target, moved))
    {
        PaintViewport(target, element, *inside);
    }
}

void SvgPainter::PaintViewport(pugi::xml_node element, pugi::xml_node use, State state)
{
    const SvgViewport& outer = state.viewport;
    const auto sizeOf = [&](const char* attribute, double whole) {
        return document_.SizeOf(use.attribute(attribute) ? use : element, attribute, whole, whole);
    };
    const SvgViewport viewport = {sizeOf("width", outer.width), sizeOf("height", outer.height)};
    if (viewport.width == 0 || viewport.height == 0)
    {
        return;
    }
    state.toEms =
        state.toEms * Affine::Translation(document_.LengthOf(element, "x", outer.width, 0),
                                          document_.LengthOf(element, "y", outer.height, 0));
    if (!state.style.isOverflowVisible)
    {
        state.viewportClip = AddViewportClip({0, 0}, {viewport.width, viewport.height}, state.toEms,
                                             state.viewportClip);
    }
    state.viewport = viewport;
    if (const std::vector<double> box = document_.ViewBoxOf(element); !box.empty())
    {
        state.toEms = state.toEms *
                      document_.ParseAttribute(
                          element, "preserveAspectRatio",
                          [&](std::string_view ratio) { return ViewBoxMap(box, viewport, ratio); });
        state.viewport = {box[2], box[3]};
    }
    PaintChildren(element, state);
}

int SvgPainter::AddViewportClip(const DoublePoint& low, const DoublePoint& high,
                                const Affine& toEms, int outer)
{
    ViewportClip clip = {{toEms(low), toEms({high.x, low.y}), toEms(high), toEms({low.x, high.y})},
                         outer};
    if (toEms.a * toEms.d - toEms.b * toEms.c < 0)
    {
        std::reverse(clip.corners.begin(), clip.corners.end());
    }
    viewportClips_.push_back(clip);
    return static_cast<int>(viewportClips_.size()) - 1;
}

}  // namespace orvane::shapes
