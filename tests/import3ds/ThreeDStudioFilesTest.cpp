// SPDX-License-Identifier: MIT
#include "tests/support/Chunks.h"
#include "tests/support/ExpectVector.h"
#include "tests/support/MeshFile.h"

#include <cstdlib>
#include <iterator>
#include <random>

namespace
{

namespace fs = std::filesystem;

struct ExpectedMesh
{
    const char* name;
    int vertices;
    int faces;
    int material;
    // In the file's coordinates, z up.
    float minimum[3];
    float maximum[3];
};

struct ExpectedFile
{
    const char* name;
    std::vector<std::string> materials;
    std::vector<ExpectedMesh> meshes;
};

// Names, counts and bounds were read off the files' bytes by a script of thirty lines that follows
// the published chunk format and shares nothing with the library. The command line tool of the
// Open Asset Import Library, 5.2.5, counts the same meshes and faces.
const ExpectedFile expectedFiles[] = {
    {"CameraRollAnimWithChildObject.3ds",
     {"Undefined"},
     {{"Box01",
       26,
       12,
       0,
       {-24.786327362060547f, -24.786327362060547f, 0.0f},
       {45.86894607543945f, 23.076923370361328f, 38.746437072753906f}},
      {"Box02",
       26,
       12,
       0,
       {-54.889869689941406f, -97.4171142578125f, 1.6350665092468262f},
       {23.638290405273438f, -47.20517349243164f, 27.794034957885742f}}}},
    {"RotatingCube.3DS",
     {"Undefined"},
     {{"Box01",
       26,
       12,
       0,
       {-46.092498779296875f, -40.81523895263672f, -35.542877197265625f},
       {8.761116027832031f, 25.88763999938965f, 39.08754348754883f}}}},
    {"cubes_with_alpha.3DS",
     {"Undefined", "04 - Default", "01 - Default", "05 - Default", "03 - Default", "Transparent"},
     {{"Quader01",
       26,
       12,
       1,
       {-1.1895490884780884f, 564.3858642578125f, -13.579380989074707f},
       {98.81046295166016f, 664.3858642578125f, 86.42062377929688f}},
      {"Quader02",
       26,
       12,
       2,
       {-425.481689453125f, -55.10088348388672f, -112.48524475097656f},
       {-225.481689453125f, 144.89910888671875f, 87.51475524902344f}},
      {"Quader03",
       26,
       12,
       3,
       {-594.1036987304688f, 927.140869140625f, -268.15911865234375f},
       {-294.10369873046875f, 1227.140869140625f, 31.84088134765625f}},
      {"Quader04",
       26,
       12,
       4,
       {-387.52349853515625f, 573.6895751953125f, -151.56204223632812f},
       {12.476516723632812f, 973.6895751953125f, 248.43795776367188f}},
      {"Quader05",
       26,
       12,
       5,
       {-856.3109741210938f, 115.34115600585938f, -267.8232421875f},
       {-356.31097412109375f, 615.3411865234375f, 232.1767578125f}}}},
    {"fels.3ds",
     {"Undefined", "Default"},
     {{"Default",
       386,
       768,
       1,
       {-2.2219133377075195f, -3.084285259246826f, -2.5647411346435547f},
       {1.2828848361968994f, 0.12126629054546356f, 2.1168599128723145f}}}},
};

std::string PathOf(const ExpectedFile& file)
{
    return std::string(ORVANE_SHARED "/data/3ds/") + file.name;
}

Bytes ReadFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), {});
}

#define REQUIRE_REAL_FILES()                                            \
    if (!fs::is_directory(ORVANE_SHARED "/data/3ds"))                   \
    {                                                                   \
        GTEST_SKIP() << "no 3D Studio files at " ORVANE_SHARED "/data"; \
    }                                                                   \
    static_assert(true)

