// SPDX-License-Identifier: MIT
#include "shapes/Strokes.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>

namespace orvane::shapes
{

using contours::Cross;
using contours::Dot;
using contours::DoublePoint;
using contours::Length;

namespace
{

/// A straight part of a line that is drawn.
struct Chord
{
    DoublePoint from;
    DoublePoint to;
    DoublePoint direction;  ///< of unit length
    /// The directions of the curve at the chord's ends. They equal the chord's direction, except
    /// at the ends of a curve.
    DoublePoint startDirection;
    DoublePoint endDirection;
    double length = 0;
    bool startsInCurve = false;  ///< the chord before it is of the same curve
};

/// Chords that are joined end to end.
struct Track
{
    std::vector<Chord> chords;
    bool isClosed = false;
};

Track TrackOf(const Subpath& subpath, double tolerance, SegmentLimit& limit)
{
    Track track;
    track.isClosed = subpath.isClosed;
    for (const PathPiece& piece : subpath.pieces)
    {
        const int steps = StepsFor(piece, tolerance, limit);
        const std::size_t first = track.chords.size();
        DoublePoint from = piece.points[0];
        for (int i = 1; i <= steps; ++i)
        {
            const DoublePoint to =
                i == steps ? piece.points[3] : piece.PointAt(static_cast<double>(i) / steps);
            const double length = Length(to - from);
            if (length > 0)
            {
                const DoublePoint along = (to - from) / length;
                track.chords.push_back(
                    {from, to, along, along, along, length, track.chords.size() > first});
                from = to;
            }
        }
        if (track.chords.size() > first)
        {
            track.chords[first].startDirection = piece.StartDirection();
            track.chords.back().endDirection = piece.EndDirection();
        }
    }
    return track;
}

Track Reversed(const Track& track)
{
    Track reversed;
    reversed.isClosed = track.isClosed;
    for (std::size_t i = track.chords.size(); i-- > 0;)
    {
        const Chord& chord = track.chords[i];
        const std::size_t next = i + 1 == track.chords.size() ? 0 : i + 1;
        reversed.chords.push_back({chord.to, chord.from, chord.direction * -1.0,
                                   chord.endDirection * -1.0, chord.startDirection * -1.0,
                                   chord.length, track.chords[next].startsInCurve});
    }
    return reversed;
}

/// Cuts tracks into dashes.
class DashCutter
{
public:
    DashCutter(const StrokeStyle& style, SegmentLimit& limit) : dashes_(style.dashes), limit_(limit)
    {
        if (dashes_.size() % 2 != 0)
        {
            dashes_.insert(dashes_.end(), style.dashes.begin(), style.dashes.end());
        }
        total_ = std::accumulate(dashes_.begin(), dashes_.end(), 0.0);
        double skip = std::fmod(style.dashOffset, total_);
        skip += skip < 0 ? total_ : 0;
        while (skip > 0 && skip >= dashes_[first_])
        {
            skip -= dashes_[first_];
            first_ = (first_ + 1) % dashes_.size();
        }
        firstLength_ = dashes_[first_] - skip;
    }

    std::vector<Track> Cut(const Track& track) const
    {
        const double length =
            std::accumulate(track.chords.begin(), track.chords.end(), 0.0,
                            [](double sum, const Chord& chord) { return sum + chord.length; });
        limit_.Add(length / total_ * static_cast<double>(dashes_.size()));
        std::vector<Track> tracks;
        std::size_t index = first_;
        double left = firstLength_;
        const auto isDash = [&index] { return index % 2 == 0; };
        const bool startsInDash = isDash();
        if (startsInDash)
        {
            tracks.emplace_back();
        }
        for (const Chord& chord : track.chords)
        {
            double done = 0;
            while (chord.length - done > left)
            {
                if (isDash())
                {
                    AddPart(tracks.back(), chord, done, done + left);
                }
                done += left;
                index = (index + 1) % dashes_.size();
                left = dashes_[index];
                if (isDash())
                {
                    tracks.emplace_back();
                }
            }
            if (isDash())
            {
                AddPart(tracks.back(), chord, done, chord.length);
            }
            left -= chord.length - done;
        }
        if (track.isClosed && startsInDash && tracks.size() == 1)
        {
            tracks[0].isClosed = isDash();
        }
        else if (track.isClosed && startsInDash && isDash())
        {
            // The last dash runs on into the first one.
            std::vector<Chord>& last = tracks.back().chords;
            last.insert(last.end(), tracks[0].chords.begin(), tracks[0].chords.end());
            tracks[0] = std::move(tracks.back());
            tracks.pop_back();
        }
        return tracks;
    }

private:
    /// Adds the part of a chord between two lengths. A part without length is a dash of its own or
    /// nothing.
    static void AddPart(Track& track, const Chord& chord, double from, double to)
    {
        if (to <= from && !track.chords.empty())
        {
            return;
        }
        Chord part = chord;
        part.length = to - from;
        if (from > 0)
        {
            part.from = chord.from + chord.direction * from;
            part.startDirection = chord.direction;
            part.startsInCurve = false;
        }
        if (to < chord.length)
        {
            part.to = chord.from + chord.direction * to;
            part.endDirection = chord.direction;
        }
        track.chords.push_back(part);
    }

