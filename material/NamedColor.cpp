// SPDX-License-Identifier: MIT
#include "material/NamedColor.h"

#include "geometry/Truncate.h"
#include "host/CWinApp.h"
#include "host/RecordVersion.h"

#include <algorithm>

IMPLEMENT_SERIAL(NamedColor, Color, VERSIONABLE_SCHEMA | 1)

// The numbers of string resources, which are the names of profile entries.
static constexpr UINT nameResource = 21000;
static constexpr UINT shininessResource = 321;

/// A colour component that the profile holds as a percentage.
struct NamedColor::ProfileEntry
{
    UINT resource;
    ColorVector Color::*color;
    float ColorVector::*component;
};

// The entries in the order in which Save writes them to the profile.
const NamedColor::ProfileEntry NamedColor::profileEntries[] = {
    {311, &NamedColor::ambientColor, &ColorVector::red},
    {312, &NamedColor::ambientColor, &ColorVector::green},
    {313, &NamedColor::ambientColor, &ColorVector::blue},
    {314, &NamedColor::diffuseColor, &ColorVector::red},
    {315, &NamedColor::diffuseColor, &ColorVector::green},
    {316, &NamedColor::diffuseColor, &ColorVector::blue},
    {320, &NamedColor::diffuseColor, &ColorVector::alpha},
    {317, &NamedColor::specularColor, &ColorVector::red},
    {318, &NamedColor::specularColor, &ColorVector::green},
    {319, &NamedColor::specularColor, &ColorVector::blue},
};

/// A component in whole per cent, truncated toward zero. The product is rounded to float before it
/// is truncated: the float nearest to 0.9 is slightly less than 0.9, but the rounded product is 90.
static LONG Percent(float component)
{
    return TruncateToLong(component * 100.0f);
}

static CString ResourceText(UINT resource)
{
    CString text;
    text.LoadString(resource);
    return text;
}

static CString ProfileSection(int index, const CString& section, const CString& prefix)
{
    CString text;
    text.Format("%s\\%s%u", static_cast<LPCSTR>(section), static_cast<LPCSTR>(prefix),
                static_cast<unsigned int>(index));
    return text;
}

NamedColor::NamedColor(int index, const CString& section, const CString& prefix)
{
    Load(index, section, prefix);
}

void NamedColor::Reset()
{
    Color::Reset();
    name = NamedColor().name;
}

NamedColor& NamedColor::operator=(unsigned long colorRef)
{
    const ColorVector& diffuse = diffuseColor = colorRef;
    ambientColor.SetColorVector(diffuse.red * 0.5f, diffuse.green * 0.5f, diffuse.blue * 0.5f,
                                1.0f);
    emissionColor.Clear();
    const float brighten = 1.0f / std::max(std::max(diffuse.red, diffuse.green), diffuse.blue);
    specularColor.SetColorVector(diffuse.red * brighten, diffuse.green * brighten,
                                 diffuse.blue * brighten, specularColor.alpha);
    shininess = 64.0f;
    name.Format("Palette Color - R%u G%u B%u", static_cast<unsigned int>(Percent(diffuse.red)),
                static_cast<unsigned int>(Percent(diffuse.green)),
                static_cast<unsigned int>(Percent(diffuse.blue)));
    return *this;
}

int NamedColor::Load(int index, const CString& section, const CString& prefix)
{
    const CWinApp& app = *AfxGetApp();
    const CString place = ProfileSection(index, section, prefix);
    const auto number = [&](UINT resource) {
        return static_cast<int>(app.GetProfileInt(place, ResourceText(resource), 0));
    };

    name = app.GetProfileString(place, ResourceText(nameResource), "Invalid Material");
    for (const ProfileEntry& entry : profileEntries)
    {
        this->*entry.color.*entry.component = static_cast<float>(number(entry.resource) * 0.01);
    }
    ambientColor.alpha = 1.0f;
    specularColor.alpha = 1.0f;
    shininess = static_cast<float>(number(shininessResource));
    return 1;
}

int NamedColor::Save(int index, const CString& section, const CString& prefix) const
{
    CWinApp& app = *AfxGetApp();
    const CString place = ProfileSection(index, section, prefix);

    app.ChangeProfile([&] {
        app.WriteProfileString(place, ResourceText(nameResource), name);
        for (const ProfileEntry& entry : profileEntries)
        {
            app.WriteProfileInt(place, ResourceText(entry.resource),
                                Percent(this->*entry.color.*entry.component));
        }
        app.WriteProfileInt(place, ResourceText(shininessResource), TruncateToLong(shininess));
    });
    return 1;
}

void NamedColor::Serialize(CArchive& archive)
{
    Color::Serialize(archive);
    if (archive.IsLoading())
    {
        ReadRecordVersion(archive, RUNTIME_CLASS(NamedColor));
        DeserializeVersion1(archive);
        return;
    }
    WriteRecordVersion(archive, RUNTIME_CLASS(NamedColor));
    archive << colorGroup;
    archive << name;
}

void NamedColor::DeserializeVersion1(CArchive& archive)
{
    archive >> colorGroup;
    archive >> name;
}
