// SPDX-License-Identifier: MIT
#include "geometry/Sphere.h"

#include "tests/support/ExpectVector.h"
#include "tests/support/RecordBytes.h"

static Sphere SphereAt(const Vector& center, float radius)
{
    Sphere sphere;
    sphere.SetCenter(center);
    sphere.SetRadius(radius);
    return sphere;
}

#define EXPECT_SPHERE(sphere, x, y, z, expectedDiameter)          \
    do                                                            \
    {                                                             \
        EXPECT_XYZ((sphere).GetCenter(), x, y, z);                \
        EXPECT_EQ((sphere).GetDiameter(), expectedDiameter);      \
        EXPECT_EQ((sphere).GetRadius(), (expectedDiameter)*0.5f); \
    } while (false)

TEST(Sphere, StartsUndefined)
{
    const Sphere sphere;
    EXPECT_EQ(sphere.IsDefined(), 0);
    EXPECT_SPHERE(sphere, 0.0f, 0.0f, 0.0f, 0.0f);
}

TEST(Sphere, EachSetterDefines)
{
    Sphere byCenter;
    byCenter.SetCenter(Vector(1, 2, 3));
    EXPECT_EQ(byCenter.IsDefined(), 1);
    EXPECT_SPHERE(byCenter, 1.0f, 2.0f, 3.0f, 0.0f);

    Sphere byDiameter;
    byDiameter.SetDiameter(3.0f);
    EXPECT_EQ(byDiameter.IsDefined(), 1);
    EXPECT_SPHERE(byDiameter, 0.0f, 0.0f, 0.0f, 3.0f);

    Sphere byRadius;
    byRadius.SetRadius(3.0f);
    EXPECT_EQ(byRadius.IsDefined(), 1);
    EXPECT_SPHERE(byRadius, 0.0f, 0.0f, 0.0f, 6.0f);

    Sphere byMark;
    byMark.SetDefined();
    EXPECT_EQ(byMark.IsDefined(), 1);
}

TEST(Sphere, ClearDefinedZeroesEverything)
{
    Sphere sphere = SphereAt(Vector(1, 2, 3), 4.0f);
    sphere.ClearDefined();
    EXPECT_EQ(sphere.IsDefined(), 0);
    EXPECT_SPHERE(sphere, 0.0f, 0.0f, 0.0f, 0.0f);
}

TEST(Sphere, CalculateSphereSpansTwoPoints)
{
    Sphere sphere;
    sphere.CalculateSphere(Vector(0, 0, 0), Vector(2, 3, 6));
    EXPECT_EQ(sphere.IsDefined(), 1);
    EXPECT_SPHERE(sphere, 1.0f, 1.5f, 3.0f, 7.0f);
}

TEST(Sphere, CalculateSphereOfPointsTooCloseIsUndefined)
{
    Sphere sphere = SphereAt(Vector(5, 5, 5), 5.0f);
    sphere.CalculateSphere(Vector(0, 0, 0), Vector(1e-5f, 0, 0));
    EXPECT_EQ(sphere.IsDefined(), 0);
    EXPECT_SPHERE(sphere, 0.0f, 0.0f, 0.0f, 0.0f);

    sphere.CalculateSphere(Vector(0, 0, 0), Vector(3e-5f, 0, 0));
    EXPECT_EQ(sphere.IsDefined(), 1);
}

TEST(Sphere, UnionOfSpheresApartEnclosesBoth)
{
    const Sphere a = SphereAt(Vector(0, 0, 0), 1.0f);
    const Sphere b = SphereAt(Vector(4, 0, 0), 1.0f);
    EXPECT_SPHERE(a + b, 2.0f, 0.0f, 0.0f, 6.0f);
    EXPECT_SPHERE(b + a, 2.0f, 0.0f, 0.0f, 6.0f);
    EXPECT_SPHERE(a, 0.0f, 0.0f, 0.0f, 2.0f);
    EXPECT_SPHERE(b, 4.0f, 0.0f, 0.0f, 2.0f);

    // From -1 to 7: the centre lies nearer to the larger.
    Sphere c = a;
    c += SphereAt(Vector(4, 0, 0), 3.0f);
    EXPECT_SPHERE(c, 3.0f, 0.0f, 0.0f, 8.0f);
}

