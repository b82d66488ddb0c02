// SPDX-License-Identifier: MIT
#include "exchange/MeshParts.h"

#include "material/MetallicRoughness.h"
#include "orvane/Error.h"
#include "platform/CodePages.h"
#include "platform/Fonts.h"
#include "solids/NodeTransform.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace orvane
{

namespace
{

bool AreFinite(const float* numbers, int count)
{
    return std::all_of(numbers, numbers + count,
                       [](float number) { return std::isfinite(number); });
}

/// Throws Error when a vertex of the node cannot be written.
void CheckVertex(const MeshVertex& vertex, std::size_t index, const MeshNode& node,
                 const NodeTransform& transform)
{
    const char* wrong = nullptr;
    const MeshPoint world = transform.PositionInWorld(vertex.position);
    // Files hold positions as floats, so larger numbers would become infinite.
    const float stored[3] = {static_cast<float>(world[0]), static_cast<float>(world[1]),
                             static_cast<float>(world[2])};
    if (!AreFinite(stored, 3))
    {
        wrong = "position";
    }
    else if (!AreFinite(vertex.normal, 3))
    {
        wrong = "normal";
    }
    else if (!AreFinite(vertex.texture, 2))
    {
        wrong = "texture coordinate";
    }
    if (wrong != nullptr)
    {
        throw Error(
            "node \"" + node.name + "\"",
            "the " + std::string(wrong) + " of vertex " + std::to_string(index) + " is not finite",
            "finite numbers");
    }
}

}  // namespace

MeshPiece MeshCutter::Cut(const std::vector<const MeshGroup*>& groups, bool isMirrored)
{
    ++cuts_;
    MeshPiece piece;
    std::size_t count = 0;
    for (const MeshGroup* const group : groups)
    {
        count += group->indexCount;
    }
    piece.indices.reserve(count);
    for (const MeshGroup* const group : groups)
    {
        for (std::size_t i = group->firstIndex; i < group->firstIndex + group->indexCount; ++i)
        {
            const std::uint32_t vertex = mesh_.indices[i];
            Number& number = numbers_[vertex];
            if (number.cut != cuts_)
            {
                number = {cuts_, static_cast<std::uint32_t>(piece.vertices.size())};
                piece.vertices.push_back(vertex);
            }
            piece.indices.push_back(number.index);
        }
    }
    for (std::size_t i = 0; isMirrored && i < piece.indices.size(); i += 3)
    {
        std::swap(piece.indices[i + 1], piece.indices[i + 2]);
    }
    return piece;
}

std::vector<std::vector<const MeshGroup*>> GroupsByNode(const SolidMesh& mesh)
{
    std::vector<std::vector<const MeshGroup*>> groups(mesh.nodes.size());
    for (const MeshGroup& group : mesh.groups)
    {
        if (group.indexCount > 0)
        {
            groups[static_cast<std::size_t>(group.node)].push_back(&group);
        }
    }
    return groups;
}

MeshLooks::MeshLooks(const SolidMesh& mesh) : mesh_(mesh)
{
    for (const MeshGroup& group : mesh.groups)
    {
        const MeshLook look = LookOf(group);
        if (group.indexCount > 0 && indices_.try_emplace(look, looks_.size()).second)
        {
            looks_.push_back(look);
        }
    }
}

MeshLook MeshLooks::LookOf(const MeshGroup& group) const
{
    const MeshNode& node = mesh_.nodes[static_cast<std::size_t>(group.node)];
    return {group.material, node.texture.get(), group.part == MeshPart::Surface};
}

std::size_t MeshLooks::IndexOf(const MeshGroup& group) const
{
    return indices_.at(LookOf(group));
}

std::vector<const TextureMap*> MeshLooks::Textures() const
{
    std::vector<const TextureMap*> textures;
    for (const MeshLook& look : looks_)
    {
        if (look.texture != nullptr &&
            std::find(textures.begin(), textures.end(), look.texture) == textures.end())
        {
            textures.push_back(look.texture);
        }
    }
    return textures;
}

std::string NameOfMaterial(const NamedColor& material)
{
    return CodePageToUtf8(material.GetName(), GetACP());
}

std::string OnOneLine(std::string text)
{
    for (char& each : text)
    {
        each = static_cast<unsigned char>(each) < ' ' ? ' ' : each;
    }
    return text;
}

std::array<unsigned char, 4> ColorBytes(const ColorVector& color)
{
    std::array<unsigned char, 4> bytes;
    const std::array<float, 4> usual = UsualColor(color);
    std::transform(usual.begin(), usual.end(), bytes.begin(),
                   [](float each) { return static_cast<unsigned char>(std::lround(each * 255)); });
    return bytes;
}

void CheckMesh(const SolidMesh& mesh)
{
    std::vector<int> checkedFor(mesh.vertices.size(),
                                -1);  // the node that a vertex was checked for
    for (const MeshGroup& group : mesh.groups)
    {
        if (group.indexCount > mesh.indices.size() ||
            group.firstIndex > mesh.indices.size() - group.indexCount ||
            group.indexCount % 3 != 0 ||
            static_cast<std::size_t>(group.node) >= mesh.nodes.size() ||
            static_cast<std::size_t>(group.material) >= mesh.materials.size())
        {
            throw Error("mesh", "a group that leads out of it", "whole triangles of the mesh");
        }
        const MeshNode& node = mesh.nodes[static_cast<std::size_t>(group.node)];
        const NodeTransform transform(node.transform);
        for (std::size_t i = group.firstIndex; i < group.firstIndex + group.indexCount; ++i)
        {
            const std::uint32_t vertex = mesh.indices[i];
            if (vertex >= mesh.vertices.size())
            {
                throw Error("node \"" + node.name + "\"", "vertex " + std::to_string(vertex),
                            "a number below " + std::to_string(mesh.vertices.size()));
            }
            if (checkedFor[vertex] != group.node)
            {
                CheckVertex(mesh.vertices[vertex], vertex, node, transform);
                checkedFor[vertex] = group.node;
            }
        }
    }
}

}  // namespace orvane
