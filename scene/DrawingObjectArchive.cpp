// SPDX-License-Identifier: MIT
#include "host/OwnedObjects.h"
#include "host/RecordVersion.h"
#include "imaging/TextureMapList.h"
#include "scene/DrawingObject.h"
#include "scene/NamedTransform.h"
#include "scene/TextureFinder.h"

#include <algorithm>

namespace
{

// These bits describe a view of the document, not the document, and are not stored.
constexpr DWORD unstoredBits = DrawingObject::selectedBit | DrawingObject::showScalingBoxBit |
                               DrawingObject::showExtentsBoxBit;

// Reads the list of named transforms that records of versions 1 and 2 have, and drops it.
void SkipNamedTransforms(CArchive& archive)
{
    const DWORD known = archive.GetLoadedCount();
    ReadOwnedObjects<NamedTransform>(archive, RUNTIME_CLASS(NamedTransform));
    archive.ForgetObjects(known);
}

// Whether the records of two textures are equal.
bool AreSame(const TextureMap& a, const TextureMap& b)
{
    const auto numbers = [](const TextureMap& texture) {
        return DVector(texture.GetRepeatRate(), texture.GetHorizontalLocation(),
                       texture.GetVerticalLocation());
    };
    return a.modulate == b.modulate && a.filename == b.filename && a.placement == b.placement &&
           a.textureFlags == b.textureFlags && a.GetName() == b.GetName() &&
           a.GetQuality() == b.GetQuality() && numbers(a).IsSameAs(numbers(b));
}

void SerializeAll(CArchive& archive, DVector (&centers)[8])
{
    for (DVector& center : centers)
    {
        center.Serialize(archive);
    }
}

}  // namespace

orvane::TextureFinder::TextureFinder() : place_(*this) {}

orvane::TextureFinder::~TextureFinder() = default;

std::string orvane::TextureFinder::FindFontFile(const std::string&)
{
    return {};
}

orvane::TextureFinder* orvane::TextureFinder::Current()
{
    return NewestOfThread<TextureFinder>::Get();
}

void DrawingObject::Serialize(CArchive& archive)
{
    CObject::Serialize(archive);
    if (archive.IsStoring())
    {
        WriteRecordVersion(archive, RUNTIME_CLASS(DrawingObject));
        WriteFields(archive);
        return;
    }
    ReadVersionedRecord(archive, *this, &DrawingObject::DeserializeVersion1,
                        &DrawingObject::DeserializeVersion2, &DrawingObject::DeserializeVersion3);
}

void DrawingObject::DeserializeVersion1(CArchive& archive)
{
    ReadFields(archive, 1);
}

void DrawingObject::DeserializeVersion2(CArchive& archive)
{
    ReadFields(archive, 2);
}

void DrawingObject::DeserializeVersion3(CArchive& archive)
{
    ReadFields(archive, 3);
}

void DrawingObject::WriteFields(CArchive& archive)
{
    Details& details = HasDetails() ? EnsureDetails() : InitialDetails();
    minimumSize.Serialize(archive);
    bounds.Serialize(archive);
    extentsBoxColor.Serialize(archive);
    archive << (flags & ~unstoredBits);
    SerializeAll(archive, details.globalSizingHandles);
    SerializeAll(archive, details.localSizingHandles);
    details.scale.Serialize(archive);
    details.scaledDimensions.Serialize(archive);
    archive << handleSize;
    details.texture.Serialize(archive);
    transform.Serialize(archive);
    details.unscaledDimensions.Serialize(archive);
    children.Serialize(archive);
}

void DrawingObject::ReadFields(CArchive& archive, DWORD version)
{
    Details loaded;
    if (version >= 2)
    {
        minimumSize.Serialize(archive);
    }
    bounds.Serialize(archive);
    extentsBoxColor.Serialize(archive);
    archive >> flags;
    SerializeAll(archive, loaded.globalSizingHandles);
    SerializeAll(archive, loaded.localSizingHandles);
    loaded.scale.Serialize(archive);
    if (version < 3)
    {
        SkipNamedTransforms(archive);
    }
    loaded.scaledDimensions.Serialize(archive);
    archive >> handleSize;
    loaded.texture.Serialize(archive);
    transform.Serialize(archive);
    loaded.unscaledDimensions.Serialize(archive);
    if (HasDetails() || !loaded.AreInitial())
    {
        EnsureDetails().CopySizesAndTexture(loaded, 8);
    }
    ReadChildren(archive);
    FindTextureFile();
}

bool DrawingObject::Details::AreInitial() const
{
    const Details& initial = InitialDetails();
    const auto isSame = [](const DVector& a, const DVector& b) { return a.IsSameAs(b); };
    return std::equal(globalSizingHandles, globalSizingHandles + 8, initial.globalSizingHandles,
                      isSame) &&
           std::equal(localSizingHandles, localSizingHandles + 8, initial.localSizingHandles,
                      isSame) &&
           scale.IsSameAs(initial.scale) && scaledDimensions.IsSameAs(initial.scaledDimensions) &&
           unscaledDimensions.IsSameAs(initial.unscaledDimensions) &&
           AreSame(texture, initial.texture);
}

// Reads and checks all children before it adds the first one, so that a bad archive adds no child.
void DrawingObject::ReadChildren(CArchive& archive)
{
    for (auto& child : ReadOwnedObjects<DrawingObject>(archive, RUNTIME_CLASS(DrawingObject)))
    {
        children.AddTail(child.get());
        MarkAsChild(child.release());
    }
}

// A TextureFinder decides which file the texture is read from. Without a TextureFinder, if the file
// is missing, uses the file of the texture in TextureList that has the same name. If that list has
// no such texture, resets the node's texture.
void DrawingObject::FindTextureFile()
{
    if (!HasDetails())
    {
        return;
    }
    TextureMap& texture = EnsureDetails().texture;
    if (orvane::TextureFinder* const finder = orvane::TextureFinder::Current())
    {
        finder->Find(texture);
        return;
    }
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
