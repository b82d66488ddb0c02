// SPDX-License-Identifier: MIT
#include "extrude/OrvGlyph.h"

#include "extrude/PrimitiveWinding.h"
#include "platform/OpenGL.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <vector>

namespace
{
/// What the tessellator is given of a vertex. GLU keeps a pointer to the index until the polygon
/// ends.
struct Corner
{
    GLdouble place[3];
    unsigned short index;
};

/// A primitive that the tessellator has begun; its indices reach to those of the next.
struct Primitive
{
    GLenum type;
    std::size_t firstIndex;
    bool clockwise;
};

/// The tessellation under way. All its primitives' indices are kept in one run, so that each face
/// polygon is allocated once, at its final size.
struct Tessellation
{
    OrvGlyph* glyph;
    std::vector<unsigned short> indices;
    std::vector<Primitive> primitives;
    GLenum error = 0;
};

// GLU's callbacks are not told whom they serve. The glyph mutex keeps others away.
Tessellation* current = nullptr;

/// Sets and clears the tessellation under way, also when something throws.
class CurrentTessellation
{
public:
    explicit CurrentTessellation(Tessellation& tessellation) { current = &tessellation; }
    ~CurrentTessellation() { current = nullptr; }
    CurrentTessellation(const CurrentTessellation&) = delete;
    CurrentTessellation& operator=(const CurrentTessellation&) = delete;
};

/// Runs what a callback does. GLU is C: exceptions end here and count as an error of its own.
template <typename Action>
void Guard(Action action) noexcept
{
    try
    {
        action();
    }
    catch (...)
    {
        current->error = GLU_OUT_OF_MEMORY;
    }
}

using TessellatorFunction = _GLUfuncptr;

template <typename Function>
TessellatorFunction AsCallback(Function* function)
{
    return reinterpret_cast<TessellatorFunction>(function);
}

struct DeleteTessellator
{
    void operator()(GLUtesselator* tessellator) const { gluDeleteTess(tessellator); }
};
}  // namespace

struct TessellationCallbacks
{
    static void CALLBACK Begin(GLenum type)
    {
        Guard([type] { current->primitives.push_back({type, current->indices.size(), false}); });
    }

    static void CALLBACK AddVertex(void* index)
    {
        Guard([index] { current->indices.push_back(*static_cast<unsigned short*>(index)); });
    }

    static void CALLBACK End()
    {
        Guard([] { current->glyph->AddTessellationPolygon(); });
    }

    static void CALLBACK Error(GLenum code) { current->error = code; }
};

int OrvGlyph::CreateFacePolygons()
{
    facePolygons.RemoveAll();
    std::int64_t vertexCount = 0;
    for (int i = 0; i < contourCount; ++i)
    {
        vertexCount += contours.GetElement(i)->GetVertexCount();
    }
    // Above the limit an index would wrap and name another vertex.
    if (vertexCount == 0 || vertexCount > std::numeric_limits<unsigned short>::max())
    {
        return 0;
    }

    const std::unique_ptr<GLUtesselator, DeleteTessellator> tessellator(gluNewTess());
    if (tessellator == nullptr)
    {
        return 0;
    }
    const auto corners = std::make_unique_for_overwrite<Corner[]>(vertexCount);
    Tessellation tessellation{this, {}, {}};
    tessellation.indices.reserve(2 * vertexCount);
    tessellation.primitives.reserve(16);
    const CurrentTessellation scope(tessellation);

    GLUtesselator* const tess = tessellator.get();
    gluTessCallback(tess, GLU_BEGIN, AsCallback(TessellationCallbacks::Begin));
    gluTessCallback(tess, GLU_EDGE_FLAG, nullptr);  // so that it makes fans and strips
    gluTessCallback(tess, GLU_VERTEX, AsCallback(TessellationCallbacks::AddVertex));
    gluTessCallback(tess, GLU_END, AsCallback(TessellationCallbacks::End));
    gluTessCallback(tess, GLU_ERROR, AsCallback(TessellationCallbacks::Error));

    // There is no combine callback: an outline that crosses itself is an error. The rule is the
    // odd one, which leaves holes open whatever their direction.
    gluBeginPolygon(tess);
    Corner* corner = corners.get();
    for (int i = 0; i < contourCount; ++i)
    {
        if (i > 0)
        {
            gluNextContour(tess, GLU_UNKNOWN);
        }
        const TTPolyContour& contour = *contours.GetElement(i);
        for (int k = 0; k < contour.GetVertexCount(); ++k, ++corner)
        {
            const Point2D& point = contour.GetVertexElement(k)->point;
            *corner = {{static_cast<GLdouble>(point.x), static_cast<GLdouble>(point.y), 0.0},
                       static_cast<unsigned short>(contour.GetFirstVertexIndex() + k)};
            gluTessVertex(tess, corner->place, &corner->index);
        }
    }
    gluEndPolygon(tess);
    if (tessellation.error != 0)
    {
        return 0;
    }

    const int count = static_cast<int>(tessellation.primitives.size());
    facePolygons.SetSize(count);
    tessellation.primitives.push_back({0, tessellation.indices.size(), false});
    for (int i = 0; i < count; ++i)
    {
        const Primitive& primitive = tessellation.primitives[i];
        const auto first = tessellation.indices.begin() + primitive.firstIndex;
        const auto last = tessellation.indices.begin() + tessellation.primitives[i + 1].firstIndex;
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

int OrvGlyph::AddTessellationPolygon()
{
    Primitive& primitive = current->primitives.back();
    const std::span<const unsigned short> indices(current->indices);
    primitive.clockwise = PrimitiveTurn(primitive.type, indices.subspan(primitive.firstIndex),
                                        vertices.GetElement(0)) > 0;
    return 1;
}
