// SPDX-License-Identifier: MIT
#pragma once

#include "material/NamedColorArray.h"

/// A palette of materials with a number and a name. Group 0 is the fixed, built-in palette.
///
/// An archive stores a group as the record of its array: the materials, but not the group's number
/// and name.
class ORVANE_API NamedColorGroup : public NamedColorArray
{
    DECLARE_DYNCREATE(NamedColorGroup)

public:
    NamedColorGroup() = default;
    NamedColorGroup(unsigned long group, const char* newName)
        : colorGroup(static_cast<DWORD>(group)), name(newName)
    {}
    NamedColorGroup(const char* newName) : name(newName) {}

    void SetColorGroup(unsigned long group) { colorGroup = static_cast<DWORD>(group); }
    void SetName(const char* newName) { name = newName; }

    /// Returns 1 for every group except group 0.
    int IsEditable() const { return colorGroup != 0 ? 1 : 0; }

    /// Sets the material's group to this group's number, then appends a copy of the material.
    /// Returns the index of the copy.
    int Add(NamedColor& color);

    DWORD colorGroup = 0;
    CString name;
};
