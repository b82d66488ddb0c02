// SPDX-License-Identifier: MIT
#include "solids/NodeTransform.h"

#include <gtest/gtest.h>

#include <cmath>

using orvane::MeshPoint;
using orvane::NodeTransform;

TEST(NodeTransform, PositionsAreTurnedAndMoved)
{
    // A quarter turn about z: x becomes -y + 10, y becomes x + 20.
    const NodeTransform transform({0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 10, 20, 30, 1});
    EXPECT_EQ(transform.PositionInWorld({2, 3, 4}), (MeshPoint{7, 22, 34}));
    EXPECT_EQ(transform.NormalInWorld({1, 0, 0}), (MeshPoint{0, 1, 0}));
    EXPECT_FALSE(transform.IsMirrored());
}

TEST(NodeTransform, ANormalStaysPerpendicularToASurfaceThatIsStretched)
{
    const NodeTransform transform({2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    // The surface through (1, 0, 0) and (0, 1, 0) becomes that through (2, 0, 0) and (0, 1, 0).
    const MeshPoint normal = transform.NormalInWorld({std::sqrt(0.5f), std::sqrt(0.5f), 0});
    EXPECT_NEAR(normal[0], 1 / std::sqrt(5.0), 1e-7);
    EXPECT_NEAR(normal[1], 2 / std::sqrt(5.0), 1e-7);
}

TEST(NodeTransform, TheNormalsOfAMirroredNodeStillPointOutwards)
{
    const NodeTransform transform({-2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    EXPECT_TRUE(transform.IsMirrored());
    EXPECT_EQ(transform.NormalInWorld({1, 0, 0}), (MeshPoint{-1, 0, 0}));
    EXPECT_EQ(transform.NormalInWorld({0, 1, 0}), (MeshPoint{0, 1, 0}));
}

TEST(NodeTransform, ANormalThatIsSqueezedToNothingIsZero)
{
    const NodeTransform transform({0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1});
    EXPECT_EQ(transform.NormalInWorld({0, 1, 0}), (MeshPoint{0, 0, 0}));
}
