// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Vector.h"
#include "host/GrowableArray.h"

/// A growable array of Vectors. growBy is 0 at first, so every Add allocates a new block until
/// SetSize sets another growBy.
///
/// Its record is the version, the count as a LONG, and each element's record.
class ORVANE_API VectorArray : public CObject, public GrowableArray<Vector>
{
    DECLARE_SERIAL(VectorArray)

public:
    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);
};
