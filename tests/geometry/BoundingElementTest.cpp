// SPDX-License-Identifier: MIT
#include "geometry/BoundingElement.h"

#include "geometry/CoordinateTransform.h"
#include "tests/support/ExpectVector.h"
#include "tests/support/RecordBytes.h"

#include <cfloat>
#include <cmath>

static Sphere SphereAt(const Vector& center, float radius)
{
    Sphere sphere;
    sphere.SetCenter(center);
    sphere.SetRadius(radius);
    return sphere;
}

TEST(BoundingElement, StartsUndefinedAndZero)
{
    const BoundingElement bounds;
    EXPECT_EQ(bounds.flags, 0u);
    EXPECT_XYZ(bounds.GetLocalMinimum(), 0.0f, 0.0f, 0.0f);
    EXPECT_XYZ(bounds.GetGlobalMaximum(), 0.0f, 0.0f, 0.0f);
    EXPECT_EQ(bounds.GetLocalSphere().IsDefined(), 0);
    EXPECT_EQ(bounds.GetGlobalSphere().IsDefined(), 0);
}

TEST(BoundingElement, ResetMakesTheMinimumLargerThanTheMaximum)
{
    BoundingElement bounds;
    bounds.SetLocalBounds(Vector(0, 0, 0), Vector(1, 1, 1), CoordinateTransform());
    bounds.ResetLocalBounds();
    EXPECT_EQ(bounds.flags, 0u);
    EXPECT_XYZ(bounds.GetLocalMinimum(), FLT_MAX, FLT_MAX, FLT_MAX);
    EXPECT_XYZ(bounds.GetLocalMaximum(), -FLT_MAX, -FLT_MAX, -FLT_MAX);
    EXPECT_EQ(bounds.GetLocalSphere().IsDefined(), 0);
    EXPECT_EQ(bounds.GetGlobalSphere().IsDefined(), 0);
}

TEST(BoundingElement, AccumulatesBoxesAndSpheres)
{
    BoundingElement bounds;
    bounds.ResetLocalBounds();
    bounds.AccumulateLocalBounds(Vector(-1, -1, -1), Vector(1, 1, 1),
                                 SphereAt(Vector(0, 0, 0), 1.0f));
    EXPECT_EQ(bounds.flags, BoundingElement::localBoundsDefined);
    EXPECT_XYZ(bounds.GetLocalMinimum(), -1.0f, -1.0f, -1.0f);
    EXPECT_XYZ(bounds.GetLocalMaximum(), 1.0f, 1.0f, 1.0f);

    bounds.AccumulateLocalBounds(Vector(3, 0, -5), Vector(5, 0.5f, 0),
                                 SphereAt(Vector(4, 0, 0), 1.0f));
    EXPECT_XYZ(bounds.GetLocalMinimum(), -1.0f, -1.0f, -5.0f);
    EXPECT_XYZ(bounds.GetLocalMaximum(), 5.0f, 1.0f, 1.0f);
    EXPECT_XYZ(bounds.GetLocalCenter(), 2.0f, 0.0f, 0.0f);
    EXPECT_EQ(bounds.GetLocalDiameter(), 6.0f);
    EXPECT_EQ(bounds.GetLocalRadius(), 3.0f);
}

TEST(BoundingElement, AccumulatingAnUndefinedSphereIntoAnUndefinedSphereLeavesTheBox)
{
    BoundingElement bounds;
    bounds.ResetLocalBounds();
    bounds.flags = BoundingElement::localBoundsDefined;
    bounds.AccumulateLocalBounds(Vector(-1, -1, -1), Vector(1, 1, 1), Sphere());
    EXPECT_EQ(bounds.flags, 0u);
    EXPECT_XYZ(bounds.GetLocalMinimum(), FLT_MAX, FLT_MAX, FLT_MAX);
}

TEST(BoundingElement, OrdersTheCornersWithSixOppositeZero)
{
    BoundingElement bounds;
    bounds.SetLocalBounds(Vector(1, 2, 3), Vector(10, 20, 30), CoordinateTransform());
    const Vector* const box = bounds.GetLocalBoundingBox();
    EXPECT_XYZ(box[0], 1.0f, 2.0f, 3.0f);
    EXPECT_XYZ(box[1], 1.0f, 20.0f, 3.0f);
    EXPECT_XYZ(box[2], 1.0f, 20.0f, 30.0f);
    EXPECT_XYZ(box[3], 1.0f, 2.0f, 30.0f);
    EXPECT_XYZ(box[4], 10.0f, 2.0f, 3.0f);
    EXPECT_XYZ(box[5], 10.0f, 20.0f, 3.0f);
    EXPECT_XYZ(box[6], 10.0f, 20.0f, 30.0f);
    EXPECT_XYZ(box[7], 10.0f, 2.0f, 30.0f);
}

