// SPDX-License-Identifier: MIT
#include "contours/Areas.h"

#include "contours/OutlineUnion.h"
#include "contours/Tessellation.h"

#include <cstdlib>
#include <limits>

namespace orvane::contours
{
namespace
{

/// Adds up the areas of the primitives that the tessellator makes.
class AreaSink : public FaceSink
{
public:
    /// \param vertices are borrowed
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
            twiceArea_ += std::llabs(Turn(PointOf(first), PointOf(n - 1), PointOf(n)));
        }
    }

    double Area() const { return static_cast<double>(twiceArea_) / 2; }

private:
    const ShortPoint& PointOf(std::size_t corner) const
    {
        return vertices_[corners_[corner]].point;
    }

    const std::vector<FlatVertex>& vertices_;
    std::vector<unsigned short> corners_;
    GLenum type_ = 0;
    std::int64_t twiceArea_ = 0;
};

}  // namespace

double OddArea(const FlatOutline& flat)
{
    if (flat.vertices.size() > std::numeric_limits<unsigned short>::max())
    {
        return -1;
    }
    std::vector<Corner> corners;
    corners.reserve(flat.vertices.size());
    for (const FlatVertex& vertex : flat.vertices)
    {
        corners.push_back(
            {{static_cast<double>(vertex.point.x), static_cast<double>(vertex.point.y), 0.0},
             static_cast<unsigned short>(corners.size())});
    }
    AreaSink sink(flat.vertices);
    return TessellateFaces(corners, flat.sizes, sink) ? sink.Area() : -1;
}

double ClockwiseArea(const FlatOutline& flat)
{
    std::int64_t twiceArea = 0;
    ForEachContour(flat, [&](int first, int end) {
        for (int i = first; i < end; ++i)
        {
            const ShortPoint& a = flat.vertices[i].point;
            const ShortPoint& b = flat.vertices[i + 1 < end ? i + 1 : first].point;
            twiceArea += std::int64_t{b.x} * a.y - std::int64_t{a.x} * b.y;
        }
    });
    return static_cast<double>(twiceArea) / 2;
}

double NonZeroArea(const FlatOutline& flat)
{
    OutlineUnion contours;
    ForEachContour(flat, [&](int first, int end) {
        contours.BeginContour();
        for (int i = first; i < end; ++i)
        {
            contours.AddVertex(flat.vertices[i].point.x, flat.vertices[i].point.y);
        }
    });
    return contours.Unite() ? contours.Area() : -1;
}

}  // namespace orvane::contours
