// SPDX-License-Identifier: MIT
#include "imaging/MemoryMappedDIB.h"

#include "material/ColorVector.h"
#include "tests/support/Bitmaps.h"
#include "tests/support/BmpFile.h"
#include "tests/support/ExposedDib.h"
#include "tests/support/TemporaryFile.h"

#include <dirent.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>

namespace
{

using Values = std::vector<int>;

using Dib = ExposedDib;

int CountOpenFiles()
{
    int count = 0;
    DIR* const folder = opendir("/proc/self/fd");
    while (folder != nullptr && readdir(folder) != nullptr)
    {
        ++count;
    }
    closedir(folder);
    return count;
}

// Two by two: blue, green; red, white above.
BmpFile SampleOf24Bits()
{
    BmpFile file;
    file.width = 2;
    file.height = 2;
    file.dotsPerMetre = 2835;  // 72 dots per inch
    file.pixels = {255, 0, 0, 0, 255, 0, 0, 0, 0, 0, 255, 255, 255, 255, 0, 0};
    return file;
}

// Three by one: colours 2, 1, 15.
BmpFile SampleOf4Bits()
{
    BmpFile file;
    file.width = 3;
    file.height = 1;
    file.bitCount = 4;
    file.behindHeader = Bytes(64, 0);
    const Bytes colors = {0, 0, 0, 0, 255, 255, 255, 0, 0x10, 0x80, 0xF0, 0};
    std::copy(colors.begin(), colors.end(), file.behindHeader.begin());
    file.pixels = {0x21, 0xF0, 0, 0};
    return file;
}

BmpFile SampleOf8Bits()
{
    BmpFile file;
    file.width = 2;
    file.height = 1;
    file.bitCount = 8;
    file.behindHeader = Bytes(1024, 0);
    const Bytes colors = {0, 0, 0, 0, 255, 255, 255, 0, 0x10, 0x80, 0xF0, 0};
    std::copy(colors.begin(), colors.end(), file.behindHeader.begin());
    file.pixels = {2, 1, 0, 0};
    return file;
}

TEST(MemoryMappedDIB, ANewBitmapHoldsOnlyADeviceContext)
{
    const Dib dib;
    EXPECT_EQ(dib.bitCount, 0);
    EXPECT_NE(dib.memoryDC, nullptr);
    EXPECT_EQ(dib.previousBitmap, nullptr);
    EXPECT_EQ(dib.dibSection, nullptr);
    EXPECT_EQ(dib.width, 0);
    EXPECT_EQ(dib.height, 0);
    EXPECT_EQ(dib.horizontalResolution, 0);
    EXPECT_EQ(dib.verticalResolution, 0);
    EXPECT_EQ(dib.GetDIBBits(), nullptr);
    EXPECT_EQ(dib.GetDIBInfo(), nullptr);
    EXPECT_EQ(dib.dibInfoSize, 0U);
    EXPECT_TRUE(dib.filename.IsEmpty());
    EXPECT_EQ(dib.mappedFromFile, 0);
    EXPECT_EQ(dib.fileSize, 0U);
    EXPECT_EQ(dib.bitsOffset, 0U);
    EXPECT_EQ(dib.globalHandle, nullptr);
    EXPECT_TRUE(dib.HoldsNoFile());
}

TEST(MemoryMappedDIB, AFileIsUsedInPlace)
{
    const TemporaryFile file("open24.bmp", SampleOf24Bits().File());
    Dib dib;
    EXPECT_EQ(dib.Open(file.Path()), 1);
    EXPECT_EQ(dib.filename, file.Path());
    EXPECT_EQ(dib.width, 2);
    EXPECT_EQ(dib.GetDIBWidth(), 2);
    EXPECT_EQ(dib.height, 2);
    EXPECT_EQ(dib.bitCount, 24);
    EXPECT_EQ(dib.dibInfoSize, 40U);
    EXPECT_EQ(dib.mappedFromFile, 1);
    EXPECT_EQ(dib.dibSection, nullptr);
    BYTE* const view = static_cast<BYTE*>(dib.mappedView);
    EXPECT_EQ(static_cast<void*>(dib.GetDIBInfo()), view + 14);
    EXPECT_EQ(dib.GetDIBBits(), view + 54);
    EXPECT_EQ(dib.fileBits, view + 54);
    EXPECT_EQ(static_cast<void*>(dib.fileHeader), view);
    const LONG dotsPerMetre = dib.GetDIBInfo()->bmiHeader.biXPelsPerMeter;  // at an odd place
    EXPECT_EQ(dotsPerMetre, 2835);
    EXPECT_EQ(dib.Pixels(0, 6), (Values{255, 0, 0, 0, 255, 0}));
    EXPECT_EQ(dib.CopyBits(), 0);            // they are the file's already
    EXPECT_EQ(dib.GetGlobalDIB(), nullptr);  // only bitmaps of its own are packed
}

TEST(MemoryMappedDIB, ClosingLeavesNothingThatPointsIntoTheFile)
{
    const TemporaryFile file("close.bmp", SampleOf24Bits().File());
    const int before = CountOpenFiles();
    Dib dib;
    EXPECT_EQ(dib.Close(), 0);
    EXPECT_EQ(dib.Open(file.Path()), 1);
    EXPECT_GT(CountOpenFiles(), before);
    EXPECT_EQ(dib.Close(), 1);
    EXPECT_EQ(CountOpenFiles(), before);
    EXPECT_TRUE(dib.HoldsNoFile());
    EXPECT_EQ(dib.GetDIBInfo(), nullptr);
    EXPECT_EQ(dib.GetDIBBits(), nullptr);
    EXPECT_EQ(dib.mappedFromFile, 0);
    EXPECT_EQ(dib.Close(), 0);
}

TEST(MemoryMappedDIB, OpeningClosesTheOpenFile)
{
    const TemporaryFile first("first.bmp", SampleOf24Bits().File());
    const TemporaryFile second("second.bmp", SampleOf8Bits().File());
    const int before = CountOpenFiles();
    Dib dib;
    EXPECT_EQ(dib.Open(first.Path()), 1);
    const int open = CountOpenFiles();
    EXPECT_EQ(dib.Open(second.Path()), 1);
    EXPECT_EQ(CountOpenFiles(), open);
    EXPECT_EQ(dib.bitCount, 8);
    EXPECT_EQ(dib.Open(CString()), 2);
    EXPECT_EQ(CountOpenFiles(), before);
    EXPECT_EQ(dib.GetDIBInfo(), nullptr);
}

TEST(MemoryMappedDIB, AFileWithoutTheMarkReturns3AndLeavesNothingOpen)
{
    const TemporaryFile words("words3.bmp", std::string(100, 'w'));
    const TemporaryFile onlyM("onlym.bmp", std::string("MB") + std::string(100, 'w'));
    const TemporaryFile oneByte("onebyte.bmp", std::string("B"));
    const int before = CountOpenFiles();
    Dib dib;
    for (const TemporaryFile* file : {&words, &onlyM, &oneByte})
    {
        EXPECT_EQ(dib.Open(file->Path()), 3);
        EXPECT_TRUE(dib.HoldsNoFile());
        EXPECT_EQ(dib.GetDIBInfo(), nullptr);
        EXPECT_EQ(dib.OpenAsTrueColor(file->Path()), 3);
    }
    EXPECT_EQ(CountOpenFiles(), before);
}

TEST(MemoryMappedDIB, NoNameReturns2)
{
    Dib dib;
    EXPECT_EQ(dib.Open(CString()), 2);
    EXPECT_EQ(dib.OpenAsTrueColor(CString()), 2);
}

TEST(MemoryMappedDIB, AFileThatCannotBeOpenedOrMappedReturns4)
{
    const TemporaryFile empty("empty4.bmp", std::string());
    Dib dib;
    EXPECT_EQ(dib.Open("no/such/file.bmp"), 4);
    EXPECT_EQ(dib.Open(testing::TempDir()), 4);
    EXPECT_EQ(dib.OpenAsTrueColor("no/such/file.bmp"), 4);
    EXPECT_EQ(dib.OpenAsTrueColor(empty.Path()), 4);
    EXPECT_EQ(dib.Open(empty.Path()), 4);
    EXPECT_NE(dib.fileHandle, nullptr);  // stays open until it is closed
    EXPECT_EQ(dib.mappingHandle, nullptr);
    EXPECT_EQ(dib.Close(), 0);
    EXPECT_EQ(dib.fileHandle, nullptr);
}

TEST(MemoryMappedDIB, AFileThatContradictsItselfReturns4)
{
    const auto status = [](const Bytes& bytes) {
        const TemporaryFile file("contradiction.bmp", bytes);
        Dib dib;
        const int inPlace = dib.Open(file.Path());
        EXPECT_EQ(dib.OpenAsTrueColor(file.Path()), inPlace);
        EXPECT_EQ(dib.dibSection == nullptr, inPlace != 1);
        return inPlace;
    };
    const auto changed = [](auto change) {
        BmpFile file = SampleOf24Bits();
        change(file);
        return file.File();
    };
    EXPECT_EQ(status(SampleOf24Bits().File()), 1);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.bitsOffset = 55; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.bitsOffset = 0xFFFFFFFF; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.bitsOffset = 13; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.pixels.pop_back(); })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.width = 0; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.width = -2; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.height = 0; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.height = -2147483647 - 1; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.width = file.height = 0x7FFFFFFF; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.width = 0x40000000; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.bitCount = 2; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.bitCount = 0; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.planes = 3; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.headerSize = 12; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.headerSize = 0xFFFFFFFF; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.colorsUsed = 5; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.colorsUsed = 0x40000000; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.compression = 4; })), 4);
    EXPECT_EQ(status(changed([](BmpFile& file) { file.compression = BI_RLE8; })), 4);
    // A colour table that is not there.
    EXPECT_EQ(status(changed([](BmpFile& file) { file.bitCount = 8; })), 4);
}

