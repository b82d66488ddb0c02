// SPDX-License-Identifier: MIT
#include "host/CArchive.h"
#include "host/CWnd.h"
#include "platform/Limits.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/SampleObjects.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace
{

constexpr int deepest = 512;

/// Loads objects from bytes.
class Loader
{
public:
    explicit Loader(const Bytes& bytes)
        : file_(bytes.data(), static_cast<UINT>(bytes.size())), archive_(&file_, CArchive::load)
    {}

    CArchive& Archive() { return archive_; }
    CObject* Next(const CRuntimeClass* requested = nullptr)
    {
        return archive_.ReadObject(requested);
    }
    /// The cause of what reading the next object throws.
    int Cause(const CRuntimeClass* requested = nullptr)
    {
        try
        {
            archive_.ReadObject(requested);
        }
        catch (const CArchiveException& exception)
        {
            return exception.m_cause;
        }
        return CArchiveException::none;
    }

private:
    CMemFile file_;
    CArchive archive_;
};

int Cause(const Bytes& bytes, const CRuntimeClass* requested = nullptr)
{
    return Loader(bytes).Cause(requested);
}

RecordBytes NewLeaf(LONG value)
{
    return RecordBytes().NewClass("SampleLeaf", 1).Long(value);
}

/// A chain of nodes, each the only child of the one before.
Bytes NestedNodes(int levels)
{
    RecordBytes bytes;
    bytes.NewClass("SampleNode", 3);
    for (int level = 1; level < levels; ++level)
    {
        bytes.Word(1).Word(0x8001);
    }
    bytes.Word(0);
    for (int level = 0; level < levels; ++level)
    {
        bytes.Word(0);
    }
    return bytes;
}

}  // namespace

TEST(CArchiveObject, ReferencesAreStoredAsNullNewLaterAndKnown)
{
    SampleLeaf first(1);
    SampleLeaf second(2);
    SampleBud bud;
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive << static_cast<CObject*>(nullptr) << &first << &second << &bud << &first << &bud;
    archive.Close();

    // Indices: class 1, first 2, second 3, class 4, bud 5.
    const Bytes expected = RecordBytes()
                               .Word(0)
                               .Append(NewLeaf(1))
                               .Word(0x8001)
                               .Long(2)
                               .NewClass("SampleBud", 1)
                               .Long(0)
                               .Word(2)
                               .Word(5);
    EXPECT_EQ(file.Bytes(), expected);
}

TEST(CArchiveObject, ReferencesToOneObjectAreReadAsOneObject)
{
    Loader loader(RecordBytes().Word(0).Append(NewLeaf(1)).Word(0x8001).Long(2).Word(2).Word(3));

    EXPECT_EQ(loader.Next(), nullptr);
    const std::unique_ptr<CObject> first(loader.Next());
    const std::unique_ptr<CObject> second(loader.Next(RUNTIME_CLASS(SampleLeaf)));
    EXPECT_EQ(static_cast<SampleLeaf*>(first.get())->value, 1);
    EXPECT_EQ(static_cast<SampleLeaf*>(second.get())->value, 2);
    EXPECT_EQ(loader.Next(), first.get());
    EXPECT_EQ(loader.Next(RUNTIME_CLASS(SampleLeaf)), second.get());
}

TEST(CArchiveObject, TypedOperatorReadsObjectsOfItsClassAlone)
{
    Loader loader(RecordBytes().NewClass("SampleBud", 1).Long(9).Append(NewLeaf(1)));
    SampleBud* bud = nullptr;
    loader.Archive() >> bud;
    ASSERT_NE(bud, nullptr);
    EXPECT_EQ(bud->value, 9);
    delete bud;
    EXPECT_THROW(loader.Archive() >> bud, CArchiveException);
}

