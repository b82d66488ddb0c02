// SPDX-License-Identifier: MIT
// A mesh cache draws imported meshes as immediate mode draws them, and sees every change of a mesh.
#include "import3ds/TriangularMeshObject.h"
#include "material/NamedColorArray.h"
#include "tests/support/MeshDrawingPixels.h"
#include "tests/support/Meshes.h"

#include <functional>

namespace
{
using orvane::MeshCache;
class ImportedMeshPixels : public MeshDrawingPixels
{};

INSTANTIATE_TEST_SUITE_P(Storages, ImportedMeshPixels,
                         testing::Values(MeshCache::Storage::Automatic, MeshCache::Storage::Arrays),
                         [](const auto& each) {
                             return each.param == MeshCache::Storage::Arrays ? "Arrays" : "Buffers";
                         });

TEST_P(ImportedMeshPixels, ImportedMeshesLookTheSameAndEveryChangeIsSeen)
{
    REQUIRE_CONTEXT(context);
    NamedColorArray materials;
    materials.Add(MaterialOf(0.9f, 0.3f, 0.1f));
    materials.Add(MaterialOf(0.1f, 0.3f, 0.9f));
    NamedColorArray otherMaterials;
    otherMaterials.Add(MaterialOf(0.1f, 0.8f, 0.1f));
    TriangularMeshObject mesh;
    FillBall(mesh);
    mesh.SetMaterialColors(&materials);
    ExpectSamePicture(mesh);
    const auto setMaterials = [&mesh](int first, int end, WORD material) {
        for (int i = first; i < end; ++i)
        {
            mesh.GetFaces()->GetElement(i)->material = material;
        }
    };
    const struct
    {
        const char* name;
        std::function<void()> apply;
    } changes[] = {
        {"threshold", [&] { mesh.smoothingThreshold = 0.5f; }},
        {"vertex", [&] { mesh.GetVerticies()->GetElement(62)->x *= 1.5f; }},
        {"vertex normal", [&] { *mesh.GetVertexNormals()->GetElement(62) = Vector(0, 1, 0); }},
        {"face normals",
         [&] {
             for (int i = 0; i < mesh.GetFaceNormals()->GetSize(); ++i)
             {
                 *mesh.GetFaceNormals()->GetElement(i) = Vector(0, 0, -1);
             }
         }},
        {"corner", [&] { mesh.GetFaces()->GetElement(130)->b = 20; }},
        {"materials of faces", [&] { setMaterials(0, 200, 1); }},
        {"material that is not there", [&] { setMaterials(100, 150, 9); }},
        {"fewer faces", [&] { mesh.GetFaces()->SetSize(240); }},
        {"color", [&] { *materials.GetElement(0) = MaterialOf(0.9f, 0.9f, 0.1f); }},
        {"fewer vertices", [&] { mesh.GetVerticies()->SetSize(60); }},
        {"fewer materials", [&] { materials.SetSize(1); }},
        {"other materials", [&] { mesh.SetMaterialColors(&otherMaterials); }},
        {"no materials", [&] { mesh.SetMaterialColors(nullptr); }},
    };
    for (const auto& change : changes)
    {
        SCOPED_TRACE(change.name);
        const Picture before = Drawn(mesh, nullptr);
        change.apply();
        EXPECT_FALSE(PicturesMatch(before, Drawn(mesh, nullptr), "mesh-unchanged"));
        ExpectSamePicture(mesh);
        glNormal3f(1, 0, 0);
        Drawn(mesh, nullptr);
        const std::vector<float> expected = StateOfOpenGL();
        glNormal3f(1, 0, 0);
        Drawn(mesh, &cache);
        EXPECT_EQ(StateOfOpenGL(), expected);
    }
}

TEST_P(ImportedMeshPixels, TwoSidesOfAnOpenMeshLookTheSame)
{
    REQUIRE_CONTEXT(context);
    NamedColorArray materials;
    materials.Add(MaterialOf(0.9f, 0.3f, 0.1f));
    TriangularMeshObject square;
    FillSquare(square);
    square.CalculateFaceNormals();
    square.SetMaterialColors(&materials);
    ExpectSamePicture(square);
    square.GetTransform()->SetRotation(160, DVector(0, 1, 0));
    ExpectSamePicture(square);
}
}  // namespace
