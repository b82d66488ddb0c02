// SPDX-License-Identifier: MIT
#include "shapes/GridEdges.h"

#include "orvane/Error.h"
#include "shapes/PlaneHalving.h"

#include <cmath>

namespace orvane::shapes
{

namespace
{

/// A place at which an edge is to be cut.
struct Cut
{
    std::uint32_t edge;
    GridPoint place;
};

/// The places where edges meet.
struct Meetings
{
    std::vector<Cut> touches;    ///< ends of edges that lie on other edges
    std::vector<Cut> crossings;  ///< rounded to the grid; each for both of its edges
};

/// Whether both numbers are above 0, or both below.
bool HaveSameSign(std::int64_t a, std::int64_t b)
{
    return (a > 0 && b > 0) || (a < 0 && b < 0);
}

/// The pixel of the grid in which a coordinate lies. Pixels have their points in their middle and
/// their lower borders belong to them.
std::int32_t PixelOf(double coordinate)
{
    return static_cast<std::int32_t>(std::floor(coordinate + 0.5));
}

enum class SearchFor
{
    All,
    Any  ///< the search ends at the first meeting
};

class MeetingSearch
{
public:
    MeetingSearch(const std::vector<GridEdge>& edges, WorkLimit& work, SearchFor goal)
        : edges_(edges), work_(work), goal_(goal)
    {}

    Meetings Find()
    {
        using Indices = PlaneHalving::Indices;
        const std::vector<GridPoint> noPoints;
        PlaneHalving(edges_, noPoints, work_).ForEachPart([&](const Indices& part, const Indices&) {
            for (std::size_t i = 0; i < part.size(); ++i)
            {
                work_.Add(static_cast<std::int64_t>(part.size() - i));
                const GridBox box = BoxOf(edges_[part[i]]);
                for (std::size_t j = i + 1; j < part.size(); ++j)
                {
                    if (IsDone())
                    {
                        return;
                    }
                    if (box.Overlaps(BoxOf(edges_[part[j]])))
                    {
                        Compare(part[i], part[j]);
                    }
                }
            }
        });
        return std::move(meetings_);
    }

private:
    /// A crossing takes memory, and cuts edges into more edges, which are compared again.
    static constexpr std::int64_t stepsOfCrossing = 400;
    /// An end on another edge takes memory.
    static constexpr std::int64_t stepsOfTouch = 100;

    bool IsDone() const
    {
        return goal_ == SearchFor::Any &&
               !(meetings_.touches.empty() && meetings_.crossings.empty());
    }

    void Compare(std::uint32_t first, std::uint32_t second)
    {
        const GridEdge& a = edges_[first];
        const GridEdge& b = edges_[second];
        const std::int64_t fromSide = Turn(a.from, a.to, b.from);
        const std::int64_t toSide = Turn(a.from, a.to, b.to);
        const std::int64_t ownFromSide = Turn(b.from, b.to, a.from);
        const std::int64_t ownToSide = Turn(b.from, b.to, a.to);
        if (HaveSameSign(fromSide, toSide) || HaveSameSign(ownFromSide, ownToSide))
        {
            return;
        }
        if (fromSide != 0 && toSide != 0 && ownFromSide != 0 && ownToSide != 0)
        {
            work_.Add(stepsOfCrossing);
            const double t = static_cast<double>(fromSide) /
                             (static_cast<double>(fromSide) - static_cast<double>(toSide));
            const GridPoint way = b.to - b.from;
            const GridPoint place = {PixelOf(b.from.x + t * way.x), PixelOf(b.from.y + t * way.y)};
            meetings_.crossings.push_back({first, place});
            meetings_.crossings.push_back({second, place});
            return;
        }
        // An end of one edge lies on the other, or both lie on one line.
        CutAtEnd(first, b.from, fromSide);
        CutAtEnd(first, b.to, toSide);
        CutAtEnd(second, a.from, ownFromSide);
        CutAtEnd(second, a.to, ownToSide);
    }

    void CutAtEnd(std::uint32_t edge, const GridPoint& end, std::int64_t side)
    {
        if (side == 0 && BoxOf(edges_[edge]).Contains(end) && end != edges_[edge].from &&
            end != edges_[edge].to)
        {
            work_.Add(stepsOfTouch);
            meetings_.touches.push_back({edge, end});
        }
    }

