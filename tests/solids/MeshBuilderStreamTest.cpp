// SPDX-License-Identifier: MIT
// The triangles of a mesh are those that the recorded calls of drawing the same node give.
#include "solids/MeshBuilder.h"

#include "document/FontChoice.h"
#include "extrude/OrvGlyph.h"
#include "import3ds/TriangularMeshObject.h"
#include "material/NamedColorArray.h"
#include "scene/DrawingParameters.h"
#include "scene/OrvFontString.h"
#include "tests/support/Meshes.h"
#include "tests/support/StubFont.h"
#include "tests/support/gl/GlRecorder.h"
#include "tests/support/gl/GlyphDraws.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>

namespace
{
using orvane::MeshBuildOptions;
using orvane::SolidMesh;
using Matrix = std::array<double, 16>;

constexpr Matrix identity = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

Matrix operator*(const Matrix& a, const Matrix& b)
{
    Matrix product = {};
    for (int column = 0; column < 4; ++column)
    {
        for (int row = 0; row < 4; ++row)
        {
            for (int k = 0; k < 4; ++k)
            {
                product[4 * column + row] += a[4 * k + row] * b[4 * column + k];
            }
        }
    }
    return product;
}

/// Position, normal and texture coordinate.
using Corner = std::array<float, 8>;

struct Triangle
{
    std::array<Corner, 3> corners;  ///< counter-clockwise seen from the front
    double red;                     ///< of the material's diffuse colour
};

/// The triangle with its smallest corner first, so that triangles can be compared.
Triangle Rotated(Triangle triangle)
{
    std::array<Corner, 3>& c = triangle.corners;
    std::rotate(c.begin(), std::min_element(c.begin(), c.end()), c.end());
    return triangle;
}

/// What the calls of one drawing show, in the coordinates that the first matrix leads to.
class CallReader
{
public:
    explicit CallReader(const std::vector<GlCall>& calls)
    {
        for (const GlCall& call : calls)
        {
            Read(call.name, call.arguments);
        }
    }

    std::vector<Triangle> triangles;

private:
    void Read(const std::string& name, const std::vector<double>& numbers)
    {
        if (name == "glPushMatrix")
        {
            matrices_.push_back(matrices_.back());
        }
        else if (name == "glPopMatrix")
        {
            matrices_.pop_back();
        }
        else if (name == "glTranslated")
        {
            Matrix moved = identity;
            std::copy(numbers.begin(), numbers.end(), moved.begin() + 12);
            matrices_.back() = matrices_.back() * moved;
        }
        else if (name == "glMultMatrixd")
        {
            Matrix factor;
            std::copy(numbers.begin(), numbers.end(), factor.begin());
            matrices_.back() = matrices_.back() * factor;
        }
        else if (name == "glFrontFace")
        {
            frontIsClockwise_ = numbers[0] == GL_CW;
        }
        else if (name == "glMaterialfv" && numbers[1] == GL_DIFFUSE)
        {
            red_ = numbers[2];
        }
        else if (name == "glBegin")
        {
            primitive_ = static_cast<GLenum>(numbers[0]);
            corners_.clear();
        }
        else if (name == "glNormal3f" || name == "glNormal3fv")
        {
            std::copy(numbers.begin(), numbers.end(), state_.begin() + 3);
        }
        else if (name == "glTexCoord2fv")
        {
            std::copy(numbers.begin(), numbers.end(), state_.begin() + 6);
        }
        else if (name == "glVertex3f" || name == "glVertex3fv")
        {
            const Matrix& m = matrices_.back();
            for (int row = 0; row < 3; ++row)
            {
                state_[row] = static_cast<float>(m[row] * numbers[0] + m[4 + row] * numbers[1] +
                                                 m[8 + row] * numbers[2] + m[12 + row]);
            }
            corners_.push_back(state_);
        }
        else if (name == "glEnd")
        {
            Cut();
        }
    }

    void Cut()
    {
        const std::vector<Corner>& c = corners_;
        for (std::size_t i = 2; i < c.size(); ++i)
        {
            switch (primitive_)
            {
                case GL_TRIANGLES:
                    if (i % 3 == 2)
                    {
                        Add(c[i - 2], c[i - 1], c[i]);
                    }
                    break;
                case GL_TRIANGLE_FAN:
                    Add(c[0], c[i - 1], c[i]);
                    break;
                case GL_TRIANGLE_STRIP:
                    i % 2 == 0 ? Add(c[i - 2], c[i - 1], c[i]) : Add(c[i - 1], c[i - 2], c[i]);
                    break;
                case GL_QUADS:
                    if (i % 4 == 3)
                    {
                        Add(c[i - 3], c[i - 2], c[i]);
                        Add(c[i - 2], c[i - 1], c[i]);
                    }
                    break;
                default:
                    ADD_FAILURE() << "unexpected primitive " << primitive_;
            }
        }
    }

