// SPDX-License-Identifier: MIT
#include "geometry/ProjectionData.h"

#include "geometry/Truncate.h"
#include "host/RecordVersion.h"
#include "platform/OpenGL.h"

#include <cmath>
#include <numbers>

IMPLEMENT_SERIAL(ProjectionData, CObject, VERSIONABLE_SCHEMA | 4)

namespace
{

constexpr double halfFrame = 17.5;  // millimetres: half the width of 35 mm film

/// The tangent of half an angle given in degrees.
double HalfAngleTangent(double degrees)
{
    return std::tan(degrees * (1.570796327 / 180));
}

/// The angle in degrees whose half has the tangent \p opposite / \p adjacent.
double AngleFromSides(double opposite, double adjacent)
{
    return 2 * std::atan2(opposite, adjacent) * 180 / std::numbers::pi;
}

}  // namespace

ProjectionData::ProjectionData()
{
    CalculateLensLength();
}

void ProjectionData::SetOrthographic()
{
    projectionFlags |= orthographic;
    RecalculateVolumes();
}

void ProjectionData::ClearOrthographic()
{
    projectionFlags &= ~orthographic;
    RecalculateVolumes();
}

void ProjectionData::SetFieldOfViewAngle(double degrees)
{
    fieldOfViewAngle = degrees;
    CalculateLensLength();
}

void ProjectionData::SetLensLength(double millimetres)
{
    lensLength = millimetres;
    CalculateFieldOfViewAngle();
}

void ProjectionData::SetOrthographicHeight(double newHeight)
{
    orthographicHeight = newHeight;
    orthographicWidth = aspect * newHeight;
    RecalculateVolumes();
}

void ProjectionData::SetOrthographicWidth(double newWidth)
{
    orthographicWidth = newWidth;
    orthographicHeight = newWidth / aspect;
    RecalculateVolumes();
}

void ProjectionData::SetScale(double newScaleX, double newScaleY)
{
    scaleX = newScaleX;
    scaleY = newScaleY;
    width = unscaledWidth * newScaleX;
    height = unscaledHeight * newScaleY;
    RecalculateVolumes();
}

void ProjectionData::SetUnscaledSize(double newWidth, double newHeight)
{
    unscaledWidth = newWidth;
    unscaledHeight = newHeight;
    width = scaleX * newWidth;
    height = scaleY * newHeight;
    RecalculateVolumes();
}

void ProjectionData::SetScaledSize(double newWidth, double newHeight)
{
    width = newWidth;
    height = newHeight;
    if (scaleX != 0)
    {
        unscaledWidth = newWidth / scaleX;
    }
    if (scaleY != 0)
    {
        unscaledHeight = newHeight / scaleY;
    }
    RecalculateVolumes();
}

void ProjectionData::SetViewOffset(double x, double y)
{
    viewXOffset = x;
    viewYOffset = y;
    CalculateViewProjectionData();
}

void ProjectionData::SetViewSize(double newWidth, double newHeight)
{
    viewWidth = newWidth;
    viewHeight = newHeight;
    CalculateViewProjectionData();
}

void ProjectionData::SaveReferenceAspect()
{
    referenceAspect = aspect;
    referenceFieldOfViewAngle = fieldOfViewAngle;
    referenceHeight = height;
}

void ProjectionData::ResizeAndMaintainView(double newWidth, double newHeight)
{
    if (!(newWidth > 0 && newHeight > 0))
    {
        return;
    }
    if (width >= 0 && height != 0)
    {
        const double newAspect = newWidth / newHeight;
        double effectiveHeight = referenceHeight;
        if (newAspect <= referenceAspect)
        {
            effectiveHeight = (referenceAspect / newAspect) * referenceHeight;
        }
        const double distance = (referenceHeight / 2) / HalfAngleTangent(referenceFieldOfViewAngle);
        fieldOfViewAngle = AngleFromSides(effectiveHeight / 2, distance);
        width = newWidth;
        height = newHeight;
        CalculateLensLength();
    }
    else
    {
        height = newHeight;
        referenceHeight = newHeight;
        width = newWidth;
        CalculateProjectionData();
    }
}

