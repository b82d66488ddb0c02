// SPDX-License-Identifier: MIT
// Meshes and the materials of their faces.
#include "tests/support/Chunks.h"
#include "tests/support/ExpectVector.h"

namespace
{

using Names = std::vector<std::string>;
using Indices = std::vector<int>;

TEST(ThreeDStudioMeshes, AnImportedMeshHasItsNameItsParentItsFlagsAndItsNormals)
{
    Imported node(FileOf({MeshObjectChunk("a")}));
    ASSERT_EQ(node.GetChildCount(), 1);
    const TriangularMeshObject& mesh = node.Mesh();
    EXPECT_EQ(mesh.GetParent(), &node);
    EXPECT_EQ(mesh.name, "a");
    EXPECT_EQ(mesh.materialColors, &node.materials);
    EXPECT_NE(mesh.IsDefined(), 0);
    // BoundsCalculated, FaceNormalsCalculated, VertexNormalsCalculated.
    EXPECT_EQ(mesh.meshFlags, 0x1Cu);
    EXPECT_EQ(mesh.smoothingThreshold, 1.0f);
    EXPECT_EQ(mesh.GetFaceNormals()->GetSize(), 4);
    EXPECT_EQ(mesh.GetVertexNormals()->GetSize(), 4);
    EXPECT_EQ(mesh.GetFaces()->GetElement(3)->a, 1);
    EXPECT_EQ(mesh.GetFaces()->GetElement(3)->b, 2);
    EXPECT_EQ(mesh.GetFaces()->GetElement(3)->c, 3);
    EXPECT_EQ(mesh.GetFaces()->GetElement(3)->faceFlags, 7);
}

TEST(ThreeDStudioMeshes, AMeshWithoutMaterialsHasMaterial0WhichIsUndefined)
{
    Imported node(FileOf({MeshObjectChunk("a")}));
    ASSERT_EQ(node.GetChildCount(), 1);
    EXPECT_EQ(FaceMaterials(node.Mesh()), (Indices{0, 0, 0, 0}));
    EXPECT_EQ(node.MaterialNames(), Names{"Undefined"});
}

TEST(ThreeDStudioMeshes, VerticesAreTurnedUprightBeforeNormalsAndBoundsAreCalculated)
{
    Imported node(FileOf({ObjectChunk(
        "a",
        {ChunkOf(0x4100, {VertexChunk({1, 2, 3, 4, 2, 3, 1, 7, 3}), FaceChunk({0, 1, 2, 0})})})}));
    ASSERT_EQ(node.GetChildCount(), 1);
    TriangularMeshObject& mesh = node.Mesh();
    // (x, y, z) becomes (x, z, -y).
    EXPECT_XYZ_NEAR(mesh.GetVerticies()->GetAt(0), 1, 3, -2, 1e-6);
    EXPECT_XYZ_NEAR(mesh.GetVerticies()->GetAt(1), 4, 3, -2, 1e-6);
    EXPECT_XYZ_NEAR(mesh.GetVerticies()->GetAt(2), 1, 3, -7, 1e-6);
    // The face was seen from above (+z) counter-clockwise: it lies in y = 3, and its normal, into
    // the solid, points down.
    EXPECT_XYZ_NEAR(mesh.GetFaceNormals()->GetAt(0), 0, -1, 0, 1e-6);
    EXPECT_XYZ_NEAR(mesh.GetBoundsLocalMinimum(), 1, 3, -7, 1e-5);
    EXPECT_XYZ_NEAR(mesh.GetBoundsLocalMaximum(), 4, 3, -2, 1e-5);
}

TEST(ThreeDStudioMeshes, TheLocalAxisMatrixChangesNothing)
{
    const RecordBytes matrix =
        ChunkOf(0x4160, {RecordBytes().Floats({9, 8, 7, 6, 5, 4, 3, 2, 1, 9, 9, 9})});
    const RecordBytes shortMatrix = ChunkOf(0x4160, {RecordBytes().Floats({9, 8})});
    Imported plain(FileOf({MeshObjectChunk("a")}));
    for (const RecordBytes& axes : {matrix, shortMatrix})
    {
        Imported node(
            FileOf({ObjectChunk("a", {ChunkOf(0x4100, {axes, TetrahedronChunks(), axes})})}));
        ASSERT_EQ(node.GetChildCount(), 1);
        for (int i = 0; i < 4; ++i)
        {
            const Vector vertex = plain.Mesh().GetVerticies()->GetAt(i);
            EXPECT_XYZ(node.Mesh().GetVerticies()->GetAt(i), vertex.x, vertex.y, vertex.z);
        }
    }
}

TEST(ThreeDStudioMeshes, ACountThatItsChunkCannotHoldFailsTheMeshEvenIfTheFileGoesOn)
{
    const RecordBytes much = ChunkOf(0x1234, {RecordBytes().Raw(Bytes(700000).data(), 700000)});
    const RecordBytes vertices =
        ChunkOf(0x4110, {Words({3}), RecordBytes().Floats({1, 2, 3, 4, 5, 6})});
    const RecordBytes faces = ChunkOf(0x4120, {Words({2, 0, 0, 0, 0})});
    const RecordBytes group =
        FaceChunk({0, 0, 0, 0}, {ChunkOf(0x4130, {ZeroTerminated(""), Words({2, 0})})});
    for (const RecordBytes& part : {vertices, faces, group})
    {
        Imported node(
            FileOf({MeshObjectChunk("a"), ObjectChunk("b", {ChunkOf(0x4100, {part, much})}),
                    MeshObjectChunk("c")}));
        EXPECT_EQ(node.MeshNames(), Names{"a"});
    }
}

TEST(ThreeDStudioMeshes, AListWithoutACountFailsTheMesh)
{
    const RecordBytes group = FaceChunk({0, 0, 0, 0}, {ChunkOf(0x4130, {ZeroTerminated("red")})});
    for (const RecordBytes& part : {ChunkOf(0x4110), ChunkOf(0x4120), group})
    {
        Imported node(FileOf({MeshObjectChunk("a"), ObjectChunk("b", {ChunkOf(0x4100, {part})}),
                              MeshObjectChunk("c")}));
        EXPECT_EQ(node.MeshNames(), Names{"a"});
    }
}

TEST(ThreeDStudioMeshes, AMeshWithoutVerticesLosesItsFaces)
{
    Imported node(FileOf(
        {ObjectChunk("a", {ChunkOf(0x4100, {FaceChunk({0, 1, 2, 0})})}), MeshObjectChunk("b")}));
    ASSERT_EQ(node.MeshNames(), (Names{"a", "b"}));
    EXPECT_EQ(node.Mesh().GetFaces()->GetSize(), 0);
    EXPECT_EQ(node.Mesh().GetFaceNormals()->GetSize(), 0);
}

TEST(ThreeDStudioMeshes, CornersPastTheVerticesBecomeVertex0)
{
    Imported node(FileOf({ObjectChunk(
        "a", {ChunkOf(0x4100, {VertexChunk({0, 0, 0, 1, 0, 0}), FaceChunk({1, 2, 65535, 0})})})}));
    ASSERT_EQ(node.GetChildCount(), 1);
    const TriangularFace face = node.Mesh().GetFaces()->GetAt(0);
    EXPECT_EQ(face.a, 1);
    EXPECT_EQ(face.b, 0);
    EXPECT_EQ(face.c, 0);
}

// Material groups.

TEST(ThreeDStudioMeshes, AMaterialGroupGivesItsFacesTheMaterialOfThatName)
{
    Imported node(
        FileOf({MaterialChunk("red"), MaterialChunk("blue"), MaterialChunk("red"),
                MeshObjectChunk("a", {MaterialGroup("blue", {3, 0}), MaterialGroup("red", {1})})}));
    ASSERT_EQ(node.GetChildCount(), 1);
    EXPECT_EQ(FaceMaterials(node.Mesh()), (Indices{2, 1, 0, 2}));
}

TEST(ThreeDStudioMeshes, AGroupOfAnUnknownMaterialGetsMaterial0)
{
    Imported node(FileOf(
        {MaterialChunk("red"),
         MeshObjectChunk("a", {MaterialGroup("red", {0, 1, 2, 3}), MaterialGroup("green", {1}),
                               MaterialGroup("", {2}), MaterialGroup("Red", {3})})}));
    ASSERT_EQ(node.GetChildCount(), 1);
    EXPECT_EQ(FaceMaterials(node.Mesh()), (Indices{1, 0, 0, 0}));
}

TEST(ThreeDStudioMeshes, AMaterialThatComesAfterTheMeshIsNotFound)
{
    Imported node(FileOf({MeshObjectChunk("a", {MaterialGroup("red", {0})}), MaterialChunk("red"),
                          MeshObjectChunk("b", {MaterialGroup("red", {0})})}));
    ASSERT_EQ(node.GetChildCount(), 2);
    EXPECT_EQ(FaceMaterials(node.Mesh(0)), (Indices{0, 0, 0, 0}));
    EXPECT_EQ(FaceMaterials(node.Mesh(1)), (Indices{1, 0, 0, 0}));
}

TEST(ThreeDStudioMeshes, AMaterialGroupSkipsFaceIndicesPastTheFaces)
{
    Imported node(FileOf(
        {MaterialChunk("red"), MeshObjectChunk("a", {MaterialGroup("red", {4, 65535, 2})})}));
    ASSERT_EQ(node.GetChildCount(), 1);
    EXPECT_EQ(FaceMaterials(node.Mesh()), (Indices{0, 0, 1, 0}));
}

}  // namespace
