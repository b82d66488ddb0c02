// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/ProjectionData.h"
#include "host/CSize.h"
#include "scene/DrawingObject.h"
#include "scene/DrawingParameters.h"

class NamedViewList;
class SceneObject;

/// The camera: a node whose transform is the viewing transform, with a lens, that looks at one
/// scene. The scene is borrowed and drawn as the view's only child. A new camera stands five units
/// in front of the origin and looks down the negative z axis.
///
/// A host calls SetViewSize after it has sized the view for the first time; until then the
/// sub-window is one pixel.
class ORVANE_API ViewObject : public DrawingObject
{
    DECLARE_SERIAL(ViewObject)

public:
    ViewObject();
    ViewObject(const ViewObject& other) = default;
    ViewObject& operator=(const ViewObject& other);

    /// Always 1.
    int AttachScene(SceneObject* newScene);
    SceneObject* GetScene() const { return scene; }

    // The lens; see ProjectionData.

    ProjectionData GetProjection() const { return projection; }
    void SetProjection(const ProjectionData& newProjection) { projection = newProjection; }
    int IsProjectionOrthographic() const { return projection.IsOrthographic(); }
    void SetProjectionOrthographic() { projection.SetOrthographic(); }
    void ClearProjectionOrthographic() { projection.ClearOrthographic(); }
    double GetProjectionOrthographicHeight() const { return projection.GetOrthographicHeight(); }
    double GetProjectionOrthographicWidth() const { return projection.GetOrthographicWidth(); }
    void SetProjectionOrthographicHeight(double height)
    {
        projection.SetOrthographicHeight(height);
    }
    void SetProjectionOrthographicWidth(double width) { projection.SetOrthographicWidth(width); }
    void SetProjectionFieldOfViewAngle(double degrees) { projection.SetFieldOfViewAngle(degrees); }
    void SetProjectionLensLength(double millimetres) { projection.SetLensLength(millimetres); }
    double GetScaleX() const { return projection.GetScaleX(); }
    double GetScaleY() const { return projection.GetScaleY(); }
    /// The node's own scale stays reachable under the base's name.
    using DrawingObject::SetScale;
    void SetScale(double scaleX, double scaleY) { projection.SetScale(scaleX, scaleY); }
    void SetScaledSize(double width, double height) { projection.SetScaledSize(width, height); }
    void SetUnscaledSize(double width, double height) { projection.SetUnscaledSize(width, height); }
    void SetViewOffset(double x, double y) { projection.SetViewOffset(x, y); }
    void SetViewSize(double width, double height) { projection.SetViewSize(width, height); }
    int ShouldFitToWindow() const { return projection.ShouldFitToWindow(); }
    void SetFitToWindow() { projection.SetFitToWindow(); }
    void ClearFitToWindow() { projection.ClearFitToWindow(); }
    void SaveReferenceAspect() { projection.SaveReferenceAspect(); }

    using DrawingObject::Resize;
    /// Takes a window's new size, in pixels, and keeps what the reference picture shows.
    void Resize(int width, int height) { projection.ResizeAndMaintainView(width, height); }

    /// As read back after the last draw that was no picking pass; zeros before: 16 values,
    /// column-major, and x, y, width, height in pixels.
    double* GetProjectionMatrix() { return projectionMatrix; }
    const double* GetProjectionMatrix() const { return projectionMatrix; }
    int* GetViewport() { return viewport; }
    const int* GetViewport() const { return viewport; }

    // What a draw without flags of its own shows.

    /// The Render, Outline or ExtentsBox bit of DrawingParameters.
    unsigned int GetDrawingMode() const { return drawingMode; }
    void SetDrawingMode(unsigned int mode) { drawingMode = mode; }
    void SetDrawingModeRender() { drawingMode = DrawingParameters::renderBit; }
    void SetDrawingModeOutline() { drawingMode = DrawingParameters::outlineBit; }
    void SetDrawingModeExtentsBox() { drawingMode = DrawingParameters::extentsBoxBit; }
    /// 0 render, 1 outline, 2 extents box.
    int GetDrawingModeIndex() const;
    /// Ignores other indices.
    void SetDrawingModeIndex(int index);
    void SetShowLightsMode() { showLightsMode = DrawingParameters::showLightsBit; }
    void ClearShowLightsMode() { showLightsMode = 0; }
    /// 1 or 0, as ShouldShowTextures.
    int ShouldShowLightsMode() const { return showLightsMode == DrawingParameters::showLightsBit; }
    void SetShowTextures() { showTextures = DrawingParameters::showTexturesBit; }
    void ClearShowTextures() { showTextures = 0; }
    int ShouldShowTextures() const { return showTextures == DrawingParameters::showTexturesBit; }

    /// Window pixels, y downward, for the next picking pass.
    void SetSelectionPoint(POINT point) { selectionPoint = point; }

    /// Kept for the application.
    CSize GetZoomNumerator() const { return zoomNumerator; }
    void SetZoomNumerator(const CSize& numerator) { zoomNumerator = numerator; }
    CSize GetZoomDenominator() const { return zoomDenominator; }
    void SetZoomDenominator(const CSize& denominator) { zoomDenominator = denominator; }

    // The scene's saved views. Null and 0 without a scene.

    NamedViewList* GetSavedViews() const;
    int SaveCurrentView(const CString& name);
    int RestoreSavedView(const CString& name);
    int RestoreSavedView(int index);
    int DeleteSavedView(const CString& name);
    int DeleteSavedView(int index);
    int IsSavedViewNameUsed(const CString& name) const;

    /// Moves the camera, without turning it, until the scene's box fills the picture; an
    /// orthographic lens takes the box's extents, too. 1 when it moved; 0, changing nothing, when
    /// the scene has no bounds, its box no height, or the picture no aspect.
    int ZoomExtents();
    int ZoomPerspectiveExtents();
    int ZoomOrthographicExtents();

    /// Sets up projection and lights and draws the scene. Parameters without flags get this view's
    /// mode; without a projection they borrow this view's. 0 when it was stopped.
    int Draw(DrawingParameters* parameters) override;
    int DrawChildren(DrawingParameters* parameters) override;
    /// Clears the depth, draws the scene's background and sets the shading.
    int DrawObject(DrawingParameters* parameters) override;

    int SaveToUndo() override;
    /// Keeps the parent alone; see CopyFromUndo.
    int RestoreFromUndo() override;
    /// Takes back the node's part, the drawing modes and the lens length; the rest of the
    /// projection stays as it is.
    void CopyFromUndo(const ViewObject& saved);

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);
    void DeserializeVersion2(CArchive& archive);
    void DeserializeVersion3(CArchive& archive);
    void DeserializeVersion4(CArchive& archive);
    void DeserializeVersion5(CArchive& archive);

    POINT selectionPoint = {0, 0};
    double projectionMatrix[16] = {};
    SceneObject* scene = nullptr;
    DWORD showLightsMode = 0;  ///< 0 or the ShowLights bit of DrawingParameters
    DWORD showTextures = 0;    ///< 0 or its ShowTextures bit
    int viewport[4] = {};

protected:
    int CalculateChildBounds() override;

    DWORD drawingMode = DrawingParameters::renderBit;
    ProjectionData projection;
    CSize zoomDenominator{1, 1};
    CSize zoomNumerator{1, 1};

private:
    void ApplyProjection(DrawingParameters& parameters);
    bool CalculateBoundsForZoom();
    void ReadZoom(CArchive& archive);
};
