// SPDX-License-Identifier: MIT
// The ends of chunks and objects, and chunks that are damaged.
#include "tests/support/Chunks.h"

namespace
{

using Names = std::vector<std::string>;
using Indices = std::vector<int>;

const RecordBytes unknownChunk = ChunkOf(0x1234, {RecordBytes().Raw("\x00\x41junk", 6)});

TEST(ThreeDStudioChunks, UnknownChunksAreSkippedAtEveryDepth)
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

TEST(ThreeDStudioChunks, TheLastChunkOfAFileIsNotLost)
{
    // The face list, every chunk around it and the file end at the same byte.
    Imported node(FileOf({ObjectChunk(
        "a",
        {ChunkOf(0x4100, {VertexChunk({0, 0, 0, 1, 0, 0, 0, 1, 0}), FaceChunk({0, 1, 2, 0})})})}));
    EXPECT_EQ(node.MeshNames(), Names{"a"});
}

TEST(ThreeDStudioChunks, EmptyChunksAreReadEvenAtTheEndOfTheFile)
{
    Imported node(FileOf({ChunkOf(0xAFFF), ObjectChunk("a", {ChunkOf(0x4100)})}));
    EXPECT_EQ(node.MeshNames(), Names{"a"});
    EXPECT_EQ(node.materials.GetSize(), 2);
    EXPECT_EQ(node.Mesh().GetFaces()->GetSize(), 0);
}

TEST(ThreeDStudioChunks, AChunkThatEndsPastItsParentIsNotReadAndEndsTheParent)
{
    const RecordBytes object = MeshObjectChunk("b");
    // The length of the second object is one byte more than what is left of its parent.
    const RecordBytes tooLong = RecordBytes()
                                    .Word(0x4000)
                                    .Dword(static_cast<DWORD>(object.Get().size() + 1))
                                    .Raw(object.Get().data() + 6, object.Get().size() - 6);
    Imported node(ChunkOf(0x4D4D, {ChunkOf(0x3D3D, {MeshObjectChunk("a"), tooLong}),
                                   ChunkOf(0x3D3D, {MeshObjectChunk("c")})}));
    EXPECT_EQ(node.result, 1);
    EXPECT_EQ(node.MeshNames(), (Names{"a", "c"}));
}

TEST(ThreeDStudioChunks, AChunkWithAnImpossibleLengthEndsItsEditorDataAndEarlierMeshesStay)
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

TEST(ThreeDStudioChunks, AFileThatIsCutInsideAnObjectKeepsTheMeshesBeforeIt)
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

TEST(ThreeDStudioChunks, ACompleteMeshIsKeptIfItsObjectIsCutBehindIt)
{
    Bytes bytes =
        FileOf({ObjectChunk("a", {ChunkOf(0x4100, {TetrahedronChunks()}), unknownChunk})});
    bytes.resize(bytes.size() - unknownChunk.Get().size() + 3);
    Imported node(bytes);
    EXPECT_EQ(node.MeshNames(), Names{"a"});
    EXPECT_EQ(node.Mesh().GetFaceNormals()->GetSize(), 4);
}

// Named objects.

TEST(ThreeDStudioChunks, LandscapeEndsTheImportOfItsEditorChunk)
{
    Imported node(ChunkOf(0x4D4D, {ChunkOf(0x3D3D, {MaterialChunk("red"), MeshObjectChunk("a"),
                                                    MeshObjectChunk("Landscape"),
                                                    MeshObjectChunk("b"), MaterialChunk("blue")}),
                                   ChunkOf(0x3D3D, {MeshObjectChunk("c")})}));
    EXPECT_EQ(node.result, 1);
    EXPECT_EQ(node.MeshNames(), (Names{"a", "c"}));
    EXPECT_EQ(node.MaterialNames(), (Names{"Undefined", "red", "Undefined"}));
}

TEST(ThreeDStudioChunks, OnlyTheExactNameLandscapeIsRefused)
{
    Imported node(FileOf({MeshObjectChunk("landscape"), MeshObjectChunk("Landscape1"),
                          MeshObjectChunk("Landscap")}));
    EXPECT_EQ(node.MeshNames(), (Names{"landscape", "Landscape1", "Landscap"}));
}

TEST(ThreeDStudioChunks, AnObjectWithoutAMeshAddsNoChild)
{
    Imported node(FileOf({ObjectChunk("camera", {ChunkOf(0x4700, {Words({1, 2})})}),
                          ObjectChunk("nothing", {}), MeshObjectChunk("a")}));
    EXPECT_EQ(node.MeshNames(), Names{"a"});
}

TEST(ThreeDStudioChunks, HiddenAndShadowChunksMarkAMeshThatCameFirst)
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

TEST(ThreeDStudioChunks, ASecondMeshInOneObjectReplacesTheFirst)
{
    Imported node(FileOf(
        {ObjectChunk("a", {ChunkOf(0x4100, {TetrahedronChunks()}), ChunkOf(0x4010),
                           ChunkOf(0x4100, {VertexChunk({5, 0, 0}), FaceChunk({0, 0, 0, 0})})})}));
    ASSERT_EQ(node.GetChildCount(), 1);
    EXPECT_EQ(node.Mesh().GetFaces()->GetSize(), 1);
    EXPECT_EQ(node.Mesh().IsHidden(), 0);
}

TEST(ThreeDStudioChunks, AMeshThatIsCutShortIsDroppedAndEndsTheEditorData)
{
    const RecordBytes cutFaces = ChunkOf(0x4120, {RecordBytes().Word(9), Words({0, 1, 2, 0})});
    Imported node(FileOf({MeshObjectChunk("a"),
                          ObjectChunk("b", {ChunkOf(0x4100, {VertexChunk({1, 2, 3}), cutFaces})}),
                          MeshObjectChunk("c")}));
    EXPECT_EQ(node.MeshNames(), Names{"a"});
}

}  // namespace
