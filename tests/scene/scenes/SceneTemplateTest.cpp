// SPDX-License-Identifier: MIT
#include "scene/SceneTemplate.h"

#include "host/CWinApp.h"
#include "imaging/MemoryMappedDIB.h"
#include "scene/SceneTemplateList.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <type_traits>

namespace
{

std::unique_ptr<SceneTemplate> Named(const char* name)
{
    auto scene = std::make_unique<SceneTemplate>();
    scene->SetName(name);
    return scene;
}

RecordBytes Record(DWORD version)
{
    return RecordBytes().Dword(version).String("c:\\scenes\\a.orv").Dword(77).String("Castle");
}

SceneTemplate Castle()
{
    SceneTemplate scene("c:\\scenes\\a.orv");
    scene.SetName("Castle");
    scene.templateTag = 77;
    return scene;
}

TEST(SceneTemplate, ANewOneIsEmpty)
{
    const SceneTemplate scene;
    EXPECT_STREQ(scene.GetFilename(), "");
    EXPECT_STREQ(scene.GetName(), "");
    EXPECT_EQ(scene.templateTag, 0);
    EXPECT_EQ(scene.GetPreview(), nullptr);
    EXPECT_FALSE(scene.IsDefined());
    EXPECT_EQ(RUNTIME_CLASS(SceneTemplate)->GetVersion(), 2U);
    const std::unique_ptr<CObject> made(RUNTIME_CLASS(SceneTemplate)->CreateObject());
    EXPECT_NE(dynamic_cast<SceneTemplate*>(made.get()), nullptr);
    EXPECT_TRUE(std::has_virtual_destructor_v<SceneTemplate>);
}

TEST(SceneTemplate, LoadOnlyStoresThePath)
{
    SceneTemplate scene("no such file");
    EXPECT_STREQ(scene.GetFilename(), "no such file");
    EXPECT_EQ(scene.Load("another"), 1);
    EXPECT_STREQ(scene.GetFilename(), "another");
    EXPECT_STREQ(scene.GetName(), "");
    scene.SetFilename("third");
    EXPECT_STREQ(scene.GetFilename(), "third");
}

TEST(SceneTemplate, ANameWithoutPreviewIsNotDefined)
{
    SceneTemplate scene;
    scene.SetName("Castle");
    EXPECT_FALSE(scene.IsDefined());
    scene.preview = new MemoryMappedDIB;
    EXPECT_TRUE(scene.IsDefined());
    EXPECT_EQ(scene.GetPreview(), scene.preview);
    scene.SetName("");
    EXPECT_FALSE(scene.IsDefined());
}

TEST(SceneTemplate, ACopyHasNoPreview)
{
    SceneTemplate scene = Castle();
    scene.preview = new MemoryMappedDIB;
    const SceneTemplate copy(scene);
    EXPECT_STREQ(copy.GetFilename(), "c:\\scenes\\a.orv");
    EXPECT_STREQ(copy.GetName(), "Castle");
    EXPECT_EQ(copy.templateTag, 77);
    EXPECT_EQ(copy.GetPreview(), nullptr);
    EXPECT_NE(scene.GetPreview(), nullptr);
}

TEST(SceneTemplate, AssignmentDropsThePreviewAndTakesNone)
{
    SceneTemplate scene = Castle();
    scene.preview = new MemoryMappedDIB;
    SceneTemplate assigned;
    assigned.preview = new MemoryMappedDIB;
    assigned = scene;
    EXPECT_STREQ(assigned.GetFilename(), "c:\\scenes\\a.orv");
    EXPECT_STREQ(assigned.GetName(), "Castle");
    EXPECT_EQ(assigned.templateTag, 77);
    EXPECT_EQ(assigned.GetPreview(), nullptr);
    EXPECT_NE(scene.GetPreview(), nullptr);
}

TEST(SceneTemplate, AssigningItselfKeepsThePreview)
{
    SceneTemplate scene = Castle();
    scene.preview = new MemoryMappedDIB;
    const SceneTemplate& same = scene;
    scene = same;
    EXPECT_TRUE(scene.IsDefined());
    EXPECT_STREQ(scene.GetName(), "Castle");
}

TEST(SceneTemplate, ComparesNamesAsUnsignedBytes)
{
    const auto a = Named("a");
    const auto b = Named("b");
    const auto upper = Named("B");
    const auto high = Named("\xE4");
    const auto again = Named("a");
    EXPECT_TRUE(*a < *b);
    EXPECT_TRUE(*a < b.get());
    EXPECT_FALSE(*b < *a);
    EXPECT_FALSE(*b < a.get());
    EXPECT_FALSE(*a < *again);
    EXPECT_TRUE(*a <= *again);
    EXPECT_TRUE(*a <= again.get());
    EXPECT_FALSE(*b <= *a);
    EXPECT_FALSE(*b <= a.get());
    EXPECT_TRUE(*b > *a);
    EXPECT_TRUE(*b > a.get());
    EXPECT_FALSE(*a > *again);
    EXPECT_FALSE(*a > again.get());
    EXPECT_TRUE(*a >= *again);
    EXPECT_TRUE(*a >= again.get());
    EXPECT_FALSE(*a >= *b);
    EXPECT_FALSE(*a >= b.get());
    EXPECT_TRUE(*a == *again);
    EXPECT_TRUE(*a == again.get());
    EXPECT_FALSE(*a == *b);
    EXPECT_FALSE(*a == b.get());
    EXPECT_TRUE(*upper < *a);
    EXPECT_TRUE(*high > *b);
}

TEST(SceneTemplate, SaveWritesThePathToTheProfile)
{
    const std::filesystem::path path = TemporaryFolder() + "scene-template.ini";
    std::filesystem::remove(path);
    const CString before = AfxGetApp()->GetProfilePath();
    AfxGetApp()->SetProfilePath(path.string().c_str());
    SceneTemplate scene = Castle();
    EXPECT_EQ(scene.Save("Templates"), 1);
    EXPECT_EQ(AfxGetApp()->GetProfileString("Templates\\Castle", "Filename", "none"),
              "c:\\scenes\\a.orv");
    // A per cent sign in a name is a character like any other.
    scene.SetName("100 %s");
    EXPECT_EQ(scene.Save("Templates"), 1);
    EXPECT_EQ(AfxGetApp()->GetProfileString("Templates\\100 %s", "Filename", "none"),
              "c:\\scenes\\a.orv");
    AfxGetApp()->SetProfilePath(before);
    std::filesystem::remove(path);
}

TEST(SceneTemplate, TheRecordIsVersion2PathTagAndName)
{
    SceneTemplate scene = Castle();
    scene.preview = new MemoryMappedDIB;
    EXPECT_EQ(Stored(scene), Record(2).Get());
}

TEST(SceneTemplate, Version1CanBeRead)
{
    SceneTemplate scene;
    LoadRecord(scene, Record(1));
    EXPECT_STREQ(scene.GetFilename(), "c:\\scenes\\a.orv");
    EXPECT_EQ(scene.templateTag, 77);
    EXPECT_STREQ(scene.GetName(), "Castle");
}

TEST(SceneTemplate, ItsOwnRecordCannotBeReadBack)
{
    SceneTemplate scene = Castle();
    SceneTemplate loaded;
    EXPECT_EQ(LoadCause(loaded, Stored(scene)), CArchiveException::badSchema);
    EXPECT_STREQ(loaded.GetName(), "");
}

TEST(SceneTemplate, RefusesOtherVersionsAndShortRecords)
{
    SceneTemplate loaded;
    EXPECT_EQ(LoadCause(loaded, Record(0)), CArchiveException::badSchema);
    EXPECT_EQ(LoadCause(loaded, Record(3)), CArchiveException::badSchema);
    EXPECT_EQ(LoadCause(loaded, RecordBytes().Dword(1).String("x")), CArchiveException::endOfFile);
}

TEST(SceneTemplateList, InsertsByNameAndRefusesNamesItHas)
{
    const auto a = Named("A");
    const auto b = Named("B");
    const auto c = Named("C");
    const auto another = Named("B");
    SceneTemplateList list;
    EXPECT_EQ(list.InsertAlphabetically(c.get()), c.get());
    EXPECT_EQ(list.InsertAlphabetically(a.get()), a.get());
    EXPECT_EQ(list.InsertAlphabetically(b.get()), b.get());
    EXPECT_EQ(list.WhichIndex(a.get()), 0);
    EXPECT_EQ(list.WhichIndex(b.get()), 1);
    EXPECT_EQ(list.WhichIndex(c.get()), 2);
    EXPECT_EQ(list.InsertAlphabetically(another.get()), nullptr);
    EXPECT_EQ(list.GetCount(), 3);
    EXPECT_EQ(list.GetHead(), a.get());
    EXPECT_EQ(list.GetTail(), c.get());
}

TEST(SceneTemplateList, FindNameIsCaseSensitive)
{
    const auto lower = Named("front");
    const auto upper = Named("Front");
    SceneTemplateList list(1);
    list.AddTail(lower.get());
    EXPECT_EQ(list.FindName("Front"), nullptr);
    list.AddTail(upper.get());
    ASSERT_NE(list.FindName("Front"), nullptr);
    EXPECT_EQ(list.GetAt(list.FindName("Front")), upper.get());
}

TEST(SceneTemplateList, DoesNotOwnItsElements)
{
    const auto kept = Named("kept");
    {
        SceneTemplateList list;
        list.AddTail(kept.get());
    }
    EXPECT_STREQ(kept->GetName(), "kept");
}

}  // namespace
