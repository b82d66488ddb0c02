// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/OutlineRepair.h"

#include "platform/posix/fonts/OutlineTrial.h"
#include "platform/posix/fonts/OutlineUnion.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace posix
{
namespace
{

struct Place
{
    double x = 0;
    double y = 0;

    Place operator+(const Place& other) const { return {x + other.x, y + other.y}; }
    Place operator-(const Place& other) const { return {x - other.x, y - other.y}; }
    Place operator*(double factor) const { return {x * factor, y * factor}; }
    bool operator==(const Place&) const = default;
};

double Cross(const Place& a, const Place& b)
{
    return a.x * b.y - a.y * b.x;
}

double Length(const Place& a)
{
    return std::hypot(a.x, a.y);
}

/// A straight or curved piece of a contour; a straight one has its control point midway.
struct Piece
{
    Place start;
    Place control;
    Place end;
    bool curved = false;
    bool endsImplied = false;  ///< midway between two control points
    bool startsImplied = false;

    Place At(double t) const { return Blossom(t, t); }
    /// The control point of the part between two parameters.
    Place Blossom(double s, double t) const
    {
        return start * ((1 - s) * (1 - t)) + control * (s * (1 - t) + t * (1 - s)) + end * (s * t);
    }
    Place Slope(double t) const
    {
        return (control - start) * (2 * (1 - t)) + (end - control) * (2 * t);
    }
};

std::vector<std::vector<Piece>> PiecesOf(const NativeOutline& outline)
{
    const auto whole = [](const NativePoint& point) {
        return Place{static_cast<double>(point.x >> 6), static_cast<double>(point.y >> 6)};
    };
    std::vector<std::vector<Piece>> contours;
    for (std::size_t contour = 0; contour < outline.ends.size(); ++contour)
    {
        const std::size_t first = outline.FirstOf(contour);
        const std::size_t end = outline.ends[contour];
        std::vector<Piece>& pieces = contours.emplace_back();
        Place last = whole(outline.points[end - 1]);
        const auto straightTo = [&](const Place& place) {
            if (!(place == last))
            {
                pieces.push_back({last, (last + place) * 0.5, place});
                last = place;
            }
        };
        bool implied = false;
        for (std::size_t n = first; n < end; ++n)
        {
            const Place place = whole(outline.points[n]);
            if (outline.points[n].onCurve)
            {
                straightTo(place);
                continue;
            }
            // The last point of a contour is on the curve.
            const Place next = whole(outline.points[n + 1]);
            const bool endsImplied = !outline.points[n + 1].onCurve;
            const Place arrival = endsImplied ? (place + next) * 0.5 : next;
            pieces.push_back({last, place, arrival, true, endsImplied, implied});
            last = arrival;
            implied = endsImplied;
            n += endsImplied ? 0 : 1;
        }
    }
    return contours;
}

/// One run of the border along one piece.
struct Run
{
    int piece = -1;  ///< below 0: straight, between vertices that share none
    double from = 0;
    double to = 0;
    Place start;
    Place end;
};

/// Rebuilds outlines from sampled ones.
class Rebuilder
{
public:
    explicit Rebuilder(const std::vector<std::vector<Piece>>& contours)
    {
        for (const std::vector<Piece>& contour : contours)
        {
            pieces_.insert(pieces_.end(), contour.begin(), contour.end());
        }
    }

    /// \param keepCurves false for straight lines between the samples
    NativeOutline Rebuild(const OutlineUnion& border, bool keepCurves)
    {
        NativeOutline outline;
        for (const std::vector<const UnionVertex*>& border : border.Loops())
        {
            if (IsSliver_(border))
            {
                continue;
            }
            // What is filled is to lie on the right.
            std::vector<const UnionVertex*> loop(border.rbegin(), border.rend());
            if (keepCurves)
            {
                AddRuns_(outline, RunsOf_(loop));
            }
            else
            {
                for (const UnionVertex* const vertex : loop)
                {
                    AddPoint_(outline, PlaceOf_(*vertex), true);
                }
            }
            CloseContour_(outline);
        }
        return outline;
    }

private:
    /// Thinner than this many units on average, a loop is what rounding left between two edges.
    static constexpr double sliver_ = 1.0;

    static bool IsSliver_(const std::vector<const UnionVertex*>& loop)
    {
        double length = 0;
        for (std::size_t n = 0; n < loop.size(); ++n)
        {
            length +=
                Length(RawPlaceOf_(*loop[n]) - RawPlaceOf_(*loop[n + 1 < loop.size() ? n + 1 : 0]));
        }
        return loop.size() < 3 || std::fabs(SignedArea(loop)) < sliver_ * length / 2;
    }

    static Place RawPlaceOf_(const UnionVertex& vertex)
    {
        return {vertex.place[0], vertex.place[1]};
    }

    /// Where two curves cross, or the vertex' own place. The sampled edges cross a little beside.
    Place PlaceOf_(const UnionVertex& vertex) const
    {
        const Place place = RawPlaceOf_(vertex);
        if (vertex.tagCount != 2)
        {
            return place;
        }
        const auto [a, b] = std::pair(vertex.tags[0], vertex.tags[1]);
        const Piece& first = pieces_[static_cast<std::size_t>(a.piece)];
        const Piece& second = pieces_[static_cast<std::size_t>(b.piece)];
        double s = a.t;
        double t = b.t;
        constexpr int steps = 4;
        for (int step = 0; step < steps; ++step)
        {
            const Place gap = second.At(t) - first.At(s);
            const Place u = first.Slope(s);
            const Place v = second.Slope(t);
            const double turn = Cross(u, v);
            // Curves that graze each other have no place to be found.
            if (std::fabs(turn) < 0.05 * Length(u) * Length(v) || turn == 0)
            {
                return place;
            }
            s += Cross(gap, v) / turn;
            t += Cross(gap, u) / turn;
        }
        const Place found = first.At(s);
        constexpr double reach = 2.0;
        const bool near = s >= 0 && s <= 1 && t >= 0 && t <= 1 && Length(found - place) < reach;
        return near ? found : place;
    }

    static Place Rounded_(const Place& place) { return {std::round(place.x), std::round(place.y)}; }

    /// The piece that an edge of the border lies on, as a run of its own.
    Run RunBetween_(const UnionVertex& from, const UnionVertex& to) const
    {
        Run run;
        run.start = PlaceOf_(from);
        run.end = PlaceOf_(to);
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

    /// The border's edges, those of one piece that follow each other joined.
    std::vector<Run> RunsOf_(const std::vector<const UnionVertex*>& loop) const
    {
        std::vector<Run> runs;
        for (std::size_t n = 0; n < loop.size(); ++n)
        {
            const Run run = RunBetween_(*loop[n], *loop[n + 1 < loop.size() ? n + 1 : 0]);
            if (!runs.empty() && Continues_(runs.back(), run))
            {
                runs.back().to = run.to;
                runs.back().end = run.end;
            }
            else
            {
                runs.push_back(run);
            }
        }
        if (runs.size() > 1 && Continues_(runs.back(), runs.front()))
        {
            runs.front().from = runs.back().from;
            runs.front().start = runs.back().start;
            runs.pop_back();
        }
        return runs;
    }

    static bool Continues_(const Run& run, const Run& next)
    {
        return run.piece >= 0 && run.piece == next.piece && std::fabs(run.to - next.from) < 1e-9 &&
               (run.to > run.from) == (next.to > next.from);
    }

    void AddRuns_(NativeOutline& outline, const std::vector<Run>& runs) const
    {
        for (std::size_t n = 0; n < runs.size(); ++n)
        {
            const Run& run = runs[n];
            const Run& previous = runs[n > 0 ? n - 1 : runs.size() - 1];
            // The first point is written in any case: a contour starts on the curve.
            if (n == 0 || !MeetMidway_(previous, run))
            {
                AddPoint_(outline, run.start, true);
            }
            if (run.piece >= 0 && pieces_[static_cast<std::size_t>(run.piece)].curved)
            {
                const Place control =
                    pieces_[static_cast<std::size_t>(run.piece)].Blossom(run.from, run.to);
                const Place rounded = Rounded_(control);
                if (!(rounded == Rounded_(run.start)) && !(rounded == Rounded_(run.end)))
                {
                    AddPoint_(outline, control, false);
                }
            }
        }
    }

    /// Whether two runs are whole pieces between which the outline has no point of its own.
    bool MeetMidway_(const Run& a, const Run& b) const
    {
        if (a.piece < 0 || b.piece < 0 || std::fabs(a.to - a.from) != 1 ||
            std::fabs(b.to - b.from) != 1)
        {
            return false;
        }
        const Piece& before = pieces_[static_cast<std::size_t>(a.piece)];
        const Piece& after = pieces_[static_cast<std::size_t>(b.piece)];
        return a.to > a.from
                   ? before.endsImplied && after.startsImplied && before.end == after.start
                   : before.startsImplied && after.endsImplied && before.start == after.end;
    }

    static void AddPoint_(NativeOutline& outline, const Place& place, bool onCurve)
    {
        const Place rounded = Rounded_(place);
        const NativePoint point = {static_cast<FT_Pos>(rounded.x) * 64,
                                   static_cast<FT_Pos>(rounded.y) * 64, onCurve};
        const bool first = outline.points.size() == outline.FirstOf(outline.ends.size());
        if (first || !(outline.points.back() == point))
        {
            outline.points.push_back(point);
        }
    }

    static void CloseContour_(NativeOutline& outline)
    {
        const std::size_t first = outline.FirstOf(outline.ends.size());
        while (outline.points.size() > first + 1 && outline.points.back() == outline.points[first])
        {
            outline.points.pop_back();
        }
        // A contour of two points on the curve has no inside.
        const bool curved =
            std::any_of(outline.points.begin() + static_cast<std::ptrdiff_t>(first),
                        outline.points.end(), [](const NativePoint& p) { return !p.onCurve; });
        if (outline.points.size() - first < 3 && !curved)
        {
            outline.points.resize(first);
            return;
        }
        outline.Close();
    }

    std::vector<Piece> pieces_;
};

struct Attempt
{
    int samples;  ///< of each curved piece
    bool keepCurves;
};

/// A rebuilt outline and the area that it should fill.
struct Rebuilt
{
    NativeOutline outline;
    double area = -1;  ///< below 0 when the tessellator gave up
};

/// Samples, unites and rebuilds.
Rebuilt Unite(const NativeOutline& outline, const Attempt& attempt)
{
    const std::vector<std::vector<Piece>> contours = PiecesOf(outline);
    OutlineUnion border;
    int number = 0;
    for (const std::vector<Piece>& contour : contours)
    {
        border.BeginContour();
        const int firstNumber = number;
        for (const Piece& piece : contour)
        {
            const int samples = piece.curved ? attempt.samples : 1;
            for (int n = 0; n < samples; ++n)
            {
                const double t = static_cast<double>(n) / samples;
                const Place place = n == 0 ? piece.start : piece.At(t);
                UnionVertex& vertex = border.AddVertex(place.x, place.y);
                vertex.Add({number, t});
                if (n == 0)
                {
                    const auto last = firstNumber + static_cast<int>(contour.size()) - 1;
                    vertex.Add({number > firstNumber ? number - 1 : last, 1.0});
                }
            }
            ++number;
        }
    }
    if (!border.Unite())
    {
        return {};
    }
    return {Rebuilder(contours).Rebuild(border, attempt.keepCurves), border.Area()};
}

/// Turned where need be, the outline when it passes the trial and fills the area that it should.
std::optional<NativeOutline> Passed(NativeOutline outline, int unitsPerEm, double area)
{
    if (area < 0)
    {
        return std::nullopt;
    }
    OutlineVerdict verdict = TryOutline(outline, unitsPerEm);
    if (verdict.fills && !verdict.wrongWay.empty())
    {
        outline = Reversed(outline, verdict.wrongWay);
        verdict = TryOutline(outline, unitsPerEm);
    }
    if (!verdict.fills || !verdict.wrongWay.empty())
    {
        return std::nullopt;
    }
    // Polygons of few samples fill less than the curves, by no more than this.
    constexpr double share = 0.03;
    const double em = unitsPerEm;
    const double filled = TurnedArea(FlattenAndSeparate(outline, unitsPerEm));
    const bool whole = std::fabs(filled - area) <= share * area + 0.0001 * em * em;
    return whole ? std::optional(std::move(outline)) : std::nullopt;
}

/// The outline with the corners that lie at one place drawn back into themselves, so that contours
/// that touch keep apart: the library would shift them along their normals, into each other.
NativeOutline TouchingCornersApart(const NativeOutline& outline, double distance)
{
    // A contour's last point may repeat its first.
    const auto ringEnd = [&](std::size_t contour) {
        const std::size_t first = outline.FirstOf(contour);
        const std::size_t end = outline.ends[contour];
        return outline.points[end - 1] == outline.points[first] ? end - 1 : end;
    };
    std::map<std::pair<FT_Pos, FT_Pos>, int> corners;
    for (std::size_t contour = 0; contour < outline.ends.size(); ++contour)
    {
        for (std::size_t n = outline.FirstOf(contour); n < ringEnd(contour); ++n)
        {
            corners[{outline.points[n].x, outline.points[n].y}] += outline.points[n].onCurve;
        }
    }
    const auto at = [&](std::size_t index) {
        const NativePoint& point = outline.points[index];
        return Place{static_cast<double>(point.x >> 6), static_cast<double>(point.y >> 6)};
    };
    NativeOutline apart = outline;
    for (std::size_t contour = 0; contour < outline.ends.size(); ++contour)
    {
        const std::size_t first = outline.FirstOf(contour);
        const std::size_t end = ringEnd(contour);
        for (std::size_t n = first; n < end; ++n)
        {
            const NativePoint& point = outline.points[n];
            const Place back = at(n > first ? n - 1 : end - 1) - at(n);
            const Place on = at(n + 1 < end ? n + 1 : first) - at(n);
            if (!point.onCurve || corners[{point.x, point.y}] < 2 || Length(back) == 0 ||
                Length(on) == 0)
            {
                continue;
            }
            // Halfway between the two edges, on the side on which they are nearer to each other.
            const Place inward = back * (1 / Length(back)) + on * (1 / Length(on));
            constexpr double nearlyStraight = 0.1;
            if (Length(inward) > nearlyStraight)
            {
                const Place moved = at(n) + inward * (distance / Length(inward));
                apart.points[n].x = static_cast<FT_Pos>(std::round(moved.x)) * 64;
                apart.points[n].y = static_cast<FT_Pos>(std::round(moved.y)) * 64;
            }
        }
        apart.points[outline.ends[contour] - 1] =
            end < outline.ends[contour] ? apart.points[first] : apart.points[end - 1];
    }
    return apart;
}

}  // namespace

std::optional<NativeOutline> RepairOutline(const NativeOutline& outline, int unitsPerEm)
{
    constexpr Attempt usual = {10, true};
    const Rebuilt once = Unite(outline, usual);
    if (auto repaired = Passed(once.outline, unitsPerEm, once.area))
    {
        return repaired;
    }
    for (const Attempt& attempt : {Attempt{20, true}, Attempt{5, true}})
    {
        const Rebuilt rebuilt = Unite(outline, attempt);
        if (auto repaired = Passed(rebuilt.outline, unitsPerEm, rebuilt.area))
        {
            return repaired;
        }
    }
    // What rounding made cross again comes apart the second time.
    if (auto repaired = Passed(Unite(once.outline, usual).outline, unitsPerEm, once.area))
    {
        return repaired;
    }
    for (const double distance : {1.5, 3.0})
    {
        if (auto repaired =
                Passed(TouchingCornersApart(once.outline, distance), unitsPerEm, once.area))
        {
            return repaired;
        }
    }
    for (const Attempt& attempt : {Attempt{5, false}, Attempt{10, false}, Attempt{3, false}})
    {
        Rebuilt straight = Unite(outline, attempt);
        for (int pass = 0; pass < 3; ++pass)
        {
            if (auto repaired = Passed(straight.outline, unitsPerEm, straight.area))
            {
                return repaired;
            }
            straight.outline = Unite(straight.outline, attempt).outline;
        }
    }
    return std::nullopt;
}

}  // namespace posix
