// SPDX-License-Identifier: MIT
// The node: imports as a whole, copies, undo and archive records.
#include "tests/support/Chunks.h"
#include "tests/support/ExpectVector.h"
#include "tests/support/NodeRecords.h"

namespace
{

using Names = std::vector<std::string>;

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

TEST(ThreeDStudioObject, AMissingFileAndAFolderReturn0)
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

TEST(ThreeDStudioObject, ARootWithoutEditorDataImportsNothingAndReturns1)
{
    Imported node(ChunkOf(0x4D4D, {unknownChunk}));
    EXPECT_EQ(node.result, 1);
    EXPECT_EQ(node.materials.GetSize(), 0);
    EXPECT_NE(node.IsDefined(), 0);
}

TEST(ThreeDStudioObject, ARootWithALengthBelowItsHeaderImportsNothingAndReturns1)
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

TEST(ThreeDStudioObject, ASecondImportIsAddedBehindTheFirst)
{
    const TemporaryFile file(FileOf({MaterialChunk("red"), MeshObjectChunk("a")}));
    Imported node(FileOf({MaterialChunk("blue"), MeshObjectChunk("b")}));
    EXPECT_EQ(node.CreateFromFile(file.Path()), 1);
    EXPECT_EQ(node.MeshNames(), (Names{"b", "a"}));
    EXPECT_EQ(node.MaterialNames(), (Names{"Undefined", "blue", "Undefined", "red"}));
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

TEST(ThreeDStudioObject, TheRecordIsANodeRecordTheVersionTheReservedWordAndTheMaterials)
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

TEST(ThreeDStudioObject, OnlyVersion1IsLoaded)
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

TEST(ThreeDStudioObject, ARecordThatIsCutShortIsRefused)
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

TEST(ThreeDStudioObject, ArchivesCreateTheNodeByItsClassName)
{
    const CRuntimeClass* const runtimeClass = CRuntimeClass::FromName("ThreeDStudioObject");
    ASSERT_NE(runtimeClass, nullptr);
    EXPECT_EQ(runtimeClass->m_wSchema, VERSIONABLE_SCHEMA | 1);
    EXPECT_TRUE(runtimeClass->IsDerivedFrom(RUNTIME_CLASS(DrawingObject)));
    const std::unique_ptr<CObject> object(runtimeClass->CreateObject());
    EXPECT_NE(dynamic_cast<ThreeDStudioObject*>(object.get()), nullptr);
}

}  // namespace
