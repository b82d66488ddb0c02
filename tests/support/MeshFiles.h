// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Mesh files in memory.

#include "exchange/MeshWriter.h"
#include "orvane/Error.h"

#include <map>
#include <string>
#include <vector>

/// The formats that the library was built with.
inline std::vector<orvane::MeshFormat> FormatsOfThisBuild()
{
    using orvane::MeshFormat;
    std::vector<MeshFormat> formats;
    for (const MeshFormat format : {MeshFormat::Glb, MeshFormat::Gltf, MeshFormat::Stl,
                                    MeshFormat::ThreeMf, MeshFormat::Obj, MeshFormat::Ply})
    {
        try
        {
            orvane::CheckFormat(format);
            formats.push_back(format);
        }
        catch (const orvane::Error&)
        {}
    }
    return formats;
}

/// A mesh file with those beside it.
struct MeshFiles
{
    orvane::MemorySink main;
    std::map<std::string, orvane::MemorySink> beside;  ///< by name

    std::string Text() const { return {main.bytes.begin(), main.bytes.end()}; }
    std::string TextOf(const std::string& name) const
    {
        const orvane::MemorySink& sink = beside.at(name);
        return {sink.bytes.begin(), sink.bytes.end()};
    }
};

/// Writes a scene in a format as a file with the stem "mesh".
inline MeshFiles WriteInMemory(orvane::MeshScene scene, orvane::MeshFormat format,
                               const orvane::MeshFileOptions& options = {})
{
    MeshFiles files;
    orvane::PlaceScene(scene, format, options);
    const orvane::MeshFileTarget target = {
        files.main, "mesh",
        [&files](const std::string& name) -> orvane::ByteSink& { return files.beside[name]; }};
    orvane::WriteMeshFile(scene, format, options, target);
    return files;
}

inline MeshFiles WriteInMemory(const orvane::SolidMesh& mesh, orvane::MeshFormat format,
                               const orvane::MeshFileOptions& options = {})
{
    orvane::MeshScene scene;
    scene.mesh = mesh;
    return WriteInMemory(std::move(scene), format, options);
}