TEST(ThreeDStudioFiles, RealFilesHaveTheMeshesAndMaterialsThatAnIndependentReaderFinds)
{
    REQUIRE_REAL_FILES();
    for (const ExpectedFile& expected : expectedFiles)
    {
        SCOPED_TRACE(expected.name);
        Imported node(ReadFile(PathOf(expected)));
        EXPECT_EQ(node.result, 1);
        EXPECT_EQ(node.MaterialNames(), expected.materials);
        ASSERT_EQ(node.GetChildCount(), static_cast<int>(expected.meshes.size()));
        for (int i = 0; i < node.GetChildCount(); ++i)
        {
            const ExpectedMesh& wanted = expected.meshes[static_cast<std::size_t>(i)];
            const TriangularMeshObject& mesh = node.Mesh(i);
            EXPECT_EQ(mesh.name, wanted.name);
            EXPECT_EQ(mesh.GetVerticies()->GetSize(), wanted.vertices);
            EXPECT_EQ(mesh.GetFaces()->GetSize(), wanted.faces);
            EXPECT_EQ(FaceMaterials(mesh),
                      std::vector<int>(static_cast<std::size_t>(wanted.faces), wanted.material));
            EXPECT_XYZ_NEAR(mesh.GetBoundsLocalMinimum(), wanted.minimum[0], wanted.minimum[2],
                            -wanted.maximum[1], 1e-4);
            EXPECT_XYZ_NEAR(mesh.GetBoundsLocalMaximum(), wanted.maximum[0], wanted.maximum[2],
                            -wanted.minimum[1], 1e-4);
            EXPECT_EQ(mesh.GetFaceNormals()->GetSize(), wanted.faces);
            EXPECT_EQ(mesh.GetVertexNormals()->GetSize(), wanted.vertices);
        }
    }
}

void ExpectBytes(const ColorVector& color, int red, int green, int blue)
{
    EXPECT_FLOAT_EQ(color.red * 255.0f, static_cast<float>(red));
    EXPECT_FLOAT_EQ(color.green * 255.0f, static_cast<float>(green));
    EXPECT_FLOAT_EQ(color.blue * 255.0f, static_cast<float>(blue));
}

TEST(ThreeDStudioFiles, RealMaterialsHaveTheColorsOfTheirBytes)
{
    REQUIRE_REAL_FILES();
    Imported node(ReadFile(PathOf(expectedFiles[2])));
    const int index = node.materials.FindName("Transparent");
    ASSERT_GE(index, 0);
    const NamedColor material = node.materials.GetAt(index);
    ExpectBytes(material.GetAmbientColor(), 0, 81, 111);
    ExpectBytes(material.GetDiffuseColor(), 178, 8, 0);
    ExpectBytes(material.GetSpecularColor(), 0, 174, 190);
    EXPECT_FLOAT_EQ(material.GetDiffuseColor().alpha, 0.83f);
    EXPECT_RGBA(material.GetEmissionColor(), 0, 0, 0, 1);
    EXPECT_NEAR(material.GetShininess(), 115.2f, 1e-4);
}

/// What must hold after whatever was read.
void ExpectSound(ThreeDStudioObject& node)
{
    for (int i = 0; i < node.GetChildCount(); ++i)
    {
        const auto& mesh = dynamic_cast<TriangularMeshObject&>(*node.GetChildByIndex(i));
        const int vertices = mesh.GetVerticies()->GetSize();
        const int faces = mesh.GetFaces()->GetSize();
        ASSERT_EQ(mesh.GetFaceNormals()->GetSize(), faces);
        ASSERT_EQ(mesh.GetVertexNormals()->GetSize(), faces == 0 ? 0 : vertices);
        for (int f = 0; f < faces; ++f)
        {
            const TriangularFace& face = *mesh.GetFaces()->GetElement(f);
            ASSERT_LT(std::max({face.a, face.b, face.c}), vertices);
            ASSERT_LT(face.material, node.materials.GetSize());
        }
    }
    ASSERT_TRUE(node.file.GetFilePath().IsEmpty());
}

void ImportTruncations(const Bytes& bytes, int meshes)
{
    const TemporaryFile file(bytes);
    int meshesBefore = meshes;
    for (std::size_t length = bytes.size(); length-- > 0;)
    {
        fs::resize_file(file.Path(), length);
        ThreeDStudioObject node;
        ASSERT_EQ(node.CreateFromFile(file.Path()), length >= 6 ? 1 : 0) << length;
        ExpectSound(node);
        ASSERT_LE(node.GetChildCount(), meshesBefore) << length;
        meshesBefore = node.GetChildCount();
    }
    EXPECT_EQ(meshesBefore, 0);
}

TEST(ThreeDStudioFiles, EveryTruncationOfARealFileIsReadUpToItsCut)
{
    REQUIRE_REAL_FILES();
    for (const ExpectedFile& expected : expectedFiles)
    {
        ImportTruncations(ReadFile(PathOf(expected)), static_cast<int>(expected.meshes.size()));
    }
}

TEST(ThreeDStudioFiles, EveryTruncationOfAGeneratedFileIsReadUpToItsCut)
{
    ImportTruncations(MeshFile(8, Box(), 3), 8);
    ImportTruncations(MeshFile(2, Grid(9, 7), 4), 2);
}

