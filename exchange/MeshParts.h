// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// The parts of a mesh as files describe them: each part with its own vertices, numbered from 0.

#include "solids/SolidMesh.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace orvane
{

/// Triangles that share a list of vertices.
struct MeshPiece
{
    std::vector<std::uint32_t> vertices;  ///< in SolidMesh::vertices, in the order of first use
    std::vector<std::uint32_t> indices;   ///< in `vertices`, three for each triangle
};

/// Cuts pieces out of a mesh.
class MeshCutter
{
public:
    /// \param mesh borrowed
    explicit MeshCutter(const SolidMesh& mesh) : mesh_(mesh), numbers_(mesh.vertices.size()) {}

    /// The triangles of some groups. When the transform of their node mirrors, two corners of each
    /// triangle are exchanged, so that it runs counter-clockwise in the world.
    MeshPiece Cut(const std::vector<const MeshGroup*>& groups, bool isMirrored);

private:
    struct Number
    {
        std::uint32_t cut = 0;  ///< the number of the cut that gave the vertex its index
        std::uint32_t index = 0;
    };

    const SolidMesh& mesh_;
    std::vector<Number> numbers_;  ///< of the mesh's vertices
    std::uint32_t cuts_ = 0;
};

/// The groups of each node, in the order of the mesh.
std::vector<std::vector<const MeshGroup*>> GroupsByNode(const SolidMesh& mesh);

/// How a group of triangles looks in a file: a material, with or without a texture.
struct MeshLook
{
    int material = 0;                     ///< in SolidMesh::materials
    const TextureMap* texture = nullptr;  ///< borrowed from the node; null for none
    /// Whether the back of triangles is seen, because an imported mesh may be open.
    bool isTwoSided = false;

    bool operator<(const MeshLook& other) const
    {
        return std::tie(material, texture, isTwoSided) <
               std::tie(other.material, other.texture, other.isTwoSided);
    }
};

/// The looks of a mesh, each once.
class MeshLooks
{
public:
    /// \param mesh borrowed
    explicit MeshLooks(const SolidMesh& mesh);

    const std::vector<MeshLook>& All() const { return looks_; }
    /// The index of a group's look.
    std::size_t IndexOf(const MeshGroup& group) const;
    /// The textures of the looks, each once.
    std::vector<const TextureMap*> Textures() const;

private:
    MeshLook LookOf(const MeshGroup& group) const;

    const SolidMesh& mesh_;
    std::vector<MeshLook> looks_;
    std::map<MeshLook, std::size_t> indices_;
};

/// The name of a material in UTF-8.
std::string NameOfMaterial(const NamedColor& material);

/// The text with spaces in place of line breaks and other control characters.
std::string OnOneLine(std::string text);

/// The colour of UsualColor, each component 0 to 255.
std::array<unsigned char, 4> ColorBytes(const ColorVector& color);

/// Throws Error, with the name of the node, when a position, normal or texture coordinate that a
/// triangle uses is not finite in the world, when an index leads out of the mesh, or when a group
/// does not consist of whole triangles.
void CheckMesh(const SolidMesh& mesh);

}  // namespace orvane
