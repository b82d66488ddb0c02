// SPDX-License-Identifier: MIT
#include "geometry/ExtentObject.h"

#include "tests/support/ExpectVector.h"
#include "tests/support/RecordBytes.h"

static ExtentObject Extent(float width, float height, unsigned int units, CSize resolution)
{
    ExtentObject extent;
    extent.SetDefinedExtents(Vector2D(width, height));
    extent.SetUnits(units);
    extent.SetDeviceResolution(resolution);
    return extent;
}

TEST(ExtentObject, StartsAsThreeInchesSquareAt100PixelsPerInch)
{
    const ExtentObject extent;
    EXPECT_XY(extent.GetDefinedExtents(), 3.0f, 3.0f);
    EXPECT_EQ(extent.deviceResolution, CSize(100, 100));
    EXPECT_EQ(extent.GetPixelExtents(), CSize(300, 300));
    EXPECT_EQ(extent.GetUnits(), 0u);
}

TEST(ExtentObject, EachSetterRecomputesThePixels)
{
    ExtentObject extent;
    extent.SetDefinedExtents(Vector2D(1.5f, 2.0f));
    EXPECT_EQ(extent.GetPixelExtents(), CSize(150, 200));
    extent.SetDeviceResolution(CSize(200, 300));
    EXPECT_EQ(extent.GetPixelExtents(), CSize(300, 600));
    extent.SetUnits(2);
    EXPECT_EQ(extent.GetPixelExtents(), CSize(1, 2));
    EXPECT_XY(extent.GetDefinedExtents(), 1.5f, 2.0f);
    // 200 * 1.5 * 0.39370078 = 118.110234, 300 * 2 * 0.39370078 = 236.220468
    extent.SetUnits(1);
    EXPECT_EQ(extent.GetPixelExtents(), CSize(118, 236));
    EXPECT_EQ(extent.CalculatePixelExtents(), 1);
}

TEST(ExtentObject, PixelsTruncateTowardZero)
{
    EXPECT_EQ(Extent(1.99f, -1.99f, 2, CSize(1, 1)).GetPixelExtents(), CSize(1, -1));
    EXPECT_EQ(Extent(1.99f, -1.99f, 0, CSize(1, 1)).GetPixelExtents(), CSize(1, -1));
}

TEST(ExtentObject, PixelsOfHugeExtentsWrap)
{
    EXPECT_EQ(Extent(4294967296.0f, 1e30f, 2, CSize(1, 1)).GetPixelExtents(), CSize(0, -1));
}

TEST(ExtentObject, ConvertsInchesToCentimetersAndLosesAPixel)
{
    // 100 * (7.62 * 0.39370078) is 299.99999 in double; in float it would be 300.
    ExtentObject extent;
    EXPECT_EQ(extent.ConvertUnitsToCentimeters(), 1);
    EXPECT_XY(extent.GetDefinedExtents(), 7.62f, 7.62f);
    EXPECT_EQ(extent.GetPixelExtents(), CSize(299, 299));
    EXPECT_EQ(extent.GetUnits(), 1u);
}

TEST(ExtentObject, ConvertsInchesToPixels)
{
    ExtentObject extent = Extent(1.5f, 2.25f, 0, CSize(100, 200));
    EXPECT_EQ(extent.ConvertUnitsToPixels(), 1);
    EXPECT_XY(extent.GetDefinedExtents(), 150.0f, 450.0f);
    EXPECT_EQ(extent.GetPixelExtents(), CSize(150, 450));
    EXPECT_EQ(extent.GetUnits(), 2u);
}

TEST(ExtentObject, ConvertsCentimetersToInches)
{
    ExtentObject extent = Extent(1.0f, 10.0f, 1, CSize(100, 100));
    EXPECT_EQ(extent.ConvertUnitsToInches(), 1);
    EXPECT_XY(extent.GetDefinedExtents(), 0.39370078f, 3.9370078f);
    EXPECT_EQ(extent.GetPixelExtents(), CSize(39, 393));
    EXPECT_EQ(extent.GetUnits(), 0u);
}

TEST(ExtentObject, ConvertsCentimetersToPixels)
{
    ExtentObject extent = Extent(1.0f, 10.0f, 1, CSize(100, 100));
    EXPECT_EQ(extent.ConvertUnitsToPixels(), 1);
    EXPECT_XY(extent.GetDefinedExtents(), 39.370078f, 393.70078f);
    EXPECT_EQ(extent.GetPixelExtents(), CSize(39, 393));
    EXPECT_EQ(extent.GetUnits(), 2u);
}

TEST(ExtentObject, ConvertsPixelsToInches)
{
    ExtentObject extent = Extent(150.0f, 450.0f, 2, CSize(100, 200));
    EXPECT_EQ(extent.ConvertUnitsToInches(), 1);
    EXPECT_XY(extent.GetDefinedExtents(), 1.5f, 2.25f);
    EXPECT_EQ(extent.GetPixelExtents(), CSize(150, 450));
    EXPECT_EQ(extent.GetUnits(), 0u);
}

TEST(ExtentObject, ConvertsPixelsToCentimeters)
{
    ExtentObject extent = Extent(100.0f, 400.0f, 2, CSize(100, 200));
    EXPECT_EQ(extent.ConvertUnitsToCentimeters(), 1);
    EXPECT_XY(extent.GetDefinedExtents(), 2.54f, 5.08f);
    EXPECT_EQ(extent.GetUnits(), 1u);
}

