// SPDX-License-Identifier: MIT
#include "imaging/GLMemoryDIB.h"

#include "scene/DrawingParameters.h"
#include "tests/support/FakeRendering.h"
#include "tests/support/GoldenFile.h"
#include "tests/support/gl/GlRecorder.h"

#include <gtest/gtest.h>

#include <cstring>

namespace
{

using Lines = std::vector<std::string>;

class Dib : public GLMemoryDIB
{
public:
    using GLMemoryDIB::CalculateDIBInfo;
    using GLMemoryDIB::dibSection;
    using GLMemoryDIB::previousBitmap;
    using GLMemoryDIB::projection;
    using GLMemoryDIB::renderingContext;
};

ProjectionData PictureOf(double width, double height)
{
    ProjectionData projection;
    projection.SetScaledSize(width, height);
    return projection;
}

TEST(GLMemoryDIB, CreateAsksForAFormatAndSetsTheContextUp)
{
    FakeRendering fake;
    const GlRecording recording;
    Dib dib;
    EXPECT_EQ(dib.Create(PictureOf(64, 32), 24), 1);
    EXPECT_TRUE(IsGolden("bitmap/create.txt", recording.Text()));
    EXPECT_EQ(dib.pixelFormatIndex, 3);
    EXPECT_EQ(dib.describedPixelFormat.cColorBits, 24);
    EXPECT_EQ(fake.requested.nSize, 40);
    EXPECT_EQ(fake.requested.nVersion, 1);
    EXPECT_EQ(fake.requested.iPixelType, PFD_TYPE_RGBA);
    EXPECT_EQ(fake.requested.cDepthBits, 32);
    EXPECT_EQ(fake.requested.iLayerType, PFD_MAIN_PLANE);
    PIXELFORMATDESCRIPTOR nothingElse{};
    nothingElse.nSize = 40;
    nothingElse.nVersion = 1;
    nothingElse.dwFlags = 0x38;
    nothingElse.cColorBits = 24;
    nothingElse.cDepthBits = 32;
    EXPECT_EQ(std::memcmp(&dib.requestedPixelFormat, &nothingElse, sizeof nothingElse), 0);
}

TEST(GLMemoryDIB, AnOrthographicProjectionIsLoadedAsOne)
{
    const FakeRendering fake;
    const GlRecording recording;
    ProjectionData projection = PictureOf(64, 32);
    projection.SetOrthographic();
    Dib dib;
    EXPECT_EQ(dib.Create(projection, 24), 1);
    EXPECT_TRUE(IsGolden("bitmap/create-orthographic.txt", recording.Text()));
}

TEST(GLMemoryDIB, ResizeDoesNotCullBackFaces)
{
    FakeRendering fake;
    ProjectionData projection = PictureOf(64, 32);
    projection.SaveReferenceAspect();
    Dib dib;
    EXPECT_EQ(dib.Resize(10, 10), 0);
    EXPECT_EQ(dib.Create(projection, 24), 1);
    fake.chosenFormat = 5;
    fake.colorBits = 16;
    const GlRecording recording;
    EXPECT_EQ(dib.Resize(128, 16), 1);
    // No support of drawing by others is asked for, and the format is not described.
    EXPECT_TRUE(IsGolden("bitmap/resize.txt", recording.Text()));
    EXPECT_EQ(dib.describedPixelFormat.cColorBits, 24);  // as it was
    EXPECT_EQ(dib.GetDIBWidth(), 128);
    EXPECT_EQ(dib.GetDIBHeight(), 16);
    EXPECT_EQ(dib.GetDIBInfo()->bmiHeader.biWidth, 128);
}

TEST(GLMemoryDIB, EightBitsWithoutAFormatGetFormat17)
{
    FakeRendering fake;
    fake.chosenFormat = 0;
    const GlRecording recording;
    Dib dib;
    EXPECT_EQ(dib.Create(PictureOf(64, 32), 8), 1);
    EXPECT_EQ(dib.pixelFormatIndex, 17);
    EXPECT_EQ(recording.Only({"ChoosePixelFormat", "SetPixelFormat", "DescribePixelFormat"}),
              (Lines{"ChoosePixelFormat 0x38 8", "SetPixelFormat 17", "DescribePixelFormat 17"}));
}

TEST(GLMemoryDIB, OtherDepthsAndResizeHaveNoFallbackFormat)
{
    FakeRendering fake;
    fake.chosenFormat = 0;
    const GlRecording recording;
    {
        Dib dib;
        dib.Create(PictureOf(64, 32), 24);
        EXPECT_EQ(dib.pixelFormatIndex, 0);
    }
    fake.chosenFormat = 17;
    Dib dib;
    EXPECT_EQ(dib.Create(PictureOf(64, 32), 8), 1);
    fake.chosenFormat = 0;
    dib.Resize(32, 32);
    EXPECT_EQ(dib.pixelFormatIndex, 0);
    EXPECT_EQ(recording.Only({"SetPixelFormat"}),
              (Lines{"SetPixelFormat 0", "SetPixelFormat 17", "SetPixelFormat 0"}));
}

TEST(GLMemoryDIB, WithoutAContextCreateAndResizeFail)
{
    FakeRendering fake;
    Dib resized;
    EXPECT_EQ(resized.Create(PictureOf(64, 32), 24), 1);
    fake.hasContexts = false;
    const GlRecording recording;
    EXPECT_EQ(resized.Resize(8, 8), 0);
    EXPECT_EQ(resized.renderingContext, nullptr);
    EXPECT_EQ(resized.Resize(8, 8), 0);
    EXPECT_EQ(resized.Release(), 0);
    Dib dib;
    EXPECT_EQ(dib.Create(PictureOf(64, 32), 24), 0);
    EXPECT_EQ(dib.Release(), 0);
    EXPECT_EQ(recording.Only({"glMatrixMode", "glEnable"}), Lines{});
}

TEST(GLMemoryDIB, WithoutABitmapNothingIsCreated)
{
    const FakeRendering fake;
    const GlRecording recording;
    for (const int bits : {1000, -1, 7, 2})
    {
        Dib dib;
        EXPECT_EQ(dib.Create(PictureOf(64, 32), bits), 0);
    }
    Dib unsized;
    EXPECT_EQ(unsized.Create(ProjectionData(), 24), 0);
    EXPECT_EQ(unsized.CopyBand(unsized.GetMemoryDC(), 0, 0, 0, 0), 0);
    EXPECT_EQ(recording.Lines(), Lines{});
}

TEST(GLMemoryDIB, CreatedAgainItBeginsAnew)
{
    const FakeRendering fake;
    Dib dib;
    EXPECT_EQ(dib.Create(PictureOf(64, 32), 24), 1);
    const HBITMAP first = dib.dibSection;
    EXPECT_EQ(dib.Create(PictureOf(16, 8), 8), 1);
    EXPECT_EQ(dib.GetDIBInfo()->bmiHeader.biBitCount, 8);
    EXPECT_EQ(dib.GetDIBInfo()->bmiColors[255].rgbRed, 255);
    EXPECT_EQ(GetObjectA(first, 0, nullptr), 0);
}

TEST(GLMemoryDIB, ABandHasItsOffsetAndItsVolume)
{
    const FakeRendering fake;
    Dib dib;
    EXPECT_EQ(dib.Create(PictureOf(3000, 1000), 24), 1);
    DrawingParameters parameters;
    GlRecording recording;
    dib.PrepareNextBand(2, 1, &parameters);
    EXPECT_EQ(dib.GetProjection().GetViewXOffset(), 2048);
    EXPECT_EQ(dib.GetProjection().GetViewYOffset(), 340);
    EXPECT_EQ(parameters.GetProjection(), &dib.projection);
    EXPECT_TRUE(IsGolden("bitmap/band.txt", recording.Text()));
    recording.Clear();
    dib.PrepareNextBand(0, 0, nullptr);
    EXPECT_EQ(dib.GetProjection().GetViewYOffset(), 0);
    EXPECT_TRUE(IsGolden("bitmap/first-band.txt", recording.Text()));
}

TEST(GLMemoryDIB, ABandIsCopiedToItsPlace)
{
    FakeRendering fake;
    Dib dib;
    EXPECT_EQ(dib.Create(PictureOf(3000, 1000), 24), 1);
    const GlRecording recording;
    EXPECT_EQ(dib.CopyBand(dib.GetMemoryDC(), 5, 7, 2, 1), 1);
    EXPECT_EQ(recording.Lines(), Lines{"StretchDIBits 2053 347 2048 170 0 0 2048 170"});
    fake.copiedRows = 169;
    EXPECT_EQ(dib.CopyBand(dib.GetMemoryDC(), 0, 0, 0, 0), 0);
    fake.copiedRows = 0;
    EXPECT_EQ(dib.CopyBand(dib.GetMemoryDC(), 0, 0, 0, 0), 0);
}

TEST(GLMemoryDIB, ReleaseLetsTheContextGoAndKeepsThePixels)
{
    const FakeRendering fake;
    const GlRecording recording;
    {
        Dib dib;
        EXPECT_EQ(dib.Release(), 0);
        EXPECT_EQ(dib.Create(PictureOf(8, 8), 24), 1);
    }
    EXPECT_EQ(recording.Only({"wglMakeCurrent", "wglDeleteContext"}),
              (Lines{"wglMakeCurrent context", "wglMakeCurrent null", "wglDeleteContext"}));
    Dib dib;
    EXPECT_EQ(dib.Create(PictureOf(8, 8), 24), 1);
    EXPECT_EQ(dib.Release(), 1);
    EXPECT_EQ(dib.GetMemoryDC(), nullptr);
    EXPECT_EQ(dib.Release(), 0);
    EXPECT_EQ(dib.Resize(4, 4), 0);
    EXPECT_EQ(static_cast<BYTE*>(dib.GetDIBBits())[0], 0);
    EXPECT_EQ(dib.Create(PictureOf(8, 8), 24), 0);  // there is no device context any more
}

}  // namespace
