// SPDX-License-Identifier: MIT
#include "contours/Tessellation.h"

#include <exception>
#include <memory>
#include <new>
#include <utility>

namespace orvane::contours
{
namespace
{

/// The tessellation under way on this thread. It must be a thread_local variable because GLU passes
/// no pointer from the caller to these callbacks.
struct Tessellation
{
    FaceSink* sink;
    GLenum error;
    std::exception_ptr exception;
};
thread_local Tessellation current = {nullptr, 0, nullptr};

/// Sets the tessellation under way and restores the previous one at its end, also after an
/// exception.
class CurrentTessellation
{
public:
    explicit CurrentTessellation(FaceSink& sink)
        : previous_(std::exchange(current, {&sink, 0, nullptr}))
    {}
    ~CurrentTessellation() { current = previous_; }
    CurrentTessellation(const CurrentTessellation&) = delete;
    CurrentTessellation& operator=(const CurrentTessellation&) = delete;

private:
    Tessellation previous_;
};

/// Runs the body of a callback. Exceptions must not pass through GLU, which is written in C, so
/// they are caught here and thrown again when GLU is done.
template <typename Action>
void Guard(Action action) noexcept
{
    try
    {
        action();
    }
    catch (...)
    {
        if (current.exception == nullptr)
        {
            current.exception = std::current_exception();
        }
    }
}

using TessellatorFunction = _GLUfuncptr;

template <typename Function>
TessellatorFunction AsCallback(Function* function)
{
    return reinterpret_cast<TessellatorFunction>(function);
}

void CALLBACK Begin(GLenum type)
{
    Guard([type] { current.sink->Begin(type); });
}

void CALLBACK AddVertex(void* index)
{
    Guard([index] { current.sink->Add(*static_cast<unsigned short*>(index)); });
}

void CALLBACK End()
{
    Guard([] { current.sink->End(); });
}

void CALLBACK Error(GLenum code)
{
    current.error = code;
}

struct DeleteTessellator
{
    void operator()(GLUtesselator* tessellator) const { gluDeleteTess(tessellator); }
};

}  // namespace

bool TessellateFaces(std::span<Corner> corners, std::span<const int> sizes, FaceSink& sink)
{
    const std::unique_ptr<GLUtesselator, DeleteTessellator> tessellator(gluNewTess());
    if (tessellator == nullptr)
    {
        throw std::bad_alloc();
    }
    const CurrentTessellation scope(sink);

    GLUtesselator* const tess = tessellator.get();
    gluTessCallback(tess, GLU_BEGIN, AsCallback(Begin));
    // With an edge flag callback, GLU would make separate triangles only, no fans and strips.
    gluTessCallback(tess, GLU_EDGE_FLAG, nullptr);
    gluTessCallback(tess, GLU_VERTEX, AsCallback(AddVertex));
    gluTessCallback(tess, GLU_END, AsCallback(End));
    gluTessCallback(tess, GLU_ERROR, AsCallback(Error));

    gluBeginPolygon(tess);
    Corner* corner = corners.data();
    for (std::size_t contour = 0; contour < sizes.size(); ++contour)
    {
        if (contour > 0)
        {
            gluNextContour(tess, GLU_UNKNOWN);
        }
        for (int k = 0; k < sizes[contour]; ++k, ++corner)
        {
            gluTessVertex(tess, corner->place, &corner->index);
        }
    }
    gluEndPolygon(tess);
    if (current.exception != nullptr)
    {
        std::rethrow_exception(current.exception);
    }
    if (current.error == GLU_OUT_OF_MEMORY)
    {
        throw std::bad_alloc();
    }
    return current.error == 0;
}

}  // namespace orvane::contours
