// SPDX-License-Identifier: MIT
#include "exchange/Formats.h"
#include "exchange/MeshParts.h"
#include "exchange/TexturePng.h"
#include "orvane/Error.h"
#include "solids/NodeTransform.h"

#include <cstdint>
#include <limits>

namespace orvane
{

namespace
{

/// Cuts the mesh into its groups, one after the other, because a vertex has one colour only.
template <typename Use>
void ForEachPiece(const SolidMesh& mesh, Use use)
{
    MeshCutter cutter(mesh);
    for (const MeshGroup& group : mesh.groups)
    {
        const NodeTransform transform(mesh.nodes[static_cast<std::size_t>(group.node)].transform);
        use(group, transform, cutter.Cut({&group}, transform.IsMirrored()));
    }
}

void WriteVertices(const SolidMesh& mesh, const MeshGroup& group, const NodeTransform& transform,
                   const MeshPiece& piece, bool hasTextures, BufferedSink& out)
{
    const std::array<unsigned char, 4> color =
        ColorBytes(mesh.materials[static_cast<std::size_t>(group.material)].GetDiffuseColor());
    for (const std::uint32_t index : piece.vertices)
    {
        const MeshVertex& vertex = mesh.vertices[index];
        for (const MeshPoint& each :
             {transform.PositionInWorld(vertex.position), transform.NormalInWorld(vertex.normal)})
        {
            for (const double number : each)
            {
                out.LittleEndian(static_cast<float>(number));
            }
        }
        out.Bytes(color.data(), color.size());
        if (hasTextures)
        {
            out.LittleEndian(vertex.texture[0]);
            out.LittleEndian(vertex.texture[1]);
        }
    }
}

}  // namespace

void WritePly(const SolidMesh& mesh, const MeshFileOptions& options, const MeshFileTarget& target)
{
    std::size_t vertices = 0;
    std::size_t indices = 0;
    ForEachPiece(mesh, [&](const MeshGroup&, const NodeTransform&, const MeshPiece& piece) {
        vertices += piece.vertices.size();
        indices += piece.indices.size();
    });
    constexpr std::size_t most = std::numeric_limits<std::int32_t>::max();
    if (vertices > most)
    {
        throw Error("PLY file", std::to_string(vertices) + " vertices",
                    "at most " + std::to_string(most));
    }
    const std::vector<const TextureMap*> textures = MeshLooks(mesh).Textures();
    BufferedSink out(target.main);
    out.Text("ply\nformat binary_little_endian 1.0\n");
    out.Text("comment " + OnOneLine("Orvane " + options.name) + "\n");
    for (std::size_t i = 0; i < textures.size() && target.openBeside; ++i)
    {
        const std::string name = TextureFileName(target.stem, i);
        const std::vector<unsigned char> png = EncodeAsPng(*textures[i]);
        target.openBeside(name).Write(png.data(), png.size());
        out.Text("comment TextureFile " + OnOneLine(name) + "\n");
    }
    out.Text("element vertex " + std::to_string(vertices) + "\n");
    out.Text("property float x\nproperty float y\nproperty float z\n");
    out.Text("property float nx\nproperty float ny\nproperty float nz\n");
    out.Text("property uchar red\nproperty uchar green\nproperty uchar blue\n");
    out.Text("property uchar alpha\n");
    out.Text(textures.empty() ? "" : "property float s\nproperty float t\n");
    out.Text("element face " + std::to_string(indices / 3) + "\n");
    out.Text("property list uchar int vertex_indices\nend_header\n");

    ForEachPiece(
        mesh, [&](const MeshGroup& group, const NodeTransform& transform, const MeshPiece& piece) {
            WriteVertices(mesh, group, transform, piece, !textures.empty(), out);
        });
    std::uint32_t first = 0;
    ForEachPiece(mesh, [&](const MeshGroup&, const NodeTransform&, const MeshPiece& piece) {
        for (std::size_t i = 0; i < piece.indices.size(); i += 3)
        {
            out.LittleEndian(std::uint8_t{3});
            for (std::size_t corner = 0; corner < 3; ++corner)
            {
                out.LittleEndian(first + piece.indices[i + corner]);
            }
        }
        first += static_cast<std::uint32_t>(piece.vertices.size());
    });
    out.Flush();
}

}  // namespace orvane
