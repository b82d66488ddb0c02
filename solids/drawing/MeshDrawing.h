// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/MeshVertex.h"
#include "material/NamedColor.h"
#include "scene/SolidDrawer.h"
#include "solids/drawing/MeshBuffers.h"

namespace orvane
{

/// The triangles of one node, kept between draws. Each draw compares everything
/// that the triangles are made from with what they were made from, and makes them anew when
/// something differs. Materials are not kept: each draw reads them from the node.
///
/// A drawing leaves the OpenGL state as drawing the node in immediate mode leaves it.
class MeshDrawing
{
public:
    explicit MeshDrawing(std::shared_ptr<const BufferFunctions> functions)
        : buffers(std::move(functions))
    {}
    virtual ~MeshDrawing() = default;
    MeshDrawing(const MeshDrawing&) = delete;
    MeshDrawing& operator=(const MeshDrawing&) = delete;

    /// The memory that the triangles and the copies of what they were made from take.
    virtual std::size_t Bytes() const = 0;

protected:
    /// Whether OpenGL gets the same numbers of both materials.
    static bool AreSame(const NamedColor& a, const NamedColor& b);
    /// Makes the vertex's normal the current one, and its texture coordinate if it has one.
    static void SetCurrentAttributes(const MeshVertex& vertex, bool isTextured);
    /// Appends a vertex in the format of MeshBuffers.
    static void AppendVertex(const MeshVertex& vertex, bool isTextured,
                             std::vector<float>& numbers);

    MeshBuffers buffers;
};

}  // namespace orvane
