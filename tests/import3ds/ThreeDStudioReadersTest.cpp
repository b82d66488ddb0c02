// SPDX-License-Identifier: MIT
// Imports against what other readers find in the same files, where they are installed.
#include "tests/support/Chunks.h"
#include "tests/support/ExpectVector.h"
#include "tests/support/MeshFile.h"
#include "tests/support/MeshReaders.h"

#include <map>
#include <memory>
#include <set>

namespace
{

namespace fs = std::filesystem;

/// The real files, and one generated here.
class Files
{
public:
    Files() : generated_(MeshFile(5, Grid(20, 30), 4))
    {
        paths.emplace_back(generated_.Path());
        const fs::path real = ORVANE_SHARED "/data/3ds";
        if (fs::is_directory(real))
        {
            for (const fs::directory_entry& entry : fs::directory_iterator(real))
            {
                paths.push_back(entry.path().string());
            }
        }
    }

    std::vector<std::string> paths;

private:
    TemporaryFile generated_;
};

struct Reading
{
    int vertices = 0;
    int faces = 0;
    std::set<std::string> materials;  ///< of its faces
    float minimum[3] = {1e30f, 1e30f, 1e30f};
    float maximum[3] = {-1e30f, -1e30f, -1e30f};
};
using Readings = std::map<std::string, Reading>;  // by the meshes' names

[[maybe_unused]] Readings OurReadings(const std::string& path)
{
    ThreeDStudioObject node;
    EXPECT_EQ(node.CreateFromFile(path.c_str()), 1);
    Readings readings;
    for (int i = 0; i < node.GetChildCount(); ++i)
    {
        auto& mesh = dynamic_cast<TriangularMeshObject&>(*node.GetChildByIndex(i));
        Reading& reading = readings[mesh.name.Text()];
        reading.vertices = mesh.GetVerticies()->GetSize();
        reading.faces = mesh.GetFaces()->GetSize();
        for (const int material : FaceMaterials(mesh))
        {
            reading.materials.insert(node.materials.GetElement(material)->GetName());
        }
        // Back to z up.
        const Vector low = mesh.GetBoundsLocalMinimum();
        const Vector high = mesh.GetBoundsLocalMaximum();
        const float minimum[3] = {low.x, -high.z, low.y};
        const float maximum[3] = {high.x, -low.z, high.y};
        std::copy_n(minimum, 3, reading.minimum);
        std::copy_n(maximum, 3, reading.maximum);
    }
    return readings;
}

TEST(ThreeDStudioReaders, MeshesMaterialsAndBoundsAreThoseThatLib3dsFinds)
{
#ifdef ORVANE_HAS_LIB3DS
    const Files files;
    for (const std::string& path : files.paths)
    {
        SCOPED_TRACE(path);
        const std::unique_ptr<Lib3dsFile, decltype(&lib3ds_file_free)> file(
            lib3ds_file_load(path.c_str()), lib3ds_file_free);
        ASSERT_NE(file, nullptr);
        Readings ours = OurReadings(path);
        std::size_t count = 0;
        for (const Lib3dsMesh* mesh = file->meshes; mesh != nullptr; mesh = mesh->next, ++count)
        {
            SCOPED_TRACE(mesh->name);
            const Reading& reading = ours[mesh->name];
            EXPECT_EQ(reading.vertices, static_cast<int>(mesh->points));
            EXPECT_EQ(reading.faces, static_cast<int>(mesh->faces));
            std::set<std::string> materials;
            for (Lib3dsDword face = 0; face < mesh->faces; ++face)
            {
                const std::string name = mesh->faceL[face].material;
                materials.insert(name.empty() ? "Undefined" : name);
            }
            EXPECT_EQ(reading.materials, materials);
            for (int axis = 0; axis < 3; ++axis)
            {
                float minimum = 1e30f;
                float maximum = -1e30f;
                for (Lib3dsDword point = 0; point < mesh->points; ++point)
                {
                    minimum = std::min(minimum, mesh->pointL[point].pos[axis]);
                    maximum = std::max(maximum, mesh->pointL[point].pos[axis]);
                }
                EXPECT_NEAR(reading.minimum[axis], minimum, 1e-4) << axis;
                EXPECT_NEAR(reading.maximum[axis], maximum, 1e-4) << axis;
            }
        }
        EXPECT_EQ(ours.size(), count);

        ThreeDStudioObject node;
        node.CreateFromFile(path.c_str());
        std::set<std::string> names = {"Undefined"};
        for (const Lib3dsMaterial* material = file->materials; material != nullptr;
             material = material->next)
        {
            names.insert(material->name);
        }
        EXPECT_EQ(node.materials.GetSize(), static_cast<int>(names.size()));
        for (int i = 0; i < node.materials.GetSize(); ++i)
        {
            EXPECT_EQ(names.count(node.materials.GetElement(i)->GetName()), 1u) << i;
        }
    }
#else
    GTEST_SKIP() << "lib3ds is not installed";
#endif
}

TEST(ThreeDStudioReaders, FacesAreAsManyAsAssimpFinds)
{
#ifdef ORVANE_HAS_ASSIMP
    const Files files;
    for (const std::string& path : files.paths)
    {
        SCOPED_TRACE(path);
        const std::unique_ptr<const aiScene, decltype(&aiReleaseImport)> scene(
            aiImportFile(path.c_str(), 0), aiReleaseImport);
        ASSERT_NE(scene, nullptr);
        unsigned faces = 0;  // a mesh of theirs for each material
        for (unsigned i = 0; i < scene->mNumMeshes; ++i)
        {
            faces += scene->mMeshes[i]->mNumFaces;
        }
        unsigned ours = 0;
        for (const auto& [name, reading] : OurReadings(path))
        {
            ours += static_cast<unsigned>(reading.faces);
        }
        EXPECT_EQ(ours, faces);
    }
#else
    GTEST_SKIP() << "assimp is not installed";
#endif
}

}  // namespace
