// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/OutlineTracer.h"

#include "contours/CubicOutline.h"

#include FT_ERRORS_H

namespace posix
{
namespace
{

using orvane::contours::CubicOutlineBuilder;
using orvane::contours::DoublePoint;
using orvane::contours::NativeOutline;
using orvane::contours::NativePoint;

bool IsOnCurve(const FT_Outline& outline, int point)
{
    return FT_CURVE_TAG(outline.tags[point]) == FT_CURVE_TAG_ON;
}

NativePoint NativePointOf(const FT_Vector& point, bool onCurve)
{
    return {static_cast<std::int32_t>(point.x), static_cast<std::int32_t>(point.y), onCurve};
}

/// Adds the contour of the points from \p first to \p last.
void TraceContour(NativeOutline& traced, const FT_Outline& outline, int first, int last)
{
    const FT_Vector* const points = outline.points;
    FT_Vector start = points[first];
    if (IsOnCurve(outline, first))
    {
        ++first;
    }
    else if (IsOnCurve(outline, last))
    {
        start = points[last];
        --last;
    }
    else
    {
        start = {(start.x + points[last].x) >> 1, (start.y + points[last].y) >> 1};
    }
    traced.points.push_back(NativePointOf(start, true));
    for (int point = first; point <= last; ++point)
    {
        traced.points.push_back(NativePointOf(points[point], IsOnCurve(outline, point)));
    }
    traced.CloseContour();
}

/// A place in pixels.
DoublePoint PlaceOf(const FT_Vector& point)
{
    return {static_cast<double>(point.x) / 64, static_cast<double>(point.y) / 64};
}

/// Runs the body of a callback. Exceptions must not pass through FreeType, which is written in C,
/// so this function catches them and returns an error, which ends FreeType's walk through the
/// outline.
template <typename Action>
int Guarded(void* builder, Action action) noexcept
{
    try
    {
        action(*static_cast<CubicOutlineBuilder*>(builder));
        return 0;
    }
    catch (...)
    {
        return FT_Err_Out_Of_Memory;
    }
}

}  // namespace

NativeOutline TraceOutline(const FT_Outline& outline)
{
    NativeOutline traced;
    traced.points.reserve(static_cast<std::size_t>(outline.n_points) + 8);
    traced.ends.reserve(static_cast<std::size_t>(outline.n_contours));
    int first = 0;
    for (int contour = 0; contour < outline.n_contours; ++contour)
    {
        const int last = outline.contours[contour];
        if (last > first)
        {
            TraceContour(traced, outline, first, last);
        }
        first = last + 1;
    }
    return traced;
}

NativeOutline TraceCubicOutline(const FT_Outline& outline)
{
    static const FT_Outline_Funcs functions = {
        [](const FT_Vector* to, void* builder) {
            return Guarded(builder,
                           [&](CubicOutlineBuilder& build) { build.MoveTo(PlaceOf(*to)); });
        },
        [](const FT_Vector* to, void* builder) {
            return Guarded(builder,
                           [&](CubicOutlineBuilder& build) { build.LineTo(PlaceOf(*to)); });
        },
        [](const FT_Vector* control, const FT_Vector* to, void* builder) {
            return Guarded(builder, [&](CubicOutlineBuilder& build) {
                build.QuadraticTo(PlaceOf(*control), PlaceOf(*to));
            });
        },
        [](const FT_Vector* first, const FT_Vector* second, const FT_Vector* to, void* builder) {
            return Guarded(builder, [&](CubicOutlineBuilder& build) {
                build.CubicTo(PlaceOf(*first), PlaceOf(*second), PlaceOf(*to));
            });
        },
        0,
        0};
    CubicOutlineBuilder builder;
    FT_Outline copy = outline;
    if (FT_Outline_Decompose(&copy, &functions, &builder) != 0)
    {
        return {};
    }
    return builder.Take();
}

}  // namespace posix
