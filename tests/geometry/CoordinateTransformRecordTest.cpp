// SPDX-License-Identifier: MIT
#include "geometry/CoordinateTransform.h"
#include "tests/geometry/TransformSamples.h"
#include "tests/support/ExpectVector.h"
#include "tests/support/RecordBytes.h"

TEST(CoordinateTransform, RecordHoldsMatricesScaleAndTranslation)
{
    CoordinateTransform outer = Moved(7, 8, 9);
    CoordinateTransform transform = Turned();
    transform.SetScale(DVector(2, 2, 2));
    transform.SetTranslation(DVector(1, 2, 3));
    transform.Combine(&outer);
    const Bytes expected = RecordBytes()
                               .Dword(1)
                               .Doubles({0, 2, 0, 0, -2, 0, 0, 0, 0, 0, 2, 0, 8, 10, 12, 1})
                               .Doubles({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 7, 8, 9, 1})
                               .Doubles({0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1})
                               .Doubles({2, 2, 2})
                               .Doubles({1, 2, 3});
    EXPECT_EQ(Stored(transform), expected);
}

TEST(CoordinateTransform, TheRecordOfANewTransformHoldsIdentities)
{
    RecordBytes expected;
    expected.Dword(1);
    for (int matrix = 0; matrix < 3; ++matrix)
    {
        expected.Doubles({1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
    }
    expected.Doubles({1, 1, 1}).Doubles({0, 0, 0});
    CoordinateTransform transform;
    EXPECT_EQ(Stored(transform), Bytes(expected));
}

TEST(CoordinateTransform, LoadingDoesNotRebuildTheComposite)
{
    RecordBytes record;
    record.Dword(1);
    for (int i = 0; i < 54; ++i)
    {
        record.Double(i);
    }
    CoordinateTransform transform;
    LoadRecord(transform, record);
    for (int i = 0; i < 16; ++i)
    {
        EXPECT_EQ(transform.GetCompositeMatrix()[i], i);
        EXPECT_EQ(transform.GetExternalMatrix()[i], 16 + i);
        EXPECT_EQ(transform.GetRotationMatrix()[i], 32 + i);
    }
    EXPECT_XYZ(transform.GetScale(), 48.0, 49.0, 50.0);
    EXPECT_XYZ(transform.GetTranslation(), 51.0, 52.0, 53.0);
}

TEST(CoordinateTransform, RefusesRecordsOfOtherVersions)
{
    CoordinateTransform transform;
    Bytes record = Stored(transform);
    record[0] = 2;
    EXPECT_EQ(LoadCause(transform, record), CArchiveException::badSchema);
}

TEST(CoordinateTransform, IsCreatedByItsClassName)
{
    const std::unique_ptr<CObject> object(
        CRuntimeClass::FromName("CoordinateTransform")->CreateObject());
    EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(CoordinateTransform)));
}
