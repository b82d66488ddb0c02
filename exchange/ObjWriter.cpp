// SPDX-License-Identifier: MIT
#include "exchange/Formats.h"
#include "exchange/MeshParts.h"
#include "exchange/TexturePng.h"
#include "material/MetallicRoughness.h"
#include "solids/NodeTransform.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <set>
#include <string_view>

namespace orvane
{

namespace
{

/// A name that readers take as one word. ASCII characters other than letters and digits become low
/// lines, and so do the spaces of Unicode. All other characters stay, in UTF-8.
std::string AsWord(const std::string& name)
{
    // The next line, and the space that does not break lines.
    constexpr std::string_view spaces[] = {"\xC2\x85", "\xC2\xA0"};
    std::string word;
    for (std::size_t i = 0; i < name.size(); ++i)
    {
        const unsigned char each = static_cast<unsigned char>(name[i]);
        const bool isPlain = (each >= '0' && each <= '9') || (each >= 'A' && each <= 'Z') ||
                             (each >= 'a' && each <= 'z') || each >= 0x80;
        const std::string_view pair = std::string_view(name).substr(i, 2);
        const bool isSpace =
            std::find(std::begin(spaces), std::end(spaces), pair) != std::end(spaces);
        word += isPlain && !isSpace ? name[i] : '_';
        i += isSpace ? 1 : 0;
    }
    return word.empty() ? "_" : word;
}

/// A name for each look, different from all others.
std::vector<std::string> NamesOfLooks(const SolidMesh& mesh, const MeshLooks& looks)
{
    std::vector<std::string> names;
    std::set<std::string> used;
    for (const MeshLook& look : looks.All())
    {
        const std::string word =
            AsWord(NameOfMaterial(mesh.materials[static_cast<std::size_t>(look.material)]));
        std::string name = word;
        for (int next = 2; !used.insert(name).second; ++next)
        {
            name = word + "_" + std::to_string(next);
        }
        names.push_back(name);
    }
    return names;
}

const char* NameOf(MeshPart part)
{
    switch (part)
    {
        case MeshPart::Face:
            return "face";
        case MeshPart::Edge:
            return "edge";
        case MeshPart::Bevel:
            return "bevel";
        default:
            return "surface";
    }
}

void WriteNumbers(BufferedSink& out, std::string_view key, std::initializer_list<double> numbers)
{
    out.Text(key);
    for (const double number : numbers)
    {
        out.Text(" ");
        out.Number(static_cast<float>(number));
    }
    out.Text("\n");
}

void WriteColor(BufferedSink& out, std::string_view key, const ColorVector& color)
{
    const std::array<float, 4> usual = UsualColor(color);
    WriteNumbers(out, key, {usual[0], usual[1], usual[2]});
}

void WriteMaterials(const SolidMesh& mesh, const MeshLooks& looks,
                    const std::vector<std::string>& names, const MeshFileTarget& target)
{
    const std::vector<const TextureMap*> textures = looks.Textures();
    for (std::size_t i = 0; i < textures.size(); ++i)
    {
        const std::vector<unsigned char> png = EncodeAsPng(*textures[i]);
        target.openBeside(TextureFileName(target.stem, i)).Write(png.data(), png.size());
    }
    BufferedSink out(target.openBeside(target.stem + ".mtl"));
    for (std::size_t i = 0; i < names.size(); ++i)
    {
        const MeshLook& look = looks.All()[i];
        const NamedColor& material = mesh.materials[static_cast<std::size_t>(look.material)];
        out.Text("newmtl " + names[i] + "\n");
        WriteColor(out, "Ka", material.GetAmbientColor());
        WriteColor(out, "Kd", material.GetDiffuseColor());
        WriteColor(out, "Ks", material.GetSpecularColor());
        WriteColor(out, "Ke", material.GetEmissionColor());
        const float shininess = material.GetShininess();
        WriteNumbers(out, "Ns", {std::isfinite(shininess) ? shininess : 0.0f});
        WriteNumbers(out, "d", {UsualColor(material.GetDiffuseColor())[3]});
        out.Text("illum 2\n");  // with highlights
        if (look.texture != nullptr)
        {
            const auto index = static_cast<std::size_t>(
                std::find(textures.begin(), textures.end(), look.texture) - textures.begin());
            out.Text("map_Kd " + TextureFileName(target.stem, index) + "\n");
        }
    }
    out.Flush();
}

void WriteVertices(const SolidMesh& mesh, const NodeTransform& transform, const MeshPiece& piece,
                   BufferedSink& out)
{
    for (const std::uint32_t index : piece.vertices)
    {
        const MeshPoint position = transform.PositionInWorld(mesh.vertices[index].position);
        WriteNumbers(out, "v", {position[0], position[1], position[2]});
    }
    for (const std::uint32_t index : piece.vertices)
    {
        const float(&texture)[2] = mesh.vertices[index].texture;
        WriteNumbers(out, "vt", {texture[0], texture[1]});
    }
    for (const std::uint32_t index : piece.vertices)
    {
        const MeshPoint normal = transform.NormalInWorld(mesh.vertices[index].normal);
        WriteNumbers(out, "vn", {normal[0], normal[1], normal[2]});
    }
}

}  // namespace

void WriteObj(const SolidMesh& mesh, const MeshFileOptions& options, const MeshFileTarget& target)
{
    const MeshLooks looks(mesh);
    const std::vector<std::string> names = NamesOfLooks(mesh, looks);
    BufferedSink out(target.main);
    out.Text("# Orvane " + AsWord(options.name) + "\n");
    if (target.openBeside)
    {
        WriteMaterials(mesh, looks, names, target);
        out.Text("mtllib " + target.stem + ".mtl\n");
    }
    const std::vector<std::vector<const MeshGroup*>> groups = GroupsByNode(mesh);
    MeshCutter cutter(mesh);
    std::size_t first = 1;  // the number of the node's first vertex; a file counts from 1
    for (std::size_t node = 0; node < mesh.nodes.size(); ++node)
    {
        if (groups[node].empty())
        {
            continue;
        }
        const NodeTransform transform(mesh.nodes[node].transform);
        const MeshPiece piece = cutter.Cut(groups[node], transform.IsMirrored());
        out.Text("o " + AsWord(mesh.nodes[node].name) + "\n");
        WriteVertices(mesh, transform, piece, out);
        std::size_t next = 0;
        for (const MeshGroup* const group : groups[node])
        {
            out.Text("g " + std::string(NameOf(group->part)) + "\n");
            out.Text("usemtl " + names[looks.IndexOf(*group)] + "\n");
            for (const std::size_t end = next + group->indexCount; next < end; next += 3)
            {
                out.Text("f");
                for (std::size_t corner = 0; corner < 3; ++corner)
                {
                    const std::size_t number = first + piece.indices[next + corner];
                    out.Text(" ");
                    out.Number(number);
                    out.Text("/");
                    out.Number(number);
                    out.Text("/");
                    out.Number(number);
                }
                out.Text("\n");
            }
        }
        first += piece.vertices.size();
    }
    out.Flush();
}

}  // namespace orvane
