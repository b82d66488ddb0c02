// SPDX-License-Identifier: MIT
#include "tests/support/MeshFiles.h"
#include "tests/support/SolidMeshes.h"

#include <Model/COM/NMR_DLLInterfaces.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

using orvane::MeshFileOptions;
using orvane::MeshFormat;
using orvane::SolidMesh;

namespace
{

using Handle = NMR::PLib3MFBase*;

struct ReadTriangle
{
    DWORD corners[3];
    DWORD material;
};

struct ReadObject
{
    std::string name;
    std::vector<NMR::MODELMESHVERTEX> vertices;
    std::vector<ReadTriangle> triangles;
};

/// A 3MF file as lib3mf reads it.
struct ReadFile
{
    explicit ReadFile(std::vector<unsigned char> bytes)
    {
        EXPECT_EQ(NMR::lib3mf_createmodel(&model), LIB3MF_OK);
        Handle reader = nullptr;
        EXPECT_EQ(NMR::lib3mf_model_queryreader(model, "3mf", &reader), LIB3MF_OK);
        EXPECT_EQ(NMR::lib3mf_reader_readfrombuffer(reader, bytes.data(), bytes.size()), LIB3MF_OK);
        DWORD warnings = 0;
        NMR::lib3mf_reader_getwarningcount(reader, &warnings);
        EXPECT_EQ(warnings, 0u);
        NMR::lib3mf_release(reader);
        NMR::lib3mf_model_getunit(model, &unit);
        ReadObjects();
        ReadMaterials();
    }
    ~ReadFile() { NMR::lib3mf_release(model); }
    ReadFile(const ReadFile&) = delete;
    ReadFile& operator=(const ReadFile&) = delete;

    void ReadObjects()
    {
        Handle items = nullptr;
        ASSERT_EQ(NMR::lib3mf_model_getmeshobjects(model, &items), LIB3MF_OK);
        BOOL hasNext = 0;
        while (NMR::lib3mf_resourceiterator_movenext(items, &hasNext) == LIB3MF_OK && hasNext)
        {
            Handle mesh = nullptr;
            ASSERT_EQ(NMR::lib3mf_resourceiterator_getcurrent(items, &mesh), LIB3MF_OK);
            ReadMesh(mesh, objects.emplace_back());
            NMR::lib3mf_release(mesh);
        }
        NMR::lib3mf_release(items);
    }

    static void ReadMesh(Handle mesh, ReadObject& object)
    {
        char name[200] = {};
        ULONG length = 0;
        NMR::lib3mf_object_getnameutf8(mesh, name, sizeof(name), &length);
        object.name = name;
        DWORD count = 0;
        NMR::lib3mf_meshobject_getvertexcount(mesh, &count);
        object.vertices.resize(count);
        for (DWORD i = 0; i < count; ++i)
        {
            NMR::lib3mf_meshobject_getvertex(mesh, i, &object.vertices[i]);
        }
        NMR::lib3mf_meshobject_gettrianglecount(mesh, &count);
        Handle properties = nullptr;
        ASSERT_EQ(NMR::lib3mf_meshobject_createpropertyhandler(mesh, &properties), LIB3MF_OK);
        for (DWORD i = 0; i < count; ++i)
        {
            NMR::MODELMESHTRIANGLE triangle;
            NMR::lib3mf_meshobject_gettriangle(mesh, i, &triangle);
            DWORD group = 0;
            DWORD material = 0;
            NMR::lib3mf_propertyhandler_getbasematerial(properties, i, &group, &material);
            const DWORD* const corners = triangle.m_nIndices;
            object.triangles.push_back({{corners[0], corners[1], corners[2]}, material});
        }
        NMR::lib3mf_release(properties);
    }

    void ReadMaterials()
    {
        Handle groups = nullptr;
        ASSERT_EQ(NMR::lib3mf_model_getbasematerials(model, &groups), LIB3MF_OK);
        BOOL hasNext = 0;
        ASSERT_EQ(NMR::lib3mf_resourceiterator_movenext(groups, &hasNext), LIB3MF_OK);
        ASSERT_TRUE(hasNext);
        Handle group = nullptr;
        NMR::lib3mf_resourceiterator_getcurrent(groups, &group);
        DWORD count = 0;
        NMR::lib3mf_basematerial_getcount(group, &count);
        for (DWORD i = 0; i < count; ++i)
        {
            char name[200] = {};
            ULONG length = 0;
            BYTE c[4] = {};
            NMR::lib3mf_basematerial_getnameutf8(group, i, name, sizeof(name), &length);
            NMR::lib3mf_basematerial_getdisplaycolor(group, i, &c[0], &c[1], &c[2], &c[3]);
            materials.push_back(std::string(name) + " " + std::to_string(c[0]) + " " +
                                std::to_string(c[1]) + " " + std::to_string(c[2]) + " " +
                                std::to_string(c[3]));
        }
        NMR::lib3mf_release(group);
        NMR::lib3mf_release(groups);
    }

    Handle model = nullptr;
    DWORD unit = 0;
    std::vector<ReadObject> objects;
    std::vector<std::string> materials;
};

}  // namespace

