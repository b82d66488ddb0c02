// SPDX-License-Identifier: MIT
#include "solids/SolidMesh.h"

#include <gtest/gtest.h>

using orvane::MeshBounds;
using orvane::SolidMesh;

TEST(SolidMeshTest, ANewMeshHasEmptyBounds)
{
    EXPECT_TRUE(SolidMesh().Bounds().IsEmpty());
}

TEST(SolidMeshTest, BoundsAreThoseOfTheTrianglesInTheWorld)
{
    SolidMesh mesh;
    mesh.vertices = {{{0, 0, 0}, {0, 0, 1}, {0, 0}},
                     {{2, 0, 0}, {0, 0, 1}, {0, 0}},
                     {{0, 3, -1}, {0, 0, 1}, {0, 0}},
                     {{100, 100, 100}, {0, 0, 1}, {0, 0}}};  // no triangle uses this vertex
    mesh.indices = {0, 1, 2};
    mesh.nodes.resize(1);
    // Turned by a quarter about z and moved by 10, 20, 30: x becomes -y + 10, y becomes x + 20.
    mesh.nodes[0].transform = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 10, 20, 30, 1};
    mesh.groups.resize(1);
    mesh.groups[0].indexCount = 3;

    const MeshBounds bounds = mesh.Bounds();
    EXPECT_EQ(bounds.minimum, (std::array<float, 3>{7, 20, 29}));
    EXPECT_EQ(bounds.maximum, (std::array<float, 3>{10, 22, 30}));
}
