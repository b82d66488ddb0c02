// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Generated 3D Studio files of any size, for tests and benchmarks.

#include "tests/support/ChunkBytes.h"

#include <cmath>

/// The contents of a vertex list and of a face list.
struct MeshLists
{
    std::vector<float> coordinates;  ///< x, y, z of each vertex
    std::vector<WORD> faceWords;     ///< three corners and the flags of each face

    int Vertices() const { return static_cast<int>(coordinates.size() / 3); }
    int Faces() const { return static_cast<int>(faceWords.size() / 4); }
};

/// A box with edges of length 1: 8 vertices and 12 faces.
inline MeshLists Box()
{
    return {{0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1},
            {0, 2, 1, 7, 0, 3, 2, 7, 4, 5, 6, 7, 4, 6, 7, 7, 0, 1, 5, 7, 0, 5, 4, 7,
             1, 2, 6, 7, 1, 6, 5, 7, 2, 3, 7, 7, 2, 7, 6, 7, 3, 0, 4, 7, 3, 4, 7, 7}};
}

/// A wavy grid with one triangle in each cell. A file can hold at most 65,535 vertices of it.
inline MeshLists Grid(int columns, int rows)
{
    MeshLists lists;
    for (int row = 0; row < rows; ++row)
    {
        for (int column = 0; column < columns; ++column)
        {
            const float x = static_cast<float>(column);
            const float y = static_cast<float>(row);
            const float z = 4.0f * std::sin(0.1f * x) * std::cos(0.07f * y);
            lists.coordinates.insert(lists.coordinates.end(), {x, y, z});
            if (column + 1 < columns && row + 1 < rows)
            {
                const int corner = row * columns + column;
                for (const int word : {corner, corner + 1, corner + columns, 7})
                {
                    lists.faceWords.push_back(static_cast<WORD>(word));
                }
            }
        }
    }
    return lists;
}

/// A file with copies of a mesh, side by side along x.
/// \param meshes the number of copies; they are named mesh0, mesh1 and so on.
/// \param groups the number of materials, named material0, material1 and so on. The faces of each
/// copy are divided evenly among them, in order.
inline Bytes MeshFile(int meshes, const MeshLists& lists, int groups)
{
    const auto words = [](const WORD* values, int count) {
        return RecordBytes().Raw(values, static_cast<std::size_t>(count) * sizeof(WORD));
    };
    const auto counted = [](int count) { return RecordBytes().Word(static_cast<WORD>(count)); };
    RecordBytes materials;
    RecordBytes faceGroups;
    const int inGroup = groups == 0 ? 0 : lists.Faces() / groups;
    for (int group = 0; group < groups; ++group)
    {
        const RecordBytes name = ZeroTerminated("material" + std::to_string(group));
        const RecordBytes color =
            RecordBytes().Byte(static_cast<BYTE>(30 * group)).Byte(128).Byte(255);
        materials.Append(ChunkOf(
            0xAFFF, {ChunkOf(0xA000, {name}), ChunkOf(0xA020, {ChunkOf(0x0011, {color})})}));
        std::vector<WORD> indices;
        for (int i = 0; i < inGroup; ++i)
        {
            indices.push_back(static_cast<WORD>(group * inGroup + i));
        }
        faceGroups.Append(
            ChunkOf(0x4130, {name, counted(inGroup), words(indices.data(), inGroup)}));
    }
    const RecordBytes faces = ChunkOf(
        0x4120,
        {counted(lists.Faces()), words(lists.faceWords.data(), 4 * lists.Faces()), faceGroups});
    float width = 0.0f;
    for (std::size_t i = 0; i < lists.coordinates.size(); i += 3)
    {
        width = std::max(width, lists.coordinates[i]);
    }
    RecordBytes objects;
    for (int mesh = 0; mesh < meshes; ++mesh)
    {
        std::vector<float> coordinates = lists.coordinates;
        for (std::size_t i = 0; i < coordinates.size(); i += 3)
        {
            coordinates[i] += 2.0f * width * static_cast<float>(mesh);
        }
        const RecordBytes vertices = ChunkOf(
            0x4110, {counted(lists.Vertices()),
                     RecordBytes().Raw(coordinates.data(), coordinates.size() * sizeof(float))});
        objects.Append(ChunkOf(0x4000, {ZeroTerminated("mesh" + std::to_string(mesh)),
                                        ChunkOf(0x4100, {vertices, faces})}));
    }
    return ChunkOf(0x4D4D, {ChunkOf(0x3D3D, {materials, objects})});
}
