// SPDX-License-Identifier: MIT
#include "solids/MeshCache.h"

#include "import3ds/TriangularMeshObject.h"
#include "platform/OpenGL.h"
#include "scene/OrvFontString.h"
#include "solids/OrvOutlineShape.h"
#include "solids/drawing/ImportedMeshDrawing.h"
#include "solids/drawing/OpenGLFunctions.h"
#include "solids/drawing/OutlineMeshDrawing.h"
#include "solids/drawing/TextMeshDrawing.h"

#include <algorithm>

namespace orvane
{

namespace
{

constexpr GLenum provokingVertex = 0x8E4F;  // OpenGL 3.2
constexpr GLint lastVertexConvention = 0x8E4E;

/// What a map's entry takes besides the triangles, about.
constexpr std::size_t bytesPerEntry = 512;

bool AreTrianglesFilled()
{
    GLint modes[2] = {GL_FILL, GL_FILL};
    glGetIntegerv(GL_POLYGON_MODE, modes);
    return modes[0] == GL_FILL && modes[1] == GL_FILL;
}

/// Whether OpenGL colours triangles as it colours the quadrilaterals of letters that they stand
/// for: with a colour for each corner, and cut along the usual diagonal.
bool AreTrianglesShadedAlike(bool hasConvention)
{
    GLint shading = GL_SMOOTH;
    glGetIntegerv(GL_SHADE_MODEL, &shading);
    GLint convention = lastVertexConvention;
    if (hasConvention)
    {
        glGetIntegerv(provokingVertex, &convention);
    }
    return shading == GL_SMOOTH && convention == lastVertexConvention;
}

}  // namespace

MeshCache::MeshCache(Storage storage, std::size_t maxBytes) : storage_(storage), maxBytes_(maxBytes)
{}

MeshCache::~MeshCache() = default;

SolidDrawing MeshCache::DrawLetters(OrvFontString& text, DrawingParameters& parameters)
{
    return Draw<TextMeshDrawing>(text, parameters);
}

SolidDrawing MeshCache::DrawOutlines(OrvOutlineShape& outlines, DrawingParameters& parameters)
{
    return Draw<OutlineMeshDrawing>(outlines, parameters);
}

SolidDrawing MeshCache::DrawSurface(TriangularMeshObject& mesh, DrawingParameters& parameters)
{
    return Draw<ImportedMeshDrawing>(mesh, parameters);
}

void MeshCache::Clear()
{
    entries_.clear();
    bytes_ = 0;
}

template <typename Drawing, typename Node>
SolidDrawing MeshCache::Draw(Node& node, DrawingParameters& parameters)
{
    if (!isReady_)
    {
        functions_ = storage_ == Storage::Automatic ? FindBufferFunctions() : nullptr;
        hasConvention_ = CurrentOpenGLVersion() >= 3.2;
        isReady_ = true;
    }
    if (!AreTrianglesFilled() || (!hasShaders_ && !AreTrianglesShadedAlike(hasConvention_)))
    {
        return SolidDrawing::NotDrawn;
    }
    ++draws_;
    FreeUnused();
    Entry& entry = entries_[&node];
    auto* drawing = dynamic_cast<Drawing*>(entry.drawing.get());
    if (drawing == nullptr)
    {
        auto made = std::make_unique<Drawing>(functions_);
        drawing = made.get();
        entry.drawing = std::move(made);
    }
    entry.lastUse = draws_;
    const std::size_t others = bytes_ - entry.bytes;
    const SolidDrawing result =
        drawing->Draw(node, parameters, maxBytes_ - std::min(others, maxBytes_));
    entry.bytes = drawing->Bytes() + bytesPerEntry;
    bytes_ = others + entry.bytes;
    return result;
}

void MeshCache::FreeUnused()
{
    // Looking through all entries costs about as much as drawing one node, so it is done once in
    // as many draws as there are entries.
    if (bytes_ <= maxBytes_ / 2 || draws_ < nextLook_)
    {
        return;
    }
    const std::size_t rounds = 2 * entries_.size();
    for (auto each = entries_.begin(); each != entries_.end();)
    {
        const bool isUnused = draws_ - each->second.lastUse > rounds;
        bytes_ -= isUnused ? each->second.bytes : 0;
        each = isUnused ? entries_.erase(each) : std::next(each);
    }
    nextLook_ = draws_ + entries_.size();
}

}  // namespace orvane
