// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"

/// The lens of a view, perspective or orthographic, with the size of the picture and the
/// sub-window, which is the part of the picture that is drawn. A large picture is drawn in bands:
/// each band is a sub-window with its own volume of view.
///
/// The field of view is vertical, in degrees. The lens length is the focal length of a lens for 35
/// mm film with the same field of view: tan(angle / 2) = 17.5 mm / focal length. Sizes and offsets
/// are in pixels; the vertical offset counts downward from the top. Fields whose names end in Near,
/// and viewLeft, viewRight, viewTop and viewBottom, are in world units at the near plane. A
/// negative width or height means that the picture has no size yet.
///
/// Setters recompute the fields that depend on the new value: CalculateProjectionData recomputes
/// those of the whole picture, CalculateViewProjectionData those of the sub-window.
/// CalculateProjectionData changes nothing while the picture has no size.
/// CalculateViewProjectionData changes nothing while width or height is 0.
class ORVANE_API ProjectionData : public CObject
{
    DECLARE_SERIAL(ProjectionData)

public:
    /// Bits of projectionFlags.
    static constexpr DWORD fitToWindow = 0x1;
    static constexpr DWORD orthographic = 0x2;

    ProjectionData();
    ProjectionData(const ProjectionData&) = default;
    ProjectionData& operator=(const ProjectionData&) = default;

    double GetAspect() const { return aspect; }
    double GetDiagonalDistance() const { return diagonalDistance; }
    double GetFieldOfViewAngle() const { return fieldOfViewAngle; }
    double GetHeight() const { return height; }
    double GetHeightNear() const { return heightNear; }
    double GetLeftNear() const { return leftNear; }
    double GetLensLength() const { return lensLength; }
    double GetOrthographicHeight() const { return orthographicHeight; }
    double GetOrthographicWidth() const { return orthographicWidth; }
    double GetReferenceAspect() const { return referenceAspect; }
    double GetScaleX() const { return scaleX; }
    double GetScaleY() const { return scaleY; }
    double GetTopNear() const { return topNear; }
    double GetUnscaledHeight() const { return unscaledHeight; }
    double GetUnscaledWidth() const { return unscaledWidth; }
    double GetViewBottom() const { return viewBottom; }
    double GetViewLeft() const { return viewLeft; }
    double GetViewHeight() const { return viewHeight; }
    double GetViewRight() const { return viewRight; }
    double GetViewTop() const { return viewTop; }
    double GetViewWidth() const { return viewWidth; }
    double GetViewXOffset() const { return viewXOffset; }
    double GetViewYOffset() const { return viewYOffset; }
    double GetWidth() const { return width; }
    double GetWidthNear() const { return widthNear; }
    double GetZFar() const { return zFar; }
    double GetZNear() const { return zNear; }

    int IsOrthographic() const { return static_cast<int>(projectionFlags & orthographic); }
    void SetOrthographic();
    void ClearOrthographic();
    int ShouldFitToWindow() const { return static_cast<int>(projectionFlags & fitToWindow); }
    void SetFitToWindow() { projectionFlags |= fitToWindow; }
    void ClearFitToWindow() { projectionFlags &= ~fitToWindow; }

    void SetFieldOfViewAngle(double degrees);
    void SetLensLength(double millimetres);

    // These functions set one extent of the orthographic volume, in world units, and compute the
    // other extent from the aspect.
    void SetOrthographicHeight(double newHeight);
    void SetOrthographicWidth(double newWidth);

    /// The scaled size (width and height) becomes the unscaled size times these factors.
    void SetScale(double newScaleX, double newScaleY);
    void SetUnscaledSize(double newWidth, double newHeight);
    /// Also sets the unscaled size on each axis whose factor is not 0.
    void SetScaledSize(double newWidth, double newHeight);

    // These functions set the sub-window and recompute only its volume.
    void SetViewOffset(double x, double y);
    void SetViewSize(double newWidth, double newHeight);

    void SetReferenceAspect(double newAspect) { referenceAspect = newAspect; }
    /// Stores aspect, field of view and height as the reference for ResizeAndMaintainView.
    void SaveReferenceAspect();

    /// Sets the new size of a window, so that the window shows the same part of the scene as the
    /// reference. A window that is narrower than the reference gets a wider vertical angle, so that
    /// it shows the same width; a wider window keeps the vertical angle. While the picture has no
    /// size or the height 0, the call only sets the size and the reference height and recomputes
    /// the volume of the whole picture, but not of the sub-window. Sizes that are not positive are
    /// ignored.
    void ResizeAndMaintainView(double newWidth, double newHeight);

    /// Copies the lens of a saved view: the angle, the orthographic extents, and whether the lens
    /// is orthographic. The size of the picture does not change. Always returns 1.
    int CopyFromSaved(const ProjectionData& saved);

    void CalculateFieldOfViewAngle();  ///< from the lens length
    void CalculateLensLength();        ///< from the field of view
    void CalculateProjectionData();
    void CalculateViewProjectionData();

    /// Multiplies OpenGL's current matrix by the projection of the sub-window and sets OpenGL's
    /// viewport to the size of the sub-window.
    void ApplyVolume() const;

    /// Stores the angle, the orthographic extents, the flags, the scale and the reference, but no
    /// size and no sub-window. Loading recomputes the lens length.
    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);
    void DeserializeVersion2(CArchive& archive);
    void DeserializeVersion3(CArchive& archive);
    void DeserializeVersion4(CArchive& archive);

    DWORD projectionFlags = fitToWindow;
    double referenceFieldOfViewAngle = 40.0;  ///< saved by SaveReferenceAspect
    double referenceHeight = -1.0;            ///< in pixels, saved by SaveReferenceAspect
    double viewHeightNear = 0;                ///< height of the sub-window's volume
    double viewWidthNear = 0;
    double aspect = 1.0;  ///< width / height
    double diagonalDistance = 0;
    double fieldOfViewAngle = 40.0;
    double height = -1.0;
    double heightNear = 0;
    double leftNear = 0;
    double lensLength = 0;
    double orthographicHeight = 5.0;
    double orthographicWidth = 5.0;
    double referenceAspect = 1.0;
    double scaleX = 1.0;
    double scaleY = 1.0;
    double topNear = 0;
    double unscaledWidth = 0;
    double unscaledHeight = 0;
    double viewBottom = 0;
    double viewLeft = 0;
    double viewRight = 0;
    double viewTop = 0;
    double viewHeight = 1.0;
    double viewWidth = 1.0;
    double viewXOffset = 0;
    double viewYOffset = 0;
    double width = -1.0;
    double widthNear = 1.0;
    double zFar = 10000.0;
    double zNear = 0.1;

private:
    void RecalculateVolumes();
};
