// SPDX-License-Identifier: MIT
#include "tests/support/TriangleCrossings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <span>
#include <utility>
#include <vector>

using namespace orvane;

namespace
{

using Point = std::array<double, 3>;
using Triangle = std::array<Point, 3>;

/// The exact sum of numbers and products, as parts that do not overlap.
class ExactSum
{
public:
    void Add(double number)
    {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < count_; ++i)
        {
            const double part = parts_[i];
            const double sum = number + part;
            const double rest = sum - number;
            const double lost = (number - (sum - rest)) + (part - rest);
            if (lost != 0)
            {
                parts_[kept++] = lost;
            }
            number = sum;
        }
        parts_[kept++] = number;
        count_ = kept;
    }

    void AddProduct(double a, double b)
    {
        const double product = a * b;
        Add(std::fma(a, b, -product));
        Add(product);
    }

    void AddProduct(double a, double b, double c)
    {
        const double product = a * b;
        AddProduct(std::fma(a, b, -product), c);
        AddProduct(product, c);
    }

    /// The last part is larger than all others together.
    int Sign() const
    {
        const double last = count_ == 0 ? 0 : parts_[count_ - 1];
        return last > 0 ? 1 : last < 0 ? -1 : 0;
    }

private:
    std::array<double, 32> parts_ = {};
    std::size_t count_ = 0;
};

