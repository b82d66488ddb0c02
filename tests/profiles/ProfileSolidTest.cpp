// SPDX-License-Identifier: MIT
#include "profiles/ProfileSolid.h"

#include "extrude/OrvGlyph.h"
#include "orvane/Error.h"
#include "tests/support/ClosedSurface.h"
#include "tests/support/GlyphShapes.h"
#include "tests/support/SlicedVolume.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

using namespace orvane;

namespace
{

using Contour = std::vector<contours::DoublePoint>;

Contour Rectangle(double left, double bottom, double right, double top)
{
    return {{left, bottom}, {left, top}, {right, top}, {right, bottom}};
}

PlaneRegion Square()
{
    return {{Rectangle(0, 0, 1, 1)}};
}

PlaneRegion GlyphRegion(const TTGlyph& outline)
{
    OrvGlyph glyph(0, GLYPHMETRICS{});
    glyph.ConstructGlyph(outline, 1000);
    return RegionOf(glyph);
}

/// A solid of depth 0.5.
ProfileSolid Build(const PlaneRegion& region, const std::string& profile,
                   ProfileSides sides = ProfileSides::Front)
{
    ProfileSolidOptions options;
    options.depth = 0.5;
    options.sides = sides;
    ProfileSolid solid = BuildProfileSolid(region, ParseProfile(profile), options);
    EXPECT_EQ(WhyNotClosed(solid), "") << profile;
    return solid;
}

std::size_t CountOf(const ProfileSolid& solid, SolidPart part)
{
    return static_cast<std::size_t>(
        std::count_if(solid.triangles.begin(), solid.triangles.end(),
                      [part](const SolidTriangle& triangle) { return triangle.part == part; }));
}

/// The highest z of the triangles of a part.
float TopOf(const ProfileSolid& solid, SolidPart part)
{
    float top = -1000;
    for (const SolidTriangle& triangle : solid.triangles)
    {
        for (const std::uint32_t corner : triangle.corners)
        {
            top = triangle.part == part ? std::max(top, solid.positions[corner][2]) : top;
        }
    }
    return top;
}

std::string ErrorOf(const PlaneRegion& region, const std::string& profile,
                    const ProfileSolidOptions& options)
{
    try
    {
        BuildProfileSolid(region, ParseProfile(profile), options);
    }
    catch (const Error& error)
    {
        return error.what();
    }
    return "no error";
}

}  // namespace

TEST(ProfileSolid, AProfileOfOneStepMakesSquareEdges)
{
    const ProfileSolid solid = Build(Square(), "0,0");
    EXPECT_EQ(solid.triangles.size(), 12u);
    EXPECT_EQ(CountOf(solid, SolidPart::Face), 4u);
    EXPECT_EQ(CountOf(solid, SolidPart::Edge), 8u);
    EXPECT_NEAR(VolumeOf(solid), 0.5, 1e-6);
    EXPECT_NEAR(VolumeOf(Build(Square(), "0.1,0")), 1.2 * 1.2 * 0.5, 1e-4);
}

TEST(ProfileSolid, AnInwardChamferOfASquareIsAFrustum)
{
    // The integral of (1 - 2 t)^2 from 0 to 0.1 is 0.1 - 2 * 0.01 + 4 / 3 * 0.001.
    const double edge = 0.1 - 0.02 + 0.004 / 3;
    const ProfileSolid solid = Build(Square(), "chamfer -0.1");
    EXPECT_NEAR(VolumeOf(solid), edge + 0.4, 1e-5);
    EXPECT_EQ(CountOf(solid, SolidPart::Face), 4u);
    EXPECT_EQ(CountOf(solid, SolidPart::Bevel), 8u);
    EXPECT_EQ(CountOf(solid, SolidPart::Edge), 8u);
    EXPECT_NEAR(VolumeOf(Build(Square(), "chamfer -0.1", ProfileSides::Back)), edge + 0.4, 1e-5);
    EXPECT_NEAR(VolumeOf(Build(Square(), "chamfer -0.1", ProfileSides::Both)), 2 * edge + 0.3,
                1e-5);
}

