// SPDX-License-Identifier: MIT
// The studio renderer covers the pixels that the classic one covers, and colours them by materials.
#include "orvane/orvane.h"
#include "tests/support/DecodedPicture.h"
#include "tests/support/HeadlessContext.h"
#include "tests/support/ToolRun.h"

#include <gtest/gtest.h>

#include <functional>

namespace
{

using orvane::Document;
using orvane::PictureOptions;
using orvane::Size;

class StudioPictures : public testing::Test
{
protected:
    static Document MakeText(const orvane::TextOptions& look, const Size& size)
    {
        Document document;
        document.AddText("Ag", look);
        document.Frame(size);
        return document;
    }
    DecodedPicture Draw(const Document& document, const PictureOptions& options)
    {
        WritePicture(document, folder.Path("x.png"), options);
        return DecodePng(folder.Read("x.png"));
    }
    static PictureOptions OptionsOf(const Size& size, bool isStudio)
    {
        PictureOptions options;
        options.size = size;
        options.samples = 1;
        if (isStudio)
        {
            options.studio.emplace();
        }
        return options;
    }

    ToolFolder folder;
};

/// The background of a new document.
bool IsBackground(const Rgb& color)
{
    return color == Rgb{0x14, 0x1A, 0x2B};
}

TEST_F(StudioPictures, BothRenderersCoverTheSamePixels)
{
    const Size size{320, 200};
    for (const orvane::EdgeStyle style :
         {orvane::EdgeStyle::Square, orvane::EdgeStyle::Bevel, orvane::EdgeStyle::Round})
    {
        orvane::TextOptions look;
        look.edgeStyle = style;
        look.faceColor = orvane::Rgb(0xE03020);
        const Document document = MakeText(look, size);
        const DecodedPicture classic = Draw(document, OptionsOf(size, false));
        const DecodedPicture studio = Draw(document, OptionsOf(size, true));
        ASSERT_EQ(studio.pixels.size(), classic.pixels.size());
        int different = 0;
        int covered = 0;
        for (std::size_t i = 0; i < classic.pixels.size(); ++i)
        {
            covered += IsBackground(classic.pixels[i]) ? 0 : 1;
            different += IsBackground(classic.pixels[i]) != IsBackground(studio.pixels[i]) ? 1 : 0;
        }
        EXPECT_GT(covered, 5000);
        EXPECT_LE(different, 2) << static_cast<int>(style);
    }
}

TEST_F(StudioPictures, BandsFitTogether)
{
    const Size size{1200, 700};  // four bands
    const Document document = MakeText({}, size);
    const DecodedPicture inBands = Draw(document, OptionsOf(size, true));
    const HeadlessContext context(size.width, size.height);
    REQUIRE_CONTEXT(context);
    orvane::DrawOptions options;
    options.studio.emplace();
    orvane::Draw(document, options);
    const Picture inOne = context.ReadPixels();
    int different = 0;
    for (int y = 0; y < size.height; ++y)
    {
        for (int x = 0; x < size.width; ++x)
        {
            const Rgb a = inBands.At(x, y);
            const Rgb b = inOne.At(x, size.height - 1 - y);
            different += std::abs(a.red - b.red) > 1 || std::abs(a.green - b.green) > 1 ||
                                 std::abs(a.blue - b.blue) > 1
                             ? 1
                             : 0;
        }
    }
    // The last row of pixels of an edge may belong to one triangle or the other.
    EXPECT_LE(different, 50);
}

TEST_F(StudioPictures, ExposureAndTheAmbientLightMakeThePictureBrighter)
{
    const Size size{160, 100};
    orvane::TextOptions look;
    look.faceColor = orvane::Rgb(0x804040);
    Document document = MakeText(look, size);
    const auto redOf = [&](double exposure) {
        PictureOptions options = OptionsOf(size, true);
        options.studio->exposure = exposure;
        long sum = 0;
        for (const Rgb& color : Draw(document, options).pixels)
        {
            sum += IsBackground(color) ? 0 : color.red;
        }
        return sum;
    };
    const long usual = redOf(1);
    EXPECT_GT(redOf(2), usual * 11 / 10);
    EXPECT_LT(redOf(0.25), usual * 9 / 10);
    orvane::LightOptions dark;
    dark.ambient = orvane::Color{};
    document.ChangeLights(dark);
    EXPECT_LT(redOf(1), usual * 98 / 100);
}

TEST_F(StudioPictures, GoldMirrorsItsSurroundings)
{
    const Size size{160, 100};
    orvane::TextOptions look;  // the default colour is gold
    const Document document = MakeText(look, size);
    PictureOptions options = OptionsOf(size, true);
    const DecodedPicture before = Draw(document, options);
    options.studio->environmentTurn = 90;
    const DecodedPicture turned = Draw(document, options);
    EXPECT_FALSE(turned == before);
    options.studio->environmentTurn = 360;
    const DecodedPicture whole = Draw(document, options);
    std::size_t different = 0;
    for (std::size_t i = 0; i < before.pixels.size(); ++i)
    {
        different += std::abs(whole.pixels[i].red - before.pixels[i].red) > 1 ? 1 : 0;
    }
    EXPECT_EQ(different, 0u);
}

TEST_F(StudioPictures, OpaqueLettersShowThroughTransparentOnes)
{
    const Size size{200, 120};
    orvane::TextOptions red;
    red.faceColor = orvane::Rgb(0xFF0000);
    red.edgeStyle = orvane::EdgeStyle::Square;
    orvane::TextOptions clear;
    clear.faceColor = {0, 0, 1, 0.2f};
    clear.edgeColor = clear.faceColor;
    clear.bevelColor = clear.faceColor;
    // The text in front is added first, then last: the order does not matter.
    const auto draw = [&](bool isFrontFirst, bool isStudio) {
        Document document;
        if (isFrontFirst)
        {
            document.AddText("O", clear).MoveTo({0, 0, 1});
        }
        document.AddText("I", red).MoveTo({0, 0, -1});
        if (!isFrontFirst)
        {
            document.AddText("O", clear).MoveTo({0, 0, 1});
        }
        orvane::CameraOptions camera;
        camera.turn = {0, 40, 0};
        document.Frame(size, camera);
        return Draw(document, OptionsOf(size, isStudio));
    };
    // A fifth of anything over the background has less red than 100.
    const auto isMixed = [](const Rgb& color) { return color.red > 100 && color.blue > 40; };
    const DecodedPicture last = draw(false, true);
    EXPECT_EQ(draw(false, false).Count(isMixed), 0u);
    EXPECT_GT(last.Count(isMixed), 100u);
    EXPECT_TRUE(draw(true, true) == last);
}

TEST_F(StudioPictures, WiresAreThoseOfTheClassicRenderer)
{
    const Size size{160, 100};
    Document document = MakeText({}, size);
    document.SetDrawingMode(orvane::DrawingMode::Outline);
    EXPECT_TRUE(Draw(document, OptionsOf(size, true)) == Draw(document, OptionsOf(size, false)));
}

TEST_F(StudioPictures, OptionsOutOfTheirRangeAreRefused)
{
    const Size size{16, 16};
    const Document document = MakeText({}, size);
    const std::vector<std::function<void(orvane::StudioOptions&)>> wrong = {
        [](orvane::StudioOptions& options) { options.exposure = 0; },
        [](orvane::StudioOptions& options) { options.exposure = 101; },
        [](orvane::StudioOptions& options) { options.environmentTurn = 361; },
        [](orvane::StudioOptions& options) { options.environment = "nowhere"; },
    };
    for (const auto& change : wrong)
    {
        PictureOptions options = OptionsOf(size, true);
        change(*options.studio);
        EXPECT_THROW(WritePicture(document, folder.Path("y.png"), options), orvane::Error);
        EXPECT_FALSE(folder.Has("y.png"));
    }
}

}  // namespace
