// SPDX-License-Identifier: MIT
// Files that are cut short, changed at random, or nested without end.
#include "tests/support/Chunks.h"
#include "tests/support/Lib3dsFile.h"
#include "tests/support/MeshFile.h"

#include <cstdlib>
#include <iterator>
#include <random>

namespace
{

namespace fs = std::filesystem;

/// The bytes of Workshop() as lib3ds writes them.
Bytes WorkshopBytes()
{
    const TemporaryFile file(Bytes{}, "-workshop");
    SaveWithLib3ds(*Workshop(), file.Path());
    std::ifstream in(file.Path(), std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(in), {});
}

/// A file with colours and percentages in both forms, and an object that ends the import.
Bytes BytesWithLandscape()
{
    const RecordBytes color = ChunkOf(0x0010, {RecordBytes().Floats({1, 0, 0})});
    const RecordBytes percentage = ChunkOf(0x0031, {RecordBytes().Float(0.5f)});
    return FileOf({MaterialChunk("red", {ChunkOf(0xA020, {color}), ChunkOf(0xA050, {percentage})}),
                   MeshObjectChunk("a", {MaterialGroup("red", {0, 2})}),
                   MeshObjectChunk("Landscape"), MeshObjectChunk("b")});
}

/// What must hold after an import, whatever the file was.
void ExpectConsistent(ThreeDStudioObject& node)
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

/// Imports a file cut at every length, from the whole file down to nothing.
void ImportTruncations(const Bytes& bytes, int meshes)
{
    const TemporaryFile file(bytes);
    int meshesBefore = meshes;
    for (std::size_t length = bytes.size(); length-- > 0;)
    {
        fs::resize_file(file.Path(), length);
        ThreeDStudioObject node;
        ASSERT_EQ(node.CreateFromFile(file.Path()), length >= Chunk3DS::headerSize ? 1 : 0)
            << length;
        ExpectConsistent(node);
        ASSERT_LE(node.GetChildCount(), meshesBefore) << length;
        meshesBefore = node.GetChildCount();
    }
    EXPECT_EQ(meshesBefore, 0);
}

TEST(ThreeDStudioDamage, EveryTruncationOfAFileOfLib3dsIsReadUpToTheCut)
{
    ImportTruncations(WorkshopBytes(), 3);
}

TEST(ThreeDStudioDamage, EveryTruncationOfAGeneratedFileIsReadUpToTheCut)
{
    ImportTruncations(MeshFile(8, Box(), 3), 8);
    ImportTruncations(MeshFile(2, Grid(9, 7), 4), 2);
}

/// Makes copies of a file with a few bytes changed.
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

/// How many changed files each of the three tests below imports. CONTRIBUTING.md has the command
/// for more.
int MutationCount()
{
    const char* const wanted = std::getenv("ORVANE_MUTATIONS");
    return wanted != nullptr ? std::atoi(wanted) / 3 : 2000;
}

void ImportMutations(const Bytes& source, unsigned seed)
{
    const TemporaryFile file(source);
    Mutations mutations(seed);
    for (int i = 0, count = MutationCount(); i < count; ++i)
    {
        file.Overwrite(mutations.Next(source));
        ThreeDStudioObject node;
        node.CreateFromFile(file.Path());
        ExpectConsistent(node);
        if (testing::Test::HasFatalFailure())
        {
            FAIL() << "mutation " << i << " of seed " << seed;
        }
        // A vertex takes 12 bytes of the file and a face 8.
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

TEST(ThreeDStudioDamage, MutationsOfAFileOfLib3dsLeaveConsistentMeshes)
{
    ImportMutations(WorkshopBytes(), 1);
}

TEST(ThreeDStudioDamage, MutationsOfAFileWithAllFormsOfValuesLeaveConsistentMeshes)
{
    ImportMutations(BytesWithLandscape(), 77);
}

TEST(ThreeDStudioDamage, MutationsOfAFileOfLargeMeshesLeaveConsistentMeshes)
{
    ImportMutations(MeshFile(4, Grid(9, 7), 4), 78);
}

// Each chunk claims to hold a chunk of the next size. A reader that called itself for each would
// use up its stack.
TEST(ThreeDStudioDamage, ChunksNestedAsDeepAsTheFileIsLongAreReadWithoutRecursion)
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
