// SPDX-License-Identifier: MIT
#include "scene/OrvString.h"

#include "host/RecordVersion.h"

#include <algorithm>

IMPLEMENT_SERIAL(OrvString, DrawingObject, 2 | VERSIONABLE_SCHEMA)

OrvString::OrvString()
    : bevelColor("Default Material"), edgeColor("Default Material"), faceColor("Default Material")
{
    EnsureDetails().scale = DVector(1, 1, 0.2);
    CalculateMaximumBevelDepth();
}

OrvString::OrvString(const OrvString& other) = default;
OrvString::~OrvString() = default;
OrvString& OrvString::operator=(const OrvString& other) = default;

int OrvString::IsStringEmpty() const
{
    return textString.Text().find_first_not_of("\r\n ") == std::string::npos;
}

void OrvString::SetBevelColor(const NamedColor& color)
{
    bevelColor = color;
    SetTransparency();
}

void OrvString::SetEdgeColor(const NamedColor& color)
{
    edgeColor = color;
    SetTransparency();
}

void OrvString::SetFaceColor(const NamedColor& color)
{
    faceColor = color;
    SetTransparency();
}

void OrvString::SetSurfaceColor(const NamedColor& color, int which)
{
    switch (which)
    {
        case faceSurface:
            SetFaceColor(color);
            break;
        case edgeSurface:
            SetEdgeColor(color);
            break;
        case bevelSurface:
            SetBevelColor(color);
            break;
        default:
            break;
    }
}

void OrvString::SetTransparency()
{
    ClearTransparent();
    if (faceColor.IsTransparent() || (bevelColor.IsTransparent() && ShouldUseBevelColor()) ||
        (edgeColor.IsTransparent() && ShouldUseEdgeColor()))
    {
        SetTransparent();
    }
}

int OrvString::CalculateMaximumBevelDepth()
{
    const DVector scale = GetScale();
    maximumBevelDepth = static_cast<float>(0.5 * std::min({scale.x, scale.y, scale.z}));
    return 1;
}

float OrvString::GetAllowableBevelDepth() const
{
    if (!ShouldBevelEdges() && !ShouldRoundEdges())
    {
        return 0;
    }
    const double depth = GetScale().z;
    const double limit = IsBothFaces() ? depth / 2 : depth;
    return static_cast<float>(std::min<double>(limit, bevelDepth));
}

ExtrusionData OrvString::GetExtrusionData() const
{
    ExtrusionData extrusion;
    extrusion.scale = Vector(GetScale());
    extrusion.bevelDepth = GetAllowableBevelDepth();
    if (ShouldScaleBevels())
    {
        extrusion.SetScaleBevels();
    }
    const TextureMap& texture = CurrentDetails().texture;
    if (texture.ShouldTexture())
    {
        extrusion.SetTexture();
    }
    if (texture.ShouldScaleWithObject())
    {
        extrusion.SetScaleTextureWithObject();
    }
    extrusion.SetTextureRepeat(static_cast<float>(texture.GetRepeatRate()));
    extrusion.CalculateHeights();
    return extrusion;
}

void OrvString::Serialize(CArchive& archive)
{
    DrawingObject::Serialize(archive);
    if (archive.IsLoading())
    {
        ReadVersionedRecord(archive, *this, &OrvString::DeserializeVersion1,
                            &OrvString::DeserializeVersion2);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(OrvString));
    bevelColor.Serialize(archive);
    archive << bevelDepth;
    archive << LONG{bevelLocation};
    archive << LONG{bevelStyle};
    edgeColor.Serialize(archive);
    faceColor.Serialize(archive);
    archive << firstLineOffset;
    archive << stringFlags;
    archive << LONG{justification};
    archive << maximumBevelDepth;
    archive << textString;
    archive << interCharacterSpacing;
    archive << interLineSpacing;
}

void OrvString::DeserializeVersion1(CArchive& archive)
{
    bevelColor.Serialize(archive);
    archive >> bevelDepth;
    archive >> bevelLocation;
    archive >> bevelStyle;
    edgeColor.Serialize(archive);
    faceColor.Serialize(archive);
    archive >> firstLineOffset;
    archive >> stringFlags;
    archive >> justification;
    archive >> maximumBevelDepth;
    archive >> textString;
    interCharacterSpacing = 0;
    interLineSpacing = 0;
    // Every loaded text uses its edge and bevel materials, whatever bits were stored. This is
    // required; see the test AStoredTextLoadsWithBothMaterialsInUse.
    SetUseBevelColor();
    SetUseEdgeColor();
}

void OrvString::DeserializeVersion2(CArchive& archive)
{
    DeserializeVersion1(archive);
    archive >> interCharacterSpacing;
    archive >> interLineSpacing;
}
