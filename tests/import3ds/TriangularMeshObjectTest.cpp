// SPDX-License-Identifier: MIT
#include "import3ds/TriangularMeshObject.h"

#include "material/NamedColorArray.h"
#include "tests/support/ExpectVector.h"
#include "tests/support/Meshes.h"
#include "tests/support/NodeRecords.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <memory>
#include <sstream>

namespace
{

TEST(TriangularMeshObject, AFreshMeshIsEmptyWithAThresholdOf1)
{
    const TriangularMeshObject mesh;
    EXPECT_EQ(mesh.GetFaceNormals()->GetSize(), 0);
    EXPECT_EQ(mesh.GetFaces()->GetSize(), 0);
    EXPECT_EQ(mesh.GetVertexNormals()->GetSize(), 0);
    EXPECT_EQ(mesh.GetVerticies()->GetSize(), 0);
    EXPECT_EQ(mesh.materialColors, nullptr);
    EXPECT_EQ(mesh.meshFlags, 0u);
    EXPECT_TRUE(mesh.name.IsEmpty());
    EXPECT_EQ(mesh.smoothingThreshold, 1.0f);
}

TEST(TriangularMeshObject, EveryFlagHasItsBitAndItsTestReturnsIt)
{
    TriangularMeshObject mesh;
    mesh.SetHidden();
    EXPECT_EQ(mesh.meshFlags, 0x01u);
    EXPECT_EQ(mesh.IsHidden(), 0x01);
    mesh.SetShadow();
    EXPECT_EQ(mesh.IsShadow(), 0x02);
    mesh.SetBoundsCalculated();
    EXPECT_EQ(mesh.IsBoundsCalculated(), 0x04);
    mesh.SetFaceNormalsCalculated();
    EXPECT_EQ(mesh.AreFaceNormalsCalculated(), 0x08);
    mesh.SetVertexNormalsCalculated();
    EXPECT_EQ(mesh.AreVertexNormalsCalculated(), 0x10);
    EXPECT_EQ(mesh.meshFlags, 0x1Fu);
    mesh.ClearHidden();
    EXPECT_EQ(mesh.meshFlags, 0x1Eu);
    mesh.ClearShadow();
    EXPECT_EQ(mesh.meshFlags, 0x1Cu);
    mesh.ClearBoundsCalculated();
    EXPECT_EQ(mesh.meshFlags, 0x18u);
    mesh.ClearFaceNormalsCalculated();
    EXPECT_EQ(mesh.meshFlags, 0x10u);
    mesh.ClearVertexNormalsCalculated();
    EXPECT_EQ(mesh.meshFlags, 0u);
    EXPECT_EQ(mesh.IsHidden(), 0);
}

TEST(TriangularMeshObject, CopiesHaveEverythingAndShareTheMaterials)
{
    NamedColorArray materials;
    TriangularMeshObject mesh;
    FillSquare(mesh);
    mesh.SetMaterialColors(&materials);
    mesh.SetName("square");
    mesh.smoothingThreshold = 0.25f;
    mesh.CalculateFaceNormals();
    mesh.CalculateVertexNormals();
    TriangularMeshObject assigned;
    assigned = mesh;
    for (const TriangularMeshObject& copy : {TriangularMeshObject(mesh), assigned})
    {
        EXPECT_EQ(copy.GetFaces()->GetSize(), 2);
        EXPECT_EQ(copy.GetVerticies()->GetSize(), 4);
        EXPECT_EQ(copy.GetFaceNormals()->GetSize(), 2);
        EXPECT_EQ(copy.GetVertexNormals()->GetSize(), 4);
        EXPECT_EQ(copy.materialColors, &materials);
        EXPECT_EQ(copy.name, "square");
        EXPECT_EQ(copy.meshFlags, 0x18u);
        EXPECT_EQ(copy.smoothingThreshold, 0.25f);
    }
}

// Faces.

TEST(TriangularMeshObject, AFaceIndexEqualToTheVertexCountBecomesVertex0)
{
    TriangularMeshObject mesh;
    AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    AddFace(mesh, 2, 3, 1);
    AddFace(mesh, 65535, 1, 3);
    EXPECT_EQ(mesh.ValidateFaces(), 1);
    EXPECT_EQ(mesh.GetFaces()->GetAt(0).a, 2);
    EXPECT_EQ(mesh.GetFaces()->GetAt(0).b, 0);
    EXPECT_EQ(mesh.GetFaces()->GetAt(0).c, 1);
    EXPECT_EQ(mesh.GetFaces()->GetAt(1).a, 0);
    EXPECT_EQ(mesh.GetFaces()->GetAt(1).b, 1);
    EXPECT_EQ(mesh.GetFaces()->GetAt(1).c, 0);
}

TEST(TriangularMeshObject, WithoutFacesThereIsNothingToValidate)
{
    TriangularMeshObject mesh;
    AddVertices(mesh, {{0, 0, 0}});
    EXPECT_EQ(mesh.ValidateFaces(), 0);
}

TEST(TriangularMeshObject, WithoutVerticesTheFacesAreDropped)
{
    TriangularMeshObject mesh;
    AddFace(mesh, 0, 1, 2);
    EXPECT_EQ(mesh.ValidateFaces(), 0);
    EXPECT_EQ(mesh.GetFaces()->GetSize(), 0);
}

// Normals.

TEST(TriangularMeshObject, AFaceNormalIsTheUnitOfAMinusBTimesCMinusB)
{
    TriangularMeshObject mesh;
    AddVertices(mesh, {{0, 0, 0}, {3, 0, 0}, {0, 5, 0}, {0, 0, 2}});
    AddFace(mesh, 0, 1, 2);  // (-3, 0, 0) x (-3, 5, 0) = (0, 0, -15)
    AddFace(mesh, 1, 0, 2);  // (3, 0, 0) x (0, 5, 0) = (0, 0, 15)
    AddFace(mesh, 2, 0, 3);  // (0, 5, 0) x (0, 0, 2) = (10, 0, 0)
    EXPECT_EQ(mesh.CalculateFaceNormals(), 1);
    ASSERT_EQ(mesh.GetFaceNormals()->GetSize(), 3);
    EXPECT_XYZ(mesh.GetFaceNormals()->GetAt(0), 0, 0, -1);
    EXPECT_XYZ(mesh.GetFaceNormals()->GetAt(1), 0, 0, 1);
    EXPECT_XYZ(mesh.GetFaceNormals()->GetAt(2), 1, 0, 0);
    EXPECT_NE(mesh.AreFaceNormalsCalculated(), 0);
}

TEST(TriangularMeshObject, AFaceWithoutAreaHasAZeroNormal)
{
    TriangularMeshObject mesh;
    AddVertices(mesh, {{1, 1, 1}, {2, 2, 2}});
    AddFace(mesh, 0, 1, 0);
    EXPECT_EQ(mesh.CalculateFaceNormals(), 1);
    EXPECT_XYZ(mesh.GetFaceNormals()->GetAt(0), 0, 0, 0);
}

TEST(TriangularMeshObject, WithoutFacesTheFaceNormalsAreEmptied)
{
    TriangularMeshObject mesh;
    mesh.GetFaceNormals()->Add(Vector(1, 0, 0));
    EXPECT_EQ(mesh.CalculateFaceNormals(), 0);
    EXPECT_EQ(mesh.GetFaceNormals()->GetSize(), 0);
    EXPECT_EQ(mesh.AreFaceNormalsCalculated(), 0);
}

TEST(TriangularMeshObject, CalculatedNormalsAreNotCalculatedAgain)
{
    TriangularMeshObject mesh;
    FillSquare(mesh);
    mesh.SetFaceNormalsCalculated();
    mesh.SetVertexNormalsCalculated();
    EXPECT_EQ(mesh.CalculateFaceNormals(), 1);
    EXPECT_EQ(mesh.CalculateVertexNormals(), 1);
    EXPECT_EQ(mesh.GetFaceNormals()->GetSize(), 0);
    EXPECT_EQ(mesh.GetVertexNormals()->GetSize(), 0);
}

TEST(TriangularMeshObject, AVertexNormalIsTheMeanOfTheFaceNormalsAroundIt)
{
    TriangularMeshObject mesh;
    // Two faces at a right angle along the edge 0-1: normals (0, 0, 1) and (0, 1, 0).
    AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    AddFace(mesh, 1, 0, 2);
    AddFace(mesh, 0, 1, 3);  // (-1, 0, 0) x (-1, 0, 1) = (0, 1, 0)
    mesh.CalculateFaceNormals();
    EXPECT_XYZ(mesh.GetFaceNormals()->GetAt(1), 0, 1, 0);
    EXPECT_EQ(mesh.CalculateVertexNormals(), 1);
    ASSERT_EQ(mesh.GetVertexNormals()->GetSize(), 4);
    const float half = static_cast<float>(std::sqrt(0.5));
    EXPECT_XYZ(mesh.GetVertexNormals()->GetAt(0), 0, half, half);
    EXPECT_XYZ(mesh.GetVertexNormals()->GetAt(1), 0, half, half);
    EXPECT_XYZ(mesh.GetVertexNormals()->GetAt(2), 0, 0, 1);
    EXPECT_XYZ(mesh.GetVertexNormals()->GetAt(3), 0, 1, 0);
    EXPECT_NE(mesh.AreVertexNormalsCalculated(), 0);
}

TEST(TriangularMeshObject, AVertexThatNoFaceUsesKeepsAZeroNormal)
{
    TriangularMeshObject mesh;
    AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {7, 7, 7}});
    AddFace(mesh, 0, 1, 2);
    mesh.GetVertexNormals()->Add(Vector(1, 2, 3));
    mesh.CalculateFaceNormals();
    EXPECT_EQ(mesh.CalculateVertexNormals(), 1);
    EXPECT_XYZ(mesh.GetVertexNormals()->GetAt(0), 0, 0, -1);
    EXPECT_XYZ(mesh.GetVertexNormals()->GetAt(3), 0, 0, 0);
}

