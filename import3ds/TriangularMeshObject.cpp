// SPDX-License-Identifier: MIT
#include "import3ds/TriangularMeshObject.h"

#include "host/RecordVersion.h"
#include "material/NamedColorArray.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <locale>
#include <vector>

// Geometry, text and archive records. Drawing is in TriangularMeshDrawing.cpp.

IMPLEMENT_SERIAL(TriangularMeshObject, DrawingObject, VERSIONABLE_SCHEMA | 2)

namespace
{

// Stands for an element past the end of an array.
const Vector zeroVector;

const char dumpFolder[] = "d:\\Verts\\";

void WriteVector(std::ostream& out, const char* prefix, const Vector& vector)
{
    out << "    " << prefix << "X = " << vector.x;
    out << "    " << prefix << "Y = " << vector.y;
    out << "    " << prefix << "Z = " << vector.z;
}

}  // namespace

TriangularMeshObject::TriangularMeshObject() = default;
TriangularMeshObject::TriangularMeshObject(const TriangularMeshObject& other) = default;
TriangularMeshObject& TriangularMeshObject::operator=(const TriangularMeshObject& other) = default;
TriangularMeshObject::~TriangularMeshObject() = default;

int TriangularMeshObject::ValidateFaces()
{
    if (vertices.GetSize() == 0)
    {
        faces.RemoveAll();
    }
    const auto validate = [this](WORD& corner) {
        corner = static_cast<WORD>(VertexOfCorner(corner));
    };
    for (int i = 0; i < faces.GetSize(); ++i)
    {
        TriangularFace& face = faces[i];
        validate(face.a);
        validate(face.b);
        validate(face.c);
    }
    return faces.GetSize() != 0 ? 1 : 0;
}

int TriangularMeshObject::CalculateFaceNormals()
{
    if (AreFaceNormalsCalculated())
    {
        return 1;
    }
    faceNormals.SetSize(faces.GetSize());
    if (faces.GetSize() == 0)
    {
        return 0;
    }
    const TriangularFace* const face = faces.GetElement(0);
    const Vector* const vertex = vertices.GetSize() != 0 ? vertices.GetElement(0) : &zeroVector;
    Vector* const normal = faceNormals.GetElement(0);
    for (int i = 0, count = faces.GetSize(); i < count; ++i)
    {
        const Vector& a = vertex[VertexOfCorner(face[i].a)];
        const Vector& b = vertex[VertexOfCorner(face[i].b)];
        const Vector& c = vertex[VertexOfCorner(face[i].c)];
        normal[i] = (a - b) * (c - b);
        normal[i].Normalize();
    }
    SetFaceNormalsCalculated();
    return 1;
}

int TriangularMeshObject::CalculateVertexNormals()
{
    if (AreVertexNormalsCalculated())
    {
        return 1;
    }
    if (faces.GetSize() == 0)
    {
        return 0;
    }
    const int vertexCount = vertices.GetSize();
    vertexNormals.RemoveAll();
    vertexNormals.SetSize(vertexCount);
    // A file may have thousands of small meshes. Counting the faces at each vertex in an array on
    // the stack saves an allocation for each mesh.
    int facesAtFew[64] = {};
    const bool areFew = vertexCount <= static_cast<int>(std::size(facesAtFew));
    std::vector<int> facesAtMany(areFew ? 0 : static_cast<std::size_t>(vertexCount));
    int* const facesAt = areFew ? facesAtFew : facesAtMany.data();
    const int counted = vertexCount == 0 ? 0 : std::min(faces.GetSize(), faceNormals.GetSize());
    Vector* const normal = vertexCount != 0 ? vertexNormals.GetElement(0) : nullptr;
    for (int i = 0; i < counted; ++i)
    {
        const TriangularFace& face = *faces.GetElement(i);
        const Vector& faceNormal = *faceNormals.GetElement(i);
        const auto touch = [&](WORD corner) {
            const int vertex = VertexOfCorner(corner);
            normal[vertex] += faceNormal;
            ++facesAt[vertex];
        };
        touch(face.a);
        touch(face.b);
        touch(face.c);
    }
    for (int vertex = 0; vertex < vertexCount; ++vertex)
    {
        if (facesAt[vertex] != 0)
        {
            normal[vertex] /= static_cast<float>(facesAt[vertex]);
            normal[vertex].Normalize();
        }
    }
    SetVertexNormalsCalculated();
    return 1;
}

