// SPDX-License-Identifier: MIT
#include "solids/MeshBuilder.h"

#include "extrude/OrvFont.h"
#include "geometry/SurfaceRecorder.h"
#include "imaging/TextureMap.h"
#include "import3ds/TriangularMeshObject.h"
#include "platform/CodePages.h"
#include "platform/Utf8.h"
#include "scene/OrvFontString.h"
#include "solids/ClosedText.h"
#include "solids/MeshMaterials.h"
#include "solids/MeshTransform.h"
#include "solids/NodeTransform.h"
#include "solids/OrvOutlineShape.h"
#include "solids/OrvProfileString.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <filesystem>
#include <limits>
#include <map>
#include <stdexcept>
#include <unordered_map>
#include <utility>

namespace orvane
{

namespace
{

std::string NameOf(const CString& name)
{
    return CodePageToUtf8(name.Text(), GetACP());
}

/// The direction of a triangle's normal, of any length; +z for a triangle without area.
MeshPoint NormalOf(const MeshPoint& a, const MeshPoint& b, const MeshPoint& c)
{
    const MeshPoint cross = Cross(Minus(b, a), Minus(c, a));
    return cross != MeshPoint{0, 0, 0} ? cross : MeshPoint{0, 0, 1};
}

/// Gives a normal the length 1. Normals of letters are shorter or longer by up to 0.0001, because
/// they are computed with floats; such a normal does not change. Returns false when the length is
/// 0, infinite or no number.
bool SetNormal(const MeshPoint& vector, float (&normal)[3])
{
    const double square = Dot(vector, vector);
    constexpr double rounding = 1e-3;  // of the square of the length
    const double length = std::fabs(square - 1) < rounding ? 1 : std::sqrt(square);
    for (std::size_t axis = 0; axis < 3; ++axis)
    {
        normal[axis] = static_cast<float>(vector[axis] / length);
    }
    return length > 0 && std::isfinite(length);
}

MeshPoint PointOf(const float (&vector)[3])
{
    return {vector[0], vector[1], vector[2]};
}

/// Makes room for so many elements. The room grows at least to the double, so that many small
/// nodes do not copy all elements again and again.
template <typename Element>
void Reserve(std::vector<Element>& elements, std::size_t count)
{
    if (count > elements.capacity())
    {
        elements.reserve(std::max(count, 2 * elements.capacity()));
    }
}

/// Exchanges two corners of each triangle.
void TurnRound(std::vector<std::uint32_t>& indices, std::size_t first)
{
    for (std::size_t i = first; i < indices.size(); i += 3)
    {
        std::swap(indices[i + 1], indices[i + 2]);
    }
}

class MeshBuilder
{
public:
    explicit MeshBuilder(const MeshBuildOptions& options) : options_(options) {}

    void Add(DrawingObject& root);
    SolidMesh Take() { return std::move(mesh_); }

private:
    /// The triangles of one part and material of a node.
    struct Bucket
    {
        MeshPart part;
        int material;
        std::size_t indexCount = 0;
        std::size_t nextIndex = 0;  ///< in the mesh: of the next triangle
    };
    /// Consecutive triangles of a shape, all in one bucket.
    struct Run
    {
        std::size_t bucket;      ///< in buckets_
        std::size_t firstIndex;  ///< in shapeIndices_
        std::size_t indexCount;
    };
    /// A letter or an imported mesh of the node in hand.
    struct Shape
    {
        std::size_t firstVertex;  ///< in shapeVertices_
        std::size_t vertexCount;
        std::size_t firstRun;  ///< in runs_
        std::size_t endRun;
    };
    /// A shape at its place in the mesh.
    struct PlacedShape
    {
        Shape shape;
        PlacedLetter letter;
        std::size_t firstVertex;  ///< in the mesh
    };

