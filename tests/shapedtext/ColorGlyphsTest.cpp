// SPDX-License-Identifier: MIT
// Glyphs with coloured layers.
#include "shapedtext/OrvShapedString.h"
#include "solids/MeshBuilder.h"
#include "solids/MeshMeasures.h"
#include "tests/shapedtext/ColorFont.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

namespace
{
using orvane::OrvShapedString;
using orvane::SolidMesh;

// A square of 0.5 ems has 0.25 square ems; the triangle on it, half a square of 0.3 ems, has 0.045.
class ColorGlyphs : public testing::Test
{
protected:
    ColorGlyphs()
    {
        settings.fonts.emplace_back().query.file = name.Path().Text();
        settings.style.fonts = {0};
        settings.style.usesInstalledFonts = false;
        settings.usesColorGlyphs = true;
        text.SetScale(DVector(1, 1, 0.25));
    }

    void Set(const std::string& characters, int top = 1)
    {
        ColorFont(top).Write(name.Path().Text());
        text.SetText(characters, settings);
        text.CalculateBounds();
    }

    /// The areas of the faces that look to the front, by the names of their materials.
    std::map<std::string, double> FrontAreas()
    {
        const SolidMesh mesh = orvane::BuildMesh(text);
        std::map<std::string, double> areas;
        for (const orvane::MeshGroup& group : mesh.groups)
        {
            for (std::size_t i = 0; i < group.indexCount; i += 3)
            {
                const auto corner = [&](std::size_t n) -> const float* {
                    return mesh.vertices[mesh.indices[group.firstIndex + i + n]].position;
                };
                const float* const a = corner(0);
                const float* const b = corner(1);
                const float* const c = corner(2);
                if (a[2] == 0 && b[2] == 0 && c[2] == 0)
                {
                    areas[mesh.materials[static_cast<std::size_t>(group.material)].GetName()] +=
                        std::abs(double{b[0] - a[0]} * double{c[1] - a[1]} -
                                 double{b[1] - a[1]} * double{c[0] - a[0]}) /
                        2;
                }
            }
        }
        return areas;
    }

    const TemporaryName name{"colors.ttf"};
    orvane::ShapedTextSettings settings;
    OrvShapedString text;
};

TEST_F(ColorGlyphs, EachColourIsASolidAndHidesWhatLiesUnderIt)
{
    for (const bool hasProfile : {false, true})
    {
        SCOPED_TRACE(hasProfile);
        text.SetHasProfile(hasProfile);
        text.SetProfile(orvane::ParseProfile("0,0"));
        Set("H");
        EXPECT_TRUE(text.HasLetterColors());
        EXPECT_TRUE(text.IsTransparent());
        std::map<std::string, double> areas = FrontAreas();
        EXPECT_EQ(areas.size(), 2u);
        EXPECT_NEAR(areas["#ff0000"], 0.205, 1e-3);
        EXPECT_NEAR(areas["#00ff0033"], 0.045, 1e-3);
    }
}

TEST_F(ColorGlyphs, LayersOfOneColourAreOneSolid)
{
    Set("H", 0);
    const std::map<std::string, double> areas = FrontAreas();
    ASSERT_EQ(areas.size(), 1u);
    EXPECT_NEAR(areas.at("#ff0000"), 0.25, 1e-3);
    EXPECT_FALSE(text.IsTransparent());
}

TEST_F(ColorGlyphs, ALayerInTheColourOfTheTextHasItsMaterial)
{
    NamedColor face("of the text");
    text.SetFaceColor(face);
    Set("H", 0xFFFF);
    EXPECT_NEAR(FrontAreas()["of the text"], 0.045, 1e-3);
    settings.spans.push_back({0, 1, settings.style});
    settings.spans[0].style.face = NamedColor("of the span");
    Set("H", 0xFFFF);
    std::map<std::string, double> areas = FrontAreas();
    EXPECT_NEAR(areas["of the span"], 0.045, 1e-3);
    EXPECT_NEAR(areas["#ff0000"], 0.205, 1e-3);
}

TEST_F(ColorGlyphs, HaveTheColourOfTheTextUnlessTheyAreAskedFor)
{
    NamedColor face("of the text");
    text.SetFaceColor(face);
    settings.usesColorGlyphs = false;
    Set("H");
    EXPECT_FALSE(text.HasLetterColors());
    EXPECT_NEAR(FrontAreas()["of the text"], 0.25, 1e-3);
    settings.usesColorGlyphs = true;
    Set("O");  // has no layers
    EXPECT_FALSE(text.HasLetterColors());
    EXPECT_NEAR(FrontAreas()["of the text"], 0.045, 1e-3);
}

TEST_F(ColorGlyphs, JoinedLettersHaveTheColourOfTheText)
{
    text.SetHasProfile(true);
    text.SetProfile(orvane::ParseProfile("0,0"));
    text.SetFusion(orvane::LetterFusion::Line);
    NamedColor face("of the text");
    text.SetFaceColor(face);
    Set("H");
    std::map<std::string, double> areas = FrontAreas();
    EXPECT_EQ(areas.size(), 1u);
    EXPECT_NEAR(areas["of the text"], 0.25, 1e-3);
}

TEST_F(ColorGlyphs, AreTurnedOnAPath)
{
    settings.path = orvane::TextPath();
    settings.path->data = "M0 0V-4";
    text.SetJustification(static_cast<int>(orvane::Alignment::Left));
    Set("H");
    std::map<std::string, double> areas = FrontAreas();
    EXPECT_NEAR(areas["#ff0000"], 0.205, 1e-3);
    const orvane::MeshMeasures measured = MeasureMesh(orvane::BuildMesh(text)).all;
    EXPECT_NEAR(measured.bounds.minimum[0], -0.5, 1e-3);
    EXPECT_NEAR(measured.bounds.maximum[1], 0.5, 1e-3);
}

}  // namespace
