// SPDX-License-Identifier: MIT
// The parts of a file that an import skips and reports to OnSkipped.
#include "tests/support/Chunks.h"

#include <tuple>

namespace
{

using Skip = ThreeDStudioObject::SkipReason;

class Watched : public ThreeDStudioObject
{
public:
    explicit Watched(const Bytes& bytes)
    {
        const TemporaryFile source(bytes);
        CreateFromFile(source.Path());
    }

    std::vector<SkippedPart> skipped;

protected:
    void OnSkipped(const SkippedPart& part) override { skipped.push_back(part); }
};

using Told = std::vector<std::tuple<int, int, Skip>>;  // parent, id, why

Told Skipped(const Bytes& bytes)
{
    Told told;
    for (const ThreeDStudioObject::SkippedPart& part : Watched(bytes).skipped)
    {
        told.emplace_back(part.parent, part.id, part.why);
    }
    return told;
}

TEST(ThreeDStudioSkipped, NothingIsSkippedInAFileWhoseChunksAreAllRead)
{
    const RecordBytes color = ChunkOf(0x0011, {RecordBytes().Byte(1).Byte(2).Byte(3)});
    EXPECT_EQ(Skipped(FileOf({MaterialChunk("red", {ChunkOf(0xA020, {color})}),
                              MeshObjectChunk("a", {MaterialGroup("red", {0, 2})})})),
              Told());
}

TEST(ThreeDStudioSkipped, ChunksThatAreNotReadAreReportedWithTheirParents)
{
    const RecordBytes color = ChunkOf(0x0011, {RecordBytes().Byte(1).Byte(2).Byte(3)});
    const RecordBytes mesh = ChunkOf(
        0x4100, {VertexChunk({0, 0, 0, 1, 0, 0, 0, 1, 0}), ChunkOf(0x4140),
                 FaceChunk({0, 1, 2, 7}, {ChunkOf(0x4150)}),
                 ChunkOf(0x4160, {RecordBytes().Floats({1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0})})});
    const Bytes bytes = ChunkOf(
        0x4D4D,
        {ChunkOf(0x0002),
         ChunkOf(0x3D3D, {ChunkOf(0x0100),
                          MaterialChunk("m", {ChunkOf(0xA200), ChunkOf(0xA020, {color, color}),
                                              ChunkOf(0xA010, {ChunkOf(0x0012), color})}),
                          ObjectChunk("a", {ChunkOf(0x4010), mesh, ChunkOf(0x4012)}),
                          ObjectChunk("light", {ChunkOf(0x4600)}),
                          ObjectChunk("camera", {ChunkOf(0x4700)})}),
         ChunkOf(0xB000)});
    EXPECT_EQ(Skipped(bytes), (Told{{0x4D4D, 0x0002, Skip::NotUsed},
                                    {0x3D3D, 0x0100, Skip::NotUsed},
                                    {0xAFFF, 0xA200, Skip::NotUsed},
                                    {0xA020, 0, Skip::NotUsed},
                                    {0xA010, 0x0012, Skip::NotUsed},
                                    {0x4000, 0x4010, Skip::NotUsed},  // before the mesh
                                    {0x4100, 0x4140, Skip::NotUsed},
                                    {0x4120, 0x4150, Skip::NotUsed},
                                    {0x4100, 0x4160, Skip::NotUsed},
                                    {0x4000, 0x4600, Skip::NotUsed},
                                    {0x4000, 0x4700, Skip::NotUsed},
                                    {0x4D4D, 0xB000, Skip::NotUsed}}));
}

TEST(ThreeDStudioSkipped, TheLandscapeAndTheRestOfItsEditorDataAreReported)
{
    const RecordBytes landscape = MeshObjectChunk("Landscape");
    const RecordBytes behind = MeshObjectChunk("b");
    const Watched node(FileOf({landscape, behind}));
    ASSERT_EQ(node.skipped.size(), 2u);
    EXPECT_EQ(node.skipped[0].why, Skip::Landscape);
    EXPECT_EQ(node.skipped[0].id, 0x4000);
    EXPECT_EQ(node.skipped[0].start, 12u);
    EXPECT_EQ(node.skipped[0].length, landscape.Get().size());
    EXPECT_EQ(node.skipped[1].why, Skip::AfterFailure);
    EXPECT_EQ(node.skipped[1].parent, 0x3D3D);
    EXPECT_EQ(node.skipped[1].start, 12 + landscape.Get().size());
    EXPECT_EQ(node.skipped[1].length, behind.Get().size());
}

TEST(ThreeDStudioSkipped, AListThatIsTooShortIsReportedBeforeThePartsThatItEnds)
{
    const RecordBytes faces = FaceChunk({0, 1, 2, 7});
    const RecordBytes mesh = ChunkOf(0x4100, {ChunkOf(0x4110, {RecordBytes().Word(9)}), faces});
    EXPECT_EQ(Skipped(FileOf({ObjectChunk("a", {mesh}), MeshObjectChunk("b")})),
              (Told{{0x4100, 0x4110, Skip::Incomplete},
                    {0x4100, 0, Skip::AfterFailure},
                    {0x3D3D, 0, Skip::AfterFailure}}));
}

TEST(ThreeDStudioSkipped, AChunkThatEndsPastItsParentIsReported)
{
    const RecordBytes tooLong = RecordBytes().Word(0x4000).Dword(1000);
    EXPECT_EQ(Skipped(FileOf({MeshObjectChunk("a"), tooLong})),
              (Told{{0x3D3D, 0x4000, Skip::PastParent}}));
}

TEST(ThreeDStudioSkipped, APartThatEndsPastItsParentNamesTheParentsEnd)
{
    // The root and the editor data have 6 bytes of header each. The object "a" is 8 bytes long.
    const RecordBytes tooLong = RecordBytes().Word(0x4000).Dword(1000);
    const Watched node(FileOf({ObjectChunk("a", {}), tooLong}));
    ASSERT_EQ(node.skipped.size(), 1u);
    EXPECT_EQ(node.skipped[0].start, 20u);
    EXPECT_EQ(node.skipped[0].length, 1000u);
    EXPECT_EQ(node.skipped[0].parentEnd, 26u);
}

TEST(ThreeDStudioSkipped, BytesThatAreNotAHeaderAreReported)
{
    const RecordBytes tooShort = RecordBytes().Word(0x4000).Dword(5);
    EXPECT_EQ(Skipped(FileOf({MeshObjectChunk("a"), tooShort, MeshObjectChunk("b")})),
              (Told{{0x3D3D, 0, Skip::NoHeader}}));
}

TEST(ThreeDStudioSkipped, TheBytesBehindARootWithAnImpossibleLengthAreReported)
{
    const RecordBytes behind = ChunkOf(0x3D3D, {MeshObjectChunk("a")});
    const Watched node(Joined({RecordBytes().Word(0x4D4D).Dword(3), behind}));
    ASSERT_EQ(node.skipped.size(), 1U);
    EXPECT_EQ(node.skipped[0].parent, 0x4D4D);
    EXPECT_EQ(node.skipped[0].id, 0);
    EXPECT_EQ(node.skipped[0].start, 6U);
    EXPECT_EQ(node.skipped[0].length, behind.Get().size());
    EXPECT_EQ(node.skipped[0].why, Skip::NoHeader);
}

}  // namespace
