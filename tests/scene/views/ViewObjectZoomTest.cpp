// SPDX-License-Identifier: MIT
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"
#include "tests/support/ExpectVector.h"
#include "tests/support/TestNodes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace
{

// A view of a scene with boxes.
class Zooming : public testing::Test
{
protected:
    Zooming()
    {
        view.AttachScene(&scene);
        Size(100, 100);
        // A right angle: the pyramid is as wide, at any depth, as twice that depth.
        view.SetProjectionFieldOfViewAngle(90);
    }

    void Size(double width, double height)
    {
        view.SetScaledSize(width, height);
        view.SetViewSize(width, height);
    }

    BoxNode* AddBox(const Vector& minimum, const Vector& maximum)
    {
        auto* const box = new BoxNode(minimum, maximum);
        scene.AddChild(box);
        return box;
    }

    void ExpectPlace(double x, double y, double z) const
    {
        EXPECT_XYZ_NEAR(view.GetTranslation(), x, y, z, 1e-5);
    }

    void ExpectNotMoved() const { EXPECT_XYZ(view.GetTranslation(), 0.0, 0.0, -5.0); }

    SceneObject scene;
    ViewObject view;
};

TEST_F(Zooming, AViewsBoundsAreItsScenesAsTheCameraSeesThem)
{
    AddBox(Vector(-1.0f, -2.0f, -3.0f), Vector(1.0f, 2.0f, 4.0f));
    EXPECT_EQ(view.CalculateBounds(), 1);
    EXPECT_XYZ(view.GetBoundsLocalMinimum(), -1.0f, -2.0f, -3.0f);
    EXPECT_XYZ(view.GetBoundsLocalMaximum(), 1.0f, 2.0f, 4.0f);
    EXPECT_XYZ(view.GetBoundsGlobalMinimum(), -1.0f, -2.0f, -8.0f);
    EXPECT_XYZ(view.GetBoundsGlobalMaximum(), 1.0f, 2.0f, -1.0f);
}

TEST_F(Zooming, ACubesFrontFillsTheWindow)
{
    AddBox(Vector(-1.0f, -1.0f, -1.0f), Vector(1.0f, 1.0f, 1.0f));
    EXPECT_EQ(view.ZoomExtents(), 1);
    ExpectPlace(0, 0, -2);  // the front, at z = 1, is one unit away
}

TEST_F(Zooming, AWideBoxIsLimitedByItsWidth)
{
    AddBox(Vector(1.0f, 2.0f, 3.0f), Vector(9.0f, 4.0f, 7.0f));
    EXPECT_EQ(view.ZoomExtents(), 1);
    ExpectPlace(-5, -3, -11);  // half the width of 8, in front of z = 7
}

TEST_F(Zooming, ATallBoxIsLimitedByItsHeight)
{
    AddBox(Vector(1.0f, 2.0f, 3.0f), Vector(3.0f, 8.0f, 7.0f));
    EXPECT_EQ(view.ZoomExtents(), 1);
    ExpectPlace(-2, -5, -10);
}

TEST_F(Zooming, AWideWindowShowsMoreOfTheWidth)
{
    Size(400, 100);
    AddBox(Vector(1.0f, 2.0f, 3.0f), Vector(9.0f, 4.0f, 7.0f));
    EXPECT_EQ(view.ZoomPerspectiveExtents(), 1);
    ExpectPlace(-5, -3, -8);  // width 8 / 2 / 4 and height 2 / 2 / 1: both 1
}

TEST_F(Zooming, LooksAtTheTurnedCorners)
{
    // Turned by 45 degrees the front is an edge, seen as a point; the sides lie where the pyramid
    // has room for them, so the height decides. The corners' own box would have asked for more.
    AddBox(Vector(-1.0f, -1.0f, -1.0f), Vector(1.0f, 1.0f, 1.0f));
    view.Rotate(45, DVector(0.0, 1.0, 0.0));
    EXPECT_EQ(view.ZoomExtents(), 1);
    EXPECT_EQ(view.CalculateBounds(), 1);
    EXPECT_NEAR(view.GetBoundsGlobalMaximum().z, -1, 1e-5);
}

TEST_F(Zooming, ABoxIsInsideTheFrustumAndTouchesALimitingSide)
{
    AddBox(Vector(-3.0f, 1.0f, -2.0f), Vector(5.0f, 2.5f, 4.0f));
    AddBox(Vector(0.0f, -4.0f, 1.0f), Vector(1.0f, 0.0f, 9.0f));
    const DVector axes[] = {DVector(1.0, 0.0, 0.0), DVector(0.0, 1.0, 0.0), DVector(1.0, 2.0, 3.0)};
    const double sizes[][2] = {{100, 100}, {300, 100}, {100, 250}};
    for (const auto& size : sizes)
    {
        for (const DVector& axis : axes)
        {
            view.SetTransform(CoordinateTransform());
            view.Rotate(35, axis);
            Size(size[0], size[1]);
            view.SetProjectionFieldOfViewAngle(40);
            ASSERT_EQ(view.ZoomExtents(), 1);
            ASSERT_EQ(view.CalculateBounds(), 1);
            const double slopeY = std::tan(20 * M_PI / 180);
            const double slopeX = slopeY * size[0] / size[1];
            double reachX = 0;
            double reachY = 0;
            for (int i = 0; i < 8; ++i)
            {
                const Vector& corner = view.bounds.GetGlobalBoundingBox()[i];
                ASSERT_LT(corner.z, 0);
                const double depth = -static_cast<double>(corner.z);
                reachX = std::max(reachX, std::abs(corner.x) / (depth * slopeX));
                reachY = std::max(reachY, std::abs(corner.y) / (depth * slopeY));
            }
            EXPECT_NEAR(std::max(reachX, reachY), 1, 1e-4);
        }
    }
}

TEST_F(Zooming, AnOrthographicWindowTakesTheBoxesHeightWhenItIsWider)
{
    AddBox(Vector(1.0f, 2.0f, 3.0f), Vector(5.0f, 4.0f, 7.0f));
    Size(300, 100);
    view.SetProjectionOrthographic();
    EXPECT_EQ(view.ZoomOrthographicExtents(), 1);
    EXPECT_DOUBLE_EQ(view.GetProjectionOrthographicHeight(), 2);
    EXPECT_DOUBLE_EQ(view.GetProjectionOrthographicWidth(), 6);
    ExpectPlace(-3, -3, -5);  // the depth stays
}

TEST_F(Zooming, AnOrthographicWindowTakesTheBoxesWidthWhenItIsNarrower)
{
    AddBox(Vector(1.0f, 2.0f, 3.0f), Vector(5.0f, 4.0f, 7.0f));
    view.SetProjectionOrthographic();
    EXPECT_EQ(view.ZoomExtents(), 1);
    EXPECT_DOUBLE_EQ(view.GetProjectionOrthographicWidth(), 4);
    EXPECT_DOUBLE_EQ(view.GetProjectionOrthographicHeight(), 4);
    // The perspective zoom has gone before: half of 4 in front of z = 7.
    ExpectPlace(-3, -3, -9);
}

TEST_F(Zooming, APerspectiveZoomLeavesTheOrthographicExtents)
{
    AddBox(Vector(1.0f, 2.0f, 3.0f), Vector(5.0f, 4.0f, 7.0f));
    EXPECT_EQ(view.ZoomExtents(), 1);
    EXPECT_EQ(view.GetProjectionOrthographicWidth(), 5.0);
}

TEST_F(Zooming, ABoxWithoutWidthIsLimitedByItsHeight)
{
    AddBox(Vector(1.0f, 2.0f, 3.0f), Vector(1.0f, 4.0f, 7.0f));
    EXPECT_EQ(view.ZoomExtents(), 1);
    ExpectPlace(-1, -3, -8);
    view.SetProjectionOrthographic();
    EXPECT_EQ(view.ZoomOrthographicExtents(), 1);
    EXPECT_DOUBLE_EQ(view.GetProjectionOrthographicHeight(), 2);
}

// What cannot be zoomed to moves nothing.
class NotZooming : public Zooming
{
protected:
    void ExpectNoZoom()
    {
        for (const bool orthographic : {false, true})
        {
            orthographic ? view.SetProjectionOrthographic() : view.ClearProjectionOrthographic();
            const double width = view.GetProjectionOrthographicWidth();
            EXPECT_EQ(view.ZoomExtents(), 0);
            EXPECT_EQ(view.ZoomPerspectiveExtents(), 0);
            EXPECT_EQ(view.ZoomOrthographicExtents(), 0);
            ExpectNotMoved();
            EXPECT_EQ(view.GetProjectionOrthographicWidth(), width);
            EXPECT_FALSE(std::isnan(view.GetProjection().GetWidthNear()));
        }
    }
};

TEST_F(NotZooming, AViewWithoutASceneStays)
{
    view.AttachScene(nullptr);
    ExpectNoZoom();
}

TEST_F(NotZooming, AnEmptySceneMovesNothing)
{
    ExpectNoZoom();
}

TEST_F(NotZooming, ASceneThatLostItsBoundsMovesNothing)
{
    BoxNode* const box = AddBox(Vector(-1.0f, -1.0f, -1.0f), Vector(1.0f, 1.0f, 1.0f));
    EXPECT_EQ(view.CalculateBounds(), 1);
    box->SetDeleted();
    ExpectNoZoom();
    box->ClearDeleted();
    box->result = 0;
    ExpectNoZoom();
}

TEST_F(NotZooming, ABoxWithoutHeightMovesNothing)
{
    AddBox(Vector(1.0f, 2.0f, 3.0f), Vector(5.0f, 2.0f, 7.0f));
    ExpectNoZoom();
}

TEST_F(NotZooming, AnAspectOf0MovesNothing)
{
    AddBox(Vector(-1.0f, -1.0f, -1.0f), Vector(1.0f, 1.0f, 1.0f));
    Size(0, 100);
    EXPECT_EQ(view.GetProjection().GetAspect(), 0.0);
    ExpectNoZoom();
}

}  // namespace
