// SPDX-License-Identifier: MIT
#include "document/materials/MaterialLibrary.h"

#include "document/OptionRange.h"
#include "host/AsciiCase.h"
#include "host/CWinApp.h"
#include "host/SimilarNames.h"
#include "orvane/Error.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace orvane
{

namespace
{

constexpr const char* section = "Materials";
constexpr const char* prefix = "Material";
constexpr const char* countEntry = "Count";
constexpr int mostSaved = 10'000;  // a damaged profile may have any number

struct Recipe
{
    const char* name;
    std::uint32_t body;       ///< 0xRRGGBB: the colour that light from all sides gives it
    std::uint32_t highlight;  ///< that of a metal is tinted like its body
    float shininess;          ///< from 0, like chalk, to 128, like a mirror
    float opacity = 1;
    std::uint32_t glow = 0;  ///< the light that it gives by itself
};

// The bodies of metals are the colours that they mirror straight on (their reflectance, measured by
// many; as screens show it), the others are chosen by eye.
constexpr Recipe recipes[] = {
    {"Aluminium", 0xE2E3E5, 0xE6E8EC, 60},
    {"Brass", 0xE3C05E, 0xFFE49A, 90},
    {"Bronze", 0xB07F45, 0xDDA864, 60},
    {"Chalk", 0xEDEBE4, 0x0A0A0A, 0},
    {"Chocolate", 0x4A2514, 0x8A7A70, 40},
    {"Chrome", 0xC4C8CC, 0xF2F5F8, 128},
    {"Clay", 0xB8623C, 0x141414, 2},
    {"Copper", 0xF4A684, 0xFFC0A0, 90},
    {"Glass", 0x7FB3AC, 0xFFFFFF, 128, 0.2f},
    {"Gold", 0xFFD277, 0xFFE7A0, 100},
    {"Ice", 0xBFE3F2, 0xFFFFFF, 110, 0.5f},
    {"Iron", 0x8E8781, 0x9C9690, 20},
    {"Jade", 0x2F8F63, 0xD8F0E0, 90},
    {"Lacquer Black", 0x0B0B0D, 0xFFFFFF, 126},
    {"Lacquer Red", 0xB3121C, 0xFFFFFF, 126},
    {"Marble", 0xE6E2DA, 0xB0B0B0, 70},
    {"Neon Blue", 0x102A60, 0x8080A0, 40, 1, 0x3A8CFF},
    {"Neon Pink", 0x601030, 0xA08090, 40, 1, 0xF0287F},
    {"Paper", 0xF4F1E8, 0x0C0C0C, 0},
    {"Pearl", 0xEFE4DC, 0xFFF4FF, 60},
    {"Porcelain", 0xF3F4F4, 0xFFFFFF, 120},
    {"Rose Gold", 0xEDB59A, 0xFFD0BC, 100},
    {"Rubber", 0x232325, 0x303030, 4},
    {"Ruby", 0xA5082A, 0xFFE0E6, 124, 0.85f},
    {"Sapphire", 0x12309A, 0xE0E6FF, 124, 0.85f},
    {"Silver", 0xF3F0EA, 0xFFFCF6, 110},
    {"Steel", 0xA9AFB5, 0xC2C8D0, 50},
    {"Wood", 0x8A5A33, 0x3A3632, 16},
};

ColorVector VectorOf(std::uint32_t rgb, float alpha, float factor = 1)
{
    const auto part = [&](int shift) {
        return static_cast<float>(rgb >> shift & 0xFF) / 255.0f * factor;
    };
    return {part(16), part(8), part(0), alpha};
}

NamedColor MaterialOf(const Recipe& recipe)
{
    NamedColor material(recipe.name);
    material.SetAmbientColor(VectorOf(recipe.body, 1, 0.6f));
    material.SetDiffuseColor(VectorOf(recipe.body, recipe.opacity, 0.85f));
    material.SetSpecularColor(VectorOf(recipe.highlight, 1));
    material.SetEmissionColor(VectorOf(recipe.glow, 1));
    material.SetShininess(recipe.shininess);
    return material;
}

/// The place of the material with this name; the end when there is none.
template <typename Materials>
auto PlaceOf(Materials& materials, const std::string& name)
{
    return std::find_if(materials.begin(), materials.end(), [&name](const NamedColor& each) {
        return LowerAscii(each.GetName()) == LowerAscii(name);
    });
}

std::vector<NamedColor> BuiltIn()
{
    const NamedColorGroup& group = BuiltInMaterials();
    std::vector<NamedColor> materials;
    materials.reserve(static_cast<std::size_t>(group.GetSize()));
    for (int i = 0; i < group.GetSize(); ++i)
    {
        materials.push_back(group.GetAt(i));
    }
    return materials;
}

void WriteSaved(const std::vector<NamedColor>& materials)
{
    CWinApp& app = *AfxGetApp();
    const BOOL isWritten = app.ChangeProfile([&] {
        for (std::size_t i = 0; i < materials.size(); ++i)
        {
            materials[i].Save(static_cast<int>(i), section, prefix);
        }
        app.WriteProfileInt(section, countEntry, static_cast<int>(materials.size()));
    });
    if (isWritten == FALSE)
    {
        throw Error(std::string(app.GetProfilePath().Text()), "the profile cannot be written");
    }
}

}  // namespace

const NamedColorGroup& BuiltInMaterials()
{
    static const NamedColorGroup* const group = [] {
        auto* const made = new NamedColorGroup(0, "Built-in");
        for (const Recipe& recipe : recipes)
        {
            NamedColor material = MaterialOf(recipe);
            made->Add(material);
        }
        return made;
    }();
    return *group;
}

std::vector<NamedColor> SavedMaterials()
{
    const auto count = static_cast<int>(
        std::min<UINT>(AfxGetApp()->GetProfileInt(section, countEntry, 0), mostSaved));
    std::vector<NamedColor> materials;
    materials.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
    {
        materials.emplace_back(i, section, prefix);
    }
    return materials;
}

void SaveMaterial(const NamedColor& material)
{
    const std::string name = material.GetName();
    CheckName("name", name);
    const std::vector<NamedColor> builtIn = BuiltIn();
    if (name.empty() || PlaceOf(builtIn, name) != builtIn.end())
    {
        throw OptionError("name", "a name that no built-in material has", '"' + name + '"');
    }
    std::vector<NamedColor> materials = SavedMaterials();
    const auto old = PlaceOf(materials, name);
    if (old != materials.end())
    {
        *old = material;
    }
    else
    {
        materials.push_back(material);
    }
    WriteSaved(materials);
}

void RemoveMaterial(const std::string& name)
{
    std::vector<NamedColor> materials = SavedMaterials();
    const auto old = PlaceOf(materials, name);
    if (old == materials.end())
    {
        throw Error('"' + name + '"', "no saved material has this name");
    }
    materials.erase(old);
    WriteSaved(materials);
}

NamedColor MaterialNamed(const char* field, const std::string& name)
{
    const std::vector<NamedColor> builtIn = BuiltIn();
    const std::vector<NamedColor> saved = SavedMaterials();
    for (const std::vector<NamedColor>* const materials : {&saved, &builtIn})
    {
        if (const auto found = PlaceOf(*materials, name); found != materials->end())
        {
            return *found;
        }
    }
    std::vector<std::string> names;
    for (const std::vector<NamedColor>* const materials : {&builtIn, &saved})
    {
        for (const NamedColor& each : *materials)
        {
            names.emplace_back(each.GetName());
        }
    }
    constexpr std::size_t mostNamed = 3;
    constexpr std::size_t mostLetters = 100;  // comparing names takes time
    std::string nearest;
    for (const std::string& each : SimilarNames(name.substr(0, mostLetters), names, mostNamed))
    {
        nearest += (nearest.empty() ? "" : ", ") + each;
    }
    throw OptionError(field, "the name of a material, such as " + nearest, '"' + name + '"');
}

}  // namespace orvane
