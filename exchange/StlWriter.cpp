// SPDX-License-Identifier: MIT
#include "exchange/Formats.h"
#include "orvane/Error.h"
#include "solids/NodeTransform.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

namespace orvane
{

namespace
{

/// Perpendicular to a triangle and of unit length; 0, 0, 0 for a triangle without area.
MeshPoint NormalOf(const MeshPoint (&corners)[3])
{
    return Unit(Cross(Minus(corners[1], corners[0]), Minus(corners[2], corners[0])));
}

}  // namespace

void WriteStl(const SolidMesh& mesh, const MeshFileOptions& options, const MeshFileTarget& target)
{
    constexpr std::size_t headerBytes = 80;
    std::size_t indices = 0;
    for (const MeshGroup& group : mesh.groups)
    {
        indices += group.indexCount;
    }
    if (indices / 3 > std::numeric_limits<std::uint32_t>::max())
    {
        throw Error("STL file", std::to_string(indices / 3) + " triangles", "at most 4294967295");
    }
    // A file that begins with "solid" would be taken for one in text.
    std::string header = ("Orvane " + options.name).substr(0, headerBytes);
    header.resize(headerBytes);
    BufferedSink out(target.main);
    out.Text(header);
    out.LittleEndian(static_cast<std::uint32_t>(indices / 3));
    for (const MeshGroup& group : mesh.groups)
    {
        const NodeTransform transform(mesh.nodes[static_cast<std::size_t>(group.node)].transform);
        for (std::size_t i = group.firstIndex; i < group.firstIndex + group.indexCount; i += 3)
        {
            MeshPoint corners[3];
            for (std::size_t corner = 0; corner < 3; ++corner)
            {
                corners[corner] =
                    transform.PositionInWorld(mesh.vertices[mesh.indices[i + corner]].position);
            }
            if (transform.IsMirrored())
            {
                std::swap(corners[1], corners[2]);
            }
            const MeshPoint normal = NormalOf(corners);
            for (const MeshPoint& each : {normal, corners[0], corners[1], corners[2]})
            {
                for (const double number : each)
                {
                    out.LittleEndian(static_cast<float>(number));
                }
            }
            out.LittleEndian(std::uint16_t{0});  // no attributes
        }
    }
    out.Flush();
}

}  // namespace orvane
