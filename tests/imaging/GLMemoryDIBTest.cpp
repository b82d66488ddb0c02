// SPDX-License-Identifier: MIT
#include "imaging/GLMemoryDIB.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

namespace
{

class Dib : public GLMemoryDIB
{
public:
    using GLMemoryDIB::CalculateDIBInfo;
    using GLMemoryDIB::CreateDIBRectangleSection;
    using GLMemoryDIB::dibSection;
    using GLMemoryDIB::GenerateDIBInfo;
    using GLMemoryDIB::previousBitmap;
    using GLMemoryDIB::projection;
    using GLMemoryDIB::renderingContext;

    void SizeFor(double width, double height, int bits)
    {
        projection.SetScaledSize(width, height);
        colorBits = bits;
        CalculateDIBInfo();
    }
};

TEST(GLMemoryDIB, ANewOneHasADeviceContextAndBandLimits)
{
    const Dib dib;
    EXPECT_NE(dib.GetMemoryDC(), nullptr);
    EXPECT_EQ(dib.colorBits, 0);
    EXPECT_EQ(dib.renderingContext, nullptr);
    EXPECT_EQ(dib.dibSection, nullptr);
    EXPECT_EQ(dib.previousBitmap, nullptr);
    EXPECT_EQ(dib.GetBandingRows(), 0);
    EXPECT_EQ(dib.GetBandingColumns(), 0);
    EXPECT_EQ(dib.GetDIBBits(), nullptr);
    EXPECT_EQ(dib.GetDIBInfo(), nullptr);
    EXPECT_EQ(dib.maximumBandWidth, 2048);
    EXPECT_EQ(dib.maximumBandHeight, 2048);
    EXPECT_EQ(dib.requestedPixelFormat.nSize, 0);
}

TEST(GLMemoryDIB, ALargePictureIsDrawnInBandsOf2048PixelsAndAMegabyte)
{
    Dib dib;
    dib.SizeFor(3000, 1000, 24);
    EXPECT_EQ(dib.GetDIBWidth(), 2048);
    EXPECT_EQ(dib.GetDIBHeight(), 170);  // 1048576 / 6144
    EXPECT_EQ(dib.GetBandingColumns(), 3000.0 / 2048);
    EXPECT_EQ(dib.GetBandingRows(), 1000.0 / 170);
}

TEST(GLMemoryDIB, TheBandFollowsTheDepthAndTheLimits)
{
    const auto band = [](double width, double height, int bits, int widest = 2048,
                         int highest = 2048) {
        Dib dib;
        dib.maximumBandWidth = widest;
        dib.maximumBandHeight = highest;
        dib.SizeFor(width, height, bits);
        return std::pair(dib.GetDIBWidth(), dib.GetDIBHeight());
    };
    using Size = std::pair<double, double>;
    EXPECT_EQ(band(100, 50, 32), Size(100, 50));
    EXPECT_EQ(band(2048, 5000, 32), Size(2048, 128));
    EXPECT_EQ(band(2048, 5000, 8), Size(2048, 512));
    EXPECT_EQ(band(100, 5000, 8), Size(100, 2048));
    EXPECT_EQ(band(101, 20000, 16, 2048, 20000), Size(101, 5140));  // 204 bytes a row
    EXPECT_EQ(band(3000, 5000, 24, 3000), Size(3000, 116));         // 9000 bytes a row
    EXPECT_EQ(band(3000, 5000, 24, 64, 16), Size(64, 16));
    EXPECT_EQ(band(1e9, 5000, 32, 2000000000), Size(1e9, 1));  // never less than a row
    EXPECT_EQ(band(3000, 5000, 0), band(3000, 5000, 32));
}

TEST(GLMemoryDIB, TheBandBeginsAtThePicturesCorner)
{
    Dib dib;
    dib.projection.SetViewOffset(5, 6);
    dib.SizeFor(3000, 1000, 24);
    EXPECT_EQ(dib.GetProjection().GetViewXOffset(), 0);
    EXPECT_EQ(dib.GetProjection().GetViewYOffset(), 0);
    EXPECT_EQ(dib.GetProjection().GetViewWidth(), 2048);
}

TEST(GLMemoryDIB, APictureWithoutASizeHasNoBands)
{
    Dib dib;
    dib.SizeFor(0, 100, 24);
    EXPECT_EQ(dib.GetBandingRows(), 0);
    EXPECT_EQ(dib.CreateDIBRectangleSection(), nullptr);
}

TEST(GLMemoryDIB, TheBitmapHasTheBandsSizeAndOpenGLsColours)
{
    const auto info = [](int bits, auto look) {
        Dib dib;
        dib.SizeFor(5, 3, bits);
        const HBITMAP section = dib.CreateDIBRectangleSection();
        EXPECT_NE(section, nullptr);
        EXPECT_NE(dib.GetDIBBits(), nullptr);
        look(*dib.GetDIBInfo());
        DeleteObject(section);
    };
    info(8, [](const BITMAPINFO& described) {
        EXPECT_EQ(described.bmiHeader.biSize, 40U);
        EXPECT_EQ(described.bmiHeader.biWidth, 5);
        EXPECT_EQ(described.bmiHeader.biHeight, 3);
        EXPECT_EQ(described.bmiHeader.biPlanes, 1);
        EXPECT_EQ(described.bmiHeader.biSizeImage, 24U);
        const auto color = [&](int i) {
            const RGBQUAD& entry = described.bmiColors[i];
            return entry.rgbRed << 16 | entry.rgbGreen << 8 | entry.rgbBlue;
        };
        EXPECT_EQ(color(255), 0xFFFFFF);
        EXPECT_EQ(color(7), 0xFF0000);
        EXPECT_EQ(color(56), 0x00FF00);
        EXPECT_EQ(color(192), 0x0000FF);
        EXPECT_EQ(color(1), 36 << 16);  // 255 / 7
        EXPECT_EQ(color(2 | 3 << 3 | 1 << 6), 72 << 16 | 109 << 8 | 85);
    });
    info(4, [](const BITMAPINFO& described) {
        EXPECT_EQ(described.bmiHeader.biSizeImage, 12U);
        EXPECT_EQ(described.bmiColors[1].rgbRed, 255);
        EXPECT_EQ(described.bmiColors[1].rgbGreen, 0);
        EXPECT_EQ(described.bmiColors[10].rgbGreen, 255);
        EXPECT_EQ(described.bmiColors[10].rgbRed, 0);
        EXPECT_EQ(described.bmiColors[12].rgbBlue, 255);
        EXPECT_EQ(described.bmiColors[8].rgbRed, 0);
    });
    info(16, [](const BITMAPINFO& described) {
        EXPECT_EQ(described.bmiHeader.biCompression, BI_BITFIELDS);
        EXPECT_EQ(described.bmiHeader.biSizeImage, 36U);
        DWORD masks[3];
        std::memcpy(masks, described.bmiColors, sizeof masks);
        EXPECT_EQ(masks[0], 0x7C00U);
        EXPECT_EQ(masks[1], 0x03E0U);
        EXPECT_EQ(masks[2], 0x001FU);
    });
    info(24, [](const BITMAPINFO& described) { EXPECT_EQ(described.bmiHeader.biSizeImage, 48U); });
    info(0, [](const BITMAPINFO& described) { EXPECT_EQ(described.bmiHeader.biBitCount, 32); });
}

TEST(GLMemoryDIB, ACopyHasTheSizesAndADeviceContextOfItsOwn)
{
    Dib dib;
    dib.maximumBandWidth = 100;
    dib.SizeFor(300, 200, 24);
    dib.requestedPixelFormat.nSize = 40;
    dib.describedPixelFormat.cColorBits = 7;
    const Dib copy(dib);
    EXPECT_EQ(copy.GetProjection().GetWidth(), 300);
    EXPECT_EQ(copy.GetDIBWidth(), 100);
    EXPECT_EQ(copy.GetBandingColumns(), 3);
    EXPECT_EQ(copy.colorBits, 24);
    EXPECT_EQ(copy.maximumBandWidth, 100);
    EXPECT_EQ(copy.requestedPixelFormat.nSize, 40);
    EXPECT_EQ(copy.describedPixelFormat.cColorBits, 7);
    EXPECT_NE(copy.GetMemoryDC(), nullptr);
    EXPECT_NE(copy.GetMemoryDC(), dib.GetMemoryDC());
    EXPECT_EQ(copy.GetDIBBits(), nullptr);
    Dib& same = dib;
    dib = same;
    EXPECT_EQ(dib.GetDIBWidth(), 100);
}

}  // namespace
