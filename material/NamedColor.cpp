// SPDX-License-Identifier: MIT
#include "material/NamedColor.h"

#include "geometry/Truncate.h"
#include "host/CWinApp.h"
#include "host/RecordVersion.h"

#include <algorithm>

IMPLEMENT_SERIAL(NamedColor, Color, VERSIONABLE_SCHEMA | 1)

// String resources that name the profile entries.
static constexpr UINT nameResource = 21000;
static constexpr UINT shininessResource = 321;

/// A component that the profile holds as a percentage, in file order.
struct NamedColor::ProfileEntry
{
    UINT resource;
    ColorVector Body_::*color;
    float ColorVector::*component;
};

const NamedColor::ProfileEntry NamedColor::profileEntries_[] = {
    {311, &Body_::ambient, &ColorVector::red},    {312, &Body_::ambient, &ColorVector::green},
    {313, &Body_::ambient, &ColorVector::blue},   {314, &Body_::diffuse, &ColorVector::red},
    {315, &Body_::diffuse, &ColorVector::green},  {316, &Body_::diffuse, &ColorVector::blue},
    {320, &Body_::diffuse, &ColorVector::alpha},  {317, &Body_::specular, &ColorVector::red},
    {318, &Body_::specular, &ColorVector::green}, {319, &Body_::specular, &ColorVector::blue},
};

/// Whole percent, of the product in float: 0.9 is 90, though just below it as a double.
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

NamedColor::NamedColor(const Color& color, const char* newName) : Color(color)
{
    SetName(newName);
    SetColorGroup(0);  // it may have been that of another NamedColor
}

NamedColor::NamedColor(const char* newName)
{
    SetName(newName);
}

NamedColor::NamedColor(int index, const CString& section, const CString& prefix)
{
    Load(index, section, prefix);
}

void NamedColor::Reset()
{
    Color::Reset();
    if (body_.IfMade() != nullptr)
    {
        SetName(Body_().name);
    }
}

NamedColor& NamedColor::operator=(const NamedColor& other)
{
    body_ = other.body_;
    return *this;
}

NamedColor& NamedColor::operator=(unsigned long colorRef)
{
    Body_& body = body_.Get();
    const ColorVector& diffuse = body.diffuse = colorRef;
    body.ambient.SetColorVector(diffuse.red * 0.5f, diffuse.green * 0.5f, diffuse.blue * 0.5f,
                                1.0f);
    body.emission.Clear();
    const float brighten = 1.0f / std::max(std::max(diffuse.red, diffuse.green), diffuse.blue);
    body.specular.SetColorVector(diffuse.red * brighten, diffuse.green * brighten,
                                 diffuse.blue * brighten, body.specular.alpha);
    body.shininess = 64.0f;
    body.name.Format("Palette Color - R%u G%u B%u", static_cast<unsigned int>(Percent(diffuse.red)),
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

    Body_& body = body_.Get();
    body.name = app.GetProfileString(place, ResourceText(nameResource), "Invalid Material");
    for (const ProfileEntry& entry : profileEntries_)
    {
        body.*entry.color.*entry.component = static_cast<float>(number(entry.resource) * 0.01);
    }
    body.ambient.alpha = 1.0f;
    body.specular.alpha = 1.0f;
    body.shininess = static_cast<float>(number(shininessResource));
    return 1;
}

int NamedColor::Save(int index, const CString& section, const CString& prefix) const
{
    CWinApp& app = *AfxGetApp();
    const CString place = ProfileSection(index, section, prefix);

    app.WriteProfileString(place, ResourceText(nameResource), GetName());
    const Body_& body = body_.Read();
    for (const ProfileEntry& entry : profileEntries_)
    {
        app.WriteProfileInt(place, ResourceText(entry.resource),
                            Percent(body.*entry.color.*entry.component));
    }
    app.WriteProfileInt(place, ResourceText(shininessResource), TruncateToLong(body.shininess));
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
    archive << body_.Read().group;
    archive << body_.Read().name;
}

void NamedColor::DeserializeVersion1(CArchive& archive)
{
    archive >> body_.Get().group;
    archive >> body_.Get().name;
}
