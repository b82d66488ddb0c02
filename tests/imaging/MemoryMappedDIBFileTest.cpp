// SPDX-License-Identifier: MIT
#include "imaging/MemoryMappedDIB.h"

#include "host/CArchive.h"
#include "platform/Messages.h"
#include "platform/Storage.h"
#include "tests/support/BmpFile.h"
#include "tests/support/ExposedDib.h"
#include "tests/support/OtherPrograms.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

namespace
{

using Values = std::vector<int>;

using Dib = ExposedDib;

struct Message
{
    std::string text;
    UINT type;
};

// The messages that were shown while it lives.
class Messages
{
public:
    Messages() : previous_(SetMessageBoxHandler(Take)) { shown_.clear(); }
    ~Messages() { SetMessageBoxHandler(previous_); }
    Messages(const Messages&) = delete;
    Messages& operator=(const Messages&) = delete;

    const std::vector<Message>& Shown() const { return shown_; }

private:
    static int Take(HWND, LPCSTR text, LPCSTR, UINT type)
    {
        shown_.push_back({text, type});
        return IDOK;
    }

    static inline std::vector<Message> shown_;
    MessageBoxHandler previous_;
};

std::string CannotCreate(DWORD number)
{
    return "Cannot create the specified file.  Verify that there\nis space on your disk for a file "
           "of " +
           std::to_string(number) + " bytes.\n";
}

// No file of this process grows beyond that many bytes while it lives, as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &limit_);
        const rlimit less = {bytes, limit_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &less);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &limit_);
        std::signal(SIGXFSZ, signal_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

private:
    void (*signal_)(int);
    rlimit limit_{};
};

TEST(MemoryMappedDIB, ABitmapOfItsOwnIsMadeInEveryDepth)
{
    const struct
    {
        int bitCount;
        DWORD imageSize;
        DWORD infoSize;
    } cases[] = {{1, 12, 48},  {4, 12, 104}, {8, 24, 1064},
                 {16, 36, 40}, {24, 48, 40}, {32, 60, 40}};
    for (const auto& [bitCount, imageSize, infoSize] : cases)
    {
        SCOPED_TRACE(bitCount);
        Dib dib;
        EXPECT_EQ(dib.Create(5, 3, 72, 300, bitCount, CString()), 1);
        const BITMAPINFOHEADER& header = dib.GetDIBInfo()->bmiHeader;
        EXPECT_EQ(header.biSize, 40U);
        EXPECT_EQ(header.biWidth, 5);
        EXPECT_EQ(header.biHeight, 3);
        EXPECT_EQ(header.biPlanes, 1);
        EXPECT_EQ(header.biBitCount, bitCount);
        EXPECT_EQ(header.biCompression, BI_RGB);
        EXPECT_EQ(header.biSizeImage, imageSize);
        EXPECT_EQ(header.biXPelsPerMeter, 2835);
        EXPECT_EQ(header.biYPelsPerMeter, 11811);
        EXPECT_EQ(dib.dibInfoSize, infoSize);
        EXPECT_EQ(dib.bitsOffset, 14 + infoSize);
        EXPECT_EQ(dib.fileSize, 14 + infoSize + imageSize);
        EXPECT_EQ(dib.horizontalResolution, 72);
        EXPECT_EQ(dib.verticalResolution, 300);
        EXPECT_NE(dib.previousBitmap, nullptr);
        EXPECT_TRUE(dib.HoldsNoFile());
        EXPECT_EQ(dib.Pixels(0, static_cast<int>(imageSize)),
                  Values(static_cast<std::size_t>(imageSize), 0));
        EXPECT_EQ(dib.CopyBits(), 0);
    }
}

TEST(MemoryMappedDIB, ItsTablesAreOpenGLsOwn)
{
    const auto entry = [](int bitCount, int index) {
        Dib dib;
        EXPECT_EQ(dib.Create(1, 1, 72, 72, bitCount, CString()), 1);
        const RGBQUAD& color = dib.GetDIBInfo()->bmiColors[index];
        return Values{color.rgbRed, color.rgbGreen, color.rgbBlue, color.rgbReserved};
    };
    EXPECT_EQ(entry(8, 0), (Values{0, 0, 0, 0}));
    EXPECT_EQ(entry(8, 255), (Values{255, 255, 255, 0}));
    EXPECT_EQ(entry(8, 7), (Values{255, 0, 0, 0}));
    EXPECT_EQ(entry(8, 56), (Values{0, 255, 0, 0}));
    EXPECT_EQ(entry(8, 192), (Values{0, 0, 255, 0}));
    EXPECT_EQ(entry(8, 1 + 16 + 64), (Values{36, 72, 85, 0}));
    EXPECT_EQ(entry(4, 5), (Values{255, 0, 255, 0}));
    EXPECT_EQ(entry(4, 10), (Values{0, 255, 0, 0}));
    EXPECT_EQ(entry(1, 0), (Values{0, 0, 0, 0}));
    EXPECT_EQ(entry(1, 1), (Values{255, 255, 255, 0}));
}

