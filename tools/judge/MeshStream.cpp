// SPDX-License-Identifier: MIT
#include "tools/judge/MeshStream.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <vector>

using namespace orvane;

namespace
{

/// Bytes of the text, positions, triangles and kind, each in 4 bytes, the volume in 8, the text.
void WriteHeader(RecordKind kind, const std::string& text, std::size_t positions,
                 std::size_t triangles, double volume)
{
    const std::uint32_t sizes[4] = {
        static_cast<std::uint32_t>(text.size()), static_cast<std::uint32_t>(positions),
        static_cast<std::uint32_t>(triangles), static_cast<std::uint32_t>(kind)};
    std::fwrite(sizes, sizeof sizes, 1, stdout);
    std::fwrite(&volume, sizeof volume, 1, stdout);
    std::fwrite(text.data(), 1, text.size(), stdout);
}

}  // namespace

void WriteRecord(RecordKind kind, const std::string& text)
{
    WriteHeader(kind, text, 0, 0, 0);
    if (kind == RecordKind::Face)
    {
        std::fflush(stdout);
    }
}

void WriteMesh(const std::string& name, const ProfileSolid& solid, double volume)
{
    static std::vector<std::array<std::uint32_t, 3>> corners;
    corners.clear();
    for (const SolidTriangle& triangle : solid.triangles)
    {
        corners.push_back(triangle.corners);
    }
    WriteHeader(RecordKind::Mesh, name, solid.positions.size(), corners.size(), volume);
    std::fwrite(solid.positions.data(), sizeof solid.positions[0], solid.positions.size(), stdout);
    std::fwrite(corners.data(), sizeof corners[0], corners.size(), stdout);
}