TEST(TriangularMeshObject, WithoutFacesThereAreNoVertexNormals)
{
    TriangularMeshObject mesh;
    AddVertices(mesh, {{0, 0, 0}});
    EXPECT_EQ(mesh.CalculateVertexNormals(), 0);
    EXPECT_EQ(mesh.AreVertexNormalsCalculated(), 0);
}

TEST(TriangularMeshObject, NormalsOfFacesThatWereNotValidatedAreCalculatedWithVertex0)
{
    TriangularMeshObject mesh;
    AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    AddFace(mesh, 999, 1, 2);
    TriangularMeshObject empty;
    AddFace(empty, 1, 2, 3);
    for (TriangularMeshObject* const any : {&mesh, &empty})
    {
        EXPECT_EQ(any->CalculateFaceNormals(), 1);
        EXPECT_EQ(any->CalculateVertexNormals(), 1);
    }
    EXPECT_XYZ(mesh.GetVertexNormals()->GetAt(0), 0, 0, -1);
    EXPECT_XYZ(empty.GetFaceNormals()->GetAt(0), 0, 0, 0);
}

// Bounds.

TEST(TriangularMeshObject, LocalBoundsAreCalculatedOnceAndGlobalBoundsFollowTheTransform)
{
    TriangularMeshObject mesh;
    AddVertices(mesh, {{1, -2, 3}, {-4, 5, 0}, {0, 0, 6}});
    EXPECT_EQ(mesh.CalculateBounds(), 1);
    EXPECT_XYZ(mesh.GetBoundsLocalMinimum(), -4, -2, 0);
    EXPECT_XYZ(mesh.GetBoundsLocalMaximum(), 1, 5, 6);
    EXPECT_XYZ(mesh.GetBoundsLocalCenter(), -1.5f, 1.5f, 3);
    EXPECT_NE(mesh.IsBoundsCalculated(), 0);
    AddVertices(mesh, {{100, 100, 100}});
    mesh.SetTranslation(DVector(10, 20, 30));
    EXPECT_EQ(mesh.CalculateBounds(), 1);
    EXPECT_XYZ(mesh.GetBoundsLocalMaximum(), 1, 5, 6);
    EXPECT_XYZ(mesh.GetBoundsGlobalMinimum(), 6, 18, 30);
    EXPECT_XYZ(mesh.GetBoundsGlobalMaximum(), 11, 25, 36);
}

