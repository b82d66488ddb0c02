// SPDX-License-Identifier: MIT
#include "contours/OutlineTrial.h"

#include "contours/Areas.h"
#include "contours/Crossings.h"
#include "contours/Directions.h"
#include "extrude/OrvGlyph.h"
#include "outline/TTGlyph.h"
#include "platform/posix/fonts/GlyphPolygons.h"
#include "tests/support/NativeOutlines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace orvane::contours;

namespace
{

constexpr int em = 1000;

/// The glyph that the library builds of an outline.
std::unique_ptr<OrvGlyph> Build(const NativeOutline& outline)
{
    std::vector<BYTE> bytes = posix::NativePolygons(outline);
    TTGlyph native;
    native.FromGlyphOutline(bytes.data(), bytes.size());
    auto glyph = std::make_unique<OrvGlyph>(bytes.size(), GLYPHMETRICS{});
    glyph->FromTTGlyph(native, em);
    return glyph;
}

/// Contours of random points on a coarse grid, so that some coincide.
NativeOutline RandomOutline(std::mt19937& random, int contours, int points)
{
    std::vector<std::vector<OutlineAt>> all;
    for (int n = 0; n < contours; ++n)
    {
        std::vector<OutlineAt>& contour = all.emplace_back();
        for (int i = 0; i < points; ++i)
        {
            const auto coordinate = [&] { return static_cast<int>(random() % 40) * 25 - 300; };
            contour.push_back({coordinate(), coordinate(), i == 0 || random() % 2 == 0});
        }
    }
    return MakeOutline(all);
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

TEST(OutlineTrial, WhatPassesHasFacesWhenItIsBuilt)
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
    // Both happen often.
    EXPECT_GT(passed, 300);
    EXPECT_GT(refused, 300);
}

TEST(OutlineTrial, EdgesThatKeepApartNeverCross)
{
    EXPECT_EQ(CountMeetings(Flatten(MakeOutline({SquareAt(0, 0, 100)}), em), 9), 0);
    EXPECT_EQ(CountMeetings(
                  Flatten(MakeOutline({SquareAt(0, 0, 100), SquareAt(20, 20, 40, true)}), em), 9),
              0);
    // Two sides cross two sides.
    EXPECT_EQ(
        CountMeetings(Flatten(MakeOutline({SquareAt(0, 0, 100), SquareAt(50, 50, 100)}), em), 9),
        2);
    // Counted no further than one beyond the most.
    EXPECT_EQ(
        CountMeetings(Flatten(MakeOutline({SquareAt(0, 0, 100), SquareAt(50, 50, 100)}), em), 0),
        1);
}

TEST(OutlineTrial, ContoursThatTouchInAPointOrAlongAnEdgeMeet)
{
    const auto meet = [](const std::vector<std::vector<OutlineAt>>& contours) {
        return CountMeetings(Flatten(MakeOutline(contours), em), 0) != 0;
    };
    EXPECT_TRUE(meet({SquareAt(0, 0, 100), SquareAt(100, 100, 50)}));
    EXPECT_TRUE(meet({SquareAt(0, 0, 100), SquareAt(100, 20, 50)}));
    EXPECT_FALSE(meet({SquareAt(0, 0, 100), SquareAt(101, 20, 50)}));
    // A corner on the middle of a slanted edge
    EXPECT_TRUE(meet({{{0, 0}, {100, 200}, {200, 0}}, {{50, 100}, {0, 150}, {0, 100}}}));
    // A contour that turns back on itself, and one of two points
    EXPECT_TRUE(meet({{{0, 0}, {0, 100}, {100, 100}, {50, 100}}}));
    EXPECT_TRUE(meet({{{0, 0}, {100, 100}}}));
    EXPECT_TRUE(meet({{{0, 0}, {100, 100}, {100, 0}, {0, 100}}}));
}

TEST(OutlineTrial, EdgesKeepApartWhenNoneMeet)
{
    std::mt19937 random(13);
    int apart = 0;
    for (int turn = 0; turn < 3000; ++turn)
    {
        const FlatOutline flat = Flatten(RandomOutline(random, 1 + turn % 2, 3 + turn % 3), em);
        ASSERT_EQ(EdgesKeepApart(flat), CountMeetings(flat, 0) == 0) << turn;
        apart += EdgesKeepApart(flat) ? 1 : 0;
    }
    EXPECT_GT(apart, 300);
    for (const bool turned : {false, true})
    {
        // Upright and level edges, in chains of both directions
        EXPECT_TRUE(EdgesKeepApart(
            Flatten(MakeOutline({SquareAt(0, 0, 100, turned), RoundAt(300, 0, 100, turned)}), em)));
    }
}

TEST(OutlineTrial, OverlappingSquaresDoNotFill)
{
    const NativeOutline outline = MakeOutline({SquareAt(0, 0, 100), SquareAt(50, 50, 100)});
    EXPECT_FALSE(TryOutline(outline, em).fills);
    EXPECT_LT(OddArea(FlattenAndSeparate(outline, em)), 0);
    EXPECT_DOUBLE_EQ(NonZeroArea(FlattenAndSeparate(outline, em)), 17500);
}

TEST(OutlineTrial, ASquareInASquareOfTheSameDirectionIsAHoleByOneRuleOnly)
{
    const NativeOutline outline = MakeOutline({SquareAt(0, 0, 100), SquareAt(20, 20, 50)});
    EXPECT_FALSE(TryOutline(outline, em).fills);
    EXPECT_DOUBLE_EQ(OddArea(FlattenAndSeparate(outline, em)), 7500);
    EXPECT_DOUBLE_EQ(NonZeroArea(FlattenAndSeparate(outline, em)), 10000);
}

TEST(OutlineTrial, ContoursTheWrongWayAreFound)
{
    // A ring, with another square in its hole
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

TEST(OutlineTrial, ContoursThatKeepApartRunTheWrongWayByTheirTallestEdgesToo)
{
    std::mt19937 random(17);
    int wrong = 0;
    int nested = 0;
    for (int turn = 0; turn < 400; ++turn)
    {
        const NativeOutline outline = RandomShapes(random, 2 + turn % 4, 300, 20, true);
        const FlatOutline flat = Flatten(outline, em);
        if (!EdgesKeepApart(flat))
        {
            continue;
        }
        std::vector<bool> expected = ContoursTheWrongWay(flat);
        if (std::find(expected.begin(), expected.end(), true) == expected.end())
        {
            expected.clear();
        }
        EXPECT_EQ(TryOutline(outline, em).wrongWay, expected) << turn;
        wrong += expected.empty() ? 0 : 1;
        nested += NonZeroArea(flat) != OddArea(flat) ? 1 : 0;
    }
    EXPECT_GT(wrong, 20);
    EXPECT_GT(nested, 10);
}

TEST(OutlineTrial, CurvesAreTriedAsTheyAreFlattened)
{
    EXPECT_TRUE(TryOutline(MakeOutline({RoundAt(0, 0, 300), RoundAt(0, 0, 200, true)}), em).fills);
    EXPECT_FALSE(TryOutline(MakeOutline({RoundAt(0, 0, 300), RoundAt(400, 0, 200)}), em).fills);
    EXPECT_EQ(TryOutline(MakeOutline({RoundAt(0, 0, 300, true)}), em).wrongWay,
              std::vector<bool>{true});
}

TEST(OutlineTrial, NothingAndDegenerateContoursPass)
{
    EXPECT_TRUE(TryOutline({}, em).fills);
    EXPECT_TRUE(TryOutline(MakeOutline({{{5, 5}, {5, 5}}}), em).fills);
    EXPECT_TRUE(TryOutline(MakeOutline({{{0, 0}, {100, 0}, {50, 0}}}), em).fills);
    // Contours of which flattening leaves nothing are neither inside nor around others.
    const std::vector<OutlineAt> speck = {{5, 5}, {5, 6}, {6, 5}};
    for (const auto& contours :
         {std::vector<std::vector<OutlineAt>>{speck, speck}, {speck, SquareAt(0, 0, 100), speck}})
    {
        const OutlineVerdict verdict = TryOutline(MakeOutline(contours), em);
        EXPECT_TRUE(verdict.fills);
        EXPECT_TRUE(verdict.wrongWay.empty());
    }
}

TEST(OutlineTrial, AnOutlineWhoseEdgesMeetBeyondAllBoundsIsGivenUp)
{
    std::vector<OutlineAt> scribble;
    for (int n = 0; n < 1000; ++n)
    {
        scribble.push_back({n % 2 == 0 ? 0 : 9000, (n * 7919) % 9001});
    }
    EXPECT_TRUE(TryOutline(MakeOutline({scribble}), em).isHopeless);
}

TEST(OutlineTrial, ReversingTurnsOnlyTheMarkedContoursAndKeepsTheirCurves)
{
    const NativeOutline outline = MakeOutline({RoundAt(0, 0, 300), SquareAt(400, 0, 100)});
    const NativeOutline turned = Reversed(outline, {true, false});
    EXPECT_EQ(turned, MakeOutline({RoundAt(0, 0, 300, true), SquareAt(400, 0, 100)}));
    EXPECT_EQ(Reversed(turned, {true, false}), outline);
}

}  // namespace
