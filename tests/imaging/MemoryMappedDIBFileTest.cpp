// SPDX-License-Identifier: MIT
#include "imaging/MemoryMappedDIB.h"

#include "platform/Messages.h"
#include "tests/support/BmpFile.h"
#include "tests/support/ExposedDib.h"
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

// Keeps the messages that the library shows while the object lives.
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

// While the object lives, no file of this process grows beyond so many bytes, as on a full disk.
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

TEST(MemoryMappedDIB, TheColourTablesAreThoseThatOpenGLFillsIndexedBitmapsFor)
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

TEST(MemoryMappedDIB, SizesAndDepthsThatNoBitmapHasAreNotCreated)
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

TEST(MemoryMappedDIB, AttachingAn8BitBlockWithAColourCountOf0Writes256IntoIt)
{
    const Block block(OnePixelOf8Bits().Packed());
    Dib dib;
    EXPECT_EQ(dib.AttachGlobalHandle(block.handle), 1);
    EXPECT_EQ(dib.dibInfoSize, 1064U);
    EXPECT_EQ(dib.Pixels(0, 1), Values{3});
    EXPECT_EQ(Values(block.bytes + 32, block.bytes + 36), (Values{0, 1, 0, 0}));
}

TEST(MemoryMappedDIB, ANullBlockOrABlockThatIsTooSmallIsNotAttached)
{
    Dib dib;
    EXPECT_EQ(dib.AttachGlobalHandle(nullptr), 0);
    EXPECT_EQ(dib.AttachGlobalHandle(&dib), 0);
    const Bytes whole = OnePixelOf8Bits().Packed();
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
    const Block block(OnePixelOf8Bits().Packed());
    {
        Dib dib;
        EXPECT_EQ(dib.AttachGlobalHandle(block.handle), 1);
        GlobalLock(block.handle);
        EXPECT_TRUE(GlobalUnlock(block.handle));
    }
    EXPECT_FALSE(GlobalUnlock(block.handle));
}

}  // namespace
