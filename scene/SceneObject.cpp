// SPDX-License-Identifier: MIT
#include "scene/SceneObject.h"

#include "host/CArchive.h"
#include "scene/DrawingParameters.h"

#include <memory>
#include <utility>

IMPLEMENT_SERIAL(SceneObject, DrawingObject, VERSIONABLE_SCHEMA | 3)

namespace
{

/// Calls visit(light, index) for each light of the pool until a call returns 0. Returns 0 if a call
/// returned 0, otherwise 1.
template <typename Visit>
int VisitLights(const DrawingObjectList& lights, Visit visit)
{
    int index = 0;
    for (POSITION position = lights.GetHeadPosition(); position != nullptr; ++index)
    {
        if (!visit(*static_cast<LightObject*>(lights.GetNext(position)), index))
        {
            return 0;
        }
    }
    return 1;
}

}  // namespace

SceneObject::SceneObject()
{
    CreateLights();
}

SceneObject::SceneObject(const SceneObject& other) : SceneObject(other, 1) {}

SceneObject::SceneObject(const SceneObject& other, int withLights) : DrawingObject(other)
{
    CopyNoLights(other);
    if (withLights)
    {
        CreateLights();
        try
        {
            CopyAll(other);
        }
        catch (...)
        {
            DestroyLights();
            DestroySavedViews();
            throw;
        }
    }
}

SceneObject& SceneObject::operator=(const SceneObject& other)
{
    if (this != &other)
    {
        DrawingObject::operator=(other);
        CopyAll(other);
    }
    return *this;
}

SceneObject::~SceneObject()
{
    DestroyLights();
    DestroySavedViews();
}

void SceneObject::CopyNoLights(const SceneObject& other)
{
    backgroundColor = other.backgroundColor;
    sceneFlags = other.sceneFlags;
    globalAmbientColor = other.globalAmbientColor;
    maximumLightCount = other.maximumLightCount;
}

void SceneObject::CopyAll(const SceneObject& other)
{
    CopyNoLights(other);
    POSITION position = lights.GetHeadPosition();
    POSITION otherPosition = other.lights.GetHeadPosition();
    while (position != nullptr && otherPosition != nullptr)
    {
        LightObject& light = *static_cast<LightObject*>(lights.GetNext(position));
        light.CopyFromOtherPool(
            *static_cast<const LightObject*>(other.lights.GetNext(otherPosition)));
        light.SetParent(this);
    }
}

// Lights ----------------------------------------------------------------------------------------

LightObject* SceneObject::GetLightByIndex(int index) const
{
    const POSITION position = lights.FindIndex(index);
    return position != nullptr ? GetLightByPosition(position) : nullptr;
}

LightObject* SceneObject::GetLightByPosition(POSITION position) const
{
    return position != nullptr ? static_cast<LightObject*>(lights.GetAt(position)) : nullptr;
}

void SceneObject::CreateLights()
{
    DestroyLights();
    try
    {
        AddLights();
    }
    catch (...)
    {
        DestroyLights();
        throw;
    }
}

void SceneObject::AddLights()
{
    for (int i = 0; i < maximumLightCount; ++i)
    {
        const double angle = 45.0 * i;
        auto light = std::make_unique<LightObject>();
        light->SetDirectional();
        light->SetLightNumber(GL_LIGHT0 + i);
        light->SetParent(this);
        if (angle == 45 || i == maximumLightCount - 1)
        {
            light->SetActive();
            light->SetInUse();
        }
        light->Rotate(-30, DVector(1.0, 0.0, 0.0));
        light->Rotate(angle, DVector(0.0, 1.0, 0.0));
        lights.AddTail(light.get());
        static_cast<void>(light.release());  // the list owns it
    }
}

int SceneObject::DestroyLights()
{
    if (lights.IsEmpty())
    {
        return 0;
    }
    while (!lights.IsEmpty())
    {
        delete lights.RemoveHead();
    }
    return 1;
}

int SceneObject::CanAddLight() const
{
    return !VisitLights(lights, [](const LightObject& light, int) { return light.IsInUse(); });
}

LightObject* SceneObject::AddLight()
{
    LightObject* free = nullptr;
    VisitLights(lights, [&free](LightObject& light, int) {
        free = light.IsInUse() ? nullptr : &light;
        return free == nullptr;
    });
    if (free != nullptr)
    {
        free->SaveToUndo();
        free->SetInUse();
        free->Reset();
    }
    return free;
}

int SceneObject::RemoveLight(LightObject* light)
{
    if (lights.Find(light) == nullptr)
    {
        return 0;
    }
    light->SaveToUndo();
    light->ClearInUse();
    light->Reset();
    return 1;
}