int ProjectionData::CopyFromSaved(const ProjectionData& saved)
{
    fieldOfViewAngle = saved.fieldOfViewAngle;
    orthographicHeight = saved.orthographicHeight;
    orthographicWidth = saved.orthographicWidth;
    if (saved.IsOrthographic())
    {
        SetOrthographic();
    }
    else
    {
        ClearOrthographic();
    }
    CalculateLensLength();
    return 1;
}

void ProjectionData::CalculateFieldOfViewAngle()
{
    fieldOfViewAngle = AngleFromSides(halfFrame, lensLength);
    RecalculateVolumes();
}

void ProjectionData::CalculateLensLength()
{
    lensLength = halfFrame / HalfAngleTangent(fieldOfViewAngle);
    RecalculateVolumes();
}

void ProjectionData::CalculateProjectionData()
{
    if (!(width >= 0 && height >= 0))
    {
        return;
    }
    aspect = height == 0 ? 1.0 : width / height;
    diagonalDistance = std::sqrt(width * width + height * height);
    orthographicHeight = orthographicWidth / aspect;
    if (IsOrthographic())
    {
        heightNear = orthographicHeight;
        widthNear = orthographicWidth;
        leftNear = -orthographicWidth / 2;
        topNear = orthographicHeight / 2;
        return;
    }
    const double tangent = HalfAngleTangent(fieldOfViewAngle);
    lensLength = halfFrame / tangent;
    heightNear = 2 * tangent * zNear;
    widthNear = aspect * heightNear;
    leftNear = -widthNear / 2;
    topNear = heightNear / 2;
}

void ProjectionData::CalculateViewProjectionData()
{
    if (width == 0 || height == 0)
    {
        return;
    }
    const double offsetX = viewXOffset / width;
    const double offsetY = viewYOffset / height;
    const double shareX = viewWidth / width;
    const double shareY = viewHeight / height;
    viewWidthNear = shareX * widthNear;
    viewHeightNear = shareY * heightNear;
    viewLeft = leftNear + offsetX * widthNear;
    viewRight = viewLeft + viewWidthNear;
    viewTop = topNear - offsetY * heightNear;
    viewBottom = viewTop - viewHeightNear;
}

void ProjectionData::RecalculateVolumes()
{
    CalculateProjectionData();
    CalculateViewProjectionData();
}

void ProjectionData::ApplyVolume() const
{
    const auto setVolume = IsOrthographic() ? glOrtho : glFrustum;
    setVolume(viewLeft, viewRight, viewBottom, viewTop, zNear, zFar);
    glViewport(0, 0, WholePixels(viewWidth), WholePixels(viewHeight));
}

void ProjectionData::Serialize(CArchive& archive)
{
    CObject::Serialize(archive);
    if (archive.IsStoring())
    {
        WriteRecordVersion(archive, RUNTIME_CLASS(ProjectionData));
        archive << fieldOfViewAngle << referenceAspect << referenceFieldOfViewAngle
                << referenceHeight << projectionFlags << scaleX << scaleY << orthographicWidth
                << orthographicHeight;
        return;
    }
    ReadVersionedRecord(archive, *this, &ProjectionData::DeserializeVersion1,
                        &ProjectionData::DeserializeVersion2, &ProjectionData::DeserializeVersion3,
                        &ProjectionData::DeserializeVersion4);
    // The lens length is computed from the loaded angle, because undo restores a view's lens length
    // and derives the angle from it.
    CalculateLensLength();
}

void ProjectionData::DeserializeVersion1(CArchive& archive)
{
    archive >> fieldOfViewAngle;
    archive >> referenceAspect;
    archive >> referenceFieldOfViewAngle;
    archive >> referenceHeight;
    scaleX = scaleY = 1.0;
    orthographicWidth = orthographicHeight = 5.0;
    SetFitToWindow();
}

void ProjectionData::DeserializeVersion2(CArchive& archive)
{
    DeserializeVersion1(archive);
    archive >> projectionFlags;
    archive >> scaleX;
    scaleY = scaleX;
}

void ProjectionData::DeserializeVersion3(CArchive& archive)
{
    DeserializeVersion2(archive);
    archive >> scaleY;
}

void ProjectionData::DeserializeVersion4(CArchive& archive)
{
    DeserializeVersion3(archive);
    archive >> orthographicWidth;
    archive >> orthographicHeight;
}