TEST(ProfileSolid, AnOutwardChamferOfASquareKeepsTheFaceAndWidensTheWall)
{
    // The integral of (1 + 2 t)^2 from 0 to 0.1, and a wall of 1.2 * 1.2 * 0.4.
    const ProfileSolid solid = Build(Square(), "chamfer 0.1");
    EXPECT_NEAR(VolumeOf(solid), 0.1 + 0.02 + 0.004 / 3 + 0.576, 1e-5);
    EXPECT_EQ(TopOf(solid, SolidPart::Face), 0);
    EXPECT_FLOAT_EQ(TopOf(solid, SolidPart::Edge), -0.1f);
}

TEST(ProfileSolid, TheHoleOfARingNarrowsAndWidensAgainstItsOutside)
{
    PlaneRegion ring = Square();
    ring.contours.push_back(Rectangle(0.4, 0.4, 0.6, 0.6));
    std::reverse(ring.contours[1].begin(), ring.contours[1].end());
    // (1 - 2 t)^2 - (0.2 + 2 t)^2 from 0 to 0.1, and 0.96 * 0.4.
    EXPECT_NEAR(VolumeOf(Build(ring, "chamfer -0.1")),
                (0.1 - 0.02 + 0.004 / 3) - (0.004 + 0.004 + 0.004 / 3) + 0.384, 1e-5);
    // (1 + 2 t)^2 - (0.2 - 2 t)^2 from 0 to 0.05, and (1.1^2 - 0.1^2) * 0.45.
    EXPECT_NEAR(VolumeOf(Build(ring, "chamfer 0.05")),
                (0.05 + 0.005 + 0.0005 / 3) - (0.002 - 0.001 + 0.0005 / 3) + 1.2 * 0.45, 1e-5);
}

TEST(ProfileSolid, AHoleThatClosesEndsInAPoint)
{
    PlaneRegion ring = Square();
    ring.contours.push_back(Rectangle(0.4, 0.4, 0.6, 0.6));
    std::reverse(ring.contours[1].begin(), ring.contours[1].end());
    // The hole is a pyramid 0.1 deep over 0.2 * 0.2.
    const double edge = 0.2 + 0.08 + 0.032 / 3;
    EXPECT_NEAR(VolumeOf(Build(ring, "chamfer 0.2")), edge - 0.2 * 0.2 * 0.1 / 3 + 1.4 * 1.4 * 0.3,
                1e-5);
}

TEST(ProfileSolid, StepsHaveLedgesAndWalls)
{
    // Two slabs of 0.05, of sides 1 and 1.1, and the wall's of side 1.2.
    EXPECT_NEAR(VolumeOf(Build(Square(), "step 0.1")), 0.05 + 1.21 * 0.05 + 1.44 * 0.4, 1e-5);
    // An undercut: wider at the face than below.
    EXPECT_NEAR(VolumeOf(Build(Square(), "0.1,0 0.1,-0.1 0,-0.1")), 1.44 * 0.1 + 0.4, 1e-5);
}

TEST(ProfileSolid, AChiselledRectangleIsAHipRoof)
{
    // A rectangle of 2 by 1 under a roof 0.25 high, whose ridge is 1 long: 1 * 0.25 / 6 * (2 * 2 +
    // 1).
    const ProfileSolid solid = Build({{Rectangle(0, 0, 2, 1)}}, "chisel 0.25");
    EXPECT_NEAR(VolumeOf(solid), 1.25 / 6 + 2 * 0.25, 1e-4);
    EXPECT_EQ(CountOf(solid, SolidPart::Face), 2u);
    EXPECT_NEAR(TopOf(solid, SolidPart::Bevel), 0, 0.0005);
}

TEST(ProfileSolid, ARidgeThatEndsJustBelowTheHighestPlaceIsFound)
{
    // The right side of the slanted stem has two parts, which differ by a hundredth of a degree.
    // The lines of the skeleton end where the stem is widest, 40 grid units before the other ring.
    const PlaneRegion stem = {{{{-0.029, 0.01},
                                {0.074, 0.067},
                                {0.196, 0.643},
                                {0.163, 0.701},
                                {0.389, 0.704},
                                {0.321, 0.382},
                                {0.542, 0.382},
                                {0.319, 0.372},
                                {0.242, 0.01}}}};
    const double sliced = SlicedVolume(stem, ParseProfile("chisel 0.08"), {0.5}, 100);
    EXPECT_NEAR(VolumeOf(Build(stem, "chisel 0.08")), sliced, 0.001 * sliced);
}

