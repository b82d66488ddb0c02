// SPDX-License-Identifier: MIT
#include "material/ColorVector.h"

#include "geometry/Truncate.h"
#include "host/CArchive.h"

IMPLEMENT_SERIAL(ColorVector, CObject, VERSIONABLE_SCHEMA | 1)

ColorVector& ColorVector::operator=(unsigned long colorRef)
{
    const auto component = [colorRef](int shift) {
        return static_cast<float>((colorRef >> shift) & 0xFF) * 0.003921569f;
    };
    red = component(0);
    green = component(8);
    blue = component(16);
    return *this;
}

unsigned long ColorVector::GetColorRef() const
{
    const auto byte = [](float component) {
        return static_cast<unsigned long>(TruncateToInt64(component * 255.0f + 0.5f) & 0xFF);
    };
    return byte(red) | byte(green) << 8 | byte(blue) << 16;
}

void ColorVector::Serialize(CArchive& archive)
{
    if (archive.IsLoading())
    {
        DeserializeVersion1(archive);
        return;
    }
    archive << red << green << blue << alpha;
}

void ColorVector::DeserializeVersion1(CArchive& archive)
{
    archive >> red >> green >> blue >> alpha;
}