TEST(MemoryMappedDIB, WhatIsNoBitmapIsNotCreated)
{
    Dib dib;
    EXPECT_EQ(dib.Create(0, 3, 72, 72, 24, CString()), 0);
    EXPECT_EQ(dib.Create(5, 0, 72, 72, 24, CString()), 0);
    EXPECT_EQ(dib.Create(-5, 3, 72, 72, 24, CString()), 0);
    EXPECT_EQ(dib.Create(5, 3, 72, 72, 2, CString()), 0);
    EXPECT_EQ(dib.Create(5, 3, 72, 72, 0, CString()), 0);
    EXPECT_EQ(dib.Create(5, 3, 72, 72, -1, CString()), 0);
    EXPECT_EQ(dib.Create(100000, 100000, 72, 72, 24, CString()), 0);  // beyond 4 GiB
    EXPECT_EQ(dib.dibSection, nullptr);
    EXPECT_EQ(dib.width, 100000);
}

TEST(MemoryMappedDIB, ATopDownBitmapIsCreatedToo)
{
    Dib dib;
    EXPECT_EQ(dib.Create(2, -3, 72, 72, 24, CString()), 1);
    EXPECT_EQ(dib.height, -3);
    EXPECT_EQ(dib.GetDIBInfo()->bmiHeader.biHeight, -3);
    EXPECT_EQ(dib.GetDIBInfo()->bmiHeader.biSizeImage, 24U);
}

TEST(MemoryMappedDIB, AFileOfTheRightSizeStandsBehindABitmap)
{
    const TemporaryName name("created.bmp");
    Dib dib;
    ASSERT_EQ(dib.Create(2, 2, 72, 72, 24, name.Path()), 1);
    EXPECT_NE(dib.GetDIBBits(), dib.fileBits);
    for (int i = 0; i < 16; ++i)
    {
        dib.Bits()[i] = static_cast<BYTE>(i + 1);
    }
    const Bytes header = RecordBytes()
                             .Word(0x4D42)
                             .Dword(70)
                             .Word(0)
                             .Word(0)
                             .Dword(54)
                             .Dword(40)
                             .Long(2)
                             .Long(2)
                             .Word(1)
                             .Word(24)
                             .Dword(0)
                             .Dword(16)
                             .Long(2835)
                             .Long(2835)
                             .Dword(0)
                             .Dword(0);
    Bytes expected = header;
    expected.resize(70);
    EXPECT_EQ(name.Read(), expected);  // the pixels are not there yet
    EXPECT_EQ(dib.CopyBits(), 1);
    EXPECT_EQ(dib.Close(), 1);
    EXPECT_TRUE(dib.HoldsNoFile());
    EXPECT_EQ(dib.CopyBits(), 0);
    EXPECT_EQ(dib.Pixels(0, 1), Values{1});  // the bitmap stays
    for (int i = 0; i < 16; ++i)
    {
        expected[static_cast<std::size_t>(54 + i)] = static_cast<BYTE>(i + 1);
    }
    EXPECT_EQ(name.Read(), expected);
}

TEST(MemoryMappedDIB, AFileWithATableHoldsIt)
{
    const TemporaryName name("table.bmp");
    {
        Dib dib;
        ASSERT_EQ(dib.Create(3, 1, 72, 72, 8, name.Path()), 1);
        dib.Bits()[1] = 7;
        EXPECT_EQ(dib.CopyBits(), 1);
    }
    const std::vector<BYTE> bytes = name.Read();
    ASSERT_EQ(bytes.size(), 14U + 40 + 1024 + 4);
    EXPECT_EQ(Values(bytes.begin() + 54 + 28, bytes.begin() + 54 + 32), (Values{0, 0, 255, 0}));
    Dib again;
    EXPECT_EQ(again.OpenAsTrueColor(name.Path()), 1);
    EXPECT_EQ(again.Pixels(0, 9), (Values{0, 0, 0, 0, 0, 255, 0, 0, 0}));
    EXPECT_EQ(again.horizontalResolution, 72);
}

