// SPDX-License-Identifier: MIT
#include "shapes/Layers.h"

#include "shapes/AreaBorders.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>

namespace orvane::shapes
{

namespace
{

/// How often the contours of a layer wind around a place. In a list of edges: how much more often
/// above the edge than below it.
struct Winding
{
    int layer;
    std::int32_t count;
};

/// Windings of several layers in the order of the layers. No count is 0.
using Windings = std::vector<Winding>;

/// Adds two lists of windings.
void Add(const Windings& a, const Winding* b, const Winding* bEnd, Windings& sum)
{
    sum.clear();
    auto at = a.begin();
    while (at != a.end() || b != bEnd)
    {
        if (b == bEnd || (at != a.end() && at->layer < b->layer))
        {
            sum.push_back(*at++);
        }
        else if (at == a.end() || b->layer < at->layer)
        {
            sum.push_back(*b++);
        }
        else
        {
            if (at->count + b->count != 0)
            {
                sum.push_back({at->layer, at->count + b->count});
            }
            ++at;
            ++b;
        }
    }
}

/// All edges of the layers, each place once, with the windings that change there.
class EdgeTable
{
public:
    struct Entry
    {
        GridPoint from;
        GridPoint to;
        Winding winding;
    };

    EdgeTable(const std::vector<Layer>& layers, double step)
    {
        const auto onGrid = [step](const contours::DoublePoint& point) {
            return GridPoint{static_cast<std::int32_t>(std::lround(point.x / step)),
                             static_cast<std::int32_t>(std::lround(point.y / step))};
        };
        std::vector<Entry> entries;
        for (std::size_t layer = 0; layer < layers.size(); ++layer)
        {
            for (const Contour& contour : layers[layer].contours)
            {
                GridPoint last = contour.empty() ? GridPoint() : onGrid(contour.back());
                for (const contours::DoublePoint& corner : contour)
                {
                    const GridPoint point = onGrid(corner);
                    AddEntry(entries, last, point, static_cast<int>(layer));
                    last = point;
                }
            }
        }
        Collect(std::move(entries));
    }

    void CutEdges(WorkLimit& work)
    {
        CutWhereTheyMeet(edges_, work);
        std::vector<Entry> entries;
        for (const GridEdge& edge : edges_)
        {
            for (std::size_t i = firsts_[edge.line]; i < firsts_[edge.line + 1]; ++i)
            {
                entries.push_back(
                    {edge.from, edge.to, {windings_[i].layer, edge.sign * windings_[i].count}});
            }
            work.Add(static_cast<std::int64_t>(firsts_[edge.line + 1] - firsts_[edge.line]));
        }
        Collect(std::move(entries));
    }

    const std::vector<GridEdge>& Edges() const { return edges_; }
    const Winding* FirstWinding(const GridEdge& edge) const
    {
        return windings_.data() + firsts_[edge.line];
    }
    const Winding* EndOfWindings(const GridEdge& edge) const
    {
        return windings_.data() + firsts_[edge.line + 1];
    }

private:
    /// The left of an edge lies above it when it runs to the right.
    static void AddEntry(std::vector<Entry>& entries, const GridPoint& from, const GridPoint& to,
                         int layer)
    {
        if (ComesBefore(from, to))
        {
            entries.push_back({from, to, {layer, 1}});
        }
        else if (ComesBefore(to, from))
        {
            entries.push_back({to, from, {layer, -1}});
        }
    }

    static bool IsLess(const Entry& a, const Entry& b)
    {
        if (a.from != b.from)
        {
            return ComesBefore(a.from, b.from);
        }
        return a.to != b.to ? ComesBefore(a.to, b.to) : a.winding.layer < b.winding.layer;
    }

    /// Makes the table of all entries. Edges whose windings add up to zero vanish.
    void Collect(std::vector<Entry> entries)
    {
        std::sort(entries.begin(), entries.end(), IsLess);
        edges_.clear();
        windings_.clear();
        firsts_.assign(1, 0);
        for (std::size_t first = 0; first < entries.size();)
        {
            const GridPoint from = entries[first].from;
            const GridPoint to = entries[first].to;
            std::size_t end = first;
            for (; end < entries.size() && entries[end].from == from && entries[end].to == to;)
            {
                Winding winding = {entries[end].winding.layer, 0};
                for (; end < entries.size() && entries[end].from == from && entries[end].to == to &&
                       entries[end].winding.layer == winding.layer;
                     ++end)
                {
                    winding.count += entries[end].winding.count;
                }
                if (winding.count != 0)
                {
                    windings_.push_back(winding);
                }
            }
            if (windings_.size() > firsts_.back())
            {
                edges_.push_back({from, to, static_cast<std::uint32_t>(edges_.size())});
                firsts_.push_back(windings_.size());
            }
            first = end;
        }
    }

    std::vector<GridEdge> edges_;      ///< line is the edge's index
    std::vector<Winding> windings_;    ///< of all edges, one after the other
    std::vector<std::size_t> firsts_;  ///< for each edge, the index of its first winding
};

/// Tells the colour of a place from its windings.
class ColorFinder
{
public:
    ColorFinder(const std::vector<Layer>& layers, const std::vector<Clip>& clips)
        : layers_(layers), clips_(clips)
    {}

