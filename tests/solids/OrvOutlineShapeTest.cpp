// SPDX-License-Identifier: MIT
#include "solids/OrvOutlineShape.h"

#include "geometry/SurfaceRecorder.h"
#include "orvane/Error.h"
#include "platform/Limits.h"
#include "solids/MeshBuilder.h"
#include "solids/MeshMeasures.h"
#include "solids/SolidBudget.h"
#include "solids/SolidSurface.h"
#include "tests/support/Allocations.h"
#include "tests/support/OutlineAreas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <new>

namespace
{
using namespace orvane;

/// A frame of side 1 around a hole of side 0.5, and the square that fills the hole, 0.5 deep.
class OrvOutlineShapeTest : public testing::Test
{
protected:
    OrvOutlineShapeTest()
    {
        shape.SetAreas({FrameArea(), FillingArea()});
        shape.SetScale(DVector(1, 1, 0.5));
    }

    SolidMesh Mesh()
    {
        shape.CalculateBounds();
        MeshBuildOptions options;
        options.separateLetters = true;
        return BuildMesh(shape, options);
    }
    MeshMeasures Measured() { return MeasureMesh(Mesh()).all; }

    /// The measures of an area's solid alone.
    MeshMeasures MeasuredArea(int area)
    {
        OrvOutlineShape alone(shape);
        alone.SetAreas({{shape.Region(area), shape.Material(area)}});
        return MeasureMesh(BuildMesh(alone)).all;
    }

    void ExpectBounds(const Vector& minimum, const Vector& maximum)
    {
        shape.CalculateBounds();
        const Vector low = shape.GetBoundsLocalMinimum();
        const Vector high = shape.GetBoundsLocalMaximum();
        for (int axis = 0; axis < 3; ++axis)
        {
            EXPECT_NEAR((&low.x)[axis], (&minimum.x)[axis], 1e-5) << axis;
            EXPECT_NEAR((&high.x)[axis], (&maximum.x)[axis], 1e-5) << axis;
        }
    }

