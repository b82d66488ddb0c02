// SPDX-License-Identifier: MIT
#include "platform/posix/fonts/OutlineUnion.h"

#include "platform/OpenGL.h"
#include "platform/Types.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace posix
{
namespace
{

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

/// Tags a vertex that lies at \p fraction of the way from one vertex to another with the pieces
/// that both are on. Where they share two, as neighbours in a contour of two pieces do, the one on
/// which they are nearer is that of the edge.
void TagBetween(UnionVertex& vertex, const UnionVertex& from, const UnionVertex& to,
                double fraction)
{
    double nearest = std::numeric_limits<double>::infinity();
    PieceTag best;
    for (std::size_t i = 0; i < from.tagCount; ++i)
    {
        for (std::size_t j = 0; j < to.tagCount; ++j)
        {
            const PieceTag& a = from.tags[i];
            const PieceTag& b = to.tags[j];
            if (a.piece == b.piece && std::fabs(b.t - a.t) < nearest)
            {
                nearest = std::fabs(b.t - a.t);
                best = {a.piece, a.t + (b.t - a.t) * fraction};
            }
        }
    }
    if (nearest <= 1.0)
    {
        vertex.Add(best);
    }
}

}  // namespace

void UnionVertex::Add(const PieceTag& tag)
{
    const auto end = tags.begin() + static_cast<std::ptrdiff_t>(tagCount);
    const bool known = std::any_of(tags.begin(), end, [&](const PieceTag& other) {
        return other.piece == tag.piece && std::fabs(other.t - tag.t) < 1e-9;
    });
    if (!known && tagCount < tags.size())
    {
        tags[tagCount++] = tag;
    }
}

/// What GLU calls, with the union as the polygon's data. GLU is C: exceptions end here.
struct UnionCallbacks
{
    static void CALLBACK Begin(GLenum, void* data) noexcept
    {
        Do(data, [](OutlineUnion& all) { all.loops_.emplace_back(); });
    }

    static void CALLBACK AddVertex(void* vertex, void* data) noexcept
    {
        Do(data, [vertex](OutlineUnion& all) {
            all.loops_.back().push_back(static_cast<const UnionVertex*>(vertex));
        });
    }

    static void CALLBACK Combine(GLdouble place[3], void* from[4], GLfloat weights[4], void** made,
                                 void* data) noexcept
    {
        *made = nullptr;
        Do(data, [&](OutlineUnion& all) {
            UnionVertex vertex;
            vertex.place = {place[0], place[1], 0};
            for (int n = 0; n < 4; ++n)
            {
                const auto* const source = static_cast<const UnionVertex*>(from[n]);
                if (source != nullptr && source->place[0] == place[0] &&
                    source->place[1] == place[1])
                {
                    std::for_each_n(source->tags.begin(), source->tagCount,
                                    [&](const PieceTag& tag) { vertex.Add(tag); });
                }
            }
            // The first two are the ends of one edge, the last two those of the other.
            for (int n = 0; n < 4; n += 2)
            {
                const auto* const a = static_cast<const UnionVertex*>(from[n]);
                const auto* const b = static_cast<const UnionVertex*>(from[n + 1]);
                const double sum = double{weights[n]} + weights[n + 1];
                if (from[2] != nullptr && a != nullptr && b != nullptr && sum > 0)
                {
                    TagBetween(vertex, *a, *b, weights[n + 1] / sum);
                }
            }
            all.vertices_.push_back(vertex);
            *made = &all.vertices_.back();
        });
    }

    static void CALLBACK FlagEdge(GLboolean, void*) noexcept {}

    static void CALLBACK Error(GLenum, void* data) noexcept
    {
        static_cast<OutlineUnion*>(data)->failed_ = true;
    }

private:
    template <typename Action>
    static void Do(void* data, Action action)
    {
        auto& all = *static_cast<OutlineUnion*>(data);
        try
        {
            action(all);
        }
        catch (...)
        {
            all.failed_ = true;
        }
    }
};

UnionVertex& OutlineUnion::AddVertex(double x, double y)
{
    UnionVertex& vertex = vertices_.emplace_back();
    vertex.place = {x, y, 0};
    contours_.back().push_back(&vertex);
    return vertex;
}

bool OutlineUnion::Unite()
{
    const std::unique_ptr<GLUtesselator, DeleteTessellator> tessellator(gluNewTess());
    if (tessellator == nullptr)
    {
        return false;
    }
    GLUtesselator* const tess = tessellator.get();
    gluTessProperty(tess, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
    gluTessProperty(tess, GLU_TESS_BOUNDARY_ONLY, GL_TRUE);
    gluTessNormal(tess, 0, 0, 1);
    gluTessCallback(tess, GLU_TESS_BEGIN_DATA, AsCallback(UnionCallbacks::Begin));
    gluTessCallback(tess, GLU_TESS_VERTEX_DATA, AsCallback(UnionCallbacks::AddVertex));
    gluTessCallback(tess, GLU_TESS_COMBINE_DATA, AsCallback(UnionCallbacks::Combine));
    // Where edge flags are asked for, the tessellator does not take a short contour that turns
    // about its first vertex for one that cannot cross itself.
    gluTessCallback(tess, GLU_TESS_EDGE_FLAG_DATA, AsCallback(UnionCallbacks::FlagEdge));
    gluTessCallback(tess, GLU_TESS_ERROR_DATA, AsCallback(UnionCallbacks::Error));
    gluTessBeginPolygon(tess, this);
    for (const std::vector<UnionVertex*>& contour : contours_)
    {
        gluTessBeginContour(tess);
        for (UnionVertex* const vertex : contour)
        {
            gluTessVertex(tess, vertex->place.data(), vertex);
        }
        gluTessEndContour(tess);
    }
    gluTessEndPolygon(tess);
    // A vertex that could not be made leaves a gap in its loop.
    const bool whole = std::none_of(loops_.begin(), loops_.end(), [](const auto& loop) {
        return std::find(loop.begin(), loop.end(), nullptr) != loop.end();
    });
    if (failed_ || !whole)
    {
        loops_.clear();
        return false;
    }
    return true;
}

double OutlineUnion::Area() const
{
    double area = 0;
    for (const std::vector<const UnionVertex*>& loop : loops_)
    {
        area += SignedArea(loop);
    }
    return area;
}

double SignedArea(const std::vector<const UnionVertex*>& loop)
{
    double twice = 0;
    for (std::size_t n = 0; n < loop.size(); ++n)
    {
        const auto& a = loop[n]->place;
        const auto& b = loop[n + 1 < loop.size() ? n + 1 : 0]->place;
        twice += a[0] * b[1] - a[1] * b[0];
    }
    return twice / 2;
}

}  // namespace posix
