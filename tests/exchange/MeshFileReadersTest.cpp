// SPDX-License-Identifier: MIT
// Every format is read back by assimp, where assimp is installed.
#include "tests/support/MeshFiles.h"
#include "tests/support/MeshReaders.h"
#include "tests/support/SolidMeshes.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#ifdef ORVANE_HAS_ASSIMP

#include <assimp/cfileio.h>
#include <assimp/postprocess.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

using orvane::MeshFileOptions;
using orvane::MeshFormat;
using orvane::SolidMesh;

namespace
{

/// What a file has, as assimp sees it.
struct ReadMesh
{
    std::size_t triangles = 0;
    float minimum[3] = {1e30f, 1e30f, 1e30f};
    float maximum[3] = {-1e30f, -1e30f, -1e30f};
    std::map<std::string, std::size_t> trianglesOfColors;  ///< by red, green and blue, 0 to 255
    double sixfoldVolume = 0;
    std::set<std::string> names;  ///< of nodes

    void Add(const aiMesh& mesh, const aiMatrix4x4& m, const aiScene& scene)
    {
        const aiMaterial& material = *scene.mMaterials[mesh.mMaterialIndex];
        aiColor4D color(0, 0, 0, 1);
        aiGetMaterialColor(&material, AI_MATKEY_COLOR_DIFFUSE, &color);
        for (unsigned i = 0; i < mesh.mNumFaces; ++i)
        {
            const aiFace& face = mesh.mFaces[i];
            ASSERT_EQ(face.mNumIndices, 3u);
            aiVector3D p[3];
            for (int corner = 0; corner < 3; ++corner)
            {
                const aiVector3D& v = mesh.mVertices[face.mIndices[corner]];
                p[corner] = aiVector3D(m.a1 * v.x + m.a2 * v.y + m.a3 * v.z + m.a4,
                                       m.b1 * v.x + m.b2 * v.y + m.b3 * v.z + m.b4,
                                       m.c1 * v.x + m.c2 * v.y + m.c3 * v.z + m.c4);
                for (unsigned axis = 0; axis < 3; ++axis)
                {
                    minimum[axis] = std::min(minimum[axis], p[corner][axis]);
                    maximum[axis] = std::max(maximum[axis], p[corner][axis]);
                }
            }
            sixfoldVolume += p[0].x * (p[1].y * p[2].z - p[1].z * p[2].y) +
                             p[0].y * (p[1].z * p[2].x - p[1].x * p[2].z) +
                             p[0].z * (p[1].x * p[2].y - p[1].y * p[2].x);
            aiColor4D shown = color;
            if (mesh.mColors[0] != nullptr)
            {
                shown = mesh.mColors[0][face.mIndices[0]];
            }
            const auto byte = [](float value) {
                return std::to_string(static_cast<int>(value * 255 + 0.5f)) + " ";
            };
            ++trianglesOfColors[byte(shown.r) + byte(shown.g) + byte(shown.b)];
            ++triangles;
        }
    }