int TriangularMeshObject::CalculateBounds()
{
    if (!IsBoundsCalculated())
    {
        bounds.ResetLocalBounds();
        CalculateChildBounds();
        if (vertices.GetSize() != 0)
        {
            Vector minimum = *vertices.GetElement(0);
            Vector maximum = minimum;
            for (int i = 1; i < vertices.GetSize(); ++i)
            {
                const Vector& vertex = *vertices.GetElement(i);
                minimum.SetVector(std::min(minimum.x, vertex.x), std::min(minimum.y, vertex.y),
                                  std::min(minimum.z, vertex.z));
                maximum.SetVector(std::max(maximum.x, vertex.x), std::max(maximum.y, vertex.y),
                                  std::max(maximum.z, vertex.z));
            }
            Sphere sphere;
            sphere.CalculateSphere(minimum, maximum);
            bounds.AccumulateLocalBounds(minimum, maximum, sphere);
            SetBoundsCalculated();
        }
    }
    bounds.CalculateBounds(transform);
    return 1;
}

void TriangularMeshObject::SetSurfaceColor(const NamedColor& color, int faceIndex)
{
    if (faceIndex >= 0 && faceIndex < faces.GetSize() && HasMaterials())
    {
        MaterialOf(*faces.GetElement(faceIndex)) = color;
    }
}

const Vector& TriangularMeshObject::ElementOrZero(const VectorArray& vectors, int index)
{
    return index < vectors.GetSize() ? *vectors.GetElement(index) : zeroVector;
}

bool TriangularMeshObject::HasMaterials() const
{
    return materialColors != nullptr && materialColors->GetSize() != 0;
}

NamedColor& TriangularMeshObject::MaterialOf(const TriangularFace& face) const
{
    return *materialColors->GetElement(face.material < materialColors->GetSize() ? face.material
                                                                                 : 0);
}

int TriangularMeshObject::OutputVertsAndFaces() const
{
    const std::filesystem::path path = dumpFolder + name.Text();
    std::error_code ignored;
    // On a system where a backslash is an ordinary character, the path would name a file in the
    // current directory. A name with a directory in it would lead out of d:\Verts.
    if (path.parent_path().string() + "\\" == dumpFolder &&
        std::filesystem::is_directory(path.parent_path(), ignored))
    {
        std::ofstream out(path);
        out.imbue(std::locale::classic());
        WriteVertsAndFaces(out);
    }
    return 1;
}

void TriangularMeshObject::WriteVertsAndFaces(std::ostream& out) const
{
    out << "V E R T I C I E S\n\n";
    for (int i = 0; i < vertices.GetSize(); ++i)
    {
        out << "Vertex Number " << i;
        WriteVector(out, "", *vertices.GetElement(i));
        WriteVector(out, "N", ElementOrZero(vertexNormals, i));
        out << "\n";
    }
    out << "\n\n\nF A C E S\n\n";
    for (int i = 0; i < faces.GetSize(); ++i)
    {
        const TriangularFace& face = *faces.GetElement(i);
        out << "Face Number " << i << "    A = " << face.a << "    B = " << face.b
            << "    C = " << face.c << "    Flags = " << face.faceFlags;
        WriteVector(out, "N", ElementOrZero(faceNormals, i));
        out << "\n";
    }
}

void TriangularMeshObject::Serialize(CArchive& archive)
{
    DrawingObject::Serialize(archive);
    if (archive.IsLoading())
    {
        ReadVersionedRecord(archive, *this, &TriangularMeshObject::DeserializeVersion1,
                            &TriangularMeshObject::DeserializeVersion2);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(TriangularMeshObject));
    archive << meshFlags;
    archive << name;
    faceNormals.Serialize(archive);
    faces.Serialize(archive);
    vertexNormals.Serialize(archive);
    vertices.Serialize(archive);
    archive << smoothingThreshold;
}

void TriangularMeshObject::DeserializeVersion1(CArchive& archive)
{
    archive >> meshFlags;
    archive >> name;
    faceNormals.Serialize(archive);
    faces.Serialize(archive);
    vertexNormals.Serialize(archive);
    vertices.Serialize(archive);
    smoothingThreshold = 1.0f;
    ClearBoundsCalculated();
}

void TriangularMeshObject::DeserializeVersion2(CArchive& archive)
{
    DeserializeVersion1(archive);
    archive >> smoothingThreshold;
}