    OrvOutlineShape shape;
};

TEST_F(OrvOutlineShapeTest, ANewShapeHasNoAreasAndNoTriangles)
{
    OrvOutlineShape empty;
    EXPECT_EQ(empty.AreaCount(), 0);
    EXPECT_EQ(BuildMesh(empty).TriangleCount(), 0u);
    EXPECT_EQ(empty.CalculateBounds(), 1);
    EXPECT_EQ(empty.bounds.flags & BoundingElement::localBoundsDefined, 0u);
}

TEST_F(OrvOutlineShapeTest, EachAreaIsAClosedSolidInItsMaterial)
{
    const MeshMeasures frame = MeasuredArea(0);
    EXPECT_TRUE(frame.isClosed);
    // The face is 1 less a quarter, and 0.5 deep.
    EXPECT_NEAR(frame.volume, 0.75 * 0.5, 1e-6);
    EXPECT_NEAR(frame.area, 2 * 0.75 + (4 + 2) * 0.5, 1e-5);
    const MeshMeasures filling = MeasuredArea(1);
    EXPECT_TRUE(filling.isClosed);
    EXPECT_NEAR(filling.volume, 0.25 * 0.5, 1e-6);
    const MeshMeasures both = Measured();
    EXPECT_TRUE(both.isClosed);
    EXPECT_NEAR(both.volume, 0.5, 1e-6);

    const SolidMesh mesh = Mesh();
    ASSERT_EQ(mesh.materials.size(), 2u);
    for (const MeshGroup& group : mesh.groups)
    {
        EXPECT_STREQ(mesh.materials[static_cast<std::size_t>(group.material)].GetName(),
                     group.letter == 0 ? "frame" : "filling");
        EXPECT_EQ(group.line, group.letter);
    }
}

TEST_F(OrvOutlineShapeTest, AnInwardProfileSlopesOnTheChosenFaces)
{
    shape.SetAreas({FillingArea()});
    shape.SetProfile(ParseProfile("0,0 0.125,-0.125"));
    // From a face of 0.5 to a wall of 0.75: the integral of (0.5 + 2 t) squared up to 0.125.
    const double frustum = (0.75 * 0.75 * 0.75 - 0.5 * 0.5 * 0.5) / 6;
    shape.SetProfileSides(BevelSides::Front);
    EXPECT_NEAR(Measured().volume, frustum + 0.75 * 0.75 * 0.375, 1e-4);
    shape.SetProfileSides(BevelSides::Back);
    EXPECT_NEAR(Measured().volume, frustum + 0.75 * 0.75 * 0.375, 1e-4);
    shape.SetProfileSides(BevelSides::Both);
    EXPECT_NEAR(Measured().volume, 2 * frustum + 0.75 * 0.75 * 0.25, 1e-4);
    EXPECT_TRUE(Measured().isClosed);
    // The profile keeps its size when the shape is scaled: from 1 by 0.5 to 1.25 by 0.75.
    shape.SetScale(DVector(2, 1, 0.5));
    ExpectBounds(Vector(-0.625f, -0.375f, -0.5f), Vector(0.625f, 0.375f, 0));
}

TEST_F(OrvOutlineShapeTest, EveryNamedProfileGivesClosedSolids)
{
    for (const std::string& name : ProfileNames())
    {
        for (const char* const width : {" 0.05", " -0.05"})
        {
            shape.SetProfile(ParseProfile(name + width));
            EXPECT_TRUE(Measured().isClosed) << name << width;
            EXPECT_EQ(shape.Solid(0).outcome, SolidOutcome::Profiled) << name << width;
        }
    }
}

TEST_F(OrvOutlineShapeTest, AMirroredShapeStillFacesOutward)
{
    for (const DVector& scale : {DVector(-1, 1, 0.5), DVector(-1, -1, 0.5), DVector(1, 1, -0.5)})
    {
        shape.SetScale(scale);
        EXPECT_NEAR(Measured().volume, 0.5, 1e-6);
    }
    ExpectBounds(Vector(-0.5f, -0.5f, 0), Vector(0.5f, 0.5f, 0.5f));
}

TEST_F(OrvOutlineShapeTest, TheBoxOfAllAreasIsAlignedAtTheOrigin)
{
    shape.SetAreas({{{{SquareContour(3, 4, 2)}}, NamedColor()}});
    shape.SetScale(DVector(0.5, 1, 0.25));
    ExpectBounds(Vector(-0.5f, -1, -0.25f), Vector(0.5f, 1, 0));
    shape.SetAlignment(Alignment::Left);
    ExpectBounds(Vector(0, -1, -0.25f), Vector(1, 1, 0));
    EXPECT_NEAR(Measured().bounds.minimum[0], 0, 1e-6);
    shape.SetAlignment(Alignment::Right);
    ExpectBounds(Vector(-1, -1, -0.25f), Vector(0, 1, 0));
    EXPECT_NEAR(Measured().bounds.minimum[0], -1, 1e-6);
    EXPECT_EQ(shape.GetUnscaledDimensions().x, 2);
    EXPECT_EQ(shape.GetScaledDimensions().x, 1);
    EXPECT_EQ(shape.GetScaledDimensions().y, 2);
    EXPECT_EQ(shape.GetScaledDimensions().z, 0.25);
}

TEST_F(OrvOutlineShapeTest, TheBoundsHoldTheTipsThatAProfileMakes)
{
    // The tip of a mitred right angle lies as far out as the profile in x and in y.
    shape.SetProfile(ParseProfile("0,0 0.125,-0.125"));
    ExpectBounds(Vector(-0.625f, -0.625f, -0.5f), Vector(0.625f, 0.625f, 0));
    // The tip of a triangle's sharp corner lies farther out: half of its angle has the tangent 0.3.
    shape.SetAreas({{{{{{-0.3, 0}, {0.3, 0}, {0, 1}}}}, NamedColor()}});
    shape.CalculateBounds();
    EXPECT_NEAR(shape.GetBoundsLocalMaximum().y, 0.5 + 0.125 * std::sqrt(1 + 1 / 0.09), 1e-4);
    EXPECT_NEAR(shape.GetBoundsLocalMinimum().y, -0.5 - 0.125, 1e-4);
    const MeshBounds bounds = Measured().bounds;
    EXPECT_NEAR(shape.GetBoundsLocalMaximum().y, bounds.maximum[1], 1e-6);
}

TEST_F(OrvOutlineShapeTest, ADraggedHandleScalesTheAreasButNotTheProfile)
{
    shape.SetProfile(ParseProfile("0,0 0.125,-0.125"));
    shape.CalculateBounds();
    shape.CalculateSizingHandles();
    // Handle 2 is the upper right one at the front. The handle at the other end stays in place.
    const DVector corner = shape.GetLocalSizingHandleCenter(2);
    shape.Resize(corner + DVector(1, 0, 0), 2);
    EXPECT_NEAR(shape.GetScaledDimensions().x, 2, 1e-5);
    EXPECT_NEAR(shape.GetScaledDimensions().y, 1, 1e-5);
    EXPECT_NEAR(shape.GetScale().x, 2, 1e-5);
    EXPECT_NEAR(shape.GetBoundsLocalMaximum().x - shape.GetBoundsLocalMinimum().x, 2.25, 1e-5);
}

/// A comb whose teeth stand side by side, from 0 to 1 in x and in y.
PlaneRegion Comb(int teeth)
{
    std::vector<contours::DoublePoint> corners = {{0, 0}, {1, 0}};
    for (int i = teeth; i-- > 0;)
    {
        corners.push_back({(i + 1.0) / teeth, 1});
        corners.push_back({(i + 0.5) / teeth, 1});
        corners.push_back({(i + 0.5) / teeth, 0.5});
        corners.push_back({static_cast<double>(i) / teeth, 0.5});
    }
    return {{corners}};
}

// At the height of 0.5, a comb of n teeth has 2 n corners and 3 n + 1 edges: n that lie there, 2 n
// - 1 that end there, the right side, and the left side, which ends there. At 1 it has 2 n corners
// and 3 n edges, at 0 two corners and three edges.
std::int64_t StepsOfComb(std::int64_t teeth)
{
    return 2 * teeth * (3 * teeth + 1) + 2 * teeth * 3 * teeth + 6;
}

TEST_F(OrvOutlineShapeTest, StepsAreTheEdgesAtTheHeightsOfAllCorners)
{
    EXPECT_EQ(StepsOfSolid({}), 0);
    // Each corner of a square has the edge that lies there and the two that end there.
    EXPECT_EQ(StepsOfSolid({{SquareContour(0, 0, 1)}}), 12);
    EXPECT_EQ(StepsOfSolid(Comb(1)), 20);
    EXPECT_EQ(StepsOfSolid(Comb(100)), StepsOfComb(100));
}

TEST_F(OrvOutlineShapeTest, AnAreaThatTakesTooManyStepsKeepsSquareEdgesOrIsLeftOut)
{
    EdgeProfile rings;
    for (int i = 0; i < 64; ++i)
    {
        rings.steps.push_back({0, -i / 256.0});
    }
    // The most teeth that may have 64 rings are 806.
    EXPECT_LE(64 * StepsOfComb(806), limits::maxSolidSteps);
    EXPECT_GT(64 * StepsOfComb(807), limits::maxSolidSteps);
    shape.SetProfile(rings);
    shape.SetAreas({{Comb(807), NamedColor()}});
    EXPECT_EQ(shape.Solid(0).outcome, SolidOutcome::Square);
    EXPECT_EQ(shape.Solid(0).problem,
              "found " + std::to_string(64 * StepsOfComb(807)) +
                  " steps, which edges side by side take, expected at most 500000000");
    rings.steps.pop_back();
    shape.SetProfile(rings);
    EXPECT_EQ(shape.Solid(0).outcome, SolidOutcome::Profiled);

    // The most teeth of all are 6454.
    EXPECT_LE(StepsOfComb(6454), limits::maxSolidSteps);
    EXPECT_GT(StepsOfComb(6455), limits::maxSolidSteps);
    shape.SetAreas({{Comb(6455), NamedColor()}});
    EXPECT_EQ(shape.Solid(0).outcome, SolidOutcome::Missing);
    EXPECT_EQ(BuildMesh(shape).TriangleCount(), 0u);
}

TEST_F(OrvOutlineShapeTest, ASizeThatIsNoNumberGivesNoSolid)
{
    shape.SetScale(DVector(std::numeric_limits<double>::quiet_NaN(), 1, 0.5));
    EXPECT_EQ(BuildMesh(shape).TriangleCount(), 0u);
    EXPECT_EQ(shape.Solid(0).outcome, SolidOutcome::Missing);
    shape.SetScale(DVector(1, 1, 0));
    EXPECT_EQ(BuildMesh(shape).TriangleCount(), 0u);
    EXPECT_EQ(shape.Solid(0).outcome, SolidOutcome::Missing);
    EXPECT_EQ(shape.Solid(0).problem, "it has no size");
}

TEST_F(OrvOutlineShapeTest, AMaterialOfAnAreaCanBeChanged)
{
    NamedColor glass("glass");
    glass.SetDiffuseColor({1, 1, 1, 0.5f});
    EXPECT_FALSE(shape.IsTransparent());
    shape.SetSurfaceColor(glass, 2);
    shape.SetSurfaceColor(glass, -1);
    EXPECT_FALSE(shape.IsTransparent());
    shape.SetSurfaceColor(glass, 1);
    EXPECT_TRUE(shape.IsTransparent());
    EXPECT_STREQ(shape.Material(0).GetName(), "frame");
    EXPECT_STREQ(shape.Material(1).GetName(), "glass");
}

TEST_F(OrvOutlineShapeTest, WrongAreasAreRefusedAndChangeNothing)
{
    using Contours = std::vector<std::vector<contours::DoublePoint>>;
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto errorOf = [this](const Contours& contours) {
        try
        {
            shape.SetAreas({FillingArea(), {{contours}, NamedColor()}});
        }
        catch (const Error& error)
        {
            return std::string(error.what());
        }
        return std::string();
    };
    EXPECT_EQ(errorOf({{{0, 0}, {1, 0}}}), "area 1: found 2 corners, expected at least 3");
    EXPECT_NE(errorOf({{{0, 0}, {1, 0}, {nan, 1}}}), "");
    EXPECT_NE(errorOf({{{0, 0}, {1, 0}, {1, 1e6 + 1}}}), "");
    EXPECT_EQ(
        errorOf({{{0, 0}, {1, 1}, {1, 0}, {0, 1}}}),
        "area 1: found contours that cross or touch along edges, expected contours that touch "
        "at single corners at most");
    EXPECT_NE(errorOf({SquareContour(0, 0, 1), SquareContour(1, 0, 1)}), "");
    EXPECT_EQ(shape.AreaCount(), 2);
    EXPECT_STREQ(shape.Material(1).GetName(), "filling");
    // These touch at one corner, and lie at the limit.
    EXPECT_EQ(errorOf({SquareContour(0, 0, 1), SquareContour(1, 1, 1)}), "");
    EXPECT_EQ(errorOf({SquareContour(1e6 - 10, -1e6, 10)}), "");
}

TEST_F(OrvOutlineShapeTest, AShapeHasAtMost1000Areas)
{
    std::vector<OutlineArea> areas(limits::maxShapeColors, FillingArea());
    shape.SetAreas(areas);
    EXPECT_EQ(shape.AreaCount(), 1000);
    areas.push_back(FillingArea());
    EXPECT_THROW(shape.SetAreas(areas), Error);
}

TEST_F(OrvOutlineShapeTest, AWrongProfileIsRefusedAndChangesNothing)
{
    const EdgeProfile before = shape.GetProfile();
    EXPECT_THROW(shape.SetProfile({}), Error);
    EXPECT_EQ(shape.GetProfile(), before);
}

TEST_F(OrvOutlineShapeTest, SolidsFollowEveryChange)
{
    EXPECT_NEAR(Measured().volume, 0.5, 1e-6);
    shape.SetScale(DVector(1, 1, 0.25));
    EXPECT_NEAR(Measured().volume, 0.25, 1e-6);
    shape.SetAreas({FillingArea()});
    EXPECT_NEAR(Measured().volume, 0.25 * 0.25, 1e-6);
    shape.SetProfile(ParseProfile("0,0 0.125,0"));
    EXPECT_NEAR(Measured().volume, 0.75 * 0.75 * 0.25, 1e-4);
    shape.SetSurfaceColor(NamedColor("other"), 0);
    EXPECT_STREQ(Mesh().materials.at(0).GetName(), "other");
}

TEST_F(OrvOutlineShapeTest, ASolidForWhichThereIsTooLittleMemoryIsMadeLater)
{
    static int granted;
    const std::size_t whole = BuildMesh(shape).TriangleCount();
    int refusals = 0;
    for (int requests = 0; requests < 60; ++requests)
    {
        OrvOutlineShape copy(shape);
        granted = requests;
        SetMemoryJudge([](const void*) { return granted-- <= 0; });
        try
        {
            copy.Solid(0);
        }
        catch (const std::bad_alloc&)
        {
            ++refusals;
        }
        SetMemoryJudge(nullptr);
        EXPECT_EQ(BuildMesh(copy).TriangleCount(), whole) << requests;
    }
    EXPECT_GT(refusals, 5);
}

TEST_F(OrvOutlineShapeTest, UndoBringsBackEverything)
{
    shape.SetFileName("a.svg");
    ASSERT_EQ(shape.SaveToUndo(), 1);
    shape.SetAreas({FillingArea()});
    shape.SetProfile(ParseProfile("0,0 0.25,-0.25"));
    shape.SetProfileSides(BevelSides::Front);
    shape.SetAlignment(Alignment::Left);
    shape.SetSmoothAngle(5);
    shape.SetFileName("b.svg");
    EXPECT_NEAR(Measured().volume, 0.25 * 0.5, 1);  // builds the other solids
    ASSERT_EQ(shape.RestoreFromUndo(), 1);
    EXPECT_EQ(shape.AreaCount(), 2);
    EXPECT_EQ(shape.GetProfile(), ParseProfile("0,0"));
    EXPECT_EQ(shape.GetProfileSides(), BevelSides::Both);
    EXPECT_EQ(shape.GetAlignment(), Alignment::Center);
    EXPECT_EQ(shape.GetSmoothAngle(), 30);
    EXPECT_STREQ(shape.GetFileName(), "a.svg");
    EXPECT_NEAR(Measured().volume, 0.5, 1e-6);
}

TEST_F(OrvOutlineShapeTest, ASubtreeHasItsMesh)
{
    DrawingObject group;
    auto* const child = new OrvOutlineShape(shape);
    child->SetTranslation(DVector(10, 0, 0));
    group.AddChild(child);
    const SolidMesh mesh = BuildMesh(group);
    EXPECT_NEAR(MeasureMesh(mesh).all.volume, 0.5, 1e-5);
    EXPECT_NEAR(mesh.Bounds().minimum[0], 9.5, 1e-5);
    ASSERT_EQ(mesh.nodes.size(), 1u);
    EXPECT_EQ(mesh.nodes[0].object, child);
}

TEST_F(OrvOutlineShapeTest, AMeshHasTheNameOfTheFileInUtf8)
{
    shape.SetFileName("icons/na\xC3\xAFve.svg");
    EXPECT_EQ(Mesh().nodes.at(0).name, "na\xC3\xAFve");
    shape.SetFileName("a\xFF.svg");  // is not UTF-8
    EXPECT_EQ(Mesh().nodes.at(0).name, "a\xEF\xBF\xBD");
}
}  // namespace
