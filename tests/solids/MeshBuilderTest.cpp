// SPDX-License-Identifier: MIT
// Figures of meshes that can be worked out by hand.
#include "solids/MeshBuilder.h"

#include "import3ds/TriangularMeshObject.h"
#include "material/NamedColorArray.h"
#include "scene/OrvFontString.h"
#include "solids/MeshTransform.h"
#include "tests/support/Meshes.h"
#include "tests/support/StubFont.h"

#include <gtest/gtest.h>

namespace
{
using orvane::MeshBounds;
using orvane::MeshBuildOptions;
using orvane::MeshPart;
using orvane::SolidMesh;
using Place = std::array<float, 3>;

Place NormalOf(const SolidMesh& mesh, std::size_t corner)
{
    const auto& normal = mesh.vertices[mesh.indices[corner]].normal;
    return {normal[0], normal[1], normal[2]};
}

class MeshBuilderTest : public testing::Test
{
protected:
    MeshBuilderTest()
    {
        text.AttachFont(&font);
        text.SetTextString("A");
        text.SetScale(DVector(1, 1, 0.5));
        text.CalculateBounds();
    }

    StubFont font;
    OrvFontString text;
};

TEST_F(MeshBuilderTest, ASquareLetterIsABoxOfTwelveTriangles)
{
    const SolidMesh mesh = orvane::BuildMesh(text);
    EXPECT_EQ(mesh.TriangleCount(), 12u);
    // Four corners for each of the six sides, because each side has its own normal.
    EXPECT_EQ(mesh.vertices.size(), 24u);
    const MeshBounds bounds = mesh.Bounds();
    // The text is centred on y = 0, and its letter is 1 em high.
    EXPECT_EQ(bounds.minimum, (Place{0, -0.5f, -0.5f}));
    EXPECT_EQ(bounds.maximum, (Place{1, 0.5f, 0}));
}

TEST_F(MeshBuilderTest, EqualMaterialsAreInTheMeshOnce)
{
    NamedColor gold;
    gold.SetName("Gold");
    text.SetFaceColor(gold);
    text.SetEdgeColor(gold);
    const SolidMesh mesh = orvane::BuildMesh(text);
    ASSERT_EQ(mesh.groups.size(), 2u);
    EXPECT_EQ(mesh.groups[0].part, MeshPart::Face);
    EXPECT_EQ(mesh.groups[1].part, MeshPart::Edge);
    ASSERT_EQ(mesh.materials.size(), 1u);
    EXPECT_STREQ(mesh.materials[0].GetName(), "Gold");
    EXPECT_EQ(mesh.nodes[0].name, "A");
    EXPECT_EQ(mesh.nodes[0].object, &text);
}

TEST_F(MeshBuilderTest, LettersAndLinesAreNumberedWhenTheyAreSeparate)
{
    text.SetTextString("A\r\nBA");
    text.CalculateBounds();
    MeshBuildOptions options;
    options.separateLetters = true;
    const SolidMesh mesh = orvane::BuildMesh(text, options);
    ASSERT_EQ(mesh.groups.size(), 6u);
    const int letters[] = {0, 0, 3, 3, 4, 4};
    const int lines[] = {0, 0, 1, 1, 1, 1};
    for (std::size_t i = 0; i < 6; ++i)
    {
        EXPECT_EQ(mesh.groups[i].letter, letters[i]);
        EXPECT_EQ(mesh.groups[i].line, lines[i]);
    }
}

TEST_F(MeshBuilderTest, TheTransformIsAppliedOrKept)
{
    text.GetTransform()->SetTranslation(DVector(10, 20, 30));
    MeshBuildOptions options;
    options.inWorldCoordinates = false;
    const SolidMesh kept = orvane::BuildMesh(text, options);
    EXPECT_EQ(kept.nodes[0].transform[12], 10);
    EXPECT_FLOAT_EQ(kept.vertices[0].position[2], -0.5f);
    const SolidMesh applied = orvane::BuildMesh(text);
    EXPECT_EQ(applied.nodes[0].transform[12], 0);
    EXPECT_FLOAT_EQ(applied.vertices[0].position[2], 29.5f);
    EXPECT_EQ(kept.Bounds().maximum, (Place{11, 20.5f, 30}));
    EXPECT_EQ(applied.Bounds().maximum, (Place{11, 20.5f, 30}));
}

TEST_F(MeshBuilderTest, AMirroringTransformKeepsTheOutsideOutside)
{
    const SolidMesh plain = orvane::BuildMesh(text);
    text.GetTransform()->SetScale(DVector(-1, 1, 1));
    const SolidMesh mirrored = orvane::BuildMesh(text);
    for (const SolidMesh* const mesh : {&plain, &mirrored})
    {
        // Six times the volume: the triple products of all triangles. Positive when all triangles
        // run counter-clockwise seen from outside.
        double sum = 0;
        for (std::size_t i = 0; i < mesh->indices.size(); i += 3)
        {
            const auto& a = mesh->vertices[mesh->indices[i]].position;
            const auto& b = mesh->vertices[mesh->indices[i + 1]].position;
            const auto& c = mesh->vertices[mesh->indices[i + 2]].position;
            sum += a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) +
                   a[2] * (b[0] * c[1] - b[1] * c[0]);
        }
        EXPECT_FLOAT_EQ(static_cast<float>(sum / 6), 0.5f);
    }
}