TEST(MemoryMappedDIB, ARefusalSaysWhyUntilAFileIsOpened)
{
    Dib dib;
    EXPECT_EQ(dib.GetRefusal(), "");
    EXPECT_EQ(dib.Open(""), 2);
    EXPECT_EQ(dib.GetRefusal(), "the name of the file is empty");
    const TemporaryFile text("refused.bmp", std::string("text"));
    EXPECT_EQ(dib.OpenAsTrueColor(text.Path()), 3);
    EXPECT_EQ(dib.GetRefusal(), "byte 0: found 74 65, expected 42 4D (BM)");
    const TemporaryFile good("good.bmp", SampleOf24Bits().File());
    EXPECT_EQ(dib.OpenAsTrueColor(good.Path()), 1);
    EXPECT_EQ(dib.GetRefusal(), "");
    EXPECT_EQ(dib.Open("no/such/file.bmp"), 4);
    EXPECT_NE(dib.GetRefusal().find("No such file"), std::string::npos);
    EXPECT_EQ(dib.Open(good.Path()), 1);
    EXPECT_EQ(dib.GetRefusal(), "");
}

TEST(MemoryMappedDIB, EveryTruncationIsRefused)
{
    const Bytes whole = SampleOf4Bits().File();
    for (std::size_t length = 1; length < whole.size(); ++length)
    {
        const TemporaryFile file("truncated.bmp", Bytes(whole.begin(), whole.begin() + length));
        Dib dib;
        EXPECT_EQ(dib.Open(file.Path()), length < 2 ? 3 : 4) << length;
    }
}

