// SPDX-License-Identifier: MIT
#include "import3ds/ThreeDStudioObject.h"

#include "geometry/CoordinateTransform.h"
#include "host/RecordVersion.h"
#include "import3ds/TriangularMeshObject.h"

#include <cstring>
#include <limits>

// The node and the parsing of chunks; the values in them are read in ThreeDStudioValues.cpp.

IMPLEMENT_SERIAL(ThreeDStudioObject, DrawingObject, VERSIONABLE_SCHEMA | 1)

namespace
{

// Ids of chunks.
constexpr WORD mainChunk = 0x4D4D;
constexpr WORD projectChunk = 0xC23D;
constexpr WORD editorData = 0x3D3D;
constexpr WORD namedObject = 0x4000;
constexpr WORD objectHidden = 0x4010;
constexpr WORD objectShadow = 0x4012;
constexpr WORD triangleMesh = 0x4100;
constexpr WORD vertexList = 0x4110;
constexpr WORD faceList = 0x4120;
constexpr WORD faceMaterials = 0x4130;
constexpr WORD localAxes = 0x4160;
constexpr WORD materialEntry = 0xAFFF;
constexpr WORD materialName = 0xA000;
constexpr WORD ambientColor = 0xA010;
constexpr WORD diffuseColor = 0xA020;
constexpr WORD specularColor = 0xA030;
constexpr WORD shininessPercentage = 0xA040;
constexpr WORD transparencyPercentage = 0xA050;
constexpr WORD selfIllumination = 0xA080;

constexpr DWORD bytesPerVertex = 3 * sizeof(float);
constexpr DWORD bytesPerFace = 4 * sizeof(WORD);

const char ignoredObject[] = "Landscape";

// A list's element, copied out of the file's bytes.
template <typename Value, std::size_t count>
struct Element
{
    explicit Element(const BYTE* bytes) { std::memcpy(values, bytes, sizeof values); }
    Value operator[](int index) const { return values[index]; }
    Value values[count];
};

NamedColor UndefinedMaterial()
{
    NamedColor material;
    const ColorVector gray(0.5f, 0.5f, 0.5f, 1.0f);
    material.SetAmbientColor(gray);
    material.SetDiffuseColor(gray);
    material.SetSpecularColor(ColorVector(1.0f, 1.0f, 1.0f, 1.0f));
    material.SetEmissionColor(ColorVector());
    material.SetName("Undefined");
    return material;
}

// From the file's z-up coordinates to y-up ones.
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

/// What is known and kept while a file is imported. It closes the file at its end.
class ThreeDStudioObject::Import_
{
public:
    explicit Import_(ThreeDStudioObject& object) : object_(object)
    {
        object_.fileLength_ = object_.file.GetLength();
    }
    ~Import_()
    {
        object_.file.Abort();
        object_.fileLength_.reset();
        object_.materialByName_ = {};
        object_.namedMaterials_ = 0;
        object_.block_ = {};
    }
    Import_(const Import_&) = delete;
    Import_& operator=(const Import_&) = delete;

private:
    ThreeDStudioObject& object_;
};

ThreeDStudioObject::ThreeDStudioObject() = default;
ThreeDStudioObject::~ThreeDStudioObject() = default;

ThreeDStudioObject::ThreeDStudioObject(const ThreeDStudioObject& other)
    : DrawingObject(other), materials(other.materials), reservedWord(other.reservedWord)
{}

ThreeDStudioObject& ThreeDStudioObject::operator=(const ThreeDStudioObject& other)
{
    DrawingObject::operator=(other);
    materials = other.materials;
    reservedWord = other.reservedWord;
    return *this;
}

int ThreeDStudioObject::CreateFromFile(const CString& path)
try
{
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyWrite | CFile::typeBinary))
    {
        return 0;
    }
    const Import_ import(*this);
    Chunk3DS root(&file);
    // The id alone counts: a root whose length is no good has nothing in it.
    const bool hasLength = root.Initialize() != 0;
    if (root.id != mainChunk && root.id != projectChunk)
    {
        return 0;
    }
    if (!hasLength)
    {
        OnSkipped_({root.id, 0, Chunk3DS::headerSize, BytesLeft_(), Skip::noHeader});
    }
    const int result = Parse3DS(&root);
    SetDefined();
    return result;
}
catch (const CFileException&)
{
    file.Abort();
    return 0;  // it has no length, as a pipe
}