TEST_F(MeshBuilderTest, NormalsStayPerpendicularWhenANodeIsStretched)
{
    // A wall normal along x of a letter that is turned by 45 degrees and then stretched to twice
    // its width: the wall's direction (-1, 1) becomes (-2, 1), to which (1, 2) is perpendicular.
    const double half = std::sqrt(0.5);
    orvane::MeshTransform transform;
    transform.matrix = {2 * half, half, 0, 0, -2 * half, half, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    const orvane::MeshPoint normal = transform.ForNormals().Apply({1, 0, 0}, 0);
    EXPECT_NEAR(normal[1] / normal[0], 2.0, 1e-12);
    EXPECT_GT(normal[0], 0);
}

TEST_F(MeshBuilderTest, DeletedNodesAndWhatIsBelowThemAreLeftOut)
{
    DrawingObject group;
    auto* const child = new OrvFontString;
    group.AddChild(child);
    *child = text;
    EXPECT_EQ(orvane::BuildMesh(group).TriangleCount(), 12u);
    child->SetDeleted();
    EXPECT_EQ(orvane::BuildMesh(group).TriangleCount(), 0u);
}

TEST_F(MeshBuilderTest, ATextWithoutAFontHasNoTriangles)
{
    text.AttachFont(nullptr);
    const SolidMesh mesh = orvane::BuildMesh(text);
    EXPECT_TRUE(mesh.nodes.empty());
    EXPECT_TRUE(mesh.Bounds().IsEmpty());
}

TEST(MeshBuilderImport, ANormalOfNoLengthIsReplacedByThatOfTheTriangle)
{
    NamedColorArray materials;
    materials.Add(NamedColor());
    TriangularMeshObject square;
    square.SetMaterialColors(&materials);
    FillSquare(square);  // has no normals
    const SolidMesh mesh = orvane::BuildMesh(square);
    ASSERT_EQ(mesh.indices.size(), 6u);
    for (std::size_t corner = 0; corner < 6; ++corner)
    {
        EXPECT_EQ(NormalOf(mesh, corner), (Place{0, 0, 1}));
    }
}

TEST(MeshBuilderImport, CornersOfOneVertexAndNormalShareAVertex)
{
    NamedColorArray materials;
    materials.Add(NamedColor());
    TriangularMeshObject square;
    square.SetMaterialColors(&materials);
    FillSquare(square);
    square.CalculateFaceNormals();
    square.CalculateVertexNormals();
    const SolidMesh mesh = orvane::BuildMesh(square);
    EXPECT_EQ(mesh.vertices.size(), 4u);
    EXPECT_EQ(mesh.groups.size(), 1u);
    EXPECT_EQ(mesh.groups[0].part, MeshPart::Surface);
    // The corners run counter-clockwise seen from +z.
    EXPECT_EQ(NormalOf(mesh, 0), (Place{0, 0, 1}));
}

TEST(MeshBuilderImport, AMeshWithoutMaterialsIsNotDrawnAndHasNoTriangles)
{
    TriangularMeshObject square;
    FillSquare(square);
    EXPECT_EQ(orvane::BuildMesh(square).TriangleCount(), 0u);
}
}  // namespace
