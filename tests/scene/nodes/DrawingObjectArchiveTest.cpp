// SPDX-License-Identifier: MIT
#include "scene/DrawingObject.h"

#include "imaging/TextureMapList.h"
#include "scene/NamedTransform.h"
#include "tests/support/NodeRecords.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>

namespace
{

void ExpectVector(const DVector& vector, double x, double y, double z)
{
    EXPECT_EQ(vector.x, x);
    EXPECT_EQ(vector.y, y);
    EXPECT_EQ(vector.z, z);
}

// Values by which every field can be told from its neighbours.
NodeRecord FullRecord()
{
    NodeRecord record;
    record.minimumSize = RecordBytes().Doubles({0.5, 0.25, 0.125});
    record.extentsBoxColor = NamedColorRecord("box");
    record.flags = 0xF700;
    record.handles = RecordBytes();
    for (int handle = 0; handle < 16; ++handle)
    {
        record.handles.Doubles({handle + 1.0, handle + 1.25, handle + 1.5});
    }
    record.scale = RecordBytes().Doubles({2, 3, 4});
    record.scaledDimensions = RecordBytes().Doubles({5, 6, 7});
    record.handleSize = 0.75;
    record.unscaledDimensions = RecordBytes().Doubles({8, 9, 10});
    return record;
}

void ExpectFull(const DrawingObject& node)
{
    EXPECT_STREQ(node.extentsBoxColor.GetName(), "box");
    EXPECT_EQ(node.flags, 0xF700U);
    for (int handle = 0; handle < 8; ++handle)
    {
        ExpectVector(node.GetGlobalSizingHandleCenter(handle), handle + 1, handle + 1.25,
                     handle + 1.5);
        ExpectVector(node.GetLocalSizingHandleCenter(handle), handle + 9, handle + 9.25,
                     handle + 9.5);
    }
    ExpectVector(node.GetScale(), 2, 3, 4);
    ExpectVector(node.GetScaledDimensions(), 5, 6, 7);
    EXPECT_EQ(node.handleSize, 0.75);
    ExpectVector(node.GetUnscaledDimensions(), 8, 9, 10);
}

// As FullRecord, but with the setters that keep the dimensions in step: set in its own order.
class FullNode : public DrawingObject
{
public:
    FullNode()
    {
        minimumSize = DVector(0.5, 0.25, 0.125);
        extentsBoxColor.SetName("box");
        flags = 0xF707;  // the three low bits are not stored
        for (int handle = 0; handle < 8; ++handle)
        {
            globalSizingHandles[handle] = DVector(handle + 1, handle + 1.25, handle + 1.5);
            localSizingHandles[handle] = DVector(handle + 9, handle + 9.25, handle + 9.5);
        }
        EnsureDetails().scale = DVector(2.0, 3.0, 4.0);
        EnsureDetails().scaledDimensions = DVector(5.0, 6.0, 7.0);
        handleSize = 0.75;
        EnsureDetails().unscaledDimensions = DVector(8.0, 9.0, 10.0);
    }
};

TEST(DrawingObjectArchive, ANewNodesRecordHasItsFieldsInOrder)
{
    DrawingObject node;
    EXPECT_EQ(Stored(node), Bytes(NodeRecord()));
}

TEST(DrawingObjectArchive, TheRecordHoldsEveryFieldButViewState)
{
    FullNode node;
    EXPECT_EQ(Stored(node), Bytes(FullRecord()));
    DrawingObject loaded;
    loaded.SetSelected();
    LoadRecord(loaded, FullRecord());
    ExpectFull(loaded);
    ExpectVector(loaded.minimumSize, 0.5, 0.25, 0.125);
}

TEST(DrawingObjectArchive, MemberRecordsAreWrittenInPlace)
{
    DrawingObject node;
    node.SetLocalBounds(Vector(-1.0f, -2.0f, -3.0f), Vector(1.0f, 2.0f, 3.0f));
    node.SetTranslation(DVector(4.0, 5.0, 6.0));
    NodeRecord record;
    record.bounds = RecordBytes();
    const Bytes bounds = Stored(node.bounds);
    record.bounds.Raw(bounds.data(), bounds.size());
    const Bytes transform = Stored(*node.GetTransform());
    record.transform = RecordBytes();
    record.transform.Raw(transform.data(), transform.size());
    EXPECT_EQ(Stored(node), Bytes(record));

    DrawingObject loaded;
    LoadRecord(loaded, record);
    EXPECT_EQ(loaded.GetBoundsLocalMaximum().z, 3.0f);
    ExpectVector(loaded.GetTranslation(), 4, 5, 6);
}

TEST(DrawingObjectArchive, StoredFlagsAreTakenAsRead)
{
    NodeRecord record;
    record.flags = 0xFFFFFFFF;
    DrawingObject node;
    LoadRecord(node, record);
    EXPECT_EQ(node.flags, 0xFFFFFFFFU);
}

// Two children of one class, the second with a child of its own.
RecordBytes NestedChildren()
{
    NodeRecord first;
    first.handleSize = 1;
    NodeRecord grandchild;
    grandchild.handleSize = 3;
    NodeRecord second;
    second.handleSize = 2;
    second.children = RecordBytes().Word(1).Word(0x8001).Append(grandchild.Get());
    // The class has index 1, the first child 2, the second 3.
    return RecordBytes()
        .Word(2)
        .NewClass("DrawingObject", 3)
        .Append(first.Get())
        .Word(0x8001)
        .Append(second.Get());
}

TEST(DrawingObjectArchive, ChildrenAreStoredAsReferencesAndGetTheirParent)
{
    NodeRecord record;
    record.children = NestedChildren();

    DrawingObject loaded;
    LoadRecord(loaded, record);
    ASSERT_EQ(loaded.GetChildCount(), 2);
    DrawingObject* const second = loaded.GetTailChild();
    EXPECT_EQ(loaded.GetHeadChild()->handleSize, 1.0);
    EXPECT_EQ(second->handleSize, 2.0);
    EXPECT_EQ(second->GetParent(), &loaded);
    ASSERT_EQ(second->GetChildCount(), 1);
    EXPECT_EQ(second->GetHeadChild()->handleSize, 3.0);
    EXPECT_EQ(second->GetHeadChild()->GetParent(), second);
    EXPECT_EQ(Stored(loaded), Bytes(record));
    EXPECT_EQ(loaded.AddChild(second), 0);
}

TEST(DrawingObjectArchive, LoadingAppendsToTheChildren)
{
    DrawingObject node;
    auto* const first = new DrawingObject;
    node.AddChild(first);
    NodeRecord record;
    record.children = NestedChildren();
    LoadRecord(node, record);
    EXPECT_EQ(node.GetChildCount(), 3);
    EXPECT_EQ(node.GetHeadChild(), first);
}

TEST(DrawingObjectArchive, AnUnknownVersionIsABadSchema)
{
    for (const DWORD version : {0U, 4U, 0x80000003U})
    {
        DrawingObject node;
        EXPECT_EQ(LoadCause(node, RecordBytes().Dword(version)), CArchiveException::badSchema);
        NodeRecord record;
        record.version = version;
        EXPECT_EQ(LoadCause(node, record), CArchiveException::badSchema);
    }
}

// A list of two named transforms: the class has index 1.
RecordBytes NamedTransforms()
{
    const RecordBytes transform =
        RecordBytes().Dword(1).String("Front").Append(CoordinateTransformRecord());
    return RecordBytes()
        .Word(2)
        .NewClass("NamedTransform", 1)
        .Append(transform)
        .Word(0x8001)
        .Append(transform);
}

TEST(DrawingObjectArchive, Version1HasNoMinimumSizeAndItsNamedTransformsAreSkipped)
{
    NodeRecord record = FullRecord();
    record.version = 1;
    record.namedTransforms = NamedTransforms();
    DrawingObject node;
    node.minimumSize = DVector(1.0, 1.0, 1.0);
    LoadRecord(node, record);
    ExpectFull(node);
    ExpectVector(node.minimumSize, 1, 1, 1);
}

TEST(DrawingObjectArchive, Version2HasAMinimumSizeAndItsNamedTransformsAreSkipped)
{
    NodeRecord record = FullRecord();
    record.version = 2;
    record.namedTransforms = NamedTransforms();
    DrawingObject node;
    LoadRecord(node, record);
    ExpectFull(node);
    ExpectVector(node.minimumSize, 0.5, 0.25, 0.125);
}

TEST(DrawingObjectArchive, ABadListOfNamedTransformsIsRefusedWithoutLeaks)
{
    NodeRecord record;
    record.version = 1;
    DrawingObject node;
    // The first again, a null reference, and another class.
    for (const RecordBytes& bad : {RecordBytes().Word(2), RecordBytes().Word(0),
                                   RecordBytes().NewClass("Vector", 1).Floats({1, 2, 3})})
    {
        const Bytes good = NamedTransforms();
        record.namedTransforms =
            RecordBytes().Word(3).Raw(good.data() + 2, good.size() - 2).Append(bad);
        EXPECT_EQ(LoadCause(node, record), CArchiveException::badClass);
    }
    record.namedTransforms = RecordBytes().Word(0xFFFE);
    EXPECT_NE(LoadCause(node, record), CArchiveException::none);
}

TEST(DrawingObjectArchive, ASkippedNamedTransformCannotBeReferredTo)
{
    // Two old nodes in one file. The second one's list, and then its children, name what the first
    // one's list held: the class NamedTransform has index 3, its object 4.
    NodeRecord first;
    first.version = 1;
    first.namedTransforms = RecordBytes()
                                .Word(1)
                                .NewClass("NamedTransform", 1)
                                .Dword(1)
                                .String("Front")
                                .Append(CoordinateTransformRecord());
    NodeRecord inList;
    inList.version = 1;
    inList.namedTransforms = RecordBytes().Word(1).Word(4);
    NodeRecord inChildren;
    inChildren.children = RecordBytes().Word(1).Word(4);
    for (const NodeRecord& second : {inList, inChildren})
    {
        NodeRecord root;
        root.children = RecordBytes()
                            .Word(2)
                            .NewClass("DrawingObject", 3)
                            .Append(first.Get())
                            .Word(0x8001)
                            .Append(second.Get());
        DrawingObject node;
        EXPECT_EQ(LoadCause(node, root), CArchiveException::badClass);
        EXPECT_EQ(node.HasChildren(), 0);
    }
}

class BadChildren : public testing::Test
{
protected:
    // Loads a node with these references as its children, behind one good child of index 2.
    int CauseFor(const RecordBytes& bad)
    {
        NodeRecord record;
        record.children = RecordBytes()
                              .Word(2)
                              .NewClass("DrawingObject", 3)
                              .Append(NodeRecord().Get())
                              .Append(bad);
        const int cause = LoadCause(node, record);
        EXPECT_EQ(node.HasChildren(), 0);  // nothing is linked, not even the good one
        return cause;
    }

