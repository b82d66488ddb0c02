// SPDX-License-Identifier: MIT
#include "solids/MeshMeasures.h"

#include "tests/support/SolidMeshes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

using orvane::MeasureMesh;
using orvane::MeshMeasures;
using orvane::SolidMeasures;
using orvane::SolidMesh;

TEST(MeshMeasures, ACubeOfLengthOneIsClosedWithVolumeOneAndAreaSix)
{
    SolidMesh mesh;
    AddCube(mesh, "cube");

    const SolidMeasures measures = MeasureMesh(mesh);
    ASSERT_EQ(measures.nodes.size(), 1u);
    const MeshMeasures& cube = measures.nodes[0];
    EXPECT_EQ(cube.triangles, 12u);
    EXPECT_EQ(cube.vertices, 24u);  // 8 corners with three normals each
    EXPECT_TRUE(cube.isClosed);
    EXPECT_DOUBLE_EQ(cube.volume, 1);
    EXPECT_DOUBLE_EQ(cube.area, 6);
    EXPECT_EQ(cube.bounds.minimum, (std::array<float, 3>{0, 0, 0}));
    EXPECT_EQ(cube.bounds.maximum, (std::array<float, 3>{1, 1, 1}));
}

TEST(MeshMeasures, ACubeWithoutOneTriangleIsOpen)
{
    SolidMesh mesh;
    AddCube(mesh, "cube");
    mesh.indices.resize(mesh.indices.size() - 3);
    mesh.groups.back().indexCount = 3;

    EXPECT_FALSE(MeasureMesh(mesh).all.isClosed);
    EXPECT_DOUBLE_EQ(MeasureMesh(mesh).all.area, 5.5);
}

TEST(MeshMeasures, ACubeWithOneTriangleTurnedRoundIsOpen)
{
    SolidMesh mesh;
    AddCube(mesh, "cube");
    std::swap(mesh.indices[0], mesh.indices[1]);

    EXPECT_FALSE(MeasureMesh(mesh).all.isClosed);
}

TEST(MeshMeasures, ACubeWithAllTrianglesTurnedRoundHasANegativeVolume)
{
    SolidMesh mesh;
    AddCube(mesh, "cube");
    std::reverse(mesh.indices.begin(), mesh.indices.end());

    EXPECT_TRUE(MeasureMesh(mesh).all.isClosed);
    EXPECT_DOUBLE_EQ(MeasureMesh(mesh).all.volume, -1);
}

TEST(MeshMeasures, ANodeIsMeasuredInTheWorld)
{
    SolidMesh mesh;
    // Two times as wide, mirrored in y and three times as high, moved far away.
    AddCube(mesh, "cube").transform = {2, 0, 0, 0, 0, -3, 0, 0, 0, 0, 1, 0, 1e6, 0, 0, 1};

    const MeshMeasures cube = MeasureMesh(mesh).all;
    EXPECT_TRUE(cube.isClosed);
    EXPECT_DOUBLE_EQ(cube.volume, 6);
    EXPECT_DOUBLE_EQ(cube.area, 2 * (6 + 3 + 2));
    EXPECT_EQ(cube.bounds.minimum, (std::array<float, 3>{1e6, -3, 0}));
    EXPECT_EQ(cube.bounds.maximum, (std::array<float, 3>{1e6 + 2, 0, 1}));
}

TEST(MeshMeasures, CornersAreTheSameWhenOneZeroHasAMinus)
{
    SolidMesh mesh;
    AddCube(mesh, "cube");
    mesh.vertices[mesh.indices[0]].position[0] = -0.0f;

    EXPECT_TRUE(MeasureMesh(mesh).all.isClosed);
}

TEST(MeshMeasures, CornersThatDifferByOneBitLeaveAGap)
{
    SolidMesh mesh;
    AddCube(mesh, "cube");
    float& x = mesh.vertices[mesh.indices[1]].position[0];
    x = std::nextafter(x, 2.0f);

    EXPECT_FALSE(MeasureMesh(mesh).all.isClosed);
}

TEST(MeshMeasures, TwoNodesAddUpAndAreClosedWhenBothAre)
{
    SolidMesh mesh;
    AddCube(mesh, "left");
    AddCube(mesh, "right").transform = {2, 0, 0, 0, 0, 2, 0, 0, 0, 0, 2, 0, 3, 0, 0, 1};

    SolidMeasures measures = MeasureMesh(mesh);
    ASSERT_EQ(measures.nodes.size(), 2u);
    EXPECT_DOUBLE_EQ(measures.nodes[1].volume, 8);
    EXPECT_EQ(measures.all.triangles, 24u);
    EXPECT_EQ(measures.all.vertices, 48u);
    EXPECT_TRUE(measures.all.isClosed);
    EXPECT_DOUBLE_EQ(measures.all.volume, 9);
    EXPECT_DOUBLE_EQ(measures.all.area, 30);
    EXPECT_EQ(measures.all.bounds.maximum, (std::array<float, 3>{5, 2, 2}));

    std::swap(mesh.indices[0], mesh.indices[1]);
    measures = MeasureMesh(mesh);
    EXPECT_FALSE(measures.nodes[0].isClosed);
    EXPECT_TRUE(measures.nodes[1].isClosed);
    EXPECT_FALSE(measures.all.isClosed);
}

TEST(MeshMeasures, NothingIsNotClosedAndHasNoBounds)
{
    SolidMesh mesh;
    mesh.nodes.resize(1);

    EXPECT_FALSE(MeasureMesh(mesh).all.isClosed);
    EXPECT_FALSE(MeasureMesh(mesh).nodes[0].isClosed);
    EXPECT_TRUE(MeasureMesh(mesh).all.bounds.IsEmpty());
}

TEST(MeshMeasures, ATriangleWithTwoEqualCornersChangesNothing)
{
    SolidMesh mesh;
    AddCube(mesh, "cube");
    mesh.indices.insert(mesh.indices.end(), {0, 0, 1});
    mesh.groups.back().indexCount += 3;

    EXPECT_TRUE(MeasureMesh(mesh).all.isClosed);
    EXPECT_DOUBLE_EQ(MeasureMesh(mesh).all.area, 6);
}

TEST(MeshMeasures, PositionsThatAreNotNumbersAreMeasuredWithoutHarm)
{
    SolidMesh mesh;
    AddCube(mesh, "cube");
    mesh.vertices[0].position[1] = std::numeric_limits<float>::quiet_NaN();

    EXPECT_EQ(MeasureMesh(mesh).all.triangles, 12u);
    EXPECT_FALSE(MeasureMesh(mesh).all.isClosed);
}
