// SPDX-License-Identifier: MIT
#include "scene/DrawingObject.h"

#include <algorithm>
#include <cmath>

namespace
{

// Sizing handle i is at corner handleCorners[i] of the bounding box; see BoundingElement.
constexpr int handleCorners[8] = {3, 2, 6, 7, 0, 1, 5, 4};

// A handle's edge is 1 % of the longest edge of the box, but at least 0.05 units. Both numbers are
// rounded to float before they become doubles, because archives store the size with that rounding.
constexpr double handleSizeRatio = 0.01f;
constexpr double smallestHandleSize = 0.05f;

bool AreEqual(const DVector& a, const DVector& b)
{
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

DVector ProductByAxis(const DVector& a, const DVector& b)
{
    return DVector(a.x * b.x, a.y * b.y, a.z * b.z);
}

double AtLeast(double minimum, double difference)
{
    if (std::abs(difference) < minimum)
    {
        return difference < 0.0 ? -minimum : minimum;
    }
    return difference;
}

}  // namespace

int DrawingObject::CalculateBounds()
{
    bounds.ResetLocalBounds();
    if (!CalculateChildBounds())
    {
        return 0;
    }
    bounds.CalculateBounds(transform);
    return 1;
}

int DrawingObject::CalculateChildBounds()
{
    if (!HasChildren())
    {
        return 0;
    }
    for (POSITION position = children.GetHeadPosition(); position != nullptr;)
    {
        DrawingObject* const child = children.GetNext(position);
        if (child->IsDeleted())
        {
            continue;
        }
        if (!child->CalculateBounds())
        {
            return 0;
        }
        const Sphere sphere = child->bounds.GetGlobalSphere();
        if (sphere.IsDefined())
        {
            bounds.AccumulateLocalBounds(child->bounds.GetGlobalMinimum(),
                                         child->bounds.GetGlobalMaximum(), sphere);
        }
    }
    return 1;
}

void DrawingObject::SetLocalBounds(const Vector& minimum, const Vector& maximum)
{
    bounds.SetLocalBounds(minimum, maximum, transform);
}

void DrawingObject::SetScale(const DVector& newScale)
{
    Details& own = EnsureDetails();
    own.scale = newScale;
    own.scaledDimensions = ProductByAxis(newScale, own.unscaledDimensions);
}

void DrawingObject::SetScaledDimensions(const DVector& dimensions)
{
    if (!AreEqual(dimensions, CurrentDetails().scaledDimensions))
    {
        EnsureDetails().scaledDimensions = dimensions;
        DeriveScale();
    }
}

void DrawingObject::SetUnscaledDimensions(const DVector& dimensions)
{
    if (!AreEqual(dimensions, CurrentDetails().unscaledDimensions))
    {
        Details& own = EnsureDetails();
        own.unscaledDimensions = dimensions;
        own.scaledDimensions = ProductByAxis(own.scale, dimensions);
    }
}

void DrawingObject::DeriveScale()
{
    const auto derive = [](double& factor, double scaled, double unscaled) {
        if (unscaled != 0.0)
        {
            factor = scaled / unscaled;
        }
    };
    Details& own = EnsureDetails();
    derive(own.scale.x, own.scaledDimensions.x, own.unscaledDimensions.x);
    derive(own.scale.y, own.scaledDimensions.y, own.unscaledDimensions.y);
    derive(own.scale.z, own.scaledDimensions.z, own.unscaledDimensions.z);
}

int DrawingObject::CalculateSizingHandles()
{
    const Vector* const corners = bounds.GetLocalBoundingBox();
    for (int handle = 0; handle < 8; ++handle)
    {
        localSizingHandles[handle] = corners[handleCorners[handle]];
    }
    const Vector extents = bounds.GetLocalMaximum() - bounds.GetLocalMinimum();
    const double largest = std::max({extents.x, extents.y, extents.z});
    handleSize = std::max(handleSizeRatio * largest, smallestHandleSize);
    transform.TransformDVectors(localSizingHandles, globalSizingHandles, 8);
    return 1;
}

DrawingObject::HandleDrag DrawingObject::MeasureDrag(const DVector& point, int handle) const
{
    HandleDrag drag;
    const bool isHandle = handle >= 0 && handle < 4;
    if (isHandle)
    {
        constexpr int anchors[4] = {6, 7, 4, 5};
        drag.anchor = GetLocalSizingHandleCenter(anchors[handle]);
    }
    DVector& d = drag.difference;
    d = point - drag.anchor;
    d.SetDVector(AtLeast(minimumSize.x, d.x), AtLeast(minimumSize.y, d.y),
                 AtLeast(minimumSize.z, d.z));
    if (isHandle)
    {
        const double width = handle < 2 ? -d.x : d.x;
        const double height = handle == 0 || handle == 3 ? -d.y : d.y;
        drag.extents.SetDVector(width, height, std::max(d.z, 0.0));
    }
    return drag;
}

int DrawingObject::KeepAnchorInPlace(const HandleDrag& drag)
{
    DVector centers[2] = {(localSizingHandles[4] + localSizingHandles[2]) * 0.5,
                          drag.anchor + drag.difference * 0.5};
    transform.TransformDVectors(centers, 2);
    transform.Translate(centers[1] - centers[0]);
    CalculateBounds();
    return CalculateSizingHandles();
}

int DrawingObject::Resize(const DVector& point, int handle)
{
    const HandleDrag drag = MeasureDrag(point, handle);
    SetScaledDimensions(drag.extents);
    return KeepAnchorInPlace(drag);
}
