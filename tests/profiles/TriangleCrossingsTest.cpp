// SPDX-License-Identifier: MIT
// The judge of crossing triangles, with pairs whose meeting is known.
#include "tests/support/TriangleCrossings.h"

#include <gtest/gtest.h>

using namespace orvane;

namespace
{

using Position = std::array<float, 3>;

/// The triangle of the corners (0, 0, 0), (4, 0, 0) and (0, 4, 0), and a second one, which may name
/// these corners by their numbers 0 to 2, and further ones from 3 on.
TriangleCrossings MeetingWith(const std::array<std::uint32_t, 3>& corners,
                              const std::vector<Position>& further)
{
    ProfileSolid solid;
    solid.positions = {{0, 0, 0}, {4, 0, 0}, {0, 4, 0}};
    solid.positions.insert(solid.positions.end(), further.begin(), further.end());
    solid.triangles.resize(2);
    solid.triangles[0].corners = {0, 1, 2};
    solid.triangles[1].corners = corners;
    return FindCrossings(solid);
}

}  // namespace

TEST(TriangleCrossings, AnEdgeThroughATriangleCrossesIt)
{
    EXPECT_EQ(MeetingWith({3, 4, 5}, {{1, 1, -1}, {1, 1, 1}, {9, 9, 0.5F}}).crossings, 1);
    EXPECT_EQ(MeetingWith({3, 4, 5}, {{3, 3, -1}, {3, 3, 1}, {9, 9, 0}}).crossings, 0);
    EXPECT_EQ(MeetingWith({3, 4, 5}, {{1, 1, 1}, {2, 1, 1}, {1, 2, 1}}).crossings, 0);
}

TEST(TriangleCrossings, AMillionthDecides)
{
    constexpr float tiny = 1e-6F;
    EXPECT_EQ(MeetingWith({3, 4, 5}, {{1, 1, -tiny}, {1, 1, 1}, {2, 1, 1}}).crossings, 1);
    EXPECT_EQ(MeetingWith({3, 4, 5}, {{1, 1, tiny}, {1, 1, 1}, {2, 1, 1}}).crossings, 0);
}

TEST(TriangleCrossings, ACornerOnATriangleDoesNotCrossIt)
{
    EXPECT_EQ(MeetingWith({3, 4, 5}, {{1, 1, 0}, {1, 1, 1}, {2, 1, 1}}).crossings, 0);
}

TEST(TriangleCrossings, UprightTrianglesCrossOtherUprightOnes)
{
    // Walls, which seen from above are the lines y = 0 and x = 0.
    ProfileSolid solid;
    solid.positions = {{-1, 0, 0}, {1, 0, 0}, {0, 0, 2}, {0, -1, 0.5F}, {0, 1, 0.5F}, {0, 0, 3}};
    solid.triangles.resize(2);
    solid.triangles[0].corners = {0, 1, 2};
    solid.triangles[1].corners = {3, 4, 5};
    EXPECT_EQ(FindCrossings(solid).crossings, 1);
    for (std::size_t corner = 3; corner < 6; ++corner)
    {
        solid.positions[corner][0] += 1;
    }
    EXPECT_EQ(FindCrossings(solid).crossings, 0);
}

TEST(TriangleCrossings, ATriangleCrossesEveryLayerThatItGoesThrough)
{
    // Ten level triangles at the heights 0 to 9, and a spike through those at 1 to 8.
    ProfileSolid solid;
    for (std::uint32_t layer = 0; layer < 10; ++layer)
    {
        const auto height = static_cast<float>(layer);
        solid.positions.insert(solid.positions.end(),
                               {{0, 0, height}, {4, 0, height}, {0, 4, height}});
        solid.triangles.emplace_back().corners = {3 * layer, 3 * layer + 1, 3 * layer + 2};
    }
    solid.positions.insert(solid.positions.end(), {{1, 1, 0}, {1, 1, 9}, {1.1F, 1, 9}});
    solid.triangles.emplace_back().corners = {30, 31, 32};
    const TriangleCrossings found = FindCrossings(solid);
    EXPECT_EQ(found.crossings, 8);
    EXPECT_EQ(found.second, 10);
}

TEST(TriangleCrossings, NeighboursWithASharedEdgeCrossOnlyWhenTheyFoldBack)
{
    EXPECT_EQ(MeetingWith({1, 0, 3}, {{0, -4, 0}}).crossings, 0);
    EXPECT_EQ(MeetingWith({1, 0, 3}, {{1, 1, 1}}).crossings, 0);
    EXPECT_EQ(MeetingWith({1, 0, 3}, {{1, 1, 0}}).crossings, 1);
}

TEST(TriangleCrossings, NeighboursWithASharedCornerCrossWhenTheOppositeEdgeGoesThrough)
{
    EXPECT_EQ(MeetingWith({0, 3, 4}, {{1, 1, -1}, {1, 1, 1}}).crossings, 1);
    EXPECT_EQ(MeetingWith({0, 3, 4}, {{-1, 1, -1}, {-1, 1, 1}}).crossings, 0);
    EXPECT_EQ(MeetingWith({0, 3, 4}, {{2, 1, 0}, {1, 2, 0}}).crossings, 1);
    EXPECT_EQ(MeetingWith({0, 3, 4}, {{-2, 1, 0}, {-2, -2, 0}}).crossings, 0);
}

TEST(TriangleCrossings, TrianglesInOnePlaneCrossWhenTheyOverlap)
{
    EXPECT_EQ(MeetingWith({3, 4, 5}, {{1, 1, 0}, {9, 1, 0}, {1, 9, 0}}).crossings, 1);
    EXPECT_EQ(MeetingWith({3, 4, 5}, {{1, 1, 0}, {1.5F, 1, 0}, {1, 1.5F, 0}}).crossings, 1);
    // They share a part of an edge, but no area.
    EXPECT_EQ(MeetingWith({3, 4, 5}, {{1, 0, 0}, {2, -1, 0}, {3, 0, 0}}).crossings, 0);
    EXPECT_EQ(MeetingWith({3, 4, 5}, {{3, 3, 0}, {9, 3, 0}, {3, 9, 0}}).crossings, 0);
}