// Hands over each chunk that lies in the parent, from the file's position on, until handleChunk
// returns 0. 0 also when a chunk has no header that can be read. The last chunk's end is the
// parent's; one that ends behind it is not handed over, and is the last.
template <typename HandleChunk>
int ThreeDStudioObject::ForEachChunk_(const Chunk3DS& parent, HandleChunk handleChunk)
{
    const ChunkLimit_ parentLimit(*this, parent);
    while (!HasReached_(parent.end))
    {
        Chunk3DS chunk(&file);
        if (!chunk.Initialize())
        {
            SkipRest_(parent, chunk.start, Skip::noHeader);
            return 0;
        }
        if (chunk.end > parent.end)
        {
            Skip_(parent.id, chunk, Skip::pastParent);
        }
        else if (!HandleChunk_(chunk, handleChunk))
        {
            SkipRest_(parent, chunk.end, Skip::afterFailure);
            return 0;
        }
        chunk.Finalize();
    }
    return 1;
}

template <typename HandleChunk>
bool ThreeDStudioObject::HandleChunk_(Chunk3DS& chunk, HandleChunk handleChunk)
{
    const WORD parent = innermostId_;
    const int skippedBefore = skippedParts_;
    const ChunkLimit_ limit(*this, chunk);
    if (handleChunk(&chunk))
    {
        return true;
    }
    if (skippedParts_ == skippedBefore)  // nothing in it has been named as the reason
    {
        Skip_(parent, chunk, Skip::incomplete);
    }
    return false;
}

// Always 1, for the chunks' handlers.
int ThreeDStudioObject::Skip_(WORD parent, const Chunk3DS& chunk, Skip why)
{
    ++skippedParts_;
    OnSkipped_({parent, chunk.id, chunk.start, chunk.length, why});
    return 1;
}

void ThreeDStudioObject::SkipRest_(const Chunk3DS& parent, DWORD from, Skip why)
{
    if (from < parent.end)
    {
        ++skippedParts_;
        OnSkipped_({parent.id, 0, from, parent.end - from, why});
    }
}

void ThreeDStudioObject::OnSkipped_(const SkippedPart&) {}

int ThreeDStudioObject::Parse3DS(Chunk3DS* chunk)
{
    ForEachChunk_(*chunk, [this, chunk](Chunk3DS* part) {
        if (part->id != editorData)
        {
            return Skip_(chunk->id, *part, Skip::notUsed);
        }
        ParseMaterialData(part);
        return 1;
    });
    return 1;
}

int ThreeDStudioObject::ParseMaterialData(Chunk3DS* chunk)
{
    materials.Add(UndefinedMaterial());
    return ForEachChunk_(*chunk, [this, chunk](Chunk3DS* part) {
        switch (part->id)
        {
            case namedObject:
                return ParseNamedObject(part);
            case materialEntry:
                return ParseMaterialEntry(part);
            default:
                return Skip_(chunk->id, *part, Skip::notUsed);
        }
    });
}

