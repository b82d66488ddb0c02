// SPDX-License-Identifier: MIT
#include "contours/EdgeChains.h"

#include "tests/support/NativeOutlines.h"

#include <gtest/gtest.h>

#include <vector>

using namespace orvane::contours;

namespace
{

bool KeepApart(const std::vector<std::vector<OutlineAt>>& contours)
{
    return EdgeChains().EdgesKeepApart(FlatOf(contours));
}

/// The contours that run the wrong way, of an outline whose edges keep apart.
std::vector<bool> WrongWay(const FlatOutline& flat)
{
    EdgeChains chains;
    EXPECT_TRUE(chains.EdgesKeepApart(flat));
    return chains.ContoursTheWrongWay(flat);
}

TEST(EdgeChains, EdgesOfContoursBesideOrInsideEachOtherKeepApart)
{
    EXPECT_TRUE(KeepApart({}));
    EXPECT_TRUE(KeepApart({SquareAt(0, 0, 100)}));
    EXPECT_TRUE(KeepApart({SquareAt(0, 0, 100), SquareAt(101, 0, 100)}));
    EXPECT_TRUE(KeepApart({SquareAt(0, 0, 100), SquareAt(1, 1, 98)}));
    // The boxes of these triangles overlap, but a strip of 10 units along the diagonal lies between
    // them.
    EXPECT_TRUE(KeepApart({{{0, 0}, {0, 90}, {90, 0}}, {{100, 0}, {0, 100}, {100, 100}}}));
}

TEST(EdgeChains, EdgesThatCrossTouchOrOverlapMeet)
{
    EXPECT_FALSE(KeepApart({SquareAt(0, 0, 100), SquareAt(50, 50, 100)}));
    EXPECT_FALSE(KeepApart({SquareAt(0, 0, 100), SquareAt(100, 100, 50)}));  // a corner
    EXPECT_FALSE(KeepApart({SquareAt(0, 0, 100), SquareAt(100, 20, 50)}));   // a part of a side
    EXPECT_FALSE(KeepApart({SquareAt(0, 0, 100), SquareAt(0, 0, 100)}));
    // A corner on the middle of a slanted edge, which goes through (50, 50)
    EXPECT_FALSE(KeepApart({{{0, 0}, {0, 100}, {100, 0}}, {{50, 50}, {50, 100}, {100, 100}}}));
}

TEST(EdgeChains, AContourThatMeetsItselfIsFound)
{
    EXPECT_FALSE(KeepApart({{{0, 0}, {100, 100}, {100, 0}, {0, 100}}}));   // a figure eight
    EXPECT_FALSE(KeepApart({{{0, 0}, {0, 100}, {100, 100}, {50, 100}}}));  // it turns back
    EXPECT_FALSE(KeepApart({{{0, 0}, {100, 100}}}));                       // two vertices
    EXPECT_FALSE(KeepApart({{{0, 0}, {0, 100}, {0, 50}}}));                // all on one line

    FlatOutline repeated;
    repeated.vertices = {{{0, 0}, {}}, {{0, 100}, {}}, {{0, 100}, {}}, {{100, 0}, {}}};
    repeated.sizes = {4};
    EXPECT_FALSE(EdgeChains().EdgesKeepApart(repeated));
}

TEST(EdgeChains, OuterBordersRunClockwiseAndHolesTheOtherWay)
{
    const std::vector<bool> none;
    EXPECT_EQ(WrongWay(FlatOf({SquareAt(0, 0, 100)})), none);
    EXPECT_EQ(WrongWay(FlatOf({SquareAt(0, 0, 100, true)})), std::vector<bool>{true});
    EXPECT_EQ(WrongWay(FlatOf({SquareAt(0, 0, 100), SquareAt(20, 20, 50, true)})), none);
    EXPECT_EQ(WrongWay(FlatOf({SquareAt(0, 0, 100), SquareAt(20, 20, 50)})),
              (std::vector<bool>{false, true}));
    EXPECT_EQ(WrongWay(FlatOf({SquareAt(0, 0, 100, true), SquareAt(20, 20, 50, true)})),
              (std::vector<bool>{true, false}));
    EXPECT_EQ(WrongWay(FlatOf({SquareAt(0, 0, 100), SquareAt(200, 0, 100, true)})),
              (std::vector<bool>{false, true}));
}

TEST(EdgeChains, AnIslandInAHoleIsAnOuterBorderAgain)
{
    // Three squares inside one another, all clockwise: only the hole in the middle is wrong. The
    // order of the contours does not matter.
    EXPECT_EQ(WrongWay(FlatOf({SquareAt(0, 0, 100), SquareAt(10, 10, 80), SquareAt(20, 20, 60)})),
              (std::vector<bool>{false, true, false}));
    EXPECT_EQ(WrongWay(FlatOf({SquareAt(20, 20, 60), SquareAt(10, 10, 80), SquareAt(0, 0, 100)})),
              (std::vector<bool>{false, true, false}));
    EXPECT_EQ(WrongWay(FlatOf({SquareAt(10, 10, 80), SquareAt(0, 0, 100), SquareAt(20, 20, 60)})),
              (std::vector<bool>{true, false, false}));
}

TEST(EdgeChains, AContourInANotchIsNotAHole)
{
    // The box of the horseshoe, which is open at the top, contains the square between its arms.
    const std::vector<OutlineAt> horseshoe = {{0, 0},   {0, 100},  {20, 100},  {20, 20},
                                              {80, 20}, {80, 100}, {100, 100}, {100, 0}};
    EXPECT_EQ(WrongWay(FlatOf({horseshoe, SquareAt(40, 50, 20)})), std::vector<bool>());
    EXPECT_EQ(WrongWay(FlatOf({horseshoe, SquareAt(40, 50, 20, true)})),
              (std::vector<bool>{false, true}));
}

TEST(EdgeChains, AContourWithoutVerticesKeepsItsNumber)
{
    FlatOutline flat = FlatOf({SquareAt(0, 0, 100, true)});
    flat.sizes = {0, flat.sizes[0]};
    EXPECT_EQ(WrongWay(flat), (std::vector<bool>{false, true}));
}

TEST(EdgeChains, OneObjectAnswersForEachOutlineByItself)
{
    EdgeChains chains;
    const FlatOutline crossing = FlatOf({SquareAt(0, 0, 100), SquareAt(50, 50, 100)});
    const FlatOutline turned = FlatOf({SquareAt(0, 0, 100, true)});
    const FlatOutline right = FlatOf({SquareAt(0, 0, 100), SquareAt(20, 20, 50, true)});
    EXPECT_FALSE(chains.EdgesKeepApart(crossing));
    EXPECT_TRUE(chains.EdgesKeepApart(turned));
    EXPECT_EQ(chains.ContoursTheWrongWay(turned), std::vector<bool>{true});
    EXPECT_TRUE(chains.EdgesKeepApart(right));
    EXPECT_EQ(chains.ContoursTheWrongWay(right), std::vector<bool>());
    EXPECT_FALSE(chains.EdgesKeepApart(crossing));
}

}  // namespace
