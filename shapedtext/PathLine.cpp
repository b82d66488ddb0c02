// SPDX-License-Identifier: MIT
#include "shapedtext/PathLine.h"

#include "document/OptionRange.h"
#include "extrude/EdgeStyle.h"
#include "orvane/Error.h"
#include "platform/Limits.h"
#include "shapes/SvgText.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvane
{

using contours::DoublePoint;

namespace
{

constexpr const char* field = "path";
/// Ems: how far straight lines may deviate from the curves that they stand for.
constexpr double tolerance = 0.0002;

shapes::Path ParseData(const std::string& data, shapes::SegmentLimit& limit)
{
    try
    {
        return shapes::ParsePathData(data, limit);
    }
    catch (const shapes::SvgSyntaxError& error)
    {
        throw Error("path: character " + std::to_string(error.At()), error.Found(),
                    error.Expected());
    }
}

}  // namespace

PathLine::PathLine(const TextPath& path)
    : isReversed_(path.side == PathSide::Right), start_(path.start)
{
    CheckRange("start", path.start.value_or(0), 0, 1);
    if (path.data.empty())
    {
        CheckRange("radius", path.radius, 0.001, 1000);
        radius_ = path.radius;
        length_ = 2 * std::numbers::pi * radius_;
        return;
    }
    if (path.radius != 0)
    {
        throw OptionError(field, "a radius or path data", "both");
    }
    CheckRange("unit", path.unit, 1e-6, 1000);
    Read(path);
}

void PathLine::Read(const TextPath& path)
{
    shapes::SegmentLimit limit;
    limit.SetPlace(field);
    const shapes::Path parsed = ParseData(path.data, limit);
    const auto add = [&](const DoublePoint& place, bool isBegin) {
        const DoublePoint inEms = {place.x * path.unit, -place.y * path.unit};
        if (!(std::max(std::abs(inEms.x), std::abs(inEms.y)) <= limits::maxShapeCoordinate))
        {
            throw Error(field, "a coordinate beyond a million ems", "at most that many");
        }
        // The gap between two parts of a path is no part of the way.
        length_ += isBegin ? 0 : Length(inEms - stations_.back().place);
        stations_.push_back({inEms, length_});
    };
    for (const shapes::Subpath& subpath : parsed.Subpaths())
    {
        add(subpath.start, true);
        for (const shapes::PathPiece& piece : subpath.pieces)
        {
            const int steps = shapes::StepsFor(piece, tolerance / path.unit, limit);
            for (int i = 1; i <= steps; ++i)
            {
                add(piece.PointAt(static_cast<double>(i) / steps), false);
            }
        }
    }
    if (length_ == 0)
    {
        throw Error(field, "a path without length", "one with a length");
    }
    isClosed_ = parsed.Subpaths().size() == 1 && parsed.Subpaths().front().isClosed;
    if (isReversed_)
    {
        std::reverse(stations_.begin(), stations_.end());
        for (Station& station : stations_)
        {
            station.way = length_ - station.way;
        }
    }
}

double PathLine::StartOf(Alignment alignment) const
{
    if (start_)
    {
        // The share is counted along the path as it is given, whichever way the text runs.
        return (isReversed_ ? (isClosed_ ? -*start_ : 1 - *start_) : *start_) * length_;
    }
    if (isClosed_ || alignment == Alignment::Left)
    {
        return 0;
    }
    return alignment == Alignment::Right ? length_ : length_ / 2;
}

DoublePoint PathLine::PointAt(double way) const
{
    if (radius_ > 0)
    {
        const double angle = (isReversed_ ? -way : way) / radius_;
        return {radius_ * std::sin(angle), radius_ * std::cos(angle)};
    }
    if (isClosed_)
    {
        way -= length_ * std::floor(way / length_);
    }
    const auto behind = [this](double place) {
        return std::upper_bound(stations_.begin(), stations_.end(), place,
                                [](double at, const Station& next) { return at < next.way; });
    };
    // Beyond the ends, the first or the last line is continued.
    auto after = behind(std::max(way, 0.0));
    if (after == stations_.end())
    {
        after = std::lower_bound(stations_.begin(), stations_.end(), length_,
                                 [](const Station& next, double end) { return next.way < end; });
    }
    const Station& from = *(after - 1);
    return from.place + (after->place - from.place) * ((way - from.way) / (after->way - from.way));
}

}  // namespace orvane
