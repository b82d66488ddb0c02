// SPDX-License-Identifier: MIT
#include "host/OwnedObjects.h"
#include "host/RecordVersion.h"
#include "scene/NamedViewList.h"
#include "scene/SceneObject.h"
#include "scene/ViewObject.h"

namespace
{

/// Reads a number that only records of old versions have, and drops it.
template <typename Number>
void Discard(CArchive& archive)
{
    Number ignored;
    archive >> ignored;
}

}  // namespace

void ViewObject::Serialize(CArchive& archive)
{
    DrawingObject::Serialize(archive);
    if (archive.IsStoring())
    {
        WriteRecordVersion(archive, RUNTIME_CLASS(ViewObject));
        archive << drawingMode;
        archive << showTextures;
        projection.Serialize(archive);
        archive << showLightsMode;
        archive << zoomDenominator.cx << zoomDenominator.cy;
        archive << zoomNumerator.cx << zoomNumerator.cy;
        return;
    }
    ReadVersionedRecord(archive, *this, &ViewObject::DeserializeVersion1,
                        &ViewObject::DeserializeVersion2, &ViewObject::DeserializeVersion3,
                        &ViewObject::DeserializeVersion4, &ViewObject::DeserializeVersion5);
}

void ViewObject::DeserializeVersion1(CArchive& archive)
{
    Discard<double>(archive);
    Discard<double>(archive);
    Discard<double>(archive);
    archive >> drawingMode;
    archive >> showTextures;
    Discard<DWORD>(archive);
    Discard<DWORD>(archive);
    projection.Serialize(archive);
    archive >> showLightsMode;
    ReadZoom(archive);
}

void ViewObject::DeserializeVersion2(CArchive& archive)
{
    Discard<double>(archive);
    DeserializeVersion1(archive);
}

void ViewObject::DeserializeVersion3(CArchive& archive)
{
    DeserializeVersion5(archive);
}

void ViewObject::DeserializeVersion4(CArchive& archive)
{
    DeserializeVersion5(archive);
    if (scene != nullptr)
    {
        scene->DeserializeSavedViews(archive);
        return;
    }
    const DWORD before = archive.GetLoadedCount();
    ReadOwnedObjects<NamedView>(archive, RUNTIME_CLASS(NamedView));
    archive.ForgetObjects(before);
}

void ViewObject::DeserializeVersion5(CArchive& archive)
{
    archive >> drawingMode;
    archive >> showTextures;
    projection.Serialize(archive);
    archive >> showLightsMode;
    ReadZoom(archive);
}

void ViewObject::ReadZoom(CArchive& archive)
{
    archive >> zoomDenominator.cx >> zoomDenominator.cy;
    archive >> zoomNumerator.cx >> zoomNumerator.cy;
}