Point Minus(const Point& a, const Point& b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

/// The side of the plane through a triangle on which a point lies: 1 where the corners run
/// counter-clockwise, -1 on the other side, 0 in the plane. Coordinates are floats of similar
/// sizes, so their differences are exact.
int SideOf(const Triangle& triangle, const Point& point)
{
    const Point u = Minus(triangle[1], triangle[0]);
    const Point v = Minus(triangle[2], triangle[0]);
    const Point w = Minus(point, triangle[0]);
    double determinant = 0;
    double size = 0;
    for (std::size_t i = 0; i < 3; ++i)
    {
        const std::size_t j = (i + 1) % 3;
        const std::size_t k = (i + 2) % 3;
        determinant += w[i] * (u[j] * v[k] - u[k] * v[j]);
        size += std::abs(w[i]) * (std::abs(u[j] * v[k]) + std::abs(u[k] * v[j]));
    }
    constexpr double rounding = 2e-15;  // ten roundings of 2 to the -53rd
    if (std::abs(determinant) > rounding * size)
    {
        return determinant > 0 ? 1 : -1;
    }
    if (size == 0)
    {
        return 0;
    }
    ExactSum sum;
    for (std::size_t i = 0; i < 3; ++i)
    {
        const std::size_t j = (i + 1) % 3;
        const std::size_t k = (i + 2) % 3;
        sum.AddProduct(u[j], v[k], w[i]);
        sum.AddProduct(-u[k], v[j], w[i]);
    }
    return sum.Sign();
}

using PlanePoint = std::array<double, 2>;

/// 1 when the way from \p a over \p b to \p c turns left, -1 when it turns right, 0 when it goes
/// straight on or back.
int TurnOf(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c)
{
    const double left = (b[0] - a[0]) * (c[1] - a[1]);
    const double right = (b[1] - a[1]) * (c[0] - a[0]);
    const double size = std::abs(left) + std::abs(right);
    constexpr double rounding = 4e-16;  // three roundings of 2 to the -53rd
    if (std::abs(left - right) > rounding * size)
    {
        return left > right ? 1 : -1;
    }
    if (size == 0 || b == c)
    {
        return 0;
    }
    ExactSum sum;
    sum.AddProduct(b[0] - a[0], c[1] - a[1]);
    sum.AddProduct(a[1] - b[1], c[0] - a[0]);
    return sum.Sign();
}

using PlaneTriangle = std::array<PlanePoint, 3>;

/// Whether an edge of a triangle has the whole other one on its outer side.
/// \param turn that of the first triangle's corners
bool IsOutside(const PlaneTriangle& a, int turn, const PlaneTriangle& b)
{
    for (std::size_t i = 0; i < 3; ++i)
    {
        const PlanePoint& from = a[i];
        const PlanePoint& to = a[(i + 1) % 3];
        if (TurnOf(from, to, b[0]) * turn <= 0 && TurnOf(from, to, b[1]) * turn <= 0 &&
            TurnOf(from, to, b[2]) * turn <= 0)
        {
            return true;
        }
    }
    return false;
}

/// Whether two triangles in a plane have an area in common.
bool DoOverlap(const PlaneTriangle& a, const PlaneTriangle& b)
{
    return !IsOutside(a, TurnOf(a[0], a[1], a[2]), b) && !IsOutside(b, TurnOf(b[0], b[1], b[2]), a);
}

/// The same for triangles of one plane in space.
bool DoOverlap(const Triangle& a, const Triangle& b)
{
    const Point u = Minus(a[1], a[0]);
    const Point v = Minus(a[2], a[0]);
    std::size_t flat = 0;  // the axis along which the triangles are seen
    double largest = 0;
    for (std::size_t i = 0; i < 3; ++i)
    {
        const double area =
            std::abs(u[(i + 1) % 3] * v[(i + 2) % 3] - u[(i + 2) % 3] * v[(i + 1) % 3]);
        if (area > largest)
        {
            largest = area;
            flat = i;
        }
    }
    const auto seen = [&](const Triangle& triangle) {
        PlaneTriangle points;
        for (std::size_t i = 0; i < 3; ++i)
        {
            points[i] = {triangle[i][(flat + 1) % 3], triangle[i][(flat + 2) % 3]};
        }
        return points;
    };
    return largest > 0 && DoOverlap(seen(a), seen(b));
}

/// Whether the edge between two points on the given sides of a triangle goes through its inside.
bool DoesEdgeCross(const Point& from, const Point& to, int fromSide, int toSide,
                   const Triangle& triangle)
{
    if (fromSide * toSide >= 0)
    {
        return false;
    }
    const int first = SideOf({from, triangle[0], triangle[1]}, to);
    return first != 0 && SideOf({from, triangle[1], triangle[2]}, to) == first &&
           SideOf({from, triangle[2], triangle[0]}, to) == first;
}

/// Looks for triangles of a solid that cross.
///
/// A plane that has one triangle on one of its sides, and the other on the other side, keeps them
/// from crossing, even when both reach the plane, unless both lie in it. So triangles can cross
/// only where their boxes have an inside in common, or are flat in the same plane. The triangles
/// are divided into groups that lie on top of each other; the faces and the surface between two
/// rings are such groups. Those of a group are sorted into the cells of a grid.
class Crossings
{
public:
    explicit Crossings(const ProfileSolid& solid) : solid_(solid)
    {
        for (const SolidTriangle& triangle : solid.triangles)
        {
            Triangle& places = places_.emplace_back();
            PlaneTriangle& shadow = shadows_.emplace_back();
            Box& box = boxes_.emplace_back();
            for (std::size_t i = 0; i < 3; ++i)
            {
                const auto& position = solid.positions[triangle.corners[i]];
                for (std::size_t axis = 0; axis < 3; ++axis)
                {
                    const float at = position[axis];
                    places[i][axis] = at;
                    box.low[axis] = i == 0 ? at : std::min(box.low[axis], at);
                    box.high[axis] = i == 0 ? at : std::max(box.high[axis], at);
                }
                shadow[i] = {places[i][0], places[i][1]};
            }
            turns_.push_back(TurnOf(shadow[0], shadow[1], shadow[2]));
        }
    }

    TriangleCrossings Find()
    {
        std::vector<std::size_t> order(boxes_.size());
        std::iota(order.begin(), order.end(), std::size_t{0});
        const auto bottomAndTop = [&](std::size_t triangle) {
            return std::pair(boxes_[triangle].low[2], boxes_[triangle].high[2]);
        };
        std::sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) {
            return std::pair(bottomAndTop(a), a) < std::pair(bottomAndTop(b), b);
        });
        std::size_t start = 0;
        while (start < order.size())
        {
            const auto [bottom, firstTop] = bottomAndTop(order[start]);
            float top = firstTop;
            std::size_t end = start + 1;
            while (end < order.size() && (bottomAndTop(order[end]).first < top ||
                                          bottomAndTop(order[end]) == std::pair(bottom, top)))
            {
                top = std::max(top, bottomAndTop(order[end]).second);
                ++end;
            }
            FindIn({order.data() + start, end - start});
            start = end;
        }
        return found_;
    }

