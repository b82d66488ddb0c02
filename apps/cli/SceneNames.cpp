// SPDX-License-Identifier: MIT
#include "apps/cli/SceneNames.h"

#include "apps/cli/TextCodes.h"
#include "apps/cli/info/JsonWriter.h"
#include "import3ds/TriangularMeshObject.h"
#include "scene/OrvString.h"

#include <array>

namespace
{

/// A name by its index; the number itself for one that has none, which only odd files have.
template <typename Number, std::size_t count>
std::string NameAt(Number index, const std::array<const char*, count>& names)
{
    const auto place = static_cast<std::size_t>(index);
    return place < count ? names[place] : std::to_string(index);
}

}  // namespace

std::string PathText(const NodePath& path)
{
    std::string text;
    for (const int index : path)
    {
        text += (text.empty() ? "" : ".") + std::to_string(index);
    }
    return text;
}

std::string NameOfNode(const DrawingObject& node)
{
    if (const auto* const text = dynamic_cast<const OrvString*>(&node))
    {
        return ToUtf8(*text->GetTextString());
    }
    if (const auto* const mesh = dynamic_cast<const TriangularMeshObject*>(&node))
    {
        return ToUtf8(mesh->name);
    }
    return {};
}

std::string TitleOf(const DrawingObject& node)
{
    const std::string name = NameOfNode(node);
    return node.GetRuntimeClass()->m_lpszClassName + (name.empty() ? name : " " + Quoted(name));
}

std::string StyleName(int bevelStyle)
{
    return NameAt(bevelStyle, std::array{"square", "bevel", "round"});
}

std::string LocationName(int bevelLocation)
{
    return NameAt(bevelLocation, std::array{"front", "back", "both"});
}

std::string SideName(int justification)
{
    return NameAt(justification, std::array{"left", "center", "right"});
}

std::string QualityName(unsigned long quality)
{
    return NameAt(quality, std::array{"nearest", "linear", "mipmap"});
}

std::string PlacementName(unsigned long placement)
{
    // Whatever is neither of the first two is centred.
    return placement < 2 ? NameAt(placement, std::array{"stretch", "tile"}) : "center";
}

std::string DrawingModeName(int index)
{
    return NameAt(index, std::array{"solid", "outline", "boxes"});
}