TEST(ExtentObject, ConvertingToItsOwnUnitsLeavesEvenStalePixels)
{
    for (const DWORD units : {0, 1, 2})
    {
        ExtentObject extent;
        LoadRecord(
            extent,
            RecordBytes().Dword(1).Floats({1, 1}).Long(100).Long(100).Long(7).Long(8).Dword(units));
        const int converted = units == 0   ? extent.ConvertUnitsToInches()
                              : units == 1 ? extent.ConvertUnitsToCentimeters()
                                           : extent.ConvertUnitsToPixels();
        EXPECT_EQ(converted, 1);
        EXPECT_XY(extent.GetDefinedExtents(), 1.0f, 1.0f);
        EXPECT_EQ(extent.GetPixelExtents(), CSize(7, 8));
        EXPECT_EQ(extent.GetUnits(), units);
    }
}

TEST(ExtentObject, ToPixelsWithAZeroResolutionIsRefusedEvenFromPixels)
{
    for (const unsigned int units : {0u, 1u, 2u})
    {
        ExtentObject extent = Extent(2.0f, 3.0f, units, CSize(100, 0));
        const CSize pixels = extent.GetPixelExtents();
        EXPECT_EQ(extent.ConvertUnitsToPixels(), 0);
        EXPECT_XY(extent.GetDefinedExtents(), 2.0f, 3.0f);
        EXPECT_EQ(extent.GetPixelExtents(), pixels);
        EXPECT_EQ(extent.GetUnits(), units);
    }
    EXPECT_EQ(Extent(2.0f, 3.0f, 0, CSize(0, 100)).ConvertUnitsToPixels(), 0);
}

TEST(ExtentObject, FromPixelsWithAZeroResolutionIsRefused)
{
    for (const CSize resolution : {CSize(0, 100), CSize(100, 0)})
    {
        ExtentObject extent = Extent(2.0f, 3.0f, 2, resolution);
        EXPECT_EQ(extent.ConvertUnitsToInches(), 0);
        EXPECT_EQ(extent.ConvertUnitsToCentimeters(), 0);
        EXPECT_XY(extent.GetDefinedExtents(), 2.0f, 3.0f);
        EXPECT_EQ(extent.GetUnits(), 2u);
        EXPECT_XY(extent.GetExtentsInInches(), 0.0f, 0.0f);
        EXPECT_XY(extent.GetExtentsInCentimeters(), 0.0f, 0.0f);
    }
}

TEST(ExtentObject, GettingExtentsInOtherUnitsChangesNothing)
{
    const ExtentObject inInches = Extent(1.0f, 2.0f, 0, CSize(100, 100));
    EXPECT_XY(inInches.GetExtentsInInches(), 1.0f, 2.0f);
    EXPECT_XY(inInches.GetExtentsInCentimeters(), 2.54f, 5.08f);
    EXPECT_EQ(inInches.GetUnits(), 0u);

    const ExtentObject inCentimeters = Extent(1.0f, 10.0f, 1, CSize(0, 0));
    EXPECT_XY(inCentimeters.GetExtentsInInches(), 0.39370078f, 3.9370078f);
    EXPECT_XY(inCentimeters.GetExtentsInCentimeters(), 1.0f, 10.0f);

    const ExtentObject inPixels = Extent(100.0f, 400.0f, 2, CSize(100, 200));
    EXPECT_XY(inPixels.GetExtentsInInches(), 1.0f, 2.0f);
    EXPECT_XY(inPixels.GetExtentsInCentimeters(), 2.54f, 5.08f);
}

TEST(ExtentObject, UnknownUnitsKeepThePixelsAndAreNotConverted)
{
    ExtentObject extent;
    extent.SetUnits(3);
    EXPECT_EQ(extent.GetPixelExtents(), CSize(300, 300));
    EXPECT_EQ(extent.ConvertUnitsToInches(), 0);
    EXPECT_EQ(extent.ConvertUnitsToCentimeters(), 0);
    EXPECT_EQ(extent.ConvertUnitsToPixels(), 0);
    EXPECT_XY(extent.GetExtentsInInches(), 0.0f, 0.0f);
}

TEST(ExtentObject, RecordHoldsEverythingInOrder)
{
    ExtentObject extent = Extent(1.5f, 2.0f, 0, CSize(100, 200));
    const Bytes expected = RecordBytes()
                               .Dword(1)
                               .Floats({1.5f, 2.0f})
                               .Long(100)
                               .Long(200)
                               .Long(150)
                               .Long(400)
                               .Dword(0);
    EXPECT_EQ(Stored(extent), expected);
}

TEST(ExtentObject, LoadingDoesNotRecomputeThePixels)
{
    ExtentObject extent;
    LoadRecord(
        extent,
        RecordBytes().Dword(1).Floats({1.5f, 2.0f}).Long(10).Long(20).Long(77).Long(88).Dword(1));
    EXPECT_XY(extent.GetDefinedExtents(), 1.5f, 2.0f);
    EXPECT_EQ(extent.deviceResolution, CSize(10, 20));
    EXPECT_EQ(extent.GetPixelExtents(), CSize(77, 88));
    EXPECT_EQ(extent.GetUnits(), 1u);
}

TEST(ExtentObject, RefusesRecordsOfOtherVersions)
{
    ExtentObject extent;
    EXPECT_EQ(LoadCause(extent, RecordBytes().Dword(2).Floats({1, 2, 3, 4, 5, 6, 7})),
              CArchiveException::badSchema);
}

TEST(ExtentObject, IsCreatedByItsClassName)
{
    const std::unique_ptr<CObject> object(CRuntimeClass::FromName("ExtentObject")->CreateObject());
    EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(ExtentObject)));
}
