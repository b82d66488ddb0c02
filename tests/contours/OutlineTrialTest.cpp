// SPDX-License-Identifier: MIT
#include "contours/OutlineTrial.h"

#include "contours/Areas.h"
#include "contours/Crossings.h"
#include "contours/Directions.h"
#include "extrude/OrvGlyph.h"
#include "outline/TTGlyph.h"
#include "platform/Limits.h"
#include "platform/posix/fonts/GlyphPolygons.h"
#include "tests/support/NativeOutlines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace orvane::contours;

namespace
{

constexpr int em = 1000;

/// The glyph that the library builds from an outline.
std::unique_ptr<OrvGlyph> Build(const NativeOutline& outline)
{
    std::vector<BYTE> bytes = posix::NativePolygons(outline);
    TTGlyph native;
    native.FromGlyphOutline(bytes.data(), bytes.size());
    auto glyph = std::make_unique<OrvGlyph>(bytes.size(), GLYPHMETRICS{});
    glyph->FromTTGlyph(native, em);
    return glyph;
}

TEST(OutlineTrial, FlattensToTheVerticesOfTheBuiltGlyph)
{
    std::mt19937 random(5);
    for (int turn = 0; turn < 300; ++turn)
    {
        const NativeOutline outline = RandomOutline(random, 1 + turn % 3, 3 + turn % 9);
        const std::unique_ptr<OrvGlyph> glyph = Build(outline);
        const FlatOutline flat = FlattenAndSeparate(outline, em);
        ASSERT_EQ(flat.sizes.size(), static_cast<std::size_t>(glyph->GetContourCount()));
        ASSERT_EQ(flat.vertices.size(), static_cast<std::size_t>(glyph->vertices.GetSize()));
        for (int i = 0; i < glyph->vertices.GetSize(); ++i)
        {
            const Point2D& built = glyph->vertices[i].point;
            ASSERT_EQ(flat.vertices[i].point.x, built.x) << turn;
            ASSERT_EQ(flat.vertices[i].point.y, built.y) << turn;
        }
    }
}

TEST(OutlineTrial, OutlinesThatPassHaveFacesWhenBuilt)
{
    std::mt19937 random(7);
    int passed = 0;
    int refused = 0;
    for (int turn = 0; turn < 3000; ++turn)
    {
        const NativeOutline outline = RandomOutline(random, 1 + turn % 2, 3 + turn % 3);
        const bool filled = Build(outline)->facePolygons.GetSize() != 0;
        if (TryOutline(outline, em).fills)
        {
            const bool flat = OddArea(FlattenAndSeparate(outline, em)) == 0;
            EXPECT_TRUE(filled || flat) << turn;
            ++passed;
        }
        else
        {
            ++refused;
        }
    }
    // Outlines that pass and outlines that do not must both be frequent.
    EXPECT_GT(passed, 300);
    EXPECT_GT(refused, 300);
}

TEST(OutlineTrial, OverlappingSquaresDoNotFill)
{
    const NativeOutline outline = MakeOutline({SquareAt(0, 0, 100), SquareAt(50, 50, 100)});
    EXPECT_FALSE(TryOutline(outline, em).fills);
    EXPECT_LT(OddArea(FlattenAndSeparate(outline, em)), 0);
    EXPECT_DOUBLE_EQ(NonZeroArea(FlattenAndSeparate(outline, em)), 17500);
}

TEST(OutlineTrial, ASquareInsideAnotherOfTheSameDirectionIsAHoleByTheOddRuleOnly)
{
    const NativeOutline outline = MakeOutline({SquareAt(0, 0, 100), SquareAt(20, 20, 50)});
    EXPECT_FALSE(TryOutline(outline, em).fills);
    EXPECT_DOUBLE_EQ(OddArea(FlattenAndSeparate(outline, em)), 7500);
    EXPECT_DOUBLE_EQ(NonZeroArea(FlattenAndSeparate(outline, em)), 10000);
}

TEST(OutlineTrial, ContoursThatRunTheWrongWayAreFound)
{
    // A ring with another square in its hole
    const auto wrong = [](bool outer, bool hole, bool inner) {
        const OutlineVerdict verdict =
            TryOutline(MakeOutline({SquareAt(0, 0, 100, outer), SquareAt(20, 20, 60, !hole),
                                    SquareAt(40, 40, 20, inner)}),
                       em);
        return verdict.wrongWay;
    };
    EXPECT_TRUE(wrong(false, false, false).empty());
    EXPECT_EQ(wrong(true, true, true), (std::vector<bool>{true, true, true}));
    EXPECT_EQ(wrong(false, false, true), (std::vector<bool>{false, false, true}));
}

TEST(OutlineTrial, CurvesAreTriedAsPolygons)
{
    EXPECT_TRUE(TryOutline(MakeOutline({RoundAt(0, 0, 300), RoundAt(0, 0, 200, true)}), em).fills);
    EXPECT_FALSE(TryOutline(MakeOutline({RoundAt(0, 0, 300), RoundAt(400, 0, 200)}), em).fills);
    EXPECT_EQ(TryOutline(MakeOutline({RoundAt(0, 0, 300, true)}), em).wrongWay,
              std::vector<bool>{true});
}

TEST(OutlineTrial, EmptyAndDegenerateOutlinesPass)
{
    EXPECT_TRUE(TryOutline({}, em).fills);
    EXPECT_TRUE(TryOutline(MakeOutline({{{5, 5}, {5, 5}}}), em).fills);
    EXPECT_TRUE(TryOutline(MakeOutline({{{0, 0}, {100, 0}, {50, 0}}}), em).fills);
    // Flattening drops all vertices of the specks. A speck must not count as lying inside or around
    // another contour.
    const std::vector<OutlineAt> speck = {{5, 5}, {5, 6}, {6, 5}};
    for (const auto& contours :
         {std::vector<std::vector<OutlineAt>>{speck, speck}, {speck, SquareAt(0, 0, 100), speck}})
    {
        const OutlineVerdict verdict = TryOutline(MakeOutline(contours), em);
        EXPECT_TRUE(verdict.fills);
        EXPECT_TRUE(verdict.wrongWay.empty());
    }
}

TEST(OutlineTrial, AnOutlineWithTooManyMeetingsIsHopeless)
{
    std::vector<OutlineAt> scribble;
    for (int n = 0; n < 1000; ++n)
    {
        scribble.push_back({n % 2 == 0 ? 0 : 9000, (n * 7919) % 9001});
    }
    EXPECT_TRUE(TryOutline(MakeOutline({scribble}), em).isHopeless);
}

TEST(OutlineTrial, TwentyThousandMeetingsAreNotHopeless)
{
    EXPECT_EQ(orvane::limits::maxEdgeMeetings, 20000);
    // Each of 100 bars crosses each of 50 others, with 4 crossings.
    std::vector<std::vector<OutlineAt>> bars;
    for (int n = 0; n < 100; ++n)
    {
        const int y = 20 * n;
        bars.push_back({{-10, y}, {-10, y + 9}, {1000, y + 9}, {1000, y}});
    }
    for (int n = 0; n < 50; ++n)
    {
        const int x = 20 * n;
        bars.push_back({{x, -10}, {x, 2000}, {x + 9, 2000}, {x + 9, -10}});
    }
    const OutlineVerdict atLimit = TryOutline(MakeOutline(bars), em, CrossingEdges::Presumed);
    EXPECT_FALSE(atLimit.isHopeless);
    EXPECT_TRUE(atLimit.isPresumed);
    // The corner of a square touches the corner of a bar.
    bars.push_back(SquareAt(1000, -5, 5));
    EXPECT_TRUE(TryOutline(MakeOutline(bars), em, CrossingEdges::Presumed).isHopeless);
}

}  // namespace
