// SPDX-License-Identifier: MIT
#include "imaging/TextureMap.h"

#include "imaging/TextureMapArray.h"
#include "imaging/TextureMapList.h"
#include "tests/support/NodeRecords.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <thread>

namespace
{

_RGBImageRecord* NewImage()
{
    return new _RGBImageRecord(2, 1, new BYTE[6]());
}

void ExpectInitial(TextureMap& texture)
{
    EXPECT_EQ(texture.modulate, 1U);
    EXPECT_TRUE(texture.filename.IsEmpty());
    EXPECT_EQ(texture.placement, 1U);
    EXPECT_EQ(texture.textureFlags, 0U);
    EXPECT_EQ(texture.GetHorizontalLocation(), 0.0);
    EXPECT_EQ(texture.image, nullptr);
    EXPECT_TRUE(texture.GetName().IsEmpty());
    EXPECT_EQ(texture.GetQuality(), 0UL);
    EXPECT_EQ(texture.GetRepeatRate(), 1.0);
    EXPECT_EQ(texture.GetVerticalLocation(), 0.0);
}

void MakeFull(TextureMap& texture)
{
    texture.modulate = 0;
    texture.SetFilename("dir/wood.bmp");
    texture.placement = 2;
    texture.textureFlags = 7;
    texture.SetHorizontalLocation(1.5);
    texture.image = NewImage();
    texture.SetName("wood");
    texture.SetQuality(2);
    texture.SetRepeatRate(3.0);
    texture.SetVerticalLocation(2.5);
}

void ExpectFull(TextureMap& texture)
{
    EXPECT_EQ(texture.modulate, 0U);
    EXPECT_EQ(texture.filename, "dir/wood.bmp");
    EXPECT_EQ(texture.placement, 2U);
    EXPECT_EQ(texture.textureFlags, 7U);
    EXPECT_EQ(texture.GetHorizontalLocation(), 1.5);
    EXPECT_EQ(texture.GetName(), "wood");
    EXPECT_EQ(texture.GetQuality(), 2UL);
    EXPECT_EQ(texture.GetRepeatRate(), 3.0);
    EXPECT_EQ(texture.GetVerticalLocation(), 2.5);
}

TEST(TextureMap, ANewOneHasTheInitialValuesAndAMutexOfItsOwn)
{
    TextureMap texture;
    ExpectInitial(texture);
    const TextureMap other;
    EXPECT_NE(texture.mutex, nullptr);
    EXPECT_NE(texture.mutex, other.mutex);
    EXPECT_EQ(RUNTIME_CLASS(TextureMap)->GetVersion(), 2U);
}

TEST(TextureMap, ResetGoesBackToTheInitialValues)
{
    TextureMap texture;
    MakeFull(texture);
    const HANDLE mutex = texture.mutex;
    texture.Reset();
    ExpectInitial(texture);
    EXPECT_EQ(texture.mutex, mutex);
}

TEST(TextureMap, ACopyHasTheSettingsAMutexOfItsOwnAndNoPixels)
{
    TextureMap original;
    MakeFull(original);
    TextureMap copy(original);
    ExpectFull(copy);
    EXPECT_EQ(copy.image, nullptr);
    EXPECT_NE(copy.mutex, original.mutex);

    TextureMap assigned;
    assigned.image = NewImage();
    const HANDLE mutex = assigned.mutex;
    assigned = original;
    ExpectFull(assigned);
    EXPECT_EQ(assigned.image, nullptr);
    EXPECT_EQ(assigned.mutex, mutex);
    EXPECT_NE(original.image, nullptr);
}

TEST(TextureMap, AssigningItselfKeepsEverything)
{
    TextureMap texture;
    MakeFull(texture);
    const TextureMap& itself = texture;
    texture = itself;
    ExpectFull(texture);
    EXPECT_NE(texture.image, nullptr);
}

// What another thread gets from a wait of no time.
DWORD WaitElsewhere(HANDLE mutex)
{
    DWORD result = WAIT_FAILED;
    std::thread([&] {
        result = WaitForSingleObject(mutex, 0);
        if (result == WAIT_OBJECT_0)
        {
            ReleaseMutex(mutex);
        }
    }).join();
    return result;
}

TEST(TextureMap, OwnershipIsRecursiveAndKeepsOtherThreadsOut)
{
    TextureMap texture;
    EXPECT_EQ(texture.GetOwnership(), texture.mutex);
    EXPECT_EQ(texture.GetOwnership(), texture.mutex);
    EXPECT_NE(texture.ReleaseOwnership(), 0);
    EXPECT_EQ(WaitElsewhere(texture.mutex), WAIT_TIMEOUT);
    EXPECT_NE(texture.ReleaseOwnership(), 0);
    EXPECT_EQ(WaitElsewhere(texture.mutex), WAIT_OBJECT_0);
    EXPECT_EQ(texture.ReleaseOwnership(), 0);
}

TEST(TextureMap, AnAbandonedMutexCountsAsOwned)
{
    TextureMap texture;
    std::thread([&texture] { texture.GetOwnership(); }).join();
    EXPECT_EQ(texture.GetOwnership(), texture.mutex);
    EXPECT_NE(texture.ReleaseOwnership(), 0);
}

TEST(TextureMap, LoadTakesTheNameWithoutDirectoryAndExtension)
{
    TextureMap texture;
    const auto nameOf = [&texture](const char* filename) {
        EXPECT_EQ(texture.Load(filename), 1);
        EXPECT_EQ(texture.filename, filename);
        return texture.GetName();
    };
    EXPECT_EQ(nameOf("C:\\pictures\\wood.grain.bmp"), "wood.grain");
    EXPECT_EQ(nameOf("wood.grain.bmp"), "wood.grain");
    EXPECT_EQ(nameOf("/home/pictures/wood.grain.bmp"), "wood.grain");
    EXPECT_EQ(nameOf("C:\\pictures.old\\wood"), "wood");
    EXPECT_EQ(nameOf("wood"), "wood");
    EXPECT_EQ(nameOf(""), "");
    EXPECT_EQ(texture.textureFlags, 0U);
    TextureMap constructed(CString("a\\b.bmp"));
    EXPECT_EQ(constructed.GetName(), "b");
    EXPECT_EQ(constructed.GetRepeatRate(), 1.0);
}

TEST(TextureMap, AFileThatStartsWithBmIsValid)
{
    const TemporaryFile file("picture.bmp", "BM and more");
    TextureMap texture;
    texture.SetFilename(file.Path());
    EXPECT_EQ(texture.ValidateFile(), 1);
    EXPECT_EQ(texture.textureFlags, TextureMap::Valid);
    texture.Load(file.Path());
    EXPECT_EQ(texture.GetName(), "picture");
    EXPECT_EQ(texture.textureFlags, TextureMap::Valid);
}

TEST(TextureMap, ATextFileIsValidThoughItIsNoPicture)
{
    for (const char* const content : {"words", "B", "bm", "MB"})
    {
        const TemporaryFile file("words.bmp", content);
        TextureMap texture;
        texture.SetFilename(file.Path());
        EXPECT_EQ(texture.ValidateFile(), 0);
        EXPECT_EQ(texture.textureFlags, TextureMap::Valid);
    }
}

TEST(TextureMap, AMissingOrEmptyFileMakesTheTextureInvalid)
{
    const TemporaryFile empty("empty.bmp", "");
    for (const CString& filename :
         {CString(), empty.Path(), CString("no/such/file.bmp"), CString(testing::TempDir())})
    {
        TextureMap texture;
        texture.SetFilename(filename);
        texture.textureFlags = 7;
        EXPECT_EQ(texture.ValidateFile(), 0);
        EXPECT_EQ(texture.textureFlags, 6U);
    }
}

TEST(TextureMap, LoadImageLetsGoOfThePixelsAndValidates)
{
    const TemporaryFile file("words.bmp", "words");
    TextureMap texture;
    texture.image = NewImage();
    EXPECT_EQ(texture.LoadImage(), 0);
    EXPECT_EQ(texture.image, nullptr);
    EXPECT_EQ(WaitElsewhere(texture.mutex), WAIT_OBJECT_0);
    texture.SetFilename(file.Path());
    EXPECT_EQ(texture.LoadImage(), 1);
    EXPECT_EQ(texture.GetImage(), nullptr);
    EXPECT_EQ(WaitElsewhere(texture.mutex), WAIT_OBJECT_0);
}

TEST(TextureMap, GetImageKeepsPixelsThatAreThere)
{
    TextureMap texture;
    _RGBImageRecord* const image = NewImage();
    texture.image = image;
    EXPECT_EQ(texture.GetImage(), image);
    texture.FreeImage();
    EXPECT_EQ(texture.image, nullptr);
    EXPECT_EQ(texture.GetImage(), nullptr);
}

TEST(TextureMap, TexturesOnlyWhenValidAndTextured)
{
    TextureMap texture;
    EXPECT_EQ(texture.ShouldTexture(), 0);
    texture.textureFlags = TextureMap::Valid;
    EXPECT_EQ(texture.ShouldTexture(), 0);
    texture.textureFlags = TextureMap::Textured | TextureMap::ScaleWithObject;
    EXPECT_EQ(texture.ShouldTexture(), 0);
    texture.textureFlags = TextureMap::Valid | TextureMap::Textured;
    EXPECT_NE(texture.ShouldTexture(), 0);
}

TEST(TextureMap, ScaleWithObjectIsABitOfItsOwn)
{
    TextureMap texture;
    texture.SetScaleWithObject();
    EXPECT_EQ(texture.textureFlags, 4U);
    EXPECT_EQ(texture.ShouldScaleWithObject(), 4);
    texture.textureFlags = 7;
    texture.ClearScaleWithObject();
    EXPECT_EQ(texture.textureFlags, 3U);
    EXPECT_EQ(texture.ShouldScaleWithObject(), 0);
}

TEST(TextureMap, ComparesByNameBytesAsUnsigned)
{
    TextureMap a;
    TextureMap b;
    a.SetName("Stone");
    b.SetName("stone");
    EXPECT_TRUE(a < &b);
    EXPECT_TRUE(a <= &b);
    EXPECT_FALSE(a > &b);
    EXPECT_FALSE(a >= &b);
    EXPECT_FALSE(a == &b);
    b.SetName("Stone");
    b.SetFilename("elsewhere");
    EXPECT_TRUE(a == &b);
    EXPECT_TRUE(a <= &b);
    EXPECT_TRUE(a >= &b);
    EXPECT_FALSE(a < &b);
    a.SetName("\xE9");
    b.SetName("z");
    EXPECT_TRUE(a > &b);
}

TEST(TextureMap, TheRecordHasItsFieldsInOrder)
{
    TextureMap texture;
    MakeFull(texture);
    const RecordBytes record = RecordBytes()
                                   .Dword(2)
                                   .Dword(0)
                                   .String("dir/wood.bmp")
                                   .Dword(7)
                                   .String("wood")
                                   .Dword(2)
                                   .Double(3.0)
                                   .Dword(2)
                                   .Double(1.5)
                                   .Double(2.5);
    EXPECT_EQ(Stored(texture), record.Get());
    TextureMap loaded;
    loaded.image = NewImage();
    LoadRecord(loaded, record);
    ExpectFull(loaded);
    EXPECT_EQ(loaded.image, nullptr);  // those were another file's
    TextureMap fresh;
    EXPECT_EQ(Stored(fresh), TextureMapRecord().Get());
}

TEST(TextureMap, Version1HasNoPlacementAndNoLocation)
{
    const RecordBytes record = RecordBytes()
                                   .Dword(1)
                                   .Dword(0)
                                   .String("dir/wood.bmp")
                                   .Dword(7)
                                   .String("wood")
                                   .Dword(2)
                                   .Double(3.0);
    TextureMap loaded;
    MakeFull(loaded);
    LoadRecord(loaded, record);
    EXPECT_EQ(loaded.filename, "dir/wood.bmp");
    EXPECT_EQ(loaded.GetRepeatRate(), 3.0);
    EXPECT_EQ(loaded.placement, 1U);
    EXPECT_EQ(loaded.GetHorizontalLocation(), 0.0);
    EXPECT_EQ(loaded.GetVerticalLocation(), 0.0);
}

TEST(TextureMap, AnyOtherVersionIsABadSchema)
{
    TextureMap loaded;
    EXPECT_EQ(LoadCause(loaded, RecordBytes().Dword(0)), CArchiveException::badSchema);
    EXPECT_EQ(LoadCause(loaded, RecordBytes().Dword(3)), CArchiveException::badSchema);
}

TEST(TextureMapList, HoldsMovesAndFindsTexturesWithoutOwningThem)
{
    TextureMap wood;
    TextureMap stone;
    wood.SetName("wood");
    stone.SetName("stone");
    TextureMapList list;
    list.AddHead(&stone);
    list.AddTail(&wood);
    EXPECT_EQ(list.GetAt(list.FindName("wood")), &wood);
    EXPECT_EQ(list.FindName("Wood"), nullptr);
    EXPECT_EQ(list.WhichIndex(&wood), 1);
    list.MoveUp(list.GetTailPosition());
    EXPECT_EQ(list.GetHead(), &wood);
    list.MoveDown(list.GetHeadPosition());
    EXPECT_EQ(list.GetTail(), &wood);
    list.MoveHead(list.GetTailPosition());
    EXPECT_EQ(list.GetHead(), &wood);
    list.MoveTail(list.GetHeadPosition());
    EXPECT_EQ(list.GetTail(), &wood);
    EXPECT_EQ(list.RemoveHead(), &stone);
    EXPECT_EQ(list.RemoveTail(), &wood);
    EXPECT_TRUE(list.IsEmpty());
}

TEST(TextureMapArray, HoldsPointers)
{
    TextureMap texture;
    TextureMapArray array;
    array.SetAtGrow(2, &texture);
    EXPECT_EQ(array.GetSize(), 3);
    EXPECT_EQ(array.GetAt(0), nullptr);
    EXPECT_EQ(array[2], &texture);
    array.SetAt(0, &texture);
    EXPECT_EQ(array.GetAt(0), &texture);
}

}  // namespace
