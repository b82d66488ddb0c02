// SPDX-License-Identifier: MIT
#include "solids/ClosedText.h"

#include "orvane/Error.h"
#include "solids/MeshBuilder.h"
#include "solids/MeshMeasures.h"
#include "solids/OrvProfileString.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/StubFont.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>

namespace
{
using orvane::BevelSides;
using orvane::EdgeStyle;
using orvane::MeshMeasures;
using orvane::SolidMesh;

/// The letter A of the font is a square of 1 em.
class ClosedTextTest : public testing::Test
{
protected:
    ClosedTextTest()
    {
        text.AttachFont(&font);
        text.SetTextString("A");
        text.SetScale(DVector(1, 1, 0.5));
        text.SetBevelDepth(0.125f);
        text.CalculateBounds();
    }

    SolidMesh Mesh()
    {
        orvane::MeshBuildOptions options;
        options.closedTexts = true;
        return orvane::BuildMesh(text, options);
    }
    MeshMeasures Measured() { return MeasureMesh(Mesh()).all; }

    StubFont font;
    OrvFontString text;
};

/// The volume between two squares that lie \p height apart.
double Frustum(double side, double otherSide, double height)
{
    return height * (side * side + side * otherSide + otherSide * otherSide) / 3;
}

/// The volume of a rounding of a square's edge, 0.125 wide, in six planes.
double Rounding()
{
    double volume = 0;
    for (int i = 0; i < 6; ++i)
    {
        const double from = std::numbers::pi / 12 * i;
        const double to = std::numbers::pi / 12 * (i + 1);
        volume += Frustum(1 + 0.25 * std::sin(from), 1 + 0.25 * std::sin(to),
                          0.125 * (std::cos(from) - std::cos(to)));
    }
    return volume;
}

TEST_F(ClosedTextTest, EveryStyleIsAClosedSolidOfTheSameMeasures)
{
    const double chamfer = Frustum(1, 1.25, 0.125);
    const double wall = 1.25 * 1.25;
    const auto expectVolume = [this](EdgeStyle style, BevelSides sides, double volume) {
        SCOPED_TRACE(testing::Message()
                     << static_cast<int>(style) << ' ' << static_cast<int>(sides));
        text.SetBevelStyle(static_cast<int>(style));
        text.SetBevelLocation(static_cast<int>(sides));
        const MeshMeasures measures = Measured();
        EXPECT_TRUE(measures.isClosed);
        EXPECT_NEAR(measures.volume, volume, 1e-4);
        EXPECT_FLOAT_EQ(measures.bounds.maximum[2], 0);
        EXPECT_FLOAT_EQ(measures.bounds.minimum[2], -0.5f);
    };
    for (const BevelSides sides : {BevelSides::Front, BevelSides::Back})
    {
        expectVolume(EdgeStyle::Square, sides, 0.5);
        expectVolume(EdgeStyle::Bevel, sides, chamfer + wall * 0.375);
        expectVolume(EdgeStyle::Round, sides, Rounding() + wall * 0.375);
    }
    expectVolume(EdgeStyle::Square, BevelSides::Both, 0.5);
    expectVolume(EdgeStyle::Bevel, BevelSides::Both, 2 * chamfer + wall * 0.25);
    expectVolume(EdgeStyle::Round, BevelSides::Both, 2 * Rounding() + wall * 0.25);
}

TEST_F(ClosedTextTest, BevelsThatDoNotFitAreAsWideAsThoseThatAreDrawn)
{
    text.SetBevelStyle(static_cast<int>(EdgeStyle::Bevel));
    for (const float width : {1.0f, 40.0f, std::numeric_limits<float>::infinity()})
    {
        // Half of the depth of 0.5 on each face.
        text.SetBevelDepth(width);
        const MeshMeasures measures = Measured();
        EXPECT_TRUE(measures.isClosed);
        EXPECT_NEAR(measures.volume, 2 * Frustum(1, 1.5, 0.25), 1e-4);
    }
}

TEST_F(ClosedTextTest, EdgesWithoutWidthAndThoseOfAnUnknownStyleAreSquare)
{
    text.SetBevelStyle(7);
    EXPECT_NEAR(Measured().volume, 0.5, 1e-5);
    text.SetBevelStyle(static_cast<int>(EdgeStyle::Bevel));
    for (const float width : {0.0f, std::numeric_limits<float>::quiet_NaN()})
    {
        text.SetBevelDepth(width);
        EXPECT_NEAR(Measured().volume, 0.5, 1e-5);
    }
}

TEST_F(ClosedTextTest, BevelsWiderThanAProfileCanBeAreAnError)
{
    text.SetBevelStyle(static_cast<int>(EdgeStyle::Bevel));
    text.SetScale(DVector(1, 1, 100));
    text.SetBevelDepth(11);  // a profile reaches 10 ems at most
    EXPECT_THROW(Mesh(), orvane::Error);
}

TEST_F(ClosedTextTest, MirroredAndScaledTextsAreClosed)
{
    text.SetBevelStyle(static_cast<int>(EdgeStyle::Bevel));
    const double chamfer = Frustum(1, 1.25, 0.125);
    text.SetScale(DVector(-1, 1, 0.5));
    EXPECT_NEAR(Measured().volume, 2 * chamfer + 1.25 * 1.25 * 0.25, 1e-4);
    // Bevels that scale with the text are twice as wide in x.
    text.SetScaleBevels();
    text.SetScale(DVector(2, 1, 0.5));
    const MeshMeasures measures = Measured();
    EXPECT_NEAR(measures.volume, 2 * (2 * chamfer + 1.25 * 1.25 * 0.25), 1e-4);
    EXPECT_TRUE(measures.isClosed);
}

TEST_F(ClosedTextTest, TheTextItselfDoesNotChange)
{
    text.SetBevelStyle(static_cast<int>(EdgeStyle::Round));
    text.CalculateBounds();
    const Bytes before = Stored(text);
    const SolidMesh mesh = Mesh();
    EXPECT_EQ(Stored(text), before);
    ASSERT_EQ(mesh.nodes.size(), 1u);
    EXPECT_EQ(mesh.nodes[0].object, &text);
    EXPECT_EQ(mesh.nodes[0].name, "A");
}

TEST_F(ClosedTextTest, EachTextKeepsItsMaterials)
{
    text.SetBevelStyle(static_cast<int>(EdgeStyle::Bevel));
    text.SetFaceColor(NamedColor("face"));
    text.SetEdgeColor(NamedColor("edge"));
    text.SetBevelColor(NamedColor("bevel"));
    OrvFontString other = text;
    other.SetFaceColor(NamedColor("other face"));
    DrawingObject root;
    root.AddChild(&text);
    root.AddChild(&other);
    orvane::MeshBuildOptions options;
    options.closedTexts = true;
    const SolidMesh mesh = orvane::BuildMesh(root, options);
    std::vector<std::string> names;
    for (const orvane::MeshGroup& group : mesh.groups)
    {
        names.emplace_back(mesh.materials[static_cast<std::size_t>(group.material)].GetName());
    }
    EXPECT_EQ(names,
              (std::vector<std::string>{"face", "edge", "bevel", "other face", "edge", "bevel"}));
    root.RemoveChild(&text);
    root.RemoveChild(&other);
}
}  // namespace