    /// The colour of the topmost layer that fills the place; -1 when none does.
    int ColorOf(const Windings& windings) const
    {
        for (auto at = windings.rbegin(); at != windings.rend(); ++at)
        {
            const Layer& layer = layers_[at->layer];
            if (layer.color >= 0 && Fills(*at) && IsInside(layer.clip, windings))
            {
                return layer.color;
            }
        }
        return -1;
    }

private:
    bool Fills(const Winding& winding) const
    {
        return layers_[winding.layer].rule == FillRule::NonZero || winding.count % 2 != 0;
    }

    bool IsInside(int clip, const Windings& windings) const
    {
        for (; clip >= 0; clip = clips_[clip].outer)
        {
            const int first = clips_[clip].firstLayer;
            const int end = first + clips_[clip].layerCount;
            auto at = std::lower_bound(windings.begin(), windings.end(), first,
                                       [](const Winding& w, int index) { return w.layer < index; });
            while (at != windings.end() && at->layer < end && !Fills(*at))
            {
                ++at;
            }
            if (at == windings.end() || at->layer >= end)
            {
                return false;
            }
        }
        return true;
    }

    const std::vector<Layer>& layers_;
    const std::vector<Clip>& clips_;
};

/// Walks over the plane from left to right and keeps, from low to high, the edges that cross the
/// vertical line at which it is.
class Sweep
{
public:
    Sweep(const EdgeTable& table, const ColorFinder& colors, WorkLimit& work)
        : table_(table),
          colors_(colors),
          work_(work),
          above_(table.Edges().size()),
          places_(table.Edges().size())
    {}

    /// Calls \p use with each edge and the colours below and above it.
    template <typename Use>
    void Run(Use use)
    {
        const std::vector<GridEdge>& edges = table_.Edges();
        std::vector<std::uint32_t> byEnd(edges.size());
        for (std::uint32_t i = 0; i < byEnd.size(); ++i)
        {
            byEnd[i] = i;
        }
        std::sort(byEnd.begin(), byEnd.end(),
                  [&](auto a, auto b) { return ComesBefore(edges[a].to, edges[b].to); });
        auto ending = byEnd.begin();
        for (std::uint32_t first = 0; first < edges.size();)
        {
            const GridPoint at = edges[first].from;
            for (; ending != byEnd.end() && !ComesBefore(at, edges[*ending].to); ++ending)
            {
                crossed_.erase(places_[*ending]);
                above_[*ending] = {};
            }
            std::uint32_t end = first;
            for (; end < edges.size() && edges[end].from == at; ++end)
            {
                places_[end] = crossed_.insert(end).first;
            }
            // The edges that start here lie side by side.
            auto place = places_[first];
            for (std::uint32_t i = first + 1; i < end; ++i)
            {
                place = crossed_.key_comp()(*places_[i], *place) ? places_[i] : place;
            }
            for (std::uint32_t i = first; i < end; ++i, ++place)
            {
                static const Windings outside;
                const Windings& below =
                    place == crossed_.begin() ? outside : above_[*std::prev(place)];
                const GridEdge& edge = edges[*place];
                Add(below, table_.FirstWinding(edge), table_.EndOfWindings(edge), above_[*place]);
                work_.Add(static_cast<std::int64_t>(below.size() + above_[*place].size()));
                use(edge, colors_.ColorOf(below), colors_.ColorOf(above_[*place]));
            }
            first = end;
        }
    }

private:
    /// Orders edges that cross the same vertical line, and do not cross each other, from low to
    /// high.
    struct IsLower
    {
        const std::vector<GridEdge>* edges;

        bool operator()(std::uint32_t a, std::uint32_t b) const
        {
            const GridEdge& first = (*edges)[a];
            const GridEdge& second = (*edges)[b];
            if (first.from == second.from)
            {
                return Turn(first.from, first.to, second.to) > 0;
            }
            return ComesBefore(first.from, second.from)
                       ? Turn(first.from, first.to, second.from) > 0
                       : Turn(second.from, second.to, first.from) < 0;
        }
    };
    using Crossed = std::set<std::uint32_t, IsLower>;

    const EdgeTable& table_;
    const ColorFinder& colors_;
    WorkLimit& work_;
    Crossed crossed_{IsLower{&table_.Edges()}};
    std::vector<Windings> above_;            ///< of the edges in crossed_
    std::vector<Crossed::iterator> places_;  ///< of the edges in crossed_
};

}  // namespace

std::vector<Contours> VisibleAreas(const std::vector<Layer>& layers, const std::vector<Clip>& clips,
                                   std::size_t colorCount, double step, WorkLimit& work)
{
    EdgeTable table(layers, step);
    table.CutEdges(work);
    std::vector<std::vector<BorderEdge>> borders(colorCount);
    Sweep(table, ColorFinder(layers, clips), work)
        .Run([&](const GridEdge& edge, int below, int above) {
            if (below == above)
            {
                return;
            }
            if (above >= 0)
            {
                borders[above].push_back({edge.from, edge.to});
            }
            if (below >= 0)
            {
                borders[below].push_back({edge.to, edge.from});
            }
        });
    std::vector<Contours> areas;
    areas.reserve(borders.size());
    for (std::vector<BorderEdge>& border : borders)
    {
        areas.push_back(ContoursOfBorder(std::move(border), step, work));
    }
    return areas;
}

}  // namespace orvane::shapes
