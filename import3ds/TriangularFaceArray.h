// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"
#include "import3ds/TriangularFace.h"

/// A growable array of triangles, held by value. Until SetSize is called with a growBy, every Add
/// reallocates the array.
///
/// Its archive record is the version, the count as a DWORD, and each element's record.
class ORVANE_API TriangularFaceArray : public CObject, public GrowableArray<TriangularFace>
{
    DECLARE_SERIAL(TriangularFaceArray)

public:
    using GrowableArray::operator[];
    TriangularFace& operator[](int index) { return data[index]; }
    TriangularFace& ElementAt(int index) { return data[index]; }

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);
};