TEST(MemoryMappedDIB, AFewPackedBytesMakeNoGigabytes)
{
    BmpFile file = SampleOf8Bits();
    file.compression = BI_RLE8;
    file.width = file.height = 30000;
    file.pixels = {0, 1, 0, 0};
    const TemporaryFile packed("bomb.bmp", file.File());
    Dib dib;
    EXPECT_EQ(dib.OpenAsTrueColor(packed.Path()), 4);
    file.width = file.height = 300;
    const TemporaryFile small("small.bmp", file.File());
    EXPECT_EQ(dib.OpenAsTrueColor(small.Path()), 1);
    EXPECT_EQ(dib.Pixels(0, 3), (Values{0, 0, 0}));
}

TEST(MemoryMappedDIB, AnEightBitFileThatCountsNoColoursReportsJustItsHeader)
{
    const TemporaryFile file("count0.bmp", SampleOf8Bits().File());
    Dib dib;
    EXPECT_EQ(dib.Open(file.Path()), 1);
    EXPECT_EQ(dib.dibInfoSize, 40U);
    BmpFile counted = SampleOf8Bits();
    counted.colorsUsed = 256;
    const TemporaryFile other("count256.bmp", counted.File());
    EXPECT_EQ(dib.Open(other.Path()), 1);
    EXPECT_EQ(dib.dibInfoSize, 1064U);
}

TEST(MemoryMappedDIB, AFourBitFileBecomesATrueColourBitmapOfTheSameSize)
{
    BmpFile sample = SampleOf4Bits();
    sample.dotsPerMetre = 2835;
    const TemporaryFile file("true4.bmp", sample.File());
    const int before = CountOpenFiles();
    Dib dib;
    EXPECT_EQ(dib.OpenAsTrueColor(file.Path()), 1);
    EXPECT_EQ(CountOpenFiles(), before);
    EXPECT_TRUE(dib.HoldsNoFile());
    EXPECT_TRUE(dib.filename.IsEmpty());
    EXPECT_EQ(dib.mappedFromFile, 0);
    EXPECT_EQ(dib.width, 3);
    EXPECT_EQ(dib.height, 1);
    EXPECT_EQ(dib.bitCount, 24);
    EXPECT_EQ(dib.horizontalResolution, 72);
    EXPECT_EQ(dib.verticalResolution, 72);
    DIBSECTION section{};
    EXPECT_NE(GetObjectA(dib.dibSection, sizeof section, &section), 0);
    EXPECT_EQ(section.dsBm.bmBitsPixel, 24);
    EXPECT_EQ(section.dsBm.bmWidth, 3);
    EXPECT_EQ(dib.Pixels(0, 9), (Values{0x10, 0x80, 0xF0, 255, 255, 255, 0, 0, 0}));
}

