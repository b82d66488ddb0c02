// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/OutlineTrial.h"

#include "platform/outlines/DuplicateSearch.h"
#include "platform/outlines/Flattening.h"
#include "platform/outlines/Tessellation.h"
#include "platform/posix/fonts/OutlineEdges.h"
#include "platform/posix/fonts/OutlineUnion.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace posix
{
namespace
{

/// As many as the library takes for each control point of an outline that it is given.
constexpr std::uint8_t segmentsOfPiece = 5;

/// An outline with more meetings of edges than this, or that takes more comparisons to tell, is
/// none of a letter: what it would take to fill it is beyond all bounds.
constexpr int mostMeetings = 20000;
constexpr std::int64_t mostEffort = 20000000;

/// A run of a flat outline's vertices, as the duplicate search takes it.
class FlatContour
{
public:
    FlatContour(FlatVertex* first, int count) : first_(first), count_(count) {}

    int GetVertexCount() const { return count_; }
    FlatVertex* GetVertexElement(int index) const { return first_ + index; }

    void CalculateNormals()
    {
        using namespace outlines;
        if (count_ < 2)
        {
            return;
        }
        const auto stored = [](const PlaneVector& normal) {
            return FlatVertex::Pair{StoredNormal(normal.x), StoredNormal(normal.y)};
        };
        FlatVertex::Pair arriving = stored(EdgeNormal(Place_(count_ - 1), Place_(0)));
        for (int i = 0; i < count_; ++i)
        {
            const FlatVertex::Pair leaving = stored(EdgeNormal(Place_(i), Place_(Next_(i))));
            first_[i].vertexNormal = stored(AverageNormal(Vector_(arriving, storedNormalUnit),
                                                          Vector_(leaving, storedNormalUnit)));
            arriving = leaving;
        }
    }

    void AdjustDuplicateVertex(int index)
    {
        const outlines::PlaneVector place = outlines::ShiftedPlace(
            Place_(index), Vector_(first_[index].vertexNormal, outlines::storedNormalUnit),
            Place_(Next_(index)));
        first_[index].point = {TruncateToShort(place.x), TruncateToShort(place.y)};
    }

private:
    static outlines::PlaneVector Vector_(const FlatVertex::Pair& pair, float unit)
    {
        return {static_cast<float>(pair.x) * unit, static_cast<float>(pair.y) * unit};
    }
    outlines::PlaneVector Place_(int index) const { return Vector_(first_[index].point, 1.0f); }
    int Next_(int index) const { return index + 1 < count_ ? index + 1 : 0; }

    FlatVertex* first_;
    int count_;
};

/// Sums the areas of the primitives that the tessellator makes.
class AreaSink : public outlines::FaceSink
{
public:
    explicit AreaSink(const std::vector<FlatVertex>& vertices) : vertices_(vertices) {}

    void Begin(GLenum type) override
    {
        type_ = type;
        corners_.clear();
    }
    void Add(unsigned short index) override { corners_.push_back(index); }
    void End() override
    {
        for (std::size_t n = 2; n < corners_.size(); n += type_ == GL_TRIANGLES ? 3 : 1)
        {
            const std::size_t first = type_ == GL_TRIANGLE_FAN ? 0 : n - 2;
            twice_ += std::llabs(Cross(At_(first), At_(n - 1), At_(n)));
        }
    }

    double Area() const { return static_cast<double>(twice_) / 2; }

private:
    const FlatVertex::Pair& At_(std::size_t corner) const
    {
        return vertices_[corners_[corner]].point;
    }

    const std::vector<FlatVertex>& vertices_;
    std::vector<unsigned short> corners_;
    GLenum type_ = 0;
    Whole twice_ = 0;
};

/// Calls \p use with the indices of the first and one past the last vertex of each contour.
template <typename Use>
void ForEachContour(const FlatOutline& flat, Use use)
{
    int first = 0;
    for (const int size : flat.sizes)
    {
        use(first, first + size);
        first += size;
    }
}

std::vector<FlatContour> ContoursOf(FlatOutline& flat)
{
    std::vector<FlatContour> contours;
    contours.reserve(flat.sizes.size());
    ForEachContour(flat, [&](int first, int last) {
        contours.emplace_back(flat.vertices.data() + first, last - first);
    });
    return contours;
}

bool AnyPlaceRepeats(FlatOutline& flat)
{
    std::vector<FlatContour> contours = ContoursOf(flat);
    return outlines::AnyPlaceRepeats(std::span<FlatContour>(contours));
}

/// Votes about the direction of a contour, with the height of the edge as its weight: more than 0
/// when what is filled is on the left.
int LeftVote(const FlatOutline& flat, int from, int to)
{
    const FlatVertex::Pair& start = flat.vertices[from].point;
    const FlatVertex::Pair& end = flat.vertices[to].point;
    // Everything doubled, so that the middle of the edge is whole.
    const Whole x = Whole{start.x} + end.x;
    const Whole y = Whole{start.y} + end.y;
    bool filledToTheRight = false;  // that is, toward larger x
    ForEachContour(flat, [&](int first, int last) {
        for (int i = first; i < last; ++i)
        {
            const int next = i + 1 < last ? i + 1 : first;
            const FlatVertex::Pair& a = flat.vertices[i].point;
            const FlatVertex::Pair& b = flat.vertices[next].point;
            if (i == from || (2 * Whole{a.y} <= y) == (2 * Whole{b.y} <= y))
            {
                continue;
            }
            // Beyond the middle when the edge, at that height, has a larger x.
            const Whole rise = Whole{b.y} - a.y;
            const Whole side =
                (2 * Whole{a.x} - x) * rise + (y - 2 * Whole{a.y}) * (Whole{b.x} - a.x);
            filledToTheRight ^= (rise > 0 ? side : -side) > 0;
        }
    });
    const int height = std::abs(end.y - start.y);
    const bool upward = end.y > start.y;
    return filledToTheRight != upward ? height : -height;
}

}  // namespace

namespace
{

/// Flattens into an outline that is kept for its memory.
void FlattenInto(FlatOutline& flat, const NativeOutline& outline, int unitsPerEm)
{
    using outlines::CurvePoint;
    const auto whole = [](FT_Pos value) { return static_cast<std::int16_t>(value >> 6); };
    flat.vertices.clear();
    flat.sizes.clear();
    flat.vertices.reserve(3 * outline.points.size());
    flat.sizes.reserve(outline.ends.size());
    const float spacing = outlines::VertexSpacing(static_cast<float>(unitsPerEm));
    std::size_t first = 0;
    for (const std::size_t end : outline.ends)
    {
        const std::size_t before = flat.vertices.size();
        const NativePoint* const points = &outline.points[first];
        outlines::FlattenContour(
            static_cast<int>(end - first),
            [points, whole](int n) {
                const NativePoint& point = points[n];
                return point.onCurve
                           ? CurvePoint{whole(point.x), whole(point.y), CurvePoint::OnCurve, 0}
                           : CurvePoint{whole(point.x), whole(point.y), CurvePoint::OffCurve,
                                        segmentsOfPiece};
            },
            spacing,
            [&flat](const outlines::PlaneVector& place, bool) {
                flat.vertices.push_back({{TruncateToShort(place.x), TruncateToShort(place.y)}, {}});
            });
        flat.sizes.push_back(static_cast<int>(flat.vertices.size() - before));
        first = end;
    }
}

/// Moves vertices apart that lie at the same place.
void Separate(FlatOutline& flat)
{
    std::vector<FlatContour> contours = ContoursOf(flat);
    const std::span<FlatContour> all(contours);
    if (outlines::AnyPlaceRepeats(all))
    {
        for (FlatContour& contour : contours)
        {
            contour.CalculateNormals();
        }
        outlines::SeparateVertices(all);
    }
}

/// The smallest box around vertices.
struct Box
{
    int left = std::numeric_limits<int>::max();
    int right = std::numeric_limits<int>::min();
    int low = std::numeric_limits<int>::max();
    int high = std::numeric_limits<int>::min();

    bool Meets(const Box& other) const
    {
        return left <= other.right && other.left <= right && low <= other.high && other.low <= high;
    }
    bool Holds(const Box& other) const
    {
        return left <= other.left && other.right <= right && low <= other.low && other.high <= high;
    }
};

/// Edges of a contour that follow each other without turning back in x; from left to right.
struct Chain
{
    std::size_t first;  // of the edges
    std::size_t end;
    Box box;
};

/// A contour of which no edges meet.
struct Ring
{
    int first = 0;  // of the vertices
    int end = 0;
    Box box;
    Whole twiceArea = 0;  // more than 0 for a clockwise one

    /// Whether flattening has left nothing of it.
    bool IsEmpty() const { return first == end; }
};

/// The edges of an outline by chains and contours. One is kept on each thread for its memory.
class ChainSweep
{
public:
    /// Whether no two edges meet but neighbours at their common vertex.
    bool EdgesKeepApart(const FlatOutline& flat)
    {
        edges_.clear();
        chains_.clear();
        rings_.clear();
        int first = 0;
        for (const int size : flat.sizes)
        {
            if (!AddRing_(flat.vertices.data() + first, first, size))
            {
                return false;
            }
            first += size;
        }
        std::int64_t effort = 0;
        for (std::size_t m = 1; m < chains_.size(); ++m)
        {
            for (std::size_t n = 0; n < m; ++n)
            {
                if (chains_[m].box.Meets(chains_[n].box) &&
                    ChainsMeet_(flat, chains_[m], chains_[n], effort))
                {
                    return false;
                }
            }
            effort += static_cast<std::int64_t>(m);
            if (effort > mostEffort)
            {
                return false;
            }
        }
        return true;
    }

    /// Whether each contour runs the wrong way, once it is known that edges keep apart: a contour
    /// then lies inside others or outside as a whole. Empty when none does.
    std::vector<bool> RingsTheWrongWay(const FlatOutline& flat) const
    {
        std::vector<bool> wrong;
        for (std::size_t n = 0; n < rings_.size(); ++n)
        {
            if (rings_[n].IsEmpty())
            {
                continue;
            }
            bool inHole = false;
            for (std::size_t m = 0; m < rings_.size(); ++m)
            {
                inHole ^= m != n && !rings_[m].IsEmpty() && rings_[m].box.Holds(rings_[n].box) &&
                          IsInside_(flat, rings_[m], flat.vertices[rings_[n].first].point);
            }
            if ((rings_[n].twiceArea > 0) == inHole)
            {
                wrong.resize(rings_.size());
                wrong[n] = true;
            }
        }
        return wrong;
    }

private:
    /// Cuts a contour into chains. False when it is too short or turns back on itself.
    bool AddRing_(const FlatVertex* vertices, int offset, int size)
    {
        Ring& ring = rings_.emplace_back();
        if (size == 0)
        {
            return true;
        }
        // A chain starts where x begins to grow after it has not.
        int start = 0;
        for (int before = vertices[size - 1].point.x; start < size; ++start)
        {
            const int x = vertices[start].point.x;
            if (before >= x && x < vertices[start + 1 < size ? start + 1 : 0].point.x)
            {
                break;
            }
            before = x;
        }
        if (size < 3 || start == size)
        {
            return false;
        }
        ring.first = offset;
        ring.end = offset + size;
        const std::size_t firstEdge = edges_.size();
        edges_.resize(firstEdge + static_cast<std::size_t>(size));
        Edge* edge = edges_.data() + firstEdge;
        Edge* chain = edge;
        Box box;
        Whole twiceArea = 0;
        bool growing = true;
        int i = start;
        int next = i + 1 < size ? i + 1 : 0;
        FlatVertex::Pair a = vertices[i].point;
        FlatVertex::Pair b = vertices[next].point;
        for (int n = 0; n < size; ++n)
        {
            const int after = next + 1 < size ? next + 1 : 0;
            const FlatVertex::Pair c = vertices[after].point;
            const Whole x = b.x - a.x;
            const Whole further = c.x - b.x;
            // Only where x does not go on as before, an edge can lie on its neighbour.
            if (x * further <= 0)
            {
                const Whole along = x * further + (Whole{b.y} - a.y) * (Whole{c.y} - b.y);
                if ((along < 0 && Cross(b, a, c) == 0) || (x == 0 && a.y == b.y))
                {
                    return false;
                }
            }
            if (growing ? x < 0 : x > 0)
            {
                AddChain_(ring, chain, edge, box, growing);
                growing = !growing;
                chain = edge;
                box = {};
            }
            *edge++ = EdgeOf(a, b, offset + i, offset + next);
            box.low = std::min<int>(box.low, b.y);
            box.high = std::max<int>(box.high, b.y);
            twiceArea += Whole{b.x} * a.y - Whole{a.x} * b.y;
            i = next;
            next = after;
            a = b;
            b = c;
        }
        AddChain_(ring, chain, edge, box, growing);
        ring.twiceArea = twiceArea;
        return true;
    }

    /// Adds the chain of the edges from one to another.
    /// \param box around the vertices but the first, of which only the heights are known
    void AddChain_(Ring& ring, Edge* first, Edge* end, Box box, bool growing)
    {
        box.low = std::min<int>(box.low, first->low);
        box.high = std::max<int>(box.high, first->high);
        if (!growing)
        {
            std::reverse(first, end);
        }
        box.left = first->left;
        box.right = (end - 1)->right;
        chains_.push_back({static_cast<std::size_t>(first - edges_.data()),
                           static_cast<std::size_t>(end - edges_.data()), box});
        ring.box = {std::min(ring.box.left, box.left), std::max(ring.box.right, box.right),
                    std::min(ring.box.low, box.low), std::max(ring.box.high, box.high)};
    }

    /// Whether edges of two chains meet.
    bool ChainsMeet_(const FlatOutline& flat, const Chain& a, const Chain& b,
                     std::int64_t& effort) const
    {
        // Both run from left to right: what an edge of the one may meet of the other only moves on.
        const Edge* reached = &edges_[b.first];
        const Edge* const end = edges_.data() + b.end;
        for (std::size_t n = a.first; n < a.end && edges_[n].left <= b.box.right; ++n)
        {
            const Edge& edge = edges_[n];
            if (edge.right < b.box.left || edge.low > b.box.high || edge.high < b.box.low)
            {
                continue;
            }
            while (reached->right < edge.left)
            {
                ++reached;  // the last one reaches as far as the box
            }
            const Edge* other = reached;
            for (; other < end && other->left <= edge.right; ++other)
            {
                if (edge.low <= other->high && other->low <= edge.high &&
                    EdgesMeet(flat.vertices, edge, *other))
                {
                    return true;
                }
            }
            effort += other - reached;
        }
        return false;
    }

    /// Whether a place that is not on the contour lies inside.
    static bool IsInside_(const FlatOutline& flat, const Ring& ring, const FlatVertex::Pair& place)
    {
        bool inside = false;
        FlatVertex::Pair a = flat.vertices[ring.end - 1].point;
        for (int i = ring.first; i < ring.end; ++i)
        {
            const FlatVertex::Pair b = flat.vertices[i].point;
            if ((a.y <= place.y) != (b.y <= place.y))
            {
                inside ^= (Cross(a, b, place) > 0) == (b.y > a.y);
            }
            a = b;
        }
        return inside;
    }

    std::vector<Edge> edges_;
    std::vector<Chain> chains_;
    std::vector<Ring> rings_;
};

ChainSweep& SweepOfThread()
{
    thread_local ChainSweep sweep;
    return sweep;
}

}  // namespace

FlatOutline Flatten(const NativeOutline& outline, int unitsPerEm)
{
    FlatOutline flat;
    FlattenInto(flat, outline, unitsPerEm);
    return flat;
}

FlatOutline FlattenAndSeparate(const NativeOutline& outline, int unitsPerEm)
{
    FlatOutline flat = Flatten(outline, unitsPerEm);
    Separate(flat);
    return flat;
}

bool EdgesKeepApart(const FlatOutline& flat)
{
    return SweepOfThread().EdgesKeepApart(flat);
}

int CountMeetings(const FlatOutline& flat, int most, bool* cross)
{
    const auto count = static_cast<int>(flat.vertices.size());
    if (count > std::numeric_limits<unsigned short>::max())
    {
        return most + 1;
    }
    // Sorted by their left ends: the key's low bits are the index of the edge's first vertex.
    std::vector<std::uint32_t> order;
    std::vector<Edge> edges;
    order.reserve(flat.vertices.size());
    edges.reserve(flat.vertices.size());
    int meetings = 0;
    ForEachContour(flat, [&](int first, int last) {
        meetings += last - first == 1 || last - first == 2 ? 1 : 0;
        for (int i = first; i < last; ++i)
        {
            const int next = i + 1 < last ? i + 1 : first;
            const FlatVertex::Pair& a = flat.vertices[i].point;
            const FlatVertex::Pair& b = flat.vertices[next].point;
            meetings += a.x == b.x && a.y == b.y ? 1 : 0;
            edges.push_back(EdgeOf(a, b, i, next));
            order.push_back(static_cast<std::uint32_t>(edges.back().left + 0x8000) << 16 |
                            static_cast<std::uint32_t>(i));
        }
    });
    std::sort(order.begin(), order.end());
    std::vector<const Edge*> open;  // that the sweep has reached and not left
    open.reserve(32);
    std::int64_t effort = 0;
    for (const std::uint32_t key : order)
    {
        const Edge& edge = edges[key & 0xFFFF];
        std::size_t kept = 0;
        for (const Edge* const other : open)
        {
            if (other->right < edge.left)
            {
                continue;
            }
            open[kept++] = other;
            if (other->low <= edge.high && edge.low <= other->high &&
                EdgesMeet(flat.vertices, edge, *other, cross))
            {
                ++meetings;
            }
        }
        effort += std::ssize(open);
        if (meetings > most || effort > mostEffort)
        {
            return most + 1;
        }
        open.resize(kept);
        open.push_back(&edge);
    }
    return meetings;
}

double OddArea(const FlatOutline& flat)
{
    if (flat.vertices.size() > std::numeric_limits<unsigned short>::max())
    {
        return -1;
    }
    std::vector<outlines::Corner> corners;
    corners.reserve(flat.vertices.size());
    for (const FlatVertex& vertex : flat.vertices)
    {
        corners.push_back(
            {{static_cast<double>(vertex.point.x), static_cast<double>(vertex.point.y), 0.0},
             static_cast<unsigned short>(corners.size())});
    }
    AreaSink sink(flat.vertices);
    return outlines::TessellateFaces(corners, flat.sizes, sink) ? sink.Area() : -1;
}

double TurnedArea(const FlatOutline& flat)
{
    Whole twice = 0;
    ForEachContour(flat, [&](int first, int last) {
        for (int i = first; i < last; ++i)
        {
            const FlatVertex::Pair& a = flat.vertices[i].point;
            const FlatVertex::Pair& b = flat.vertices[i + 1 < last ? i + 1 : first].point;
            twice += Whole{b.x} * a.y - Whole{a.x} * b.y;
        }
    });
    return static_cast<double>(twice) / 2;
}

double NonZeroArea(const FlatOutline& flat)
{
    OutlineUnion all;
    ForEachContour(flat, [&](int first, int last) {
        all.BeginContour();
        for (int i = first; i < last; ++i)
        {
            all.AddVertex(flat.vertices[i].point.x, flat.vertices[i].point.y);
        }
    });
    return all.Unite() ? all.Area() : -1;
}

std::vector<bool> ContoursTheWrongWay(const FlatOutline& flat)
{
    constexpr std::ptrdiff_t votes = 5;
    std::vector<bool> wrong;
    wrong.reserve(flat.sizes.size());
    std::vector<int> tallest;  // the vertices that the edges of the greatest heights start at
    ForEachContour(flat, [&](int first, int last) {
        const auto next = [&](int i) { return i + 1 < last ? i + 1 : first; };
        const auto height = [&](int i) {
            return std::abs(flat.vertices[next(i)].point.y - flat.vertices[i].point.y);
        };
        tallest.clear();
        for (int i = first; i < last; ++i)
        {
            tallest.push_back(i);
        }
        const auto end = tallest.begin() + std::min(votes, std::ssize(tallest));
        std::partial_sort(tallest.begin(), end, tallest.end(),
                          [&](int a, int b) { return height(a) > height(b); });
        int left = 0;
        for (auto i = tallest.begin(); i != end; ++i)
        {
            left += height(*i) > 0 ? LeftVote(flat, *i, next(*i)) : 0;
        }
        wrong.push_back(left > 0);
    });
    return wrong;
}

OutlineVerdict TryOutline(const NativeOutline& outline, int unitsPerEm, CrossingEdges crossing)
{
    OutlineVerdict verdict;
    if (outline.ends.empty())
    {
        return verdict;
    }
    thread_local FlatOutline flat;  // kept for its memory
    FlattenInto(flat, outline, unitsPerEm);
    ChainSweep& sweep = SweepOfThread();
    const bool apart = sweep.EdgesKeepApart(flat);
    if (apart)
    {
        verdict.wrongWay = sweep.RingsTheWrongWay(flat);
        if (verdict.wrongWay.empty())
        {
            // Contours that keep apart and all run the right way fill the same by both rules.
            return verdict;
        }
    }
    else
    {
        bool cross = false;
        verdict.hopeless = CountMeetings(flat, mostMeetings, &cross) > mostMeetings;
        // Edges that cross are an error to the tessellator, unless moving vertices apart helps or
        // it happens not to look at both of them at once.
        verdict.presumed = !verdict.hopeless && crossing == CrossingEdges::Presumed && cross &&
                           !AnyPlaceRepeats(flat);
        if (verdict.hopeless || verdict.presumed)
        {
            verdict.fills = false;
            return verdict;
        }
        Separate(flat);
        // Where edges touch, one of them may not be the border that it seems.
        verdict.wrongWay = ContoursTheWrongWay(flat);
        if (std::find(verdict.wrongWay.begin(), verdict.wrongWay.end(), true) ==
            verdict.wrongWay.end())
        {
            verdict.wrongWay.clear();
        }
    }
    constexpr double difference = 0.001;
    const double odd = OddArea(flat);
    const double nonZero = odd >= 0 ? NonZeroArea(flat) : -1;
    verdict.fills = nonZero >= 0 && std::fabs(odd - nonZero) <= difference * std::max(odd, nonZero);
    return verdict;
}

NativeOutline Reversed(const NativeOutline& outline, const std::vector<bool>& marked)
{
    NativeOutline reversed = outline;
    for (std::size_t contour = 0; contour < outline.ends.size(); ++contour)
    {
        if (contour < marked.size() && marked[contour])
        {
            std::reverse(
                reversed.points.begin() + static_cast<std::ptrdiff_t>(outline.FirstOf(contour)),
                reversed.points.begin() + static_cast<std::ptrdiff_t>(outline.ends[contour]));
        }
    }
    return reversed;
}

}  // namespace posix
