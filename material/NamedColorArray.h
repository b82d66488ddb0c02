// SPDX-License-Identifier: MIT
#pragma once

#include "host/GrowableArray.h"
#include "material/NamedColor.h"

/// A growable array of materials, held by value. growBy is -1 at first, so the capacity grows by
/// half plus 4.
///
/// Its record is the version, the count as a DWORD, and each material's record.
class ORVANE_API NamedColorArray : public CObject, public GrowableArray<NamedColor>
{
    DECLARE_SERIAL(NamedColorArray)

public:
    NamedColorArray() { growBy = -1; }
    NamedColorArray(const NamedColorArray& other) : NamedColorArray() { *this = other; }
    NamedColorArray& operator=(const NamedColorArray& other) = default;

    /// The index of the first material with exactly this name; -1 when no material has the name.
    int FindName(const CString& name) const;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);
};
