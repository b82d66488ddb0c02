// SPDX-License-Identifier: MIT
#include "shapes/Path.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

using namespace orvane::shapes;
using orvane::contours::DoublePoint;
using orvane::contours::Length;

namespace
{

/// The largest difference between the distance of the path's points from a centre and a radius.
double MaxRadiusError(const Path& path, const DoublePoint& center, double radius)
{
    double most = 0;
    for (const PathPiece& piece : path.Subpaths().back().pieces)
    {
        for (int i = 0; i <= 16; ++i)
        {
            most = std::max(most, std::abs(Length(piece.PointAt(i / 16.0) - center) - radius));
        }
    }
    return most;
}

}  // namespace

TEST(Path, AnArcFollowsItsCircle)
{
    // From 5, 0 to 0, 5 around 0, 0, the short way.
    Path path;
    path.MoveTo({5, 0});
    path.ArcTo({5, 5}, 0, false, true, {0, 5});
    EXPECT_EQ(path.Subpaths()[0].pieces.size(), 2u);
    EXPECT_LT(MaxRadiusError(path, {0, 0}, 5), 5 * 0.000005);
    EXPECT_EQ(path.Current(), (DoublePoint{0, 5}));
}

TEST(Path, TheFlagsChooseOneOfFourArcs)
{
    // Circles of radius 5 through 3, 4 and 3, -4 have their centres at 0, 0 and 6, 0.
    struct Case
    {
        bool isLarge;
        bool sweeps;
        DoublePoint center;
        std::size_t pieces;  // of at most 45 degrees; the short arc has 106 degrees
    };
    for (const Case& arc : {Case{false, true, {6, 0}, 3}, Case{true, false, {6, 0}, 6},
                            Case{false, false, {0, 0}, 3}, Case{true, true, {0, 0}, 6}})
    {
        Path path;
        path.MoveTo({3, 4});
        path.ArcTo({5, 5}, 0, arc.isLarge, arc.sweeps, {3, -4});
        EXPECT_LT(MaxRadiusError(path, arc.center, 5), 1e-4)
            << arc.isLarge << arc.sweeps << " around " << arc.center.x;
        EXPECT_EQ(path.Subpaths()[0].pieces.size(), arc.pieces);
    }
}

TEST(Path, RadiiThatAreTooSmallAreEnlarged)
{
    Path path;
    path.MoveTo({-8, 0});
    path.ArcTo({1, 1}, 0, false, true, {8, 0});
    EXPECT_LT(MaxRadiusError(path, {0, 0}, 8), 8 * 0.000005);
}

TEST(Path, ARotatedEllipseLiesAlongItsAxes)
{
    // Half an ellipse with the radii 4 and 2, turned by 90 degrees: from 0, -4 over 2, 0.
    Path path;
    path.MoveTo({0, -4});
    path.ArcTo({4, 2}, 90, false, true, {0, 4});
    const auto& pieces = path.Subpaths()[0].pieces;
    ASSERT_EQ(pieces.size(), 4u);
    EXPECT_NEAR(pieces[1].points[3].x, 2, 1e-12);
    EXPECT_NEAR(pieces[1].points[3].y, 0, 1e-12);
}

TEST(Path, AnArcWithoutARadiusIsALine)
{
    Path path;
    path.MoveTo({0, 0});
    path.ArcTo({0, 7}, 0, false, true, {3, 4});
    ASSERT_EQ(path.Subpaths()[0].pieces.size(), 1u);
    EXPECT_FALSE(path.Subpaths()[0].pieces[0].isCurve);
}

TEST(Path, AQuadraticCurveBecomesTheSameCubicOne)
{
    Path path;
    path.MoveTo({0, 0});
    path.QuadraticTo({2, 4}, {6, 0});
    // At 1/2, a quadratic curve is at (p0 + 2 p1 + p2) / 4.
    const DoublePoint middle = path.Subpaths()[0].pieces[0].PointAt(0.5);
    EXPECT_NEAR(middle.x, 2.5, 1e-12);
    EXPECT_NEAR(middle.y, 2, 1e-12);
}

TEST(Path, WhatFollowsAClosedSubpathStartsWhereItDoes)
{
    Path path;
    path.MoveTo({1, 1});
    path.LineTo({3, 1});
    path.LineTo({3, 3});
    path.Close();
    path.LineTo({0, 0});
    ASSERT_EQ(path.Subpaths().size(), 2u);
    EXPECT_TRUE(path.Subpaths()[0].isClosed);
    EXPECT_EQ(path.Subpaths()[0].pieces.size(), 3u);
    EXPECT_EQ(path.Subpaths()[1].start, (DoublePoint{1, 1}));
}

TEST(Path, PolygonsStayWithinTheToleranceOfCurves)
{
    for (const double tolerance : {0.1, 0.001})
    {
        Path path;
        path.MoveTo({10, 0});
        path.ArcTo({10, 10}, 0, false, true, {-10, 0});
        SegmentLimit limit;
        const Contours contours = Flattened(path, tolerance, limit);
        ASSERT_EQ(contours.size(), 1u);
        // The middle of a chord between points of the circle lies farthest from it. The last side
        // closes the polygon and is no chord.
        double most = 0;
        for (std::size_t i = 0; i + 1 < contours[0].size(); ++i)
        {
            most = std::max(most, 10 - Length((contours[0][i] + contours[0][i + 1]) / 2.0));
        }
        EXPECT_LE(most, tolerance * 1.01);
        EXPECT_GT(most, tolerance / 4);
    }
}
