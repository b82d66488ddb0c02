// SPDX-License-Identifier: MIT
#include "contours/OutlineUnion.h"

#include "platform/OpenGL.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <new>

namespace orvane::contours
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

/// Gives a vertex on the edge between \p from and \p to a tag: the piece on which both ends of the
/// edge lie. \p fraction tells where on the edge the vertex lies: 0 at \p from, 1 at \p to. The
/// ends share two pieces when their contour has only two pieces; the edge then belongs to the piece
/// on which the parameters of the ends are nearer to each other. A vertex between ends that share
/// no piece gets no tag.
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
        vertex.AddTag(best);
    }
}

}  // namespace

void UnionVertex::AddTag(const PieceTag& tag)
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

/// The functions that GLU calls. Their parameter data points to the OutlineUnion. Exceptions must
/// not pass through GLU, which is written in C, so they are caught here and Unite throws them
/// again.
struct UnionCallbacks
{
    static void CALLBACK Begin(GLenum, void* data) noexcept
    {
        Do(data, [](OutlineUnion& border) { border.loops_.emplace_back(); });
    }

    static void CALLBACK AddVertex(void* vertex, void* data) noexcept
    {
        Do(data, [vertex](OutlineUnion& border) {
            border.loops_.back().push_back(static_cast<const UnionVertex*>(vertex));
        });
    }

    static void CALLBACK Combine(GLdouble place[3], void* from[4], GLfloat weights[4], void** made,
                                 void* data) noexcept
    {
        *made = nullptr;
        Do(data, [&](OutlineUnion& border) {
            UnionVertex vertex;
            vertex.place = {place[0], place[1], 0};
            for (int n = 0; n < 4; ++n)
            {
                const auto* const source = static_cast<const UnionVertex*>(from[n]);
                if (source != nullptr && source->place[0] == place[0] &&
                    source->place[1] == place[1])
                {
                    std::for_each_n(source->tags.begin(), source->tagCount,
                                    [&](const PieceTag& tag) { vertex.AddTag(tag); });
                }
            }
            // from[0] and from[1] are the ends of one edge, from[2] and from[3] the ends of the
            // other. When GLU only merges two vertices, from[2] and from[3] are null.
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
            border.vertices_.push_back(vertex);
            *made = &border.vertices_.back();
        });
    }

    static void CALLBACK FlagEdge(GLboolean, void*) noexcept {}

    static void CALLBACK Error(GLenum code, void* data) noexcept
    {
        auto& border = *static_cast<OutlineUnion*>(data);
        border.failed_ = true;
        border.isOutOfMemory_ = border.isOutOfMemory_ || code == GLU_OUT_OF_MEMORY;
    }

private:
    template <typename Action>
    static void Do(void* data, Action action)
    {
        auto& border = *static_cast<OutlineUnion*>(data);
        try
        {
            action(border);
        }
        catch (...)
        {
            border.exception_ = std::current_exception();
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
        throw std::bad_alloc();
    }
    GLUtesselator* const tess = tessellator.get();
    gluTessProperty(tess, GLU_TESS_WINDING_RULE, GLU_TESS_WINDING_NONZERO);
    gluTessProperty(tess, GLU_TESS_BOUNDARY_ONLY, GL_TRUE);
    gluTessNormal(tess, 0, 0, 1);
    gluTessCallback(tess, GLU_TESS_BEGIN_DATA, AsCallback(UnionCallbacks::Begin));
    gluTessCallback(tess, GLU_TESS_VERTEX_DATA, AsCallback(UnionCallbacks::AddVertex));
    gluTessCallback(tess, GLU_TESS_COMBINE_DATA, AsCallback(UnionCallbacks::Combine));
    // Without this callback the tessellator takes a short cut for contours whose triangles from the
    // first vertex all turn the same way. It would not notice when such a contour crosses itself.
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
    // An outline that was not united because of too little memory must not be taken for one that
    // cannot be united.
    if (exception_ != nullptr)
    {
        std::rethrow_exception(exception_);
    }
    if (isOutOfMemory_)
    {
        throw std::bad_alloc();
    }
    // When there was no memory for a new vertex, its loop contains a null pointer.
    const bool isComplete = std::none_of(loops_.begin(), loops_.end(), [](const auto& loop) {
        return std::find(loop.begin(), loop.end(), nullptr) != loop.end();
    });
    if (failed_ || !isComplete)
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
        twice += Cross(loop[n]->Point(), loop[n + 1 < loop.size() ? n + 1 : 0]->Point());
    }
    return twice / 2;
}

bool IsSliver(const std::vector<const UnionVertex*>& loop)
{
    double length = 0;
    for (std::size_t n = 0; n < loop.size(); ++n)
    {
        length += Length(loop[n + 1 < loop.size() ? n + 1 : 0]->Point() - loop[n]->Point());
    }
    // A strip of width w and length l has the area w * l, and its border is about 2 * l long.
    constexpr double minWidth = 1.0;
    return loop.size() < 3 || std::fabs(SignedArea(loop)) < minWidth * length / 2;
}

}  // namespace orvane::contours
