// SPDX-License-Identifier: MIT
#include "platform/Bitmaps.h"
#include "platform/Sync.h"
#include "scene/DrawingParameters.h"
#include "scene/SceneObject.h"
#include "tests/support/FakeRendering.h"
#include "tests/support/PictureFile.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace
{

/// Counts how often the background picture was lost.
class CountingParameters : public DrawingParameters
{
public:
    void LoseBackgroundPicture() override { ++lost; }

    int lost = 0;
};

/// A scene with a background of tiles of 16 by 16 pixels, in a view of 16 by 32.
class TwoTiles : public testing::Test
{
protected:
    TwoTiles()
    {
        fake.currentDc = CreateCompatibleDC(nullptr);
        scene.GetTexture()->Load(picture.Path());
        scene.GetTexture()->placement = 1;
        projection.SetScaledSize(16, 32);
        projection.SetViewSize(16, 32);
        parameters.SetFlags(0x40B9);
        parameters.SetProjection(&projection);
    }
    ~TwoTiles() override
    {
        beforeWaitForSingleObject = nullptr;
        afterMapViewOfFile = nullptr;
        DeleteDC(fake.currentDc);
    }

    const PictureFile picture{"tiles", 16, 16, [](int, int) { return Rgb{1, 2, 3}; }};
    FakeRendering fake;
    SceneObject scene;
    ProjectionData projection;
    CountingParameters parameters;
};

TEST_F(TwoTiles, APictureThatIsCutOffBetweenTwoTilesIsToldAsLost)
{
    // The drawing looks at its termination event before the second row of tiles.
    const HANDLE event = CreateEventA(nullptr, TRUE, FALSE, nullptr);
    parameters.SetTerminationEvent(event);
    bool isOpen = false;
    afterMapViewOfFile = [&isOpen] { isOpen = true; };
    EXPECT_EQ(scene.DrawBackground(&parameters), 1);
    EXPECT_TRUE(isOpen);
    EXPECT_EQ(parameters.lost, 0);

    isOpen = false;
    beforeWaitForSingleObject = [&] {
        if (isOpen)
        {
            std::filesystem::resize_file(picture.Path(), 100);
        }
    };
    const GlRecording recording;
    EXPECT_EQ(scene.DrawBackground(&parameters), 0);
    EXPECT_EQ(recording.Only({"StretchDIBits"}).size(), 2U);
    EXPECT_EQ(parameters.lost, 1);
    CloseHandle(event);
}

TEST_F(TwoTiles, APictureThatIsGoneIsToldAsLost)
{
    std::filesystem::remove(picture.Path());
    EXPECT_EQ(scene.DrawBackground(&parameters), 0);
    EXPECT_EQ(parameters.lost, 1);
    fake.colorBits = 8;  // now through a dithered image
    EXPECT_EQ(scene.DrawBackground(&parameters), 0);
    EXPECT_EQ(parameters.lost, 2);
}

TEST_F(TwoTiles, ADrawingThatIsStoppedLosesNothing)
{
    const HANDLE event = CreateEventA(nullptr, TRUE, TRUE, nullptr);
    parameters.SetTerminationEvent(event);
    EXPECT_EQ(scene.DrawBackground(&parameters), 0);
    EXPECT_EQ(parameters.lost, 0);
    CloseHandle(event);
}

/// The calls that draw a picture file as tiles, in a view of that size.
std::vector<std::string> CallsOfTiles(const char* path, int viewWidth, int viewHeight)
{
    FakeRendering fake;
    fake.currentDc = CreateCompatibleDC(nullptr);
    SceneObject scene;
    scene.GetTexture()->Load(path);
    scene.GetTexture()->placement = 1;
    ProjectionData projection;
    projection.SetScaledSize(viewWidth, viewHeight);
    projection.SetViewSize(viewWidth, viewHeight);
    DrawingParameters parameters;
    parameters.SetFlags(0x40B9);
    parameters.SetProjection(&projection);
    const GlRecording recording;
    EXPECT_EQ(scene.DrawBackground(&parameters), 1);
    DeleteDC(fake.currentDc);
    return recording.Only({"StretchDIBits"});
}

/// The same for a picture of one pixel.
std::vector<std::string> CallsOfTiles(int viewWidth, int viewHeight)
{
    const PictureFile pixel("pixel", 1, 1, [](int, int) { return Rgb{1, 2, 3}; });
    return CallsOfTiles(pixel.Path(), viewWidth, viewHeight);
}

TEST(BackgroundTiles, FewAreDrawnOneByOne)
{
    const std::vector<std::string> calls = CallsOfTiles(64, 64);
    ASSERT_EQ(calls.size(), 4096U);
    EXPECT_EQ(calls.front(), "StretchDIBits 0 0 1 1 0 0 1 1");
    EXPECT_EQ(calls.back(), "StretchDIBits 63 63 1 1 0 0 1 1");
}

TEST(BackgroundTiles, ManyAreDrawnThroughACopyOfSeveral)
{
    // The copy has 256 by 256 pixels: a row of tiles, then that row 255 times.
    EXPECT_EQ(CallsOfTiles(65, 64).size(), 256U + 255 + 1);
    const std::vector<std::string> calls = CallsOfTiles(1280, 720);
    ASSERT_EQ(calls.size(), 256U + 255 + 5 * 3);
    EXPECT_EQ(calls.back(), "StretchDIBits 1024 512 256 256 0 0 256 256");
}

// A copy of whole tiles took 1.6 GB for this file of 131 bytes.
TEST(BackgroundTiles, ATileOfMillionsOfPixelsIsCopiedOnlyWhereItIsSeen)
{
    const std::vector<std::string> calls =
        CallsOfTiles(ORVANE_TEST_DATA "/findings/tile-of-2097154-pixels.bmp", 48, 40);
    // The part of the first tile that is seen, 255 copies of it below, and then all of them.
    ASSERT_EQ(calls.size(), 1U + 255 + 1);
    EXPECT_EQ(calls.front(), "StretchDIBits 0 0 2097154 1 0 0 2097154 1");
    EXPECT_EQ(calls.back(), "StretchDIBits 0 0 48 256 0 0 48 256");
}

}  // namespace
