// SPDX-License-Identifier: MIT
#include "solids/MeshBuilder.h"

#include "extrude/OrvFont.h"
#include "geometry/SurfaceRecorder.h"
#include "imaging/TextureMap.h"
#include "import3ds/TriangularMeshObject.h"
#include "platform/CodePages.h"
#include "scene/OrvFontString.h"
#include "solids/MeshMaterials.h"
#include "solids/MeshTransform.h"
#include "solids/NodeTransform.h"

#include <algorithm>
#include <cmath>
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

/// The triangles of a letter or an imported mesh. They are turned and scaled as they will be in the
/// mesh, but not moved to their place.
struct Shape
{
    Shape() = default;
    Shape(const SurfaceRecorder& recorder, const MeshTransform& placement);

    std::vector<MeshPoint> points;     ///< the position of each vertex
    std::vector<MeshVertex> vertices;  ///< without positions
    std::vector<std::uint32_t> indices;
    std::vector<SurfaceRecorder::Run> runs;

private:
    /// \param hasNormal of each vertex
    void ReplaceMissingNormals(const std::vector<bool>& hasNormal);
};

Shape::Shape(const SurfaceRecorder& recorder, const MeshTransform& placement)
    : vertices(recorder.Vertices()), indices(recorder.Indices()), runs(recorder.Runs())
{
    if (placement.IsMirroring())
    {
        for (std::size_t i = 0; i < indices.size(); i += 3)
        {
            std::swap(indices[i + 1], indices[i + 2]);
        }
    }
    const MeshTransform forNormals = placement.ForNormals();
    const bool isMoved = !placement.IsIdentity();
    points.reserve(vertices.size());
    std::vector<bool> hasNormal(vertices.size());
    for (std::size_t i = 0; i < vertices.size(); ++i)
    {
        MeshVertex& vertex = vertices[i];
        const MeshPoint point = PointOf(vertex.position);
        const MeshPoint normal = PointOf(vertex.normal);
        points.push_back(isMoved ? placement.Apply(point, 0) : point);
        hasNormal[i] = SetNormal(isMoved ? forNormals.Apply(normal, 0) : normal, vertex.normal);
    }
    ReplaceMissingNormals(hasNormal);
}

void Shape::ReplaceMissingNormals(const std::vector<bool>& hasNormal)
{
    for (std::size_t i = 0; i < indices.size(); ++i)
    {
        const std::uint32_t index = indices[i];
        if (hasNormal[index])
        {
            continue;
        }
        // The vertex may belong to several triangles, so each gets a vertex of its own.
        const std::size_t first = i - i % 3;
        MeshVertex vertex = vertices[index];
        SetNormal(NormalOf(points[indices[first]], points[indices[first + 1]],
                           points[indices[first + 2]]),
                  vertex.normal);
        indices[i] = static_cast<std::uint32_t>(vertices.size());
        vertices.push_back(vertex);
        points.push_back(MeshPoint(points[index]));
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
        std::vector<std::uint32_t> indices;
    };

    void AddText(OrvFontString& text, const MeshTransform& transform);
    void AddImportedMesh(const TriangularMeshObject& object, const MeshTransform& transform);
    MeshNode& AddNode(DrawingObject& object, const MeshTransform& transform);
    /// Adds the vertices of a shape, moved from the origin of its node to a place.
    /// Returns the index of the first vertex in the mesh.
    std::uint32_t AddVertices(const Shape& shape, const MeshPoint& place);
    Bucket& BucketOf(const SurfaceRecorder::Run& run);
    void AddBuckets();
    void AddGroup(MeshPart part, int material, std::size_t indexCount);
    MeshTransform PlacementOf(const MeshTransform& transform) const
    {
        return options_.inWorldCoordinates ? transform : MeshTransform();
    }

    MeshBuildOptions options_;
    SurfaceRecorder recorder_;
    MeshMaterials materials_;
    std::vector<Bucket> buckets_;                                   ///< of the node in hand
    std::map<std::pair<MeshPart, int>, std::size_t> bucketPlaces_;  ///< by part and material
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
    MeshNode& node = AddNode(text, transform);
    node.name = NameOf(*text.GetTextString());
    const TextureMap& texture = *std::as_const(text).GetTexture();
    if (texture.ShouldTexture())
    {
        node.texture = std::make_shared<const TextureMap>(texture);
    }

    const MeshTransform placement = PlacementOf(transform);
    std::unordered_map<int, Shape> shapes;  // by glyph index
    std::vector<std::pair<PlacedLetter, const Shape*>> letters;
    std::size_t vertexCount = mesh_.vertices.size();
    std::size_t indexCount = mesh_.indices.size();
    text.PlaceSolids([&](const PlacedLetter& letter) {
        const auto found = shapes.try_emplace(letter.glyphIndex);
        Shape& shape = found.first->second;
        if (found.second)
        {
            recorder_.Clear();
            text.RecordSolid(letter.glyphIndex, recorder_);
            shape = Shape(recorder_, placement);
        }
        letters.emplace_back(letter, &shape);
        vertexCount += shape.vertices.size();
        indexCount += shape.indices.size();
    });
    Reserve(mesh_.vertices, vertexCount);
    Reserve(mesh_.indices, indexCount);
    for (const auto& each : letters)
    {
        const PlacedLetter& letter = each.first;
        const Shape& shape = *each.second;
        const std::uint32_t first = AddVertices(shape, placement.Apply({letter.x, letter.y, 0}));
        for (const SurfaceRecorder::Run& run : shape.runs)
        {
            std::vector<std::uint32_t>& indices =
                options_.separateLetters ? mesh_.indices : BucketOf(run).indices;
            for (std::size_t i = run.firstIndex; i < run.firstIndex + run.indexCount; ++i)
            {
                indices.push_back(first + shape.indices[i]);
            }
            if (options_.separateLetters)
            {
                AddGroup(run.part, materials_.IndexOf(*run.material), run.indexCount);
                mesh_.groups.back().letter = static_cast<int>(letter.character);
                mesh_.groups.back().line = letter.line;
            }
        }
    }
    AddBuckets();
}

