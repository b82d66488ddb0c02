// SPDX-License-Identifier: MIT
// Files written by lib3ds: the import against the numbers that were written, and against what other
// libraries read.
#include "tests/support/Chunks.h"
#include "tests/support/ExpectVector.h"
#include "tests/support/Lib3dsFile.h"
#include "tests/support/MeshFile.h"

#include <cstdlib>
#include <map>
#include <set>

namespace
{

namespace fs = std::filesystem;

/// Workshop() in a file, imported.
class ThreeDStudioFiles : public testing::Test
{
protected:
    void SetUp() override
    {
        SaveWithLib3ds(*Workshop(), file.Path());
        ASSERT_EQ(node.CreateFromFile(file.Path()), 1);
        ASSERT_EQ(node.GetChildCount(), 3);
    }

    const TriangularMeshObject& Mesh(int index)
    {
        return dynamic_cast<const TriangularMeshObject&>(*node.GetChildByIndex(index));
    }
    const TriangularMeshObject& MeshNamed(const char* name)
    {
        for (int i = 0; i < node.GetChildCount(); ++i)
        {
            if (Mesh(i).name == name)
            {
                return Mesh(i);
            }
        }
        ADD_FAILURE() << "no mesh " << name;
        return Mesh(0);
    }
    std::vector<std::string> MaterialNamesOfFaces(const char* mesh)
    {
        std::vector<std::string> names;
        for (const int material : FaceMaterials(MeshNamed(mesh)))
        {
            names.emplace_back(node.materials.GetElement(material)->GetName());
        }
        return names;
    }

    /// An import that collects the ids of the chunks that nothing reads.
    class Watched : public ThreeDStudioObject
    {
    public:
        std::set<WORD> skipped;

    protected:
        void OnSkipped(const SkippedPart& part) override { skipped.insert(part.id); }
    };

