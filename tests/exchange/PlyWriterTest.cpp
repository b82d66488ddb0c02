// SPDX-License-Identifier: MIT
#include "tests/support/MeshFiles.h"
#include "tests/support/SolidMeshes.h"

#include <gtest/gtest.h>

using orvane::MeshFileOptions;
using orvane::MeshFormat;
using orvane::SolidMesh;

TEST(PlyWriter, OneTriangleIsWrittenByteForByte)
{
    const std::string zero(4, '\0');
    const std::string one("\0\0\x80\x3F", 4);
    const std::string normal = zero + zero + one;
    const std::string red("\xFF\0\0\xFF", 4);
    const std::string expected =
        "ply\n"
        "format binary_little_endian 1.0\n"
        "comment Orvane two lines\n"
        "element vertex 3\n"
        "property float x\nproperty float y\nproperty float z\n"
        "property float nx\nproperty float ny\nproperty float nz\n"
        "property uchar red\nproperty uchar green\nproperty uchar blue\nproperty uchar alpha\n"
        "element face 1\n"
        "property list uchar int vertex_indices\n"
        "end_header\n" +
        zero + zero + zero + normal + red + one + zero + zero + normal + red + zero + one + zero +
        normal + red + std::string("\x03\0\0\0\0\x01\0\0\0\x02\0\0\0", 13);

    MeshFileOptions options;
    options.name = "two\nlines";
    EXPECT_EQ(WriteInMemory(OneTriangle(), MeshFormat::Ply, options).Text(), expected);
}

TEST(PlyWriter, EveryGroupHasVerticesOfItsOwn)
{
    SolidMesh mesh;
    AddCube(mesh, "cube");
    // A corner of the first edge is the same vertex as a corner of the first face.
    mesh.indices[12] = 0;
    const std::string text = WriteInMemory(mesh, MeshFormat::Ply).Text();
    EXPECT_NE(text.find("element vertex 25\n"), std::string::npos) << text.substr(0, 200);
    EXPECT_NE(text.find("element face 12\n"), std::string::npos);
}