    void Add(const aiNode& node, const aiMatrix4x4& above, const aiScene& scene)
    {
        aiMatrix4x4 matrix = above;
        aiMultiplyMatrix4(&matrix, &node.mTransformation);
        names.insert(node.mName.C_Str());
        for (unsigned i = 0; i < node.mNumMeshes; ++i)
        {
            Add(*scene.mMeshes[node.mMeshes[i]], matrix, scene);
        }
        for (unsigned i = 0; i < node.mNumChildren; ++i)
        {
            Add(*node.mChildren[i], matrix, scene);
        }
    }
};

ReadMesh ReadBack(const MeshFiles& files, const std::string& ending)
{
    const std::string folder = TemporaryFolder() + "mesh-files/";
    std::filesystem::create_directories(folder);
    const std::string path = folder + "mesh" + ending;
    std::ofstream(path, std::ios::binary) << files.Text();
    for (const auto& beside : files.beside)
    {
        std::ofstream(folder + beside.first, std::ios::binary) << files.TextOf(beside.first);
    }
    ReadMesh read;
    const aiScene* const scene = aiImportFile(path.c_str(), aiProcess_Triangulate);
    if (scene == nullptr)
    {
        ADD_FAILURE() << ending << ": " << aiGetErrorString();
        return read;
    }
    read.Add(*scene->mRootNode, aiMatrix4x4(), *scene);
    aiReleaseImport(scene);
    std::filesystem::remove_all(folder);
    return read;
}

/// A cube of length 1 at the origin, one twice as wide beside it, and one that is mirrored.
SolidMesh ThreeCubes()
{
    SolidMesh mesh;
    AddCube(mesh, "first");
    AddCube(mesh, "second").transform = {2, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 3, 0, 0, 1};
    AddCube(mesh, "third").transform = {-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 8, -0.5, 0, 1};
    return mesh;
}

class MeshFileReaders : public testing::TestWithParam<std::pair<MeshFormat, const char*>>
{};

}  // namespace

TEST_P(MeshFileReaders, TrianglesBoundsVolumeAndColoursAreTheMeshs)
{
    const MeshFormat format = GetParam().first;
    const std::vector<MeshFormat> built = FormatsOfThisBuild();
    if (std::find(built.begin(), built.end(), format) == built.end())
    {
        GTEST_SKIP() << "the library was built without this format";
    }
    MeshFileOptions options;
    options.em = 0.5;
    const ReadMesh read = ReadBack(WriteInMemory(ThreeCubes(), format, options), GetParam().second);
    EXPECT_EQ(read.triangles, 36u);
    const float minimum[3] = {0, -0.25f, 0};
    const float maximum[3] = {4, 0.5f, 0.5f};
    for (int axis = 0; axis < 3; ++axis)
    {
        EXPECT_FLOAT_EQ(read.minimum[axis], minimum[axis]) << axis;
        EXPECT_FLOAT_EQ(read.maximum[axis], maximum[axis]) << axis;
    }
    // Triangles run counter-clockwise seen from outside; the volumes are 1, 2 and 1 eighths.
    EXPECT_NEAR(read.sixfoldVolume / 6, 0.5, 1e-6);
    // STL has no colours, and assimp gives all triangles of an object of a 3MF file one material.
    if (format != MeshFormat::Stl && format != MeshFormat::ThreeMf)
    {
        EXPECT_EQ(read.trianglesOfColors,
                  (std::map<std::string, std::size_t>{{"255 0 0 ", 12}, {"0 0 255 ", 24}}));
    }
}

INSTANTIATE_TEST_SUITE_P(
    EveryFormat, MeshFileReaders,
    testing::Values(std::pair(MeshFormat::Glb, ".glb"), std::pair(MeshFormat::Gltf, ".gltf"),
                    std::pair(MeshFormat::Stl, ".stl"), std::pair(MeshFormat::ThreeMf, ".3mf"),
                    std::pair(MeshFormat::Obj, ".obj"), std::pair(MeshFormat::Ply, ".ply")),
    [](const auto& info) { return std::string(info.param.second).substr(1); });

TEST(MeshFileNames, OfObjAndGltfFilesAreUtf8)
{
    SolidMesh mesh;
    AddCube(mesh, "\xC3\x84ra");
    EXPECT_EQ(ReadBack(WriteInMemory(mesh, MeshFormat::Obj), ".obj").names.count("\xC3\x84ra"), 1u);
    const std::vector<MeshFormat> built = FormatsOfThisBuild();
    if (std::find(built.begin(), built.end(), MeshFormat::Glb) != built.end())
    {
        EXPECT_EQ(ReadBack(WriteInMemory(mesh, MeshFormat::Glb), ".glb").names.count("\xC3\x84ra"),
                  1u);
    }
}

#endif
