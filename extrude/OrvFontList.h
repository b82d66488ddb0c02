// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/OrvFont.h"
#include "host/TypedList.h"

/// A list of fonts that owns them. The removal of one node leaves its font to the caller.
class ORVANE_API OrvFontList : public TypedList<OrvFont>
{
public:
    explicit OrvFontList(int blockSize = 10);
    ~OrvFontList() override;

    /// Deletes every font.
    void RemoveAll();

    /// The first font of that full name, compared byte by byte; null when there is none.
    POSITION FindName(const CString& name) const;

    /// Inserts the font before the first one whose full name sorts after its own, or at the end.
    /// Returns the font, now owned, or null when a font of that name is there already; the caller
    /// then still owns it.
    OrvFont* InsertSorted(OrvFont* font);

protected:
    const CRuntimeClass* GetElementClass() const override;
};