TEST(ProfileSolid, StrokesThatVanishJustAtTheFaceHaveTheirRidges)
{
    // A stem 0.09 wide, and two arms of 0.352 by 0.08, on whose ridges lie corners of the face.
    const PlaneRegion bracket = {{{{0.1, 0},
                                   {0.1, 0.714},
                                   {0.542, 0.714},
                                   {0.542, 0.634},
                                   {0.19, 0.634},
                                   {0.19, 0.08},
                                   {0.542, 0.08},
                                   {0.542, 0}}}};
    // Shrunk by d, the stem has the area (0.09 - 2 d)(0.714 - 2 d), and each arm 0.352 (0.08 - 2
    // d).
    const double edges = 0.06426 * 0.04 - 0.804 * 0.0016 + 4 * 0.000064 / 3 + 0.704 * 0.0016;
    EXPECT_NEAR(VolumeOf(Build(bracket, "chamfer -0.04")), 0.12058 * 0.46 + edges, 1e-5);
}

TEST(ProfileSolid, TheRoofsOfAChiselledCrossMeet)
{
    // An upright bar of 0.2 by 1, and arms of 0.1 by 0.4 on both sides.
    const PlaneRegion cross = {{{{0.4, 0},
                                 {0.4, 0.45},
                                 {0, 0.45},
                                 {0, 0.55},
                                 {0.4, 0.55},
                                 {0.4, 1},
                                 {0.6, 1},
                                 {0.6, 0.55},
                                 {1, 0.55},
                                 {1, 0.45},
                                 {0.6, 0.45},
                                 {0.6, 0}}}};
    // With a slope of 45 degrees, the bar's roof is 0.1 high, and each arm's 0.05: a prism that
    // has a hip at its end, and enters the bar's roof as far as it is high.
    const double bar = 0.2 * 0.1 / 6 * (2 * 1 + 0.8);
    const double hip = 0.0025 * 0.05 - 0.1 * 0.05 * 0.05 / 3;
    const double entering = 0.05 * 0.05 * 0.05 / 3;
    const double arm = 0.0025 * 0.4 - hip + entering;
    // The profile is 0.25 high: 2.5 times as steep.
    EXPECT_NEAR(VolumeOf(Build(cross, "chisel 0.25")), 2.5 * (bar + 2 * arm) + 0.28 * 0.25, 2e-5);
}

TEST(ProfileSolid, EveryPlaneOfAChiselRisesFromAnEdgeOfTheOutline)
{
    // Strokes of different widths, which meet at right and at slanted angles, and a hole.
    const PlaneRegion region = {
        {{{0, 0}, {0, 2}, {0.3, 2}, {1.5, 1.1}, {1.5, 0.9}, {0.5, 0.25}, {1.9, 0.1}, {1.9, 0}},
         {{0.3, 0.6}, {1.1, 0.8}, {0.3, 1.5}}}};
    const ProfileSolid solid = Build(region, "chisel 0.25");
    double rise = 0;
    for (const SolidTriangle& triangle : solid.triangles)
    {
        if (triangle.part != SolidPart::Bevel)
        {
            continue;
        }
        const auto& a = solid.positions[triangle.corners[0]];
        const auto& b = solid.positions[triangle.corners[1]];
        const auto& c = solid.positions[triangle.corners[2]];
        const double u[3] = {double{b[0]} - a[0], double{b[1]} - a[1], double{b[2]} - a[2]};
        const double v[3] = {double{c[0]} - a[0], double{c[1]} - a[1], double{c[2]} - a[2]};
        const double normal[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2],
                                  u[0] * v[1] - u[1] * v[0]};
        const double level = std::hypot(normal[0], normal[1]);
        // All planes are as steep as each other.
        rise = rise == 0 ? level / normal[2] : rise;
        EXPECT_NEAR(level / normal[2], rise, 0.002 * rise);
        double least = 1;  // of the sines between the plane's direction and an edge's normal
        for (const Contour& contour : region.contours)
        {
            for (std::size_t i = 0; i < contour.size(); ++i)
            {
                const contours::DoublePoint way = contour[(i + 1) % contour.size()] - contour[i];
                least = std::min(
                    least, std::abs(way.x * normal[0] + way.y * normal[1]) / (level * Length(way)));
            }
        }
        EXPECT_LT(least, 0.002);
    }
    EXPECT_GT(rise, 0);
}