    void Add(const Corner& a, const Corner& b, const Corner& c)
    {
        triangles.push_back(frontIsClockwise_ ? Triangle{{a, c, b}, red_}
                                              : Triangle{{a, b, c}, red_});
    }

    std::vector<Matrix> matrices_ = {identity};
    bool frontIsClockwise_ = false;
    double red_ = 0;
    GLenum primitive_ = 0;
    Corner state_ = {};
    std::vector<Corner> corners_;
};

std::vector<Triangle> TrianglesOf(const SolidMesh& mesh)
{
    std::vector<Triangle> triangles;
    for (const orvane::MeshGroup& group : mesh.groups)
    {
        for (std::size_t i = 0; i < group.indexCount; i += 3)
        {
            Triangle triangle = {
                {}, mesh.materials[static_cast<std::size_t>(group.material)].GetDiffuseColor().red};
            for (std::size_t k = 0; k < 3; ++k)
            {
                const orvane::MeshVertex& v = mesh.vertices[mesh.indices[group.firstIndex + i + k]];
                triangle.corners[k] = {v.position[0], v.position[1], v.position[2], v.normal[0],
                                       v.normal[1],   v.normal[2],   v.texture[0],  v.texture[1]};
            }
            triangles.push_back(triangle);
        }
    }
    return triangles;
}

std::vector<Triangle> DrawnTriangles(DrawingObject& node)
{
    DrawingParameters parameters;
    parameters.SetRender();
    parameters.SetShowObject();
    parameters.SetShowChildren();
    const GlRecording recording;
    EXPECT_EQ(node.Draw(&parameters), 1);
    return CallReader(recording.Calls()).triangles;
}

/// Compares triangle by triangle, in order. Numbers may differ by \p tolerance times their size, or
/// by \p tolerance near 0.
void ExpectSame(const std::vector<Triangle>& mesh, const std::vector<Triangle>& drawn,
                float tolerance)
{
    ASSERT_EQ(mesh.size(), drawn.size());
    for (std::size_t i = 0; i < mesh.size(); ++i)
    {
        const Triangle a = tolerance == 0 ? Rotated(mesh[i]) : mesh[i];
        const Triangle b = tolerance == 0 ? Rotated(drawn[i]) : drawn[i];
        ASSERT_EQ(a.red, b.red) << "triangle " << i;
        for (std::size_t corner = 0; corner < 3; ++corner)
        {
            for (std::size_t k = 0; k < 8; ++k)
            {
                const float expected = b.corners[corner][k];
                ASSERT_LE(std::fabs(a.corners[corner][k] - expected),
                          tolerance * std::max(1.0f, std::fabs(expected)))
                    << "triangle " << i << ", corner " << corner << ", number " << k;
            }
        }
    }
}

NamedColor Red(float red)
{
    NamedColor color;
    color.SetDiffuseColor(ColorVector(red, 0, 0, 1));
    return color;
}

void UseThreeMaterials(OrvString& text)
{
    text.SetFaceColor(Red(0.25f));
    text.SetEdgeColor(Red(0.5f));
    text.SetBevelColor(Red(0.75f));
}

/// Marks a node's texture as one that is drawn, without a file.
void UseTexture(DrawingObject& node, bool scaleWithObject)
{
    TextureMap& texture = *node.GetTexture();
    texture.textureFlags = TextureMap::Valid | TextureMap::Textured;
    if (scaleWithObject)
    {
        texture.textureFlags |= TextureMap::ScaleWithObject;
    }
    texture.SetRepeatRate(1.5);
}

MeshBuildOptions LetterByLetter(bool inWorld)
{
    MeshBuildOptions options;
    options.inWorldCoordinates = inWorld;
    options.separateLetters = true;
    return options;
}

struct Case
{
    int style;
    int location;
    DVector scale = DVector(1, 1, 0.5);
    int texture = 0;  ///< 0 none, 1 plain, 2 scaled with the object
};

/// Each style and place of the edges and one number beyond them, then mirrored and textured texts.
std::vector<Case> AllCases()
{
    std::vector<Case> cases;
    for (const int style : {0, 1, 2, 3})
    {
        for (const int location : {0, 1, 2, 3})
        {
            cases.push_back({style, location});
        }
    }
    for (const DVector& scale : {DVector(-2, 1, 0.25), DVector(0.5, -1.5, 1), DVector(-1, -1, 1)})
    {
        for (const int texture : {0, 1, 2})
        {
            cases.push_back({1, 2, scale, texture});
            cases.push_back({2, 0, scale, texture});
        }
    }
    return cases;
}

void Apply(const Case& c, OrvFontString& text)
{
    UseThreeMaterials(text);
    text.SetBevelStyle(c.style);
    text.SetBevelLocation(c.location);
    text.SetScale(c.scale);
    text.SetBevelDepth(0.0625f);
    if (c.texture != 0)
    {
        UseTexture(text, c.texture == 2);
    }
}

TEST(MeshBuilderStream, InItsOwnCoordinatesATextIsWhatIsDrawnBitForBit)
{
    StubFont font;
    glyph_draws::UseFanAndTriangle(*font.Glyph('A'));
    for (const Case& c : AllCases())
    {
        SCOPED_TRACE(testing::Message() << "style " << c.style << ", location " << c.location
                                        << ", scale x " << c.scale.x << ", texture " << c.texture);
        OrvFontString text;
        text.AttachFont(&font);
        text.SetTextString("AB\r\nCDA");
        Apply(c, text);
        text.CalculateBounds();
        ExpectSame(TrianglesOf(BuildMesh(text, LetterByLetter(false))), DrawnTriangles(text), 0);
    }
}

TEST(MeshBuilderStream, LettersOfARealFontAreWhatIsDrawnInTheWorld)
{
    orvane::LoadFonts();
    OrvFont* const font = orvane::ChooseFont("DejaVu Serif");
    for (const Case& c : AllCases())
    {
        SCOPED_TRACE(testing::Message() << "style " << c.style << ", location " << c.location
                                        << ", scale x " << c.scale.x << ", texture " << c.texture);
        DrawingObject group;
        group.GetTransform()->SetRotation(40, DVector(1, 2, 3));
        group.GetTransform()->SetTranslation(DVector(5, -3, 2));
        auto* const text = new OrvFontString;
        group.AddChild(text);
        text->AttachFont(font);
        text->SetTextString("R&8i\r\ngo");
        text->SetJustification(1);
        text->SetInterCharacterSpacing(0.125f);
        Apply(c, *text);
        text->CalculateBounds();
        // Normals turn with the group; here only places are compared, and the test in the text's
        // own coordinates compares the rest.
        std::vector<Triangle> mesh = TrianglesOf(BuildMesh(*text, LetterByLetter(true)));
        std::vector<Triangle> drawn = DrawnTriangles(group);
        for (std::vector<Triangle>* const triangles : {&mesh, &drawn})
        {
            for (Triangle& triangle : *triangles)
            {
                for (Corner& corner : triangle.corners)
                {
                    std::fill(corner.begin() + 3, corner.begin() + 6, 0.0f);
                }
            }
        }
        // The products are formed in another order: a few units in the last place of a float.
        ExpectSame(mesh, drawn, 1e-6f);
        ExpectSame(TrianglesOf(BuildMesh(*text, LetterByLetter(false))), DrawnTriangles(*text), 0);
    }
}

TEST(MeshBuilderStream, GroupsOfAWholeTextHoldTheSameTriangles)
{
    StubFont font;
    OrvFontString text;
    text.AttachFont(&font);
    text.SetTextString("ABCA");
    Apply({1, 2, DVector(1, 1, 1), 0}, text);
    text.CalculateBounds();
    MeshBuildOptions options;
    options.inWorldCoordinates = false;
    const SolidMesh mesh = BuildMesh(text, options);
    ASSERT_EQ(mesh.groups.size(), 3u);
    std::vector<Triangle> drawn = DrawnTriangles(text);
    std::stable_sort(drawn.begin(), drawn.end(),
                     [](const Triangle& a, const Triangle& b) { return a.red < b.red; });
    ExpectSame(TrianglesOf(mesh), drawn, 0);
}

TEST(MeshBuilderStream, AnImportedMeshIsWhatIsDrawnWithNormalsTurnedOutward)
{
    NamedColorArray materials;
    materials.Add(Red(0.25f));
    materials.Add(Red(0.75f));
    TriangularMeshObject mesh;
    mesh.SetMaterialColors(&materials);
    AddVertices(mesh, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0.5f}, {0, 1, 0}});
    AddFace(mesh, 0, 1, 2, 0);
    AddFace(mesh, 0, 2, 3, 1);
    AddFace(mesh, 2, 1, 3, 7);  // there is no such material
    mesh.CalculateFaceNormals();
    mesh.CalculateVertexNormals();
    for (const float threshold : {0.0f, 1.0f})
    {
        mesh.smoothingThreshold = threshold;
        std::vector<Triangle> drawn = DrawnTriangles(mesh);
        std::stable_sort(drawn.begin(), drawn.end(),
                         [](const Triangle& a, const Triangle& b) { return a.red < b.red; });
        for (Triangle& triangle : drawn)
        {
            // Clockwise triangles are the front of a drawn mesh, whose corners run the other way
            // round seen from outside.
            std::swap(triangle.corners[1], triangle.corners[2]);
            for (Corner& corner : triangle.corners)
            {
                for (std::size_t k = 3; k < 6; ++k)
                {
                    corner[k] = 0.0f - corner[k];
                }
            }
        }
        ExpectSame(TrianglesOf(orvane::BuildMesh(mesh)), drawn, 0);
    }
}
}  // namespace
