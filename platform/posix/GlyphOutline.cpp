// SPDX-License-Identifier: MIT
#include "platform/posix/GlyphOutline.h"

#include "platform/Fonts.h"

#include <cstddef>
#include <cstring>

namespace posix
{
namespace
{

/// A 26.6 value in 16.16, its six bits of fraction repeated to fill sixteen.
FIXED Fixed(FT_Pos value)
{
    const FT_Pos fraction = value & 63;
    return {static_cast<WORD>(fraction << 10 | fraction << 4 | fraction >> 2),
            static_cast<SHORT>(value >> 6)};
}

POINTFX FixedPoint(const FT_Vector& point)
{
    return {Fixed(point.x), Fixed(point.y)};
}

/// Writes records one after the other. A record's counts are filled in when they are known.
class PolygonWriter
{
public:
    void Open(const FT_Vector& start)
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

    /// Adds a point to the curve of this type, opening it if need be.
    void Add(WORD type, const FT_Vector& point)
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

bool OnCurve(const FT_Outline& outline, int point)
{
    return FT_CURVE_TAG(outline.tags[point]) == FT_CURVE_TAG_ON;
}

/// Writes the contour of the points from \p first to \p last.
void WriteContour(PolygonWriter& writer, const FT_Outline& outline, int first, int last)
{
    FT_Vector start = outline.points[first];
    if (OnCurve(outline, first))
    {
        ++first;
    }
    else if (OnCurve(outline, last))
    {
        start = outline.points[last];
        --last;
    }
    else
    {
        start.x = (start.x + outline.points[last].x) >> 1;
        start.y = (start.y + outline.points[last].y) >> 1;
    }
    writer.Open(start);
    for (int point = first; point <= last; ++point)
    {
        const bool on = OnCurve(outline, point);
        if (writer.InSpline())
        {
            writer.Add(TT_PRIM_QSPLINE, outline.points[point]);
            if (on)
            {
                writer.EndCurve();
            }
            continue;
        }
        if (!on)
        {
            writer.EndCurve();
        }
        writer.Add(on ? TT_PRIM_LINE : TT_PRIM_QSPLINE, outline.points[point]);
    }
    if (writer.InSpline())
    {
        writer.Add(TT_PRIM_QSPLINE, start);
    }
    writer.Close();
}

}  // namespace

std::vector<BYTE> NativePolygons(const FT_Outline& outline)
{
    PolygonWriter writer;
    int first = 0;
    for (int contour = 0; contour < outline.n_contours; ++contour)
    {
        const int last = outline.contours[contour];
        if (last > first)
        {
            WriteContour(writer, outline, first, last);
        }
        first = last + 1;
    }
    return writer.Take();
}

}  // namespace posix