void MeshBuilder::AddImportedMesh(const TriangularMeshObject& object,
                                  const MeshTransform& transform)
{
    recorder_.Clear();
    object.RecordSurface(recorder_);
    MeshNode& node = AddNode(const_cast<TriangularMeshObject&>(object), transform);
    node.name = NameOf(object.name);
    const MeshTransform placement = PlacementOf(transform);
    const Shape shape(recorder_, placement);
    const std::uint32_t first = AddVertices(shape, placement.Apply({0, 0, 0}));
    for (const SurfaceRecorder::Run& run : shape.runs)
    {
        Bucket& bucket = BucketOf(run);
        for (std::size_t i = run.firstIndex; i < run.firstIndex + run.indexCount; ++i)
        {
            bucket.indices.push_back(first + shape.indices[i]);
        }
    }
    AddBuckets();
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

std::uint32_t MeshBuilder::AddVertices(const Shape& shape, const MeshPoint& place)
{
    const std::size_t first = mesh_.vertices.size();
    if (shape.vertices.size() > std::numeric_limits<std::uint32_t>::max() - first)
    {
        throw std::length_error("a mesh has at most 4,294,967,295 vertices");
    }
    mesh_.vertices.insert(mesh_.vertices.end(), shape.vertices.begin(), shape.vertices.end());
    for (std::size_t i = 0; i < shape.points.size(); ++i)
    {
        for (std::size_t axis = 0; axis < 3; ++axis)
        {
            mesh_.vertices[first + i].position[axis] =
                static_cast<float>(shape.points[i][axis] + place[axis]);
        }
    }
    return static_cast<std::uint32_t>(first);
}

MeshBuilder::Bucket& MeshBuilder::BucketOf(const SurfaceRecorder::Run& run)
{
    const int material = materials_.IndexOf(*run.material);
    const auto [place, isNew] = bucketPlaces_.try_emplace({run.part, material}, buckets_.size());
    if (isNew)
    {
        buckets_.push_back({run.part, material, {}});
    }
    return buckets_[place->second];
}

void MeshBuilder::AddBuckets()
{
    for (Bucket& bucket : buckets_)
    {
        mesh_.indices.insert(mesh_.indices.end(), bucket.indices.begin(), bucket.indices.end());
        AddGroup(bucket.part, bucket.material, bucket.indices.size());
        bucket.indices = {};
    }
    buckets_.clear();
    bucketPlaces_.clear();
}

void MeshBuilder::AddGroup(MeshPart part, int material, std::size_t indexCount)
{
    MeshGroup& group = mesh_.groups.emplace_back();
    group.firstIndex = mesh_.indices.size() - indexCount;
    group.indexCount = indexCount;
    group.node = static_cast<int>(mesh_.nodes.size()) - 1;
    group.part = part;
    group.material = material;
}

}  // namespace

SolidMesh BuildMesh(DrawingObject& node, const MeshBuildOptions& options)
{
    MeshBuilder builder(options);
    builder.Add(node);
    return builder.Take();
}

}  // namespace orvane
