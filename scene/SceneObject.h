// SPDX-License-Identifier: MIT
#pragma once

#include "material/ColorVector.h"
#include "platform/Bitmaps.h"
#include "scene/DrawingObject.h"
#include "scene/LightObject.h"
#include "scene/NamedViewList.h"

/// The root of what a view shows. Besides its children it has what is global to a picture: the
/// background (a colour, or the picture of the node's own texture map), the light model, a fixed
/// pool of lights, and saved cameras. It owns lights and cameras.
///
/// The lights are no children: they stand in a list of their own, with this scene as their parent,
/// and are drawn separately, inside the scene's transform or, when they do not turn with the scene,
/// by the view. A copy has a pool of its own with the same settings and no saved cameras.
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
    /// Without \p withLights the copy has no lights at all.
    SceneObject(const SceneObject& other, int withLights);
    SceneObject& operator=(const SceneObject& other);
    ~SceneObject() override;

    /// Colours, flags and the number of lights to make.
    void CopyNoLights(const SceneObject& other);
    /// The same, and the lights pairwise up to the end of the shorter pool. A copied light stays
    /// this scene's and keeps its external undo stack.
    void CopyAll(const SceneObject& other);

    ColorVector GetBackgroundColor() const { return backgroundColor; }
    void SetBackgroundColor(const ColorVector& color) { backgroundColor = color; }
    ColorVector GetGlobalAmbientColor() const { return globalAmbientColor; }
    void SetGlobalAmbientColor(const ColorVector& color) { globalAmbientColor = color; }

    ORVANE_FLAG(sceneFlags, LightingLocalViewer, IsLightingLocalViewer, lightingLocalViewerBit);
    /// Serialize leaves the node's record out; see SelectionSerialize.
    ORVANE_FLAG(sceneFlags, SerializingSelection, IsSerializingSelection, serializingSelectionBit);
    ORVANE_FLAG(sceneFlags, RotateLightsWithScene, ShouldRotateLightsWithScene,
                rotateLightsWithSceneBit);

    // The lights.

    DrawingObjectList* GetLights() { return &lights; }
    const DrawingObjectList* GetLights() const { return &lights; }
    int GetLightCount() const { return lights.GetCount(); }
    /// Null outside the pool, and at a null position.
    LightObject* GetLightByIndex(int index) const;
    LightObject* GetLightByPosition(POSITION position) const;
    int GetMaximumLightCount() const { return maximumLightCount; }
    /// For the next CreateLights.
    void SetMaximumLightCount(int count) { maximumLightCount = count; }
    /// Makes the pool anew: directional lights on a ring, every 45 degrees, tilted down by 30, of
    /// which the second and the last are in use. None for a negative number.
    void CreateLights();
    /// 0 when there were none.
    int DestroyLights();
    int CanAddLight() const;
    /// The first light not in use, now in use with default colours; null when there is none.
    LightObject* AddLight();
    /// Gives a light back. 0 when it is not in the pool.
    int RemoveLight(LightObject* light);
    /// Sets the light model and draws every light. In a picking pass directional lights are left
    /// out and the others are named, with names behind those of the children and their handles.
    int DrawLights(DrawingParameters* parameters);
    /// Draws only the glyphs of the lights in use, at that distance along each light's axis; in a
    /// picking pass that shows lights each is named by its index in the pool.
    int DrawLightsAtRadius(DrawingParameters* parameters, float radius);
    /// Replaces the pool by a stored one. Raises badClass for anything in it that is no light of a
    /// valid number; the pool is unchanged then.
    void DeserializeLights(CArchive& archive);

    // Saved cameras. 0 when there is none of the name or index.

    NamedViewList* GetSavedViews() { return &savedViews; }
    const NamedViewList* GetSavedViews() const { return &savedViews; }
    /// Replaces the saved camera of that name or appends one. Always 1.
    int SaveCurrentView(const CString& name, const CoordinateTransform* viewTransform,
                        const ProjectionData* projection);
    /// The projection keeps its window; see ProjectionData::CopyFromSaved.
    int RestoreSavedView(const CString& name, CoordinateTransform* viewTransform,
                         ProjectionData* projection) const;
    int RestoreSavedView(int index, CoordinateTransform* viewTransform,
                         ProjectionData* projection) const;
    int DeleteSavedView(const CString& name);
    int DeleteSavedView(int index);
    int IsSavedViewNameUsed(const CString& name) const;
    /// 0 when there were none.
    int DestroySavedViews();
    /// Appends stored cameras.
    void DeserializeSavedViews(CArchive& archive);

    // Drawing. 0 when it was stopped or something failed.

    int Draw(DrawingParameters* parameters) override;
    /// Draws the lights when they turn with the scene.
    int DrawObject(DrawingParameters* parameters) override;
    /// Fills the picture with the background colour or the texture. Nothing in a picking pass.
    int DrawBackground(DrawingParameters* parameters);
    /// Draws the texture as it suits the current device context: from its file, or dithered on a
    /// palette of 8 bits or fewer.
    int DrawBackgroundTexture(DrawingParameters* parameters);
    /// 0 when the texture cannot be owned or its file cannot be opened.
    int DrawFileBackgroundTexture(DrawingParameters* parameters);
    /// Draws a bitmap by the texture's placement. 1, drawing nothing, without
    /// ShowBackgroundTexture, a valid texture or a current device context.
    int DrawBackgroundTexture(DrawingParameters* parameters, const BITMAPINFO* bitmapInfo,
                              const void* bits);

    void AttachExternalUndoStack(DrawingObjectStack* stack) override;
    int SaveToUndo() override;
    int RestoreFromUndo() override;

    void Serialize(CArchive& archive) override;
    /// Stores or loads the scene's own record alone, without the node's and so without children.
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
    /// Clears the colour buffer to the background colour that the parameters ask for.
    void ClearToBackgroundColor(const DrawingParameters& parameters);
    void ReadColorsAndFlags(CArchive& archive);
    int DeleteViewAt(POSITION position);
};
