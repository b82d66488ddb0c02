// SPDX-License-Identifier: MIT
#include "tests/support/MeshFiles.h"
#include "tests/support/SolidMeshes.h"

#include <gtest/gtest.h>

using orvane::MeshFileTarget;
using orvane::MeshFormat;
using orvane::MeshScene;
using orvane::SolidMesh;

TEST(ObjWriter, OneTriangleIsWrittenLineByLine)
{
    SolidMesh mesh = OneTriangle();
    mesh.vertices[1].position[0] = 0.1f;
    const MeshFiles files = WriteInMemory(mesh, MeshFormat::Obj);
    EXPECT_EQ(files.Text(),
              "# Orvane _\n"
              "mtllib mesh.mtl\n"
              "o triangle\n"
              "v 0 0 0\nv 0.1 0 0\nv 0 1 0\n"
              "vt 0 0\nvt 1 0\nvt 0 1\n"
              "vn 0 0 1\nvn 0 0 1\nvn 0 0 1\n"
              "g face\n"
              "usemtl Face\n"
              "f 1/1/1 2/2/2 3/3/3\n");
    // The grey of a new material: ambient and specular 0.5, shininess 64.
    EXPECT_EQ(files.TextOf("mesh.mtl"),
              "newmtl Face\n"
              "Ka 0.5 0.5 0.5\nKd 1 0 0\nKs 0.5 0.5 0.5\nKe 0 0 0\nNs 64\nd 1\nillum 2\n");
}

TEST(ObjWriter, TheVerticesOfEveryNodeAreNumberedOn)
{
    SolidMesh mesh;
    AddCube(mesh, "one");
    AddCube(mesh, "two words\n");
    const std::string text = WriteInMemory(mesh, MeshFormat::Obj).Text();
    EXPECT_NE(text.find("o one\n"), std::string::npos);
    EXPECT_NE(text.find("o two_words_\n"), std::string::npos);
    EXPECT_NE(text.find("f 25/25/25 26/26/26 27/27/27\n"), std::string::npos);
    EXPECT_NE(text.find("f 45/45/45 47/47/47 48/48/48\n"), std::string::npos);  // the last one
    EXPECT_EQ(text.find("49"), std::string::npos);
}

TEST(ObjWriter, NamesAreUtf8WithoutSpacesAndSigns)
{
    SolidMesh mesh;
    AddCube(mesh, "\xC3\x84ra\xC2\xA0\xD0\x90#1\xC2\x85");
    const std::string text = WriteInMemory(mesh, MeshFormat::Obj).Text();
    EXPECT_NE(text.find("o \xC3\x84ra_\xD0\x90_1_\n"), std::string::npos);
}

TEST(ObjWriter, MaterialsOfTheSameNameGetNamesOfTheirOwn)
{
    SolidMesh mesh;
    AddCube(mesh, "cube");
    mesh.materials[1].SetName("Face");
    const MeshFiles files = WriteInMemory(mesh, MeshFormat::Obj);
    EXPECT_NE(files.Text().find("usemtl Face\n"), std::string::npos);
    EXPECT_NE(files.Text().find("usemtl Face_2\n"), std::string::npos);
    EXPECT_NE(files.TextOf("mesh.mtl").find("newmtl Face_2\n"), std::string::npos);
}

TEST(ObjWriter, AColourThatIsNoNumberIsWrittenAsZero)
{
    SolidMesh mesh = OneTriangle();
    mesh.materials[0] = 0ul;  // a black palette colour, whose specular colour is not a number
    const std::string text = WriteInMemory(mesh, MeshFormat::Obj).TextOf("mesh.mtl");
    EXPECT_NE(text.find("Ks 0 0 0\n"), std::string::npos) << text;
}

TEST(ObjWriter, WithoutFilesBesideItTheFileNamesNone)
{
    orvane::MemorySink main;
    MeshScene scene;
    scene.mesh = OneTriangle();
    orvane::WriteMeshFile(scene, MeshFormat::Obj, {}, MeshFileTarget{main, "mesh", nullptr});
    const std::string text(main.bytes.begin(), main.bytes.end());
    EXPECT_EQ(text.find("mtllib"), std::string::npos);
    EXPECT_NE(text.find("f 1/1/1 2/2/2 3/3/3\n"), std::string::npos);
}