    void AddText(OrvFontString& text, const MeshTransform& transform);
    void AddOutlines(OrvOutlineShape& outlines, const MeshTransform& transform);
    /// Adds a node that consists of solids, but not yet the solids.
    void AddSolidNode(DrawingObject& object, const MeshTransform& transform,
                      const std::string& name);
    /// Adds the solids of a text or of outlines.
    template <typename Node>
    void AddSolids(Node& node, const MeshTransform& placement);
    void AddImportedMesh(const TriangularMeshObject& object, const MeshTransform& transform);
    MeshNode& AddNode(DrawingObject& object, const MeshTransform& transform);
    void ForgetShapes();
    /// Keeps the triangles of the recorder, with the normals that they will have in the mesh.
    Shape KeepShape(const MeshTransform& placement);
    void ReplaceMissingNormals(const Shape& shape, std::size_t firstIndex,
                               const MeshTransform& placement);
    std::size_t BucketOf(const SurfaceRecorder::Run& run);
    /// Adds the vertices of all shapes of the node to the mesh.
    void AddShapes(std::vector<PlacedShape>& shapes, const MeshTransform& placement);
    void AddVertices(const PlacedShape& placed, const MeshTransform& placement);
    template <typename Visit>
    void ForEachRun(const std::vector<PlacedShape>& shapes, Visit visit) const;
    /// Adds the triangles with a group for each run of each letter.
    void AddGroupsOfLetters(const std::vector<PlacedShape>& shapes);
    /// Adds the triangles with a group for each bucket.
    void AddGroupsOfBuckets(const std::vector<PlacedShape>& shapes);
    /// \param first where the run's indices stand in the mesh
    void SetIndices(const PlacedShape& placed, const Run& run, std::size_t first);
    void AddGroup(const Bucket& bucket, std::size_t firstIndex, std::size_t indexCount);
    MeshTransform PlacementOf(const MeshTransform& transform) const
    {
        return options_.inWorldCoordinates ? transform : MeshTransform();
    }

