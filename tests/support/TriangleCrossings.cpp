// SPDX-License-Identifier: MIT
#include "tests/support/TriangleCrossings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <initializer_list>
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

int TurnOf(const PlanePoint& a, const PlanePoint& b, const PlanePoint& c)
{
    ExactSum sum;
    sum.AddProduct(b[0] - a[0], c[1] - a[1]);
    sum.AddProduct(a[1] - b[1], c[0] - a[0]);
    return sum.Sign();
}

/// How two triangles meet.
enum class Meeting
{
    Apart,
    Touching,
    Crossing
};

/// Whether a triangle in the plane, counter-clockwise, and another have an area in common.
Meeting MeetingInPlane(std::array<PlanePoint, 3> a, std::array<PlanePoint, 3> b)
{
    // Two triangles have no common area exactly when an edge of one has the whole other on its
    // outer side.
    for (int side = 0; side < 2; ++side)
    {
        const int turn = TurnOf(a[0], a[1], a[2]);
        for (std::size_t i = 0; i < 3; ++i)
        {
            if (std::all_of(b.begin(), b.end(), [&](const PlanePoint& point) {
                    return TurnOf(a[i], a[(i + 1) % 3], point) * turn <= 0;
                }))
            {
                return Meeting::Apart;
            }
        }
        std::swap(a, b);
    }
    return Meeting::Crossing;
}

Meeting MeetingInPlane(const Triangle& a, const Triangle& b)
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
        std::array<PlanePoint, 3> points;
        for (std::size_t i = 0; i < 3; ++i)
        {
            points[i] = {triangle[i][(flat + 1) % 3], triangle[i][(flat + 2) % 3]};
        }
        return points;
    };
    return largest > 0 ? MeetingInPlane(seen(a), seen(b)) : Meeting::Apart;
}

/// How the edge between two points meets a triangle.
Meeting MeetingOfEdge(const Point& from, const Point& to, int fromSide, int toSide,
                      const Triangle& triangle)
{
    if (fromSide * toSide > 0 || (fromSide == 0 && toSide == 0))
    {
        return Meeting::Apart;
    }
    int least = 1;
    int most = -1;
    for (std::size_t i = 0; i < 3; ++i)
    {
        const int side = SideOf({from, triangle[i], triangle[(i + 1) % 3]}, to);
        least = std::min(least, side);
        most = std::max(most, side);
    }
    if (least < 0 && most > 0)
    {
        return Meeting::Apart;
    }
    const bool isThrough = fromSide != 0 && toSide != 0 && least * most > 0;
    return isThrough ? Meeting::Crossing : Meeting::Touching;
}

