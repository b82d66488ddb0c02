// SPDX-License-Identifier: MIT
#include "host/OwnedObjects.h"
#include "host/RecordVersion.h"
#include "scene/SceneObject.h"

void SceneObject::Serialize(CArchive& archive)
{
    if (!IsSerializingSelection())
    {
        DrawingObject::Serialize(archive);
    }
    if (archive.IsStoring())
    {
        WriteRecordVersion(archive, RUNTIME_CLASS(SceneObject));
        backgroundColor.Serialize(archive);
        archive << sceneFlags;
        globalAmbientColor.Serialize(archive);
        lights.Serialize(archive);
        savedViews.Serialize(archive);
        return;
    }
    DestroySavedViews();
    ReadVersionedRecord(archive, *this, &SceneObject::DeserializeVersion1,
                        &SceneObject::DeserializeVersion2, &SceneObject::DeserializeVersion3);
}

void SceneObject::SelectionSerialize(CArchive& archive)
{
    struct ClearAtEnd
    {
        SceneObject& scene;
        ~ClearAtEnd() { scene.ClearSerializingSelection(); }
    };
    const ClearAtEnd clearAtEnd{*this};
    SetSerializingSelection();
    Serialize(archive);
}

void SceneObject::DeserializeVersion1(CArchive& archive)
{
    ReadColorsAndFlags(archive);
    DWORD ignored;
    archive >> ignored;
    DeserializeLights(archive);
}

void SceneObject::DeserializeVersion2(CArchive& archive)
{
    ReadColorsAndFlags(archive);
    DeserializeLights(archive);
}

void SceneObject::DeserializeVersion3(CArchive& archive)
{
    DeserializeVersion2(archive);
    DeserializeSavedViews(archive);
}

void SceneObject::ReadColorsAndFlags(CArchive& archive)
{
    backgroundColor.Serialize(archive);
    archive >> sceneFlags;
    // A record that SelectionSerialize stored has this bit set. The bit is cleared here so that the
    // next record that this scene stores is complete.
    ClearSerializingSelection();
    globalAmbientColor.Serialize(archive);
}

void SceneObject::DeserializeLights(CArchive& archive)
{
    auto loaded = ReadOwnedObjects<LightObject>(archive, RUNTIME_CLASS(LightObject));
    for (const auto& light : loaded)
    {
        if (static_cast<LONG>(light->lightNumber) < GL_LIGHT0)
        {
            archive.Fail(CArchiveException::badClass,
                         "a light has the number " + std::to_string(light->lightNumber) +
                             ", expected at least " + std::to_string(GL_LIGHT0));
        }
    }
    DestroyLights();
    for (auto& light : loaded)
    {
        light->SetParent(this);
        lights.AddTail(light.get());
        static_cast<void>(light.release());  // the list owns it
    }
}

void SceneObject::DeserializeSavedViews(CArchive& archive)
{
    for (auto& view : ReadOwnedObjects<NamedView>(archive, RUNTIME_CLASS(NamedView)))
    {
        savedViews.AddTail(view.get());
        static_cast<void>(view.release());  // the list owns it
    }
}