    std::vector<double> dashes_;  ///< dashes and gaps in turn, an even number of them
    SegmentLimit& limit_;
    double total_ = 0;
    std::size_t first_ = 0;  ///< the dash or gap in which each track starts
    double firstLength_ = 0;
};

DoublePoint LeftOf(const DoublePoint& direction)
{
    return {-direction.y, direction.x};
}

/// Builds the contours around tracks.
class Pen
{
public:
    Pen(const StrokeStyle& style, double tolerance, SegmentLimit& limit)
        : style_(style),
          radius_(style.width / 2),
          tolerance_(tolerance),
          limit_(limit),
          arcStep_(2 * std::acos(1 - std::min(1.0, tolerance / radius_)))
    {}

    void Draw(const Track& track, Contours& result)
    {
        const Track back = Reversed(track);
        AddLeftSide(track);
        if (track.isClosed)
        {
            result.push_back(std::move(contour_));
            contour_.clear();
            AddLeftSide(back);
        }
        else
        {
            AddCap(track.chords.back().to, track.chords.back().endDirection);
            AddLeftSide(back);
            AddCap(track.chords.front().from, track.chords.front().startDirection * -1.0);
        }
        result.push_back(std::move(contour_));
        contour_.clear();
    }

    /// A subpath without length: nothing but the caps, which point along the x axis.
    void DrawDot(const DoublePoint& at, Contours& result)
    {
        if (style_.cap == LineCap::Butt)
        {
            return;
        }
        for (const double way : {1.0, -1.0})
        {
            const DoublePoint direction = {way, 0};
            contour_.push_back(at + LeftOf(direction) * radius_);
            AddCap(at, direction);
        }
        result.push_back(std::move(contour_));
        contour_.clear();
    }

private:
    /// The border on the left of a track, from its start to its end.
    void AddLeftSide(const Track& track)
    {
        const std::vector<Chord>& chords = track.chords;
        limit_.Add(static_cast<double>(chords.size()));
        for (std::size_t i = 0; i < chords.size(); ++i)
        {
            const Chord& chord = chords[i];
            if (i == 0 && !track.isClosed)
            {
                AddTurn(chord.from, chord.startDirection, chord.direction, 0, true);
            }
            if (i + 1 < chords.size() || track.isClosed)
            {
                const Chord& next = chords[i + 1 == chords.size() ? 0 : i + 1];
                const double room = std::min(chord.length, next.length) / 2;
                const bool isBent =
                    chord.endDirection != chord.direction || next.startDirection != next.direction;
                if (isBent)
                {
                    AddTurn(chord.to, chord.direction, chord.endDirection, 0, true);
                }
                AddTurn(chord.to, chord.endDirection, next.startDirection, isBent ? 0 : room,
                        next.startsInCurve);
                if (isBent)
                {
                    AddTurn(chord.to, next.startDirection, next.direction, 0, true);
                }
            }
            else
            {
                AddTurn(chord.to, chord.direction, chord.endDirection, 0, true);
            }
        }
    }