    MeshBuildOptions options_;
    SurfaceRecorder recorder_{options_.renderedDiagonals
                                  ? SurfaceRecorder::Diagonals::UsualAndRendered
                                  : SurfaceRecorder::Diagonals::Usual};
    MeshMaterials materials_;
    // Of the node in hand:
    std::vector<Bucket> buckets_;
    std::map<std::pair<MeshPart, int>, std::size_t> bucketPlaces_;  ///< by part and material
    std::vector<Run> runs_;
    std::vector<MeshVertex> shapeVertices_;    ///< where they were recorded
    std::vector<std::uint32_t> shapeIndices_;  ///< counted from the first vertex of the shape
    std::vector<bool> hasNormal_;              ///< of the vertices of the shape in hand
    SolidMesh mesh_;
};

void MeshBuilder::Add(DrawingObject& root)
{
    struct Pending
    {
        DrawingObject* node;
        MeshTransform above;
    };
    // Not recursive, because a tree may be deeper than the program's stack allows.
    std::vector<Pending> pending = {{&root, TransformAbove(root)}};
    while (!pending.empty())
    {
        const Pending next = pending.back();
        pending.pop_back();
        if (next.node->IsDeleted())
        {
            continue;
        }
        const MeshTransform transform = next.above * TransformOf(*next.node);
        if (auto* const text = dynamic_cast<OrvFontString*>(next.node))
        {
            AddText(*text, transform);
        }
        else if (auto* const outlines = dynamic_cast<OrvOutlineShape*>(next.node))
        {
            AddOutlines(*outlines, transform);
        }
        else if (auto* const object = dynamic_cast<TriangularMeshObject*>(next.node))
        {
            AddImportedMesh(*object, transform);
        }
        const DrawingObjectList& children = *next.node->GetChildren();
        for (POSITION position = children.GetTailPosition(); position != nullptr;)
        {
            pending.push_back({children.GetPrev(position), transform});
        }
    }
    mesh_.materials = materials_.Take();
}

void MeshBuilder::AddText(OrvFontString& text, const MeshTransform& transform)
{
    if (text.GetFont() == nullptr)
    {
        return;
    }
    AddSolidNode(
        text, transform,
        text.IsUtf8() ? ValidUtf8(text.GetTextString()->Text()) : NameOf(*text.GetTextString()));
    const MeshTransform placement = PlacementOf(transform);
    if (options_.closedTexts && !IsClosedText(text))
    {
        const std::unique_ptr<OrvProfileString> closed = MakeClosedText(text);
        AddSolids(*closed, placement);
        mesh_.nodes.back().uncut = closed->UncutSolids();
        materials_.ForgetAddresses();
        return;
    }
    AddSolids(text, placement);
}

void MeshBuilder::AddOutlines(OrvOutlineShape& outlines, const MeshTransform& transform)
{
    const std::filesystem::path file = outlines.GetFileName().Text();
    AddSolidNode(outlines, transform, ValidUtf8(file.stem().string()));
    AddSolids(outlines, PlacementOf(transform));
}

void MeshBuilder::AddSolidNode(DrawingObject& object, const MeshTransform& transform,
                               const std::string& name)
{
    MeshNode& node = AddNode(object, transform);
    node.name = name;
    const TextureMap& texture = *std::as_const(object).GetTexture();
    if (texture.ShouldTexture())
    {
        node.texture = std::make_shared<const TextureMap>(texture);
    }
}

template <typename Node>
void MeshBuilder::AddSolids(Node& node, const MeshTransform& placement)
{
    ForgetShapes();
    std::unordered_map<int, Shape> known;  // by glyph index
    std::vector<PlacedShape> shapes;
    node.PlaceSolids([&](const PlacedLetter& letter) {
        const auto found = known.try_emplace(letter.glyphIndex);
        if (found.second)
        {
            recorder_.Clear();
            node.RecordSolid(letter.glyphIndex, recorder_);
            found.first->second = KeepShape(placement);
        }
        shapes.push_back({found.first->second, letter, 0});
    });
    AddShapes(shapes, placement);
    options_.separateLetters ? AddGroupsOfLetters(shapes) : AddGroupsOfBuckets(shapes);
}

void MeshBuilder::AddImportedMesh(const TriangularMeshObject& object,
                                  const MeshTransform& transform)
{
    recorder_.Clear();
    object.RecordSurface(recorder_);
    MeshNode& node = AddNode(const_cast<TriangularMeshObject&>(object), transform);
    node.name = NameOf(object.name);
    const MeshTransform placement = PlacementOf(transform);
    ForgetShapes();
    const PlacedLetter atOrigin = {0, -1, 0, 0, 0};
    std::vector<PlacedShape> shapes = {{KeepShape(placement), atOrigin, 0}};
    AddShapes(shapes, placement);
    AddGroupsOfBuckets(shapes);
}

MeshNode& MeshBuilder::AddNode(DrawingObject& object, const MeshTransform& transform)
{
    MeshNode& node = mesh_.nodes.emplace_back();
    node.object = &object;
    if (!options_.inWorldCoordinates)
    {
        node.transform = transform.matrix;
    }
    return node;
}

void MeshBuilder::ForgetShapes()
{
    buckets_.clear();
    bucketPlaces_.clear();
    runs_.clear();
    shapeVertices_.clear();
    shapeIndices_.clear();
}

MeshBuilder::Shape MeshBuilder::KeepShape(const MeshTransform& placement)
{
    const std::size_t firstIndex = shapeIndices_.size();
    Shape shape = {shapeVertices_.size(), recorder_.Vertices().size(), runs_.size(), 0};
    for (const SurfaceRecorder::Run& run : recorder_.Runs())
    {
        runs_.push_back({BucketOf(run), firstIndex + run.firstIndex, run.indexCount});
    }
    shape.endRun = runs_.size();
    shapeVertices_.insert(shapeVertices_.end(), recorder_.Vertices().begin(),
                          recorder_.Vertices().end());
    const std::vector<std::uint32_t>& indices =
        options_.renderedDiagonals ? recorder_.RenderedIndices() : recorder_.Indices();
    shapeIndices_.insert(shapeIndices_.end(), indices.begin(), indices.end());
    if (placement.IsMirroring())
    {
        TurnRound(shapeIndices_, firstIndex);
    }
    const MeshTransform forNormals = placement.ForNormals();
    const bool isMoved = !placement.IsIdentity();
    bool haveAllNormals = true;
    hasNormal_.assign(shape.vertexCount, true);
    for (std::size_t i = 0; i < shape.vertexCount; ++i)
    {
        MeshVertex& vertex = shapeVertices_[shape.firstVertex + i];
        const MeshPoint normal = PointOf(vertex.normal);
        if (!SetNormal(isMoved ? forNormals.Apply(normal, 0) : normal, vertex.normal))
        {
            hasNormal_[i] = false;
            haveAllNormals = false;
        }
    }
    if (!haveAllNormals)
    {
        ReplaceMissingNormals(shape, firstIndex, placement);
        shape.vertexCount = shapeVertices_.size() - shape.firstVertex;
    }
    return shape;
}

void MeshBuilder::ReplaceMissingNormals(const Shape& shape, std::size_t firstIndex,
                                        const MeshTransform& placement)
{
    const auto pointOf = [&](std::size_t index) {
        const MeshVertex& vertex = shapeVertices_[shape.firstVertex + shapeIndices_[index]];
        const MeshPoint point = PointOf(vertex.position);
        return placement.IsIdentity() ? point : placement.Apply(point, 0);
    };
    for (std::size_t i = firstIndex; i < shapeIndices_.size(); ++i)
    {
        const std::uint32_t index = shapeIndices_[i];
        if (index >= shape.vertexCount || hasNormal_[index])
        {
            continue;
        }
        // The vertex may belong to several triangles, so each gets a vertex of its own.
        const std::size_t first = i - (i - firstIndex) % 3;
        MeshVertex vertex = shapeVertices_[shape.firstVertex + index];
        SetNormal(NormalOf(pointOf(first), pointOf(first + 1), pointOf(first + 2)), vertex.normal);
        shapeIndices_[i] = static_cast<std::uint32_t>(shapeVertices_.size() - shape.firstVertex);
        shapeVertices_.push_back(vertex);
    }
}

std::size_t MeshBuilder::BucketOf(const SurfaceRecorder::Run& run)
{
    const int material = materials_.IndexOf(*run.material);
    const auto [place, isNew] = bucketPlaces_.try_emplace({run.part, material}, buckets_.size());
    if (isNew)
    {
        buckets_.push_back({run.part, material, 0, 0});
    }
    return place->second;
}

void MeshBuilder::AddShapes(std::vector<PlacedShape>& shapes, const MeshTransform& placement)
{
    std::size_t vertexCount = mesh_.vertices.size();
    for (PlacedShape& placed : shapes)
    {
        placed.firstVertex = vertexCount;
        vertexCount += placed.shape.vertexCount;
    }
    if (vertexCount > std::numeric_limits<std::uint32_t>::max())
    {
        throw std::length_error("a mesh has at most 4,294,967,295 vertices");
    }
    Reserve(mesh_.vertices, vertexCount);
    for (const PlacedShape& placed : shapes)
    {
        AddVertices(placed, placement);
    }
}

template <typename Visit>
void MeshBuilder::ForEachRun(const std::vector<PlacedShape>& shapes, Visit visit) const
{
    for (const PlacedShape& placed : shapes)
    {
        for (std::size_t run = placed.shape.firstRun; run < placed.shape.endRun; ++run)
        {
            visit(placed, runs_[run]);
        }
    }
}

void MeshBuilder::AddGroupsOfLetters(const std::vector<PlacedShape>& shapes)
{
    std::size_t next = mesh_.indices.size();
    std::size_t end = next;
    ForEachRun(shapes, [&end](const PlacedShape&, const Run& run) { end += run.indexCount; });
    Reserve(mesh_.indices, end);
    mesh_.indices.resize(end);
    ForEachRun(shapes, [&](const PlacedShape& placed, const Run& run) {
        AddGroup(buckets_[run.bucket], next, run.indexCount);
        mesh_.groups.back().letter = static_cast<int>(placed.letter.character);
        mesh_.groups.back().line = placed.letter.line;
        SetIndices(placed, run, next);
        next += run.indexCount;
    });
}

void MeshBuilder::AddGroupsOfBuckets(const std::vector<PlacedShape>& shapes)
{
    ForEachRun(shapes, [this](const PlacedShape&, const Run& run) {
        buckets_[run.bucket].indexCount += run.indexCount;
    });
    std::size_t end = mesh_.indices.size();
    for (Bucket& bucket : buckets_)
    {
        AddGroup(bucket, end, bucket.indexCount);
        bucket.nextIndex = end;
        end += bucket.indexCount;
    }
    Reserve(mesh_.indices, end);
    mesh_.indices.resize(end);
    ForEachRun(shapes, [this](const PlacedShape& placed, const Run& run) {
        std::size_t& next = buckets_[run.bucket].nextIndex;
        SetIndices(placed, run, next);
        next += run.indexCount;
    });
}

void MeshBuilder::AddVertices(const PlacedShape& placed, const MeshTransform& placement)
{
    const MeshPoint place = placement.Apply({placed.letter.x, placed.letter.y, 0});
    const bool isMoved = !placement.IsIdentity();
    const auto first =
        shapeVertices_.begin() + static_cast<std::ptrdiff_t>(placed.shape.firstVertex);
    const auto end = first + static_cast<std::ptrdiff_t>(placed.shape.vertexCount);
    for (auto vertex = first; vertex != end; ++vertex)
    {
        MeshPoint point = PointOf(vertex->position);
        if (isMoved)
        {
            point = placement.Apply(point, 0);
        }
        MeshVertex& moved = mesh_.vertices.emplace_back(*vertex);
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            moved.position[axis] = static_cast<float>(point[axis] + place[axis]);
        }
    }
}

void MeshBuilder::SetIndices(const PlacedShape& placed, const Run& run, std::size_t first)
{
    const auto firstVertex = static_cast<std::uint32_t>(placed.firstVertex);
    const std::uint32_t* const indices = shapeIndices_.data() + run.firstIndex;
    std::transform(indices, indices + run.indexCount, mesh_.indices.data() + first,
                   [firstVertex](std::uint32_t index) { return firstVertex + index; });
}

void MeshBuilder::AddGroup(const Bucket& bucket, std::size_t firstIndex, std::size_t indexCount)
{
    MeshGroup& group = mesh_.groups.emplace_back();
    group.firstIndex = firstIndex;
    group.indexCount = indexCount;
    group.node = static_cast<int>(mesh_.nodes.size()) - 1;
    group.part = bucket.part;
    group.material = bucket.material;
}

}  // namespace

SolidMesh BuildMesh(DrawingObject& node, const MeshBuildOptions& options)
{
    MeshBuilder builder(options);
    builder.Add(node);
    return builder.Take();
}

}  // namespace orvane
