// SPDX-License-Identifier: MIT
#include "solids/LetterJoiner.h"

#include "solids/MeshBuilder.h"
#include "solids/MeshMeasures.h"
#include "solids/OrvProfileString.h"
#include "tests/support/StubFont.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace
{
using namespace orvane;
using Groups = std::vector<std::vector<std::size_t>>;

TEST(OverlappingGroups, BoxesThatMeetDirectlyOrThroughOthersAreOneGroup)
{
    const PlaneBox left = {{0, 0}, {1, 1}};
    const PlaneBox bridge = {{0.5, 0.5}, {5, 0.75}};
    const PlaneBox right = {{5, 0}, {6, 1}};  // touches the bridge
    const PlaneBox apart = {{7, 0}, {8, 1}};
    const PlaneBox above = {{0, 2}, {8, 3}};
    EXPECT_EQ(OverlappingGroups({right, apart, left, above, bridge}),
              Groups({{0, 2, 4}, {1}, {3}}));
    EXPECT_EQ(OverlappingGroups({right, apart, left, above}), Groups({{0}, {1}, {2}, {3}}));
}

TEST(OverlappingGroups, BoxesAreMetAlongEitherAxis)
{
    std::vector<PlaneBox> boxes;
    for (int i = 0; i < 6; ++i)
    {
        // Each second box touches the one before it.
        const double y = 2.0 * i - i % 2;
        boxes.push_back({{0, -y - 1}, {1, -y}});
    }
    EXPECT_EQ(OverlappingGroups(boxes), Groups({{0, 1}, {2, 3}, {4, 5}}));
}

TEST(OverlappingGroups, AnEmptyBoxAndOneThatIsNoNumberMeetNothing)
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    const PlaneBox box = {{0, 0}, {1, 1}};
    EXPECT_EQ(OverlappingGroups({box, PlaneBox(), PlaneBox{{none, 0}, {1, 1}}, box}),
              Groups({{0, 3}, {1}, {2}}));
    EXPECT_EQ(OverlappingGroups({}), Groups());
}

/// The letter A of the font is a square of 1 em with an advance of 0.5, B a box of 0.25 by 0.75
/// with an advance of 0.25, and D an empty letter with an advance of 1.
class JoinedLetters : public testing::Test
{
protected:
    JoinedLetters()
    {
        text.AttachFont(&font);
        text.SetScale(DVector(1, 1, 0.5));
        text.SetBevelLocation(static_cast<int>(BevelSides::Front));
        text.ClearAdjustSpacingForBevels();
        text.SetFusion(LetterFusion::Line);
    }

    MeshMeasures Measured(const std::string& letters, const char* profile)
    {
        text.SetTextString(letters.c_str());
        text.SetProfile(ParseProfile(profile));
        return MeasureMesh(BuildMesh(text)).all;
    }

    static std::string Repeated(const char* letters, int count)
    {
        std::string all;
        for (int i = 0; i < count; ++i)
        {
            all += letters;
        }
        return all;
    }

    StubFont font;
    OrvProfileString text;
};

TEST_F(JoinedLetters, LettersThatMeetAndLettersApartKeepTheirPlaces)
{
    const MeshMeasures measures = Measured("AADB", "0,0");
    EXPECT_TRUE(measures.isClosed);
    EXPECT_NEAR(measures.volume, (1.5 + 0.25 * 0.75) * 0.5, 1e-4);
    // B begins 2 em after the first A: two advances of A and one of D.
    EXPECT_NEAR(measures.bounds.maximum[0] - measures.bounds.minimum[0], 2.25, 1e-4);
    EXPECT_NEAR(measures.bounds.maximum[1] - measures.bounds.minimum[1], 1.25, 1e-4);
}

TEST_F(JoinedLetters, LettersAreJoinedWhereOnlyTheirProfilesMeet)
{
    // There is a gap of half an em between the two squares. Each profile reaches 0.3 into it.
    const MeshMeasures measures = Measured("ADA", "0,0 0.3,0 0.3,-0.1");
    EXPECT_TRUE(measures.isClosed);
    EXPECT_NEAR(measures.volume, (2.5 + 0.6) * 1.6 * 0.5, 1e-3);
    // With a reach of 0.2 they stay apart.
    EXPECT_NEAR(Measured("ADA", "0,0 0.2,0 0.2,-0.1").volume, 2 * 1.4 * 1.4 * 0.5, 1e-3);
}

