// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Export.h"
#include "scene/SolidDrawer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>

class DrawingObject;

namespace orvane
{

class MeshDrawing;
struct BufferFunctions;

/// Draws texts, outlines and meshes from triangles that it keeps between draws, faster than
/// immediate mode when a scene is drawn again and again. The triangles lie in buffers of the
/// OpenGL context, or in the program's memory when the context has no buffers (before OpenGL 3.0,
/// without the extension GL_ARB_vertex_array_object).
///
///     orvane::MeshCache cache;                // one for each OpenGL context
///     parameters.SetSolidDrawer(&cache);
///     scene.Draw(&parameters);
///
/// Each draw compares the settings of the node with those that its triangles were made from, also
/// settings that were written directly, so a change is always seen. Only an outline that a program
/// writes into a glyph that is built already (OrvGlyph) is not seen; call Clear then.
///
/// The picture and the OpenGL state afterwards are those of immediate mode. Only a quadrilateral of
/// a letter that lies partly outside the picture may have other colours between its corners,
/// because some renderers cut it along its other diagonal. While OpenGL is to draw lines or points
/// in place of filled polygons, or with flat shading, nodes draw themselves.
///
/// The context must have OpenGL's fixed functions, because matrices, lights and materials are set
/// as in immediate mode. In a core profile, ShaderMeshDrawing (solids/ShaderMeshDrawing.h) draws.
///
/// A cache belongs to the context that is current when it draws first. That context must be current
/// at each later draw, in Clear and in the destructor. Use it on one thread at a time.
class ORVANE_API MeshCache final : public SolidDrawer
{
public:
    enum class Storage
    {
        Automatic,  ///< buffers if the context has them
        Arrays      ///< the program's memory
    };
    /// 256 MiB: about 10,000 different bevelled letters.
    static constexpr std::size_t defaultMaxBytes = std::size_t{256} << 20;

    /// \param maxBytes the most memory that all triangles may take. A node for which there is no
    /// room draws itself. Triangles that have not been drawn for some draws make room for others.
    explicit MeshCache(Storage storage = Storage::Automatic,
                       std::size_t maxBytes = defaultMaxBytes);
    ~MeshCache() override;
    MeshCache(const MeshCache&) = delete;
    MeshCache& operator=(const MeshCache&) = delete;

    SolidDrawing DrawLetters(OrvFontString& text, DrawingParameters& parameters) override;
    SolidDrawing DrawOutlines(OrvOutlineShape& outlines, DrawingParameters& parameters) override;
    SolidDrawing DrawSurface(TriangularMeshObject& mesh, DrawingParameters& parameters) override;

    /// From now on, a shader program of the caller gives every pixel its colour. So it does not
    /// matter how OpenGL would shade triangles, only that it fills them.
    void UseWithShaders() { hasShaders_ = true; }

    /// Frees all triangles.
    void Clear();
    /// The memory that the triangles take now.
    std::size_t Bytes() const { return bytes_; }

private:
    struct Entry
    {
        std::unique_ptr<MeshDrawing> drawing;
        std::size_t bytes = 0;
        std::uint64_t lastUse = 0;  ///< the number of the draw
    };

    template <typename Drawing, typename Node>
    SolidDrawing Draw(Node& node, DrawingParameters& parameters);
    /// When memory becomes scarce, frees what was not among the last draws, of which there are
    /// twice as many as entries.
    void FreeUnused();

    Storage storage_;
    std::size_t maxBytes_;
    bool isReady_ = false;  ///< whether the context has been asked for what it has
    bool hasShaders_ = false;
    bool hasConvention_ = false;  ///< the context can take colours from the first corner
    std::shared_ptr<const BufferFunctions> functions_;
    /// By address. The address of a deleted node may be that of a new node later: its triangles
    /// are then made anew, because its settings are compared.
    std::unordered_map<const DrawingObject*, Entry> entries_;
    std::size_t bytes_ = 0;
    std::uint64_t draws_ = 0;
    std::uint64_t nextLook_ = 0;  ///< the draw before which entries are looked through again
};

}  // namespace orvane