TEST(MemoryMappedDIB, CreatingAgainLetsTheFirstFileGo)
{
    const TemporaryName first("again1.bmp");
    const TemporaryName second("again2.bmp");
    Dib dib;
    ASSERT_EQ(dib.Create(1, 1, 72, 72, 24, first.Path()), 1);
    ASSERT_EQ(dib.Create(2, 1, 72, 72, 8, second.Path()), 1);
    EXPECT_EQ(first.Read().size(), 58U);
    EXPECT_EQ(second.Read().size(), 1082U);
    ASSERT_EQ(dib.Create(2, 1, 72, 72, 8, CString()), 1);
    EXPECT_TRUE(dib.HoldsNoFile());
}

TEST(MemoryMappedDIB, AFileThatCannotBeMadeIsReportedWithAnAddress)
{
    const Messages messages;
    Dib dib;
    EXPECT_EQ(dib.Create(2, 2, 72, 72, 24, "/no/such/folder/picture.bmp"), 0);
    ASSERT_EQ(messages.Shown().size(), 1U);
    // In place of the bytes: the low half of where the name lies.
    const DWORD address =
        static_cast<DWORD>(reinterpret_cast<std::uintptr_t>(static_cast<LPCSTR>(dib.filename)));
    EXPECT_EQ(messages.Shown()[0].text, CannotCreate(address));
    EXPECT_EQ(messages.Shown()[0].type, MB_ICONEXCLAMATION);
    EXPECT_TRUE(dib.HoldsNoFile());
    EXPECT_EQ(dib.dibSection, nullptr);
}

TEST(MemoryMappedDIB, AFileThatCannotBeMappedIsDeletedAndReportedWithItsSize)
{
    const TemporaryName name("toolarge.bmp");
    const Messages messages;
    Dib dib;
    {
        const FullDisk full(4096);
        EXPECT_EQ(dib.Create(100, 100, 72, 72, 24, name.Path()), 0);
    }
    ASSERT_EQ(messages.Shown().size(), 1U);
    EXPECT_EQ(messages.Shown()[0].text, CannotCreate(30054));
    EXPECT_EQ(messages.Shown()[0].type, MB_ICONEXCLAMATION);
    EXPECT_FALSE(name.Exists());
    EXPECT_TRUE(dib.HoldsNoFile());
    EXPECT_EQ(dib.dibSection, nullptr);
    EXPECT_EQ(dib.Create(100, 100, 72, 72, 24, name.Path()), 1);  // when there is room
}

TEST(MemoryMappedDIB, APackedBitmapIsHeaderColoursAndPixels)
{
    Dib dib;
    EXPECT_EQ(dib.GetGlobalDIB(), nullptr);
    ASSERT_EQ(dib.Create(2, 1, 72, 72, 4, CString()), 1);
    dib.Bits()[0] = 0x5A;
    const HGLOBAL block = dib.GetGlobalDIB();
    ASSERT_NE(block, nullptr);
    EXPECT_EQ(GlobalSize(block), 40U + 64 + 4);
    const BYTE* const bytes = static_cast<const BYTE*>(GlobalLock(block));
    EXPECT_EQ(std::memcmp(bytes, dib.GetDIBInfo(), 104), 0);
    EXPECT_EQ(Values(bytes + 104, bytes + 108), (Values{0x5A, 0, 0, 0}));
    EXPECT_TRUE(GlobalUnlock(block) == FALSE);

    Dib other;
    EXPECT_EQ(other.AttachGlobalHandle(block), 1);
    EXPECT_EQ(other.globalHandle, block);
    EXPECT_EQ(static_cast<void*>(other.GetDIBInfo()), bytes);
    EXPECT_EQ(other.GetDIBBits(), bytes + 104);
    EXPECT_EQ(other.dibInfoSize, 104U);
    EXPECT_EQ(other.width, 2);
    EXPECT_EQ(other.height, 1);
    EXPECT_EQ(other.bitCount, 4);
    EXPECT_EQ(other.dibSection, nullptr);
    EXPECT_EQ(other.GetGlobalDIB(), nullptr);
    EXPECT_EQ(other.DetachGlobalHandle(), 1);
    EXPECT_EQ(other.DetachGlobalHandle(), 0);
    EXPECT_FALSE(GlobalUnlock(block));  // it holds no lock any more
    EXPECT_EQ(other.GetDIBInfo(), nullptr);
    GlobalFree(block);
}