int SceneObject::DrawLights(DrawingParameters* parameters)
{
    if (ShouldTerminateDrawing(parameters))
    {
        return 0;
    }
    glEnable(GL_LIGHTING);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, &globalAmbientColor.red);
    glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, IsLightingLocalViewer() ? 1 : 0);

    // Smaller names belong to the children and to the four sizing handles.
    const GLuint firstName = static_cast<GLuint>(GetChildCount()) + 4;
    return VisitLights(lights, [=](LightObject& light, int index) {
        if (!parameters->IsSelecting())
        {
            return light.Draw(parameters);
        }
        if (light.IsDirectional())
        {
            return 1;
        }
        glPushName(firstName + static_cast<GLuint>(index));
        const int drawn = light.Draw(parameters);
        glPopName();
        return drawn;
    });
}

int SceneObject::DrawLightsAtRadius(DrawingParameters* parameters, float radius)
{
    const bool named = parameters->IsSelecting() && parameters->ShouldShowLights();
    return VisitLights(lights, [=](LightObject& light, int index) {
        if (!light.IsInUse() || (parameters->ShouldShowSelectedOnly() && !light.IsSelected()))
        {
            return 1;
        }
        if (named)
        {
            glPushName(static_cast<GLuint>(index));
        }
        glPushMatrix();
        glMultMatrixd(std::as_const(light).GetCompositeMatrix());
        const int drawn = light.DrawAtRadius(parameters, radius);
        glPopMatrix();
        if (named)
        {
            glPopName();
        }
        return drawn;
    });
}

// Saved cameras ---------------------------------------------------------------------------------

int SceneObject::SaveCurrentView(const CString& name, const CoordinateTransform* viewTransform,
                                 const ProjectionData* projection)
{
    if (const POSITION position = savedViews.FindName(name))
    {
        NamedView& view = *savedViews.GetAt(position);
        view.SetTransform(*viewTransform);
        view.SetProjection(*projection);
    }
    else
    {
        auto view = std::make_unique<NamedView>(name, *viewTransform, *projection);
        savedViews.AddTail(view.get());
        static_cast<void>(view.release());  // the list owns it
    }
    return 1;
}

namespace
{

int RestoreView(const NamedViewList& views, POSITION position, CoordinateTransform* viewTransform,
                ProjectionData* projection)
{
    if (position == nullptr)
    {
        return 0;
    }
    const NamedView& view = *views.GetAt(position);
    *viewTransform = view.GetTransform();
    projection->CopyFromSaved(view.GetProjection());
    return 1;
}

}  // namespace

int SceneObject::RestoreSavedView(const CString& name, CoordinateTransform* viewTransform,
                                  ProjectionData* projection) const
{
    return RestoreView(savedViews, savedViews.FindName(name), viewTransform, projection);
}

int SceneObject::RestoreSavedView(int index, CoordinateTransform* viewTransform,
                                  ProjectionData* projection) const
{
    return RestoreView(savedViews, savedViews.FindIndex(index), viewTransform, projection);
}

int SceneObject::DeleteSavedView(const CString& name)
{
    return DeleteViewAt(savedViews.FindName(name));
}

int SceneObject::DeleteSavedView(int index)
{
    return DeleteViewAt(savedViews.FindIndex(index));
}

int SceneObject::DeleteViewAt(POSITION position)
{
    if (position == nullptr)
    {
        return 0;
    }
    delete savedViews.GetAt(position);
    savedViews.RemoveAt(position);
    return 1;
}

int SceneObject::IsSavedViewNameUsed(const CString& name) const
{
    return savedViews.FindName(name) != nullptr;
}

int SceneObject::DestroySavedViews()
{
    if (savedViews.IsEmpty())
    {
        return 0;
    }
    while (!savedViews.IsEmpty())
    {
        delete savedViews.RemoveHead();
    }
    return 1;
}

// Drawing ---------------------------------------------------------------------------------------

int SceneObject::Draw(DrawingParameters* parameters)
{
    // When only selected nodes are drawn, an unselected scene would be skipped with its whole
    // subtree, so the scene selects itself while it draws.
    const bool marksItself = parameters->ShouldShowSelectedOnly() && !IsSelected();
    if (marksItself)
    {
        SelectOnlyThisNode();
    }
    const int result = DrawingObject::Draw(parameters);
    if (marksItself)
    {
        DeselectOnlyThisNode();
    }
    return result;
}

int SceneObject::DrawObject(DrawingParameters* parameters)
{
    if (ShouldTerminateDrawing(parameters))
    {
        return 0;
    }
    if (ShouldRotateLightsWithScene())
    {
        DrawLights(parameters);
    }
    // The result of DrawLights is ignored: a light also fails when OpenGL's matrix stack is full,
    // and that does not stop the drawing of the scene.
    return ShouldTerminateDrawing(parameters) ? 0 : 1;
}

// Undo ------------------------------------------------------------------------------------------

void SceneObject::AttachExternalUndoStack(DrawingObjectStack* stack)
{
    DrawingObject::AttachExternalUndoStack(stack);
    VisitLights(lights, [stack](LightObject& light, int) {
        light.AttachExternalUndoStack(stack);
        return 1;
    });
}

int SceneObject::SaveToUndo()
{
    return SaveCopy(new SceneObject(*this));
}

int SceneObject::RestoreFromUndo()
{
    return RestoreSavedCopy<SceneObject>();
}
