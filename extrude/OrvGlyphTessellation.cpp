// SPDX-License-Identifier: MIT
#include "contours/Tessellation.h"
#include "extrude/OrvGlyph.h"
#include "extrude/PrimitiveWinding.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

/// Receives the primitives that the tessellator makes of a glyph. The indices of all primitives are
/// kept in one array, so that each face polygon can then be allocated once, at its final size.
class FaceCollector : public orvane::contours::FaceSink
{
public:
    /// A primitive that the tessellator has begun. Its indices run from firstIndex up to but not
    /// including the firstIndex of the next primitive.
    struct Primitive
    {
        GLenum type;
        std::size_t firstIndex;
        bool clockwise;
    };

    FaceCollector(OrvGlyph& glyph, std::size_t vertexCount) : glyph_(glyph)
    {
        indices.reserve(2 * vertexCount);
        primitives.reserve(16);
    }

    void Begin(GLenum type) override { primitives.push_back({type, indices.size(), false}); }
    void Add(unsigned short index) override { indices.push_back(index); }
    void End() override { glyph_.AddTessellationPolygon(*this); }

    std::vector<unsigned short> indices;
    std::vector<Primitive> primitives;

private:
    OrvGlyph& glyph_;
};

int OrvGlyph::CreateFacePolygons()
{
    facePolygons.RemoveAll();
    std::int64_t vertexCount = 0;
    for (int i = 0; i < contourCount; ++i)
    {
        vertexCount += contours.GetElement(i)->GetVertexCount();
    }
    // An index above 65,535 would wrap to the index of another vertex.
    if (vertexCount == 0 || vertexCount > std::numeric_limits<unsigned short>::max())
    {
        return 0;
    }

    const auto count = static_cast<std::size_t>(vertexCount);
    const auto corners = std::make_unique_for_overwrite<orvane::contours::Corner[]>(count);
    std::vector<int> sizes;
    sizes.reserve(static_cast<std::size_t>(contourCount));
    orvane::contours::Corner* corner = corners.get();
    for (int i = 0; i < contourCount; ++i)
    {
        const TTPolyContour& contour = *contours.GetElement(i);
        sizes.push_back(std::max(contour.GetVertexCount(), 0));
        for (int k = 0; k < contour.GetVertexCount(); ++k, ++corner)
        {
            const Point2D& point = contour.GetVertexElement(k)->point;
            *corner = {{static_cast<GLdouble>(point.x), static_cast<GLdouble>(point.y), 0.0},
                       static_cast<unsigned short>(contour.GetFirstVertexIndex() + k)};
        }
    }
    FaceCollector faces(*this, count);
    if (!orvane::contours::TessellateFaces({corners.get(), count}, sizes, faces))
    {
        return 0;
    }

    const int polygonCount = static_cast<int>(faces.primitives.size());
    facePolygons.SetSize(polygonCount);
    // Add a last entry, because the entry after each primitive tells where the primitive's indices
    // end.
    faces.primitives.push_back({0, faces.indices.size(), false});
    for (int i = 0; i < polygonCount; ++i)
    {
        const FaceCollector::Primitive& primitive = faces.primitives[i];
        const auto first = faces.indices.begin() + primitive.firstIndex;
        const auto last = faces.indices.begin() + faces.primitives[i + 1].firstIndex;
        VertexIndexPolygon& polygon = facePolygons.ElementAt(i);
        polygon.SetSize(static_cast<int>(last - first));
        std::copy(first, last, polygon.GetElement(0));
        polygon.SetType(primitive.type);
        if (primitive.clockwise)
        {
            polygon.SetClockwiseWinding();
        }
    }
    return 1;
}

int OrvGlyph::AddTessellationPolygon(FaceCollector& faces)
{
    FaceCollector::Primitive& primitive = faces.primitives.back();
    const std::span<const unsigned short> indices(faces.indices);
    primitive.clockwise = RunsClockwise(primitive.type, indices.subspan(primitive.firstIndex),
                                        vertices.GetElement(0));
    return 1;
}
