// SPDX-License-Identifier: MIT
#include "exchange/MeshWriter.h"

#include "exchange/Formats.h"
#include "exchange/MeshParts.h"
#include "orvane/Error.h"

namespace orvane
{

void CheckFormat([[maybe_unused]] MeshFormat format)
{
#ifndef ORVANE_WITH_GLTF
    if (format == MeshFormat::Glb || format == MeshFormat::Gltf)
    {
        throw Error("glTF", "this library was built without tinygltf (ORVANE_WITH_GLTF)");
    }
#endif
}

void WriteMeshFile(const MeshScene& scene, MeshFormat format, const MeshFileOptions& options,
                   const MeshFileTarget& target)
{
    CheckFormat(format);
    CheckMesh(scene.mesh);
    switch (format)
    {
        case MeshFormat::Stl:
            return WriteStl(scene.mesh, options, target);
        case MeshFormat::Ply:
            return WritePly(scene.mesh, options, target);
        case MeshFormat::Obj:
            return WriteObj(scene.mesh, options, target);
#ifdef ORVANE_WITH_GLTF
        case MeshFormat::Glb:
        case MeshFormat::Gltf:
            return WriteGltf(scene, options, target, format == MeshFormat::Glb);
#endif
        case MeshFormat::ThreeMf:
            return WriteThreeMf(scene.mesh, options, target);
        default:
            throw Error("mesh file", "unknown format");
    }
}

}  // namespace orvane
