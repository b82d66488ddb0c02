// SPDX-License-Identifier: MIT
// Pictures of any size and depth: what their files say, what they cost, how they are interrupted.

#include "tests/support/DecodedPicture.h"
#include "tests/support/OtherPrograms.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>

namespace
{

#if !defined(__has_feature)
#define __has_feature(feature) 0  // GCC 12 defines macros instead
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) || \
    __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
constexpr bool measuresMemory = false;
#else
constexpr bool measuresMemory = true;
#endif

std::size_t NumberAt(const std::string& bytes, std::size_t at, int count)
{
    std::size_t number = 0;
    for (int i = 0; i < count; ++i)
    {
        number |= std::size_t{static_cast<unsigned char>(bytes.at(at + i))} << (8 * i);
    }
    return number;
}

/// The BMP of a text with that many bits, one sample a pixel.
std::string Bmp(const char* bits, const std::string& size)
{
    ToolFolder folder;
    std::vector<std::string> command = {"render", "Bits", "-o",     "x.bmp",
                                        "--size", size,   "--bits", bits};
    if (std::string(bits) == "24" || std::string(bits) == "32")
    {
        command.insert(command.end(), {"--samples", "1"});
    }
    const ToolResult result = folder.Run(command);
    EXPECT_EQ(result.status, 0) << result.err;
    return folder.Read("x.bmp");
}

// Bands of another depth have another height, and rounding differs.
constexpr std::size_t alongEdges = 8;

/// The mean of a channel over squares of four by four, in which dithering evens out.
std::vector<double> Means(const DecodedPicture& picture, int Rgb::*channel)
{
    std::vector<double> means;
    for (int top = 0; top + 4 <= picture.height; top += 4)
    {
        for (int left = 0; left + 4 <= picture.width; left += 4)
        {
            double sum = 0;
            for (int i = 0; i < 16; ++i)
            {
                sum += picture.At(left + i % 4, top + i / 4).*channel;
            }
            means.push_back(sum / 16);
        }
    }
    return means;
}

double MeanDifference(const DecodedPicture& a, const DecodedPicture& b)
{
    double worst = 0;
    for (int Rgb::*const channel : {&Rgb::red, &Rgb::green, &Rgb::blue})
    {
        const std::vector<double> of = Means(a, channel);
        const std::vector<double> other = Means(b, channel);
        double sum = 0;
        for (std::size_t i = 0; i < of.size(); ++i)
        {
            sum += std::abs(of[i] - other[i]);
        }
        worst = std::max(worst, sum / static_cast<double>(of.size()));
    }
    return worst;
}

TEST(ToolPoster, EveryDepthOfABmpHasThePictureOf24Bits)
{
    // Wider than one band, and no multiple of anything.
    const std::string size = "2101x203";
    const DecodedPicture truth = DecodeBmp(Bmp("24", size));
    ASSERT_EQ(truth.width, 2101);
    ASSERT_EQ(truth.height, 203);
    EXPECT_LE(CountFarther(DecodeBmp(Bmp("32", size)), truth, 1), alongEdges);

    // Five bits a channel are 8.2 levels apart, and dithering takes the one above or below.
    const DecodedPicture five = DecodeBmp(Bmp("16", size));
    EXPECT_LE(CountFarther(five, truth, 9), alongEdges);
    EXPECT_LT(MeanDifference(five, truth), 1.5);
    // Two bits of blue are 85 apart, three of the others 36.4.
    const DecodedPicture eight = DecodeBmp(Bmp("8", size));
    EXPECT_LE(CountFarther(eight, truth, 86), alongEdges);
    EXPECT_LT(MeanDifference(eight, truth), 8);
}