int ThreeDStudioObject::ParseMaterialEntry(Chunk3DS* chunk)
{
    NamedColor material;
    ColorVector ambient;
    ColorVector diffuse;
    ColorVector specular;
    bool selfIlluminated = false;
    const int complete = ForEachChunk_(*chunk, [&](Chunk3DS* part) {
        switch (part->id)
        {
            case materialName: {
                CString name;
                ReadString(&name);
                material.SetName(name);
                break;
            }
            case ambientColor:
                ParseColor(&ambient);
                break;
            case diffuseColor:
                ParseColor(&diffuse);
                break;
            case specularColor:
                ParseColor(&specular);
                break;
            case shininessPercentage:
                material.SetShininess(static_cast<float>((1.0 - ParsePercentage()) * 128.0));
                break;
            case transparencyPercentage:
                diffuse.alpha = static_cast<float>(1.0 - ParsePercentage());
                break;
            case selfIllumination:
                selfIlluminated = true;
                break;
            default:
                return Skip_(chunk->id, *part, Skip::notUsed);
        }
        // Such as the same colour once more, for another kind of display.
        SkipRest_(*part, part->end - BytesLeft_(), Skip::notUsed);
        return 1;
    });
    if (!complete)
    {
        return 0;
    }
    material.SetAmbientColor(ambient);
    material.SetDiffuseColor(diffuse);
    material.SetSpecularColor(specular);
    material.SetEmissionColor(selfIlluminated ? diffuse : ColorVector());
    materials.Add(material);
    return 1;
}

int ThreeDStudioObject::ParseNamedObject(Chunk3DS* chunk)
{
    const ChunkLimit_ limit(*this, *chunk);
    CString name;
    ReadString(&name);
    if (name == ignoredObject)
    {
        Skip_(editorData, *chunk, Skip::landscape);
        return 0;
    }
    std::unique_ptr<TriangularMeshObject> mesh;
    const int complete = ForEachChunk_(*chunk, [&](Chunk3DS* part) {
        if (part->id == triangleMesh)
        {
            mesh.reset(ParseTriangularMeshObject(part, name));
            return mesh != nullptr ? 1 : 0;
        }
        if (part->id == objectHidden && mesh != nullptr)
        {
            mesh->SetHidden();
            return 1;
        }
        if (part->id == objectShadow && mesh != nullptr)
        {
            mesh->SetShadow();
            return 1;
        }
        return Skip_(chunk->id, *part, Skip::notUsed);
    });
    // A mesh that was read whole stays, also when the file ends behind it.
    if (mesh != nullptr)
    {
        AddMesh_(std::move(mesh));
    }
    return complete;
}

void ThreeDStudioObject::AddMesh_(std::unique_ptr<TriangularMeshObject> mesh)
{
    mesh->ValidateFaces();
    mesh->CalculateFaceNormals();
    mesh->CalculateVertexNormals();
    mesh->CalculateBounds();
    mesh->SetDefined();
    if (AddChild(mesh.get()))
    {
        static_cast<void>(mesh.release());  // it is the tree's now
    }
}

TriangularMeshObject* ThreeDStudioObject::ParseTriangularMeshObject(Chunk3DS* chunk,
                                                                    const CString& name)
{
    auto mesh = std::make_unique<TriangularMeshObject>();
    mesh->SetName(name);
    mesh->SetMaterialColors(&materials);
    const int complete = ForEachChunk_(*chunk, [&](Chunk3DS* part) {
        switch (part->id)
        {
            case vertexList:
                return ParseVertexArray(mesh.get());
            case faceList:
                return ParseFaceArray(part, mesh.get());
            case localAxes:
                ParseMeshMatrix(mesh.get());
                break;
            default:
                break;
        }
        return Skip_(chunk->id, *part, Skip::notUsed);
    });
    return complete ? mesh.release() : nullptr;
}

int ThreeDStudioObject::ParseVertexArray(TriangularMeshObject* mesh)
{
    int count = 0;
    if (!ReadList_(&count, bytesPerVertex))
    {
        return 0;
    }
    VectorArray& vertices = *mesh->GetVerticies();
    vertices.SetSize(count);
    for (int i = 0; i < count; ++i)
    {
        const Element<float, 3> vertex(block_.data() + i * bytesPerVertex);
        vertices.GetElement(i)->SetVector(vertex[0], vertex[1], vertex[2]);
    }
    if (count != 0)
    {
        UprightTransform().RotateVectors(vertices.GetElement(0), count);
    }
    return 1;
}

