// SPDX-License-Identifier: MIT
#include "geometry/ProjectionData.h"
#include "tests/support/RecordBytes.h"

#include <gtest/gtest.h>

#include <cmath>

namespace
{

RecordBytes Version1Fields()
{
    return RecordBytes().Double(50).Double(1.5).Double(45).Double(300);
}

TEST(ProjectionData, RecordHoldsLensReferenceAndScale)
{
    ProjectionData projection;
    LoadRecord(projection,
               RecordBytes().Dword(4).Append(Version1Fields()).Dword(2).Doubles({2, 3, 6, 7}));
    EXPECT_EQ(projection.GetFieldOfViewAngle(), 50);
    EXPECT_EQ(projection.GetReferenceAspect(), 1.5);
    EXPECT_EQ(projection.IsOrthographic(), 2);
    EXPECT_EQ(projection.ShouldFitToWindow(), 0);
    EXPECT_EQ(projection.GetScaleX(), 2);
    EXPECT_EQ(projection.GetScaleY(), 3);
    EXPECT_EQ(projection.GetOrthographicWidth(), 6);
    EXPECT_EQ(projection.GetOrthographicHeight(), 7);
    EXPECT_NEAR(projection.GetLensLength(), 17.5 / std::tan(25 * M_PI / 180), 1e-5);
    EXPECT_EQ(Stored(projection),
              RecordBytes().Dword(4).Append(Version1Fields()).Dword(2).Doubles({2, 3, 6, 7}).Get());
}

TEST(ProjectionData, Version1FitsTheWindowAtScale1)
{
    ProjectionData projection;
    projection.ClearFitToWindow();
    projection.SetScale(9, 9);
    projection.SetOrthographicWidth(9);
    LoadRecord(projection, RecordBytes().Dword(1).Append(Version1Fields()));
    EXPECT_EQ(projection.GetFieldOfViewAngle(), 50);
    EXPECT_EQ(projection.GetScaleX(), 1);
    EXPECT_EQ(projection.GetScaleY(), 1);
    EXPECT_EQ(projection.GetOrthographicWidth(), 5);
    EXPECT_EQ(projection.ShouldFitToWindow(), 1);
}

TEST(ProjectionData, Version2HasOneScaleForBothAxes)
{
    ProjectionData projection;
    LoadRecord(projection, RecordBytes().Dword(2).Append(Version1Fields()).Dword(0).Double(4));
    EXPECT_EQ(projection.GetScaleX(), 4);
    EXPECT_EQ(projection.GetScaleY(), 4);
    EXPECT_EQ(projection.ShouldFitToWindow(), 0);
}

TEST(ProjectionData, Version3HasItsOwnVerticalScale)
{
    ProjectionData projection;
    LoadRecord(projection,
               RecordBytes().Dword(3).Append(Version1Fields()).Dword(1).Doubles({4, 5}));
    EXPECT_EQ(projection.GetScaleX(), 4);
    EXPECT_EQ(projection.GetScaleY(), 5);
    EXPECT_EQ(projection.GetOrthographicWidth(), 5);
}

TEST(ProjectionData, RefusesOtherVersions)
{
    ProjectionData projection;
    EXPECT_EQ(LoadCause(projection, RecordBytes().Dword(0)), CArchiveException::badSchema);
    EXPECT_EQ(LoadCause(projection, RecordBytes().Dword(5)), CArchiveException::badSchema);
    EXPECT_EQ(LoadCause(projection, RecordBytes().Dword(4).Double(1)),
              CArchiveException::endOfFile);
}

}  // namespace