TEST(CArchiveObject, IndicesFrom0x7FFFTakeADword)
{
    // The class has index 1, so object i (from 0) has index i + 2.
    constexpr int count = 0x7FFE;
    std::vector<SampleLeaf> leaves(count);
    SampleNode node;       // class 0x8000, object 0x8001
    SampleNode laterNode;  // object 0x8002
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    for (SampleLeaf& leaf : leaves)
    {
        archive << &leaf;
    }
    archive.Flush();
    const std::size_t before = file.Bytes().size();
    archive << &leaves[0x7FFC] << &leaves[0x7FFD] << &node << &laterNode << &laterNode
            << &leaves[0];
    archive.Close();

    const Bytes expected = RecordBytes()
                               .Word(0x7FFE)
                               .Word(0x7FFF)
                               .Dword(0x7FFF)
                               .NewClass("SampleNode", 3)
                               .Word(0)
                               .Word(0)
                               .Word(0x7FFF)
                               .Dword(0x80008000)
                               .Word(0)
                               .Word(0)
                               .Word(0x7FFF)
                               .Dword(0x8002)
                               .Word(2);
    EXPECT_EQ(Bytes(file.Bytes().begin() + before, file.Bytes().end()), expected);

    Loader loader(file.Bytes());
    std::vector<std::unique_ptr<CObject>> loaded;
    for (int i = 0; i < count; ++i)
    {
        loaded.emplace_back(loader.Next());
    }
    EXPECT_EQ(loader.Next(), loaded[0x7FFC].get());
    EXPECT_EQ(loader.Next(), loaded[0x7FFD].get());
    loaded.emplace_back(loader.Next(RUNTIME_CLASS(SampleNode)));
    loaded.emplace_back(loader.Next(RUNTIME_CLASS(SampleNode)));
    EXPECT_EQ(loader.Next(), loaded.back().get());
    EXPECT_EQ(loader.Next(), loaded[0].get());
}

TEST(CArchiveObject, ObjectHasItsIndexBeforeItsRecord)
{
    // Class 1, node 2; the node links to itself.
    Loader loader(RecordBytes().NewClass("SampleNode", 3).Word(0).Word(2));
    const std::unique_ptr<CObject> node(loader.Next());
    EXPECT_EQ(static_cast<SampleNode*>(node.get())->link, node.get());

    SampleNode own;
    own.link = &own;
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive << &own;
    archive.Close();
    EXPECT_EQ(file.Bytes(), RecordBytes().NewClass("SampleNode", 3).Word(0).Word(2).Get());
}

TEST(CArchiveObject, VersionableClassReadsEveryVersionAndIsToldOnce)
{
    // The outer node is told its version although its child was told before it.
    Loader loader(
        RecordBytes().NewClass("SampleNode", 7).Word(1).Word(0x8001).Word(0).Word(0).Word(0));
    const std::unique_ptr<CObject> object(loader.Next());
    const SampleNode& node = static_cast<SampleNode&>(*object);

    EXPECT_EQ(node.schema, 7u);
    EXPECT_EQ(node.schemaAgain, static_cast<UINT>(-1));
    EXPECT_EQ(node.children[0]->schema, 7u);
    EXPECT_EQ(loader.Archive().GetObjectSchema(), static_cast<UINT>(-1));
    loader.Archive().SetObjectSchema(5);
    EXPECT_EQ(loader.Archive().GetObjectSchema(), 5u);
}

TEST(CArchiveObject, OtherClassReadsItsOwnVersionAlone)
{
    EXPECT_EQ(Cause(RecordBytes().NewClass("SampleLeaf", 2).Long(1)), CArchiveException::badSchema);
    EXPECT_EQ(Cause(RecordBytes().NewClass("SampleLeaf", 0).Long(1)), CArchiveException::badSchema);
}

TEST(CArchiveObject, UnknownClassNameIsBadClass)
{
    EXPECT_EQ(Cause(RecordBytes().NewClass("NoSuchClass", 1)), CArchiveException::badClass);
    EXPECT_EQ(Cause(RecordBytes().NewClass("", 1)), CArchiveException::badClass);
    EXPECT_EQ(Cause(RecordBytes().NewClass("SampleAbstract", 1)), CArchiveException::badClass);
    EXPECT_EQ(Cause(RecordBytes().Word(0xFFFF).Word(1).Word(11).Raw("SampleLeaf\0", 11).Long(1)),
              CArchiveException::badClass);
    // A name longer than any: refused before its bytes.
    EXPECT_EQ(Cause(RecordBytes().Word(0xFFFF).Word(1).Word(0xFFFF)), CArchiveException::badClass);
    EXPECT_EQ(Cause(RecordBytes().Word(0xFFFF).Word(1).Word(10).Raw("Sample", 6)),
              CArchiveException::endOfFile);
}

TEST(CArchiveObject, ObjectOfAnotherClassThanRequestedIsBadClass)
{
    const CRuntimeClass* const bud = RUNTIME_CLASS(SampleBud);
    EXPECT_EQ(Cause(NewLeaf(1), bud), CArchiveException::badClass);

    Loader loader(NewLeaf(1).Word(0x8001).Long(2).Word(2).Word(0));
    const std::unique_ptr<CObject> leaf(loader.Next());
    EXPECT_EQ(loader.Cause(bud), CArchiveException::badClass);  // by the class's index
    loader.Archive().Skip(4);
    EXPECT_EQ(loader.Cause(bud), CArchiveException::badClass);  // by the object's index
    EXPECT_EQ(loader.Next(bud), nullptr);                       // null is of any class
}

