// SPDX-License-Identifier: MIT
// 3D Studio files in the tool's pictures.

#include "tests/support/Chunks.h"
#include "tests/support/DecodedPicture.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace
{

/// A box with its longest edge along the file's z axis, of one colour.
Bytes Tower(BYTE red, BYTE green, BYTE blue)
{
    const RecordBytes vertices = VertexChunk(
        {0, 0, 0, 10, 0, 0, 10, 10, 0, 0, 10, 0, 0, 0, 40, 10, 0, 40, 10, 10, 40, 0, 10, 40});
    const RecordBytes faces =
        FaceChunk({0, 2, 1, 7, 0, 3, 2, 7, 4, 5, 6, 7, 4, 6, 7, 7, 0, 1, 5, 7, 0, 5, 4, 7,
                   1, 2, 6, 7, 1, 6, 5, 7, 2, 3, 7, 7, 2, 7, 6, 7, 3, 0, 4, 7, 3, 4, 7, 7},
                  {MaterialGroup("paint", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11})});
    return FileOf({MaterialChunk("paint", {DiffuseColor(red, green, blue)}),
                   ObjectChunk("tower", {ChunkOf(0x4100, {vertices, faces})})});
}

class ToolImport : public testing::Test
{
protected:
    ToolImport()
    {
        folder.Write("red.3ds", AsText(Tower(255, 0, 0)));
        folder.Write("blue.3ds", AsText(Tower(0, 0, 255)));
    }

    DecodedPicture Draw(std::vector<std::string> arguments)
    {
        arguments.insert(arguments.begin(), {"render", "-o", "x.png", "--size", "320x200", "--turn",
                                             "0,0,0", "--background", "#000000", "--samples", "1"});
        const ToolResult result = folder.Run(arguments);
        EXPECT_EQ(result.status, 0) << result.err;
        return DecodePng(folder.Read("x.png"));
    }
    std::string Complaint(const std::vector<std::string>& arguments, int status)
    {
        const ToolResult result = folder.Run(arguments);
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.out, "");
        EXPECT_FALSE(folder.Has("x.png"));
        return result.err;
    }

    ToolFolder folder;
};

bool IsRed(const Rgb& pixel)
{
    return pixel.red > 20 && pixel.red > 2 * pixel.blue;
}
bool IsBlue(const Rgb& pixel)
{
    return pixel.blue > 20 && pixel.blue > 2 * pixel.red;
}

/// Around the pixels that are wanted.
template <typename IsWanted>
PixelBox BoxOf(const DecodedPicture& picture, IsWanted isWanted)
{
    PixelBox box{picture.width, picture.height, -1, -1};
    for (int y = 0; y < picture.height; ++y)
    {
        for (int x = 0; x < picture.width; ++x)
        {
            if (isWanted(picture.At(x, y)))
            {
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x),
                       std::max(box.bottom, y)};
            }
        }
    }
    return box;
}

// The picture has 200 rows and a margin of 8 % on the sides that what is seen reaches.
TEST_F(ToolImport, AFileAloneIsDrawnUprightAndWhole)
{
    const DecodedPicture picture = Draw({"--import", "red.3ds"});
    const PixelBox box = BoxOf(picture, IsRed);
    EXPECT_NEAR(box.top, 16, 2);
    EXPECT_NEAR(box.bottom, 183, 2);
    EXPECT_NEAR(box.left + box.right, 319, 2);
    EXPECT_LT(box.Width(), box.Height() / 3);
    EXPECT_GT(picture.Count(IsRed), static_cast<std::size_t>(box.Width() * box.Height() * 8 / 10));
}

// Lit from where the camera stands, a face that looks at it is bright.
TEST_F(ToolImport, TheOutsideIsLit)
{
    const DecodedPicture picture = Draw({"--import", "red.3ds"});
    EXPECT_GT(picture.At(160, 100).red, 0x80);
}

