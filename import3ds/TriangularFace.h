// SPDX-License-Identifier: MIT
#pragma once

#include "host/CObject.h"

/// One triangle of a mesh. Its archive record is the version and the five words in order.
class ORVANE_API TriangularFace : public CObject
{
    DECLARE_SERIAL(TriangularFace)

public:
    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

    // The corners: indices of the mesh's vertices.
    WORD a = 0;
    WORD b = 0;
    WORD c = 0;
    WORD faceFlags = 0;  ///< kept from the imported file
    WORD material = 0;   ///< index of the mesh's materials
};
