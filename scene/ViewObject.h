// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/ProjectionData.h"
#include "host/CSize.h"
#include "scene/DrawingObject.h"
#include "scene/DrawingParameters.h"

class NamedViewList;
class SceneObject;

/// The camera: a node that has a lens. The node's transform is the viewing transform. The camera
/// shows one scene, which is borrowed and drawn as the camera's only child. A new camera stands
/// five units in front of the origin and looks along the negative z axis.
///
/// After a program has set the size of the picture for the first time, the program must call
/// SetViewSize. Until then the view draws only 1 by 1 pixel of the picture.
class ORVANE_API ViewObject : public DrawingObject
{
    DECLARE_SERIAL(ViewObject)

public:
    ViewObject();
    ViewObject(const ViewObject& other) = default;
    ViewObject& operator=(const ViewObject& other);

    /// Always returns 1.
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
    /// Without this declaration the function below would hide the node's SetScale.
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
    /// Sets the new size of a window in pixels and changes the angle of view, so that the window
    /// still shows the part of the scene that the reference picture shows.
    void Resize(int width, int height) { projection.ResizeAndMaintainView(width, height); }

    /// OpenGL's projection matrix (16 numbers, column by column) and viewport (x, y, width, height
    /// in pixels) in the last draw that was not a picking pass. All are 0 before the first draw.
    double* GetProjectionMatrix() { return projectionMatrix; }
    const double* GetProjectionMatrix() const { return projectionMatrix; }
    int* GetViewport() { return viewport; }
    const int* GetViewport() const { return viewport; }

    // The modes that Draw uses when the drawing parameters have no flags.

    /// One of DrawingParameters' bits Render, Outline and ExtentsBox.
    unsigned int GetDrawingMode() const { return drawingMode; }
    void SetDrawingMode(unsigned int mode) { drawingMode = mode; }
    void SetDrawingModeRender() { drawingMode = DrawingParameters::renderBit; }
    void SetDrawingModeOutline() { drawingMode = DrawingParameters::outlineBit; }
    void SetDrawingModeExtentsBox() { drawingMode = DrawingParameters::extentsBoxBit; }
    /// 0 Render, 1 Outline, 2 ExtentsBox.
    int GetDrawingModeIndex() const;
    /// Takes 0, 1 or 2 as above; any other index changes nothing.
    void SetDrawingModeIndex(int index);
    void SetShowLightsMode() { showLightsMode = DrawingParameters::showLightsBit; }
    void ClearShowLightsMode() { showLightsMode = 0; }
    /// ShouldShowLightsMode and ShouldShowTextures return 1 or 0.
    int ShouldShowLightsMode() const { return showLightsMode == DrawingParameters::showLightsBit; }
    void SetShowTextures() { showTextures = DrawingParameters::showTexturesBit; }
    void ClearShowTextures() { showTextures = 0; }
    int ShouldShowTextures() const { return showTextures == DrawingParameters::showTexturesBit; }

    /// Where the next picking pass picks, in pixels from the upper left corner of the window.
    void SetSelectionPoint(POINT point) { selectionPoint = point; }

    /// The library stores the zoom ratio for the application and does not use it.
    CSize GetZoomNumerator() const { return zoomNumerator; }
    void SetZoomNumerator(const CSize& numerator) { zoomNumerator = numerator; }
    CSize GetZoomDenominator() const { return zoomDenominator; }
    void SetZoomDenominator(const CSize& denominator) { zoomDenominator = denominator; }

    // The scene's saved cameras. Without a scene these functions return null or 0.

    NamedViewList* GetSavedViews() const;
    int SaveCurrentView(const CString& name);
    int RestoreSavedView(const CString& name);
    int RestoreSavedView(int index);
    int DeleteSavedView(const CString& name);
    int DeleteSavedView(int index);
    int IsSavedViewNameUsed(const CString& name) const;

    /// Moves the camera, without turning it, until the scene's box fills the picture. An
    /// orthographic lens also gets the extents of the box. Returns 0, and changes nothing, when the
    /// scene has no bounds, its box has no height, or the picture has no size.
    int ZoomExtents();
    int ZoomPerspectiveExtents();
    int ZoomOrthographicExtents();

    /// Sets OpenGL's projection, programs the lights and draws the scene. Parameters that have no
    /// flags get this view's modes. Parameters that have no projection get a pointer to this view's
    /// projection. Returns 0 when the drawing was stopped or failed.
    int Draw(DrawingParameters* parameters) override;
    int DrawChildren(DrawingParameters* parameters) override;
    /// Clears the depth buffer, draws the scene's background and sets OpenGL's shading.
    int DrawObject(DrawingParameters* parameters) override;

    int SaveToUndo() override;
    /// Calls CopyFromUndo with the copy saved last. The parent pointer does not change. Unlike
    /// other nodes, a view also restores viewStateBits.
    int RestoreFromUndo() override;
    /// Copies the node's part, the drawing modes and the lens length. The angle of view is
    /// recomputed from the lens length; the rest of the projection, with the sizes of the
    /// picture in pixels, is not copied.
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
    DWORD showTextures = 0;    ///< 0 or the ShowTextures bit of DrawingParameters
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
