// SPDX-License-Identifier: MIT
#include "geometry/DVector.h"

#include "host/CArchive.h"

#include <bit>
#include <cstdint>

IMPLEMENT_SERIAL(DVector, CObject, VERSIONABLE_SCHEMA | 1)

bool DVector::IsSameAs(const DVector& other) const
{
    const auto isSame = [](double a, double b) {
        return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
    };
    return isSame(x, other.x) && isSame(y, other.y) && isSame(z, other.z);
}

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