int ThreeDStudioObject::ParseFaceArray(Chunk3DS* chunk, TriangularMeshObject* mesh)
{
    const ChunkLimit_ limit(*this, *chunk);
    int count = 0;
    if (!ReadList_(&count, bytesPerFace))
    {
        return 0;
    }
    TriangularFaceArray& faces = *mesh->GetFaces();
    faces.SetSize(count);
    for (int i = 0; i < count; ++i)
    {
        const Element<WORD, 4> words(block_.data() + i * bytesPerFace);
        TriangularFace& face = faces[i];
        face.a = words[0];
        face.b = words[1];
        face.c = words[2];
        face.faceFlags = words[3];
        face.material = 0;
    }
    return ForEachChunk_(*chunk, [&](Chunk3DS* part) {
        return part->id == faceMaterials ? ParseMeshMaterialGroup(mesh)
                                         : Skip_(chunk->id, *part, Skip::notUsed);
    });
}

int ThreeDStudioObject::ParseMeshMaterialGroup(TriangularMeshObject* mesh)
{
    CString name;
    ReadString(&name);
    const WORD material = FindMaterial_(name);
    int count = 0;
    if (!ReadList_(&count, sizeof(WORD)))
    {
        return 0;
    }
    TriangularFaceArray& faces = *mesh->GetFaces();
    for (int i = 0; i < count; ++i)
    {
        const int face = Element<WORD, 1>(block_.data() + i * sizeof(WORD))[0];
        if (face < faces.GetSize())
        {
            faces[face].material = material;
        }
    }
    return 1;
}

int ThreeDStudioObject::ParseMeshMatrix(TriangularMeshObject*)
{
    constexpr DWORD matrixBytes = 12 * sizeof(float);
    ReadBlock_(matrixBytes);
    return 1;
}

// The index of the first material of that name that a face can hold; 0 when there is none.
WORD ThreeDStudioObject::FindMaterial_(const CString& name)
{
    constexpr int last = std::numeric_limits<WORD>::max();
    if (!fileLength_)
    {
        // A host parses by itself, and may change the materials between two steps.
        const int found = materials.FindName(name);
        return found > 0 && found <= last ? static_cast<WORD>(found) : 0;
    }
    for (; namedMaterials_ < materials.GetSize() && namedMaterials_ <= last; ++namedMaterials_)
    {
        materialByName_.try_emplace(materials.GetElement(namedMaterials_)->GetName(),
                                    static_cast<WORD>(namedMaterials_));
    }
    const auto found = materialByName_.find(name.Text());
    return found != materialByName_.end() ? found->second : 0;
}

void ThreeDStudioObject::SetSurfaceColor(const NamedColor& color, int material)
{
    if (material >= 0 && material < materials.GetSize())
    {
        materials.SetAt(material, color);
    }
}

int ThreeDStudioObject::RestoreFromUndo()
{
    return RestoreFromUndo_<ThreeDStudioObject>();
}

int ThreeDStudioObject::SaveToUndo()
{
    return SaveToUndo_(new ThreeDStudioObject(*this));
}

void ThreeDStudioObject::Serialize(CArchive& archive)
{
    DrawingObject::Serialize(archive);
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(ThreeDStudioObject));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(ThreeDStudioObject));
    archive << reservedWord;
    materials.Serialize(archive);
}

void ThreeDStudioObject::DeserializeVersion1(CArchive& archive)
{
    archive >> reservedWord;
    materials.Serialize(archive);
    const DrawingObjectList& children = Read_().children;
    for (POSITION position = children.GetHeadPosition(); position != nullptr;)
    {
        DrawingObject* const child = children.GetNext(position);
        if (child->IsKindOf(RUNTIME_CLASS(TriangularMeshObject)))
        {
            static_cast<TriangularMeshObject*>(child)->SetMaterialColors(&materials);
        }
    }
}
