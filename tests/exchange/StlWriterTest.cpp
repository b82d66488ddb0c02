// SPDX-License-Identifier: MIT
#include "tests/support/MeshFiles.h"
#include "tests/support/SolidMeshes.h"

#include <gtest/gtest.h>

#include <initializer_list>

using orvane::MeshFileOptions;
using orvane::MeshFormat;
using orvane::SolidMesh;

namespace
{

/// The bytes of floats, the lowest byte first: 0 is 00000000, and 1 is 3F800000.
std::string Floats(std::initializer_list<int> numbers)
{
    std::string bytes;
    for (const int number : numbers)
    {
        bytes += number == 0 ? std::string(4, '\0') : std::string("\0\0\x80\x3F", 4);
    }
    return bytes;
}

}  // namespace

TEST(StlWriter, OneTriangleIsWrittenByteForByte)
{
    std::string expected = "Orvane name";
    expected.resize(80);
    expected += std::string("\x01\0\0\0", 4);         // triangles
    expected += Floats({0, 0, 1});                    // the normal
    expected += Floats({0, 0, 0, 1, 0, 0, 0, 1, 0});  // the corners
    expected += std::string(2, '\0');                 // attributes
    ASSERT_EQ(expected.size(), 134u);

    MeshFileOptions options;
    options.name = "name";
    EXPECT_EQ(WriteInMemory(OneTriangle(), MeshFormat::Stl, options).Text(), expected);
}

TEST(StlWriter, ALongNameEndsAtByte80)
{
    MeshFileOptions options;
    options.name = std::string(100, 'x');
    const std::string file = WriteInMemory(OneTriangle(), MeshFormat::Stl, options).Text();
    ASSERT_EQ(file.size(), 134u);
    EXPECT_EQ(file.substr(0, 80), "Orvane " + std::string(73, 'x'));
    EXPECT_EQ(file[80], 1);
}

TEST(StlWriter, AMirroredNodeIsWrittenCounterClockwise)
{
    SolidMesh mesh = OneTriangle();
    mesh.nodes[0].transform[0] = -1;  // x becomes -x
    const std::string file = WriteInMemory(mesh, MeshFormat::Stl).Text();

    // The normal, the first corner, then the third corner and the second at -1, 0, 0.
    const std::string minusOne("\0\0\x80\xBF", 4);
    const std::string corners = Floats({0, 0, 1, 0, 0, 0, 0, 1, 0}) + minusOne + Floats({0, 0});
    EXPECT_EQ(file.substr(84, corners.size()), corners);
}

TEST(StlWriter, ATriangleWithoutAreaHasNoNormal)
{
    SolidMesh mesh = OneTriangle();
    mesh.indices = {1, 1, 1};
    const std::string expected = Floats({0, 0, 0, 1, 0, 0});
    const std::string file = WriteInMemory(mesh, MeshFormat::Stl).Text();
    EXPECT_EQ(file.substr(84, expected.size()), expected);
}

TEST(StlWriter, AMeshWithoutTrianglesIsAFileWithoutTriangles)
{
    EXPECT_EQ(WriteInMemory(SolidMesh(), MeshFormat::Stl).Text().size(), 84u);
}