private:
    struct Box
    {
        std::array<float, 3> low;
        std::array<float, 3> high;
    };

    static bool DoBoxesMeet(const Box& a, const Box& b)
    {
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            const bool isInsideCommon = a.low[axis] < b.high[axis] && b.low[axis] < a.high[axis];
            const bool isOnePlane = a.low[axis] == b.high[axis] && b.low[axis] == a.high[axis];
            if (!isInsideCommon && !isOnePlane)
            {
                return false;
            }
        }
        return true;
    }

    void FindIn(std::span<const std::size_t> group)
    {
        FillCells(group);
        for (std::size_t cell = 0; cell + 1 < starts_.size(); ++cell)
        {
            for (std::size_t i = starts_[cell]; i < starts_[cell + 1]; ++i)
            {
                for (std::size_t j = i + 1; j < starts_[cell + 1]; ++j)
                {
                    const std::size_t a = inCells_[i];
                    const std::size_t b = inCells_[j];
                    if (DoBoxesMeet(boxes_[a], boxes_[b]) && CellOfPair(a, b) == cell &&
                        !AreApartFromAbove(a, b) && DoCross(a, b))
                    {
                        Count(std::min(a, b), std::max(a, b));
                    }
                }
            }
        }
    }

    std::size_t ColumnOf(float at, std::size_t axis) const
    {
        const double column = (double{at} - low_[axis]) * columnsPerEm_[axis];
        return std::min(static_cast<std::size_t>(column), side_ - 1);
    }

    /// A pair that shares several cells is looked at in the first of them.
    std::size_t CellOfPair(std::size_t a, std::size_t b) const
    {
        return ColumnOf(std::max(boxes_[a].low[1], boxes_[b].low[1]), 1) * side_ +
               ColumnOf(std::max(boxes_[a].low[0], boxes_[b].low[0]), 0);
    }

    template <typename Use>
    void ForEachCell(const Box& box, Use use) const
    {
        const std::size_t right = ColumnOf(box.high[0], 0);
        const std::size_t top = ColumnOf(box.high[1], 1);
        for (std::size_t row = ColumnOf(box.low[1], 1); row <= top; ++row)
        {
            for (std::size_t column = ColumnOf(box.low[0], 0); column <= right; ++column)
            {
                use(row * side_ + column);
            }
        }
    }

    void FillCells(std::span<const std::size_t> group)
    {
        for (std::size_t axis = 0; axis < 2; ++axis)
        {
            float low = boxes_[group[0]].low[axis];
            float high = boxes_[group[0]].high[axis];
            for (const std::size_t triangle : group)
            {
                low = std::min(low, boxes_[triangle].low[axis]);
                high = std::max(high, boxes_[triangle].high[axis]);
            }
            low_[axis] = low;
            columnsPerEm_[axis] = double{high} - low;
        }
        side_ = 1 + static_cast<std::size_t>(std::sqrt(static_cast<double>(group.size())));
        for (double& columns : columnsPerEm_)
        {
            columns = static_cast<double>(side_) / std::max(columns, 1e-30);
        }
        starts_.assign(side_ * side_ + 1, 0);
        for (const std::size_t triangle : group)
        {
            ForEachCell(boxes_[triangle], [&](std::size_t cell) { ++starts_[cell]; });
        }
        std::partial_sum(starts_.begin(), starts_.end(), starts_.begin());
        inCells_.resize(starts_.back());
        // Filled from behind, each start ends up at the first triangle of its cell.
        for (std::size_t i = group.size(); i-- > 0;)
        {
            ForEachCell(boxes_[group[i]],
                        [&](std::size_t cell) { inCells_[--starts_[cell]] = group[i]; });
        }
    }

    bool IsShared(std::size_t triangle, std::uint32_t position) const
    {
        const auto& corners = solid_.triangles[triangle].corners;
        return corners[0] == position || corners[1] == position || corners[2] == position;
    }

    void Count(std::size_t a, std::size_t b)
    {
        if (found_.crossings == 0)
        {
            found_.first = static_cast<long>(a);
            found_.second = static_cast<long>(b);
        }
        ++found_.crossings;
    }

    /// Whether a line separates the triangles seen from above. Then they do not cross, unless one
    /// stands upright and so is only a line itself.
    bool AreApartFromAbove(std::size_t a, std::size_t b) const
    {
        return turns_[a] != 0 && turns_[b] != 0 &&
               (IsOutside(shadows_[a], turns_[a], shadows_[b]) ||
                IsOutside(shadows_[b], turns_[b], shadows_[a]));
    }

    bool DoCross(std::size_t a, std::size_t b) const
    {
        const auto& corners = solid_.triangles[a].corners;
        const auto shared =
            std::count_if(corners.begin(), corners.end(),
                          [&](std::uint32_t position) { return IsShared(b, position); });
        if (shared >= 2 && NormalsAgree(places_[a], places_[b]))
        {
            // Triangles beside each other, which do not fold back.
            return false;
        }
        std::array<int, 3> sidesOfA = {};
        std::array<int, 3> sidesOfB = {};
        if (AreOnOneSide(a, b, sidesOfA) || AreOnOneSide(b, a, sidesOfB))
        {
            return false;
        }
        const auto isZero = [](int side) { return side == 0; };
        if (std::all_of(sidesOfA.begin(), sidesOfA.end(), isZero))
        {
            return DoOverlap(places_[a], places_[b]);
        }
        return shared < 2 && (DoEdgesCross(a, b, sidesOfA) || DoEdgesCross(b, a, sidesOfB));
    }

    static bool NormalsAgree(const Triangle& a, const Triangle& b)
    {
        const auto normalOf = [](const Triangle& triangle) {
            const Point u = Minus(triangle[1], triangle[0]);
            const Point v = Minus(triangle[2], triangle[0]);
            return Point{u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2],
                         u[0] * v[1] - u[1] * v[0]};
        };
        const Point p = normalOf(a);
        const Point q = normalOf(b);
        const double product = p[0] * q[0] + p[1] * q[1] + p[2] * q[2];
        const double size = std::abs(p[0] * q[0]) + std::abs(p[1] * q[1]) + std::abs(p[2] * q[2]);
        return product > 1e-9 * size;
    }

    /// Whether all corners of \p a that are not shared lie on the same side of the plane of \p b.
    bool AreOnOneSide(std::size_t a, std::size_t b, std::array<int, 3>& sides) const
    {
        bool hasLeft = false;
        bool hasRight = false;
        bool hasZero = false;
        for (std::size_t i = 0; i < 3; ++i)
        {
            const bool isShared = IsShared(b, solid_.triangles[a].corners[i]);
            sides[i] = isShared ? 0 : SideOf(places_[b], places_[a][i]);
            hasLeft = hasLeft || sides[i] > 0;
            hasRight = hasRight || sides[i] < 0;
            hasZero = hasZero || (sides[i] == 0 && !isShared);
        }
        return hasLeft != hasRight && !hasZero;
    }

    /// Whether an edge of \p a goes through \p b.
    bool DoEdgesCross(std::size_t a, std::size_t b, const std::array<int, 3>& sides) const
    {
        for (std::size_t i = 0; i < 3; ++i)
        {
            // An edge that ends in a shared corner meets the other triangle there only, unless it
            // lies in its plane.
            const std::size_t next = (i + 1) % 3;
            if (!IsShared(b, solid_.triangles[a].corners[i]) &&
                !IsShared(b, solid_.triangles[a].corners[next]) &&
                DoesEdgeCross(places_[a][i], places_[a][next], sides[i], sides[next], places_[b]))
            {
                return true;
            }
        }
        return false;
    }

    const ProfileSolid& solid_;
    std::vector<Triangle> places_;
    std::vector<PlaneTriangle> shadows_;  ///< of the triangles, seen from above
    std::vector<int> turns_;              ///< of the shadows; 0 for upright triangles
    std::vector<Box> boxes_;
    // The grid of the group that is being looked at.
    std::array<double, 2> low_ = {};
    std::array<double, 2> columnsPerEm_ = {};
    std::size_t side_ = 1;  ///< cells along each axis
    std::vector<std::size_t> starts_;
    std::vector<std::size_t> inCells_;
    TriangleCrossings found_;
};

}  // namespace

TriangleCrossings FindCrossings(const ProfileSolid& solid)
{
    return Crossings(solid).Find();
}
