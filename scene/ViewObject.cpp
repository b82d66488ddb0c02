// SPDX-License-Identifier: MIT
#include "scene/ViewObject.h"

#include "geometry/Truncate.h"
#include "host/CArchive.h"
#include "platform/OpenGL.h"
#include "scene/DrawingParameters.h"
#include "scene/NamedViewList.h"
#include "scene/SceneObject.h"

#include <algorithm>
#include <cmath>

IMPLEMENT_SERIAL(ViewObject, DrawingObject, VERSIONABLE_SCHEMA | 5)

namespace
{

// The mode bits that a view adds to its own modes when the parameters have no mode bits.
constexpr DWORD defaultFlags =
    DrawingParameters::showObjectBit | DrawingParameters::showChildrenBit |
    DrawingParameters::showExtentsAndHandlesBit | DrawingParameters::applyProjectionBit |
    DrawingParameters::showBackgroundTextureBit;
static_assert(defaultFlags == 0x40B8);

}  // namespace

ViewObject::ViewObject()
{
    transform.Translate(DVector(0.0, 0.0, -5.0));
}

ViewObject& ViewObject::operator=(const ViewObject& other)
{
    if (this != &other)
    {
        DrawingObject::operator=(other);
        drawingMode = other.drawingMode;
        showTextures = other.showTextures;
        projection = other.projection;
        scene = other.scene;
        showLightsMode = other.showLightsMode;
        zoomDenominator = other.zoomDenominator;
        zoomNumerator = other.zoomNumerator;
    }
    return *this;
}

int ViewObject::AttachScene(SceneObject* newScene)
{
    scene = newScene;
    return 1;
}

int ViewObject::GetDrawingModeIndex() const
{
    if ((drawingMode & DrawingParameters::renderBit) != 0)
    {
        return 0;
    }
    return (drawingMode & DrawingParameters::outlineBit) != 0 ? 1 : 2;
}

void ViewObject::SetDrawingModeIndex(int index)
{
    if (index >= 0 && index < 3)
    {
        drawingMode = DrawingParameters::renderBit << index;
    }
}

NamedViewList* ViewObject::GetSavedViews() const
{
    return scene != nullptr ? scene->GetSavedViews() : nullptr;
}

int ViewObject::SaveCurrentView(const CString& name)
{
    return scene != nullptr ? scene->SaveCurrentView(name, &transform, &projection) : 0;
}

int ViewObject::RestoreSavedView(const CString& name)
{
    return scene != nullptr ? scene->RestoreSavedView(name, &transform, &projection) : 0;
}

int ViewObject::RestoreSavedView(int index)
{
    return scene != nullptr ? scene->RestoreSavedView(index, &transform, &projection) : 0;
}

int ViewObject::DeleteSavedView(const CString& name)
{
    return scene != nullptr ? scene->DeleteSavedView(name) : 0;
}

int ViewObject::DeleteSavedView(int index)
{
    return scene != nullptr ? scene->DeleteSavedView(index) : 0;
}

int ViewObject::IsSavedViewNameUsed(const CString& name) const
{
    return scene != nullptr ? scene->IsSavedViewNameUsed(name) : 0;
}

int ViewObject::CalculateChildBounds()
{
    if (scene == nullptr || !scene->CalculateBounds())
    {
        return 0;
    }
    if (scene->GetBoundsGlobalSphere().IsDefined())
    {
        bounds.AccumulateLocalBounds(scene->GetBoundsGlobalMinimum(),
                                     scene->GetBoundsGlobalMaximum(),
                                     scene->GetBoundsGlobalSphere());
    }
    return 1;
}

// Zooming ---------------------------------------------------------------------------------------

bool ViewObject::CalculateBoundsForZoom()
{
    return CalculateBounds() && GetBoundsGlobalSphere().IsDefined() && projection.GetAspect() > 0 &&
           GetBoundsGlobalMaximum().y > GetBoundsGlobalMinimum().y;
}

int ViewObject::ZoomExtents()
{
    const int moved = ZoomPerspectiveExtents();
    return projection.IsOrthographic() ? ZoomOrthographicExtents() : moved;
}

int ViewObject::ZoomPerspectiveExtents()
{
    if (!CalculateBoundsForZoom())
    {
        return 0;
    }
    const double slopeY = std::tan(projection.GetFieldOfViewAngle() * (1.570796327 / 180));
    const double slopeX = std::tan(std::atan(projection.GetAspect() * slopeY));
    if (!(slopeY > 0 && slopeX > 0))
    {
        return 0;
    }
    // The pyramid of view must contain every corner of the box. Each of its four sides is moved
    // outward until it touches the outermost corner on that side.
    const double front = GetBoundsGlobalMaximum().z;
    double left = 10000000;
    double right = -10000000;
    double bottom = 10000000;
    double top = -10000000;
    const Vector* const corners = bounds.GetGlobalBoundingBox();
    for (int i = 0; i < 8; ++i)
    {
        const double depth = front - corners[i].z;
        left = std::min(left, corners[i].x + depth * slopeX);
        right = std::max(right, corners[i].x - depth * slopeX);
        bottom = std::min(bottom, corners[i].y + depth * slopeY);
        top = std::max(top, corners[i].y - depth * slopeY);
    }
    const double distance = std::max((right - left) / 2 / slopeX, (top - bottom) / 2 / slopeY);
    Translate(DVector(-(left + right) / 2, -(bottom + top) / 2, -(front + distance)));
    return 1;
}

