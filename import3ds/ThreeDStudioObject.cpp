// SPDX-License-Identifier: MIT
#include "import3ds/ThreeDStudioObject.h"

#include "host/RecordVersion.h"
#include "import3ds/ThreeDStudioParser.h"
#include "import3ds/TriangularMeshObject.h"

// The node. Files are read by ThreeDStudioParser.

using orvane::ThreeDStudioParser;

IMPLEMENT_SERIAL(ThreeDStudioObject, DrawingObject, VERSIONABLE_SCHEMA | 1)

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
{
    struct FileCloser
    {
        CFile& file;
        ~FileCloser() { file.Abort(); }
    };
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyWrite | CFile::typeBinary))
    {
        return 0;
    }
    const FileCloser closer = {file};
    if (!ThreeDStudioParser(*this).ParseFile())
    {
        return 0;
    }
    SetDefined();
    return 1;
}

void ThreeDStudioObject::OnSkipped(const SkippedPart&) {}

int ThreeDStudioObject::Parse3DS(Chunk3DS* chunk)
{
    return ThreeDStudioParser(*this).Parse3DS(*chunk);
}

int ThreeDStudioObject::ParseMaterialData(Chunk3DS* chunk)
{
    return ThreeDStudioParser(*this).ParseMaterialData(*chunk);
}

int ThreeDStudioObject::ParseMaterialEntry(Chunk3DS* chunk)
{
    return ThreeDStudioParser(*this).ParseMaterialEntry(*chunk);
}

int ThreeDStudioObject::ParseNamedObject(Chunk3DS* chunk)
{
    return ThreeDStudioParser(*this).ParseNamedObject(*chunk);
}

TriangularMeshObject* ThreeDStudioObject::ParseTriangularMeshObject(Chunk3DS* chunk,
                                                                    const CString& name)
{
    return ThreeDStudioParser(*this).ParseMesh(*chunk, name).release();
}

int ThreeDStudioObject::ParseVertexArray(TriangularMeshObject* mesh)
{
    return ThreeDStudioParser(*this).ParseVertexArray(*mesh);
}

int ThreeDStudioObject::ParseFaceArray(Chunk3DS* chunk, TriangularMeshObject* mesh)
{
    return ThreeDStudioParser(*this).ParseFaceArray(*chunk, *mesh);
}

int ThreeDStudioObject::ParseMeshMaterialGroup(TriangularMeshObject* mesh)
{
    return ThreeDStudioParser(*this).ParseMeshMaterialGroup(*mesh);
}

int ThreeDStudioObject::ParseMeshMatrix(TriangularMeshObject*)
{
    ThreeDStudioParser(*this).ParseMeshMatrix();
    return 1;
}

int ThreeDStudioObject::ParseColor(ColorVector* color)
{
    return ThreeDStudioParser(*this).ParseColor(*color);
}

int ThreeDStudioObject::ParseFloatColor(ColorVector* color)
{
    return ThreeDStudioParser(*this).ParseFloatColor(*color);
}

int ThreeDStudioObject::ParseColor24(ColorVector* color)
{
    return ThreeDStudioParser(*this).ParseColor24(*color);
}

float ThreeDStudioObject::ParsePercentage()
{
    return ThreeDStudioParser(*this).ParsePercentage();
}

BYTE ThreeDStudioObject::ReadBYTE()
{
    return ThreeDStudioParser(*this).ReadNumber<BYTE>();
}

WORD ThreeDStudioObject::ReadWORD()
{
    return ThreeDStudioParser(*this).ReadNumber<WORD>();
}

DWORD ThreeDStudioObject::ReadDWORD()
{
    return ThreeDStudioParser(*this).ReadNumber<DWORD>();
}

float ThreeDStudioObject::ReadFloat()
{
    return ThreeDStudioParser(*this).ReadNumber<float>();
}

int ThreeDStudioObject::ReadVector(Vector* vector)
{
    return ThreeDStudioParser(*this).ReadVector(*vector);
}

int ThreeDStudioObject::ReadFace(TriangularFace* face)
{
    return ThreeDStudioParser(*this).ReadFace(*face);
}

int ThreeDStudioObject::ReadString(CString* text)
{
    return ThreeDStudioParser(*this).ReadString(*text);
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
    return RestoreSavedCopy<ThreeDStudioObject>();
}

int ThreeDStudioObject::SaveToUndo()
{
    return SaveCopy(new ThreeDStudioObject(*this));
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
    for (POSITION position = children.GetHeadPosition(); position != nullptr;)
    {
        DrawingObject* const child = children.GetNext(position);
        if (child->IsKindOf(RUNTIME_CLASS(TriangularMeshObject)))
        {
            static_cast<TriangularMeshObject*>(child)->SetMaterialColors(&materials);
        }
    }
}
