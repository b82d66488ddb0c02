// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// 3D Studio files written by lib3ds, for tests: a writer that shares nothing with the library.

#include "tests/support/MeshReaders.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

using Lib3dsFilePointer = std::unique_ptr<Lib3dsFile, decltype(&lib3ds_file_free)>;

inline Lib3dsFilePointer MakeLib3dsFile()
{
    return {lib3ds_file_new(), lib3ds_file_free};
}

inline Lib3dsFilePointer LoadWithLib3ds(const std::string& path)
{
    return {lib3ds_file_load(path.c_str()), lib3ds_file_free};
}

inline void SetName(char (&target)[64], const std::string& name)
{
    target[name.copy(target, sizeof target - 1)] = '\0';
}

inline Lib3dsMaterial& AddMaterial(Lib3dsFile& file, const std::string& name)
{
    Lib3dsMaterial* const material = lib3ds_material_new();
    SetName(material->name, name);
    lib3ds_file_insert_material(&file, material);
    return *material;
}

inline void SetColor(Lib3dsRgba& color, float red, float green, float blue)
{
    std::copy_n(std::initializer_list<float>{red, green, blue}.begin(), 3, color);
}

struct Corner
{
    float x;
    float y;
    float z;
};

/// Adds a box between two corners, z up: 8 vertices, and 12 faces that run counter-clockwise seen
/// from outside. Faces 0 and 1 are the bottom, 2 and 3 the top.
/// \param materials of the faces in order; empty for a face without one, and for the faces past the
/// list.
inline Lib3dsMesh& AddBox(Lib3dsFile& file, const std::string& name, Corner low, Corner high,
                          const std::vector<std::string>& materials = {})
{
    Lib3dsMesh* const mesh = lib3ds_mesh_new(name.c_str());
    lib3ds_mesh_new_point_list(mesh, 8);
    for (int i = 0; i < 8; ++i)
    {
        mesh->pointL[i].pos[0] = (i & 1) != 0 ? high.x : low.x;
        mesh->pointL[i].pos[1] = (i & 2) != 0 ? high.y : low.y;
        mesh->pointL[i].pos[2] = (i & 4) != 0 ? high.z : low.z;
    }
    static constexpr Lib3dsWord corners[12][3] = {{0, 2, 3}, {0, 3, 1}, {4, 5, 7}, {4, 7, 6},
                                                  {0, 1, 5}, {0, 5, 4}, {3, 2, 6}, {3, 6, 7},
                                                  {1, 3, 7}, {1, 7, 5}, {2, 0, 4}, {2, 4, 6}};
    lib3ds_mesh_new_face_list(mesh, 12);
    for (std::size_t i = 0; i < 12; ++i)
    {
        std::copy_n(corners[i], 3, mesh->faceL[i].points);
        SetName(mesh->faceL[i].material, i < materials.size() ? materials[i] : std::string());
    }
    lib3ds_file_insert_mesh(&file, mesh);
    return *mesh;
}

/// Three boxes, three materials, a texture, a camera, a light and keyframes:
/// - "plain" from (0, 0, 0) to (1, 2, 3), without materials
/// - "glass" from (-4, -5, -6) to (-1, -2, -3), all in the material "Glass"
/// - "mixed" from (10, 0, 0) to (12, 0.5, 20), the bottom "Red", the top "Lamp", the rest without
inline Lib3dsFilePointer Workshop()
{
    Lib3dsFilePointer file = MakeLib3dsFile();
    Lib3dsMaterial& red = AddMaterial(*file, "Red");
    SetColor(red.ambient, 0.2f, 0, 0);
    SetColor(red.diffuse, 1, 0.4f, 0.2f);
    SetColor(red.specular, 0, 0, 1);
    red.shininess = 0.25f;
    SetName(red.texture1_map.name, "BRICK.BMP");
    Lib3dsMaterial& glass = AddMaterial(*file, "Glass");
    SetColor(glass.diffuse, 0, 0.6f, 0.8f);
    glass.transparency = 0.25f;
    Lib3dsMaterial& lamp = AddMaterial(*file, "Lamp");
    SetColor(lamp.diffuse, 1, 1, 0.2f);
    lamp.self_illum = LIB3DS_TRUE;

    AddBox(*file, "plain", {0, 0, 0}, {1, 2, 3});
    AddBox(*file, "glass", {-4, -5, -6}, {-1, -2, -3}, std::vector<std::string>(12, "Glass"));
    Lib3dsMesh& mixed =
        AddBox(*file, "mixed", {10, 0, 0}, {12, 0.5f, 20}, {"Red", "Red", "Lamp", "Lamp"});
    // The local axes of a mesh: moved, so that a reader that applied them would show it.
    mixed.matrix[3][0] = 100;

    lib3ds_file_insert_camera(file.get(), lib3ds_camera_new("eye"));
    lib3ds_file_insert_light(file.get(), lib3ds_light_new("sun"));
    for (const char* const name : {"plain", "glass", "mixed"})
    {
        Lib3dsNode* const node = lib3ds_node_new_object();
        SetName(node->name, name);
        node->parent_id = LIB3DS_NO_PARENT;
        lib3ds_file_insert_node(file.get(), node);
    }
    return file;
}

inline void SaveWithLib3ds(Lib3dsFile& file, const std::string& path)
{
    ASSERT_TRUE(lib3ds_file_save(&file, path.c_str()));
}
