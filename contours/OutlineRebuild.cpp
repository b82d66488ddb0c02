// SPDX-License-Identifier: MIT
#include "contours/OutlineRebuild.h"

#include "contours/OutlinePieces.h"
#include "contours/OutlineUnion.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvane::contours
{
namespace
{

/// A part of the border that follows one piece of the outline without a break.
struct Run
{
    int piece = -1;   ///< negative for a straight edge between vertices that share no piece
    double from = 0;  ///< the parameters on the piece; from > to when the run goes backward
    double to = 0;
    DoublePoint start;
    DoublePoint end;
};

/// Whether the second run starts where the first ends, on the same piece and in the same direction.
bool Continues(const Run& run, const Run& next)
{
    return run.piece >= 0 && run.piece == next.piece && std::fabs(run.to - next.from) < 1e-9 &&
           (run.to > run.from) == (next.to > next.from);
}

void AddPoint(NativeOutline& outline, const DoublePoint& place, bool onCurve)
{
    const NativePoint point = {CoordinateOf(place.x), CoordinateOf(place.y), onCurve};
    const bool isFirst = outline.points.size() == outline.FirstOf(outline.ends.size());
    if (isFirst || !(outline.points.back() == point))
    {
        outline.points.push_back(point);
    }
}

/// Makes a contour of the points that were added after the last contour. Drops these points instead
/// when they are only one or two points on the curve, which cannot enclose an area.
void CloseContour(NativeOutline& outline)
{
    const std::size_t first = outline.FirstOf(outline.ends.size());
    while (outline.points.size() > first + 1 && outline.points.back() == outline.points[first])
    {
        outline.points.pop_back();
    }
    const bool hasCurves =
        std::any_of(outline.points.begin() + static_cast<std::ptrdiff_t>(first),
                    outline.points.end(), [](const NativePoint& point) { return !point.onCurve; });
    if (outline.points.size() - first < 3 && !hasCurves)
    {
        outline.points.resize(first);
        return;
    }
    outline.CloseContour();
}

/// Turns a border of samples back into an outline, with the help of the pieces that were sampled.
class Rebuilder
{
public:
    explicit Rebuilder(const std::vector<std::vector<OutlinePiece>>& contours)
    {
        for (const std::vector<OutlinePiece>& contour : contours)
        {
            pieces_.insert(pieces_.end(), contour.begin(), contour.end());
        }
    }

    NativeOutline Rebuild(const OutlineUnion& border, bool keepCurves) const
    {
        NativeOutline outline;
        for (const std::vector<const UnionVertex*>& leftFilled : border.Loops())
        {
            if (IsSliver(leftFilled))
            {
                continue;
            }
            // Reverse the loop, so that the filled area lies on its right.
            std::vector<const UnionVertex*> loop(leftFilled.rbegin(), leftFilled.rend());
            if (keepCurves)
            {
                AddRuns(outline, RunsOf(loop));
            }
            else
            {
                for (const UnionVertex* const vertex : loop)
                {
                    AddPoint(outline, PlaceOf(*vertex), true);
                }
            }
            CloseContour(outline);
        }
        return outline;
    }

private:
    /// The piece with the given number. Tags and runs name pieces by number.
    const OutlinePiece& Piece(int number) const
    {
        return pieces_[static_cast<std::size_t>(number)];
    }

    /// The place of a border vertex on the original curves. A vertex at which two sampled edges
    /// cross lies a little beside the place where the two curves cross. Starting from the vertex,
    /// Newton's method finds the place where the curves cross.
    DoublePoint PlaceOf(const UnionVertex& vertex) const
    {
        const DoublePoint place = vertex.Point();
        if (vertex.tagCount != 2)
        {
            return place;
        }
        const auto [a, b] = std::pair(vertex.tags[0], vertex.tags[1]);
        const OutlinePiece& first = Piece(a.piece);
        const OutlinePiece& second = Piece(b.piece);
        double s = a.t;
        double t = b.t;
        constexpr int steps = 4;
        for (int step = 0; step < steps; ++step)
        {
            const DoublePoint gap = second.PointAt(t) - first.PointAt(s);
            const DoublePoint u = first.Derivative(s);
            const DoublePoint v = second.Derivative(t);
            const double turn = Cross(u, v);
            // Between curves that are nearly parallel here (less than 3 degrees apart), no crossing
            // can be found reliably.
            constexpr double minSine = 0.05;
            if (std::fabs(turn) < minSine * Length(u) * Length(v) || turn == 0)
            {
                return place;
            }
            s += Cross(gap, v) / turn;
            t += Cross(gap, u) / turn;
        }
        const DoublePoint found = first.PointAt(s);
        constexpr double maxMove = 2.0;  // units; a crossing farther away belongs to another vertex
        const bool isNear = s >= 0 && s <= 1 && t >= 0 && t <= 1 && Length(found - place) < maxMove;
        return isNear ? found : place;
    }

    /// The run of the edge between two vertices, on the piece that both vertices share. If they
    /// share several pieces, the run is on the piece on which their parameters are nearest to each
    /// other.
    Run RunBetween(const UnionVertex& from, const UnionVertex& to) const
    {
        Run run;
        run.start = PlaceOf(from);
        run.end = PlaceOf(to);
        double nearest = 2;
        for (std::size_t i = 0; i < from.tagCount; ++i)
        {
            for (std::size_t j = 0; j < to.tagCount; ++j)
            {
                const PieceTag& a = from.tags[i];
                const PieceTag& b = to.tags[j];
                if (a.piece == b.piece && a.t != b.t && std::fabs(b.t - a.t) < nearest)
                {
                    nearest = std::fabs(b.t - a.t);
                    run.piece = a.piece;
                    run.from = a.t;
                    run.to = b.t;
                }
            }
        }
        return run;
    }

    /// The runs of a loop, each as long as possible.
    std::vector<Run> RunsOf(const std::vector<const UnionVertex*>& loop) const
    {
        std::vector<Run> runs;
        for (std::size_t n = 0; n < loop.size(); ++n)
        {
            const Run run = RunBetween(*loop[n], *loop[n + 1 < loop.size() ? n + 1 : 0]);
            if (!runs.empty() && Continues(runs.back(), run))
            {
                runs.back().to = run.to;
                runs.back().end = run.end;
            }
            else
            {
                runs.push_back(run);
            }
        }
        if (runs.size() > 1 && Continues(runs.back(), runs.front()))
        {
            runs.front().from = runs.back().from;
            runs.front().start = runs.back().start;
            runs.pop_back();
        }
        return runs;
    }

    void AddRuns(NativeOutline& outline, const std::vector<Run>& runs) const
    {
        for (std::size_t n = 0; n < runs.size(); ++n)
        {
            const Run& run = runs[n];
            const Run& previous = runs[n > 0 ? n - 1 : runs.size() - 1];
            // A contour must start on the curve, so its first point is written even if it was only
            // implied in the original outline.
            if (n == 0 || !MeetAtImpliedPoint(previous, run))
            {
                AddPoint(outline, run.start, true);
            }
            if (run.piece >= 0 && Piece(run.piece).isCurved)
            {
                const DoublePoint control = Piece(run.piece).Blossom(run.from, run.to);
                const DoublePoint rounded = Rounded(control);
                // With a control point at one of its ends, a curve is a straight line, so the
                // control point is left out.
                if (!(rounded == Rounded(run.start)) && !(rounded == Rounded(run.end)))
                {
                    AddPoint(outline, control, false);
                }
            }
        }
    }

    /// Whether two runs are whole pieces that meet at an implied point of the original outline.
    bool MeetAtImpliedPoint(const Run& a, const Run& b) const
    {
        if (a.piece < 0 || b.piece < 0 || std::fabs(a.to - a.from) != 1 ||
            std::fabs(b.to - b.from) != 1)
        {
            return false;
        }
        const OutlinePiece& before = Piece(a.piece);
        const OutlinePiece& after = Piece(b.piece);
        return a.to > a.from
                   ? before.endsImplied && after.startsImplied && before.end == after.start
                   : before.startsImplied && after.endsImplied && before.start == after.end;
    }

    std::vector<OutlinePiece> pieces_;  ///< of all contours, in the order of their numbers
};

}  // namespace

RebuiltOutline RebuildOutline(const NativeOutline& outline, const RebuildSettings& settings)
{
    const std::vector<std::vector<OutlinePiece>> contours = PiecesOf(outline);
    OutlineUnion border;
    int number = 0;
    for (const std::vector<OutlinePiece>& contour : contours)
    {
        border.BeginContour();
        const int firstNumber = number;
        for (const OutlinePiece& piece : contour)
        {
            const int samples = piece.isCurved ? settings.samplesPerCurve : 1;
            for (int n = 0; n < samples; ++n)
            {
                const double t = static_cast<double>(n) / samples;
                const DoublePoint place = n == 0 ? piece.start : piece.PointAt(t);
                UnionVertex& vertex = border.AddVertex(place.x, place.y);
                vertex.AddTag({number, t});
                if (n == 0)
                {
                    // This vertex is also the end of the contour's previous piece.
                    const int lastNumber = firstNumber + static_cast<int>(contour.size()) - 1;
                    vertex.AddTag({number > firstNumber ? number - 1 : lastNumber, 1.0});
                }
            }
            ++number;
        }
    }
    if (!border.Unite())
    {
        return {};
    }
    return {Rebuilder(contours).Rebuild(border, settings.keepCurves), border.Area()};
}

}  // namespace orvane::contours