int ViewObject::ZoomOrthographicExtents()
{
    if (!CalculateBoundsForZoom())
    {
        return 0;
    }
    const DVector minimum = GetBoundsGlobalMinimum();
    const DVector maximum = GetBoundsGlobalMaximum();
    const double width = maximum.x - minimum.x;
    const double height = maximum.y - minimum.y;
    if (projection.GetAspect() >= width / height)
    {
        projection.SetOrthographicHeight(height);
    }
    else
    {
        projection.SetOrthographicWidth(width);
    }
    Translate(DVector(-(maximum.x + minimum.x) / 2, -(maximum.y + minimum.y) / 2, 0.0));
    return 1;
}

// Drawing ---------------------------------------------------------------------------------------

int ViewObject::Draw(DrawingParameters* parameters)
{
    if (parameters->GetFlags() == 0)
    {
        parameters->SetFlags(showLightsMode | showTextures | drawingMode | defaultFlags);
    }
    if (parameters->IsSelecting())
    {
        parameters->SetShowLights();
    }
    if (parameters->GetProjection() == nullptr)
    {
        parameters->SetProjection(&projection);
    }
    if (scene == nullptr)
    {
        return DrawObject(parameters);
    }
    if (parameters->ShouldApplyProjection())
    {
        ApplyProjection(*parameters);
    }

    const bool marksItself = parameters->ShouldShowSelectedOnly() && !IsSelected();
    if (marksItself)
    {
        SelectOnlyThisNode();
    }
    if (!scene->ShouldRotateLightsWithScene())
    {
        // At this point OpenGL's matrix does not contain the view's transform, so the lights keep
        // their place relative to the camera.
        scene->DrawLights(parameters);
    }
    const int result = parameters->ShouldClearAndReturn() ? DrawObject(parameters)
                                                          : DrawingObject::Draw(parameters);
    if (marksItself)
    {
        DeselectOnlyThisNode();
    }
    return result;
}

void ViewObject::ApplyProjection(DrawingParameters& parameters)
{
    const ProjectionData& lens = *parameters.GetProjection();
    const int width = WholePixels(lens.GetViewWidth());
    const int height = WholePixels(lens.GetViewHeight());

    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    if (parameters.IsSelecting())
    {
        GLint window[4] = {0, 0, width, height};
        const double size = parameters.IsAccurateSelection() ? 1.0 : 5.0;
        gluPickMatrix(selectionPoint.x, height - selectionPoint.y, size, size, window);
    }
    lens.ApplyVolume();
    if (!parameters.IsSelecting())
    {
        glGetIntegerv(GL_VIEWPORT, viewport);
        glGetDoublev(GL_PROJECTION_MATRIX, projectionMatrix);
    }
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

int ViewObject::DrawObject(DrawingParameters* parameters)
{
    if (ShouldTerminateDrawing(parameters))
    {
        return 0;
    }
    if (scene == nullptr)
    {
        return 1;
    }
    glDepthMask(GL_TRUE);
    glClear(GL_DEPTH_BUFFER_BIT);
    scene->DrawBackground(parameters);
    if (parameters->IsRender())
    {
        glShadeModel(GL_SMOOTH);
        glEnable(GL_DEPTH_TEST);
    }
    else
    {
        glShadeModel(GL_FLAT);
        glDisable(GL_DEPTH_TEST);
    }
    return 1;
}

int ViewObject::DrawChildren(DrawingParameters* parameters)
{
    return scene != nullptr ? scene->Draw(parameters) : 0;
}

// Undo ------------------------------------------------------------------------------------------

int ViewObject::SaveToUndo()
{
    return SaveCopy(new ViewObject(*this));
}

int ViewObject::RestoreFromUndo()
{
    return RestoreSavedCopy<ViewObject>(0,
                                        [this](const ViewObject& saved) { CopyFromUndo(saved); });
}

void ViewObject::CopyFromUndo(const ViewObject& saved)
{
    DrawingObject::operator=(saved);
    drawingMode = saved.drawingMode;
    showTextures = saved.showTextures;
    showLightsMode = saved.showLightsMode;
    projection.SetLensLength(saved.projection.GetLensLength());
}