TEST(TriangularMeshObject, BoundsIncludeTheChildren)
{
    TriangularMeshObject mesh;
    AddVertices(mesh, {{0, 0, 0}, {1, 1, 1}});
    auto* const child = new TriangularMeshObject;
    AddVertices(*child, {{0, 0, 0}, {1, 1, 1}});
    child->SetTranslation(DVector(5, 0, 0));
    mesh.AddChild(child);
    EXPECT_EQ(mesh.CalculateBounds(), 1);
    EXPECT_XYZ(mesh.GetBoundsLocalMinimum(), 0, 0, 0);
    EXPECT_XYZ(mesh.GetBoundsLocalMaximum(), 6, 1, 1);
}

TEST(TriangularMeshObject, WithoutVerticesTheBoundsAreNotMarkedAsCalculated)
{
    TriangularMeshObject mesh;
    EXPECT_EQ(mesh.CalculateBounds(), 1);
    EXPECT_EQ(mesh.IsBoundsCalculated(), 0);
    EXPECT_EQ(mesh.GetBoundsGlobalSphere().IsDefined(), 0);
}

// Materials.

TEST(TriangularMeshObject, RecolouringOneFaceRecoloursAllFacesOfTheSameMaterial)
{
    NamedColorArray materials;
    materials.Add(NamedColor("red"));
    materials.Add(NamedColor("blue"));
    TriangularMeshObject mesh;
    TriangularMeshObject other;
    for (TriangularMeshObject* const each : {&mesh, &other})
    {
        FillSquare(*each);
        each->SetMaterialColors(&materials);
        each->GetFaces()->ElementAt(0).material = 1;
        each->GetFaces()->ElementAt(1).material = 1;
    }
    mesh.SetSurfaceColor(NamedColor("green"), 0);
    EXPECT_STREQ(materials.GetAt(0).GetName(), "red");
    EXPECT_STREQ(materials.GetAt(1).GetName(), "green");
    EXPECT_EQ(mesh.GetFaces()->GetAt(1).material, 1);
    EXPECT_EQ(other.materialColors->FindName("green"), 1);
}