TEST(ToolPoster, OtherProgramsFindThePixelsOfEveryDepth)
{
    int programs = 0;
    for (const PictureReader& reader : pictureReaders)
    {
        if (!IsInstalled(reader))
        {
            continue;
        }
        ++programs;
        for (const char* const bits : {"8", "16", "24", "32"})
        {
            SCOPED_TRACE(std::string(reader.name) + ", " + bits + " bits");
            const std::string bytes = Bmp(bits, "301x77");
            ToolFolder folder;
            folder.Write("x.bmp", bytes);
            const DecodedPicture ours = DecodeBmp(bytes);
            ASSERT_EQ(ours.pixels.size(), 301U * 77U);
            // Five bits become eight by rounding here and by cutting there.
            const int levels = std::string(bits) == "16" ? 1 : 0;
            EXPECT_EQ(CountFarther(ReadByOther(reader, folder.Path("x.bmp")), ours, levels), 0U);
        }
    }
    if (programs == 0)
    {
        FAIL() << "no other program that reads BMP files (packages imagemagick, netpbm)";
    }
}

TEST(ToolPoster, TheHeaderOfABmpDescribesThePicture)
{
    for (const auto& [bits, offset, stride] :
         {std::tuple("8", 1080, 52), {"16", 56, 104}, {"24", 56, 156}, {"32", 56, 204}})
    {
        const std::string bytes = Bmp(bits, "51x7");
        EXPECT_EQ(bytes.size(), std::size_t(offset + 7 * stride)) << bits;
        EXPECT_EQ(NumberAt(bytes, 2, 4), bytes.size()) << bits;
        EXPECT_EQ(NumberAt(bytes, 10, 4), std::size_t(offset)) << bits;
        EXPECT_EQ(NumberAt(bytes, 14, 4), 40u) << bits;
        EXPECT_EQ(NumberAt(bytes, 18, 4), 51u) << bits;
        EXPECT_EQ(NumberAt(bytes, 22, 4), 7u) << bits;
        EXPECT_EQ(NumberAt(bytes, 26, 2), 1u) << bits;
        EXPECT_EQ(NumberAt(bytes, 28, 2), std::size_t(std::atoi(bits))) << bits;
        EXPECT_EQ(NumberAt(bytes, 30, 4), 0u) << bits;
        EXPECT_EQ(NumberAt(bytes, 34, 4), std::size_t(7 * stride)) << bits;
    }
}

TEST(ToolPoster, ThePaletteOf8BitsIsThreeThreeTwo)
{
    const std::string bytes = Bmp("8", "8x8");
    EXPECT_EQ(NumberAt(bytes, 54 + 4 * 255, 4), 0xFFFFFFu);
    EXPECT_EQ(NumberAt(bytes, 54 + 4 * 7, 4), 0xFF0000u);
    EXPECT_EQ(NumberAt(bytes, 54 + 4 * 56, 4), 0x00FF00u);
    EXPECT_EQ(NumberAt(bytes, 54 + 4 * 192, 4), 0x0000FFu);
}

TEST(ToolPoster, EveryPixelOf32BitsIsOpaque)
{
    ToolFolder folder;
    for (const char* const samples : {"1", "2"})
    {
        ASSERT_EQ(folder
                      .Run({"render", "Bits", "-o", "x.bmp", "--size", "160x90", "--bits", "32",
                            "--face-color", "#ff000080", "--samples", samples})
                      .status,
                  0);
        const std::string bytes = folder.Read("x.bmp");
        std::size_t other = 0;
        for (std::size_t at = 56 + 3; at < bytes.size(); at += 4)
        {
            other += bytes[at] == '\xFF' ? 0 : 1;
        }
        EXPECT_EQ(other, 0u) << samples;
    }
}

