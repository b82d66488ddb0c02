// SPDX-License-Identifier: MIT
#pragma once

#include "geometry/CoordinateTransform.h"
#include "host/CString.h"

/// A transform with a name. Only node records of versions 1 and 2 contain named transforms; loading
/// drops them.
///
/// Its record is the version, the name and the transform's record.
class ORVANE_API NamedTransform : public CObject
{
    DECLARE_SERIAL(NamedTransform)

public:
    NamedTransform() = default;
    NamedTransform(const CString& newName, const CoordinateTransform& newTransform);

    CString GetName() const { return name; }
    CoordinateTransform GetTransform() const { return transform; }

    void Serialize(CArchive& archive) override;

    CString name;
    CoordinateTransform transform;
};