TEST(TriangularMeshObject, RecolouringAFacePastTheLastDoesNothing)
{
    NamedColorArray materials;
    TriangularMeshObject mesh;
    FillSquare(mesh);
    mesh.SetSurfaceColor(NamedColor("green"), 0);  // no materials
    mesh.SetMaterialColors(&materials);
    mesh.SetSurfaceColor(NamedColor("green"), 0);  // an empty array
    materials.Add(NamedColor("red"));
    mesh.SetSurfaceColor(NamedColor("green"), 2);
    mesh.SetSurfaceColor(NamedColor("green"), -1);
    EXPECT_STREQ(materials.GetAt(0).GetName(), "red");
    mesh.GetFaces()->ElementAt(1).material = 5;  // past the array, drawn with 0
    mesh.SetSurfaceColor(NamedColor("green"), 1);
    EXPECT_STREQ(materials.GetAt(0).GetName(), "green");
}

// The text.

const char squareText[] =
    "V E R T I C I E S\n\n"
    "Vertex Number 0    X = 0    Y = 0.5    Z = 0    NX = 0    NY = 0    NZ = 1\n"
    "Vertex Number 1    X = 1    Y = 0    Z = 0    NX = 0    NY = 0    NZ = 0\n"
    "\n\n\nF A C E S\n\n"
    "Face Number 0    A = 1    B = 0    C = 65535    Flags = 7    NX = 0    NY = -1    NZ = 0\n";

void FillForText(TriangularMeshObject& mesh)
{
    AddVertices(mesh, {{0, 0.5f, 0}, {1, 0, 0}});
    mesh.GetVertexNormals()->Add(Vector(0, 0, 1));
    AddFace(mesh, 1, 0, 65535);
    mesh.GetFaces()->ElementAt(0).faceFlags = 7;
    mesh.GetFaceNormals()->Add(Vector(0, -1, 0));
}

TEST(TriangularMeshObject, TheTextHasALineForEveryVertexAndEveryFace)
{
    TriangularMeshObject mesh;
    FillForText(mesh);
    std::ostringstream text;
    mesh.WriteVertsAndFaces(text);
    EXPECT_EQ(text.str(), squareText);
}

TEST(TriangularMeshObject, NoTextFileIsWrittenIfItsDirectoryIsMissing)
{
    TriangularMeshObject mesh;
    FillForText(mesh);
    for (const char* const name : {"square", "../square", "a/b", ""})
    {
        mesh.SetName(name);
        EXPECT_EQ(mesh.OutputVertsAndFaces(), 1);
        if (!std::filesystem::is_directory("d:\\Verts"))
        {
            EXPECT_FALSE(std::filesystem::exists(std::string("d:\\Verts\\") + name)) << name;
        }
    }
}

// Records.

RecordBytes VectorArrayRecord(std::initializer_list<Vector> vectors)
{
    RecordBytes record = RecordBytes().Dword(1).Long(static_cast<LONG>(vectors.size()));
    for (const Vector& vector : vectors)
    {
        record.Floats({vector.x, vector.y, vector.z});
    }
    return record;
}

/// The part of a mesh's record between the node's record and the threshold.
RecordBytes MeshFields(DWORD version)
{
    return RecordBytes()
        .Dword(version)
        .Dword(0x1F)
        .String("mesh")
        .Append(VectorArrayRecord({Vector(0, 0, 1)}))
        .Dword(1)
        .Dword(1)
        .Dword(1)
        .Raw("\0\0\1\0\2\0\7\0\1\0", 10)
        .Append(VectorArrayRecord({Vector(0, 0, -1), Vector(), Vector()}))
        .Append(VectorArrayRecord({Vector(), Vector(1, 0, 0), Vector(0, 1, 0)}));
}

