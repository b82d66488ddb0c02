// SPDX-License-Identifier: MIT
#include "tests/support/Chunks.h"
#include "tests/support/ExpectVector.h"
#include "tests/support/NodeRecords.h"

#include <cmath>

namespace
{

using Names = std::vector<std::string>;
using Indices = std::vector<int>;

const RecordBytes unknownChunk = ChunkOf(0x1234, {RecordBytes().Raw("\x00\x41junk", 6)});

TEST(ThreeDStudioObject, AFreshNodeHasNoMaterialsAndAZeroReservedWord)
{
    const ThreeDStudioObject node;
    EXPECT_EQ(node.materials.GetSize(), 0);
    EXPECT_EQ(node.reservedWord, 0u);
    EXPECT_EQ(node.IsDefined(), 0);
    EXPECT_EQ(node.GetChildCount(), 0);
}

// The root.

TEST(ThreeDStudioObject, BothRootIdsAreAccepted)
{
    for (const WORD root : {0x4D4D, 0xC23D})
    {
        Imported node(ChunkOf(root, {ChunkOf(0x3D3D, {MeshObjectChunk("a")})}));
        EXPECT_EQ(node.result, 1);
        EXPECT_EQ(node.MeshNames(), Names{"a"});
        EXPECT_NE(node.IsDefined(), 0);
    }
}

TEST(ThreeDStudioObject, AnotherRootImportsNothingAndClosesTheFile)
{
    Imported node(ChunkOf(0x3D3D, {MeshObjectChunk("a")}));
    EXPECT_EQ(node.result, 0);
    EXPECT_EQ(node.GetChildCount(), 0);
    EXPECT_EQ(node.materials.GetSize(), 0);
    EXPECT_EQ(node.IsDefined(), 0);
    EXPECT_TRUE(node.file.GetFilePath().IsEmpty());
}

TEST(ThreeDStudioObject, TheFileIsClosedAfterAnImport)
{
    Imported node(FileOf({}));
    EXPECT_EQ(node.result, 1);
    EXPECT_TRUE(node.file.GetFilePath().IsEmpty());
}

TEST(ThreeDStudioObject, WhatCannotBeOpenedOrIsNoFileReturns0)
{
    ThreeDStudioObject node;
    EXPECT_EQ(node.CreateFromFile("no/such/file.3ds"), 0);
    EXPECT_EQ(node.CreateFromFile(CString(testing::TempDir())), 0);
    EXPECT_EQ(node.CreateFromFile(""), 0);
    EXPECT_EQ(node.IsDefined(), 0);
}

TEST(ThreeDStudioObject, AnEmptyFileReturns0)
{
    Imported node(Bytes{});
    EXPECT_EQ(node.result, 0);
}

TEST(ThreeDStudioObject, ARootWithoutEditorDataIsImportedAsNothing)
{
    Imported node(ChunkOf(0x4D4D, {unknownChunk}));
    EXPECT_EQ(node.result, 1);
    EXPECT_EQ(node.materials.GetSize(), 0);
    EXPECT_NE(node.IsDefined(), 0);
}

TEST(ThreeDStudioObject, ARootShorterThanItsHeaderIsImportedAsNothing)
{
    for (const DWORD length : {0, 1, 5})
    {
        Imported node(Joined(
            {RecordBytes().Word(0x4D4D).Dword(length), ChunkOf(0x3D3D, {MeshObjectChunk("a")})}));
        EXPECT_EQ(node.result, 1) << length;
        EXPECT_EQ(node.GetChildCount(), 0) << length;
        EXPECT_EQ(node.materials.GetSize(), 0) << length;
        EXPECT_NE(node.IsDefined(), 0) << length;
    }
}

TEST(ThreeDStudioObject, TwoEditorChunksAreBothReadEachWithAnUndefinedMaterial)
{
    Imported node(ChunkOf(0x4D4D, {ChunkOf(0x3D3D, {MeshObjectChunk("a")}), unknownChunk,
                                   ChunkOf(0x3D3D, {MeshObjectChunk("b")})}));
    EXPECT_EQ(node.MeshNames(), (Names{"a", "b"}));
    EXPECT_EQ(node.MaterialNames(), (Names{"Undefined", "Undefined"}));
}

TEST(ThreeDStudioObject, ImportingTwiceAppends)
{
    const TemporaryFile file(FileOf({MaterialChunk("red"), MeshObjectChunk("a")}));
    Imported node(FileOf({MaterialChunk("blue"), MeshObjectChunk("b")}));
    EXPECT_EQ(node.CreateFromFile(file.Path()), 1);
    EXPECT_EQ(node.MeshNames(), (Names{"b", "a"}));
    EXPECT_EQ(node.MaterialNames(), (Names{"Undefined", "blue", "Undefined", "red"}));
}

// Chunks and their ends.

TEST(ThreeDStudioObject, OtherChunksAreSkippedWholeAtEveryDepth)
{
    const RecordBytes mesh = ChunkOf(
        0x4100,
        {unknownChunk, TetrahedronChunks({unknownChunk, MaterialGroup("red", {1})}), unknownChunk});
    Imported node(
        ChunkOf(0x4D4D, {unknownChunk,
                         ChunkOf(0x3D3D, {unknownChunk, MaterialChunk("red", {unknownChunk}),
                                          ObjectChunk("a", {unknownChunk, mesh, unknownChunk})}),
                         unknownChunk}));
    EXPECT_EQ(node.MeshNames(), Names{"a"});
    EXPECT_EQ(node.MaterialNames(), (Names{"Undefined", "red"}));
    EXPECT_EQ(FaceMaterials(node.Mesh()), (Indices{0, 1, 0, 0}));
}

TEST(ThreeDStudioObject, TheLastChunkOfAFileIsNotLost)
{
    // Every chunk around the face list ends with it, and with the file.
    Imported node(FileOf({ObjectChunk(
        "a",
        {ChunkOf(0x4100, {VertexChunk({0, 0, 0, 1, 0, 0, 0, 1, 0}), FaceChunk({0, 1, 2, 0})})})}));
    EXPECT_EQ(node.MeshNames(), Names{"a"});
}

TEST(ThreeDStudioObject, AnEmptyChunkEndsSuccessfullyAlsoAtTheFilesEnd)
{
    Imported node(FileOf({ChunkOf(0xAFFF), ObjectChunk("a", {ChunkOf(0x4100)})}));
    EXPECT_EQ(node.MeshNames(), Names{"a"});
    EXPECT_EQ(node.materials.GetSize(), 2);
    EXPECT_EQ(node.Mesh().GetFaces()->GetSize(), 0);
}

TEST(ThreeDStudioObject, AChunkThatEndsPastItsParentIsNotReadAndEndsTheLoop)
{
    const RecordBytes object = MeshObjectChunk("b");
    // The second object's header says one byte more than its parent has.
    const RecordBytes tooLong = RecordBytes()
                                    .Word(0x4000)
                                    .Dword(static_cast<DWORD>(object.Get().size() + 1))
                                    .Raw(object.Get().data() + 6, object.Get().size() - 6);
    Imported node(ChunkOf(0x4D4D, {ChunkOf(0x3D3D, {MeshObjectChunk("a"), tooLong}),
                                   ChunkOf(0x3D3D, {MeshObjectChunk("c")})}));
    EXPECT_EQ(node.result, 1);
    EXPECT_EQ(node.MeshNames(), (Names{"a", "c"}));
}

TEST(ThreeDStudioObject, AChunkThatCannotBeInitializedEndsItsLoopAndTheMeshesBeforeItStay)
{
    for (const DWORD length : {0u, 1u, 5u, 0xFFFFFFFFu})
    {
        Imported node(ChunkOf(0x4D4D, {ChunkOf(0x3D3D, {MeshObjectChunk("a"),
                                                        RecordBytes().Word(0x4000).Dword(length),
                                                        MeshObjectChunk("b")}),
                                       ChunkOf(0x3D3D, {MeshObjectChunk("c")})}));
        EXPECT_EQ(node.result, 1);
        EXPECT_EQ(node.MeshNames(), (Names{"a", "c"})) << length;
    }
}

TEST(ThreeDStudioObject, AFileCutInsideAChunkKeepsTheMeshesBeforeIt)
{
    const RecordBytes whole = FileOf({MeshObjectChunk("a"), MeshObjectChunk("b")});
    const std::size_t second = MeshObjectChunk("b").Get().size();
    for (const std::size_t missing : {std::size_t{1}, second / 2, second - 1, second})
    {
        Bytes bytes = whole;
        bytes.resize(bytes.size() - missing);
        Imported node(bytes);
        EXPECT_EQ(node.result, 1);
        EXPECT_EQ(node.MeshNames(), Names{"a"}) << missing;
    }
}

TEST(ThreeDStudioObject, AMeshThatIsCompleteStaysWhenItsObjectIsCutBehindIt)
{
    Bytes bytes =
        FileOf({ObjectChunk("a", {ChunkOf(0x4100, {TetrahedronChunks()}), unknownChunk})});
    bytes.resize(bytes.size() - unknownChunk.Get().size() + 3);
    Imported node(bytes);
    EXPECT_EQ(node.MeshNames(), Names{"a"});
    EXPECT_EQ(node.Mesh().GetFaceNormals()->GetSize(), 4);
}

// Named objects.

TEST(ThreeDStudioObject, LandscapeEndsTheImportOfItsEditorChunk)
{
    Imported node(ChunkOf(0x4D4D, {ChunkOf(0x3D3D, {MaterialChunk("red"), MeshObjectChunk("a"),
                                                    MeshObjectChunk("Landscape"),
                                                    MeshObjectChunk("b"), MaterialChunk("blue")}),
                                   ChunkOf(0x3D3D, {MeshObjectChunk("c")})}));
    EXPECT_EQ(node.result, 1);
    EXPECT_EQ(node.MeshNames(), (Names{"a", "c"}));
    EXPECT_EQ(node.MaterialNames(), (Names{"Undefined", "red", "Undefined"}));
}

TEST(ThreeDStudioObject, OnlyTheExactNameLandscapeIsRefused)
{
    Imported node(FileOf({MeshObjectChunk("landscape"), MeshObjectChunk("Landscape1"),
                          MeshObjectChunk("Landscap")}));
    EXPECT_EQ(node.MeshNames(), (Names{"landscape", "Landscape1", "Landscap"}));
}

TEST(ThreeDStudioObject, AnObjectWithoutAMeshIsNoChild)
{
    Imported node(FileOf({ObjectChunk("camera", {ChunkOf(0x4700, {Words({1, 2})})}),
                          ObjectChunk("nothing", {}), MeshObjectChunk("a")}));
    EXPECT_EQ(node.MeshNames(), Names{"a"});
}

TEST(ThreeDStudioObject, HiddenAndShadowChunksMarkAMeshThatCameFirst)
{
    const RecordBytes mesh = ChunkOf(0x4100, {TetrahedronChunks()});
    Imported node(FileOf({ObjectChunk("hidden", {mesh, ChunkOf(0x4010)}),
                          ObjectChunk("shadow", {mesh, ChunkOf(0x4012)}),
                          ObjectChunk("before", {ChunkOf(0x4010), ChunkOf(0x4012), mesh})}));
    ASSERT_EQ(node.GetChildCount(), 3);
    EXPECT_EQ(node.Mesh(0).IsHidden(), 0x1);
    EXPECT_EQ(node.Mesh(0).IsShadow(), 0);
    EXPECT_EQ(node.Mesh(1).IsHidden(), 0);
    EXPECT_EQ(node.Mesh(1).IsShadow(), 0x2);
    EXPECT_EQ(node.Mesh(2).IsHidden(), 0);
    EXPECT_EQ(node.Mesh(2).IsShadow(), 0);
}

TEST(ThreeDStudioObject, ASecondMeshInOneObjectReplacesTheFirst)
{
    Imported node(FileOf(
        {ObjectChunk("a", {ChunkOf(0x4100, {TetrahedronChunks()}), ChunkOf(0x4010),
                           ChunkOf(0x4100, {VertexChunk({5, 0, 0}), FaceChunk({0, 0, 0, 0})})})}));
    ASSERT_EQ(node.GetChildCount(), 1);
    EXPECT_EQ(node.Mesh().GetFaces()->GetSize(), 1);
    EXPECT_EQ(node.Mesh().IsHidden(), 0);
}

TEST(ThreeDStudioObject, AMeshThatFailsIsNotAddedAndEndsTheEditorChunk)
{
    const RecordBytes cutFaces = ChunkOf(0x4120, {RecordBytes().Word(9), Words({0, 1, 2, 0})});
    Imported node(FileOf({MeshObjectChunk("a"),
                          ObjectChunk("b", {ChunkOf(0x4100, {VertexChunk({1, 2, 3}), cutFaces})}),
                          MeshObjectChunk("c")}));
    EXPECT_EQ(node.MeshNames(), Names{"a"});
}

// Meshes.

TEST(ThreeDStudioObject, AnImportedMeshIsDefinedNamedMeasuredAndAChildOfTheNode)
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

TEST(ThreeDStudioObject, OneMeshWithoutMaterialsUsesMaterial0Undefined)
{
    Imported node(FileOf({MeshObjectChunk("a")}));
    ASSERT_EQ(node.GetChildCount(), 1);
    EXPECT_EQ(FaceMaterials(node.Mesh()), (Indices{0, 0, 0, 0}));
    EXPECT_EQ(node.MaterialNames(), Names{"Undefined"});
}

TEST(ThreeDStudioObject, VerticesAreTurnedUprightBeforeNormalsAndBounds)
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

TEST(ThreeDStudioObject, TheLocalAxisMatrixChangesNothing)
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

TEST(ThreeDStudioObject, ACountBeyondItsChunkFailsTheMeshAlsoWhenTheFileGoesOn)
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

TEST(ThreeDStudioObject, AListWithoutItsCountFailsTheMesh)
{
    const RecordBytes group = FaceChunk({0, 0, 0, 0}, {ChunkOf(0x4130, {ZeroTerminated("red")})});
    for (const RecordBytes& part : {ChunkOf(0x4110), ChunkOf(0x4120), group})
    {
        Imported node(FileOf({MeshObjectChunk("a"), ObjectChunk("b", {ChunkOf(0x4100, {part})}),
                              MeshObjectChunk("c")}));
        EXPECT_EQ(node.MeshNames(), Names{"a"});
    }
}

TEST(ThreeDStudioObject, AMeshWithFacesAndNoVerticesDropsItsFaces)
{
    Imported node(FileOf(
        {ObjectChunk("a", {ChunkOf(0x4100, {FaceChunk({0, 1, 2, 0})})}), MeshObjectChunk("b")}));
    ASSERT_EQ(node.MeshNames(), (Names{"a", "b"}));
    EXPECT_EQ(node.Mesh().GetFaces()->GetSize(), 0);
    EXPECT_EQ(node.Mesh().GetFaceNormals()->GetSize(), 0);
}

TEST(ThreeDStudioObject, CornersPastTheVerticesBecomeVertex0)
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

TEST(ThreeDStudioObject, AMaterialGroupGivesItsFacesTheMaterialOfThatName)
{
    Imported node(
        FileOf({MaterialChunk("red"), MaterialChunk("blue"), MaterialChunk("red"),
                MeshObjectChunk("a", {MaterialGroup("blue", {3, 0}), MaterialGroup("red", {1})})}));
    ASSERT_EQ(node.GetChildCount(), 1);
    EXPECT_EQ(FaceMaterials(node.Mesh()), (Indices{2, 1, 0, 2}));
}

TEST(ThreeDStudioObject, AGroupOfAnUnknownMaterialGetsMaterial0)
{
    Imported node(FileOf(
        {MaterialChunk("red"),
         MeshObjectChunk("a", {MaterialGroup("red", {0, 1, 2, 3}), MaterialGroup("green", {1}),
                               MaterialGroup("", {2}), MaterialGroup("Red", {3})})}));
    ASSERT_EQ(node.GetChildCount(), 1);
    EXPECT_EQ(FaceMaterials(node.Mesh()), (Indices{1, 0, 0, 0}));
}

TEST(ThreeDStudioObject, AMaterialDefinedBehindTheMeshIsUnknown)
{
    Imported node(FileOf({MeshObjectChunk("a", {MaterialGroup("red", {0})}), MaterialChunk("red"),
                          MeshObjectChunk("b", {MaterialGroup("red", {0})})}));
    ASSERT_EQ(node.GetChildCount(), 2);
    EXPECT_EQ(FaceMaterials(node.Mesh(0)), (Indices{0, 0, 0, 0}));
    EXPECT_EQ(FaceMaterials(node.Mesh(1)), (Indices{1, 0, 0, 0}));
}

TEST(ThreeDStudioObject, AFaceIndexPastTheFacesIsSkipped)
{
    Imported node(FileOf(
        {MaterialChunk("red"), MeshObjectChunk("a", {MaterialGroup("red", {4, 65535, 2})})}));
    ASSERT_EQ(node.GetChildCount(), 1);
    EXPECT_EQ(FaceMaterials(node.Mesh()), (Indices{0, 0, 1, 0}));
}

// Steps taken by a host.

TEST(ThreeDStudioObject, AHostCanParseByItself)
{
    const TemporaryFile source(
        FileOf({MaterialChunk("red"), MeshObjectChunk("a", {MaterialGroup("red", {0})})}));
    ThreeDStudioObject node;
    ASSERT_TRUE(node.file.Open(source.Path(), CFile::modeRead));
    Chunk3DS root(&node.file);
    ASSERT_EQ(root.Initialize(), 1);
    EXPECT_EQ(node.Parse3DS(&root), 1);
    EXPECT_EQ(node.materials.FindName("red"), 1);
    ASSERT_EQ(node.GetChildCount(), 1);
    EXPECT_EQ(FaceMaterials(dynamic_cast<TriangularMeshObject&>(*node.GetHeadChild()))[0], 1);
    EXPECT_FALSE(node.file.GetFilePath().IsEmpty());
}

TEST(ThreeDStudioObject, StepsWithoutAnOpenFileReturn0)
{
    ThreeDStudioObject node;
    TriangularMeshObject mesh;
    Chunk3DS chunk(&node.file);
    chunk.end = 100;
    ColorVector color(1, 2, 3, 4);
    CString text("kept");
    EXPECT_EQ(node.ReadDWORD(), 0u);
    EXPECT_EQ(node.ReadString(&text), 0);
    EXPECT_TRUE(text.IsEmpty());
    EXPECT_EQ(node.ParseColor(&color), 0);
    EXPECT_RGBA(color, 1, 2, 3, 4);
    EXPECT_EQ(node.ParsePercentage(), 0.0f);
    EXPECT_EQ(node.ParseMaterialData(&chunk), 0);
    EXPECT_EQ(node.ParseMaterialEntry(&chunk), 0);
    EXPECT_EQ(node.ParseNamedObject(&chunk), 0);
    EXPECT_EQ(node.ParseTriangularMeshObject(&chunk, "a"), nullptr);
}

class ThreeDStudioSteps : public testing::Test
{
protected:
    void Open(const RecordBytes& bytes)
    {
        source.Write(bytes);
        ASSERT_TRUE(node.file.Open(source.Path(), CFile::modeRead));
    }
    TemporaryFile source{Bytes{}};
    ThreeDStudioObject node;
};

TEST_F(ThreeDStudioSteps, ValuesAreLittleEndian)
{
    Open(RecordBytes().Raw("\x12\x34\x12\x78\x56\x34\x12", 7).Float(1.5f).Floats({1, 2, 3}));
    EXPECT_EQ(node.ReadBYTE(), 0x12);
    EXPECT_EQ(node.ReadWORD(), 0x1234);
    EXPECT_EQ(node.ReadDWORD(), 0x12345678u);
    EXPECT_EQ(node.ReadFloat(), 1.5f);
    Vector vector;
    EXPECT_EQ(node.ReadVector(&vector), 1);
    EXPECT_XYZ(vector, 1, 2, 3);
    EXPECT_EQ(node.ReadBYTE(), 0);
    EXPECT_EQ(node.ReadFloat(), 0.0f);
    EXPECT_EQ(node.ReadVector(&vector), 0);
}

TEST_F(ThreeDStudioSteps, AFaceIsFourWordsAndKeepsItsMaterial)
{
    Open(Words({1, 2, 3, 0xFFFF}));
    TriangularFace face;
    face.material = 9;
    EXPECT_EQ(node.ReadFace(&face), 1);
    EXPECT_EQ(face.a, 1);
    EXPECT_EQ(face.b, 2);
    EXPECT_EQ(face.c, 3);
    EXPECT_EQ(face.faceFlags, 0xFFFF);
    EXPECT_EQ(face.material, 9);
    EXPECT_EQ(node.ReadFace(&face), 0);
}

TEST_F(ThreeDStudioSteps, AStringEndsAtItsZeroAndTheFileStandsBehindIt)
{
    Open(Joined({ZeroTerminated("red"), ZeroTerminated(""), Words({0x1234})}));
    CString text;
    EXPECT_EQ(node.ReadString(&text), 1);
    EXPECT_EQ(text, "red");
    EXPECT_EQ(node.ReadString(&text), 1);
    EXPECT_EQ(text, "");
    EXPECT_EQ(node.ReadWORD(), 0x1234);
}

TEST_F(ThreeDStudioSteps, AStringHasAtMost80Bytes)
{
    const std::string letters(79, 'x');
    Open(Joined({ZeroTerminated(letters), ZeroTerminated(letters + "yz")}));
    CString text;
    EXPECT_EQ(node.ReadString(&text), 1);
    EXPECT_EQ(text, letters.c_str());
    EXPECT_EQ(node.file.GetPosition(), 80u);
    EXPECT_EQ(node.ReadString(&text), 1);
    EXPECT_EQ(text, (letters + "y").c_str());
    EXPECT_EQ(node.ReadString(&text), 1);
    EXPECT_EQ(text, "z");
}

TEST_F(ThreeDStudioSteps, AStringEndsAtTheFilesEnd)
{
    Open(RecordBytes().Raw("red", 3));
    CString text;
    EXPECT_EQ(node.ReadString(&text), 0);
    EXPECT_EQ(text, "red");
    EXPECT_EQ(node.ReadString(&text), 0);
    EXPECT_EQ(text, "");
}

TEST(ThreeDStudioObject, AStringEndsAtItsChunksEnd)
{
    Imported node(FileOf(
        {ChunkOf(0xAFFF, {ChunkOf(0xA000, {RecordBytes().Raw("red", 3)}), ChunkOf(0xA080)})}));
    EXPECT_EQ(node.MaterialNames(), (Names{"Undefined", "red"}));
}

TEST_F(ThreeDStudioSteps, ListsReturn1WhenTheyAreThereAnd0WhenNot)
{
    Open(Joined({Words({1}), RecordBytes().Floats({1, 2, 3}), Words({0xFFFF}),
                 RecordBytes().Floats({1, 2})}));
    TriangularMeshObject mesh;
    EXPECT_EQ(node.ParseVertexArray(&mesh), 1);
    EXPECT_EQ(mesh.GetVerticies()->GetSize(), 1);
    EXPECT_EQ(node.ParseVertexArray(&mesh), 0);
    EXPECT_EQ(mesh.GetVerticies()->GetSize(), 1);
}

// Copies, undo and records.

TEST(ThreeDStudioObject, ACopyHasTheMaterialsAndNoMeshes)
{
    Imported node(FileOf({MaterialChunk("red"), MeshObjectChunk("a")}));
    node.reservedWord = 77;
    ThreeDStudioObject copy(node);
    ThreeDStudioObject assigned;
    assigned = node;
    for (const ThreeDStudioObject* const other : {&copy, &assigned})
    {
        EXPECT_EQ(other->materials.FindName("red"), 1);
        EXPECT_EQ(other->reservedWord, 77u);
        EXPECT_EQ(other->GetChildCount(), 0);
        EXPECT_NE(other->IsDefined(), 0);
    }
}

TEST(ThreeDStudioObject, UndoBringsBackTheMaterialsAndKeepsTheMeshes)
{
    Imported node(FileOf({MaterialChunk("red"), MeshObjectChunk("a")}));
    node.reservedWord = 1;
    EXPECT_EQ(node.SaveToUndo(), 1);
    node.materials.RemoveAll();
    node.reservedWord = 2;
    node.SetTranslation(DVector(1, 2, 3));
    EXPECT_EQ(node.RestoreFromUndo(), 1);
    EXPECT_EQ(node.MaterialNames(), (Names{"Undefined", "red"}));
    EXPECT_EQ(node.reservedWord, 1u);
    EXPECT_XYZ(node.GetTranslation(), 0, 0, 0);
    EXPECT_EQ(node.MeshNames(), Names{"a"});
    EXPECT_EQ(node.Mesh().materialColors, &node.materials);
    EXPECT_EQ(node.RestoreFromUndo(), 0);
}

TEST(ThreeDStudioObject, SetSurfaceColorReplacesTheMaterialOfThatIndex)
{
    Imported node(FileOf({MaterialChunk("red"), MeshObjectChunk("a")}));
    const NamedColor green("green");
    node.SetSurfaceColor(green, 1);
    node.SetSurfaceColor(green, 2);
    node.SetSurfaceColor(green, -1);
    EXPECT_EQ(node.MaterialNames(), (Names{"Undefined", "green"}));
}

TEST(ThreeDStudioObject, ItsRecordIsTheNodesThenVersionReservedWordAndMaterials)
{
    ThreeDStudioObject node;
    node.reservedWord = 0x12345678;
    node.materials.Add(NamedColor("red"));
    const RecordBytes record = NodeRecord()
                                   .Get()
                                   .Dword(1)
                                   .Dword(0x12345678)
                                   .Dword(1)
                                   .Dword(1)
                                   .Append(NamedColorRecord("red"));
    EXPECT_EQ(Stored(node), record.Get());
    ThreeDStudioObject loaded;
    LoadRecord(loaded, record);
    EXPECT_EQ(loaded.reservedWord, 0x12345678u);
    EXPECT_EQ(loaded.materials.FindName("red"), 0);
    EXPECT_EQ(Stored(loaded), record.Get());
}

TEST(ThreeDStudioObject, AnotherVersionIsRefused)
{
    for (const DWORD version : {0u, 2u})
    {
        ThreeDStudioObject node;
        EXPECT_EQ(LoadCause(node, NodeRecord().Get().Dword(version).Dword(0).Dword(1).Dword(0)),
                  CArchiveException::badSchema);
    }
}

TEST(ThreeDStudioObject, LoadedMeshesUseTheMaterialsOfTheLoadedNode)
{
    Imported node(FileOf({MaterialChunk("red"), MeshObjectChunk("a", {MaterialGroup("red", {2})}),
                          MeshObjectChunk("b")}));
    node.AddChild(new DrawingObject);
    const Bytes record = Stored<ThreeDStudioObject>(node);
    ThreeDStudioObject loaded;
    LoadRecord(loaded, record);
    ASSERT_EQ(loaded.GetChildCount(), 3);
    for (int i = 0; i < 2; ++i)
    {
        const auto& mesh = dynamic_cast<TriangularMeshObject&>(*loaded.GetChildByIndex(i));
        EXPECT_EQ(mesh.materialColors, &loaded.materials);
        EXPECT_EQ(FaceMaterials(mesh), FaceMaterials(node.Mesh(i)));
    }
}

TEST(ThreeDStudioObject, EveryCutOfItsRecordIsRefusedWithoutALeak)
{
    Imported node(FileOf({MaterialChunk("red"), MeshObjectChunk("a")}));
    const Bytes record = Stored<ThreeDStudioObject>(node);
    for (std::size_t length = 0; length < record.size(); length += 7)
    {
        ThreeDStudioObject loaded;
        EXPECT_EQ(
            LoadCause(loaded, Bytes(record.begin(), record.begin() + static_cast<long>(length))),
            CArchiveException::endOfFile)
            << length;
    }
}

TEST(ThreeDStudioObject, ArchivesCreateItByName)
{
    const CRuntimeClass* const runtimeClass = CRuntimeClass::FromName("ThreeDStudioObject");
    ASSERT_NE(runtimeClass, nullptr);
    EXPECT_EQ(runtimeClass->m_wSchema, VERSIONABLE_SCHEMA | 1);
    EXPECT_TRUE(runtimeClass->IsDerivedFrom(RUNTIME_CLASS(DrawingObject)));
    const std::unique_ptr<CObject> object(runtimeClass->CreateObject());
    EXPECT_NE(dynamic_cast<ThreeDStudioObject*>(object.get()), nullptr);
}

}  // namespace
