// SPDX-License-Identifier: MIT
#pragma once

#include "material/ColorVector.h"
#include "platform/Bitmaps.h"
#include "scene/DrawingObject.h"
#include "scene/LightObject.h"
#include "scene/NamedViewList.h"

/// The root of the tree that a view shows. Besides its children, which it owns like every node, a
/// scene has the settings of the whole picture: the background (a colour, or the picture of the
/// scene's texture map), the light model, a fixed pool of lights, and saved cameras. It owns the
/// lights and the cameras.
///
/// The lights are not children. They are in a separate list, with the scene as their parent
/// pointer. If RotateLightsWithScene is set, the scene draws them inside its own transform;
/// otherwise the view draws them before the scene. A copy of a scene has its own lights with the
/// same settings, and no saved cameras.
class ORVANE_API SceneObject : public DrawingObject
{
    DECLARE_SERIAL(SceneObject)

public:
    // The bits of sceneFlags.
    static constexpr DWORD lightingLocalViewerBit = 0x1;
    static constexpr DWORD serializingSelectionBit = 0x2;
    static constexpr DWORD rotateLightsWithSceneBit = 0x4;

    SceneObject();
    SceneObject(const SceneObject& other);
    /// If \p withLights is 0, the copy has no lights.
    SceneObject(const SceneObject& other, int withLights);
    SceneObject& operator=(const SceneObject& other);
    ~SceneObject() override;

    /// Copies the colours, sceneFlags and the maximum number of lights.
    void CopyNoLights(const SceneObject& other);
    /// Calls CopyNoLights, then assigns the other scene's lights to this scene's lights in order,
    /// up to the end of the shorter list. This scene is the parent of its lights afterwards, and
    /// each light keeps its external undo stack.
    void CopyAll(const SceneObject& other);

    ColorVector GetBackgroundColor() const { return backgroundColor; }
    void SetBackgroundColor(const ColorVector& color) { backgroundColor = color; }
    ColorVector GetGlobalAmbientColor() const { return globalAmbientColor; }
    void SetGlobalAmbientColor(const ColorVector& color) { globalAmbientColor = color; }

    ORVANE_FLAG(sceneFlags, LightingLocalViewer, IsLightingLocalViewer, lightingLocalViewerBit);
    /// Serialize stores and loads no node record while this bit is set; see SelectionSerialize.
    ORVANE_FLAG(sceneFlags, SerializingSelection, IsSerializingSelection, serializingSelectionBit);
    ORVANE_FLAG(sceneFlags, RotateLightsWithScene, ShouldRotateLightsWithScene,
                rotateLightsWithSceneBit);

    // The lights.

    DrawingObjectList* GetLights() { return &lights; }
    const DrawingObjectList* GetLights() const { return &lights; }
    int GetLightCount() const { return lights.GetCount(); }
    /// Null for an index outside the pool, and for a null position.
    LightObject* GetLightByIndex(int index) const;
    LightObject* GetLightByPosition(POSITION position) const;
    int GetMaximumLightCount() const { return maximumLightCount; }
    /// The new maximum takes effect at the next CreateLights.
    void SetMaximumLightCount(int count) { maximumLightCount = count; }
    /// Replaces the pool by new directional lights, one every 45 degrees around the y axis and
    /// tilted down by 30 degrees. The second and the last light are in use. A negative maximum
    /// makes no lights.
    void CreateLights();
    /// Deletes all lights. Returns 0 when there were no lights.
    int DestroyLights();
    int CanAddLight() const;
    /// Takes the first light that is not in use, saves it for undo, sets InUse, calls
    /// LightObject::Reset, and returns the light. Returns null when all lights are in use.
    LightObject* AddLight();
    /// Gives a light back to the pool: saves it for undo, clears InUse and calls
    /// LightObject::Reset. Returns 0 when the light is not in the pool.
    int RemoveLight(LightObject* light);
    /// Sets OpenGL's light model and draws every light. A picking pass leaves out directional
    /// lights and gives every other light a name: the light at index i of the pool has the name
    /// GetChildCount() + 4 + i, because the smaller names belong to the children and to four sizing
    /// handles. Returns 0 when the drawing is stopped.
    int DrawLights(DrawingParameters* parameters);
    /// Draws only the flashlights of the lights in use, each at this distance along the light's z
    /// axis. With ShowSelectedOnly, leaves out lights that are not selected. In a picking pass with
    /// ShowLights, the name of each light is its index in the pool.
    int DrawLightsAtRadius(DrawingParameters* parameters, float radius);
    /// Replaces the pool by stored lights. Raises badClass, without changing the pool, for an
    /// object that is not a light and for a light whose number is below GL_LIGHT0.
    void DeserializeLights(CArchive& archive);

