// SPDX-License-Identifier: MIT
#include "geometry/Sphere.h"

#include "host/RecordVersion.h"

IMPLEMENT_SERIAL(Sphere, CObject, VERSIONABLE_SCHEMA | 1)

void Sphere::SetCenter(const Vector& newCenter)
{
    center = newCenter;
    SetDefined();
}

void Sphere::SetDiameter(float newDiameter)
{
    diameter = newDiameter;
    radius = newDiameter * 0.5f;
    SetDefined();
}

void Sphere::SetRadius(float newRadius)
{
    radius = newRadius;
    diameter = newRadius * 2.0f;
    SetDefined();
}

void Sphere::ClearDefined()
{
    flags &= ~definedFlag;
    center = Vector();
    diameter = 0.0f;
    radius = 0.0f;
}

void Sphere::CalculateSphere(const Vector& a, const Vector& b)
{
    const Vector half = (a - b) * 0.5f;
    SetCenter(b + half);
    SetRadius(half.Length());
    if (!(radius > 1e-5))
    {
        ClearDefined();
    }
}

Sphere& Sphere::operator+=(const Sphere& other)
{
    if (IsDefined() == 0)
    {
        return *this = other;
    }
    Vector toward = GetCenter() - other.GetCenter();
    const float distance = toward.Length();
    if (distance == 0.0f)
    {
        SetDiameter(diameter > other.diameter ? diameter : other.diameter);
        return *this;
    }

    // The new diameter lies on the line through the two centres, from the far side of this sphere
    // to the far side of the other sphere.
    toward.Normalize();
    float newDiameter = distance + radius + other.radius;
    Vector ourEnd = GetCenter() + toward * radius;
    Vector otherEnd = ourEnd - toward * newDiameter;
    if (newDiameter < diameter)
    {
        newDiameter = diameter;
        otherEnd = ourEnd - toward * newDiameter;
    }
    if (newDiameter < other.diameter)
    {
        newDiameter = other.diameter;
        ourEnd = other.GetCenter() - toward * other.radius;
        otherEnd = ourEnd + toward * newDiameter;
    }
    SetCenter(ourEnd + (otherEnd - ourEnd) * 0.5f);
    SetDiameter(newDiameter);
    return *this;
}

void Sphere::Serialize(CArchive& archive)
{
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(Sphere));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(Sphere));
    center.Serialize(archive);
    archive << diameter;
    archive << flags;
    archive << radius;
}

void Sphere::DeserializeVersion1(CArchive& archive)
{
    center.Serialize(archive);
    archive >> diameter;
    archive >> flags;
    archive >> radius;
}