TEST(CArchiveObject, IndexThatNothingHasIsBadIndex)
{
    const RecordBytes references[] = {RecordBytes().Word(1),       // a class's, for an object
                                      RecordBytes().Word(3),       // behind the last
                                      RecordBytes().Word(0x7FFE),  //
                                      RecordBytes().Word(0x8000),  // null, for a class
                                      RecordBytes().Word(0x8002),  // an object's, for a class
                                      RecordBytes().Word(0x8003),  // behind the last
                                      RecordBytes().Word(0x7FFF).Dword(1),  // the same as DWORDs
                                      RecordBytes().Word(0x7FFF).Dword(3),  //
                                      RecordBytes().Word(0x7FFF).Dword(0x7FFFFFFF),   //
                                      RecordBytes().Word(0x7FFF).Dword(0x80000002),   //
                                      RecordBytes().Word(0x7FFF).Dword(0xFFFFFFFF)};  //
    for (const RecordBytes& reference : references)
    {
        Loader loader(NewLeaf(1).Append(reference));
        const std::unique_ptr<CObject> leaf(loader.Next());
        EXPECT_EQ(loader.Cause(), CArchiveException::badIndex);
    }
}

TEST(CArchiveObject, ClassesAreWrittenAndReadAlone)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive.WriteClass(RUNTIME_CLASS(SampleNode));
    archive.WriteClass(RUNTIME_CLASS(SampleNode));
    archive.Close();
    const Bytes expected = RecordBytes().NewClass("SampleNode", 3).Word(0x8001);
    EXPECT_EQ(file.Bytes(), expected);

    Loader loader(
        RecordBytes().Append(RecordBytes().NewClass("SampleNode", 4)).Word(0x8001).Word(0));
    UINT schema = 0;
    DWORD index = 99;
    EXPECT_EQ(loader.Archive().ReadClass(), RUNTIME_CLASS(SampleNode));
    EXPECT_EQ(loader.Archive().GetObjectSchema(), 4u);
    EXPECT_EQ(loader.Archive().ReadClass(RUNTIME_CLASS(CObject), &schema, &index),
              RUNTIME_CLASS(SampleNode));
    EXPECT_EQ(schema, 4u);
    EXPECT_EQ(loader.Archive().ReadClass(nullptr, &schema, &index), nullptr);
    EXPECT_EQ(index, 0u);
}

TEST(CArchiveObject, ObjectWhereAClassIsReadAloneIsBadIndex)
{
    Loader loader(RecordBytes().Word(0));
    try
    {
        loader.Archive().ReadClass();
        FAIL();
    }
    catch (const CArchiveException& exception)
    {
        EXPECT_EQ(exception.m_cause, CArchiveException::badIndex);
    }
}

TEST(CArchiveObject, ObjectsWithoutARecordAreNotStored)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    CWnd window;
    try
    {
        archive << &window;
        FAIL();
    }
    catch (const CArchiveException& exception)
    {
        EXPECT_EQ(exception.m_cause, CArchiveException::badClass);
    }
}

TEST(CArchiveObject, RefusedRecordDeletesItsObjectAndForgetsItsIndices)
{
    const int nodesBefore = SampleNode::alive;
    {
        // Leaf: class 1, object 2. Node: class 3, object 4, with a child, object 5, and a link to
        // an index that nothing has. Then references to all of them.
        Loader loader(NewLeaf(1)
                          .NewClass("SampleNode", 3)
                          .Word(1)
                          .Word(0x8003)
                          .Word(0)
                          .Word(0)
                          .Word(77)
                          .Word(5)
                          .Word(4)
                          .Word(2)
                          .Word(0x8003)
                          .Word(0)
                          .Word(4));
        const std::unique_ptr<CObject> leaf(loader.Next());

        EXPECT_EQ(loader.Cause(), CArchiveException::badIndex);
        EXPECT_EQ(SampleNode::alive, nodesBefore);
        EXPECT_EQ(loader.Archive().GetObjectSchema(), static_cast<UINT>(-1));
        EXPECT_EQ(loader.Cause(), CArchiveException::badIndex);
        EXPECT_EQ(loader.Cause(), CArchiveException::badIndex);
        EXPECT_EQ(loader.Next(), leaf.get());
        // The class is still known, and the next object takes the index that became free.
        const std::unique_ptr<CObject> node(loader.Next());
        EXPECT_EQ(static_cast<SampleNode*>(node.get())->link, node.get());
    }
    EXPECT_EQ(SampleNode::alive, nodesBefore);
}

