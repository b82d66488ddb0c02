// SPDX-License-Identifier: MIT
#include "solids/MeshMaterials.h"

namespace orvane
{

namespace
{
/// A text that differs when a number or the name differs.
std::string KeyOf(const NamedColor& material)
{
    std::string key;
    const auto add = [&key](float number) {
        key.append(reinterpret_cast<const char*>(&number), sizeof number);
    };
    for (const ColorVector& color : {material.GetAmbientColor(), material.GetDiffuseColor(),
                                     material.GetEmissionColor(), material.GetSpecularColor()})
    {
        add(color.red);
        add(color.green);
        add(color.blue);
        add(color.alpha);
    }
    add(material.GetShininess());
    return key + material.GetName();
}
}  // namespace

int MeshMaterials::IndexOf(const NamedColor& material)
{
    const auto known = byAddress_.find(&material);
    if (known != byAddress_.end())
    {
        return known->second;
    }
    const auto [place, isNew] =
        byValue_.try_emplace(KeyOf(material), static_cast<int>(materials_.size()));
    if (isNew)
    {
        materials_.push_back(material);
    }
    byAddress_.emplace(&material, place->second);
    return place->second;
}

}  // namespace orvane
