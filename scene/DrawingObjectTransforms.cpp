// SPDX-License-Identifier: MIT
#include "scene/DrawingObject.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{

// A cross product of two unit axes that is shorter than this does not give a reliable direction.
constexpr double shortestRotationAxis = 0.00001;

const DVector xAxis(1.0, 0.0, 0.0);
const DVector yAxis(0.0, 1.0, 0.0);
const DVector zAxis(0.0, 0.0, 1.0);

DVector Rotated(const CoordinateTransform& transform, DVector axis)
{
    transform.RotateDVectors(&axis, 1);
    return axis;
}

}  // namespace

DVector DrawingObject::GetTranslation() const
{
    return transform.GetTranslation();
}

void DrawingObject::SetTranslation(const DVector& translation)
{
    transform.SetTranslation(translation);
}

void DrawingObject::Translate(const DVector& translation)
{
    transform.Translate(translation);
}

int DrawingObject::CombineTransform(CoordinateTransform* outer)
{
    transform.Combine(outer);
    return 1;
}

int DrawingObject::ApplyTransformAndReset()
{
    if (!HasChildren())
    {
        return 0;
    }
    for (POSITION position = children.GetHeadPosition(); position != nullptr;)
    {
        children.GetNext(position)->CombineTransform(&transform);
    }
    transform.Reset();
    return 1;
}

CoordinateTransform DrawingObject::AccumulateTransformations(int includeOwn, int includeOwnExternal,
                                                             DrawingObject* extra) const
{
    CoordinateTransform accumulated;
    if (includeOwn)
    {
        accumulated.Combine(&transform);
    }
    else if (includeOwnExternal)
    {
        accumulated.CombineExternal(&transform);
    }
    for (const DrawingObject* ancestor = parent; ancestor != nullptr; ancestor = ancestor->parent)
    {
        accumulated.Combine(&ancestor->transform);
    }
    if (extra != nullptr && extra != this)
    {
        accumulated.Combine(&extra->transform);
    }
    accumulated.ExternalToRotation();
    accumulated.ExternalToTranslation();
    return accumulated;
}

CoordinateTransform DrawingObject::GetAlignmentTransformation() const
{
    DVector x;
    DVector y;
    DVector z;
    GetGlobalAxes(&x, &y, &z, nullptr);
    CoordinateTransform alignment;
    alignment.SetAlignmentRotation(x, y, z);
    return alignment;
}

CoordinateTransform DrawingObject::GetInverseAlignmentTransformation(DrawingObject* extra) const
{
    CoordinateTransform inverse = AccumulateTransformations(1, 0, extra);
    inverse.InvertRotations();
    return inverse;
}

// Turns the node until the given axis of the node, seen in the world, is parallel to the same axis
// of the target. When the two axes point the same way or in opposite directions, the node turns
// about \p standIn, which is in the coordinates of the world.
void DrawingObject::AlignAxis(const DVector& axis, const DVector& standIn,
                              const CoordinateTransform& target, DrawingObject* extra)
{
    const DVector own = Rotated(AccumulateTransformations(1, 0, extra), axis);
    const DVector wanted = Rotated(target, axis);
    DVector turnAxis = own * wanted;
    if (turnAxis.Length() < shortestRotationAxis)
    {
        turnAxis = standIn;
    }
    turnAxis.Normalize();
    const double cosine = std::clamp(own.Dot(wanted), -1.0, 1.0);
    const double angle = std::acos(cosine) * 180.0 / std::numbers::pi;
    AccumulateTransformations(0, 1, extra).UnrotateDVectors(&turnAxis, 1);
    transform.Rotate(angle, turnAxis);
}

int DrawingObject::AlignRotations(CoordinateTransform& target, DrawingObject* extra)
{
    AlignAxis(zAxis, yAxis, target, extra);
    AlignAxis(yAxis, xAxis, target, extra);
    return 1;
}

int DrawingObject::AlignRotations(DrawingObject& other, DrawingObject* extra)
{
    CoordinateTransform target = other.AccumulateTransformations(1, 0, nullptr);
    return AlignRotations(target, extra);
}

int DrawingObject::AlignGlobalFrontFace(DrawingObject* extra)
{
    AlignAxis(zAxis, yAxis, CoordinateTransform(), extra);
    return 1;
}

void DrawingObject::GetGlobalAxes(DVector* x, DVector* y, DVector* z, DrawingObject* extra) const
{
    const CoordinateTransform world = AccumulateTransformations(1, 0, extra);
    *x = Rotated(world, xAxis);
    *y = Rotated(world, yAxis);
    *z = Rotated(world, zAxis);
}

DVector DrawingObject::GetGlobalZAxis(DrawingObject* extra) const
{
    return Rotated(AccumulateTransformations(1, 0, extra), zAxis);
}
