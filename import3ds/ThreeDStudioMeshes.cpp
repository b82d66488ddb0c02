// SPDX-License-Identifier: MIT
// The part of ThreeDStudioParser that reads meshes.
#include "geometry/CoordinateTransform.h"
#include "import3ds/ThreeDStudioParser.h"
#include "import3ds/TriangularMeshObject.h"

#include <cstring>
#include <limits>

namespace orvane
{

namespace
{

constexpr DWORD bytesPerVertex = 3 * sizeof(float);
constexpr DWORD bytesPerFace = 4 * sizeof(WORD);

// An element of a list, copied out of the bytes of the file.
template <typename Value, std::size_t count>
struct Element
{
    explicit Element(const BYTE* bytes) { std::memcpy(values, bytes, sizeof values); }
    Value operator[](int index) const { return values[index]; }
    Value values[count];
};

// Turns the file's coordinates, in which z points up, into coordinates in which y points up.
const CoordinateTransform& UprightTransform()
{
    static const CoordinateTransform transform = [] {
        CoordinateTransform turn;
        turn.SetRotation(-90.0, DVector(1.0, 0.0, 0.0));
        return turn;
    }();
    return transform;
}

}  // namespace

std::unique_ptr<TriangularMeshObject> ThreeDStudioParser::ParseMesh(const Chunk3DS& chunk,
                                                                    const CString& name)
{
    auto mesh = std::make_unique<TriangularMeshObject>();
    mesh->SetName(name);
    mesh->SetMaterialColors(&node_.materials);
    const int complete = ForEachChunk(chunk, [&](const Chunk3DS& part) {
        switch (static_cast<ChunkId>(part.id))
        {
            case ChunkId::VertexList:
                return ParseVertexArray(*mesh);
            case ChunkId::FaceList:
                return ParseFaceArray(part, *mesh);
            case ChunkId::LocalAxes:
                ParseMeshMatrix();
                break;
            default:
                break;
        }
        return ReportSkipped(chunk.id, part, SkipReason::NotUsed);
    });
    return complete ? std::move(mesh) : nullptr;
}

int ThreeDStudioParser::ParseVertexArray(TriangularMeshObject& mesh)
{
    const std::optional<int> count = ReadList(bytesPerVertex);
    if (!count)
    {
        return 0;
    }
    VectorArray& vertices = *mesh.GetVerticies();
    vertices.SetSize(*count);
    for (int i = 0; i < *count; ++i)
    {
        const Element<float, 3> vertex(block_.data() + i * bytesPerVertex);
        vertices.GetElement(i)->SetVector(vertex[0], vertex[1], vertex[2]);
    }
    if (*count != 0)
    {
        UprightTransform().RotateVectors(vertices.GetElement(0), *count);
    }
    return 1;
}

int ThreeDStudioParser::ParseFaceArray(const Chunk3DS& chunk, TriangularMeshObject& mesh)
{
    const ChunkScope scope(*this, chunk);
    const std::optional<int> count = ReadList(bytesPerFace);
    if (!count)
    {
        return 0;
    }
    TriangularFaceArray& faces = *mesh.GetFaces();
    faces.SetSize(*count);
    for (int i = 0; i < *count; ++i)
    {
        const Element<WORD, 4> words(block_.data() + i * bytesPerFace);
        TriangularFace& face = faces[i];
        face.a = words[0];
        face.b = words[1];
        face.c = words[2];
        face.faceFlags = words[3];
        face.material = 0;
    }
    return ForEachChunk(chunk, [&](const Chunk3DS& part) {
        return static_cast<ChunkId>(part.id) == ChunkId::FaceMaterials
                   ? ParseMeshMaterialGroup(mesh)
                   : ReportSkipped(chunk.id, part, SkipReason::NotUsed);
    });
}

int ThreeDStudioParser::ParseMeshMaterialGroup(TriangularMeshObject& mesh)
{
    CString name;
    ReadString(name);
    const WORD material = MaterialNumber(name);
    const std::optional<int> count = ReadList(sizeof(WORD));
    if (!count)
    {
        return 0;
    }
    TriangularFaceArray& faces = *mesh.GetFaces();
    for (int i = 0; i < *count; ++i)
    {
        const int face = Element<WORD, 1>(block_.data() + i * sizeof(WORD))[0];
        if (face < faces.GetSize())
        {
            faces[face].material = material;
        }
    }
    return 1;
}

void ThreeDStudioParser::ParseMeshMatrix()
{
    constexpr DWORD matrixBytes = 12 * sizeof(float);
    ReadBlock(matrixBytes);
}

// The number of the first material of that name, or 0 if no material has the name. A face holds the
// number in 16 bits, so materials from number 65,536 on are not found.
WORD ThreeDStudioParser::MaterialNumber(const CString& name)
{
    constexpr int last = std::numeric_limits<WORD>::max();
    NamedColorArray& materials = node_.materials;
    for (; namedMaterials_ < materials.GetSize() && namedMaterials_ <= last; ++namedMaterials_)
    {
        materialByName_.try_emplace(materials.GetElement(namedMaterials_)->GetName(),
                                    static_cast<WORD>(namedMaterials_));
    }
    const auto found = materialByName_.find(name.Text());
    return found != materialByName_.end() ? found->second : 0;
}

void ThreeDStudioParser::AddMesh(std::unique_ptr<TriangularMeshObject> mesh)
{
    mesh->ValidateFaces();
    mesh->CalculateFaceNormals();
    mesh->CalculateVertexNormals();
    mesh->CalculateBounds();
    mesh->SetDefined();
    if (node_.AddChild(mesh.get()))
    {
        static_cast<void>(mesh.release());  // the node owns it now
    }
}

}  // namespace orvane
