// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"
#include "import3ds/TriangularFace.h"

/// A growable array of triangles, held by value. Its grow-by starts at 0, so that repeated Add
/// reallocates each time until SetSize has been given one.
///
/// Its record is the version, the count as a DWORD, and each element's record.
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
