// SPDX-License-Identifier: MIT
#include "studio/HdrFile.h"

#include "orvane/Error.h"
#include "platform/Limits.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

using orvane::LightMap;

const std::string header = "#?RADIANCE\nFORMAT=32-bit_rle_rgbe\n\n";

class HdrFile : public testing::Test
{
protected:
    LightMap Read(const std::string& bytes)
    {
        folder.Write("x.hdr", bytes);
        return orvane::ReadHdrFile(folder.Path("x.hdr"));
    }
    std::string ProblemOf(const std::string& bytes)
    {
        try
        {
            Read(bytes);
        }
        catch (const orvane::Error& error)
        {
            const std::string text = error.what();
            return text.substr(text.find("x.hdr") + 5);
        }
        return "none";
    }

    ToolFolder folder;
};

/// A pixel of a grey of (number + 1/2) / 256 * 2 ^ exponent.
std::string Grey(char number, int exponent = 0)
{
    return {number, number, number, static_cast<char>(exponent + 128)};
}

TEST_F(HdrFile, PlainPixelsAreMantissasWithACommonExponent)
{
    const LightMap map = Read(header + "-Y 1 +X 2\n" + "\x80\x40\x01\x81" + std::string(4, '\0'));
    ASSERT_EQ(map.width, 2);
    ASSERT_EQ(map.height, 1);
    EXPECT_EQ(map.pixels[0], (orvane::Light{128.5f / 128, 64.5f / 128, 1.5f / 128}));
    EXPECT_EQ(map.pixels[1], (orvane::Light{0, 0, 0}));
}

TEST_F(HdrFile, RowsOfEightPixelsAndMoreCanBePacked)
{
    // Each component: a run of 5 times 9, then 1, 2 and 3.
    const std::string component = std::string("\x85\x09\x03\x01\x02\x03", 6);
    const std::string exponents = std::string("\x88\x88", 2);
    const LightMap map = Read(header + "-Y 1 +X 8\n" + std::string("\x02\x02\x00\x08", 4) +
                              component + component + component + exponents);
    ASSERT_EQ(map.width, 8);
    for (const int x : {0, 4})
    {
        EXPECT_EQ(map.pixels[static_cast<std::size_t>(x)][0], 9.5f);
    }
    EXPECT_EQ(map.pixels[5][1], 1.5f);
    EXPECT_EQ(map.pixels[7][2], 3.5f);
}

TEST_F(HdrFile, ALargePictureBecomesTheMeanOfItsPixels)
{
    std::string bytes = header + "-Y 512 +X 1024\n";
    for (int i = 0; i < 512 * 1024; ++i)
    {
        bytes += Grey(i % 2 == 0 ? 0 : 63, 2);
    }
    const LightMap map = Read(bytes);
    EXPECT_EQ(map.width, 512);
    EXPECT_EQ(map.height, 256);
    EXPECT_EQ(map.pixels[77][0], 32.0f / 64);  // of 0.5 / 64 and 63.5 / 64
}

TEST_F(HdrFile, OtherFilesAndDamagedOnesAreRefused)
{
    EXPECT_EQ(ProblemOf(""), ": byte 0: found the end of the file, expected more of the picture");
    EXPECT_EQ(ProblemOf("BM"),
              ": byte 1: found another beginning, expected #? of a Radiance picture (.hdr)");
    EXPECT_EQ(ProblemOf("#?RGBE\nFORMAT=32-bit_rle_xyze\n\n"),
              ": byte 30: found FORMAT=32-bit_rle_xyze, expected FORMAT=32-bit_rle_rgbe");
    EXPECT_EQ(ProblemOf(header + "+Y 2 +X 2\n"),
              ": byte 45: found \"+Y 2 +X 2\", expected -Y HEIGHT +X WIDTH");
    EXPECT_EQ(ProblemOf(header + "-Y 0 +X 2\n"),
              ": byte 45: found the size \"0 +X 2\", expected numbers from 1 on");
    EXPECT_EQ(ProblemOf(header + "-Y 2 +X 2\n" + Grey(1)),
              ": byte 49: found the end of the file, expected more of the picture");
    EXPECT_EQ(ProblemOf(header + "-Y 1 +X 8\n" + std::string("\x02\x02\x00\x09", 4)),
              ": byte 49: found a row of 9 pixels, expected 8");
    EXPECT_EQ(ProblemOf(header + "-Y 1 +X 8\n" + std::string("\x02\x02\x00\x08\x89\x01", 6)),
              ": byte 50: found a run of 9 pixels, expected 1 to 8, the rest of the row");
    EXPECT_EQ(ProblemOf("#?" + std::string(2000, 'x')),
              ": byte 1003: found a line of more than 1000 bytes, expected a header of a picture");
    std::string lines = "#?RGBE\n";
    for (int i = 0; i < 1001; ++i)
    {
        lines += "x\n";
    }
    EXPECT_EQ(ProblemOf(lines),
              ": byte 2009: found a header of more than 1000 lines, expected a shorter header");
    EXPECT_THROW(orvane::ReadHdrFile(folder.Path("missing.hdr")), orvane::Error);
}

TEST_F(HdrFile, APictureHasAtMost128MiPixels)
{
    static_assert(orvane::limits::maxEnvironmentPixels == 16384 * 8192);
    // As many are taken: what is missing are the pixels.
    EXPECT_EQ(ProblemOf(header + "-Y 8192 +X 16384\n"),
              ": byte 52: found the end of the file, expected more of the picture");
    for (const std::string size : {"-Y 8193 +X 16384", "-Y 1 +X 16385"})
    {
        const std::string problem = ProblemOf(header + size + "\n");
        EXPECT_NE(problem.find("expected rows of at most 16384 pixels and 134217728 pixels in all"),
                  std::string::npos)
            << problem;
    }
}

}  // namespace
