// SPDX-License-Identifier: MIT
#include "host/OwnedObjects.h"
#include "host/RecordVersion.h"
#include "imaging/TextureMapList.h"
#include "scene/DrawingObject.h"
#include "scene/NamedTransform.h"

namespace
{

// Selected, ShowScalingBox and ShowExtentsBox belong to a view of the document, not to it.
constexpr DWORD viewBits = 0x7;

// The list of named transforms that old records have.
void SkipNamedTransforms(CArchive& archive)
{
    const DWORD known = archive.GetLoadedCount();
    ReadOwnedObjects<NamedTransform>(archive, RUNTIME_CLASS(NamedTransform));
    archive.ForgetObjects(known);
}

}  // namespace

void DrawingObject::Serialize(CArchive& archive)
{
    CObject::Serialize(archive);
    if (archive.IsStoring())
    {
        WriteRecordVersion(archive, RUNTIME_CLASS(DrawingObject));
        SerializeFields_(archive, RUNTIME_CLASS(DrawingObject)->GetVersion());
        return;
    }
    ReadVersionedRecord(archive, *this, &DrawingObject::DeserializeVersion1,
                        &DrawingObject::DeserializeVersion2, &DrawingObject::DeserializeVersion3);
}

void DrawingObject::DeserializeVersion1(CArchive& archive)
{
    SerializeFields_(archive, 1);
}

void DrawingObject::DeserializeVersion2(CArchive& archive)
{
    SerializeFields_(archive, 2);
}

void DrawingObject::DeserializeVersion3(CArchive& archive)
{
    SerializeFields_(archive, 3);
}

void DrawingObject::SerializeFields_(CArchive& archive, DWORD version)
{
    // Storing makes none: one that is like them all is stored.
    const MadeWhenUsed<Extras_> initial;
    const bool isOwn = archive.IsLoading() || HasExtras_();
    Extras_& extras = isOwn ? Own_() : initial.Get();
    if (version >= 2)
    {
        minimumSize.Serialize(archive);
    }
    bounds.Serialize(archive);
    extentsBoxColor.Serialize(archive);
    if (archive.IsStoring())
    {
        archive << (flags & ~viewBits);
    }
    else
    {
        archive >> flags;
    }
    globalSizingHandles.Serialize(archive);
    localSizingHandles.Serialize(archive);
    extras.scale.Serialize(archive);
    if (version < 3)
    {
        SkipNamedTransforms(archive);
    }
    extras.scaledDimensions.Serialize(archive);
    if (archive.IsStoring())
    {
        archive << handleSize;
    }
    else
    {
        archive >> handleSize;
    }
    extras.texture.Serialize(archive);
    transform.Serialize(archive);
    extras.unscaledDimensions.Serialize(archive);
    if (archive.IsStoring())
    {
        extras.children.Serialize(archive);
    }
    else
    {
        ReadChildren_(archive);
        CheckTexture_();
    }
}

// All are read, and found to be new, before the first is linked.
void DrawingObject::ReadChildren_(CArchive& archive)
{
    for (auto& child : ReadOwnedObjects<DrawingObject>(archive, RUNTIME_CLASS(DrawingObject)))
    {
        Own_().children.AddTail(child.get());
        Link_(child.release());
    }
}

// A texture whose file is gone gets the known one's of the same name, if there is one.
void DrawingObject::CheckTexture_()
{
    TextureMap& texture = Own_().texture;
    texture.ValidateFile();
    if ((texture.textureFlags & TextureMap::Valid) == 0 && TextureList != nullptr &&
        !texture.GetName().IsEmpty())
    {
        if (const POSITION position = TextureList->FindName(texture.GetName()))
        {
            texture.SetFilename(TextureList->GetAt(position)->filename);
            texture.textureFlags |= TextureMap::Valid;
        }
    }
    if ((texture.textureFlags & TextureMap::Valid) == 0)
    {
        texture.Reset();
    }
}