TEST(ProfileSolid, AStrokeThatVanishesEndsInARidgeBelowTheFace)
{
    // A rectangle of 2 by 0.1 is used up at half the profile's width.
    const ProfileSolid solid = Build({{Rectangle(0, 0, 2, 0.1)}}, "chamfer -0.1");
    EXPECT_NEAR(VolumeOf(solid), 0.1 * 0.05 / 6 * (2 * 2 + 1.9) + 0.2 * 0.4, 1e-5);
    EXPECT_EQ(CountOf(solid, SolidPart::Face), 2u);
    EXPECT_NEAR(TopOf(solid, SolidPart::Bevel), -0.05, 0.0005);
}

TEST(ProfileSolid, StrokesThatMeetMergeAboveAValley)
{
    // Two unit squares, 0.1 apart, are one rectangle from an offset of 0.05 on. Below that offset
    // two areas of (1 + 2 t)^2, beyond it one of (2.1 + 2 t)(1 + 2 t).
    const PlaneRegion squares = {{Rectangle(0, 0, 1, 1), Rectangle(1.1, 0, 2.1, 1)}};
    const double apart = 2 * (0.05 + 2 * 0.0025 + 4.0 / 3 * 0.000125);
    const double merged = 2.1 * 0.05 + 3.1 * (0.01 - 0.0025) + 4.0 / 3 * (0.001 - 0.000125);
    EXPECT_NEAR(VolumeOf(Build(squares, "chamfer 0.1")), apart + merged + 2.3 * 1.2 * 0.4, 1e-4);
}

TEST(ProfileSolid, BothProfilesMayTakeTheWholeDepth)
{
    const double edge = 0.25 - 2 * 0.0625 + 4.0 / 3 * 0.015625;
    EXPECT_NEAR(VolumeOf(Build(Square(), "chamfer -0.25", ProfileSides::Both)), 2 * edge, 1e-4);
    // Two pyramids, base to base.
    EXPECT_NEAR(VolumeOf(Build(Square(), "-0.5,0 0,-0.25", ProfileSides::Both)), 2 * 0.25 / 3,
                1e-4);
}

TEST(ProfileSolid, PlanesAreShadedFlatAndCornersSharp)
{
    const ProfileSolid solid = Build(Square(), "chamfer -0.1");
    for (const SolidTriangle& triangle : solid.triangles)
    {
        for (const auto& normal : triangle.normals)
        {
            const double out = std::max(std::abs(normal[0]), std::abs(normal[1]));
            const double expectedZ = triangle.part == SolidPart::Face   ? 1
                                     : triangle.part == SolidPart::Edge ? 0
                                                                        : std::sqrt(0.5);
            EXPECT_NEAR(std::abs(normal[2]), expectedZ, 1e-4);
            EXPECT_NEAR(out, std::sqrt(1 - expectedZ * expectedZ), 1e-4);
        }
    }
}

TEST(ProfileSolid, CurvesAreShadedSmoothUpToTheAngle)
{
    const PlaneRegion disc = GlyphRegion(DiscGlyph());
    for (const double angle : {30.0, 1.0})
    {
        ProfileSolidOptions options;
        options.smoothAngle = angle;
        const ProfileSolid solid = BuildProfileSolid(disc, ParseProfile("0,0"), options);
        double most = 0;  // of the distance between a wall's normal and its triangle's plane
        for (const SolidTriangle& triangle : solid.triangles)
        {
            if (triangle.part == SolidPart::Edge)
            {
                for (int axis = 0; axis < 3; ++axis)
                {
                    most = std::max(most, std::abs(double{triangle.normals[0][axis]} -
                                                   triangle.normals[1][axis]));
                }
            }
        }
        // Each segment turns by about 360 / 40 degrees.
        EXPECT_EQ(most > 0.05, angle == 30) << most;
    }
}