    // Saved cameras. These functions return 0 when no camera has the name or the index.

    NamedViewList* GetSavedViews() { return &savedViews; }
    const NamedViewList* GetSavedViews() const { return &savedViews; }
    /// Overwrites the saved camera of this name, or appends a new one. Always returns 1.
    int SaveCurrentView(const CString& name, const CoordinateTransform* viewTransform,
                        const ProjectionData* projection);
    /// Copies the saved camera to \p viewTransform and \p projection. The projection keeps its
    /// window size; see ProjectionData::CopyFromSaved.
    int RestoreSavedView(const CString& name, CoordinateTransform* viewTransform,
                         ProjectionData* projection) const;
    int RestoreSavedView(int index, CoordinateTransform* viewTransform,
                         ProjectionData* projection) const;
    int DeleteSavedView(const CString& name);
    int DeleteSavedView(int index);
    int IsSavedViewNameUsed(const CString& name) const;
    /// Deletes all saved cameras. Returns 0 when there were no saved cameras.
    int DestroySavedViews();
    /// Reads stored cameras and appends them.
    void DeserializeSavedViews(CArchive& archive);

    // Drawing. These functions return 0 when the drawing was stopped or failed.

    int Draw(DrawingParameters* parameters) override;
    /// Draws the lights if RotateLightsWithScene is set.
    int DrawObject(DrawingParameters* parameters) override;
    /// Fills the picture with the background colour or the background texture. Does nothing in a
    /// picking pass.
    int DrawBackground(DrawingParameters* parameters);
    /// Draws the background texture: from its file if the current device context has more than 8
    /// colour bits, otherwise dithered to the palette.
    int DrawBackgroundTexture(DrawingParameters* parameters);
    /// Draws the background texture from its file. Also returns 0 when the texture's mutex cannot
    /// be taken or its file cannot be opened.
    int DrawFileBackgroundTexture(DrawingParameters* parameters);
    /// Draws a bitmap, placed as the background texture's placement says. Returns 1 without drawing
    /// when ShowBackgroundTexture is not set, the texture is not Valid, no device context is
    /// current, the parameters have no projection, or the bitmap is missing or has an unknown
    /// format.
    int DrawBackgroundTexture(DrawingParameters* parameters, const BITMAPINFO* bitmapInfo,
                              const void* bits);

    void AttachExternalUndoStack(DrawingObjectStack* stack) override;
    int SaveToUndo() override;
    int RestoreFromUndo() override;

    void Serialize(CArchive& archive) override;
    /// Stores or loads only the scene's own record: no node record, and therefore no children.
    void SelectionSerialize(CArchive& archive);
    void DeserializeVersion1(CArchive& archive);
    void DeserializeVersion2(CArchive& archive);
    void DeserializeVersion3(CArchive& archive);

    DWORD sceneFlags = rotateLightsWithSceneBit;
    DrawingObjectList lights;  ///< owned
    NamedViewList savedViews;  ///< owned

protected:
    ColorVector backgroundColor{1.0f, 1.0f, 1.0f, 1.0f};
    ColorVector globalAmbientColor{0.2f, 0.2f, 0.2f, 1.0f};
    int maximumLightCount = 8;

private:
    /// Clears the colour buffer to solidBackgroundColor if the parameters have
    /// ForceSolidBackground, otherwise to this scene's colour.
    void ClearToBackgroundColor(const DrawingParameters& parameters);
    void ReadColorsAndFlags(CArchive& archive);
    void AddLights();
    int DeleteViewAt(POSITION position);
};