TEST(ThreeMfWriter, ACubeHasEightVerticesAndItsMaterials)
{
    SolidMesh mesh;
    AddCube(mesh, "a <cube> & \"more\" W\xC3\xBCrfel\nlines");
    MeshFileOptions options;
    options.unit = orvane::LengthUnit::Millimeter;
    options.em = 12.5;
    const ReadFile file(WriteInMemory(mesh, MeshFormat::ThreeMf, options).main.bytes);
    EXPECT_EQ(file.unit, NMR::MODELUNIT_MILLIMETER);
    ASSERT_EQ(file.objects.size(), 1u);
    const ReadObject& cube = file.objects[0];
    EXPECT_EQ(cube.name, "a <cube> & \"more\" W\xC3\xBCrfel lines");
    ASSERT_EQ(cube.vertices.size(), 8u);
    // The first square is the front: (0, 0, 1), (1, 0, 1), (1, 1, 1) and (0, 1, 1).
    EXPECT_EQ(cube.vertices[2].m_fPosition[0], 12.5f);
    EXPECT_EQ(cube.vertices[2].m_fPosition[1], 12.5f);
    EXPECT_EQ(cube.vertices[2].m_fPosition[2], 12.5f);
    ASSERT_EQ(cube.triangles.size(), 12u);
    for (std::size_t i = 0; i < 12; ++i)
    {
        EXPECT_EQ(cube.triangles[i].material, i < 4 ? 0u : 1u) << i;
    }
    EXPECT_EQ(file.materials, (std::vector<std::string>{"Face 255 0 0 255", "Edge 0 0 255 128"}));
}

TEST(ThreeMfWriter, EveryLineAndEveryOtherNodeIsAnObject)
{
    SolidMesh mesh;
    AddCube(mesh, "text");
    AddCube(mesh, "mesh");
    // The first node has two lines: the squares 0, 1 and 4, and the squares 2, 3 and 5.
    const int lines[] = {0, 0, 1, 1, 0, 1};
    for (std::size_t i = 0; i < 6; ++i)
    {
        mesh.groups[i].line = lines[i];
    }
    const ReadFile file(WriteInMemory(mesh, MeshFormat::ThreeMf).main.bytes);
    EXPECT_EQ(file.unit, NMR::MODELUNIT_METER);
    ASSERT_EQ(file.objects.size(), 3u);
    EXPECT_EQ(file.objects[0].name, "text (1)");
    EXPECT_EQ(file.objects[0].triangles.size(), 6u);
    EXPECT_EQ(file.objects[1].name, "text (2)");
    EXPECT_EQ(file.objects[1].triangles.size(), 6u);
    EXPECT_EQ(file.objects[2].name, "mesh");
    EXPECT_EQ(file.objects[2].triangles.size(), 12u);
}

TEST(ThreeMfWriter, ATriangleWithTwoEqualCornersIsLeftOut)
{
    SolidMesh mesh;
    AddCube(mesh, "cube");
    mesh.vertices[mesh.indices[1]] = mesh.vertices[mesh.indices[0]];
    const ReadFile file(WriteInMemory(mesh, MeshFormat::ThreeMf).main.bytes);
    EXPECT_EQ(file.objects[0].triangles.size(), 11u);
}

TEST(ThreeMfWriter, AMirroredNodeIsWrittenCounterClockwise)
{
    SolidMesh mesh = OneTriangle();
    mesh.nodes[0].transform[0] = -1;
    const ReadFile file(WriteInMemory(mesh, MeshFormat::ThreeMf).main.bytes);
    const ReadTriangle& triangle = file.objects[0].triangles[0];
    const ReadObject& object = file.objects[0];
    EXPECT_EQ(object.vertices[triangle.corners[1]].m_fPosition[1], 1);   // (0, 1, 0)
    EXPECT_EQ(object.vertices[triangle.corners[2]].m_fPosition[0], -1);  // (-1, 0, 0)
}

TEST(ThreeMfWriter, PositionsAreTheSameBitsAgain)
{
    SolidMesh mesh = OneTriangle();
    mesh.vertices[1].position[0] = 1 / 3.0f;
    mesh.vertices[2].position[1] = 1.5e-7f;
    const ReadFile file(WriteInMemory(mesh, MeshFormat::ThreeMf).main.bytes);
    EXPECT_EQ(file.objects[0].vertices[1].m_fPosition[0], 1 / 3.0f);
    EXPECT_EQ(file.objects[0].vertices[2].m_fPosition[1], 1.5e-7f);
}

TEST(ThreeMfWriter, TheTitleIsTheName)
{
    MeshFileOptions options;
    options.name = "Name plate";
    const ReadFile file(WriteInMemory(OneTriangle(), MeshFormat::ThreeMf, options).main.bytes);
    char key[50] = {};
    char value[50] = {};
    ULONG length = 0;
    ASSERT_EQ(NMR::lib3mf_model_getmetadatakeyutf8(file.model, 0, key, sizeof(key), &length),
              LIB3MF_OK);
    NMR::lib3mf_model_getmetadatavalueutf8(file.model, 0, value, sizeof(value), &length);
    EXPECT_STREQ(key, "Title");
    EXPECT_STREQ(value, "Name plate");
}
