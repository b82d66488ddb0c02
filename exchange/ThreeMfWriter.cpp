// SPDX-License-Identifier: MIT
#include "exchange/Formats.h"
#include "exchange/MeshParts.h"
#include "exchange/ZipWriter.h"
#include "solids/NodeTransform.h"
#include "solids/PositionWelder.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvane
{

namespace
{

constexpr std::string_view xmlHeader = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

constexpr std::string_view contentTypes =
    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">\n"
    "<Default Extension=\"rels\" "
    "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>\n"
    "<Default Extension=\"model\" "
    "ContentType=\"application/vnd.ms-package.3dmanufacturing-3dmodel+xml\"/>\n"
    "</Types>\n";

constexpr std::string_view relationships =
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">\n"
    "<Relationship Target=\"/3D/3dmodel.model\" Id=\"rel0\" "
    "Type=\"http://schemas.microsoft.com/3dmanufacturing/2013/01/3dmodel\"/>\n"
    "</Relationships>\n";

/// The number of the materials' group in the file. Objects have the numbers after it.
constexpr std::size_t materialGroup = 1;

const char* NameOf(LengthUnit unit)
{
    switch (unit)
    {
        case LengthUnit::Millimeter:
            return "millimeter";
        case LengthUnit::Centimeter:
            return "centimeter";
        case LengthUnit::Inch:
            return "inch";
        default:
            return "meter";
    }
}

/// The text as the value of an attribute.
std::string InXml(const std::string& text)
{
    std::string xml;
    for (const char each : OnOneLine(text))
    {
        switch (each)
        {
            case '&':
                xml += "&amp;";
                break;
            case '<':
                xml += "&lt;";
                break;
            case '>':
                xml += "&gt;";
                break;
            case '"':
                xml += "&quot;";
                break;
            default:
                xml += each;
        }
    }
    return xml;
}

/// The triangles of one object of the file. Corners at the same position are one vertex, whatever
/// their normals are, because printers take neighbours from that.
struct ObjectTriangles
{
    struct Triangle
    {
        std::array<std::uint32_t, 3> corners;
        std::size_t material;
    };

    std::vector<std::array<float, 3>> vertices;
    std::vector<Triangle> triangles;

    void Add(const SolidMesh& mesh, const MeshGroup& group, const NodeTransform& transform)
    {
        for (std::size_t i = group.firstIndex; i < group.firstIndex + group.indexCount; i += 3)
        {
            Triangle triangle = {{}, static_cast<std::size_t>(group.material)};
            std::array<std::uint32_t, 3>& corners = triangle.corners;
            for (std::size_t corner = 0; corner < 3; ++corner)
            {
                const MeshVertex& vertex = mesh.vertices[mesh.indices[i + corner]];
                const MeshPoint world = transform.PositionInWorld(vertex.position);
                const float stored[3] = {static_cast<float>(world[0]), static_cast<float>(world[1]),
                                         static_cast<float>(world[2])};
                corners[corner] = welder_.NumberOf(stored);
                if (welder_.Count() > vertices.size())
                {
                    vertices.push_back({stored[0], stored[1], stored[2]});
                }
            }
            if (transform.IsMirrored())
            {
                std::swap(corners[1], corners[2]);
            }
            // The format forbids triangles with two equal corners; they have no area anyway.
            if (corners[0] != corners[1] && corners[1] != corners[2] && corners[2] != corners[0])
            {
                triangles.push_back(triangle);
            }
        }
    }

private:
    PositionWelder welder_;
};

/// Writes the part of the archive that has the model.
class ModelWriter
{
public:
    ModelWriter(const SolidMesh& mesh, ByteSink& sink) : mesh_(mesh), out_(sink) {}

    void Write(const MeshFileOptions& options)
    {
        out_.Text(xmlHeader);
        out_.Text("<model unit=\"" + std::string(NameOf(options.unit)) + "\" ");
        out_.Text("xmlns=\"http://schemas.microsoft.com/3dmanufacturing/core/2015/02\">\n");
        if (!options.name.empty())
        {
            out_.Text("<metadata name=\"Title\">" + InXml(options.name) + "</metadata>\n");
        }
        out_.Text("<resources>\n");
        WriteMaterials();
        const std::vector<std::vector<const MeshGroup*>> groups = GroupsByNode(mesh_);
        for (std::size_t i = 0; i < mesh_.nodes.size(); ++i)
        {
            WriteNode(mesh_.nodes[i], groups[i]);
        }
        out_.Text("</resources>\n<build>\n");
        for (std::size_t i = 0; i < objects_; ++i)
        {
            WriteTag("<item", {{"objectid", materialGroup + 1 + i}}, "/>\n");
        }
        out_.Text("</build>\n</model>\n");
        out_.Flush();
    }

private:
    void WriteTag(std::string_view start,
                  std::initializer_list<std::pair<std::string_view, std::size_t>> attributes,
                  std::string_view end)
    {
        out_.Text(start);
        for (const std::pair<std::string_view, std::size_t>& each : attributes)
        {
            out_.Text(" ");
            out_.Text(each.first);
            out_.Text("=\"");
            out_.Number(each.second);
            out_.Text("\"");
        }
        out_.Text(end);
    }

    void WriteMaterials()
    {
        if (mesh_.materials.empty())
        {
            return;
        }
        WriteTag("<basematerials", {{"id", materialGroup}}, ">\n");
        for (const NamedColor& material : mesh_.materials)
        {
            std::string color = "#";
            for (const unsigned char byte : ColorBytes(material.GetDiffuseColor()))
            {
                constexpr char digits[] = "0123456789ABCDEF";
                color += {digits[byte >> 4], digits[byte & 15]};
            }
            out_.Text("<base name=\"" + InXml(NameOfMaterial(material)) + "\" displaycolor=\"" +
                      color + "\"/>\n");
        }
        out_.Text("</basematerials>\n");
    }

    /// One object for each line of a text, and for each other node.
    void WriteNode(const MeshNode& node, std::vector<const MeshGroup*> groups)
    {
        const NodeTransform transform(node.transform);
        std::stable_sort(groups.begin(), groups.end(),
                         [](const MeshGroup* a, const MeshGroup* b) { return a->line < b->line; });
        for (std::size_t i = 0; i < groups.size();)
        {
            const int line = groups[i]->line;
            ObjectTriangles object;
            for (; i < groups.size() && groups[i]->line == line; ++i)
            {
                object.Add(mesh_, *groups[i], transform);
            }
            const bool isOnlyLine = groups.front()->line == groups.back()->line;
            WriteObject(object,
                        node.name + (isOnlyLine ? "" : " (" + std::to_string(line + 1) + ")"));
        }
    }

    void WriteObject(const ObjectTriangles& object, const std::string& name)
    {
        if (object.triangles.empty())
        {
            return;
        }
        ++objects_;
        const std::size_t usual = object.triangles.front().material;
        WriteTag("<object",
                 {{"id", materialGroup + objects_}, {"pid", materialGroup}, {"pindex", usual}},
                 " type=\"model\" name=\"" + InXml(name) + "\">\n<mesh>\n<vertices>\n");
        for (const std::array<float, 3>& vertex : object.vertices)
        {
            out_.Text("<vertex x=\"");
            out_.Number(vertex[0]);
            out_.Text("\" y=\"");
            out_.Number(vertex[1]);
            out_.Text("\" z=\"");
            out_.Number(vertex[2]);
            out_.Text("\"/>\n");
        }
        out_.Text("</vertices>\n<triangles>\n");
        for (const ObjectTriangles::Triangle& triangle : object.triangles)
        {
            const std::array<std::uint32_t, 3>& corners = triangle.corners;
            WriteTag("<triangle", {{"v1", corners[0]}, {"v2", corners[1]}, {"v3", corners[2]}}, "");
            if (triangle.material != usual)
            {
                WriteTag("", {{"pid", materialGroup}, {"p1", triangle.material}}, "");
            }
            out_.Text("/>\n");
        }
        out_.Text("</triangles>\n</mesh>\n</object>\n");
    }

    const SolidMesh& mesh_;
    BufferedSink out_;
    std::size_t objects_ = 0;
};

void WriteFile(ZipWriter& zip, const std::string& name, std::string_view content)
{
    zip.BeginFile(name);
    zip.Write(xmlHeader.data(), xmlHeader.size());
    zip.Write(content.data(), content.size());
    zip.EndFile();
}

}  // namespace

void WriteThreeMf(const SolidMesh& mesh, const MeshFileOptions& options,
                  const MeshFileTarget& target)
{
    ZipWriter zip(target.main);
    WriteFile(zip, "[Content_Types].xml", contentTypes);
    WriteFile(zip, "_rels/.rels", relationships);
    zip.BeginFile("3D/3dmodel.model");
    ModelWriter(mesh, zip).Write(options);
    zip.EndFile();
    zip.Finish();
}

}  // namespace orvane
