// SPDX-License-Identifier: MIT
#include "shapedtext/OrvShapedString.h"

#include "extrude/OrvFont.h"
#include "orvane/Error.h"
#include "platform/Limits.h"
#include "solids/ClosedText.h"
#include "solids/MeshBuilder.h"
#include "solids/MeshMeasures.h"
#include "tests/shapedtext/ShapedSettings.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace
{
using orvane::Alignment;
using orvane::LetterFusion;
using orvane::MeshMeasures;
using orvane::OrvShapedString;
using orvane::ParseProfile;
using orvane::PlacedLetter;
using orvane::ShapedTextSettings;
using orvane::SolidMesh;

// In DejaVu Sans, of 2,048 units per em, H has an advance of 1,540 units and is 1,493 units high,
// and the letters of "AV" are set 131 units closer than their advances of 1,401 say.
constexpr double em = 2048;
constexpr double widthOfH = 1540 / em;
constexpr double heightOfH = 1493 / em;

/// How many parts of a mesh are not joined by triangles, where equal places are one.
std::size_t CountParts(const SolidMesh& mesh)
{
    std::map<std::array<float, 3>, std::size_t> places;
    std::vector<std::size_t> above;
    const auto topOf = [&above](std::size_t at) {
        while (above[at] != at)
        {
            at = above[at];
        }
        return at;
    };
    const auto placeOf = [&](std::uint32_t vertex) {
        const float(&p)[3] = mesh.vertices[vertex].position;
        const auto [found, isNew] = places.try_emplace({p[0], p[1], p[2]}, above.size());
        if (isNew)
        {
            above.push_back(above.size());
        }
        return topOf(found->second);
    };
    for (std::size_t i = 0; i < mesh.indices.size(); i += 3)
    {
        const std::size_t first = placeOf(mesh.indices[i]);
        above[placeOf(mesh.indices[i + 1])] = first;
        above[placeOf(mesh.indices[i + 2])] = first;
    }
    std::set<std::size_t> tops;
    for (std::size_t at = 0; at < above.size(); ++at)
    {
        tops.insert(topOf(at));
    }
    return tops.size();
}

class OrvShapedStringTest : public testing::Test
{
protected:
    OrvShapedStringTest()
    {
        text.SetScale(DVector(1, 1, 0.25));
        text.ClearAdjustSpacingForBevels();
    }

    void Set(const std::string& characters) { Set(characters, settings); }
    void Set(const std::string& characters, const ShapedTextSettings& chosen)
    {
        text.SetText(characters, chosen);
        text.CalculateBounds();
    }
    std::vector<PlacedLetter> Letters()
    {
        std::vector<PlacedLetter> letters;
        text.PlaceSolids([&](const PlacedLetter& letter) { letters.push_back(letter); });
        return letters;
    }
    std::vector<double> Places()
    {
        std::vector<double> places;
        for (const PlacedLetter& letter : Letters())
        {
            places.push_back(letter.x);
        }
        return places;
    }
    MeshMeasures Measured() { return MeasureMesh(orvane::BuildMesh(text)).all; }

    ShapedTextSettings settings = InFont("DejaVu Sans");
    OrvShapedString text;
};

TEST_F(OrvShapedStringTest, PairsAreKernedUnlessTheFeatureIsOff)
{
    Set("AV");
    EXPECT_NEAR(Places()[1], (1401 - 131) / em, 1e-9);
    settings.style.features = {"kern=0"};
    Set("AV");
    EXPECT_NEAR(Places()[1], 1401 / em, 1e-9);
}

TEST_F(OrvShapedStringTest, ItsBoundsHoldTheLettersAtEachAlignment)
{
    Set("HH");
    EXPECT_NEAR(text.GetUnscaledDimensions().x, 2 * widthOfH, 1e-9);
    EXPECT_NEAR(text.GetUnscaledDimensions().y, heightOfH, 1e-6);
    const struct
    {
        Alignment alignment;
        double left;
    } cases[] = {
        {Alignment::Left, 0}, {Alignment::Center, -widthOfH}, {Alignment::Right, -2 * widthOfH}};
    for (const auto& each : cases)
    {
        text.SetJustification(static_cast<int>(each.alignment));
        text.CalculateBounds();
        EXPECT_NEAR(text.GetBoundsLocalMinimum().x, each.left, 1e-6);
        EXPECT_NEAR(text.GetBoundsLocalMaximum().x, each.left + 2 * widthOfH, 1e-6);
        EXPECT_NEAR(text.GetBoundsLocalMinimum().y, -heightOfH / 2, 1e-6);
        EXPECT_NEAR(Places()[0], each.left, 1e-9);
        EXPECT_NEAR(Places()[1], each.left + widthOfH, 1e-9);
        EXPECT_NEAR(Letters()[0].y, -heightOfH / 2, 1e-6);
    }
}

TEST_F(OrvShapedStringTest, SpacingDoesNotTearTouchingLettersApart)
{
    text.SetInterCharacterSpacing(0.5f);
    Set("HH");
    EXPECT_NEAR(Places()[1] - Places()[0], widthOfH + 0.5, 1e-9);
    const std::string word = "\u0628\u0628\u0628";  // three letters that are joined
    Set(word);
    const std::vector<double> spaced = Places();
    text.SetInterCharacterSpacing(0);
    Set(word);
    EXPECT_EQ(spaced, Places());
}

TEST_F(OrvShapedStringTest, LinesAreOneEmApartOrAsTheFontAsks)
{
    Set("H\nH");
    EXPECT_NEAR(Letters()[0].y - Letters()[1].y, 1, 1e-9);
    settings.lineHeight = 1.5;
    Set("H\nH");
    // The font asks for an ascent of 1,901 and a descent of 483 units.
    EXPECT_NEAR(Letters()[0].y - Letters()[1].y, 1.5 * (1901 + 483) / em, 1e-9);
    EXPECT_EQ(Letters()[1].line, 1);
}

TEST_F(OrvShapedStringTest, LinesAreBrokenAtTheWidthAndJustified)
{
    settings.width = 3;
    Set("HH HH HH");
    EXPECT_EQ(Letters().back().line, 2);
    settings.width = 4;
    settings.isJustified = true;
    Set("HH HH HH");
    // The first line, of two words, is as wide as the text: its last letter ends at 4.
    const std::vector<PlacedLetter> letters = Letters();
    EXPECT_EQ(letters[4].line, 0);
    EXPECT_NEAR(letters[4].x + widthOfH, 4, 1e-6);
    EXPECT_EQ(letters.back().line, 1);
    settings.width = 0;
    EXPECT_THROW(text.SetText("H", settings), orvane::OptionError);
}

TEST_F(OrvShapedStringTest, SpansHaveFontsAndSizesOfTheirOwn)
{
    settings.fonts.emplace_back().query.name = "DejaVu Serif";
    settings.spans.push_back({1, 2, settings.style});
    settings.spans[0].style.fonts = {1};
    settings.spans[0].style.size = 2;
    settings.spans[0].style.rise = 0.5;
    Set("HHH");
    // In DejaVu Serif, H has an advance of 1,786 units.
    EXPECT_NEAR(Places()[1], widthOfH, 1e-9);
    EXPECT_NEAR(Places()[2], widthOfH + 2 * 1786 / em, 1e-9);
    EXPECT_NEAR(Letters()[1].y - Letters()[0].y, 0.5, 1e-9);
    EXPECT_EQ(text.GetLayout().faces.size(), 2u);
    EXPECT_NEAR(text.GetUnscaledDimensions().y, 0.5 + 2 * heightOfH, 1e-6);
    EXPECT_NEAR(Measured().bounds.maximum[1] - Measured().bounds.minimum[1], 0.5 + 2 * heightOfH,
                1e-6);
    text.SetHasProfile(true);
    text.SetProfile(ParseProfile("0,0"));
    text.CalculateBounds();
    EXPECT_NEAR(Measured().bounds.maximum[1] - Measured().bounds.minimum[1], 0.5 + 2 * heightOfH,
                2e-3);
}

TEST_F(OrvShapedStringTest, SpansHaveMaterialsOfTheirOwn)
{
    NamedColor red("red");
    red.SetDiffuseColor(ColorVector(1, 0, 0, 1));
    settings.spans.push_back({1, 2, settings.style});
    settings.spans[0].style.face = red;
    Set("HHH");
    EXPECT_TRUE(text.HasLetterColors());
    for (const bool hasProfile : {false, true})
    {
        text.SetHasProfile(hasProfile);
        text.CalculateBounds();
        const SolidMesh mesh = orvane::BuildMesh(text);
        std::size_t indices = 0;
        for (const orvane::MeshGroup& group : mesh.groups)
        {
            const bool isRed =
                std::string(mesh.materials[static_cast<std::size_t>(group.material)].GetName()) ==
                "red";
            EXPECT_FALSE(isRed && group.part != orvane::MeshPart::Face);
            indices += isRed ? group.indexCount : 0;
        }
        std::size_t faces = 0;
        for (const orvane::MeshGroup& group : mesh.groups)
        {
            faces += group.part == orvane::MeshPart::Face ? group.indexCount : 0;
        }
        EXPECT_EQ(3 * indices, faces) << hasProfile;  // one of three letters
    }
    settings.spans[0].style.face->SetDiffuseColor(ColorVector(1, 0, 0, 0.5f));
    Set("HHH");
    EXPECT_TRUE(text.IsTransparent());
    Set("HHH", InFont("DejaVu Sans"));
    EXPECT_FALSE(text.IsTransparent());
}

TEST_F(OrvShapedStringTest, AnArabicWordIsOneSolidWhenLinesAreFused)
{
    // Kaf, lam and meem have no dots and are joined.
    const std::string word = "\u0643\u0644\u0645";
    text.SetHasProfile(true);
    text.SetProfile(ParseProfile("chamfer -0.01"));
    Set(word);
    EXPECT_EQ(CountParts(orvane::BuildMesh(text)), 3u);
    text.SetFusion(LetterFusion::Line);
    text.CalculateBounds();
    const SolidMesh fused = orvane::BuildMesh(text);
    EXPECT_EQ(CountParts(fused), 1u);
    EXPECT_TRUE(MeasureMesh(fused).all.isClosed);
    Set(word + " " + word);
    EXPECT_EQ(CountParts(orvane::BuildMesh(text)), 2u);
}

TEST_F(OrvShapedStringTest, ItsMeshHasTheTextAsItsName)
{
    const std::string greeting = "\u0633\u0644\u0627\u0645 \u05E9\u05DC\u05D5\u05DD";
    Set(greeting);
    const SolidMesh mesh = orvane::BuildMesh(text);
    ASSERT_EQ(mesh.nodes.size(), 1u);
    EXPECT_EQ(mesh.nodes[0].name, greeting);
    EXPECT_GT(mesh.indices.size(), 0u);
}

TEST_F(OrvShapedStringTest, BecomesAClosedTextForPrinting)
{
    Set("AV");
    text.SetBevelStyle(1);
    text.SetBevelDepth(0.03125f);
    EXPECT_FALSE(orvane::IsClosedText(text));
    orvane::MeshBuildOptions options;
    options.closedTexts = true;
    const SolidMesh mesh = orvane::BuildMesh(text, options);
    EXPECT_TRUE(MeasureMesh(mesh).all.isClosed);
    const std::unique_ptr<orvane::OrvProfileString> closed = orvane::MakeClosedText(text);
    EXPECT_TRUE(orvane::IsClosedText(*closed));
    EXPECT_EQ(closed->GetProfile(), ParseProfile("chamfer 0.03125"));
    EXPECT_EQ(dynamic_cast<OrvShapedString&>(*closed).GetText(), "AV");
    EXPECT_FALSE(text.HasProfile());
}

TEST_F(OrvShapedStringTest, UndoBringsBackTextAndSettings)
{
    Set("AV");
    const std::vector<double> before = Places();
    text.SaveToUndo();
    settings.style.features = {"kern=0"};
    settings.width = 2;
    Set("AVA");
    text.SetHasProfile(true);
    EXPECT_EQ(text.RestoreFromUndo(), 1);
    EXPECT_EQ(text.GetText(), "AV");
    EXPECT_EQ(text.GetSettings().width, 0);
    EXPECT_TRUE(text.GetSettings().style.features.empty());
    EXPECT_FALSE(text.HasProfile());
    EXPECT_EQ(Places(), before);
}

TEST_F(OrvShapedStringTest, ACopyIsIndependent)
{
    Set("AV");
    OrvShapedString copy(text);
    Set("HHH", InFont("DejaVu Serif"));
    EXPECT_EQ(copy.GetText(), "AV");
    copy.CalculateBounds();
    EXPECT_NEAR(copy.GetUnscaledDimensions().x, (2 * 1401 - 131) / em, 1e-9);
    EXPECT_GT(MeasureMesh(orvane::BuildMesh(copy)).all.triangles, 0u);
    OrvShapedString assigned;
    assigned = copy;
    EXPECT_EQ(assigned.GetText(), "AV");
    EXPECT_EQ(assigned.GetSettings().fonts[0].query.name, "DejaVu Sans");
    assigned.SetText("AVA");
    EXPECT_EQ(copy.GetText(), "AV");
}

TEST_F(OrvShapedStringTest, ARefusedTextChangesNothing)
{
    Set("AV");
    EXPECT_THROW(text.SetText("A\xFF"), orvane::Error);
    EXPECT_THROW(text.SetText("A", InFont("No Such Font At All")), orvane::Error);
    ShapedTextSettings wrong = settings;
    wrong.style.fonts = {1};
    EXPECT_THROW(text.SetText("A", wrong), orvane::OptionError);
    wrong = settings;
    wrong.style.size = -1;
    EXPECT_THROW(text.SetText("A", wrong), orvane::OptionError);
    wrong = settings;
    wrong.spans.push_back({0, 2, settings.style});
    EXPECT_THROW(text.SetText("A", wrong), orvane::OptionError);
    EXPECT_EQ(text.GetText(), "AV");
    EXPECT_EQ(Places().size(), 2u);
}

TEST_F(OrvShapedStringTest, ATextNamesFontsAndTabStopsUpToTheLimits)
{
    settings.fonts.resize(orvane::limits::maxTextFonts, settings.fonts[0]);
    for (std::size_t i = 0; i < orvane::limits::maxTabStops; ++i)
    {
        settings.tabStops.push_back(static_cast<double>(i + 1));
    }
    Set("A\tV");
    EXPECT_NEAR(Places()[2], 1, 1e-9);  // the first stop
    ShapedTextSettings wrong = settings;
    wrong.fonts.push_back(settings.fonts[0]);
    EXPECT_THROW(text.SetText("A", wrong), orvane::OptionError);
    wrong = settings;
    wrong.tabStops.push_back(2000);
    EXPECT_THROW(text.SetText("A", wrong), orvane::OptionError);
}

TEST_F(OrvShapedStringTest, NamesCharactersThatNoFontHas)
{
    settings.style.usesInstalledFonts = false;
    Set("A\U0001F9EC\u4E2D");
    ASSERT_EQ(text.GetMissingCharacters().size(), 2u);
    EXPECT_EQ(text.GetMissingCharacters()[0].character, char32_t{0x1F9EC});
    EXPECT_EQ(text.GetMissingCharacters()[0].offset, 1u);
    EXPECT_EQ(text.GetMissingCharacters()[1].offset, 5u);
}

TEST_F(OrvShapedStringTest, AChangeThroughTheBaseClassIsFollowed)
{
    Set("AV");
    text.SetTextString("HH\xFFH");
    text.CalculateBounds();
    EXPECT_EQ(Letters().size(), 4u);
    text.SetTextString("");
    text.CalculateBounds();
    EXPECT_EQ(text.GetUnscaledDimensions().x, 0);
    EXPECT_TRUE(Letters().empty());
    EXPECT_EQ(Measured().triangles, 0u);
}

TEST_F(OrvShapedStringTest, EndsOfLettersAreThoseOfTheirBytes)
{
    Set("x\u0304ffi");
    EXPECT_EQ(text.LetterEnd(0), 3u);  // x with a macron of two bytes
    EXPECT_EQ(text.LetterEnd(3), 6u);  // the ligature
}

}  // namespace