    DrawingObject node;
};

TEST_F(BadChildren, ANullChildIsRefused)
{
    EXPECT_EQ(CauseFor(RecordBytes().Word(0)), CArchiveException::badClass);
}

TEST_F(BadChildren, AForeignChildIsRefused)
{
    EXPECT_EQ(CauseFor(RecordBytes().NewClass("Vector", 1).Floats({1, 2, 3})),
              CArchiveException::badClass);
}

TEST_F(BadChildren, ARepeatedChildIsRefused)
{
    EXPECT_EQ(CauseFor(RecordBytes().Word(2)), CArchiveException::badClass);
}

TEST_F(BadChildren, AnAncestorStillBeingReadIsRefused)
{
    NodeRecord cyclic;
    cyclic.children = RecordBytes().Word(1).Word(3);  // its own index
    EXPECT_EQ(CauseFor(RecordBytes().Word(0x8001).Append(cyclic.Get())),
              CArchiveException::badClass);
    NodeRecord grandchild;
    grandchild.children = RecordBytes().Word(1).Word(3);  // its parent's
    NodeRecord child;
    child.children = RecordBytes().Word(1).Word(0x8001).Append(grandchild.Get());
    EXPECT_EQ(CauseFor(RecordBytes().Word(0x8001).Append(child.Get())),
              CArchiveException::badClass);
}

TEST_F(BadChildren, AnotherNodesChildIsRefused)
{
    NodeRecord thief;
    thief.children = RecordBytes().Word(1).Word(2);  // the first child of the root
    EXPECT_EQ(CauseFor(RecordBytes().Word(0x8001).Append(thief.Get())),
              CArchiveException::badClass);
}

TEST_F(BadChildren, InputThatEndsIsRefused)
{
    EXPECT_EQ(CauseFor(RecordBytes().Word(0x8001).Dword(3).Double(0)),
              CArchiveException::endOfFile);
}

TEST(DrawingObjectArchive, ANodeThatTheHostHasReadBelongsToTheHost)
{
    // The root is read by the host; a second object of the file then claims it as its child.
    NodeRecord thief;
    thief.children = RecordBytes().Word(1).Word(2);
    const RecordBytes file = RecordBytes()
                                 .NewClass("DrawingObject", 3)
                                 .Append(NodeRecord().Get())
                                 .Word(0x8001)
                                 .Append(thief.Get());
    const Bytes& bytes = file;
    CMemFile memory(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&memory, CArchive::load);
    DrawingObject* read = nullptr;
    archive >> read;
    const std::unique_ptr<DrawingObject> root(read);
    DrawingObject* second = nullptr;
    EXPECT_THROW(archive >> second, CArchiveException);
    EXPECT_EQ(second, nullptr);
}

TEST(DrawingObjectArchive, EndlessNestingIsRefused)
{
    NodeRecord node;
    const Bytes record = node;
    // Each level is a node with one child; the count at the end of each is followed by the next.
    RecordBytes file;
    file.Raw(record.data(), record.size() - 2).Word(1).NewClass("DrawingObject", 3);
    for (int level = 0; level < 20000; ++level)
    {
        file.Raw(record.data(), record.size() - 2).Word(1).Word(0x8001);
    }
    DrawingObject root;
    EXPECT_NE(LoadCause(root, file), CArchiveException::none);
    EXPECT_EQ(root.HasChildren(), 0);
}

// The node's texture after loading a record with it, by name, with a known texture "wood".
class LoadedTexture : public testing::Test
{
protected:
    LoadedTexture()
    {
        known_.SetName("wood");
        known_.SetFilename("known/wood.bmp");
        list_.AddTail(&known_);
    }
    ~LoadedTexture() override { DrawingObject::SetTextureList(nullptr); }