/// The triangles of a solid, in the cells of a grid in the plane of the letter.
class Crossings
{
public:
    explicit Crossings(const ProfileSolid& solid) : solid_(solid)
    {
        for (const SolidTriangle& triangle : solid.triangles)
        {
            Triangle& places = places_.emplace_back();
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
            }
        }
    }

    TriangleCrossings Find()
    {
        FillCells();
        for (std::size_t cell = 0; cell + 1 < starts_.size(); ++cell)
        {
            for (std::size_t i = starts_[cell]; i < starts_[cell + 1]; ++i)
            {
                for (std::size_t j = i + 1; j < starts_[cell + 1]; ++j)
                {
                    const std::size_t a = inCells_[i];
                    const std::size_t b = inCells_[j];
                    if (DoBoxesMeet(boxes_[a], boxes_[b]) && CellOfPair(a, b) == cell)
                    {
                        Count(a, b);
                    }
                }
            }
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
        return a.low[0] <= b.high[0] && b.low[0] <= a.high[0] && a.low[1] <= b.high[1] &&
               b.low[1] <= a.high[1] && a.low[2] <= b.high[2] && b.low[2] <= a.high[2];
    }

    std::size_t ColumnOf(float at, std::size_t axis) const
    {
        const double part = (double{at} - low_[axis]) / size_[axis];
        return std::min(static_cast<std::size_t>(part * static_cast<double>(side_)), side_ - 1);
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

    void FillCells()
    {
        for (std::size_t axis = 0; axis < 2; ++axis)
        {
            float low = 0;
            float high = 0;
            for (const auto& position : solid_.positions)
            {
                low = std::min(low, position[axis]);
                high = std::max(high, position[axis]);
            }
            low_[axis] = low;
            size_[axis] = std::max(double{high} - low, 1e-30);
        }
        side_ = 1 + static_cast<std::size_t>(std::sqrt(static_cast<double>(boxes_.size())));
        starts_.assign(side_ * side_ + 1, 0);
        for (const Box& box : boxes_)
        {
            ForEachCell(box, [&](std::size_t cell) { ++starts_[cell]; });
        }
        std::size_t end = 0;
        for (std::size_t& start : starts_)
        {
            end += start;
            start = end;
        }
        inCells_.resize(end);
        // Filled from behind, each start ends up at the first triangle of its cell.
        for (std::size_t i = boxes_.size(); i-- > 0;)
        {
            ForEachCell(boxes_[i], [&](std::size_t cell) { inCells_[--starts_[cell]] = i; });
        }
    }

    bool IsShared(std::size_t triangle, std::uint32_t position) const
    {
        const auto& corners = solid_.triangles[triangle].corners;
        return corners[0] == position || corners[1] == position || corners[2] == position;
    }

    void Count(std::size_t a, std::size_t b)
    {
        const Meeting meeting = MeetingOf(a, b);
        if (meeting == Meeting::Crossing)
        {
            if (found_.crossings == 0)
            {
                found_.first = static_cast<long>(a);
                found_.second = static_cast<long>(b);
            }
            ++found_.crossings;
        }
        found_.touches += meeting == Meeting::Touching ? 1 : 0;
    }

    Meeting MeetingOf(std::size_t a, std::size_t b) const
    {
        const auto& corners = solid_.triangles[a].corners;
        const auto shared =
            std::count_if(corners.begin(), corners.end(),
                          [&](std::uint32_t position) { return IsShared(b, position); });
        if (shared >= 2 && NormalsAgree(places_[a], places_[b]))
        {
            // Triangles beside each other, which do not fold back.
            return Meeting::Apart;
        }
        std::array<int, 3> sidesOfA = {};
        std::array<int, 3> sidesOfB = {};
        if (AreOnOneSide(a, b, sidesOfA) || AreOnOneSide(b, a, sidesOfB))
        {
            return Meeting::Apart;
        }
        const auto isZero = [](int side) { return side == 0; };
        if (std::all_of(sidesOfA.begin(), sidesOfA.end(), isZero))
        {
            return MeetingInPlane(places_[a], places_[b]);
        }
        if (shared >= 2)
        {
            return Meeting::Apart;
        }
        return std::max(MeetingOfEdges(a, b, sidesOfA), MeetingOfEdges(b, a, sidesOfB));
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

    Meeting MeetingOfEdges(std::size_t a, std::size_t b, const std::array<int, 3>& sides) const
    {
        Meeting meeting = Meeting::Apart;
        for (std::size_t i = 0; i < 3; ++i)
        {
            const std::size_t next = (i + 1) % 3;
            // An edge that ends in a shared corner meets the other triangle there only, unless it
            // lies in its plane.
            if (!IsShared(b, solid_.triangles[a].corners[i]) &&
                !IsShared(b, solid_.triangles[a].corners[next]))
            {
                meeting = std::max(meeting, MeetingOfEdge(places_[a][i], places_[a][next], sides[i],
                                                          sides[next], places_[b]));
            }
        }
        return meeting;
    }

    const ProfileSolid& solid_;
    std::vector<Triangle> places_;
    std::vector<Box> boxes_;
    std::array<double, 2> low_ = {};
    std::array<double, 2> size_ = {};
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
