// SPDX-License-Identifier: MIT
#pragma once

#include "host/CString.h"
#include "material/Color.h"

/// A material with a display name and the number of the NamedColorGroup that it belongs to; 0 is
/// the built-in group. A material can be stored in the application's profile.
///
/// Its record is that of Color, then the version, the group and the name.
class ORVANE_API NamedColor : public Color
{
    DECLARE_SERIAL(NamedColor)

public:
    /// A medium grey material with the name "Medium Gray".
    NamedColor() = default;
    NamedColor(const NamedColor& other) = default;
    NamedColor& operator=(const NamedColor& other) = default;
    /// Copies only the colours. The group is 0, whatever group the given material has.
    NamedColor(const Color& color, const char* newName) : Color(color), name(newName) {}
    /// A medium grey material with another name.
    NamedColor(const char* newName) : name(newName) {}
    /// Calls Load.
    NamedColor(int index, const CString& section, const CString& prefix);

    const char* GetName() const { return name; }
    void SetName(const char* newName) { name = newName; }
    unsigned long GetColorGroup() const { return colorGroup; }
    void SetColorGroup(unsigned long group) { colorGroup = static_cast<DWORD>(group); }

    /// Makes a material from a COLORREF. The ambient colour is half as bright, the specular colour
    /// is as bright as the hue allows, and the name states red, green and blue in per cent. The
    /// emission becomes black and the shininess 64. Group, diffuse alpha and specular alpha do not
    /// change. Black has no hue; its specular colour becomes not-a-number. This is required; see
    /// the test ABlackPaletteColorHasNoSpecularHue.
    NamedColor& operator=(unsigned long colorRef);

    /// Load reads and Save writes the entries of the profile section "<section>\<prefix><index>".
    /// Colours are stored in whole per cent. Emission and group are neither read nor written. Load
    /// sets the alpha of the ambient and specular colours to 1. A missing number loads as 0, and a
    /// missing name as "Invalid Material". The entry named "Transparency" holds the opacity. Load
    /// and Save always return 1.
    int Load(int index, const CString& section, const CString& prefix);
    int Save(int index, const CString& section, const CString& prefix) const;

    /// Calls Color::Reset and sets the name "Medium Gray". The group does not change.
    void Reset() override;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

protected:
    DWORD colorGroup = 0;
    CString name = "Medium Gray";

private:
    struct ProfileEntry;
    static const ProfileEntry profileEntries[];
};
