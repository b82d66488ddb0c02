// SPDX-License-Identifier: MIT
#include "geometry/ProjectionData.h"

#include "tests/support/RecordBytes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

namespace
{

/// A picture of that size, drawn whole.
ProjectionData Sized(double width, double height)
{
    ProjectionData projection;
    projection.SetScaledSize(width, height);
    projection.SetViewSize(width, height);
    return projection;
}

TEST(ProjectionData, ANewLensHasTheStatedValues)
{
    const ProjectionData projection;
    EXPECT_EQ(projection.GetAspect(), 1.0);
    EXPECT_EQ(projection.GetFieldOfViewAngle(), 40.0);
    EXPECT_NEAR(projection.GetLensLength(), 48.08, 0.005);  // 17.5 / tan 20 degrees = 48.0808
    EXPECT_EQ(projection.GetZNear(), 0.1);
    EXPECT_EQ(projection.GetZFar(), 10000.0);
    EXPECT_EQ(projection.GetOrthographicWidth(), 5.0);
    EXPECT_EQ(projection.GetOrthographicHeight(), 5.0);
    EXPECT_EQ(projection.ShouldFitToWindow(), 1);
    EXPECT_EQ(projection.IsOrthographic(), 0);
    EXPECT_EQ(projection.GetScaleX(), 1.0);
    EXPECT_EQ(projection.GetScaleY(), 1.0);
    EXPECT_EQ(projection.GetReferenceAspect(), 1.0);
    EXPECT_EQ(projection.projectionFlags, 1U);
    EXPECT_EQ(projection.referenceFieldOfViewAngle, 40.0);
    EXPECT_EQ(projection.referenceHeight, -1.0);
}

TEST(ProjectionData, ANewLensHasASubWindowComputedFromAMissingSize)
{
    const ProjectionData projection;
    EXPECT_EQ(projection.GetWidth(), -1.0);
    EXPECT_EQ(projection.GetHeight(), -1.0);
    EXPECT_EQ(projection.GetUnscaledWidth(), 0.0);
    EXPECT_EQ(projection.GetUnscaledHeight(), 0.0);
    EXPECT_EQ(projection.GetDiagonalDistance(), 0.0);
    EXPECT_EQ(projection.GetHeightNear(), 0.0);
    EXPECT_EQ(projection.GetWidthNear(), 1.0);
    EXPECT_EQ(projection.GetLeftNear(), 0.0);
    EXPECT_EQ(projection.GetTopNear(), 0.0);
    EXPECT_EQ(projection.GetViewWidth(), 1.0);
    EXPECT_EQ(projection.GetViewHeight(), 1.0);
    EXPECT_EQ(projection.GetViewXOffset(), 0.0);
    EXPECT_EQ(projection.GetViewYOffset(), 0.0);
    EXPECT_EQ(projection.GetViewLeft(), 0.0);
    EXPECT_EQ(projection.GetViewRight(),
              -1.0);  // a sub-window of 1 in a width of -1, 1 at the near plane
    EXPECT_EQ(projection.GetViewTop(), 0.0);
    EXPECT_EQ(projection.GetViewBottom(), 0.0);
    EXPECT_EQ(projection.viewWidthNear, -1.0);
    EXPECT_EQ(projection.viewHeightNear, 0.0);
}

TEST(ProjectionData, LensOf50MillimetresSees38Point58Degrees)
{
    ProjectionData projection;
    projection.SetLensLength(50);
    EXPECT_NEAR(projection.GetFieldOfViewAngle(), 38.58, 0.005);
    projection.SetFieldOfViewAngle(38.58);
    EXPECT_NEAR(projection.GetLensLength(), 50, 0.005);
}

TEST(ProjectionData, FirstResizeOnlyStoresTheSize)
{
    ProjectionData projection;
    projection.ResizeAndMaintainView(640, 480);
    EXPECT_EQ(projection.GetWidth(), 640);
    EXPECT_EQ(projection.GetHeight(), 480);
    EXPECT_EQ(projection.GetFieldOfViewAngle(), 40.0);
    EXPECT_EQ(projection.GetAspect(), 640.0 / 480);
    EXPECT_EQ(projection.GetViewRight(), -1.0);  // the sub-window is not recomputed
    EXPECT_EQ(projection.referenceHeight, 480);
    EXPECT_EQ(projection.GetReferenceAspect(), 1.0);

    // The stored reference height of 480: a wide window then keeps the vertical angle of 40
    // degrees.
    projection.ResizeAndMaintainView(1280, 480);
    EXPECT_NEAR(projection.GetFieldOfViewAngle(), 40.0, 1e-6);
}

TEST(ProjectionData, NarrowerWindowWidensTheVerticalAngle)
{
    ProjectionData projection;
    projection.ResizeAndMaintainView(640, 480);
    projection.SaveReferenceAspect();
    projection.ResizeAndMaintainView(320, 480);
    // Half the aspect: the effective height doubles, and with it the tangent of half the angle.
    const double doubled = 2 * std::atan(2 * std::tan(20 * M_PI / 180)) * 180 / M_PI;
    EXPECT_NEAR(projection.GetFieldOfViewAngle(), doubled, 1e-6);
    EXPECT_EQ(projection.GetWidth(), 320);
    projection.ResizeAndMaintainView(1280, 480);
    EXPECT_NEAR(projection.GetFieldOfViewAngle(), 40.0, 1e-6);
}

TEST(ProjectionData, TheReferenceIsTheLensAtTheTimeItWasSaved)
{
    ProjectionData projection = Sized(640, 320);
    projection.SetFieldOfViewAngle(30);
    projection.SaveReferenceAspect();
    EXPECT_EQ(projection.GetReferenceAspect(), 2.0);
    EXPECT_EQ(projection.referenceFieldOfViewAngle, 30);
    EXPECT_EQ(projection.referenceHeight, 320);
    projection.SetReferenceAspect(3);
    EXPECT_EQ(projection.GetReferenceAspect(), 3.0);
    EXPECT_EQ(projection.GetAspect(), 2.0);
    EXPECT_EQ(projection.referenceHeight, 320);
}

TEST(ProjectionData, ASubWindowIsNotRecomputedWithoutASize)
{
    ProjectionData projection = Sized(200, 100);
    projection.SetOrthographic();
    projection.SetOrthographicWidth(4);
    projection.SetScaledSize(0, 100);
    EXPECT_EQ(projection.GetAspect(), 0.0);
    EXPECT_EQ(projection.GetViewLeft(), -2.0);
    EXPECT_EQ(projection.GetViewRight(), 2.0);
    projection.SetViewSize(50, 50);
    EXPECT_EQ(projection.GetViewRight(), 2.0);
}

TEST(ProjectionData, ASizeOf0IsASizeForTheVolume)
{
    ProjectionData projection;
    projection.SetScaledSize(0, 0.5);
    EXPECT_EQ(projection.GetDiagonalDistance(), 0.5);
    EXPECT_EQ(projection.GetAspect(), 0.0);
    projection.SetScaledSize(0.5, 0);
    EXPECT_EQ(projection.GetDiagonalDistance(), 0.5);
    EXPECT_EQ(projection.GetAspect(), 1.0);
    EXPECT_EQ(projection.GetWidthNear(), projection.GetHeightNear());
}

TEST(ProjectionData, APictureOfOnePixelHasASubWindow)
{
    ProjectionData projection;
    projection.SetOrthographic();
    projection.SetScaledSize(1, 1);
    EXPECT_EQ(projection.GetViewLeft(), -2.5);
    EXPECT_EQ(projection.GetViewRight(), 2.5);
}

TEST(ProjectionData, TheVolumeRestoresTheLensThatBelongsToTheAngle)
{
    ProjectionData projection = Sized(200, 100);
    projection.fieldOfViewAngle = 90;
    projection.CalculateProjectionData();
    EXPECT_NEAR(projection.GetLensLength(), 17.5, 1e-7);
    EXPECT_NEAR(projection.GetHeightNear(), 0.2, 1e-9);
}

TEST(ProjectionData, ALensChangesVolumeAndSubWindow)
{
    ProjectionData projection = Sized(200, 100);
    projection.SetLensLength(17.5);
    EXPECT_NEAR(projection.GetHeightNear(), 0.2, 1e-9);
    EXPECT_EQ(projection.GetViewTop(), projection.GetTopNear());
    EXPECT_EQ(projection.GetViewRight(), -projection.GetLeftNear());
}

TEST(ProjectionData, ANegativeSizeLeavesTheVolume)
{
    ProjectionData projection = Sized(200, 100);
    const double left = projection.GetLeftNear();
    projection.SetScaledSize(-1, 100);
    EXPECT_EQ(projection.GetAspect(), 2.0);
    EXPECT_EQ(projection.GetLeftNear(), left);
    projection.SetFieldOfViewAngle(90);
    EXPECT_EQ(projection.GetLeftNear(), left);
    EXPECT_NEAR(projection.GetLensLength(), 17.5, 1e-6);
}

std::vector<double> AllFields(const ProjectionData& p)
{
    return {p.GetAspect(),
            p.GetDiagonalDistance(),
            p.GetFieldOfViewAngle(),
            static_cast<double>(p.projectionFlags),
            p.GetHeight(),
            p.GetHeightNear(),
            p.GetLeftNear(),
            p.GetLensLength(),
            p.GetOrthographicHeight(),
            p.GetOrthographicWidth(),
            p.GetReferenceAspect(),
            p.referenceFieldOfViewAngle,
            p.referenceHeight,
            p.GetScaleX(),
            p.GetScaleY(),
            p.GetTopNear(),
            p.GetUnscaledWidth(),
            p.GetUnscaledHeight(),
            p.GetViewBottom(),
            p.GetViewLeft(),
            p.GetViewRight(),
            p.GetViewTop(),
            p.GetViewHeight(),
            p.GetViewWidth(),
            p.GetViewXOffset(),
            p.viewWidthNear,
            p.GetViewYOffset(),
            p.viewHeightNear,
            p.GetWidth(),
            p.GetWidthNear(),
            p.GetZFar(),
            p.GetZNear()};
}

TEST(ProjectionData, CopiesTakeEveryField)
{
    ProjectionData projection = Sized(200, 100);
    projection.SetScale(2, 3);
    projection.SetViewOffset(4, 5);
    projection.SetFieldOfViewAngle(50);
    projection.SaveReferenceAspect();
    projection.SetOrthographicWidth(7);
    projection.SetOrthographic();
    projection.ClearFitToWindow();

    // All but the clipping distances, which nothing sets, differ from a new one's.
    const std::vector<double> fields = AllFields(projection);
    const std::vector<double> initial = AllFields(ProjectionData());
    for (std::size_t i = 0; i + 2 < fields.size(); ++i)
    {
        EXPECT_NE(fields[i], initial[i]) << i;
    }
    ProjectionData assigned;
    assigned = projection;
    EXPECT_EQ(AllFields(assigned), fields);
    EXPECT_EQ(AllFields(ProjectionData(assigned)), fields);
}

TEST(ProjectionData, ResizeIgnoresSizesThatAreNotPositive)
{
    for (ProjectionData projection : {ProjectionData(), Sized(200, 100)})
    {
        const double width = projection.GetWidth();
        const double height = projection.GetHeight();
        for (const auto& [newWidth, newHeight] :
             {std::pair(0, 480), std::pair(640, 0), std::pair(-1, 480), std::pair(640, -1)})
        {
            projection.ResizeAndMaintainView(newWidth, newHeight);
            EXPECT_EQ(projection.GetWidth(), width);
            EXPECT_EQ(projection.GetHeight(), height);
        }
        projection.ResizeAndMaintainView(0.5, 0.25);
        EXPECT_EQ(projection.GetWidth(), 0.5);
        EXPECT_EQ(projection.GetHeight(), 0.25);
        EXPECT_EQ(projection.GetAspect(), 2.0);
    }
}

TEST(ProjectionData, AWidthOf0CountsAsSized)
{
    ProjectionData projection;
    projection.SetScaledSize(0, 480);
    projection.SaveReferenceAspect();
    projection.ResizeAndMaintainView(320, 240);
    EXPECT_EQ(projection.referenceHeight, 480.0);  // that of a first sizing would be 240
    EXPECT_EQ(projection.GetHeight(), 240.0);
}

TEST(ProjectionData, AHeightOf0CountsAsNotSized)
{
    ProjectionData projection;
    projection.SetScaledSize(640, 0);
    projection.ResizeAndMaintainView(320, 240);
    EXPECT_EQ(projection.referenceHeight, 240.0);
}

TEST(ProjectionData, ALaterResizeRecomputesVolumeAndSubWindow)
{
    ProjectionData projection = Sized(200, 100);
    projection.SaveReferenceAspect();
    projection.SetOrthographic();
    projection.SetViewSize(100, 100);
    projection.ResizeAndMaintainView(400, 100);
    EXPECT_EQ(projection.GetAspect(), 4.0);
    EXPECT_EQ(projection.GetHeightNear(), 1.25);
    EXPECT_EQ(projection.GetViewRight(), -1.25);  // a quarter of 5 from -2.5
}

TEST(ProjectionData, SubWindowOfTheWholePictureHasTheWholeVolume)
{
    const ProjectionData projection = Sized(640, 480);
    EXPECT_EQ(projection.GetViewLeft(), projection.GetLeftNear());
    EXPECT_EQ(projection.GetViewTop(), projection.GetTopNear());
    EXPECT_EQ(projection.GetViewRight(), -projection.GetLeftNear());
    EXPECT_EQ(projection.GetViewBottom(), -projection.GetTopNear());
}

TEST(ProjectionData, PerspectiveVolumeFollowsTheAngle)
{
    ProjectionData projection = Sized(200, 100);
    projection.SetFieldOfViewAngle(90);
    EXPECT_EQ(projection.GetAspect(), 2.0);
    EXPECT_NEAR(projection.GetHeightNear(), 0.2, 1e-9);  // 2 * tan 45 * 0.1
    EXPECT_NEAR(projection.GetWidthNear(), 0.4, 1e-9);
    EXPECT_NEAR(projection.GetLeftNear(), -0.2, 1e-9);
    EXPECT_NEAR(projection.GetTopNear(), 0.1, 1e-9);
    EXPECT_NEAR(projection.GetLensLength(), 17.5, 1e-6);
    EXPECT_DOUBLE_EQ(projection.GetDiagonalDistance(), std::sqrt(50000.0));
}

TEST(ProjectionData, BandsShiftTheVolume)
{
    ProjectionData projection = Sized(200, 100);
    projection.SetOrthographic();
    projection.SetOrthographicWidth(4);  // 4 by 2 units
    projection.SetViewSize(50, 25);
    projection.SetViewOffset(100, 25);
    // From the middle, a quarter of the width; from a quarter below the top, a quarter of the
    // height.
    EXPECT_DOUBLE_EQ(projection.GetViewLeft(), 0.0);
    EXPECT_DOUBLE_EQ(projection.GetViewRight(), 1.0);
    EXPECT_DOUBLE_EQ(projection.GetViewTop(), 0.5);
    EXPECT_DOUBLE_EQ(projection.GetViewBottom(), 0.0);
}

TEST(ProjectionData, OrthographicWidthIsTheMasterExtent)
{
    ProjectionData projection = Sized(200, 100);
    EXPECT_DOUBLE_EQ(projection.GetOrthographicHeight(), 2.5);
    projection.SetOrthographicHeight(3);
    EXPECT_DOUBLE_EQ(projection.GetOrthographicWidth(), 6);
    projection.SetOrthographic();
    EXPECT_EQ(projection.IsOrthographic(), 2);
    EXPECT_DOUBLE_EQ(projection.GetWidthNear(), 6);
    EXPECT_DOUBLE_EQ(projection.GetHeightNear(), 3);
    EXPECT_DOUBLE_EQ(projection.GetLeftNear(), -3);
    EXPECT_DOUBLE_EQ(projection.GetTopNear(), 1.5);
    projection.ClearOrthographic();
    EXPECT_EQ(projection.IsOrthographic(), 0);
    EXPECT_NEAR(projection.GetHeightNear(), 2 * std::tan(20 * M_PI / 180) * 0.1, 1e-9);
}

TEST(ProjectionData, WithoutASizeTheOtherExtentFollowsTheLastAspect)
{
    ProjectionData projection = Sized(200, 100);
    projection.SetScaledSize(-1, -1);
    EXPECT_EQ(projection.GetAspect(), 2.0);
    projection.SetOrthographicHeight(3);
    EXPECT_EQ(projection.GetOrthographicHeight(), 3.0);
    EXPECT_EQ(projection.GetOrthographicWidth(), 6.0);
    projection.SetOrthographicWidth(8);
    EXPECT_EQ(projection.GetOrthographicWidth(), 8.0);
    EXPECT_EQ(projection.GetOrthographicHeight(), 4.0);
    EXPECT_NE(projection.GetWidthNear(), 8.0);  // there is no volume to change
}

TEST(ProjectionData, ExtentsSizesAndScalesChangeVolumeAndSubWindow)
{
    ProjectionData projection = Sized(200, 100);
    projection.SetViewSize(50, 25);
    projection.SetOrthographic();
    projection.SetOrthographicHeight(4);
    EXPECT_EQ(projection.GetWidthNear(), 8.0);
    EXPECT_EQ(projection.GetViewRight(), -2.0);  // a quarter of 8 from -4
    projection.SetOrthographicWidth(16);
    EXPECT_EQ(projection.GetHeightNear(), 8.0);
    EXPECT_EQ(projection.GetViewRight(), -4.0);
    projection.SetUnscaledSize(100, 100);
    EXPECT_EQ(projection.GetAspect(), 1.0);
    EXPECT_EQ(projection.GetHeightNear(), 16.0);
    EXPECT_EQ(projection.GetViewRight(), 0.0);   // half of 16 from -8
    EXPECT_EQ(projection.GetViewBottom(), 4.0);  // a quarter of 16 below 8
    projection.SetScale(2, 1);
    EXPECT_EQ(projection.GetAspect(), 2.0);
    EXPECT_EQ(projection.GetHeightNear(), 8.0);
    EXPECT_EQ(projection.GetViewRight(), -4.0);
    projection.SetScaledSize(100, 200);
    EXPECT_EQ(projection.GetHeightNear(), 32.0);
    EXPECT_EQ(projection.GetViewBottom(), 12.0);  // an eighth of 32 below 16
}

TEST(ProjectionData, ScaleTiesScaledAndUnscaledSizes)
{
    ProjectionData projection;
    projection.SetUnscaledSize(100, 50);
    EXPECT_EQ(projection.GetWidth(), 100);
    projection.SetScale(2, 3);
    EXPECT_EQ(projection.GetWidth(), 200);
    EXPECT_EQ(projection.GetHeight(), 150);
    projection.SetScaledSize(40, 60);
    EXPECT_EQ(projection.GetUnscaledWidth(), 20);
    EXPECT_EQ(projection.GetUnscaledHeight(), 20);
    projection.SetScale(0, 1);
    EXPECT_EQ(projection.GetWidth(), 0);
    projection.SetScaledSize(10, 10);
    EXPECT_EQ(projection.GetUnscaledWidth(), 20);  // left as it was
    EXPECT_EQ(projection.GetUnscaledHeight(), 10);
}

TEST(ProjectionData, HeightOf0HasAspect1)
{
    ProjectionData projection;
    projection.SetScaledSize(10, 0);
    EXPECT_EQ(projection.GetAspect(), 1.0);
}

TEST(ProjectionData, CopyFromSavedTakesTheLensAndKeepsTheWindow)
{
    ProjectionData saved = Sized(100, 100);
    saved.SetFieldOfViewAngle(60);
    saved.SetOrthographicWidth(7);
    saved.SetOrthographic();

    ProjectionData projection = Sized(640, 480);
    EXPECT_EQ(projection.CopyFromSaved(saved), 1);
    EXPECT_EQ(projection.GetFieldOfViewAngle(), 60);
    EXPECT_EQ(projection.GetOrthographicWidth(), 7);
    EXPECT_EQ(projection.IsOrthographic(), 2);
    EXPECT_NEAR(projection.GetLensLength(), 17.5 / std::tan(30 * M_PI / 180), 1e-5);
    EXPECT_EQ(projection.GetWidth(), 640);
    EXPECT_EQ(projection.GetViewHeight(), 480);
}

TEST(ProjectionData, CopyFromSavedTakesNothingElse)
{
    ProjectionData saved = Sized(100, 100);
    saved.SetScale(9, 9);
    saved.SetViewOffset(8, 8);
    saved.SetReferenceAspect(3);
    saved.ClearFitToWindow();

    ProjectionData projection = Sized(640, 480);
    projection.SetOrthographic();
    EXPECT_EQ(projection.CopyFromSaved(saved), 1);
    EXPECT_EQ(projection.IsOrthographic(), 0);  // perspective again
    EXPECT_EQ(projection.ShouldFitToWindow(), 1);
    EXPECT_EQ(projection.GetScaleX(), 1);
    EXPECT_EQ(projection.GetViewXOffset(), 0);
    EXPECT_EQ(projection.GetReferenceAspect(), 1);
    EXPECT_EQ(projection.GetUnscaledHeight(), 480);
    // The orthographic height follows this window's aspect: the width is the master extent.
    EXPECT_EQ(projection.GetOrthographicWidth(), 5);
    EXPECT_EQ(projection.GetOrthographicHeight(), 3.75);
}

TEST(ProjectionData, CopyFromSavedTakesBothExtentsWhereThereIsNoSize)
{
    ProjectionData saved = Sized(200, 100);
    saved.SetOrthographicWidth(8);
    ProjectionData projection;
    projection.CopyFromSaved(saved);
    EXPECT_EQ(projection.GetOrthographicWidth(), 8.0);
    EXPECT_EQ(projection.GetOrthographicHeight(), 4.0);
    EXPECT_EQ(projection.GetWidth(), -1.0);
}

TEST(ProjectionData, ASubWindowLeavesTheWholeVolume)
{
    ProjectionData projection = Sized(200, 100);
    const double left = projection.GetLeftNear();
    const double lens = projection.GetLensLength();
    projection.SetViewSize(20, 10);
    projection.SetViewOffset(30, 40);
    EXPECT_EQ(projection.GetLeftNear(), left);
    EXPECT_EQ(projection.GetLensLength(), lens);
    EXPECT_EQ(projection.GetWidth(), 200);
    EXPECT_EQ(projection.GetAspect(), 2);
}

TEST(ProjectionData, FitToWindowIsAFlagOnly)
{
    ProjectionData projection;
    projection.ClearFitToWindow();
    EXPECT_EQ(projection.ShouldFitToWindow(), 0);
    projection.SetFitToWindow();
    EXPECT_EQ(projection.ShouldFitToWindow(), 1);
}

}  // namespace