TEST(TriangularMeshObject, TheRecordIsANodeRecordTheVersionTheFlagsTheNameTheArraysAndTheThreshold)
{
    TriangularMeshObject mesh;
    AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    AddFace(mesh, 0, 1, 2);
    mesh.GetFaces()->ElementAt(0).faceFlags = 7;
    mesh.GetFaces()->ElementAt(0).material = 1;
    mesh.GetFaceNormals()->Add(Vector(0, 0, 1));
    mesh.GetVertexNormals()->SetSize(3);
    mesh.GetVertexNormals()->SetAt(0, Vector(0, 0, -1));
    mesh.meshFlags = 0x1F;
    mesh.SetName("mesh");
    mesh.smoothingThreshold = 0.75f;
    EXPECT_EQ(Stored(mesh), NodeRecord().Get().Append(MeshFields(2)).Float(0.75f).Get());
}

TEST(TriangularMeshObject, ALoadedVersion2MeshCalculatesItsBoundsAgain)
{
    TriangularMeshObject mesh;
    LoadRecord(mesh, NodeRecord().Get().Append(MeshFields(2)).Float(0.75f));
    EXPECT_EQ(mesh.meshFlags, 0x1Bu);
    EXPECT_EQ(mesh.name, "mesh");
    EXPECT_EQ(mesh.smoothingThreshold, 0.75f);
    EXPECT_XYZ(mesh.GetFaceNormals()->GetAt(0), 0, 0, 1);
    EXPECT_XYZ(mesh.GetVertexNormals()->GetAt(0), 0, 0, -1);
    EXPECT_XYZ(mesh.GetVerticies()->GetAt(2), 0, 1, 0);
    const TriangularFace face = mesh.GetFaces()->GetAt(0);
    EXPECT_EQ(face.c, 2);
    EXPECT_EQ(face.faceFlags, 7);
    EXPECT_EQ(face.material, 1);
    EXPECT_EQ(mesh.materialColors, nullptr);
}

TEST(TriangularMeshObject, ALoadedVersion1MeshCalculatesItsBoundsAgain)
{
    TriangularMeshObject mesh;
    mesh.smoothingThreshold = 0.5f;
    LoadRecord(mesh, NodeRecord().Get().Append(MeshFields(1)));
    EXPECT_EQ(mesh.smoothingThreshold, 1.0f);
    EXPECT_EQ(mesh.IsBoundsCalculated(), 0);
    EXPECT_XYZ(mesh.GetBoundsLocalMaximum(), 0, 0, 0);
    EXPECT_EQ(mesh.CalculateBounds(), 1);
    EXPECT_XYZ(mesh.GetBoundsLocalMaximum(), 1, 1, 0);
}

TEST(TriangularMeshObject, OnlyVersions1And2AreLoaded)
{
    for (const DWORD version : {0u, 3u})
    {
        TriangularMeshObject mesh;
        EXPECT_EQ(LoadCause(mesh, NodeRecord().Get().Append(MeshFields(version)).Float(1)),
                  CArchiveException::badSchema);
    }
}

TEST(TriangularMeshObject, ARecordThatIsCutShortIsRefused)
{
    const std::size_t nodeBytes = NodeRecord().Get().Get().size();
    const Bytes record = NodeRecord().Get().Append(MeshFields(2)).Float(1);
    for (std::size_t length = nodeBytes; length < record.size(); ++length)
    {
        TriangularMeshObject mesh;
        EXPECT_EQ(
            LoadCause(mesh, Bytes(record.begin(), record.begin() + static_cast<long>(length))),
            CArchiveException::endOfFile)
            << length;
    }
}

TEST(TriangularMeshObject, ArchivesCreateTheMeshByItsClassName)
{
    const CRuntimeClass* const runtimeClass = CRuntimeClass::FromName("TriangularMeshObject");
    ASSERT_NE(runtimeClass, nullptr);
    EXPECT_EQ(runtimeClass->m_wSchema, VERSIONABLE_SCHEMA | 2);
    EXPECT_TRUE(runtimeClass->IsDerivedFrom(RUNTIME_CLASS(DrawingObject)));
    const std::unique_ptr<CObject> object(runtimeClass->CreateObject());
    EXPECT_NE(dynamic_cast<TriangularMeshObject*>(object.get()), nullptr);
}

}  // namespace