TEST(ProfileSolid, OutlinesThatTouchOrCrossThemselvesAreClosed)
{
    for (const TTGlyph& outline : {TouchingGlyph(), CrossingGlyph(), HairpinGlyph(), NotchGlyph()})
    {
        const PlaneRegion region = GlyphRegion(outline);
        for (const std::string& name : ProfileNames())
        {
            for (const char* width : {" 0.05", " -0.05"})
            {
                for (const ProfileSides sides : {ProfileSides::Front, ProfileSides::Both})
                {
                    EXPECT_GT(VolumeOf(Build(region, name + width, sides)), 0);
                }
            }
        }
    }
    // Two squares that share an edge are one rectangle.
    const PlaneRegion edges = {{Rectangle(0, 0, 1, 1), Rectangle(1, 0, 2, 1)}};
    EXPECT_EQ(Build(edges, "0,0").triangles.size(), 12u);
}

TEST(ProfileSolid, SquaresThatShareACornerOverlapWhenTheyGrow)
{
    const PlaneRegion squares = {{Rectangle(0, 0, 1, 1), Rectangle(1, 1, 2, 2)}};
    // Offsets are moved by a few millionths of an em where the contours would touch.
    constexpr double tolerance = 1e-4;
    EXPECT_NEAR(VolumeOf(Build(squares, "0,0")), 1, tolerance);
    const double inward = 0.1 - 0.02 + 0.004 / 3;
    EXPECT_NEAR(VolumeOf(Build(squares, "chamfer -0.1")), 2 * inward + 0.8, tolerance);
    // 2 (1 + 2 t)^2 - 4 t^2 from 0 to 0.1, and a wall of 2 * 1.2^2 - 0.2^2.
    const double outward = 0.1 + 0.02 + 0.004 / 3;
    EXPECT_NEAR(VolumeOf(Build(squares, "chamfer 0.1")), 2 * outward - 0.004 / 3 + 2.84 * 0.4,
                tolerance);
    EXPECT_NEAR(VolumeOf(Build(squares, "step 0.1")),
                0.05 * 2 + 0.05 * (2 * 1.21 - 0.01) + 2.84 * 0.4, tolerance);
}

TEST(ProfileSolid, ARegionWithoutAreaHasNoTriangles)
{
    EXPECT_TRUE(Build({}, "chamfer 0.1").triangles.empty());
    EXPECT_TRUE(Build({}, "chisel 0.1").triangles.empty());
    EXPECT_TRUE(Build({{{{0, 0}, {1, 1}}}}, "chamfer 0.1").triangles.empty());
    EXPECT_TRUE(Build({{Rectangle(0, 0, 1, 0.2)}}, "-0.2,0").triangles.empty());
}

TEST(ProfileSolid, TheLetterMustBeAsDeepAsItsProfiles)
{
    ProfileSolidOptions options;
    options.depth = 0.1;
    EXPECT_EQ(ErrorOf(Square(), "chamfer 0.1", options), "no error");
    options.sides = ProfileSides::Both;
    EXPECT_EQ(
        ErrorOf(Square(), "chamfer 0.1", options),
        "depth: found 0.100000 em, expected at least 0.200000 em, the depth of the profiles of "
        "both faces");
    options.depth = 0;
    EXPECT_EQ(ErrorOf(Square(), "0,0", options), "depth: found 0.000000, expected more than 0 em");
    options.depth = std::nan("");
    EXPECT_NE(ErrorOf(Square(), "0,0", options), "no error");
}

TEST(ProfileSolid, AnglesAndCoordinatesAreChecked)
{
    ProfileSolidOptions options;
    options.smoothAngle = 181;
    EXPECT_EQ(ErrorOf(Square(), "0,0", options),
              "smoothAngle: found 181.000000, expected 0 to 180 degrees");
    PlaneRegion region = Square();
    region.contours[0][2].x = std::nan("");
    EXPECT_EQ(ErrorOf(region, "0,0", {}),
              "region: found nan em from the origin, expected at most 16000.000000");
}
