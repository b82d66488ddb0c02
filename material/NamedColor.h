// SPDX-License-Identifier: MIT
#pragma once

#include "host/CString.h"
#include "material/Color.h"

/// A material with a display name and the number of the NamedColorGroup that it belongs to, 0 being
/// the built-in one. It can be kept in the application's profile.
///
/// Its record is that of Color, then the version, the group and the name.
class ORVANE_API NamedColor : public Color
{
    DECLARE_SERIAL(NamedColor)

public:
    /// "Medium Gray".
    NamedColor() = default;
    NamedColor(const NamedColor& other) = default;
    NamedColor& operator=(const NamedColor& other) = default;
    /// Takes the colours alone: the group is 0, whatever group the given material has.
    NamedColor(const Color& color, const char* newName) : Color(color), name(newName) {}
    /// Medium grey of another name.
    NamedColor(const char* newName) : name(newName) {}
    /// Loads from the profile.
    NamedColor(int index, const CString& section, const CString& prefix);

    const char* GetName() const { return name; }
    void SetName(const char* newName) { name = newName; }
    unsigned long GetColorGroup() const { return colorGroup; }
    void SetColorGroup(unsigned long group) { colorGroup = static_cast<DWORD>(group); }

    /// Makes a complete material of a COLORREF: the ambient colour is half as bright, the specular
    /// one as bright as its hue allows, and the name tells the percentages. Group, diffuse alpha
    /// and specular alpha stay. Black has no hue and gives a specular colour that is no number:
    /// meant so, see ABlackPaletteColorHasNoSpecularHue.
    NamedColor& operator=(unsigned long colorRef);

    /// Reads and writes entries of the profile section "<section>\<prefix><index>", components as
    /// whole percentages. Emission and group take no part. What is missing loads as 0, the name as
    /// "Invalid Material". The entry "Transparency" holds the opacity. Both return 1 always.
    int Load(int index, const CString& section, const CString& prefix);
    int Save(int index, const CString& section, const CString& prefix) const;

    /// Also names it "Medium Gray"; the group stays.
    void Reset() override;

    void Serialize(CArchive& archive) override;
    void DeserializeVersion1(CArchive& archive);

protected:
    DWORD colorGroup = 0;
    CString name = "Medium Gray";

private:
    struct ProfileEntry;
    static const ProfileEntry profileEntries_[];
};