TEST(BoundingElement, GlobalBoundsFollowTheTransform)
{
    // A quarter turn about z: (x, y) goes to (-y, x). Then 10 to the right.
    const double turn[16] = {0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    CoordinateTransform transform;
    transform.SetRotationMatrix(turn);
    transform.SetTranslation(DVector(10, 0, 0));

    BoundingElement bounds;
    bounds.SetLocalBounds(Vector(0, 0, 0), Vector(2, 3, 6), transform);
    EXPECT_EQ(bounds.flags, BoundingElement::localBoundsDefined);
    EXPECT_XYZ(bounds.GetGlobalBoundingBox()[0], 10.0f, 0.0f, 0.0f);
    EXPECT_XYZ(bounds.GetGlobalBoundingBox()[6], 7.0f, 2.0f, 6.0f);
    EXPECT_XYZ(bounds.GetGlobalMinimum(), 7.0f, 0.0f, 0.0f);
    EXPECT_XYZ(bounds.GetGlobalMaximum(), 10.0f, 2.0f, 6.0f);
    EXPECT_XYZ(bounds.GetLocalMaximum(), 2.0f, 3.0f, 6.0f);
}

TEST(BoundingElement, TheGlobalSphereLiesOnTheBoxDiagonalWhateverTheLocalOneIs)
{
    BoundingElement bounds;
    bounds.ResetLocalBounds();
    bounds.AccumulateLocalBounds(Vector(0, 0, 0), Vector(2, 3, 6),
                                 SphereAt(Vector(50, 0, 0), 100.0f));
    CoordinateTransform transform;
    transform.SetTranslation(DVector(1, 1, 1));
    bounds.CalculateBounds(transform);
    EXPECT_EQ(bounds.GetGlobalSphere().IsDefined(), 1);
    EXPECT_XYZ(bounds.GetGlobalCenter(), 2.0f, 2.5f, 4.0f);
    EXPECT_EQ(bounds.GetGlobalDiameter(), 7.0f);
    EXPECT_EQ(bounds.GetGlobalRadius(), 3.5f);
    EXPECT_EQ(bounds.GetLocalDiameter(), 200.0f);
}

TEST(BoundingElement, SetLocalBoundsLeavesTheLocalSphere)
{
    BoundingElement bounds;
    bounds.SetLocalBounds(Vector(0, 0, 0), Vector(1, 1, 1), CoordinateTransform());
    EXPECT_EQ(bounds.GetLocalSphere().IsDefined(), 0);
    EXPECT_EQ(bounds.GetGlobalSphere().IsDefined(), 1);
}

TEST(BoundingElement, CalculatingUndefinedBoundsZeroesTheExtremesAndLeavesTheBoxes)
{
    BoundingElement bounds;
    bounds.SetLocalBounds(Vector(1, 1, 1), Vector(2, 2, 2), CoordinateTransform());
    bounds.ResetLocalBounds();
    bounds.CalculateBounds(CoordinateTransform());
    EXPECT_XYZ(bounds.GetLocalMinimum(), 0.0f, 0.0f, 0.0f);
    EXPECT_XYZ(bounds.GetLocalMaximum(), 0.0f, 0.0f, 0.0f);
    EXPECT_XYZ(bounds.GetGlobalMinimum(), 0.0f, 0.0f, 0.0f);
    EXPECT_XYZ(bounds.GetGlobalMaximum(), 0.0f, 0.0f, 0.0f);
    EXPECT_EQ(bounds.GetGlobalSphere().IsDefined(), 0);
    EXPECT_EQ(bounds.GetLocalSphere().IsDefined(), 0);
    EXPECT_XYZ(bounds.GetLocalBoundingBox()[6], 2.0f, 2.0f, 2.0f);
}

TEST(BoundingElement, GlobalExtremesStartAtTenMillion)
{
    BoundingElement bounds;
    bounds.SetLocalBounds(Vector(2e7f, -3e7f, 0), Vector(3e7f, -2e7f, 1), CoordinateTransform());
    EXPECT_XYZ(bounds.GetGlobalMinimum(), 1e7f, -3e7f, 0.0f);
    EXPECT_XYZ(bounds.GetGlobalMaximum(), 3e7f, -1e7f, 1.0f);
}

// The boxes are kept as two corners until they are looked at.
TEST(BoundingElement, CornersAreThoseOfTheLastCalculation)
{
    BoundingElement bounds;
    bounds.SetLocalBounds(Vector(1, 2, 3), Vector(4, 5, 6), CoordinateTransform());
    bounds.ResetLocalBounds();
    EXPECT_XYZ(bounds.GetLocalBoundingBox()[1], 1.0f, 5.0f, 3.0f);
    EXPECT_XYZ(bounds.GetGlobalBoundingBox()[7], 4.0f, 2.0f, 6.0f);
}

TEST(BoundingElement, ANewElementHasCornersOfZeros)
{
    const BoundingElement bounds;
    for (int corner = 0; corner < 8; ++corner)
    {
        EXPECT_XYZ(bounds.GetLocalBoundingBox()[corner], 0.0f, 0.0f, 0.0f);
        EXPECT_XYZ(bounds.GetGlobalBoundingBox()[corner], 0.0f, 0.0f, 0.0f);
    }
}

TEST(BoundingElement, PointersToBoxesFollowEveryCalculation)
{
    CoordinateTransform moved;
    moved.SetTranslation(DVector(10, 20, 30));
    BoundingElement bounds;
    const Vector* const local = bounds.GetLocalBoundingBox();
    const Vector* const global = bounds.GetGlobalBoundingBox();
    bounds.SetLocalBounds(Vector(1, 1, 1), Vector(2, 2, 2), CoordinateTransform());
    EXPECT_XYZ(local[6], 2.0f, 2.0f, 2.0f);
    EXPECT_XYZ(global[6], 2.0f, 2.0f, 2.0f);
    bounds.CalculateBounds(moved);
    EXPECT_XYZ(local[6], 2.0f, 2.0f, 2.0f);
    EXPECT_XYZ(global[6], 12.0f, 22.0f, 32.0f);
    bounds.SetLocalBounds(Vector(3, 3, 3), Vector(4, 4, 4), CoordinateTransform());
    EXPECT_XYZ(global[6], 4.0f, 4.0f, 4.0f);
    bounds = BoundingElement();
    EXPECT_XYZ(local[6], 0.0f, 0.0f, 0.0f);
}

TEST(BoundingElement, ABoxThatWasMovedCanComeBack)
{
    CoordinateTransform moved;
    moved.SetTranslation(DVector(10, 20, 30));
    BoundingElement bounds;
    bounds.SetLocalBounds(Vector(1, 1, 1), Vector(2, 2, 2), moved);
    bounds.CalculateBounds(CoordinateTransform());
    EXPECT_XYZ(bounds.GetGlobalBoundingBox()[0], 1.0f, 1.0f, 1.0f);
    EXPECT_XYZ(bounds.GetGlobalMaximum(), 2.0f, 2.0f, 2.0f);
}

TEST(BoundingElement, GlobalCornersHaveNoNegativeZeros)
{
    BoundingElement bounds;
    bounds.SetLocalBounds(Vector(-0.0f, -1, -1), Vector(1, -0.0f, 1), CoordinateTransform());
    EXPECT_FALSE(std::signbit(bounds.GetGlobalMinimum().x));
    EXPECT_FALSE(std::signbit(bounds.GetGlobalMaximum().y));
    EXPECT_FALSE(std::signbit(bounds.GetGlobalBoundingBox()[0].x));
    EXPECT_TRUE(std::signbit(bounds.GetLocalBoundingBox()[0].x));
    EXPECT_TRUE(std::signbit(bounds.GetLocalMinimum().x));
}

// Infinity times the zeros of the matrix is no number.
TEST(BoundingElement, AnInfiniteBoxHasGlobalCornersThatAreNoNumbers)
{
    BoundingElement bounds;
    bounds.SetLocalBounds(Vector(0, 0, 0), Vector(INFINITY, 1, 2), CoordinateTransform());
    EXPECT_XYZ(bounds.GetGlobalMinimum(), 0.0f, 0.0f, 0.0f);
    EXPECT_XYZ(bounds.GetGlobalMaximum(), INFINITY, 1.0f, 2.0f);
    EXPECT_EQ(bounds.GetGlobalSphere().IsDefined(), 0);
    EXPECT_XYZ(bounds.GetGlobalBoundingBox()[2], 0.0f, 1.0f, 2.0f);
    EXPECT_EQ(bounds.GetGlobalBoundingBox()[6].x, INFINITY);
    EXPECT_TRUE(std::isnan(bounds.GetGlobalBoundingBox()[6].y));
}

TEST(BoundingElement, CopiesCarryChangedCorners)
{
    BoundingElement bounds;
    bounds.SetLocalBounds(Vector(1, 2, 3), Vector(4, 5, 6), CoordinateTransform());
    bounds.GetLocalBoundingBox()[0].x = 7.0f;
    BoundingElement other;
    other.GetGlobalBoundingBox()[0].x = 8.0f;
    other = bounds;
    EXPECT_XYZ(other.GetLocalBoundingBox()[0], 7.0f, 2.0f, 3.0f);
    EXPECT_XYZ(other.GetGlobalBoundingBox()[0], 1.0f, 2.0f, 3.0f);
    EXPECT_EQ(Stored(other), Stored(bounds));
}

TEST(BoundingElement, CopiesCarryEverything)
{
    BoundingElement bounds;
    bounds.SetLocalBounds(Vector(1, 2, 3), Vector(4, 5, 6), CoordinateTransform());
    const BoundingElement copy(bounds);
    BoundingElement assigned;
    assigned = bounds;
    BoundingElement fromCopy(copy);
    EXPECT_EQ(Stored(fromCopy), Stored(bounds));
    EXPECT_EQ(Stored(assigned), Stored(bounds));
}

namespace
{
RecordBytes SphereRecord(float first)
{
    return RecordBytes()
        .Dword(1)
        .Floats({first, first + 1, first + 2})
        .Float(first + 3)
        .Dword(1)
        .Float(first + 4);
}

/// Every float is another number, so that two exchanged fields show.
Bytes NumberedRecord()
{
    RecordBytes record;
    record.Dword(1).Dword(BoundingElement::localBoundsDefined);
    const auto addFloats = [&record](float first, int count) {
        for (int i = 0; i < count; ++i)
        {
            record.Float(first + static_cast<float>(i));
        }
    };
    addFloats(100, 24);  // global box
    addFloats(200, 3);   // global maximum
    addFloats(210, 3);   // global minimum
    record.Append(SphereRecord(220));
    addFloats(300, 24);  // local box
    addFloats(400, 3);   // local maximum
    addFloats(410, 3);   // local minimum
    record.Append(SphereRecord(420));
    return record;
}
}  // namespace

TEST(BoundingElement, RecordHoldsEverythingInOrder)
{
    BoundingElement bounds;
    LoadRecord(bounds, NumberedRecord());
    EXPECT_EQ(bounds.flags, 1u);
    EXPECT_XYZ(bounds.GetGlobalBoundingBox()[0], 100.0f, 101.0f, 102.0f);
    EXPECT_XYZ(bounds.GetGlobalBoundingBox()[7], 121.0f, 122.0f, 123.0f);
    EXPECT_XYZ(bounds.GetGlobalMaximum(), 200.0f, 201.0f, 202.0f);
    EXPECT_XYZ(bounds.GetGlobalMinimum(), 210.0f, 211.0f, 212.0f);
    EXPECT_XYZ(bounds.GetGlobalCenter(), 220.0f, 221.0f, 222.0f);
    EXPECT_EQ(bounds.GetGlobalDiameter(), 223.0f);
    EXPECT_EQ(bounds.GetGlobalRadius(), 224.0f);
    EXPECT_XYZ(bounds.GetLocalBoundingBox()[0], 300.0f, 301.0f, 302.0f);
    EXPECT_XYZ(bounds.GetLocalMaximum(), 400.0f, 401.0f, 402.0f);
    EXPECT_XYZ(bounds.GetLocalMinimum(), 410.0f, 411.0f, 412.0f);
    EXPECT_XYZ(bounds.GetLocalCenter(), 420.0f, 421.0f, 422.0f);
    EXPECT_EQ(Stored(bounds), NumberedRecord());
}

TEST(BoundingElement, TheGlobalSphereFollowsTheBoxWhateverTheLocalSphereIs)
{
    const Vector minimum(-1, -2, -0.0f);
    const Vector maximum(4, 5, 6);
    Sphere onTheDiagonal;
    onTheDiagonal.CalculateSphere(minimum, maximum);
    for (const Sphere& sphere : {onTheDiagonal, SphereAt(Vector(1, 1, 1), 9)})
    {
        BoundingElement bounds;
        bounds.ResetLocalBounds();
        bounds.AccumulateLocalBounds(minimum, maximum, sphere);
        bounds.CalculateBounds(CoordinateTransform());
        EXPECT_EQ(bounds.GetLocalRadius(), sphere.GetRadius());
        EXPECT_EQ(bounds.GetGlobalRadius(), onTheDiagonal.GetRadius());
        EXPECT_TRUE(std::signbit(bounds.GetLocalMinimum().z));
        EXPECT_FALSE(std::signbit(bounds.GetGlobalMinimum().z));
    }
}

TEST(BoundingElement, BoxesAndGlobalBoundsStayUntilTheNextCalculation)
{
    BoundingElement bounds;
    Sphere sphere;
    sphere.CalculateSphere(Vector(1, 2, 3), Vector(4, 5, 6));
    bounds.ResetLocalBounds();
    bounds.AccumulateLocalBounds(Vector(1, 2, 3), Vector(4, 5, 6), sphere);
    bounds.CalculateBounds(CoordinateTransform());
    bounds.AccumulateLocalBounds(Vector(0, 0, 0), Vector(9, 9, 9), sphere);
    EXPECT_XYZ(bounds.GetLocalMaximum(), 9.0f, 9.0f, 9.0f);
    EXPECT_XYZ(bounds.GetGlobalMaximum(), 4.0f, 5.0f, 6.0f);
    EXPECT_XYZ(bounds.GetGlobalBoundingBox()[6], 4.0f, 5.0f, 6.0f);
    EXPECT_XYZ(bounds.GetLocalBoundingBox()[0], 1.0f, 2.0f, 3.0f);
}

TEST(BoundingElement, PointersToCornersSeeEveryCalculation)
{
    const Vector minimum(1, 2, 3);
    Sphere sphere;
    sphere.CalculateSphere(minimum, Vector(4, 5, 6));
    BoundingElement bounds;
    Vector* const box = bounds.GetGlobalBoundingBox();
    bounds.ResetLocalBounds();
    bounds.AccumulateLocalBounds(minimum, Vector(4, 5, 6), sphere);
    bounds.CalculateBounds(CoordinateTransform());
    EXPECT_XYZ(box[6], 4.0f, 5.0f, 6.0f);
    box[6].x = 7.0f;
    EXPECT_XYZ(bounds.GetGlobalBoundingBox()[6], 7.0f, 5.0f, 6.0f);
}

TEST(BoundingElement, FlagBitsOfAStoredSphereSurviveACalculation)
{
    Sphere stored;
    LoadRecord(stored,
               RecordBytes().Dword(1).Floats({2.5f, 3.5f, 4.5f}).Float(0).Dword(3).Float(0));
    Sphere sphere;
    sphere.CalculateSphere(Vector(1, 2, 3), Vector(4, 5, 6));
    stored.SetRadius(sphere.GetRadius());
    BoundingElement bounds;
    bounds.ResetLocalBounds();
    bounds.AccumulateLocalBounds(Vector(1, 2, 3), Vector(4, 5, 6), stored);
    bounds.CalculateBounds(CoordinateTransform());
    Sphere local = bounds.GetLocalSphere();
    EXPECT_EQ(Stored(local), Stored(stored));
    EXPECT_NE(Stored(local), Stored(sphere));
}

TEST(BoundingElement, RefusesRecordsOfOtherVersions)
{
    Bytes record = NumberedRecord();
    record[0] = 2;
    BoundingElement bounds;
    EXPECT_EQ(LoadCause(bounds, record), CArchiveException::badSchema);
}

TEST(BoundingElement, IsCreatedByItsClassName)
{
    const std::unique_ptr<CObject> object(
        CRuntimeClass::FromName("BoundingElement")->CreateObject());
    EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(BoundingElement)));
}