    /// The border on the left of a point where the track turns from one direction to another.
    /// \param room the length of track, before and after the turn, of which no other turn cuts off
    /// a part
    void AddTurn(const DoublePoint& at, const DoublePoint& from, const DoublePoint& to, double room,
                 bool isSmooth)
    {
        const DoublePoint fromLeft = LeftOf(from) * radius_;
        const DoublePoint toLeft = LeftOf(to) * radius_;
        const double cross = Cross(from, to);
        const double dot = Dot(from, to);
        const bool isInner = cross > 0;
        const DoublePoint miter = (fromLeft + toLeft) / (1 + dot);
        bool meetsAtMiter = false;
        if (isInner)
        {
            meetsAtMiter = radius_ * cross <= room * (1 + dot);
        }
        else if (isSmooth)
        {
            meetsAtMiter = Length(miter) - radius_ <= tolerance_;
        }
        else if (style_.join == LineJoin::Miter)
        {
            meetsAtMiter = Length(miter) <= style_.miterLimit * radius_ * (1 + 1e-12);
        }
        if (cross == 0 && dot > 0)
        {
            contour_.push_back(at + fromLeft);
        }
        else if (meetsAtMiter)
        {
            contour_.push_back(at + miter);
        }
        else if (isInner)
        {
            // Through the point itself: the border is then that of the strips along the two parts
            // of the track and of the corner between them, added up.
            contour_.insert(contour_.end(), {at + fromLeft, at, at + toLeft});
        }
        else
        {
            contour_.push_back(at + fromLeft);
            if (isSmooth || style_.join == LineJoin::Round)
            {
                AddArc(at, fromLeft, std::atan2(-cross, dot));
            }
            contour_.push_back(at + toLeft);
        }
    }

    /// Corners of an arc around \p center, clockwise, without its ends.
    /// \param angle of the arc, from 0 to pi
    void AddArc(const DoublePoint& center, const DoublePoint& start, double angle)
    {
        const double steps = std::ceil(angle / arcStep_);
        limit_.Add(steps);
        for (int i = 1; i < static_cast<int>(steps); ++i)
        {
            const double turn = -angle * i / steps;
            const Affine rotation = {
                std::cos(turn), std::sin(turn), -std::sin(turn), std::cos(turn), 0, 0};
            contour_.push_back(center + rotation(start));
        }
    }

    /// The end of the track at \p at, from its left to its right.
    void AddCap(const DoublePoint& at, const DoublePoint& direction)
    {
        const DoublePoint left = LeftOf(direction) * radius_;
        const DoublePoint ahead = direction * radius_;
        contour_.push_back(at + left);
        if (style_.cap == LineCap::Round)
        {
            AddArc(at, left, std::numbers::pi);
        }
        else if (style_.cap == LineCap::Square)
        {
            contour_.insert(contour_.end(), {at + left + ahead, at - left + ahead});
        }
        contour_.push_back(at - left);
    }

    const StrokeStyle& style_;
    double radius_;
    double tolerance_;
    SegmentLimit& limit_;
    double arcStep_;  ///< the largest angle between two corners of an arc, in radians
    Contour contour_;
};

bool IsDashed(const StrokeStyle& style)
{
    return std::any_of(style.dashes.begin(), style.dashes.end(), [](double d) { return d > 0; });
}

}  // namespace

Contours StrokeOutline(const Path& path, const StrokeStyle& style, double tolerance,
                       SegmentLimit& limit)
{
    Contours result;
    if (!(style.width > 0))
    {
        return result;
    }
    Pen pen(style, tolerance, limit);
    for (const Subpath& subpath : path.Subpaths())
    {
        const Track track = TrackOf(subpath, tolerance, limit);
        if (track.chords.empty())
        {
            // A subpath of a single move draws nothing.
            if (!subpath.pieces.empty() || subpath.isClosed)
            {
                pen.DrawDot(subpath.start, result);
            }
        }
        else if (IsDashed(style))
        {
            for (const Track& dash : DashCutter(style, limit).Cut(track))
            {
                if (!dash.chords.empty())
                {
                    pen.Draw(dash, result);
                }
            }
        }
        else
        {
            pen.Draw(track, result);
        }
    }
    return result;
}

}  // namespace orvane::shapes
