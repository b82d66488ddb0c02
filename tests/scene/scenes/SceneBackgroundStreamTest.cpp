// SPDX-License-Identifier: MIT
#include "platform/Bitmaps.h"
#include "scene/DrawingParameters.h"
#include "scene/SceneObject.h"
#include "tests/support/FakeRendering.h"
#include "tests/support/PictureFile.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

namespace
{

/// The calls that draw a background of one pixel, as tiles, in a view of that size.
std::vector<std::string> CallsOfTiles(int viewWidth, int viewHeight)
{
    FakeRendering fake;
    fake.currentDc = CreateCompatibleDC(nullptr);
    const PictureFile pixel("pixel", 1, 1, [](int, int) { return Rgb{1, 2, 3}; });
    SceneObject scene;
    scene.GetTexture()->Load(pixel.Path());
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

}  // namespace