TEST(CArchiveObject, OnlyNewObjectsAreReadForAnOwner)
{
    Loader loader(NewLeaf(1).Word(2).Word(0).Word(0x8001).Long(3));
    CArchive& archive = loader.Archive();
    const std::unique_ptr<CObject> first(archive.ReadNewObject(RUNTIME_CLASS(SampleLeaf)));
    EXPECT_EQ(archive.GetLoadedCount(), 2u);
    for (int refused = 0; refused < 2; ++refused)
    {
        try
        {
            archive.ReadNewObject(nullptr);
            FAIL();
        }
        catch (const CArchiveException& exception)
        {
            EXPECT_EQ(exception.m_cause, CArchiveException::badClass);
        }
    }
    const std::unique_ptr<CObject> second(archive.ReadNewObject(nullptr));
    EXPECT_EQ(static_cast<SampleLeaf*>(second.get())->value, 3);
}

TEST(CArchiveObject, ForgottenObjectsReadAsNullAndKeepTheirIndices)
{
    Loader loader(NewLeaf(1).Word(0x8001).Long(2).Word(3).Word(2).Word(0x8001).Long(4).Word(4));
    const std::unique_ptr<CObject> first(loader.Next());
    delete loader.Next();
    loader.Archive().ForgetObjects(2);  // the class and the first leaf stay
    EXPECT_EQ(loader.Next(), nullptr);
    EXPECT_EQ(loader.Next(), first.get());
    const std::unique_ptr<CObject> third(loader.Next());
    EXPECT_EQ(loader.Next(), third.get());
}

TEST(CArchiveObject, EveryCutOfATreeIsEndOfFileAndLeaksNothing)
{
    SampleNode root;
    root.AddChild()->AddChild();
    root.AddChild()->link = &root;
    root.children[0]->link = root.children[0].get();
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive << &root;
    archive.Close();
    const int before = SampleNode::alive;

    for (std::size_t length = 0; length < file.Bytes().size(); ++length)
    {
        EXPECT_EQ(Cause(Bytes(file.Bytes().begin(), file.Bytes().begin() + length)),
                  CArchiveException::endOfFile)
            << length;
        EXPECT_EQ(SampleNode::alive, before);
    }
}

TEST(CArchiveObject, ObjectsNestUpToTheLimitAndNotBeyond)
{
    EXPECT_EQ(orvane::limits::maxObjectNesting, deepest);
    const int before = SampleNode::alive;
    {
        Loader loader(NestedNodes(deepest));
        const std::unique_ptr<CObject> root(loader.Next());
        EXPECT_EQ(SampleNode::alive, before + deepest);
    }
    EXPECT_EQ(Cause(NestedNodes(deepest + 1)), CArchiveException::generic);
    try
    {
        Loader(NestedNodes(deepest + 1)).Next();
        ADD_FAILURE();
    }
    catch (const CArchiveException& exception)
    {
        EXPECT_TRUE(std::string(exception.what()).ends_with(": objects nest more than 512 deep"));
    }
    EXPECT_EQ(Cause(NestedNodes(100000)), CArchiveException::generic);
    EXPECT_EQ(SampleNode::alive, before);
}

TEST(CArchiveObject, NestingIsCountedAnewForEachSibling)
{
    Loader loader(RecordBytes()
                      .Raw(NestedNodes(deepest).data(), NestedNodes(deepest).size())
                      .Word(0x8001)
                      .Word(0)
                      .Word(0));
    const std::unique_ptr<CObject> first(loader.Next());
    const std::unique_ptr<CObject> second(loader.Next());
    EXPECT_NE(second, nullptr);
}

TEST(CArchiveObject, ATreeTooDeepToLoadIsNotStored)
{
    const auto store = [](int levels) {
        SampleNode root;
        SampleNode* node = &root;
        for (int level = 1; level < levels; ++level)
        {
            node = node->AddChild();
        }
        CMemFile file;
        CArchive archive(&file, CArchive::store);
        archive << &root;
        archive.Close();
        return file.Bytes();
    };
    EXPECT_EQ(store(deepest), NestedNodes(deepest));
    EXPECT_THROW(store(deepest + 1), CArchiveException);
}

TEST(CArchiveObject, MappedObjectsAreReferredToWithoutBeingWritten)
{
    SampleLeaf leaf(1);
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    archive.MapObject(nullptr);  // takes no index
    archive.MapObject(&leaf);
    archive << &leaf;
    archive.Close();
    EXPECT_EQ(file.Bytes(), RecordBytes().Word(1).Get());

    Loader loader(file.Bytes());
    loader.Archive().MapObject(nullptr);
    loader.Archive().MapObject(&leaf);
    EXPECT_EQ(loader.Next(RUNTIME_CLASS(SampleLeaf)), &leaf);
}
