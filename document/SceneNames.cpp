// SPDX-License-Identifier: MIT
#include "document/SceneNames.h"

#include "document/EnumNames.h"
#include "document/TextEncoding.h"
#include "import3ds/TriangularMeshObject.h"
#include "platform/Utf8.h"
#include "scene/DescendentWalk.h"
#include "scene/OrvFontString.h"
#include "solids/OrvOutlineShape.h"

#include <algorithm>

namespace orvane
{

namespace
{

template <typename Enum>
std::string NameOfInt(int number)
{
    return number < 0 ? std::to_string(number)
                      : NameOfNumber<Enum>(static_cast<unsigned long>(number));
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

DrawingObject& NodeFinder::NodeAt(const NodePath& path)
{
    DrawingObject* node = &root_;
    for (const int index : path)
    {
        node = &ChildAt(*node, index);
    }
    return *node;
}

DrawingObject& NodeFinder::ChildAt(const DrawingObject& node, int index)
{
    const auto emplaced = children_.try_emplace(&node);
    std::vector<DrawingObject*>& children = emplaced.first->second;
    if (emplaced.second)
    {
        ForEachChild(node, [&](DrawingObject& child, int) { children.push_back(&child); });
    }
    return *children.at(static_cast<std::size_t>(index));
}

std::string NameOfNode(const DrawingObject& node)
{
    if (const auto* const text = dynamic_cast<const OrvString*>(&node))
    {
        const auto* const inFont = dynamic_cast<const OrvFontString*>(&node);
        return inFont != nullptr ? ToUtf8(*inFont, text->GetTextString()->Text())
                                 : ToUtf8(*text->GetTextString());
    }
    if (const auto* const mesh = dynamic_cast<const TriangularMeshObject*>(&node))
    {
        return ToUtf8(mesh->name);
    }
    if (const auto* const outlines = dynamic_cast<const OrvOutlineShape*>(&node))
    {
        return ValidUtf8(outlines->GetFileName().Text());
    }
    return {};
}

std::string StyleName(int bevelStyle)
{
    return NameOfInt<EdgeStyle>(bevelStyle);
}

std::string LocationName(int bevelLocation)
{
    return NameOfInt<BevelSides>(bevelLocation);
}

std::string SideName(int justification)
{
    return NameOfInt<Alignment>(justification);
}

std::string QualityName(unsigned long quality)
{
    return NameOfNumber<TextureQuality>(quality);
}

std::string PlacementName(unsigned long placement)
{
    switch (static_cast<BackgroundPlacement>(placement))
    {
        case BackgroundPlacement::Cover:
            return "cover";
        case BackgroundPlacement::Contain:
            return "contain";
        default:
            break;
    }
    constexpr auto center = static_cast<unsigned long>(BackgroundPlacement::Center);
    return NameOfNumber<BackgroundPlacement>(std::min(placement, center));
}

std::string DrawingModeName(int index)
{
    return NameOfInt<DrawingMode>(index);
}

}  // namespace orvane
