// SPDX-License-Identifier: MIT
#include "geometry/Line.h"

#include "geometry/DVector.h"

namespace
{
constexpr double tolerance = 1e-5;

enum
{
    inside = 2,
    atEnd1 = 4,
    atEnd2 = 8,
    otherInside = 16,
    otherAtEnd1 = 32,
    otherAtEnd2 = 64,
    pointOnLine = 128,
    parallel = 256
};

bool IsNear(float t, float end)
{
    return std::fabs(end - t) < tolerance;
}

/// Rounds *t to 0 or 1 if the difference is less than 1e-5. Returns atEnd1, atEnd2 or inside; 0
/// when *t is outside the segment.
int Locate(float* t)
{
    if (IsNear(*t, 0.0f))
    {
        *t = 0.0f;
        return atEnd1;
    }
    if (IsNear(*t, 1.0f))
    {
        *t = 1.0f;
        return atEnd2;
    }
    return *t >= 0.0f && *t <= 1.0f ? inside : 0;
}

/// The length in double, not rounded to float.
double ExactLength(const Vector& vector)
{
    return DVector(vector).Length();
}
}  // namespace

void Line::SetEnds(const Vector& newEnd1, const Vector& newEnd2)
{
    end1 = newEnd1;
    end2 = newEnd2;
    SetDirection();
}

void Line::SetDirection()
{
    direction = end2 - end1;
    direction.Normalize();
    SetNormal();
}

void Line::SetNormal()
{
    normal.SetVector(-direction.y, direction.x, 0.0f);
    normal.Normalize();
}

int Line::Intersection(const Line& other, Vector* point, float* t) const
{
    const float numerator = other.normal.Dot(end1 - other.end1);
    const float denominator = other.normal.Dot(direction);
    if (denominator == 0.0f)
    {
        *t = -1.0f;
        point->SetVector(0.0f, 0.0f, 0.0f);
        return parallel;
    }
    const float distance = -numerator / denominator;
    *point = end1 + direction * distance;
    *t = static_cast<float>(distance / ExactLength(end2 - end1));
    return 1;
}

int Line::DoLinesIntersect(const Line& other, Vector* point, float* t) const
{
    if (Intersection(other, point, t) == parallel)
    {
        return parallel;
    }
    const int here = Locate(t);
    if (here == 0)
    {
        return 0;
    }
    Vector unusedPoint;
    float u;
    other.Intersection(*this, &unusedPoint, &u);
    switch (Locate(&u))
    {
        case atEnd1:
            return here | otherAtEnd1;
        case atEnd2:
            return here | otherAtEnd2;
        case inside:
            return here | otherInside;
        default:
            return 0;
    }
}

int Line::IsPointOnLine(const Vector& p, float* t) const
{
    const Line toPoint(end1, p);
    if (IsNear(direction.Dot(toPoint.direction), 1.0f))
    {
        *t = static_cast<float>(toPoint.Length() / ExactLength(end2 - end1));
        const int where = Locate(t);
        if (where != 0)
        {
            return pointOnLine | where;
        }
    }
    *t = -1.0f;
    return 0;
}
