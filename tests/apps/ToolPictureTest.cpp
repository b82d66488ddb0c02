// SPDX-License-Identifier: MIT
// What the tool's pictures show.

#include "tests/support/DecodedPicture.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

namespace
{

/// Draws a text and reads the picture back.
DecodedPicture Draw(const std::vector<std::string>& arguments)
{
    ToolFolder folder;
    std::vector<std::string> command = {"render", "-o", "x.png", "--size", "320x180"};
    if (std::find(arguments.begin(), arguments.end(), "--size") != arguments.end())
    {
        command.resize(3);
    }
    command.insert(command.end(), arguments.begin(), arguments.end());
    const ToolResult result = folder.Run(command);
    EXPECT_EQ(result.status, 0) << result.err;
    return DecodePng(folder.Read("x.png"));
}

/// Draws with a face in red, edges in green and bevels in blue on dark grey.
DecodedPicture DrawInColours(std::vector<std::string> arguments)
{
    arguments.insert(arguments.end(), {"--face-color", "#ff0000", "--edge-color", "#00ff00",
                                       "--bevel-color", "#0000ff", "--background", "#202020"});
    return Draw(arguments);
}

bool IsRed(const Rgb& p)
{
    return p.red > 2 * p.green && p.red > 2 * p.blue && p.red > 0x48;
}
bool IsGreen(const Rgb& p)
{
    return p.green > 2 * p.red && p.green > 2 * p.blue && p.green > 0x48;
}
bool IsBlue(const Rgb& p)
{
    return p.blue > 2 * p.red && p.blue > 2 * p.green && p.blue > 0x48;
}
bool IsBackground(const Rgb& p)
{
    return p == Rgb{0x20, 0x20, 0x20};
}

TEST(ToolPicture, TheSizeIsAsAskedAnd1280By720Unasked)
{
    ToolFolder folder;
    EXPECT_EQ(folder.Run({"render", "x", "-o", "x.png"}).status, 0);
    const DecodedPicture unasked = DecodePng(folder.Read("x.png"));
    EXPECT_EQ(unasked.width, 1280);
    EXPECT_EQ(unasked.height, 720);
    for (const auto& [width, height] : {std::pair(1, 1), {3, 200}, {16384, 1}, {2049, 33}})
    {
        const DecodedPicture picture =
            Draw({"x", "--size", std::to_string(width) + "x" + std::to_string(height)});
        EXPECT_EQ(picture.width, width);
        EXPECT_EQ(picture.height, height);
    }
}

TEST(ToolPicture, BackgroundFaceEdgeAndBevelHaveTheirColours)
{
    for (const char* const style : {"bevel", "round"})
    {
        const DecodedPicture picture = DrawInColours({"HO", "--style", style});
        EXPECT_GT(picture.Count(IsBackground), 10000u) << style;
        EXPECT_GT(picture.Count(IsRed), 3000u) << style;
        EXPECT_GT(picture.Count(IsGreen), 1000u) << style;
        EXPECT_GT(picture.Count(IsBlue), 500u) << style;
    }
}

TEST(ToolPicture, SquareEdgesHaveNoBevels)
{
    const DecodedPicture picture = DrawInColours({"HO", "--style", "square"});
    EXPECT_GT(picture.Count(IsRed), 3000u);
    EXPECT_GT(picture.Count(IsGreen), 1000u);
    EXPECT_EQ(picture.Count(IsBlue), 0u);
}

TEST(ToolPicture, BevelsAreOnTheFacesThatAreNamed)
{
    // A bevel's slopes to the four sides are lit differently. A face without one has a flat rim, as
    // wide as the bevel behind it and lit alike everywhere.
    const auto isSloped = [](const char* where, const char* turn) {
        const DecodedPicture picture =
            DrawInColours({"H", "--bevel-on", where, "--turn", turn, "--bevel", "0.1"});
        int darkest = 255;
        int brightest = 0;
        for (const Rgb& pixel : picture.pixels)
        {
            // What is mixed with its neighbours does not count.
            if (pixel.red == 0 && pixel.green == 0)
            {
                darkest = std::min(darkest, pixel.blue);
                brightest = std::max(brightest, pixel.blue);
            }
        }
        return brightest - darkest > 40;
    };
    EXPECT_TRUE(isSloped("front", "0,0,0"));
    EXPECT_TRUE(isSloped("both", "0,0,0"));
    EXPECT_FALSE(isSloped("back", "0,0,0"));
    EXPECT_TRUE(isSloped("back", "0,180,0"));
    EXPECT_TRUE(isSloped("both", "0,180,0"));
    EXPECT_FALSE(isSloped("front", "0,180,0"));
}

TEST(ToolPicture, TheTextIsFramedInTheMiddleWithAMargin)
{
    for (const char* const turn :
         {"0,0,0", "10,22,0", "20,60,0", "-30,-40,10", "15,160,0", "0,90,0", "90,0,0", "0,0,90"})
    {
        for (const std::vector<std::string>& text :
             {std::vector<std::string>{"Rag&8"}, {"W"}, {"One", "longer line", "j"}})
        {
            std::vector<std::string> arguments = {"--turn", turn};
            arguments.insert(arguments.end(), text.begin(), text.end());
            const PixelBox box = BoxOfContent(Draw(arguments));
            const std::string which = text.front() + " " + turn;
            EXPECT_GE(box.left, 320 * 0.05) << which;
            EXPECT_LE(box.right, 320 * 0.95) << which;
            EXPECT_GE(box.top, 180 * 0.05) << which;
            EXPECT_LE(box.bottom, 180 * 0.95) << which;
            // The boxes around letters are looser than they when turned, but not by much.
            EXPECT_TRUE(box.Width() > 320 * 0.5 || box.Height() > 180 * 0.5) << which;
            EXPECT_NEAR((box.left + box.right) / 2.0, 160, 320 * 0.1) << which;
            EXPECT_NEAR((box.top + box.bottom) / 2.0, 90, 180 * 0.1) << which;
        }
    }
}

TEST(ToolPicture, TurnsAreRightHandedAboutEachAxis)
{
    const auto box = [](const char* turn) {
        return BoxOfContent(
            Draw({"L", "--style", "square", "--turn", turn, "--size", "300x300", "--depth", "0"}));
    };
    EXPECT_GT(box("0,0,0").Height(), box("0,0,0").Width());
    EXPECT_GT(box("0,0,90").Width(), box("0,0,90").Height());
    // Turned by 90 degrees about z the stem lies at the bottom and the foot at the right.
    const DecodedPicture lying =
        Draw({"L", "--style", "square", "--turn", "0,0,90", "--size", "300x300", "--depth", "0"});
    const PixelBox whole = BoxOfContent(lying);
    const PixelBox top = BoxOfContent(lying, whole.top, whole.top + 5);
    EXPECT_GT(top.left, 150);
    // By a positive angle about y the left side comes nearer, about x the upper one.
    const DecodedPicture aboutY = Draw({"HH", "--turn", "0,50,0", "--size", "400x200"});
    const PixelBox text = BoxOfContent(aboutY);
    const auto heightAt = [&aboutY](int x) {
        int count = 0;
        for (int y = 0; y < aboutY.height; ++y)
        {
            count += aboutY.At(x, y) == aboutY.pixels.front() ? 0 : 1;
        }
        return count;
    };
    EXPECT_GT(heightAt(text.left + 3), heightAt(text.right - 3));
    const DecodedPicture aboutX = Draw({"I", "--turn", "50,0,0", "--size", "200x200"});
    const PixelBox tilted = BoxOfContent(aboutX);
    EXPECT_GT(BoxOfContent(aboutX, tilted.top, tilted.top + 20).Width(),
              BoxOfContent(aboutX, tilted.bottom - 20, tilted.bottom).Width());
}

TEST(ToolPicture, LinesAreAlignedAsAsked)
{
    const auto secondLine = [](const char* align) {
        const DecodedPicture picture = Draw({"MMMM", "I", "--align", align, "--turn", "0,0,0"});
        const PixelBox whole = BoxOfContent(picture);
        const PixelBox line =
            BoxOfContent(picture, (whole.top + whole.bottom) * 5 / 8, whole.bottom);
        EXPECT_LT(line.Width(), whole.Width() / 3) << align;
        return ((line.left + line.right) / 2.0 - whole.left) / whole.Width();
    };
    EXPECT_LT(secondLine("left"), 0.25);
    EXPECT_NEAR(secondLine("center"), 0.5, 0.05);
    EXPECT_GT(secondLine("right"), 0.75);
}

TEST(ToolPicture, SpacingSetsCharactersAndLinesApart)
{
    const auto shape = [](const std::vector<std::string>& spacing) {
        std::vector<std::string> arguments = {"HH", "HH", "--turn", "0,0,0", "--style", "square"};
        arguments.insert(arguments.end(), spacing.begin(), spacing.end());
        const PixelBox box = BoxOfContent(Draw(arguments));
        return double(box.Width()) / box.Height();
    };
    const double plain = shape({});
    EXPECT_NEAR(shape({"--char-spacing", "0"}), plain, 1e-9);
    EXPECT_GT(shape({"--char-spacing", "1"}), plain * 1.3);
    EXPECT_LT(shape({"--char-spacing", "-0.2"}), plain * 0.95);
    EXPECT_LT(shape({"--line-spacing", "1"}), plain * 0.75);
    EXPECT_GT(shape({"--line-spacing", "-0.2"}), plain * 1.05);
}

TEST(ToolPicture, WithoutDepthThereAreFacesOnly)
{
    const DecodedPicture picture = DrawInColours({"HO", "--depth", "0"});
    EXPECT_GT(picture.Count(IsRed), 3000u);
    EXPECT_EQ(picture.Count(IsGreen), 0u);
    EXPECT_EQ(picture.Count(IsBlue), 0u);
}

TEST(ToolPicture, ABevelWiderThanTheDepthAllowsIsCutToIt)
{
    const DecodedPicture both = Draw({"H", "--bevel", "0.1", "--depth", "0.2"});
    EXPECT_EQ(Draw({"H", "--bevel", "99", "--depth", "0.2"}), both);
    EXPECT_NE(Draw({"H", "--bevel", "0.05", "--depth", "0.2"}), both);
    const std::vector<std::string> front = {"H", "--depth", "0.2", "--bevel-on", "front"};
    std::vector<std::string> whole = front;
    whole.insert(whole.end(), {"--bevel", "0.2"});
    std::vector<std::string> more = front;
    more.insert(more.end(), {"--bevel", "50"});
    EXPECT_EQ(Draw(more), Draw(whole));
}

TEST(ToolPicture, AnOutlineIsWiresInTheFacesColour)
{
    for (const char* const style : {"square", "bevel", "round"})
    {
        const DecodedPicture solid = DrawInColours({"HO", "--style", style});
        const DecodedPicture wires = DrawInColours({"HO", "--style", style, "--outline"});
        EXPECT_LT(wires.Count(IsBackground), 320u * 180u - 1000u);
        EXPECT_GT(wires.Count(IsBackground), solid.Count(IsBackground));
        EXPECT_GT(wires.Count(IsRed), 300u);  // which means that they can be seen
        EXPECT_EQ(wires.Count(IsGreen), 0u);
        EXPECT_EQ(wires.Count(IsBlue), 0u);
    }
}

TEST(ToolPicture, ATransparentFaceLetsTheBackgroundThroughOnce)
{
    // Seen from the front the middle of an I's stem is face alone, whatever lies behind.
    const auto middle = [](const char* face) {
        const DecodedPicture picture = Draw({"I", "--turn", "0,0,0", "--style", "square",
                                             "--face-color", face, "--background", "#0000ff"});
        return picture.At(160, 90);
    };
    const Rgb opaque = middle("#800000");
    const Rgb half = middle("#80000080");
    EXPECT_NEAR(half.red, opaque.red / 2, 4);
    EXPECT_NEAR(half.blue, 127 + opaque.blue / 2, 4);
    EXPECT_EQ(middle("#80000000").blue, 255);
}

TEST(ToolPicture, BandsJoinWithoutASeam)
{
    // With four samples a band is 512 pixels wide, with two 1024.
    const DecodedPicture four =
        Draw({"Bands join here", "--size", "1000x120", "--samples", "4", "--turn", "0,0,0"});
    const DecodedPicture two =
        Draw({"Bands join here", "--size", "1000x120", "--samples", "2", "--turn", "0,0,0"});
    const auto difference = [&](int first, int last) {
        double sum = 0;
        for (int x = first; x <= last; ++x)
        {
            for (int y = 0; y < four.height; ++y)
            {
                sum += std::abs(four.At(x, y).red - two.At(x, y).red);
            }
        }
        return sum / ((last - first + 1) * four.height);
    };
    EXPECT_LT(difference(0, 999), 3);
    EXPECT_LT(difference(508, 515), 8);
}

TEST(ToolPicture, EdgesAreSmooth)
{
    const DecodedPicture picture = DrawInColours({"O", "--style", "square", "--turn", "0,0,0"});
    // Between face and background there are mixed pixels all around.
    const std::size_t mixed =
        picture.Count([](const Rgb& p) { return p.red > 0x30 && p.red < 0xC0 && p.green < 0x22; });
    EXPECT_GT(mixed, 150u);
}

TEST(ToolPicture, TheShowcaseHasTheNameAndTheThreeStyles)
{
    ToolFolder folder;
    EXPECT_EQ(folder.Run({"showcase", "-o", "x.png"}).status, 0);
    const DecodedPicture picture = DecodePng(folder.Read("x.png"));
    EXPECT_EQ(picture.width, 1280);
    EXPECT_EQ(picture.height, 720);
    const auto gold = [](const Rgb& p) { return p.red > 190 && p.green > 130 && p.blue < 90; };
    const auto red = [](const Rgb& p) { return p.red > 150 && p.green < 110 && p.blue < 110; };
    const auto blue = [](const Rgb& p) { return p.blue > 170 && p.red < 110; };
    const auto green = [](const Rgb& p) { return p.green > 140 && p.red < 110 && p.blue < 150; };
    EXPECT_GT(picture.Count(gold), 40000u);
    EXPECT_GT(picture.Count(red), 6000u);
    EXPECT_GT(picture.Count(blue), 5000u);
    EXPECT_GT(picture.Count(green), 5000u);
    const PixelBox box = BoxOfContent(picture);
    EXPECT_NEAR((box.left + box.right) / 2.0, 640, 40);
    EXPECT_NEAR((box.top + box.bottom) / 2.0, 360, 40);
}

}  // namespace
