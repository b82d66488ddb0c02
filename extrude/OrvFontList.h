// SPDX-License-Identifier: MIT
#pragma once

#include "extrude/OrvFont.h"
#include "host/TypedList.h"

/// A list that owns its fonts. RemoveAll and the destructor delete them. Removing a single node
/// does not delete its font, which then belongs to the caller.
class ORVANE_API OrvFontList : public TypedList<OrvFont>
{
public:
    explicit OrvFontList(int blockSize = 10);
    ~OrvFontList() override;

    /// Deletes every font.
    void RemoveAll();

    /// The position of the first font with this full name, compared byte by byte; null when no font
    /// has this name.
    POSITION FindName(const CString& name) const;

    /// Inserts the font before the first font whose full name sorts after its own, or at the end.
    /// Takes ownership and returns the font. Returns null when a font of that name is in the list
    /// already; the font then still belongs to the caller.
    OrvFont* InsertSorted(OrvFont* font);

protected:
    const CRuntimeClass* GetElementClass() const override;
};