TEST(MemoryMappedDIB, EveryDepthBecomesTrueColour)
{
    const auto converted = [](const BmpFile& file) {
        const TemporaryFile temporary("depth.bmp", file.File());
        Dib dib;
        EXPECT_EQ(dib.OpenAsTrueColor(temporary.Path()), 1);
        return dib.GetDIBBits() == nullptr ? Values{} : dib.Pixels(0, 3);
    };
    BmpFile one;
    one.width = one.height = 1;
    one.bitCount = 1;
    one.behindHeader = {1, 2, 3, 0, 4, 5, 6, 0};
    one.pixels = {0x80, 0, 0, 0};
    EXPECT_EQ(converted(one), (Values{4, 5, 6}));
    EXPECT_EQ(converted(SampleOf8Bits()), (Values{0x10, 0x80, 0xF0}));
    BmpFile sixteen;
    sixteen.width = sixteen.height = 1;
    sixteen.bitCount = 16;
    sixteen.pixels = {0x1F, 0, 0, 0};
    EXPECT_EQ(converted(sixteen), (Values{255, 0, 0}));
    sixteen.compression = BI_BITFIELDS;
    sixteen.behindHeader = {0x1F, 0, 0, 0, 0xE0, 0x07, 0, 0, 0, 0xF8, 0, 0};
    EXPECT_EQ(converted(sixteen), (Values{0, 0, 255}));
    EXPECT_EQ(converted(SampleOf24Bits()), (Values{255, 0, 0}));
    BmpFile thirtyTwo;
    thirtyTwo.width = thirtyTwo.height = 1;
    thirtyTwo.bitCount = 32;
    thirtyTwo.pixels = {7, 8, 9, 0};
    EXPECT_EQ(converted(thirtyTwo), (Values{7, 8, 9}));
    BmpFile packed = SampleOf8Bits();
    packed.compression = BI_RLE8;
    packed.pixels = {2, 2, 0, 1};
    EXPECT_EQ(converted(packed), (Values{0x10, 0x80, 0xF0}));
    packed = SampleOf4Bits();
    packed.compression = BI_RLE4;
    packed.pixels = {3, 0x12, 0, 1};
    EXPECT_EQ(converted(packed), (Values{255, 255, 255}));
}

TEST(MemoryMappedDIB, ATopDownFileIsTurnedWhenItIsConverted)
{
    BmpFile file = SampleOf24Bits();
    file.height = -2;
    const TemporaryFile temporary("topdown.bmp", file.File());
    Dib dib;
    EXPECT_EQ(dib.Open(temporary.Path()), 1);
    EXPECT_EQ(dib.height, -2);
    EXPECT_EQ(dib.OpenAsTrueColor(temporary.Path()), 1);
    EXPECT_EQ(dib.height, 2);
    EXPECT_EQ(dib.Pixels(0, 3), (Values{0, 0, 255}));
    EXPECT_EQ(dib.Pixels(8, 3), (Values{255, 0, 0}));
}

TEST(MemoryMappedDIB, TheNearestColourIsFoundInTheFilesTable)
{
    const TemporaryFile file("nearest.bmp", SampleOf8Bits().File());
    Dib dib;
    EXPECT_EQ(dib.Open(file.Path()), 1);
    ColorVector color(0xE0 / 255.0f, 0x70 / 255.0f, 0x20 / 255.0f, 0.5f);
    EXPECT_EQ(dib.FindNearestColor(&color), 2);
    EXPECT_EQ(color.GetColorRef(), 0x1080F0UL);
    EXPECT_EQ(color.alpha, 0.5f);
    ColorVector dark(0, 0, 0, 1);
    EXPECT_EQ(dib.FindNearestColor(&dark), 0);  // the first of 254 black entries
}

TEST(MemoryMappedDIB, WithoutATableTheColourIsRounded)
{
    const TemporaryFile file("notable.bmp", SampleOf24Bits().File());
    Dib dib;
    EXPECT_EQ(dib.Open(file.Path()), 1);
    ColorVector color(0.5f, 1, 0, 0.25f);
    const unsigned long rounded = color.GetColorRef();
    EXPECT_EQ(dib.FindNearestColor(&color), -1);
    EXPECT_EQ(color.red, static_cast<float>(rounded & 0xFF) * 0.003921569f);
    EXPECT_EQ(color.alpha, 0.25f);
}

TEST(MemoryMappedDIB, APipeIsRefusedWithoutWaitingForItsOtherEnd)
{
    const TemporaryName pipe("pipe.bmp");
    ASSERT_EQ(mkfifo(pipe.Path(), 0600), 0);
    Dib dib;
    EXPECT_EQ(dib.Open(pipe.Path()), 4);
    EXPECT_EQ(dib.OpenAsTrueColor("/dev/null"), 4);
}

}  // namespace