/// A real file, or one built here, with a few bytes changed.
class Mutations
{
public:
    explicit Mutations(unsigned seed) : random_(seed) {}

    Bytes Next(const Bytes& source)
    {
        Bytes bytes = source;
        for (std::size_t changes = 1 + Below(8); changes > 0; --changes)
        {
            const std::size_t at = Below(bytes.size());
            switch (Below(4))
            {
                case 0:
                    bytes[at] = static_cast<BYTE>(Below(256));
                    break;
                case 1:
                    bytes[at] = Below(2) != 0 ? 0xFF : 0;
                    break;
                case 2: {
                    static constexpr WORD ids[] = {0x3D3D, 0x4000, 0x4100, 0x4110, 0x4120,
                                                   0x4130, 0x4160, 0xAFFF, 0xA000, 0xA020,
                                                   0xA050, 0x0010, 0x0030, 0x0031};
                    const WORD id = ids[Below(std::size(ids))];
                    bytes[at] = static_cast<BYTE>(id);
                    bytes[std::min(at + 1, bytes.size() - 1)] = static_cast<BYTE>(id >> 8);
                    break;
                }
                default:
                    bytes[at] = static_cast<BYTE>(bytes[at] + (Below(2) != 0 ? 1 : -1));
                    break;
            }
        }
        return bytes;
    }

private:
    std::size_t Below(std::size_t limit) { return random_() % limit; }

    std::mt19937 random_;
};

/// How many files the tests below read together, 6 of them sources of as many each.
int MutationCount()
{
    const char* const wanted = std::getenv("ORVANE_MUTATIONS");
    return wanted != nullptr ? std::atoi(wanted) : 6000;
}

void ImportMutations(const Bytes& source, unsigned seed)
{
    const TemporaryFile file(source);
    Mutations mutations(seed);
    for (int i = 0, count = (MutationCount() + 5) / 6; i < count; ++i)
    {
        file.Overwrite(mutations.Next(source));
        ThreeDStudioObject node;
        node.CreateFromFile(file.Path());
        ExpectSound(node);
        if (testing::Test::HasFatalFailure())
        {
            FAIL() << "mutation " << i << " of seed " << seed;
        }
        // Every vertex takes 12 bytes of the file, and every face 8.
        std::size_t elementBytes = 0;
        for (int child = 0; child < node.GetChildCount(); ++child)
        {
            auto& mesh = dynamic_cast<TriangularMeshObject&>(*node.GetChildByIndex(child));
            elementBytes += 12 * static_cast<std::size_t>(mesh.GetVerticies()->GetSize()) +
                            8 * static_cast<std::size_t>(mesh.GetFaces()->GetSize());
        }
        ASSERT_LE(elementBytes, source.size()) << i;
    }
}

TEST(ThreeDStudioFiles, MutationsOfRealFilesLeaveSoundMeshes)
{
    REQUIRE_REAL_FILES();
    unsigned seed = 1;
    for (const ExpectedFile& expected : expectedFiles)
    {
        ImportMutations(ReadFile(PathOf(expected)), seed++);
    }
}

TEST(ThreeDStudioFiles, MutationsOfGeneratedFilesLeaveSoundMeshes)
{
    const RecordBytes color = ChunkOf(0x0010, {RecordBytes().Floats({1, 0, 0})});
    const RecordBytes percentage = ChunkOf(0x0031, {RecordBytes().Float(0.5f)});
    ImportMutations(
        FileOf({MaterialChunk("red", {ChunkOf(0xA020, {color}), ChunkOf(0xA050, {percentage})}),
                MeshObjectChunk("a", {MaterialGroup("red", {0, 2})}), MeshObjectChunk("Landscape"),
                MeshObjectChunk("b")}),
        77);
    ImportMutations(MeshFile(4, Grid(9, 7), 4), 78);
}

// Each chunk claims to hold one of the next size: reading must not follow the nesting.
TEST(ThreeDStudioFiles, ChunksNestedAsDeepAsTheFileIsLongAreReadWithoutFollowing)
{
    constexpr DWORD depth = 300000;
    for (const WORD id : {0x3D3D, 0x4000, 0x4100, 0x4120, 0xAFFF, 0x1234})
    {
        RecordBytes bytes;
        for (DWORD level = 0; level < depth; ++level)
        {
            bytes.Word(level == 0 ? WORD{0x4D4D} : id).Dword((depth - level) * 6);
        }
        Imported node(bytes);
        EXPECT_EQ(node.result, 1);
    }
}

}  // namespace
