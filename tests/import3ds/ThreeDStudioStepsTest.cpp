// SPDX-License-Identifier: MIT
// The parsing steps and the readers of values, called by a host.
#include "tests/support/Chunks.h"
#include "tests/support/ExpectVector.h"

namespace
{

using Names = std::vector<std::string>;

TEST(ThreeDStudioHost, AHostCanOpenTheFileAndParseByItself)
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

TEST(ThreeDStudioHost, StepsWithoutAnOpenFileReturn0)
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

TEST_F(ThreeDStudioSteps, ReadFaceReadsFourWordsAndKeepsTheMaterial)
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

TEST_F(ThreeDStudioSteps, AStringEndsAtAZeroByteWhichIsReadToo)
{
    Open(Joined({ZeroTerminated("red"), ZeroTerminated(""), Words({0x1234})}));
    CString text;
    EXPECT_EQ(node.ReadString(&text), 1);
    EXPECT_EQ(text, "red");
    EXPECT_EQ(node.ReadString(&text), 1);
    EXPECT_EQ(text, "");
    EXPECT_EQ(node.ReadWORD(), 0x1234);
}

TEST_F(ThreeDStudioSteps, AStringEndsAfter80Bytes)
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

TEST_F(ThreeDStudioSteps, AStringEndsWhereTheFileEnds)
{
    Open(RecordBytes().Raw("red", 3));
    CString text;
    EXPECT_EQ(node.ReadString(&text), 0);
    EXPECT_EQ(text, "red");
    EXPECT_EQ(node.ReadString(&text), 0);
    EXPECT_EQ(text, "");
}

TEST(ThreeDStudioHost, AStringEndsWhereItsChunkEnds)
{
    Imported node(FileOf(
        {ChunkOf(0xAFFF, {ChunkOf(0xA000, {RecordBytes().Raw("red", 3)}), ChunkOf(0xA080)})}));
    EXPECT_EQ(node.MaterialNames(), (Names{"Undefined", "red"}));
}

TEST_F(ThreeDStudioSteps, AListReturns1IfItIsCompleteAnd0IfItIsCutShort)
{
    Open(Joined({Words({1}), RecordBytes().Floats({1, 2, 3}), Words({0xFFFF}),
                 RecordBytes().Floats({1, 2})}));
    TriangularMeshObject mesh;
    EXPECT_EQ(node.ParseVertexArray(&mesh), 1);
    EXPECT_EQ(mesh.GetVerticies()->GetSize(), 1);
    EXPECT_EQ(node.ParseVertexArray(&mesh), 0);
    EXPECT_EQ(mesh.GetVerticies()->GetSize(), 1);
}

TEST_F(ThreeDStudioSteps, FacesAndTheirMaterialsAreReadStepByStep)
{
    const RecordBytes faces = FaceChunk({0, 1, 2, 7, 0, 2, 1, 7});
    Open(Joined({faces, ZeroTerminated("red"), Words({1, 1})}));
    NamedColor red;
    red.SetName("red");
    node.materials.Add(NamedColor());
    node.materials.Add(red);
    TriangularMeshObject mesh;
    Chunk3DS chunk(&node.file);
    ASSERT_EQ(chunk.Initialize(), 1);
    EXPECT_EQ(node.ParseFaceArray(&chunk, &mesh), 1);
    ASSERT_EQ(mesh.GetFaces()->GetSize(), 2);
    EXPECT_EQ((*mesh.GetFaces())[1].b, 2);
    EXPECT_EQ(node.ParseMeshMaterialGroup(&mesh), 1);
    EXPECT_EQ((*mesh.GetFaces())[0].material, 0);
    EXPECT_EQ((*mesh.GetFaces())[1].material, 1);
    EXPECT_EQ(node.ParseMeshMaterialGroup(&mesh), 0);
}

TEST_F(ThreeDStudioSteps, ColoursAndAMatrixAreReadStepByStep)
{
    Open(RecordBytes()
             .Floats({0.25f, 0.5f, 0.75f})
             .Byte(255)
             .Byte(0)
             .Byte(51)
             .Floats({1, 0, 0, 0, 1, 0, 0, 0, 1, 5, 6, 7}));
    ColorVector color(0, 0, 0, 0.5f);
    EXPECT_EQ(node.ParseFloatColor(&color), 1);
    EXPECT_RGBA(color, 0.25f, 0.5f, 0.75f, 0.5f);
    EXPECT_EQ(node.ParseColor24(&color), 1);
    EXPECT_EQ(color.red, 1.0f);
    EXPECT_EQ(color.green, 0.0f);
    EXPECT_FLOAT_EQ(color.blue, 0.2f);  // 51 / 255
    TriangularMeshObject mesh;
    EXPECT_EQ(node.ParseMeshMatrix(&mesh), 1);
    EXPECT_EQ(node.file.GetPosition(), 63u);  // behind 12 + 3 + 48 bytes
    EXPECT_EQ(node.ParseColor24(&color), 0);
    EXPECT_EQ(node.ParseFloatColor(&color), 0);
}

}  // namespace