TEST(Sphere, UnionWithASmallerSphereInsideChangesNothing)
{
    Sphere sphere = SphereAt(Vector(0, 0, 0), 5.0f);
    sphere += SphereAt(Vector(1, 0, 0), 1.0f);
    EXPECT_SPHERE(sphere, 0.0f, 0.0f, 0.0f, 10.0f);
}

TEST(Sphere, UnionWithALargerSphereAroundItIsTheLargerSphere)
{
    Sphere sphere = SphereAt(Vector(1, 0, 0), 1.0f);
    sphere += SphereAt(Vector(0, 0, 0), 5.0f);
    EXPECT_SPHERE(sphere, 0.0f, 0.0f, 0.0f, 10.0f);
}

TEST(Sphere, UnionAboutOneCentreTakesTheLargerDiameter)
{
    Sphere sphere = SphereAt(Vector(1, 2, 3), 1.0f);
    sphere += SphereAt(Vector(1, 2, 3), 4.0f);
    EXPECT_SPHERE(sphere, 1.0f, 2.0f, 3.0f, 8.0f);
    sphere += SphereAt(Vector(1, 2, 3), 2.0f);
    EXPECT_SPHERE(sphere, 1.0f, 2.0f, 3.0f, 8.0f);
    sphere += sphere;
    EXPECT_SPHERE(sphere, 1.0f, 2.0f, 3.0f, 8.0f);
}

TEST(Sphere, AnUndefinedSphereBecomesACopyOfTheOther)
{
    Sphere sphere;
    sphere += SphereAt(Vector(1, 2, 3), 4.0f);
    EXPECT_EQ(sphere.IsDefined(), 1);
    EXPECT_SPHERE(sphere, 1.0f, 2.0f, 3.0f, 8.0f);

    Sphere stillUndefined;
    stillUndefined += Sphere();
    EXPECT_EQ(stillUndefined.IsDefined(), 0);
}

TEST(Sphere, AnUndefinedSphereIsAddedAsAPointAtTheOrigin)
{
    // Its defined bit is not consulted: meant so. From 0 to 5 along x.
    Sphere sphere = SphereAt(Vector(4, 0, 0), 1.0f);
    sphere += Sphere();
    EXPECT_SPHERE(sphere, 2.5f, 0.0f, 0.0f, 5.0f);
}

TEST(Sphere, RecordIsVersionCenterDiameterFlagsAndRadius)
{
    Sphere sphere = SphereAt(Vector(1, 2, 3), 4.0f);
    const Bytes expected = RecordBytes().Dword(1).Floats({1, 2, 3}).Float(8).Dword(1).Float(4);
    EXPECT_EQ(Stored(sphere), expected);

    // The parts are taken as they stand, even where they disagree.
    Sphere loaded;
    LoadRecord(loaded, RecordBytes().Dword(1).Floats({4, 5, 6}).Float(7).Dword(1).Float(8));
    EXPECT_XYZ(loaded.GetCenter(), 4.0f, 5.0f, 6.0f);
    EXPECT_EQ(loaded.GetDiameter(), 7.0f);
    EXPECT_EQ(loaded.IsDefined(), 1);
    EXPECT_EQ(loaded.GetRadius(), 8.0f);
}

TEST(Sphere, RefusesRecordsOfOtherVersions)
{
    Sphere sphere;
    EXPECT_EQ(LoadCause(sphere, RecordBytes().Dword(2).Floats({1, 2, 3, 4, 5, 6})),
              CArchiveException::badSchema);
}

TEST(Sphere, IsCreatedByItsClassName)
{
    const std::unique_ptr<CObject> object(CRuntimeClass::FromName("Sphere")->CreateObject());
    EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(Sphere)));
}
