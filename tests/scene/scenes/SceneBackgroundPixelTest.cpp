// SPDX-License-Identifier: MIT
#include "platform/Bitmaps.h"
#include "platform/Messages.h"
#include "scene/DrawingParameters.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "tests/support/BitmapDrawing.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/PictureFile.h"
#include "tests/support/TerminationEvent.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace
{

constexpr int imageWidth = 7;
constexpr int imageHeight = 5;
constexpr int bandWidth = 33;
constexpr int bandHeight = 21;
constexpr Rgb untouched = {255, 0, 255};
constexpr Rgb backgroundColor = {0, 255, 0};

// A different colour for each pixel of the image.
Rgb ImageColor(int x, int y)
{
    return {x * 30 + 10, y * 40 + 20, 255 - x * 20 - y * 10};
}

// The image's pixel under the centre of a destination's, counted from the destination's edge.
int SourcePixel(int from, int imageSize, int size)
{
    return static_cast<int>(std::floor((from + 0.5) * imageSize / size));
}

int FloorModulo(int value, int divisor)
{
    return (value % divisor + divisor) % divisor;
}

// A run-length coded image, whose colour table has these colours at their levels of blue.
Rgb PackedColor(int x, int y)
{
    const int level = (5 * x + 40 * y) % 256;
    return {0, 255 - level, level};
}

BmpFile PackedImage(int width, int height)
{
    BmpFile file{.width = width, .height = height, .bitCount = 8, .compression = BI_RLE8};
    for (int i = 0; i < 256; ++i)
    {
        file.behindHeader.insert(file.behindHeader.end(),
                                 {static_cast<BYTE>(i), static_cast<BYTE>(255 - i), 0, 0});
    }
    for (int y = height - 1; y >= 0; --y)
    {
        for (int x = 0; x < width; ++x)
        {
            file.pixels.insert(file.pixels.end(), {1, static_cast<BYTE>(PackedColor(x, y).blue)});
        }
        file.pixels.insert(file.pixels.end(), {0, y == 0 ? BYTE{1} : BYTE{0}});
    }
    return file;
}

// A scene with that image as its background, and bands of a picture.
class Backgrounds : public testing::Test
{
protected:
    Backgrounds()
        : file(testing::UnitTest::GetInstance()->current_test_info()->name(), imageWidth,
               imageHeight, ImageColor)
    {
        scene.GetTexture()->Load(file.Path());
        scene.SetBackgroundColor(ColorVector(0.0f, 1.0f, 0.0f, 1.0f));
        parameters.SetFlags(0x40B9);
        parameters.SetProjection(&projection);
    }

    void Place(DWORD placement, double x = 0, double y = 0)
    {
        scene.GetTexture()->placement = placement;
        scene.GetTexture()->SetHorizontalLocation(x);
        scene.GetTexture()->SetVerticalLocation(y);
    }

    void SizePicture(int width, int height, double scaleX = 1, double scaleY = 1)
    {
        projection.SetScale(scaleX, scaleY);
        projection.SetScaledSize(width, height);
        projection.SetViewSize(bandWidth, bandHeight);
    }

    // Draws the background of the band at each of some offsets, most of them odd, and compares each
    // pixel with what expectedAt gives for its place in the picture.
    template <typename ExpectedAt>
    void ExpectBands(ExpectedAt expectedAt)
    {
        for (const auto& [left, top] : {std::pair(0, 0), {33, 0}, {17, 9}, {51, 33}, {66, 42}})
        {
            projection.SetViewOffset(left, top);
            ClearTo(1, 0, 1);
            ASSERT_EQ(scene.DrawBackground(&parameters), 1);
            const Picture picture = context.ReadPixels();
            for (int y = 0; y < bandHeight; ++y)
            {
                for (int x = 0; x < bandWidth; ++x)
                {
                    ASSERT_EQ(picture.At(x, bandHeight - 1 - y), expectedAt(left + x, top + y))
                        << "band at " << left << ", " << top << ": " << x << ", " << y;
                }
            }
        }
        EXPECT_EQ(scene.GetTexture()->ReleaseOwnership(), 0);  // given back
    }

    HeadlessContext context{bandWidth, bandHeight};
    PictureFile file;
    ProjectionData projection;
    SceneObject scene;
    DrawingParameters parameters;
};

TEST_F(Backgrounds, StretchingFillsThePicture)
{
    REQUIRE_CONTEXT(context);
    Place(0);
    SizePicture(99, 63);
    ExpectBands([](int x, int y) {
        return ImageColor(SourcePixel(x, imageWidth, 99), SourcePixel(y, imageHeight, 63));
    });
}

TEST_F(Backgrounds, StretchingFillsFromTheLocationToTheFarCorner)
{
    REQUIRE_CONTEXT(context);
    Place(0, 20.9, 7.9);  // truncated first
    SizePicture(99, 63);
    ExpectBands([](int x, int y) {
        // What lies before the location is left as it is.
        return x < 20 || y < 7 ? untouched
                               : ImageColor(SourcePixel(x - 20, imageWidth, 79),
                                            SourcePixel(y - 7, imageHeight, 56));
    });
}

TEST_F(Backgrounds, StretchingFromANegativeLocationShowsAPart)
{
    REQUIRE_CONTEXT(context);
    Place(0, -11, -21);
    SizePicture(99, 63);
    ExpectBands([](int x, int y) {
        return ImageColor(SourcePixel(x + 11, imageWidth, 110),
                          SourcePixel(y + 21, imageHeight, 84));
    });
}

TEST_F(Backgrounds, TilesBeginBeforeABandsEdge)
{
    REQUIRE_CONTEXT(context);
    Place(1);
    SizePicture(99, 63);
    ExpectBands([](int x, int y) { return ImageColor(x % imageWidth, y % imageHeight); });
}

TEST_F(Backgrounds, TilesAreScaledAndAnchoredAtTheScaledLocation)
{
    REQUIRE_CONTEXT(context);
    SizePicture(99, 63, 2, 3);  // tiles of 14 x 15
    for (const auto& [x0, y0] : {std::pair(3, 4), {60, 30}, {-5, -2}})
    {
        Place(1, x0, y0);
        ExpectBands([x0 = x0 * 2, y0 = y0 * 3](int x, int y) {
            return ImageColor(SourcePixel(FloorModulo(x - x0, 14), imageWidth, 14),
                              SourcePixel(FloorModulo(y - y0, 15), imageHeight, 15));
        });
    }
}

TEST_F(Backgrounds, TilesAreNeverSmallerThanAPixel)
{
    REQUIRE_CONTEXT(context);
    Place(1);
    SizePicture(99, 63, 0.01, 0.01);
    // The centre of a pixel falls on the image's middle.
    ExpectBands([](int, int) { return ImageColor(imageWidth / 2, imageHeight / 2); });
}

TEST_F(Backgrounds, PackedTilesThatAreWiderOrHigherThanABandLieSideBySide)
{
    REQUIRE_CONTEXT(context);
    for (const auto& [width, height] : {std::pair(40, 2), {2, 40}, {3, 2}})
    {
        const TemporaryFile packed("packed.bmp", PackedImage(width, height).File());
        scene.GetTexture()->Load(packed.Path());
        Place(1, 5, 3);
        SizePicture(99, 63);
        ExpectBands([width = width, height = height](int x, int y) {
            return PackedColor(FloorModulo(x - 5, width), FloorModulo(y - 3, height));
        });
    }
}

TEST_F(Backgrounds, ManyTilesLookLikeFew)
{
    const HeadlessContext large(200, 150);
    REQUIRE_CONTEXT(large);
    // Tiles of 2 by 1 pixels: 15,000 of them.
    const PictureFile small("small", 2, 1, ImageColor);
    scene.GetTexture()->Load(small.Path());
    Place(1, 3, 0);
    projection.SetScaledSize(200, 150);
    projection.SetViewSize(200, 150);
    ASSERT_EQ(scene.DrawBackground(&parameters), 1);
    const Picture picture = large.ReadPixels();
    for (int y = 0; y < 150; ++y)
    {
        for (int x = 0; x < 200; ++x)
        {
            ASSERT_EQ(picture.At(x, y), ImageColor((x + 1) % 2, 0)) << x << ", " << y;
        }
    }
}

TEST_F(Backgrounds, TilingStopsAtTheTerminationEvent)
{
    REQUIRE_CONTEXT(context);
    const TerminationEvent event(true);
    Place(1);
    SizePicture(99, 63);
    ClearTo(1, 0, 1);
    parameters.SetTerminationEvent(event.Get());
    EXPECT_EQ(scene.DrawBackground(&parameters), 0);
    // One row of tiles, as in the other placements.
    EXPECT_EQ(context.ReadPixels().CountOther(untouched), bandWidth * imageHeight);
}

TEST_F(Backgrounds, ABandOfOnePixelsWidthOrHeightHasTiles)
{
    REQUIRE_CONTEXT(context);
    Place(1);
    SizePicture(99, 63);
    for (const auto& [width, height] : {std::pair(1, bandHeight), std::pair(bandWidth, 1)})
    {
        projection.SetViewSize(width, height);
        projection.SetViewOffset(10, 8);
        ClearTo(1, 0, 1);
        EXPECT_EQ(scene.DrawBackground(&parameters), 1);
        const Picture picture = context.ReadPixels();
        for (int y = 0; y < height; ++y)
        {
            for (int x = 0; x < width; ++x)
            {
                ASSERT_EQ(picture.At(x, bandHeight - 1 - y),
                          ImageColor((10 + x) % imageWidth, (8 + y) % imageHeight));
            }
        }
    }
}

TEST_F(Backgrounds, ABandOfLessThanAPixelHasNoTiles)
{
    REQUIRE_CONTEXT(context);
    Place(1, 3, 2);  // the first tile begins before the band
    SizePicture(99, 63);
    for (const auto& [width, height] : {std::pair(0.9, 20.0), std::pair(20.0, 0.9)})
    {
        projection.SetViewSize(width, height);
        projection.SetViewOffset(33.5, 9.25);
        ClearTo(1, 0, 1);
        EXPECT_EQ(scene.DrawBackground(&parameters), 1);
        EXPECT_EQ(context.ReadPixels().CountOther(untouched), 0);
    }
}

Rgb Centered(int x, int y, int left, int top, int width, int height, const Rgb& around)
{
    const bool inside = x >= left && x < left + width && y >= top && y < top + height;
    return inside ? ImageColor(SourcePixel(x - left, imageWidth, width),
                               SourcePixel(y - top, imageHeight, height))
                  : around;
}

TEST_F(Backgrounds, ASmallCentredImageIsSurroundedByTheColorInEveryBand)
{
    REQUIRE_CONTEXT(context);
    Place(2);
    SizePicture(98, 62, 6, 5);  // 42 x 25 at (28, 18)
    ExpectBands([](int x, int y) { return Centered(x, y, 28, 18, 42, 25, backgroundColor); });
}

TEST_F(Backgrounds, TheForcedColorSurroundsACentredImageUndithered)
{
    REQUIRE_CONTEXT(context);
    parameters.SetForceSolidBackground();
    parameters.SetSolidBackgroundColor(ColorVector(0.0f, 0.0f, 1.0f, 1.0f));
    Place(5);  // any other placement is the centre
    SizePicture(98, 62);
    glEnable(GL_DITHER);
    ExpectBands([](int x, int y) {
        return Centered(x, y, 45, 28, imageWidth, imageHeight, Rgb{0, 0, 255});
    });
    EXPECT_EQ(glIsEnabled(GL_DITHER), GL_FALSE);
}

TEST_F(Backgrounds, ACentredImageLargerThanThePictureClearsNothing)
{
    REQUIRE_CONTEXT(context);
    Place(2);
    SizePicture(84, 54, 14, 13);  // 98 x 65 at (-7, -5): the halves of odd sizes are truncated
    glEnable(GL_DITHER);
    // What lies beside the picture in the last bands shows that nothing was cleared.
    ExpectBands([](int x, int y) { return Centered(x, y, -7, -5, 98, 65, untouched); });
    EXPECT_EQ(glIsEnabled(GL_DITHER), GL_TRUE);
}

TEST_F(Backgrounds, ACentredImageThatIsWideButLowClears)
{
    REQUIRE_CONTEXT(context);
    Place(2);
    SizePicture(84, 54, 14, 2);  // 98 x 10 at (-7, 22)
    ExpectBands([](int x, int y) { return Centered(x, y, -7, 22, 98, 10, backgroundColor); });
}

TEST_F(Backgrounds, ACentredImageOfThePicturesSizeClearsNothing)
{
    REQUIRE_CONTEXT(context);
    Place(2);
    SizePicture(imageWidth, imageHeight);  // the bands reach beyond it
    ExpectBands(
        [](int x, int y) { return Centered(x, y, 0, 0, imageWidth, imageHeight, untouched); });
}

TEST_F(Backgrounds, ACentredImageThatLeavesOnePixelAtTheLeftOrTopClears)
{
    REQUIRE_CONTEXT(context);
    Place(2);
    SizePicture(imageWidth + 2, imageHeight);
    ExpectBands([](int x, int y) {
        return Centered(x, y, 1, 0, imageWidth, imageHeight, backgroundColor);
    });
    SizePicture(imageWidth, imageHeight + 2);
    ExpectBands([](int x, int y) {
        return Centered(x, y, 0, 1, imageWidth, imageHeight, backgroundColor);
    });
}

TEST_F(Backgrounds, WithoutAValidTextureTheColorFillsTheBand)
{
    REQUIRE_CONTEXT(context);
    Place(0);
    SizePicture(99, 63);
    scene.GetTexture()->textureFlags &= ~TextureMap::Valid;
    ExpectBands([](int, int) { return backgroundColor; });
    scene.GetTexture()->textureFlags |= TextureMap::Valid;
    parameters.ClearShowBackgroundTexture();
    ExpectBands([](int, int) { return backgroundColor; });
}

TEST_F(Backgrounds, HugeOrInvalidLocationsAreSafe)
{
    REQUIRE_CONTEXT(context);
    const double far[] = {1e300, -1e300, std::nan(""), HUGE_VAL};
    for (const double x : far)
    {
        for (const DWORD placement : {0U, 1U, 2U})
        {
            Place(placement, x, x);
            SizePicture(99, 63, 2, 2);
            EXPECT_EQ(scene.DrawBackground(&parameters), 1);
        }
    }
    SizePicture(99, 63, 1e300, 1e300);
    for (const DWORD placement : {0U, 1U, 2U})
    {
        Place(placement);
        EXPECT_EQ(scene.DrawBackground(&parameters), 1);
    }
}

TEST_F(Backgrounds, TheBackgroundIsDrawnUnderEverythingElse)
{
    REQUIRE_CONTEXT(context);
    Place(0);
    SizePicture(bandWidth, bandHeight);
    ViewObject view;
    view.AttachScene(&scene);
    ClearTo(1, 0, 1);
    EXPECT_EQ(view.Draw(&parameters), 1);
    const Picture picture = context.ReadPixels();
    EXPECT_EQ(picture.At(0, bandHeight - 1), ImageColor(0, 0));
    EXPECT_EQ(picture.At(bandWidth - 1, 0), ImageColor(imageWidth - 1, imageHeight - 1));
    EXPECT_EQ(picture.CountOther(untouched), bandWidth * bandHeight);
}

// Displays with a palette.

struct Notice
{
    HWND window;
    UINT message;
    std::string text;
    UINT flags;
    UINT timeout;
};
std::vector<Notice> notices;

LRESULT KeepNotice(HWND window, UINT message, WPARAM, LPARAM text, UINT flags, UINT timeout,
                   DWORD_PTR*)
{
    notices.push_back({window, message, reinterpret_cast<const char*>(text), flags, timeout});
    return 1;
}

class PaletteBackgrounds : public Backgrounds
{
protected:
    PaletteBackgrounds()
    {
        notices.clear();
        previous = SetSendMessageHandler(KeepNotice);
        SizePicture(bandWidth, bandHeight);
        Place(0);
    }
    ~PaletteBackgrounds() override { SetSendMessageHandler(previous); }

    SendMessageHandler previous;
    const HWND window = reinterpret_cast<HWND>(static_cast<std::uintptr_t>(0x1234));
};

TEST_F(PaletteBackgrounds, TheDitheredImageIsDrawnWhileTheWindowShowsTheNotice)
{
    REQUIRE_CONTEXT(context);
    Drawing drawing(BitmapDescription(bandWidth, bandHeight, 8));
    REQUIRE_CONTEXT(drawing);
    // One colour that the palette has: red alone is 7 of 3, 3 and 2 bits.
    const PictureFile red("red", 4, 4, [](int, int) { return Rgb{255, 0, 0}; });
    scene.GetTexture()->Load(red.Path());
    parameters.SetMessageWindowHandle(window);
    ClearTo(0, 0, 1);
    EXPECT_EQ(scene.DrawBackground(&parameters), 1);
    EXPECT_EQ(wglGetCurrentDC(), drawing.dc);
    GdiFlush();
    for (int y = 0; y < bandHeight; ++y)
    {
        EXPECT_EQ(drawing.Bytes(y * 36, bandWidth), std::vector<int>(bandWidth, 7)) << y;
    }
    ASSERT_EQ(notices.size(), 2U);
    EXPECT_EQ(notices[0].text, "Dithering Background Bitmap ...");
    EXPECT_EQ(notices[1].text, "");
    for (const Notice& notice : notices)
    {
        EXPECT_EQ(notice.window, window);
        EXPECT_EQ(notice.message, WM_SETTEXT);
        EXPECT_EQ(notice.flags, 0U);
        EXPECT_EQ(notice.timeout, 100U);
    }
    EXPECT_EQ(scene.GetTexture()->ReleaseOwnership(), 0);

    // The next drawing uses the image that is there.
    const GLMemoryDIB* const dithered = scene.GetTexture()->ditheredImage;
    EXPECT_NE(dithered, nullptr);
    parameters.SetMessageWindowHandle(nullptr);
    EXPECT_EQ(scene.DrawBackground(&parameters), 1);
    EXPECT_EQ(scene.GetTexture()->ditheredImage, dithered);
    EXPECT_EQ(notices.size(), 2U);  // no window, no notice
}

TEST_F(PaletteBackgrounds, MoreThan8BitsTakeTheFileWithoutANotice)
{
    REQUIRE_CONTEXT(context);
    parameters.SetMessageWindowHandle(window);
    for (const int bits : {16, 24, 32})
    {
        Drawing drawing(BitmapDescription(bandWidth, bandHeight, bits));
        REQUIRE_CONTEXT(drawing);
        EXPECT_EQ(scene.DrawBackground(&parameters), 1);
    }
    EXPECT_TRUE(notices.empty());
    EXPECT_EQ(scene.GetTexture()->ditheredImage, nullptr);
}

TEST_F(PaletteBackgrounds, AFileThatIsNoPictureIsNotDrawnAndTheNoticeEnds)
{
    REQUIRE_CONTEXT(context);
    Drawing drawing(BitmapDescription(bandWidth, bandHeight, 8));
    REQUIRE_CONTEXT(drawing);
    scene.GetTexture()->filename = "no such file.bmp";
    parameters.SetMessageWindowHandle(window);
    EXPECT_EQ(scene.DrawBackground(&parameters), 0);
    ASSERT_EQ(notices.size(), 2U);
    EXPECT_EQ(notices[1].text, "");
    EXPECT_EQ(scene.GetTexture()->ReleaseOwnership(), 0);
}

}  // namespace
