// SPDX-License-Identifier: MIT
// Shaped texts look like other texts where their letters stand alike, and a mesh cache draws them
// as they are drawn in immediate mode.
#include "shapedtext/OrvShapedString.h"

#include "tests/shapedtext/ColorFont.h"
#include "tests/shapedtext/ShapedSettings.h"
#include "tests/support/MeshDrawingPixels.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

namespace
{
using orvane::LetterFusion;
using orvane::MeshCache;
using orvane::OrvProfileString;
using orvane::OrvShapedString;
using orvane::ParseProfile;
using orvane::ShapedTextSettings;

class ShapedPixels : public MeshDrawingPixels
{
protected:
    /// Gives the shaped text the look, the characters and the font of the other one.
    void TakeOver(const OrvFontString& other, const std::vector<std::string>& features = {})
    {
        static_cast<OrvString&>(shaped) = other;
        ShapedTextSettings settings = InFont("DejaVu Serif");
        settings.style.features = features;
        shaped.SetText(other.GetTextString()->Text(), settings);
        shaped.CalculateBounds();
    }

    OrvShapedString shaped;
};

INSTANTIATE_TEST_SUITE_P(Storages, ShapedPixels,
                         testing::Values(MeshCache::Storage::Automatic, MeshCache::Storage::Arrays),
                         [](const auto& each) {
                             return each.param == MeshCache::Storage::Arrays ? "Arrays" : "Buffers";
                         });

TEST_P(ShapedPixels, ATextWithoutKerningLooksLikeOneOfACodePage)
{
    REQUIRE_CONTEXT(context);
    text.SetTextString("HHH");
    for (const int style : {0, 1, 2})
    {
        for (const int side : {0, 1, 2})
        {
            SCOPED_TRACE(testing::Message() << "style " << style << ", side " << side);
            text.SetBevelStyle(style);
            text.SetBevelLocation(side);
            text.CalculateBounds();
            TakeOver(text);
            EXPECT_DOUBLE_EQ(shaped.GetScaledDimensions().x, text.GetScaledDimensions().x);
            EXPECT_DOUBLE_EQ(shaped.GetScaledDimensions().y, text.GetScaledDimensions().y);
            EXPECT_TRUE(PicturesMatch(Drawn(text, nullptr), Drawn(shaped, nullptr), "shaped"));
            ExpectSamePicture(shaped);
        }
    }
}

TEST_P(ShapedPixels, LinesAndSpacingsAreThoseOfOtherTexts)
{
    REQUIRE_CONTEXT(context);
    text.SetBevelStyle(1);
    for (const int side : {0, 1, 2})
    {
        for (const DWORD flags : {0, 4, 8, 12})
        {
            SCOPED_TRACE(testing::Message() << "side " << side << ", flags " << flags);
            text.SetJustification(side);
            text.stringFlags = flags | 3;
            text.SetInterCharacterSpacing(0.07f);
            text.SetInterLineSpacing(-0.1f);
            text.CalculateBounds();
            TakeOver(text, {"kern=0", "liga=0"});
            EXPECT_TRUE(PicturesMatch(Drawn(text, nullptr), Drawn(shaped, nullptr), "shaped"));
        }
    }
}

TEST_P(ShapedPixels, ProfilesLookLikeThoseOfOtherTexts)
{
    REQUIRE_CONTEXT(context);
    OrvProfileString profiled;
    static_cast<OrvFontString&>(profiled) = text;
    profiled.SetProfile(ParseProfile("round 0.04"));
    for (const LetterFusion fusion :
         {LetterFusion::Separate, LetterFusion::Line, LetterFusion::Text})
    {
        profiled.SetFusion(fusion);
        profiled.CalculateBounds();
        shaped.SetHasProfile(true);
        shaped.SetProfile(profiled.GetProfile());
        shaped.SetFusion(fusion);
        TakeOver(profiled, {"kern=0", "liga=0"});
        EXPECT_TRUE(PicturesMatch(Drawn(profiled, nullptr), Drawn(shaped, nullptr), "shaped"));
        ExpectSamePicture(shaped);
    }
}

TEST_P(ShapedPixels, EveryScriptSizeAndColourLooksTheSameWithACache)
{
    REQUIRE_CONTEXT(context);
    TakeOver(text);
    ShapedTextSettings settings = InFont("DejaVu Sans");
    const std::string mixed =
        "x\u0304\u0302 office\n\u0633\u0644\u0627\u0645 \u05E9\u05DC\u05D5\u05DD";
    shaped.SetText(mixed, settings);
    shaped.CalculateBounds();
    ExpectSamePicture(shaped);

    settings.spans.push_back({0, 1, settings.style});
    settings.spans.back().style.size = 1.5;
    settings.spans.back().style.rise = 0.25;
    shaped.SetText(mixed, settings);
    shaped.CalculateBounds();
    ExpectSamePicture(shaped);
    const Picture plain = Drawn(shaped, &cache);

    settings.spans.back().style.face = MaterialOf(0.1f, 0.2f, 0.9f);
    shaped.SetText(mixed, settings);
    shaped.CalculateBounds();
    ExpectSamePicture(shaped);
    EXPECT_NE(plain.bytes, Drawn(shaped, &cache).bytes);
    shaped.SetHasProfile(true);
    shaped.CalculateBounds();
    ExpectSamePicture(shaped);
    shaped.SetFusion(LetterFusion::Line);
    ExpectSamePicture(shaped);
}

TEST_P(ShapedPixels, ColouredGlyphsAndLettersOnAPathLookTheSameWithACache)
{
    REQUIRE_CONTEXT(context);
    TakeOver(text);
    const TemporaryName name("colors.ttf");
    ColorFont().Write(name.Path().Text());
    ShapedTextSettings settings;
    settings.fonts.emplace_back().query.file = name.Path().Text();
    settings.style.fonts = {0};
    settings.usesColorGlyphs = true;
    for (const int style : {0, 1, 2})
    {
        SCOPED_TRACE(style);
        shaped.SetBevelStyle(style);
        shaped.SetText("HOH", settings);
        shaped.CalculateBounds();
        ExpectSamePicture(shaped);
    }
    const Picture straight = Drawn(shaped, &cache);
    settings.path = orvane::TextPath();
    settings.path->radius = 1;
    shaped.SetText("HOH", settings);
    shaped.CalculateBounds();
    ExpectSamePicture(shaped);
    EXPECT_NE(straight.bytes, Drawn(shaped, &cache).bytes);
    shaped.SetInterCharacterSpacing(0.2f);
    shaped.CalculateBounds();
    ExpectSamePicture(shaped);
    shaped.SetHasProfile(true);
    shaped.CalculateBounds();
    ExpectSamePicture(shaped);
}

TEST_P(ShapedPixels, ChangesOfTheTextAndItsSettingsAreSeenAtTheNextDraw)
{
    REQUIRE_CONTEXT(context);
    TakeOver(text);
    ExpectSamePicture(shaped);
    const Picture first = Drawn(shaped, &cache);
    shaped.SetText("Rag\n&8j");
    ExpectSamePicture(shaped);
    EXPECT_NE(first.bytes, Drawn(shaped, &cache).bytes);
    ShapedTextSettings settings = InFont("DejaVu Sans");
    shaped.SetText("Rag\n&8j", settings);
    ExpectSamePicture(shaped);
    settings.lineHeight = 1.5;
    shaped.SetText("Rag\n&8j", settings);
    ExpectSamePicture(shaped);
    shaped.SetHasProfile(true);
    ExpectSamePicture(shaped);
    shaped.SetHasProfile(false);
    ExpectSamePicture(shaped);
}

}  // namespace