    const std::vector<GridEdge>& edges_;
    WorkLimit& work_;
    SearchFor goal_;
    Meetings meetings_;
};

/// Whether an edge has a point in the pixel around a point. Of the pixel's border, the left and the
/// lower sides belong to it, without their other ends.
bool PassesThrough(const GridEdge& edge, const GridPoint& pixel)
{
    if (!BoxOf(edge).Contains(pixel))
    {
        // A pixel reaches half a step beyond its point, where no other point lies.
        return false;
    }
    // In half steps, the corners have whole coordinates.
    const GridPoint from = edge.from * 2;
    const GridPoint to = edge.to * 2;
    const std::int64_t lowLeft = Turn(from, to, {2 * pixel.x - 1, 2 * pixel.y - 1});
    const std::int64_t lowRight = Turn(from, to, {2 * pixel.x + 1, 2 * pixel.y - 1});
    const std::int64_t highLeft = Turn(from, to, {2 * pixel.x - 1, 2 * pixel.y + 1});
    const std::int64_t highRight = Turn(from, to, {2 * pixel.x + 1, 2 * pixel.y + 1});
    const auto [least, most] = std::minmax({lowLeft, lowRight, highLeft, highRight});
    return (least < 0 && most > 0) || lowLeft == 0;
}

/// Adds the cuts that take each edge to the middle of every pixel that it passes through and that
/// has the end of an edge or a crossing (Hobby, "Practical segment intersection with finite
/// precision output", 1999). Cutting edges at their crossings alone would not do: the cut edges are
/// bent a little, and may cross others that pass nearby.
void AddCutsAtPixels(const std::vector<GridEdge>& edges, std::vector<Cut>& cuts, WorkLimit& work)
{
    std::vector<GridPoint> pixels;
    for (const GridEdge& edge : edges)
    {
        pixels.insert(pixels.end(), {edge.from, edge.to});
    }
    for (const Cut& crossing : cuts)
    {
        pixels.push_back(crossing.place);
    }
    std::sort(pixels.begin(), pixels.end(), ComesBefore);
    pixels.erase(std::unique(pixels.begin(), pixels.end()), pixels.end());
    using Indices = PlaneHalving::Indices;
    PlaneHalving(edges, pixels, work).ForEachPart([&](const Indices& part, const Indices& points) {
        work.Add(static_cast<std::int64_t>(part.size() * points.size()));
        for (const std::uint32_t edge : part)
        {
            for (const std::uint32_t point : points)
            {
                if (PassesThrough(edges[edge], pixels[point]))
                {
                    cuts.push_back({edge, pixels[point]});
                }
            }
        }
    });
}

/// How far along an edge a point lies, in squared steps of the grid.
std::int64_t PlaceAlong(const GridEdge& edge, const GridPoint& point)
{
    return (std::int64_t{edge.to.x} - edge.from.x) * (std::int64_t{point.x} - edge.from.x) +
           (std::int64_t{edge.to.y} - edge.from.y) * (std::int64_t{point.y} - edge.from.y);
}

/// Orders the cuts by their edges and, on one edge, from its start to its end. Each stays once, and
/// none at the end of its edge.
void SortCuts(std::vector<Cut>& cuts, const std::vector<GridEdge>& edges)
{
    std::erase_if(cuts, [&](const Cut& cut) {
        return cut.place == edges[cut.edge].from || cut.place == edges[cut.edge].to;
    });
    std::sort(cuts.begin(), cuts.end(), [&](const Cut& a, const Cut& b) {
        if (a.edge != b.edge)
        {
            return a.edge < b.edge;
        }
        const std::int64_t aAlong = PlaceAlong(edges[a.edge], a.place);
        const std::int64_t bAlong = PlaceAlong(edges[b.edge], b.place);
        return aAlong != bAlong ? aAlong < bAlong : ComesBefore(a.place, b.place);
    });
    const auto isSame = [](const Cut& a, const Cut& b) {
        return a.edge == b.edge && a.place == b.place;
    };
    cuts.erase(std::unique(cuts.begin(), cuts.end(), isSame), cuts.end());
}

/// The edges after the cuts, which are ordered by SortCuts.
std::vector<GridEdge> Divided(const std::vector<GridEdge>& edges, const std::vector<Cut>& cuts)
{
    std::vector<GridEdge> divided;
    divided.reserve(edges.size() + cuts.size());
    auto cut = cuts.begin();
    for (std::uint32_t i = 0; i < edges.size(); ++i)
    {
        const GridEdge& edge = edges[i];
        GridPoint from = edge.from;
        const auto add = [&](const GridPoint& to) {
            // Rounding can turn a nearly vertical part round.
            divided.push_back(ComesBefore(from, to) ? GridEdge{from, to, edge.line, edge.sign}
                                                    : GridEdge{to, from, edge.line, -edge.sign});
            from = to;
        };
        for (; cut != cuts.end() && cut->edge == i; ++cut)
        {
            add(cut->place);
        }
        add(edge.to);
    }
    return divided;
}

/// Leaves each edge once where several lie between the same points.
void EraseRepeated(std::vector<GridEdge>& edges)
{
    std::sort(edges.begin(), edges.end(), [](const GridEdge& a, const GridEdge& b) {
        return a.from != b.from ? ComesBefore(a.from, b.from) : ComesBefore(a.to, b.to);
    });
    const auto isSame = [](const GridEdge& a, const GridEdge& b) {
        return a.from == b.from && a.to == b.to;
    };
    edges.erase(std::unique(edges.begin(), edges.end(), isSame), edges.end());
}

}  // namespace

WorkLimit::WorkLimit(std::string place, std::int64_t maxSteps)
    : place_(std::move(place)), maxSteps_(maxSteps)
{}

void WorkLimit::Fail() const
{
    throw Error(place_, "a picture that takes more than " + std::to_string(maxSteps_) + " steps",
                "one with fewer crossings and repetitions");
}

void CutWhereTheyMeet(std::vector<GridEdge>& edges, WorkLimit& work)
{
    for (;;)
    {
        Meetings meetings = MeetingSearch(edges, work, SearchFor::All).Find();
        const bool anyCross = !meetings.crossings.empty();
        std::vector<Cut>& cuts = anyCross ? meetings.crossings : meetings.touches;
        if (anyCross)
        {
            AddCutsAtPixels(edges, cuts, work);
        }
        work.Add(static_cast<std::int64_t>(edges.size() + cuts.size()));
        SortCuts(cuts, edges);
        edges = Divided(edges, cuts);
        if (!anyCross)
        {
            // Cuts at ends that lie exactly on an edge bend nothing.
            return;
        }
    }
}

bool DoAnyMeet(const std::vector<GridEdge>& edges, WorkLimit& work)
{
    std::vector<GridEdge> each = edges;
    EraseRepeated(each);
    const Meetings meetings = MeetingSearch(edges, work, SearchFor::Any).Find();
    return each.size() < edges.size() || !meetings.touches.empty() || !meetings.crossings.empty();
}

}  // namespace orvane::shapes