TEST(ToolPoster, DotsPerInchAreInTheHeader)
{
    // 300 dots per inch are 300 / 0.0254 = 11811.02 dots per metre.
    ToolFolder folder;
    ASSERT_EQ(folder.Run({"render", "x", "--size", "9x9", "-o", "a.bmp", "--dpi", "300"}).status,
              0);
    EXPECT_EQ(NumberAt(folder.Read("a.bmp"), 38, 4), 11811u);
    EXPECT_EQ(NumberAt(folder.Read("a.bmp"), 42, 4), 11811u);
    ASSERT_EQ(folder.Run({"render", "x", "--size", "9x9", "-o", "a.png", "--dpi", "300"}).status,
              0);
    const std::string dots("pHYs\x00\x00\x2e\x23\x00\x00\x2e\x23\x01", 13);
    EXPECT_NE(folder.Read("a.png").find(dots), std::string::npos);

    ASSERT_EQ(folder.Run({"render", "x", "--size", "9x9", "-o", "b.bmp"}).status, 0);
    EXPECT_EQ(NumberAt(folder.Read("b.bmp"), 38, 4), 0u);
    ASSERT_EQ(folder.Run({"render", "x", "--size", "9x9", "-o", "b.png"}).status, 0);
    EXPECT_EQ(folder.Read("b.png").find("pHYs"), std::string::npos);
}

TEST(ToolPoster, ABmpBeyond4GiBIsRefusedBeforeAnythingElseAndPngIsOffered)
{
    ToolFolder folder;
    folder.UseFonts({});  // which would be the next complaint
    // A row is 113,508 bytes: with the head of 56, 37,838 rows are 51,536 bytes less than 4 GiB.
    const ToolResult below = folder.Run({"render", "x", "--size", "37835x37838", "-o", "x.bmp"});
    EXPECT_EQ(below.status, 1);
    EXPECT_NE(below.err.find("font"), std::string::npos) << below.err;
    const ToolResult result = folder.Run({"render", "x", "--size", "37835x37839", "-o", "x.bmp"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("4 GiB"), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("PNG"), std::string::npos) << result.err;
    EXPECT_TRUE(folder.Names().empty());
}

TEST(ToolPoster, APipeTakesNoBmpAndIsOfferedAPng)
{
    ToolFolder folder;
    const ToolResult result =
        folder.RunInShell("ln -s /dev/null x.bmp; exec \"$@\"", {"render", "x", "-o", "x.bmp"});
    EXPECT_EQ(result.status, 1);
    EXPECT_NE(result.err.find("PNG"), std::string::npos) << result.err;
}

TEST(ToolPoster, MemoryDoesNotGrowWithThePicture)
{
    if (!measuresMemory)
    {
        GTEST_SKIP() << "sanitizers keep what is freed";
    }
    // Of 24 bits these have 3 and 75 MB.
    for (const char* const name : {"x.bmp", "x.png"})
    {
        ToolFolder folder;
        const ToolResult small =
            folder.Run({"render", " ", "-o", name, "--size", "1000x1000", "--samples", "1"});
        const ToolResult large =
            folder.Run({"render", " ", "-o", name, "--size", "5000x5000", "--samples", "1"});
        EXPECT_EQ(small.status, 0) << small.err;
        EXPECT_EQ(large.status, 0) << large.err;
        EXPECT_LT(large.peakKiB - small.peakKiB, 40 * 1024) << name;
        EXPECT_LT(large.peakKiB, 300 * 1024) << name;
    }
}

TEST(ToolPoster, AnInterruptionStopsTheWritingAndLeavesNoFile)
{
    for (const char* const name : {"x.png", "x.bmp"})
    {
        SCOPED_TRACE(name);
        ToolFolder folder;
        const ToolResult smaller =
            folder.Run({"render", "Interrupt", "--size", "6000x6000", "-o", name});
        EXPECT_EQ(smaller.status, 0) << smaller.err;
        std::filesystem::remove(folder.Path(name));
        const ToolResult result = folder.InterruptWriting(
            {"render", "Interrupt", "--size", "15000x15000", "-o", name, "--save", "x.orv"},
            SIGINT);
        EXPECT_EQ(result.status, 128 + SIGINT);
        EXPECT_EQ(result.err, "");
        EXPECT_TRUE(folder.Names().empty());
        // The picture has six times the pixels of the smaller one. The signal comes at its first
        // bytes.
        EXPECT_LT(result.writtenBytes, smaller.writtenBytes);
    }
}

}  // namespace
