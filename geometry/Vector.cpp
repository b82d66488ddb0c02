// SPDX-License-Identifier: MIT
#include "geometry/Vector.h"

#include "host/CArchive.h"

IMPLEMENT_SERIAL(Vector, CObject, VERSIONABLE_SCHEMA | 1)

void Vector::Serialize(CArchive& archive)
{
    if (archive.IsLoading())
    {
        DeserializeVersion1(archive);
        return;
    }
    archive << x << y << z;
}

void Vector::DeserializeVersion1(CArchive& archive)
{
    archive >> x >> y >> z;
}
