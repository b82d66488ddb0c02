// SPDX-License-Identifier: MIT
#include "geometry/DVector.h"

#include "host/CArchive.h"

IMPLEMENT_SERIAL(DVector, CObject, VERSIONABLE_SCHEMA | 1)

void DVector::Serialize(CArchive& archive)
{
    if (archive.IsLoading())
    {
        DeserializeVersion1(archive);
        return;
    }
    archive << x << y << z;
}

void DVector::DeserializeVersion1(CArchive& archive)
{
    archive >> x >> y >> z;
}
