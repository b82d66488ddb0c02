// SPDX-License-Identifier: MIT
#include "orvane/Error.h"
#include "tests/support/MeshFiles.h"
#include "tests/support/SolidMeshes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <limits>
#include <locale>

using orvane::Error;
using orvane::MeshFormat;
using orvane::SolidMesh;

namespace
{

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float infinite = std::numeric_limits<float>::infinity();

/// Expects that no format takes a mesh. Returns the last Error's text.
std::string RefusalOf(const SolidMesh& mesh)
{
    std::string text;
    for (const MeshFormat format : FormatsOfThisBuild())
    {
        try
        {
            WriteInMemory(mesh, format);
            ADD_FAILURE() << "format " << static_cast<int>(format) << " takes it";
        }
        catch (const Error& error)
        {
            text = error.what();
        }
    }
    return text;
}

}  // namespace

TEST(MeshWriter, NumbersThatAreNotFiniteAreRefusedWithTheNodesName)
{
    SolidMesh mesh = OneTriangle();
    mesh.vertices[1].position[2] = notANumber;
    EXPECT_EQ(RefusalOf(mesh),
              "node \"triangle\": found the position of vertex 1 is not finite, expected finite "
              "numbers");
    mesh = OneTriangle();
    mesh.vertices[2].normal[0] = infinite;
    EXPECT_NE(RefusalOf(mesh).find("node \"triangle\": found the normal"), std::string::npos);
    mesh = OneTriangle();
    mesh.vertices[0].texture[1] = notANumber;
    EXPECT_NE(RefusalOf(mesh).find("texture coordinate of vertex 0"), std::string::npos);
    mesh = OneTriangle();
    mesh.nodes[0].transform[12] = 1e39;  // no float is so large
    EXPECT_NE(RefusalOf(mesh).find("position of vertex 0"), std::string::npos);
}

TEST(MeshWriter, AVertexThatNoTriangleUsesMayBeAnything)
{
    SolidMesh mesh = OneTriangle();
    mesh.vertices.push_back({{notANumber, 0, 0}, {0, 0, 1}, {0, 0}});
    for (const MeshFormat format : FormatsOfThisBuild())
    {
        EXPECT_NO_THROW(WriteInMemory(mesh, format));
    }
}

TEST(MeshWriter, IndicesThatLeadOutOfTheMeshAreRefused)
{
    SolidMesh mesh = OneTriangle();
    mesh.indices[2] = 3;
    EXPECT_EQ(RefusalOf(mesh), "node \"triangle\": found vertex 3, expected a number below 3");
    mesh = OneTriangle();
    mesh.groups[0].indexCount = 6;
    RefusalOf(mesh);
    mesh = OneTriangle();
    mesh.groups[0].firstIndex = std::numeric_limits<std::size_t>::max();
    RefusalOf(mesh);
    mesh = OneTriangle();
    mesh.groups[0].indexCount = 2;
    RefusalOf(mesh);
    mesh = OneTriangle();
    mesh.groups[0].node = 1;
    RefusalOf(mesh);
    mesh = OneTriangle();
    mesh.groups[0].material = -1;
    RefusalOf(mesh);
}

TEST(MeshWriter, FilesAreTheSameInAGermanLocale)
{
    SolidMesh mesh;
    AddCube(mesh, "cube").transform[12] = 0.25;
    mesh.materials[0].SetDiffuseColor(ColorVector(0.5f, 0.25f, 0.125f, 1));
    std::vector<std::string> plain;
    for (const MeshFormat format : FormatsOfThisBuild())
    {
        const MeshFiles files = WriteInMemory(mesh, format);
        plain.push_back(files.Text());
        plain.push_back(format == MeshFormat::Obj ? files.TextOf("mesh.mtl") : "");
    }
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr)
    {
        GTEST_SKIP() << "no German locale is installed";
    }
    ASSERT_EQ(std::localeconv()->decimal_point, std::string(","));
    const std::locale before = std::locale::global(std::locale("de_DE.UTF-8"));
    std::vector<std::string> german;
    for (const MeshFormat format : FormatsOfThisBuild())
    {
        const MeshFiles files = WriteInMemory(mesh, format);
        german.push_back(files.Text());
        german.push_back(format == MeshFormat::Obj ? files.TextOf("mesh.mtl") : "");
    }
    std::locale::global(before);
    std::setlocale(LC_ALL, "C");
    for (std::size_t i = 0; i < plain.size(); ++i)
    {
        EXPECT_EQ(plain[i] == german[i], true) << "file " << i;
    }
}

TEST(MeshWriter, AFormatIsBuiltOrRefusedWithTheNameOfItsLibrary)
{
    const std::vector<MeshFormat> built = FormatsOfThisBuild();
    for (const MeshFormat format : {MeshFormat::Glb, MeshFormat::Gltf})
    {
        if (std::find(built.begin(), built.end(), format) != built.end())
        {
            EXPECT_FALSE(WriteInMemory(OneTriangle(), format).main.bytes.empty());
            continue;
        }
        try
        {
            WriteInMemory(OneTriangle(), format);
            ADD_FAILURE() << "format " << static_cast<int>(format);
        }
        catch (const Error& error)
        {
            EXPECT_NE(error.Problem().find("was built without tinygltf"), std::string::npos);
        }
    }
}

TEST(MeshWriter, AnErrorOfTheSinkIsPassedOn)
{
    struct FullSink : orvane::ByteSink
    {
        void Write(const void*, std::size_t) override { throw Error("disk", "full"); }
    };
    for (const MeshFormat format : FormatsOfThisBuild())
    {
        FullSink sink;
        orvane::MeshScene scene;
        scene.mesh = OneTriangle();
        try
        {
            orvane::WriteMeshFile(scene, format, {}, {sink, "mesh", nullptr});
            ADD_FAILURE() << "format " << static_cast<int>(format);
        }
        catch (const Error& error)
        {
            EXPECT_STREQ(error.what(), "disk: full");
        }
    }
}