TEST_F(ToolImport, AnotherFileStandsToTheRight)
{
    const DecodedPicture picture = Draw({"--import", "red.3ds", "--import", "blue.3ds"});
    const PixelBox red = BoxOf(picture, IsRed);
    const PixelBox blue = BoxOf(picture, IsBlue);
    EXPECT_LT(red.right, blue.left);
    EXPECT_NEAR(red.Height(), blue.Height(), 3);
    // Both are 2 high and 0.5 wide; between them is 0.5.
    EXPECT_NEAR(blue.left - red.right, red.Width(), 8);
}

TEST_F(ToolImport, OptionsAreForTheImportBeforeThem)
{
    const DecodedPicture picture =
        Draw({"--import", "red.3ds", "--import-size", "1", "--import-at", "2,0,0", "--import",
              "blue.3ds", "--import-at", "-2,0,0", "--import-turn", "0,0,90", "--ortho"});
    const PixelBox red = BoxOf(picture, IsRed);
    const PixelBox blue = BoxOf(picture, IsBlue);
    EXPECT_LT(blue.right, red.left);
    EXPECT_NEAR(red.Height(), 4 * red.Width(), 5);
    EXPECT_NEAR(blue.Width(), 4 * blue.Height(), 5);
    EXPECT_NEAR(blue.Width(), 2 * red.Height(), 5);
    // The middles are 4 apart, and the turned one is 2 long.
    EXPECT_NEAR(red.left + red.right - blue.left - blue.right, 4 * blue.Width(), 12);
}

TEST_F(ToolImport, ASizeOf0KeepsTheUnitsOfTheFile)
{
    const DecodedPicture picture = Draw({"--import", "red.3ds", "--import-size", "0", "--import",
                                         "blue.3ds", "--import-size", "20", "--ortho"});
    const PixelBox red = BoxOf(picture, IsRed);  // 40 high
    EXPECT_NEAR(red.Height(), 2 * BoxOf(picture, IsBlue).Height(), 4);
}

TEST_F(ToolImport, AFileStandsBesideAText)
{
    const DecodedPicture picture = Draw({"HO", "--face-color", "blue", "--edge-color", "blue",
                                         "--bevel-color", "blue", "--import", "red.3ds"});
    const PixelBox red = BoxOf(picture, IsRed);
    const PixelBox blue = BoxOf(picture, IsBlue);
    EXPECT_GT(blue.Width(), 20);
    EXPECT_GT(red.Width(), 5);
    EXPECT_LT(blue.right, red.left);
}

TEST_F(ToolImport, AKeptSceneWithAFileIsDrawnAgainTheSame)
{
    const DecodedPicture first = Draw({"--import", "red.3ds", "--save", "kept.orv"});
    EXPECT_EQ(Draw({"--scene", "kept.orv"}), first);
}

TEST_F(ToolImport, TheSameCommandDrawsTheSameBytes)
{
    Draw({"--import", "red.3ds", "--import", "blue.3ds"});
    const std::string first = folder.Read("x.png");
    Draw({"--import", "red.3ds", "--import", "blue.3ds"});
    EXPECT_EQ(folder.Read("x.png"), first);
}

TEST_F(ToolImport, AFileThatCannotBeImportedIsNamedWithTheReason)
{
    folder.Write("text.3ds", "no chunks here");
    folder.Write("empty.3ds", AsText(FileOf({})));
    const auto complaint = [this](const char* file) {
        return Complaint({"render", "-o", "x.png", "--import", file}, 1);
    };
    EXPECT_NE(complaint("none.3ds").find("none.3ds: there is no such file"), std::string::npos);
    EXPECT_NE(complaint("text.3ds").find("text.3ds: byte 0: found 6E 6F, expected 4D 4D or "),
              std::string::npos);
    folder.Write("nothing.3ds", "");
    EXPECT_NE(complaint("nothing.3ds").find("byte 0: the file is empty, expected 4D 4D or "),
              std::string::npos);
    EXPECT_NE(complaint("empty.3ds").find("empty.3ds: the file contains no mesh"),
              std::string::npos);
}

