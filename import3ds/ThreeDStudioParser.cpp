// SPDX-License-Identifier: MIT
#include "import3ds/ThreeDStudioParser.h"

#include "import3ds/TriangularMeshObject.h"

// The file, its materials and its objects. Meshes are read in ThreeDStudioMeshes.cpp, and the
// values inside chunks in ThreeDStudioValues.cpp.

namespace orvane
{

namespace
{

const char ignoredObject[] = "Landscape";

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

std::optional<std::uint64_t> LengthOf(const CFile& file)
try
{
    return file.GetLength();
}
catch (const CFileException&)
{
    return std::nullopt;
}

ChunkId IdOf(const Chunk3DS& chunk)
{
    return static_cast<ChunkId>(chunk.id);
}

}  // namespace

ThreeDStudioParser::ThreeDStudioParser(ThreeDStudioObject& node)
    : node_(node), file_(node.file), fileLength_(LengthOf(node.file))
{}

int ThreeDStudioParser::ParseFile()
{
    if (!fileLength_)
    {
        return 0;
    }
    Chunk3DS root(&file_);
    // Only the id decides whether this is a 3D Studio file. A root with an impossible length is
    // imported as an empty root.
    const bool hasLength = root.Initialize() != 0;
    if (!KindOfChunk(root.id).IsReadIn(ChunkId::File))
    {
        return 0;
    }
    if (!hasLength)
    {
        Report({root.id, 0, Chunk3DS::headerSize, BytesLeft(), SkipReason::NoHeader});
    }
    return Parse3DS(root);
}

void ThreeDStudioParser::Report(const ThreeDStudioObject::SkippedPart& part)
{
    ++skippedParts_;
    node_.OnSkipped(part);
}

// Reports a chunk that is skipped. Returns 1, so that a handler of chunks can return the result.
int ThreeDStudioParser::ReportSkipped(WORD parent, const Chunk3DS& chunk, SkipReason why)
{
    Report({parent, chunk.id, chunk.start, chunk.length, why});
    return 1;
}

void ThreeDStudioParser::ReportPastParent(WORD parent, DWORD parentEnd, const Chunk3DS& chunk)
{
    Report({parent, chunk.id, chunk.start, chunk.length, SkipReason::PastParent, parentEnd});
}

// Reports the bytes from a position to the parent's end, if there are any.
void ThreeDStudioParser::ReportRestSkipped(const Chunk3DS& parent, DWORD from, SkipReason why)
{
    if (from < parent.end)
    {
        Report({parent.id, 0, from, parent.end - from, why});
    }
}

int ThreeDStudioParser::Parse3DS(const Chunk3DS& chunk)
{
    ForEachChunk(chunk, [&](const Chunk3DS& part) {
        if (IdOf(part) != ChunkId::EditorData)
        {
            return ReportSkipped(chunk.id, part, SkipReason::NotUsed);
        }
        ParseMaterialData(part);
        return 1;
    });
    return 1;
}

int ThreeDStudioParser::ParseMaterialData(const Chunk3DS& chunk)
{
    node_.materials.Add(UndefinedMaterial());
    return ForEachChunk(chunk, [&](const Chunk3DS& part) {
        switch (IdOf(part))
        {
            case ChunkId::NamedObject:
                return ParseNamedObject(part);
            case ChunkId::MaterialEntry:
                return ParseMaterialEntry(part);
            default:
                return ReportSkipped(chunk.id, part, SkipReason::NotUsed);
        }
    });
}

int ThreeDStudioParser::ParseMaterialEntry(const Chunk3DS& chunk)
{
    NamedColor material;
    ColorVector ambient;
    ColorVector diffuse;
    ColorVector specular;
    bool selfIlluminated = false;
    const int complete = ForEachChunk(chunk, [&](const Chunk3DS& part) {
        switch (IdOf(part))
        {
            case ChunkId::MaterialName: {
                CString name;
                ReadString(name);
                material.SetName(name);
                break;
            }
            case ChunkId::AmbientColor:
                ParseColor(ambient);
                break;
            case ChunkId::DiffuseColor:
                ParseColor(diffuse);
                break;
            case ChunkId::SpecularColor:
                ParseColor(specular);
                break;
            case ChunkId::Shininess:
                material.SetShininess(static_cast<float>((1.0 - ParsePercentage()) * 128.0));
                break;
            case ChunkId::Transparency:
                diffuse.alpha = static_cast<float>(1.0 - ParsePercentage());
                break;
            case ChunkId::SelfIllumination:
                selfIlluminated = true;
                break;
            default:
                return ReportSkipped(chunk.id, part, SkipReason::NotUsed);
        }
        // Report the bytes after the value. Files repeat a colour in a second form, for displays of
        // another kind.
        ReportRestSkipped(part, part.end - BytesLeft(), SkipReason::NotUsed);
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
    node_.materials.Add(material);
    return 1;
}

int ThreeDStudioParser::ParseNamedObject(const Chunk3DS& chunk)
{
    const ChunkScope scope(*this, chunk);
    CString name;
    ReadString(name);
    if (name == ignoredObject)
    {
        ReportSkipped(static_cast<WORD>(ChunkId::EditorData), chunk, SkipReason::Landscape);
        return 0;
    }
    std::unique_ptr<TriangularMeshObject> mesh;
    const int complete = ForEachChunk(chunk, [&](const Chunk3DS& part) {
        const ChunkId id = IdOf(part);
        if (id == ChunkId::TriangleMesh)
        {
            mesh = ParseMesh(part, name);
            return mesh != nullptr ? 1 : 0;
        }
        if (id == ChunkId::ObjectHidden && mesh != nullptr)
        {
            mesh->SetHidden();
            return 1;
        }
        if (id == ChunkId::ObjectShadow && mesh != nullptr)
        {
            mesh->SetShadow();
            return 1;
        }
        return ReportSkipped(chunk.id, part, SkipReason::NotUsed);
    });
    // A complete mesh is kept even if the object is cut short after the mesh.
    if (mesh != nullptr)
    {
        AddMesh(std::move(mesh));
    }
    return complete;
}

}  // namespace orvane
