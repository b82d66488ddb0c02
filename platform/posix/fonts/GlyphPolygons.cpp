// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/GlyphPolygons.h"

#include "platform/Fonts.h"

#include <cstddef>
#include <cstring>

namespace posix
{
namespace
{

using orvane::contours::NativePoint;

/// Converts a coordinate in 1/64 to 16.16. The six bits of the fraction are repeated to fill
/// sixteen bits, so that 63/64 becomes the largest fraction.
FIXED Fixed(std::int32_t value)
{
    const std::int32_t fraction = value & 63;
    return {static_cast<WORD>(fraction << 10 | fraction << 4 | fraction >> 2),
            static_cast<SHORT>(value >> 6)};
}

POINTFX FixedPoint(const NativePoint& point)
{
    return {Fixed(point.x), Fixed(point.y)};
}

/// Writes the records of polygons one after the other. The size of a polygon and the number of a
/// curve's points are filled in at its end.
class PolygonWriter
{
public:
    explicit PolygonWriter(std::size_t points) { bytes_.reserve(16 * points); }

    void Open(const NativePoint& start)
    {
        polygon_ = bytes_.size();
        Append(TTPOLYGONHEADER{0, TT_POLYGON_TYPE, FixedPoint(start)});
        pointsInCurve_ = 0;
    }

    void Close()
    {
        EndCurve();
        const auto size = static_cast<DWORD>(bytes_.size() - polygon_);
        std::memcpy(&bytes_[polygon_ + offsetof(TTPOLYGONHEADER, cb)], &size, sizeof size);
    }

    /// Adds a point to the current curve, which is begun with this type if there is none.
    void Add(WORD type, const NativePoint& point)
    {
        if (pointsInCurve_ == 0)
        {
            curve_ = bytes_.size();
            Append(type);
            Append(WORD{0});
            type_ = type;
        }
        Append(FixedPoint(point));
        ++pointsInCurve_;
    }

    void EndCurve()
    {
        if (pointsInCurve_ != 0)
        {
            std::memcpy(&bytes_[curve_ + offsetof(TTPOLYCURVE, cpfx)], &pointsInCurve_,
                        sizeof pointsInCurve_);
            pointsInCurve_ = 0;
        }
    }

    bool InSpline() const { return pointsInCurve_ != 0 && type_ == TT_PRIM_QSPLINE; }

    std::vector<BYTE> Take() { return std::move(bytes_); }

private:
    template <typename Record>
    void Append(const Record& record)
    {
        const std::size_t end = bytes_.size();
        bytes_.resize(end + sizeof record);
        std::memcpy(&bytes_[end], &record, sizeof record);
    }

    std::vector<BYTE> bytes_;
    std::size_t polygon_ = 0;
    std::size_t curve_ = 0;
    WORD type_ = TT_PRIM_LINE;
    WORD pointsInCurve_ = 0;
};

}  // namespace

std::vector<BYTE> NativePolygons(const orvane::contours::NativeOutline& outline)
{
    PolygonWriter writer(outline.points.size());
    std::size_t point = 0;
    for (const std::size_t end : outline.ends)
    {
        writer.Open(outline.points[point]);
        for (++point; point < end; ++point)
        {
            const NativePoint& added = outline.points[point];
            if (writer.InSpline())
            {
                writer.Add(TT_PRIM_QSPLINE, added);
                if (added.onCurve)
                {
                    writer.EndCurve();
                }
                continue;
            }
            if (!added.onCurve)
            {
                writer.EndCurve();
            }
            writer.Add(added.onCurve ? TT_PRIM_LINE : TT_PRIM_QSPLINE, added);
        }
        writer.Close();
    }
    return writer.Take();
}

}  // namespace posix
