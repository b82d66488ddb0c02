// SPDX-License-Identifier: MIT
#include "contours/ProvidedOutline.h"

#include "contours/Areas.h"
#include "contours/FaceOutlines.h"
#include "contours/OutlineRepair.h"
#include "contours/OutlineTrial.h"
#include "tests/support/NativeOutlines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace orvane::contours;

namespace
{

constexpr int em = 1000;

TEST(ProvidedOutline, ACleanOutlineIsHandedOverUntouched)
{
    const ProvidedOutline provided =
        ProvideOutline(MakeOutline({RoundAt(0, 0, 300), RoundAt(0, 0, 200, true)}), false, em);
    EXPECT_FALSE(provided.outline);
    EXPECT_FALSE(provided.isRepaired || provided.isTurned || provided.isConverted ||
                 provided.isFailed);
}

TEST(ProvidedOutline, ContoursThatRunTheWrongWayAreReversedAndNothingElse)
{
    const ProvidedOutline provided =
        ProvideOutline(MakeOutline({RoundAt(0, 0, 300, true), SquareAt(-50, -50, 100)}), false, em);
    EXPECT_TRUE(provided.isTurned);
    EXPECT_FALSE(provided.isRepaired || provided.isFailed);
    ASSERT_TRUE(provided.outline);
    EXPECT_EQ(*provided.outline, MakeOutline({RoundAt(0, 0, 300), SquareAt(-50, -50, 100, true)}));
}

TEST(ProvidedOutline, AnOutlineBeyondRepairIsAcceptedWhenTheTessellatorFillsIt)
{
    // Two small triangles that cross, with corners a unit or two apart. After rounding, every
    // rebuilt outline crosses again, but the tessellator fills the original.
    const NativeOutline triangles =
        MakeOutline({{{12, 11}, {4, 17}, {11, 17}}, {{11, 20}, {14, 8}, {10, 19}}});
    const OutlineVerdict verdict = TryOutline(triangles, em);
    ASSERT_TRUE(!verdict.fills && verdict.isPresumed);
    ASSERT_FALSE(RepairOutline(triangles, em));
    ASSERT_GT(OddArea(FlattenAndSeparate(triangles, em)), 0);
    const ProvidedOutline provided = ProvideOutline(triangles, false, em);
    EXPECT_FALSE(provided.isFailed || provided.isRepaired || provided.isTurned);
    EXPECT_FALSE(provided.outline);
}

TEST(ProvidedOutline, AHopelessOutlineIsHandedOverUnchanged)
{
    std::vector<OutlineAt> scribble;
    for (int n = 0; n < 1000; ++n)
    {
        scribble.push_back({n % 2 == 0 ? 0 : 9000, (n * 7919) % 9001});
    }
    const ProvidedOutline provided = ProvideOutline(MakeOutline({scribble}), false, em);
    EXPECT_TRUE(provided.isFailed);
    EXPECT_FALSE(provided.outline);
}

TEST(ProvidedOutline, AnyOutlineIsAcceptedWithoutACrash)
{
    std::mt19937 random(3);
    for (int turn = 0; turn < 400; ++turn)
    {
        NativeOutline outline;
        for (int contour = 0; contour < turn % 5; ++contour)
        {
            for (std::uint32_t n = 0; n < 1 + random() % 12; ++n)
            {
                // Coordinates may exceed 16 bits; flattening drops their upper bits.
                const auto coordinate = [&] {
                    return static_cast<std::int32_t>(random()) >> (random() % 20);
                };
                outline.points.push_back({coordinate(), coordinate(), n == 0 || random() % 2 == 0});
            }
            outline.CloseContour();
        }
        const ProvidedOutline provided = ProvideOutline(outline, turn % 2 == 0, em);
        EXPECT_TRUE(!provided.outline || provided.isConverted || provided.isRepaired ||
                    provided.isTurned);
    }
}

TEST(FaceOutlines, ResultsAreKeptByGlyph)
{
    FaceOutlines outlines;
    EXPECT_EQ(outlines.Find(7), nullptr);

    outlines.Keep(7, ProvidedOutline());
    ASSERT_NE(outlines.Find(7), nullptr);
    EXPECT_FALSE(outlines.Find(7)->outline);
    EXPECT_EQ(outlines.Find(6), nullptr);

    ProvidedOutline repaired;
    repaired.isRepaired = true;
    repaired.outline = MakeOutline({SquareAt(0, 0, 10)});
    outlines.Keep(3, repaired);
    ASSERT_NE(outlines.Find(3), nullptr);
    EXPECT_TRUE(outlines.Find(3)->isRepaired);
    EXPECT_EQ(outlines.Find(3)->outline, repaired.outline);
}

}  // namespace