    TemporaryFile file{Bytes{}};
    Watched node;
};

TEST_F(ThreeDStudioFiles, EveryMeshHasTheBoxThatWasWrittenWithYUp)
{
    // (x, y, z) of the file becomes (x, z, -y).
    EXPECT_XYZ_NEAR(MeshNamed("plain").GetBoundsLocalMinimum(), 0, 0, -2, 1e-5);
    EXPECT_XYZ_NEAR(MeshNamed("plain").GetBoundsLocalMaximum(), 1, 3, 0, 1e-5);
    EXPECT_XYZ_NEAR(MeshNamed("glass").GetBoundsLocalMinimum(), -4, -6, 2, 1e-5);
    EXPECT_XYZ_NEAR(MeshNamed("glass").GetBoundsLocalMaximum(), -1, -3, 5, 1e-5);
    // Its local axes are moved by 100 along x, which changes nothing.
    EXPECT_XYZ_NEAR(MeshNamed("mixed").GetBoundsLocalMinimum(), 10, 0, -0.5, 1e-5);
    EXPECT_XYZ_NEAR(MeshNamed("mixed").GetBoundsLocalMaximum(), 12, 20, 0, 1e-5);
}

TEST_F(ThreeDStudioFiles, ABoxHasEightVerticesTwelveFacesAndNormalsThatPointInwards)
{
    const TriangularMeshObject& mesh = MeshNamed("plain");
    ASSERT_EQ(mesh.GetVerticies()->GetSize(), 8);
    ASSERT_EQ(mesh.GetFaces()->GetSize(), 12);
    ASSERT_EQ(mesh.GetFaceNormals()->GetSize(), 12);
    ASSERT_EQ(mesh.GetVertexNormals()->GetSize(), 8);
    EXPECT_XYZ_NEAR(mesh.GetVerticies()->GetAt(6), 0, 3, -2, 1e-5);  // written as (0, 2, 3)
    const TriangularFace face = mesh.GetFaces()->GetAt(7);
    EXPECT_EQ(face.a, 3);
    EXPECT_EQ(face.b, 6);
    EXPECT_EQ(face.c, 7);
    EXPECT_XYZ_NEAR(mesh.GetFaceNormals()->GetAt(0), 0, 1, 0, 1e-6);   // the bottom's points up
    EXPECT_XYZ_NEAR(mesh.GetFaceNormals()->GetAt(2), 0, -1, 0, 1e-6);  // the top's points down
    EXPECT_XYZ_NEAR(mesh.GetFaceNormals()->GetAt(8), -1, 0, 0, 1e-6);  // the right side's, left
    // Vertex 0 is in two faces of the bottom, two of the front and one of the left: inwards that
    // is (1, 2, 2) / 3 in the file's coordinates.
    EXPECT_XYZ_NEAR(mesh.GetVertexNormals()->GetAt(0), 1 / 3.0, 2 / 3.0, -2 / 3.0, 1e-6);
}

/// Given the bytes of the colour.
void ExpectColor(const ColorVector& color, int red, int green, int blue, float alpha = 1)
{
    EXPECT_FLOAT_EQ(color.red, static_cast<float>(red) / 255);
    EXPECT_FLOAT_EQ(color.green, static_cast<float>(green) / 255);
    EXPECT_FLOAT_EQ(color.blue, static_cast<float>(blue) / 255);
    EXPECT_FLOAT_EQ(color.alpha, alpha);
}

TEST_F(ThreeDStudioFiles, MaterialsHaveTheColorsThatWereWritten)
{
    ASSERT_EQ(node.materials.GetSize(), 4);
    EXPECT_EQ(node.materials.FindName("Undefined"), 0);
    // lib3ds writes colours as bytes: 0.2 is 51, 0.4 is 102, 0.6 is 153 and 0.8 is 204.
    const NamedColor red = node.materials.GetAt(node.materials.FindName("Red"));
    ExpectColor(red.GetAmbientColor(), 51, 0, 0);
    ExpectColor(red.GetDiffuseColor(), 255, 102, 51);
    ExpectColor(red.GetSpecularColor(), 0, 0, 255);
    ExpectColor(red.GetEmissionColor(), 0, 0, 0);
    EXPECT_EQ(red.GetShininess(), 96);  // (1 - 0.25) x 128
    const NamedColor glass = node.materials.GetAt(node.materials.FindName("Glass"));
    ExpectColor(glass.GetDiffuseColor(), 0, 153, 204, 0.75f);
    const NamedColor lamp = node.materials.GetAt(node.materials.FindName("Lamp"));
    ExpectColor(lamp.GetEmissionColor(), 255, 255, 51);
}

TEST_F(ThreeDStudioFiles, FacesHaveTheMaterialsThatWereWritten)
{
    EXPECT_EQ(MaterialNamesOfFaces("plain"), std::vector<std::string>(12, "Undefined"));
    EXPECT_EQ(MaterialNamesOfFaces("glass"), std::vector<std::string>(12, "Glass"));
    std::vector<std::string> mixed(12, "Undefined");
    mixed[0] = mixed[1] = "Red";
    mixed[2] = mixed[3] = "Lamp";
    EXPECT_EQ(MaterialNamesOfFaces("mixed"), mixed);
}

TEST_F(ThreeDStudioFiles, TexturesLightsCamerasLocalAxesAndKeyframesAreSkipped)
{
    for (const WORD id : {0xA200, 0x4600, 0x4700, 0x4160, 0xB000})
    {
        EXPECT_EQ(node.skipped.count(id), 1u) << std::hex << id;
    }
}

/// What a reader finds in a mesh.
struct Reading
{
    int vertices = 0;
    int faces = 0;
    std::set<std::string> materials;  ///< of the faces
    Corner minimum = {1e30f, 1e30f, 1e30f};
    Corner maximum = {-1e30f, -1e30f, -1e30f};
};
using Readings = std::map<std::string, Reading>;  // by the names of the meshes

Readings OurReadings(const ThreeDStudioObject& node)
{
    Readings readings;
    for (POSITION position = node.GetChildren()->GetHeadPosition(); position != nullptr;)
    {
        const auto& mesh =
            dynamic_cast<const TriangularMeshObject&>(*node.GetChildren()->GetNext(position));
        Reading& reading = readings[mesh.name.Text()];
        reading.vertices = mesh.GetVerticies()->GetSize();
        reading.faces = mesh.GetFaces()->GetSize();
        for (const int material : FaceMaterials(mesh))
        {
            reading.materials.insert(node.materials.GetAt(material).GetName());
        }
        // Back to the file's coordinates.
        const Vector low = mesh.GetBoundsLocalMinimum();
        const Vector high = mesh.GetBoundsLocalMaximum();
        reading.minimum = {low.x, -high.z, low.y};
        reading.maximum = {high.x, -low.z, high.y};
    }
    return readings;
}

Readings ReadingsOf(const Lib3dsFile& file)
{
    Readings readings;
    for (const Lib3dsMesh* mesh = file.meshes; mesh != nullptr; mesh = mesh->next)
    {
        Reading& reading = readings[mesh->name];
        reading.vertices = static_cast<int>(mesh->points);
        reading.faces = static_cast<int>(mesh->faces);
        for (Lib3dsDword face = 0; face < mesh->faces; ++face)
        {
            const std::string name = mesh->faceL[face].material;
            reading.materials.insert(name.empty() ? "Undefined" : name);
        }
        for (Lib3dsDword point = 0; point < mesh->points; ++point)
        {
            const float* const at = mesh->pointL[point].pos;
            Corner& low = reading.minimum;
            Corner& high = reading.maximum;
            low = {std::min(low.x, at[0]), std::min(low.y, at[1]), std::min(low.z, at[2])};
            high = {std::max(high.x, at[0]), std::max(high.y, at[1]), std::max(high.z, at[2])};
        }
    }
    return readings;
}

void ExpectAsLib3dsReads(const std::string& path)
{
    SCOPED_TRACE(path);
    const Lib3dsFilePointer theirs = LoadWithLib3ds(path);
    ASSERT_NE(theirs, nullptr);
    ThreeDStudioObject node;
    ASSERT_EQ(node.CreateFromFile(path.c_str()), 1);

    const Readings found = OurReadings(node);
    const Readings expected = ReadingsOf(*theirs);
    EXPECT_EQ(found.size(), expected.size());
    for (const auto& [name, reading] : expected)
    {
        SCOPED_TRACE(name);
        ASSERT_EQ(found.count(name), 1u);
        const Reading& ours = found.at(name);
        EXPECT_EQ(ours.vertices, reading.vertices);
        EXPECT_EQ(ours.faces, reading.faces);
        EXPECT_EQ(ours.materials, reading.materials);
        EXPECT_XYZ_NEAR(ours.minimum, reading.minimum.x, reading.minimum.y, reading.minimum.z,
                        1e-4);
        EXPECT_XYZ_NEAR(ours.maximum, reading.maximum.x, reading.maximum.y, reading.maximum.z,
                        1e-4);
    }
    std::set<std::string> materials = {"Undefined"};
    for (const Lib3dsMaterial* material = theirs->materials; material != nullptr;
         material = material->next)
    {
        materials.insert(material->name);
    }
    std::set<std::string> ours;
    for (int i = 0; i < node.materials.GetSize(); ++i)
    {
        ours.insert(node.materials.GetElement(i)->GetName());
    }
    EXPECT_EQ(ours, materials);
}

#ifdef ORVANE_HAS_ASSIMP
void ExpectTheFacesThatAssimpReads(const std::string& path)
{
    SCOPED_TRACE(path);
    const std::unique_ptr<const aiScene, decltype(&aiReleaseImport)> scene(
        aiImportFile(path.c_str(), 0), aiReleaseImport);
    ASSERT_NE(scene, nullptr);
    unsigned faces = 0;  // assimp splits a mesh by its materials
    for (unsigned i = 0; i < scene->mNumMeshes; ++i)
    {
        faces += scene->mMeshes[i]->mNumFaces;
    }
    ThreeDStudioObject node;
    ASSERT_EQ(node.CreateFromFile(path.c_str()), 1);
    unsigned ours = 0;
    for (const auto& [name, reading] : OurReadings(node))
    {
        ours += static_cast<unsigned>(reading.faces);
    }
    EXPECT_EQ(ours, faces);
}
#endif

void ExpectAsOthersRead(const std::string& path)
{
    ExpectAsLib3dsReads(path);
#ifdef ORVANE_HAS_ASSIMP
    ExpectTheFacesThatAssimpReads(path);
#endif
}

TEST_F(ThreeDStudioFiles, AFileOfLib3dsIsReadAsOtherLibrariesReadIt)
{
    ExpectAsOthersRead(file.Path());
}

TEST(ThreeDStudioReaders, AGeneratedFileOfLargeMeshesIsReadAsOtherLibrariesReadIt)
{
    const TemporaryFile file(MeshFile(5, Grid(20, 30), 4));
    ExpectAsOthersRead(file.Path());
}

// Optional: it needs a folder of 3D Studio files in ORVANE_3DS_FOLDER; CONTRIBUTING.md has the
// command.
TEST(ThreeDStudioReaders, DISABLED_TheFilesOfAFolderAreReadAsOtherLibrariesReadThem)
{
    const char* const folder = std::getenv("ORVANE_3DS_FOLDER");
    ASSERT_NE(folder, nullptr) << "set ORVANE_3DS_FOLDER to a folder of 3D Studio files";
    int files = 0;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
    {
        ExpectAsOthersRead(entry.path().string());
        ++files;
    }
    EXPECT_GT(files, 0) << folder;
}

}  // namespace
