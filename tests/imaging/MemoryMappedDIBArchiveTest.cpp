// SPDX-License-Identifier: MIT
// Bitmaps in archives and in the streams of compound files.
#include "imaging/MemoryMappedDIB.h"

#include "host/CArchive.h"
#include "platform/Storage.h"
#include "tests/support/BmpFile.h"
#include "tests/support/ExposedDib.h"
#include "tests/support/OtherPrograms.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

namespace
{

using Values = std::vector<int>;

using Dib = ExposedDib;

TEST(MemoryMappedDIB, TheRecordIsSizeDepthAndPixels)
{
    Dib dib;
    ASSERT_EQ(dib.Create(1, 2, 72, 72, 24, CString()), 1);
    for (int i = 0; i < 8; ++i)
    {
        dib.Bits()[i] = static_cast<BYTE>(i + 1);
    }
    const Bytes record = RecordBytes()
                             .Dword(1)
                             .Long(1)
                             .Long(2)
                             .Long(24)
                             .Dword(8)
                             .Byte(1)
                             .Byte(2)
                             .Byte(3)
                             .Byte(4)
                             .Byte(5)
                             .Byte(6)
                             .Byte(7)
                             .Byte(8);
    EXPECT_EQ(Stored(dib), record);
    Dib loaded;
    LoadRecord(loaded, record);
    EXPECT_EQ(loaded.width, 1);
    EXPECT_EQ(loaded.height, 2);
    EXPECT_EQ(loaded.bitCount, 24);
    EXPECT_NE(loaded.dibSection, nullptr);
    EXPECT_EQ(loaded.Pixels(0, 8), (Values{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(MemoryMappedDIB, AMappedFileIsStoredUpToItsPixels)
{
    BmpFile file;
    file.width = file.height = 1;
    file.pixels = {1, 2, 3, 0};
    file.imageSize = 1 << 20;  // more than the file has
    const TemporaryFile temporary("lying.bmp", file.File());
    Dib dib;
    ASSERT_EQ(dib.Open(temporary.Path()), 1);
    EXPECT_EQ(Stored(dib), RecordBytes()
                               .Dword(1)
                               .Long(1)
                               .Long(1)
                               .Long(24)
                               .Dword(4)
                               .Byte(1)
                               .Byte(2)
                               .Byte(3)
                               .Byte(0)
                               .Get());
}

TEST(MemoryMappedDIB, ABitmapWithoutPixelsIsStoredAndLoaded)
{
    Dib empty;
    const Bytes record = RecordBytes().Dword(1).Long(0).Long(0).Long(0).Dword(0);
    EXPECT_EQ(Stored(empty), record);
    Dib dib;
    ASSERT_EQ(dib.Create(1, 1, 72, 72, 24, CString()), 1);
    LoadRecord(dib, record);
    EXPECT_EQ(dib.dibSection, nullptr);
    EXPECT_EQ(dib.GetDIBBits(), nullptr);
    EXPECT_EQ(dib.width, 0);
}

TEST(MemoryMappedDIB, APixelBlockOfAnotherLengthIsLoadedAsFarAsItFits)
{
    const auto loaded = [](std::initializer_list<BYTE> pixels) {
        RecordBytes record;
        record.Dword(1).Long(1).Long(1).Long(24).Dword(static_cast<DWORD>(pixels.size()));
        for (const BYTE pixel : pixels)
        {
            record.Byte(pixel);
        }
        record.Dword(0x12345678);
        CMemFile file(record.Get().data(), static_cast<UINT>(record.Get().size()));
        CArchive archive(&file, CArchive::load);
        Dib dib;
        dib.Serialize(archive);
        DWORD behind = 0;
        archive >> behind;
        EXPECT_EQ(behind, 0x12345678U);
        return dib.Pixels(0, 4);
    };
    EXPECT_EQ(loaded({1, 2}), (Values{1, 2, 0, 0}));
    EXPECT_EQ(loaded({1, 2, 3, 4, 5, 6}), (Values{1, 2, 3, 4}));
    EXPECT_EQ(loaded({}), (Values{0, 0, 0, 0}));
}

TEST(MemoryMappedDIB, RecordsOfImpossibleBitmapsAreRefused)
{
    const auto cause = [](LONG width, LONG height, LONG bits, DWORD size, DWORD version = 1) {
        Dib dib;
        return LoadCause(
            dib, RecordBytes().Dword(version).Long(width).Long(height).Long(bits).Dword(size));
    };
    EXPECT_EQ(cause(1, 1, 24, 0), CArchiveException::none);
    EXPECT_EQ(cause(1, 1, 24, 0, 2), CArchiveException::badSchema);
    EXPECT_EQ(cause(1, 1, 24, 0, 0), CArchiveException::badSchema);
    EXPECT_EQ(cause(1, 1, 24, 4), CArchiveException::endOfFile);
    EXPECT_EQ(cause(-1, 1, 24, 4), CArchiveException::generic);
    EXPECT_EQ(cause(1, 0, 24, 4), CArchiveException::generic);
    EXPECT_EQ(cause(1, 1, 7, 4), CArchiveException::generic);
    EXPECT_EQ(cause(30000, 30000, 24, 4), CArchiveException::generic);  // out of four bytes
    // Rows of 4 pixels take 12 bytes, and a record without pixels may take 64 MiB, 67,108,864
    // bytes.
    EXPECT_EQ(cause(4, 5592405, 24, 0), CArchiveException::none);
    EXPECT_EQ(cause(4, 5592406, 24, 0), CArchiveException::generic);
}

TEST(MemoryMappedDIB, ItsRuntimeClassCreatesIt)
{
    Dib dib;
    EXPECT_EQ(RUNTIME_CLASS(MemoryMappedDIB)->m_wSchema & 0xFFFF, 1U);
    CObject* const made = RUNTIME_CLASS(MemoryMappedDIB)->CreateObject();
    EXPECT_TRUE(made->IsKindOf(RUNTIME_CLASS(MemoryMappedDIB)));
    delete made;
}

// A storage that ends with its object.
struct StorageFile
{
    explicit StorageFile(const std::string& fileName = "bitmaps.stg") : name(fileName)
    {
        const std::string path = name.Path().Text();
        StgCreateDocfile(std::u16string(path.begin(), path.end()).c_str(),
                         STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, &storage);
    }
    ~StorageFile() { storage->Release(); }
    Bytes Stream(const char16_t* stream) const
    {
        IStream* opened = nullptr;
        storage->OpenStream(stream, nullptr, STGM_READ, 0, &opened);
        Bytes bytes(4096);
        ULONG done = 0;
        opened->Read(bytes.data(), 4096, &done);
        opened->Release();
        bytes.resize(done);
        return bytes;
    }
    void Put(const char16_t* stream, const Bytes& bytes) const
    {
        IStream* made = nullptr;
        storage->CreateStream(stream, STGM_CREATE | STGM_READWRITE, 0, 0, &made);
        made->Write(bytes.data(), static_cast<ULONG>(bytes.size()), nullptr);
        made->Release();
    }

    TemporaryName name;
    IStorage* storage = nullptr;
};

TEST(MemoryMappedDIB, AStreamHoldsAPackedBitmap)
{
    const StorageFile file;
    const TemporaryFile source("stream8.bmp", OnePixelOf8Bits().File());
    Dib dib;
    EXPECT_EQ(dib.SaveToStorage(file.storage, "picture"), 0);  // there is none yet
    ASSERT_EQ(dib.Open(source.Path()), 1);
    EXPECT_EQ(dib.SaveToStorage(nullptr, "picture"), 0);
    EXPECT_EQ(dib.SaveToStorage(file.storage, nullptr), 0);
    EXPECT_EQ(dib.SaveToStorage(file.storage, ""), 0);
    EXPECT_EQ(dib.SaveToStorage(file.storage, "picture"), 1);
    EXPECT_EQ(file.Stream(u"picture"), OnePixelOf8Bits().Packed());

    Dib loaded;
    EXPECT_EQ(loaded.ReadFromStorage(file.storage, "none"), 0);
    EXPECT_EQ(loaded.ReadFromStorage(nullptr, "picture"), 0);
    EXPECT_EQ(loaded.ReadFromStorage(file.storage, "picture"), 1);
    EXPECT_NE(loaded.dibSection, nullptr);
    EXPECT_EQ(loaded.width, 1);
    EXPECT_EQ(loaded.bitCount, 8);
    EXPECT_EQ(loaded.dibInfoSize, 1064U);
    EXPECT_EQ(loaded.GetDIBInfo()->bmiColors[3].rgbRed, 9);
    EXPECT_EQ(loaded.Pixels(0, 1), Values{3});
    EXPECT_EQ(loaded.SaveToStorage(file.storage, "again"), 1);
    Dib again;
    EXPECT_EQ(again.ReadFromStorage(file.storage, "again"), 1);
    EXPECT_EQ(again.Pixels(0, 1), Values{3});
}

TEST(MemoryMappedDIB, AnotherProgramFindsThePackedBitmapInItsStream)
{
    const StorageFile file("listed-bitmaps.stg");
    const TemporaryFile source("listed8.bmp", OnePixelOf8Bits().File());
    Dib dib;
    ASSERT_EQ(dib.Open(source.Path()), 1);
    ASSERT_EQ(dib.SaveToStorage(file.storage, "picture"), 1);
    ASSERT_EQ(file.storage->Commit(STGC_DEFAULT), S_OK);
    const std::string name = "'" + file.name.Path().Text() + "'";
    const std::optional<std::string> list = OutputOf("gsf list " + name);
    if (!list)
    {
        FAIL() << "no gsf program (package libgsf-bin)";
    }
    const Bytes packed = OnePixelOf8Bits().Packed();
    EXPECT_NE(list->find(std::to_string(packed.size()) + " picture"), std::string::npos) << *list;
    EXPECT_EQ(OutputOf("gsf cat " + name + " picture"), AsText(packed));
}

TEST(MemoryMappedDIB, MasksAndPackedPixelsComeBackFromAStream)
{
    const StorageFile file;
    BmpFile masked;
    masked.width = 1;
    masked.height = -1;
    masked.bitCount = 16;
    masked.compression = BI_BITFIELDS;
    masked.dotsPerMetre = 2835;
    masked.behindHeader = {0, 0xF8, 0, 0, 0xE0, 0x07, 0, 0, 0x1F, 0, 0, 0};
    masked.pixels = {0x34, 0x12, 0, 0};
    file.Put(u"masked", masked.Packed());
    Dib dib;
    ASSERT_EQ(dib.ReadFromStorage(file.storage, "masked"), 1);
    EXPECT_EQ(dib.height, -1);
    EXPECT_EQ(dib.horizontalResolution, 72);
    EXPECT_EQ(dib.dibInfoSize, 52U);  // with the masks
    EXPECT_EQ(dib.Pixels(0, 2), (Values{0x34, 0x12}));
    DIBSECTION section{};
    GetObjectA(dib.dibSection, sizeof section, &section);
    EXPECT_EQ(section.dsBitfields[1], 0x07E0U);

    BmpFile packed = OnePixelOf8Bits();
    packed.width = 5;
    packed.compression = BI_RLE8;
    packed.behindHeader[4 * 6] = 77;
    packed.pixels = {4, 6, 0, 1};
    file.Put(u"packed", packed.Packed());
    ASSERT_EQ(dib.ReadFromStorage(file.storage, "packed"), 1);
    EXPECT_EQ(dib.GetDIBInfo()->bmiHeader.biCompression, BI_RGB);
    EXPECT_EQ(dib.GetDIBInfo()->bmiHeader.biSizeImage, 8U);
    EXPECT_EQ(dib.Pixels(0, 5), (Values{6, 6, 6, 6, 0}));
}

TEST(MemoryMappedDIB, StreamsThatHoldNoBitmapAreRefusedAndChangeNothing)
{
    const StorageFile file;
    const Bytes whole = OnePixelOf8Bits().Packed();
    Dib dib;
    ASSERT_EQ(dib.Create(1, 1, 72, 72, 24, CString()), 1);
    for (std::size_t length = 0; length < whole.size(); length += length < 41 ? 1 : 50)
    {
        file.Put(u"cut", Bytes(whole.begin(), whole.begin() + length));
        EXPECT_EQ(dib.ReadFromStorage(file.storage, "cut"), 0) << length;
    }
    EXPECT_EQ(dib.bitCount, 24);
    EXPECT_NE(dib.GetDIBBits(), nullptr);
}

}  // namespace
