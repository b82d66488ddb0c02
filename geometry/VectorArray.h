// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/Vector.h"
#include "host/GrowableArray.h"

/// A growable array of Vectors, owned. Its grow-by starts at 0, so that repeated Add reallocates
/// each time until SetSize has been given one.
///
/// Its record is the version, the count as a LONG, and each element's record.
class ORVANE_API VectorArray : public CObject, public GrowableArray<Vector>
{
    DECLARE_SERIAL(VectorArray)

public:
    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);
};