// A block with these bytes, freed at the end.
struct Block
{
    explicit Block(const Bytes& content) : handle(GlobalAlloc(GMEM_MOVEABLE, content.size()))
    {
        bytes = static_cast<BYTE*>(GlobalLock(handle));
        std::copy(content.begin(), content.end(), bytes);
        GlobalUnlock(handle);
    }
    ~Block() { GlobalFree(handle); }

    HGLOBAL handle;
    BYTE* bytes;
};

BmpFile EightBits()
{
    BmpFile file;
    file.width = 1;
    file.height = 1;
    file.bitCount = 8;
    file.behindHeader = Bytes(1024, 9);
    file.pixels = {3, 0, 0, 0};
    return file;
}

TEST(MemoryMappedDIB, AnAttached8BitBlockThatCountsNoColoursGets256WrittenIntoIt)
{
    const Block block(EightBits().Packed());
    Dib dib;
    EXPECT_EQ(dib.AttachGlobalHandle(block.handle), 1);
    EXPECT_EQ(dib.dibInfoSize, 1064U);
    EXPECT_EQ(dib.Pixels(0, 1), Values{3});
    EXPECT_EQ(Values(block.bytes + 32, block.bytes + 36), (Values{0, 1, 0, 0}));
}

TEST(MemoryMappedDIB, ABlockThatIsNoneOrTooSmallIsNotAttached)
{
    Dib dib;
    EXPECT_EQ(dib.AttachGlobalHandle(nullptr), 0);
    EXPECT_EQ(dib.AttachGlobalHandle(&dib), 0);
    const Bytes whole = EightBits().Packed();
    for (std::size_t length = 1; length < whole.size(); length += length < 41 ? 1 : 50)
    {
        const Block block(Bytes(whole.begin(), whole.begin() + length));
        EXPECT_EQ(dib.AttachGlobalHandle(block.handle), 0) << length;
        EXPECT_FALSE(GlobalUnlock(block.handle));
    }
    EXPECT_EQ(dib.GetDIBInfo(), nullptr);
}

TEST(MemoryMappedDIB, AnAttachedBlockIsUnlockedAtTheEnd)
{
    const Block block(EightBits().Packed());
    {
        Dib dib;
        EXPECT_EQ(dib.AttachGlobalHandle(block.handle), 1);
        GlobalLock(block.handle);
        EXPECT_TRUE(GlobalUnlock(block.handle));
    }
    EXPECT_FALSE(GlobalUnlock(block.handle));
}

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

TEST(MemoryMappedDIB, AnEmptyOneIsStoredAndLoaded)
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

TEST(MemoryMappedDIB, AStoredBlockOfAnotherLengthIsTakenAsFarAsItFits)
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
}

TEST(MemoryMappedDIB, ItIsMadeByItsClass)
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
    const TemporaryFile source("stream8.bmp", EightBits().File());
    Dib dib;
    EXPECT_EQ(dib.SaveToStorage(file.storage, "picture"), 0);  // there is none yet
    ASSERT_EQ(dib.Open(source.Path()), 1);
    EXPECT_EQ(dib.SaveToStorage(nullptr, "picture"), 0);
    EXPECT_EQ(dib.SaveToStorage(file.storage, nullptr), 0);
    EXPECT_EQ(dib.SaveToStorage(file.storage, ""), 0);
    EXPECT_EQ(dib.SaveToStorage(file.storage, "picture"), 1);
    EXPECT_EQ(file.Stream(u"picture"), EightBits().Packed());

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
    const TemporaryFile source("listed8.bmp", EightBits().File());
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
    const Bytes packed = EightBits().Packed();
    EXPECT_NE(list->find(std::to_string(packed.size()) + " picture"), std::string::npos) << *list;
    EXPECT_EQ(OutputOf("gsf cat " + name + " picture"), std::string(packed.begin(), packed.end()));
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

    BmpFile packed = EightBits();
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
    const Bytes whole = EightBits().Packed();
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