    const TextureMap& Load(const char* filename, const char* name)
    {
        NodeRecord record;
        record.texture = TextureMapRecord(filename, TextureMap::Textured | TextureMap::Valid, name);
        LoadRecord(node_, record);
        return *node_.GetTexture();
    }

    TextureMapList list_;

private:
    TextureMap known_;
    DrawingObject node_;
};

TEST_F(LoadedTexture, AMissingFileIsTakenFromTheKnownTextureOfTheSameName)
{
    DrawingObject::SetTextureList(&list_);
    const TextureMap& texture = Load("gone/wood.bmp", "wood");
    EXPECT_EQ(texture.filename, "known/wood.bmp");
    EXPECT_EQ(texture.GetName(), "wood");
    EXPECT_EQ(texture.textureFlags, TextureMap::Textured | TextureMap::Valid);
}

TEST_F(LoadedTexture, AMissingFileWithAnUnknownNameResetsTheTexture)
{
    DrawingObject::SetTextureList(&list_);
    const TextureMap& texture = Load("gone/stone.bmp", "stone");
    EXPECT_TRUE(texture.filename.IsEmpty());
    EXPECT_TRUE(texture.GetName().IsEmpty());
    EXPECT_EQ(texture.textureFlags, 0U);
}

TEST_F(LoadedTexture, WithoutAListOrANameTheTextureIsReset)
{
    EXPECT_TRUE(Load("gone/wood.bmp", "wood").filename.IsEmpty());
    TextureMap nameless;
    nameless.SetFilename("known/nameless.bmp");
    list_.AddTail(&nameless);
    DrawingObject::SetTextureList(&list_);
    EXPECT_TRUE(Load("gone/wood.bmp", "").filename.IsEmpty());
}

TEST_F(LoadedTexture, ATextureWhoseFileExistsIsKept)
{
    DrawingObject::SetTextureList(&list_);
    const std::string path = testing::TempDir() + "wood.bmp";
    std::ofstream(path) << "BM";
    const TextureMap& texture = Load(path.c_str(), "wood");
    EXPECT_EQ(texture.filename, path.c_str());
    EXPECT_EQ(texture.textureFlags, TextureMap::Textured | TextureMap::Valid);
    std::remove(path.c_str());
}

TEST_F(LoadedTexture, AFileThatIsNoPictureIsKeptAsValid)
{
    DrawingObject::SetTextureList(&list_);
    const std::string path = testing::TempDir() + "wood.txt";
    std::ofstream(path) << "no picture";
    const TextureMap& texture = Load(path.c_str(), "wood");
    EXPECT_EQ(texture.filename, path.c_str());
    EXPECT_EQ(texture.textureFlags, TextureMap::Textured | TextureMap::Valid);
    std::remove(path.c_str());
}

}  // namespace