TEST_F(ToolImport, AVertexThatIsNoPlaceIsRefusedWhereverItStands)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
    for (const std::vector<float>& places : {std::vector<float>{notANumber, 0, 0, 1, 0, 0, 0, 1, 0},
                                             std::vector<float>{0, 0, 0, 1, 0, 0, 0, 1, notANumber},
                                             std::vector<float>{0, infinity, 0, 1, 0, 0, 0, 1, 0}})
    {
        RecordBytes vertices;
        vertices.Word(3);
        for (const float place : places)
        {
            vertices.Float(place);
        }
        const RecordBytes mesh = ObjectChunk(
            "odd", {ChunkOf(0x4100, {ChunkOf(0x4110, {vertices}), FaceChunk({0, 1, 2, 7})})});
        folder.Write("odd.3ds", AsText(FileOf({mesh})));
        EXPECT_NE(Complaint({"render", "-o", "x.png", "--import", "odd.3ds"}, 1)
                      .find("odd.3ds: a vertex of the file has a coordinate that is infinite or "
                            "not a number"),
                  std::string::npos);
    }
}

TEST_F(ToolImport, UndamagedPartsOfAFileAreDrawnAndTheDamageIsReported)
{
    // The second object's vertex list says more than there is.
    const RecordBytes first = MeshObjectChunk("first");
    const RecordBytes second =
        ObjectChunk("second", {ChunkOf(0x4100, {ChunkOf(0x4110, {RecordBytes().Word(9)})})});
    const RecordBytes file = FileOf({first, second});
    const std::size_t list = file.Get().size() - 8;
    folder.Write("some.3ds", AsText(file));
    const ToolResult result = folder.Run(
        {"render", "-o", "x.png", "--size", "60x40", "--samples", "1", "--import", "some.3ds"});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(folder.Has("x.png"));
    EXPECT_EQ(result.err,
              "orvane: some.3ds: the file is damaged, and only its undamaged parts are drawn: "
              "chunk 0x4110 at byte " +
                  std::to_string(list) + " is too short for the values that it must contain\n");

    std::filesystem::remove(folder.Path("x.png"));
    folder.Write("none.3ds", AsText(FileOf({second})));
    EXPECT_NE(Complaint({"render", "-o", "x.png", "--import", "none.3ds"}, 1)
                  .find("none.3ds: the file contains no mesh: chunk 0x4110 at byte "),
              std::string::npos);
    folder.Write("root.3ds", AsText(RecordBytes().Word(0x4D4D).Dword(3)));
    EXPECT_NE(Complaint({"render", "-o", "x.png", "--import", "root.3ds"}, 1)
                  .find("root.3ds: the file contains no mesh: no chunk can be read at byte 6, "
                        "inside the chunk 0x4D4D"),
              std::string::npos);
    const ToolResult strict =
        folder.Run({"render", "-o", "y.png", "--strict", "--import", "some.3ds"});
    EXPECT_EQ(strict.status, 1);
    EXPECT_FALSE(folder.Has("y.png"));
}

TEST_F(ToolImport, OptionsThatMakeNoSenseAreRefused)
{
    const auto complaint = [this](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"render", "-o", "x.png"});
        return Complaint(arguments, 2);
    };
    EXPECT_NE(complaint({"--import-size", "1", "--import", "red.3ds"})
                  .find("--import-size: there is no --import before it"),
              std::string::npos);
    EXPECT_NE(complaint({"x", "--import-at", "1,2,3"}).find("no --import before it"),
              std::string::npos);
    EXPECT_NE(complaint({"--import", "red.3ds", "--import-at", "1,2"}).find("--import-at"),
              std::string::npos);
    EXPECT_NE(complaint({"--import", "red.3ds", "--import-turn", "x"}).find("--import-turn"),
              std::string::npos);
    EXPECT_NE(complaint({"--import", "red.3ds", "--import-size", "-1"}).find("--import-size"),
              std::string::npos);
    EXPECT_NE(complaint({"--import", "red.3ds", "--texture", "x.bmp"}).find("--texture"),
              std::string::npos);
    EXPECT_NE(complaint({"--import", "red.3ds", "--scene", "x.orv"}).find("--scene"),
              std::string::npos);
}

}  // namespace
