// SPDX-License-Identifier: MIT
// What SvgPainter does with the path of one element: its colours, its clips and its layers.
#include "platform/Limits.h"
#include "shapes/SvgElements.h"
#include "shapes/SvgPainter.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvane::shapes
{

using contours::DoublePoint;

namespace
{

/// The larger side of the box around the points of a path and a pen.
double ExtentOf(const Path& path, double penWidth)
{
    DoublePoint low;
    DoublePoint high;
    bool isFirst = true;
    const auto include = [&](const DoublePoint& point) {
        low = isFirst ? point : DoublePoint{std::min(low.x, point.x), std::min(low.y, point.y)};
        high = isFirst ? point : DoublePoint{std::max(high.x, point.x), std::max(high.y, point.y)};
        isFirst = false;
    };
    for (const Subpath& subpath : path.Subpaths())
    {
        include(subpath.start);
        for (const PathPiece& piece : subpath.pieces)
        {
            std::for_each(piece.points.begin(), piece.points.end(), include);
        }
    }
    return std::max(high.x - low.x, high.y - low.y) + penWidth;
}

void ScaleDashes(StrokeStyle& pen, double scale)
{
    for (double& dash : pen.dashes)
    {
        dash *= scale;
    }
    pen.dashOffset *= scale;
}

/// The length of a path, to a thousandth.
double LengthOf(const Path& path, SegmentLimit& limit)
{
    double length = 0;
    for (const Subpath& subpath : path.Subpaths())
    {
        for (const PathPiece& piece : subpath.pieces)
        {
            const double chord = contours::Length(piece.points[3] - piece.points[0]);
            const int steps = StepsFor(piece, std::max(chord, 1e-6) / 1000, limit);
            DoublePoint last = piece.points[0];
            for (int i = 1; i <= steps; ++i)
            {
                const DoublePoint point = piece.PointAt(static_cast<double>(i) / steps);
                length += contours::Length(point - last);
                last = point;
            }
        }
    }
    return length;
}

}  // namespace

double SvgPainter::ToleranceFor(const Path& path, const State& state) const
{
    return isMeasuring_ ? ExtentOf(path, state.style.pen.width) / 1000
                        : options_.tolerance / state.toEms.MaxStretch();
}

void SvgPainter::PaintPath(pugi::xml_node element, const State& state)
{
    segments_.SetPlace(document_.PlaceOf(element));
    if (!state.style.isVisible)
    {
        return;
    }
    const Path path = PathOf(document_, element, state.viewport);
    // A map that leaves no area shows nothing.
    const Affine& map = state.toEms;
    if (map.a * map.d - map.b * map.c == 0)
    {
        return;
    }
    if (state.style.strokesFirst)
    {
        PaintStroke(element, path, state);
    }
    PaintFill(element, path, state);
    if (!state.style.strokesFirst)
    {
        PaintStroke(element, path, state);
    }
}

void SvgPainter::PaintFill(pugi::xml_node element, const Path& path, const State& state)
{
    const int color = ColorOf(element, state.style.fill, state.style.fillOpacity, state);
    if (color >= 0)
    {
        AddLayer(Flattened(path, ToleranceFor(path, state), segments_), state.style.fillRule, color,
                 state);
    }
}

void SvgPainter::PaintStroke(pugi::xml_node element, const Path& path, const State& state)
{
    if (state.style.pen.width == 0)
    {
        return;
    }
    const int color = ColorOf(element, state.style.stroke, state.style.strokeOpacity, state);
    if (color < 0)
    {
        return;
    }
    StrokeStyle pen = state.style.pen;
    const double stated = document_.SizeOf(element, "pathLength", 0, 0);
    if (stated > 0 && !pen.dashes.empty())
    {
        ScaleDashes(pen, LengthOf(path, segments_) / stated);
    }
    AddLayer(StrokeOutline(path, pen, ToleranceFor(path, state), segments_), FillRule::NonZero,
             color, state);
}

int SvgPainter::ColorOf(pugi::xml_node element, const SvgPaint& paint, double opacity,
                        const State& state)
{
    SvgPaint found = paint;
    opacity *= state.opacity;
    if (!paint.server.empty())
    {
        found = PaintOfServer(element, paint, state, opacity);
    }
    if (found.kind == SvgPaint::Kind::None)
    {
        return -1;
    }
    SvgColor color = found.kind == SvgPaint::Kind::Color ? found.color : state.style.color;
    color.alpha = static_cast<std::uint8_t>(std::lround(color.alpha * opacity));
    if (color.alpha == 0)
    {
        return -1;
    }
    if (color.alpha < 255)
    {
        document_.AddNotice(element,
                            "is partly transparent; what it covers is cut away all the same");
    }
    const std::uint32_t key = std::uint32_t{color.red} << 24 | std::uint32_t{color.green} << 16 |
                              std::uint32_t{color.blue} << 8 | color.alpha;
    const auto [index, isNew] = colorIndices_.emplace(key, static_cast<int>(colors_.size()));
    if (isNew)
    {
        colors_.push_back(color);
        if (colors_.size() > limits::maxShapeColors)
        {
            throw Error(document_.PlaceOf(element),
                        "more than " + std::to_string(limits::maxShapeColors) + " colors",
                        "at most that many");
        }
    }
    return index->second;
}

SvgPaint SvgPainter::PaintOfServer(pugi::xml_node element, const SvgPaint& paint,
                                   const State& state, double& opacity)
{
    const pugi::xml_node server = document_.FindElement(paint.server);
    const std::string_view name = document_.NameOf(server);
    if (name == "linearGradient" || name == "radialGradient")
    {
        document_.AddNotice(server, "is not supported; its first stop's color is taken");
        return FirstStop(server, state, opacity);
    }
    if (server)
    {
        document_.AddNotice(server, "is not supported as a paint and left out");
    }
    else
    {
        document_.AddNotice(element, "refers to a paint that is not in the file");
    }
    return paint;
}

SvgPaint SvgPainter::FirstStop(pugi::xml_node gradient, const State& state, double& opacity)
{
    // A gradient may take its stops from another one, which may do so, too.
    constexpr int mostGradients = 32;
    for (int i = 0; gradient && i < mostGradients; ++i)
    {
        for (const pugi::xml_node stop : gradient.children())
        {
            document_.CountBytes(0);
            if (document_.NameOf(stop) == "stop")
            {
                const SvgStyle style = document_.StyleOf(stop, state.style, state.viewport);
                opacity *= style.stopOpacity;
                return style.stopColor;
            }
        }
        gradient = document_.Referenced(gradient);
    }
    return {};
}

int SvgPainter::ClipOf(pugi::xml_node element, const std::string& id, const State& state)
{
    const pugi::xml_node clipPath = document_.FindElement(id);
    if (document_.NameOf(clipPath) != "clipPath")
    {
        document_.AddNotice(element, "refers to a clipPath that is not in the file");
        return state.clip;
    }
    if (std::string_view(clipPath.attribute("clipPathUnits").value()) == "objectBoundingBox")
    {
        document_.AddNotice(clipPath, "clipPathUnits is not supported; nothing is clipped");
        return state.clip;
    }
    // Some programs clip each of thousands of elements by the same clipPath.
    const Affine& map = state.toEms;
    const ClipSource source = {clipPath.internal_object(),
                               {map.a, map.b, map.c, map.d, map.e, map.f},
                               state.clip,
                               state.viewportClip};
    const auto known = clipIndices_.find(source);
    if (known != clipIndices_.end())
    {
        return known->second;
    }
    const int clip = NewClip(clipPath, state);
    clipIndices_.emplace(source, clip);
    return clip;
}

int SvgPainter::NewClip(pugi::xml_node clipPath, const State& state)
{
    // The clipPath may have a clip-path of its own, so Entered may come here again, one level
    // deeper.
    State initial = state;
    initial.style = SvgStyle();
    const std::optional<State> inside = Entered(clipPath, initial);
    const int outer = inside ? inside->clip : state.clip;
    const int firstLayer = static_cast<int>(layers_.size());
    if (inside)
    {
        for (const pugi::xml_node child : clipPath.children())
        {
            document_.CountBytes(0);
            AddClipShape(child, *inside);
        }
    }
    clips_.push_back({firstLayer, static_cast<int>(layers_.size()) - firstLayer, outer});
    return static_cast<int>(clips_.size()) - 1;
}

void SvgPainter::AddClipShape(pugi::xml_node element, const State& outer)
{
    const std::string_view name = document_.NameOf(element);
    if (name.empty())
    {
        return;
    }
    if (!DrawsPath(name) && name != "use")
    {
        if (name != "title" && name != "desc" && name != "metadata")
        {
            document_.AddNotice(element, "is not supported in a clipPath and left out");
        }
        return;
    }
    const std::optional<State> state = Entered(element, outer);
    if (!state || !state->style.isVisible)
    {
        return;
    }
    if (!state->style.clip.empty())
    {
        document_.AddNotice(element, "clip-path inside of a clipPath is not supported");
    }
    if (name == "use")
    {
        State moved = *state;
        moved.toEms =
            state->toEms *
            Affine::Translation(document_.LengthOf(element, "x", state->viewport.width, 0),
                                document_.LengthOf(element, "y", state->viewport.height, 0));
        AddClipShape(document_.Referenced(element), moved);
        return;
    }
    segments_.SetPlace(document_.PlaceOf(element));
    const Path path = PathOf(document_, element, state->viewport);
    const Affine& map = state->toEms;
    if (map.a * map.d - map.b * map.c != 0)
    {
        State unclipped = *state;
        unclipped.clip = -1;
        AddLayer(Flattened(path, ToleranceFor(path, *state), segments_), state->style.clipRule, -1,
                 unclipped);
    }
}

void SvgPainter::AddLayer(Contours contours, FillRule rule, int color, const State& state)
{
    Layer layer;
    layer.rule = rule;
    layer.color = color;
    layer.clip = state.clip;
    for (Contour& contour : contours)
    {
        for (DoublePoint& point : contour)
        {
            point = state.toEms(point);
            if (isMeasuring_ ? !std::isfinite(point.x) || !std::isfinite(point.y)
                             : !(std::abs(point.x) <= limits::maxShapeCoordinate &&
                                 std::abs(point.y) <= limits::maxShapeCoordinate))
            {
                throw Error(segments_.Place(),
                            "a coordinate more than " +
                                std::to_string(static_cast<int>(limits::maxShapeCoordinate)) +
                                " times the picture's height away",
                            "a smaller one");
            }
        }
        if (isMeasuring_)
        {
            for (const DoublePoint& point : contour)
            {
                low_ = {std::min(low_.x, point.x), std::min(low_.y, point.y)};
                high_ = {std::max(high_.x, point.x), std::max(high_.y, point.y)};
            }
            continue;
        }
        for (int clip = state.viewportClip; clip >= 0; clip = viewportClips_[clip].outer)
        {
            contour = CutToConvex(std::move(contour), viewportClips_[clip].corners);
        }
        if (contour.size() > 2)
        {
            layer.contours.push_back(std::move(contour));
        }
    }
    layers_.push_back(std::move(layer));
}

}  // namespace orvane::shapes