TEST_F(JoinedLetters, AMirroredAndStretchedTextHasItsLettersInPlace)
{
    text.SetScale(DVector(-2, 3, 0.5));
    text.SetScaleBevels();
    const MeshMeasures measures = Measured("AADB", "0,0");
    EXPECT_TRUE(measures.isClosed);
    EXPECT_NEAR(measures.volume, 6 * (1.5 + 0.25 * 0.75) * 0.5, 1e-3);
    EXPECT_NEAR(measures.bounds.maximum[0] - measures.bounds.minimum[0], 4.5, 1e-4);
}

TEST_F(JoinedLetters, TheWidestStrokeOfTheLineGivesTheSlopeOfAChisel)
{
    const MeshMeasures measures = Measured("ADB", "chisel 0.1");
    EXPECT_TRUE(measures.isClosed);
    // The planes rise by 0.1 over 0.5 em, to a pyramid on A. On B they meet at a height of 0.025,
    // in a hipped roof: width * height * (3 length - width) / 6.
    const double pyramid = 0.1 / 3;
    const double roof = 0.25 * 0.025 * (3 * 0.75 - 0.25) / 6;
    EXPECT_NEAR(measures.volume, pyramid + roof + (1 + 0.25 * 0.75) * 0.4, 1e-4);
    // In the next text the box of two B's side by side, which is half an em wide, is the widest.
    const double pair = 0.5 * 0.1 * (3 * 0.75 - 0.5) / 6 + 0.5 * 0.75 * 0.4;
    EXPECT_NEAR(Measured("BB", "chisel 0.1").volume, pair, 1e-4);
}

/// A profile of 64 rings.
EdgeProfile ManyRings()
{
    EdgeProfile profile;
    for (int i = 0; i < 64; ++i)
    {
        profile.steps.push_back({0, -i / 256.0});
    }
    return profile;
}

TEST_F(JoinedLetters, ThousandsOfLettersApartHaveTheirProfile)
{
    // One region of n squares in a row takes 12 n^2 steps a ring, so that 807 would be too many.
    text.SetProfile(ManyRings());
    text.SetTextString(Repeated("AD", 1000).c_str());
    const MeshMeasures measures = MeasureMesh(BuildMesh(text)).all;
    EXPECT_TRUE(text.UncutSolids().empty());
    EXPECT_NEAR(measures.volume, 1000 * 0.5, 0.1);
}

TEST_F(JoinedLetters, TooManyLettersThatMeetKeepSquareEdgesOrAreLeftOut)
{
    text.SetProfile(ManyRings());
    text.SetTextString(Repeated("A", 400).c_str());
    EXPECT_NEAR(MeasureMesh(BuildMesh(text)).all.volume, (399 * 0.5 + 1) * 0.5, 0.1);
    EXPECT_TRUE(text.UncutSolids().empty());

    text.SetTextString(Repeated("A", 1000).c_str());
    EXPECT_NEAR(MeasureMesh(BuildMesh(text)).all.volume, (999 * 0.5 + 1) * 0.5, 0.2);
    std::vector<UncutSolid> uncut = text.UncutSolids();
    ASSERT_EQ(uncut.size(), 1u);
    EXPECT_FALSE(uncut[0].isLeftOut);
    EXPECT_NE(uncut[0].problem.find("expected at most 500000000"), std::string::npos)
        << uncut[0].problem;

    text.SetTextString(Repeated("A", 7000).c_str());
    EXPECT_EQ(BuildMesh(text).TriangleCount(), 0u);
    uncut = text.UncutSolids();
    ASSERT_EQ(uncut.size(), 1u);
    EXPECT_TRUE(uncut[0].isLeftOut);
    EXPECT_NE(uncut[0].problem.find("expected at most 500000000"), std::string::npos)
        << uncut[0].problem;
}

TEST_F(JoinedLetters, AllSolidsOfATextShareTheLimit)
{
    text.SetProfile(ManyRings());
    // 12 * 600^2 * 64 steps a line are more than half of the limit.
    text.SetTextString((Repeated("A", 600) + "\r\n" + Repeated("A", 600)).c_str());
    BuildMesh(text);
    const std::vector<UncutSolid> uncut = text.UncutSolids();
    ASSERT_EQ(uncut.size(), 1u);
    EXPECT_EQ(uncut[0].line, 1);
    EXPECT_FALSE(uncut[0].isLeftOut);
}

}  // namespace
