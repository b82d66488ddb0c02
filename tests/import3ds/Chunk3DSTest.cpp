// SPDX-License-Identifier: MIT
#include "import3ds/Chunk3DS.h"

#include "tests/support/Chunks.h"

#include <type_traits>

namespace
{

class ChunksInMemory : public testing::Test
{
protected:
    void Fill(const Bytes& bytes)
    {
        file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
        file.SeekToBegin();
    }
    CMemFile file;
};

TEST_F(ChunksInMemory, AFreshChunkHasItsFileAndZeros)
{
    const Chunk3DS chunk(&file);
    EXPECT_EQ(chunk.file, &file);
    EXPECT_EQ(chunk.start, 0u);
    EXPECT_EQ(chunk.end, 0u);
    EXPECT_EQ(chunk.length, 0u);
    EXPECT_EQ(chunk.id, 0);
    static_assert(std::has_virtual_destructor_v<Chunk3DS>);
}

TEST_F(ChunksInMemory, InitializeReadsTheIdAndTheLengthAndStopsBehindThem)
{
    Fill(RecordBytes().Raw("abc", 3).Word(0x4D4D).Dword(20).Dword(0));
    file.Seek(3, CFile::begin);
    Chunk3DS chunk(&file);
    EXPECT_EQ(chunk.Initialize(), 1);
    EXPECT_EQ(chunk.start, 3u);
    EXPECT_EQ(chunk.end, 23u);
    EXPECT_EQ(chunk.length, 20u);
    EXPECT_EQ(chunk.id, 0x4D4D);
    EXPECT_EQ(file.GetPosition(), 9u);
}

TEST_F(ChunksInMemory, FinalizeSeeksToTheEndOfTheChunkEvenPastTheEndOfTheFile)
{
    Fill(RecordBytes().Word(0x4D4D).Dword(200).Dword(0));
    Chunk3DS chunk(&file);
    ASSERT_EQ(chunk.Initialize(), 1);
    EXPECT_EQ(chunk.Finalize(), 1);
    EXPECT_EQ(file.GetPosition(), 200u);
}

TEST_F(ChunksInMemory, CopiesHaveEveryField)
{
    Fill(RecordBytes().Raw("ab", 2).Word(0x3D3D).Dword(30));
    file.Seek(2, CFile::begin);
    Chunk3DS chunk(&file);
    ASSERT_EQ(chunk.Initialize(), 1);
    const Chunk3DS copy(chunk);
    Chunk3DS assigned(nullptr);
    assigned = chunk;
    for (const Chunk3DS& other : {copy, assigned})
    {
        EXPECT_EQ(other.file, &file);
        EXPECT_EQ(other.start, 2u);
        EXPECT_EQ(other.end, 32u);
        EXPECT_EQ(other.length, 30u);
        EXPECT_EQ(other.id, 0x3D3D);
    }
}

TEST(Chunk3DS, WithoutAFileBothOperationsReturn0)
{
    Chunk3DS chunk(nullptr);
    EXPECT_EQ(chunk.Initialize(), 0);
    EXPECT_EQ(chunk.Finalize(), 0);
}

TEST(Chunk3DS, WithAClosedFileBothOperationsReturn0)
{
    CFile closed;
    Chunk3DS chunk(&closed);
    EXPECT_EQ(chunk.Initialize(), 0);
    EXPECT_EQ(chunk.Finalize(), 0);
}

TEST_F(ChunksInMemory, AHeaderThatIsCutShortIsRefused)
{
    for (UINT bytes = 0; bytes < 6; ++bytes)
    {
        CMemFile cut(RecordBytes().Word(0x4D4D).Dword(20).Get().data(), bytes);
        Chunk3DS chunk(&cut);
        EXPECT_EQ(chunk.Initialize(), 0) << bytes;
    }
}

TEST_F(ChunksInMemory, LengthsBelowSixAreRefused)
{
    for (DWORD length = 0; length < 6; ++length)
    {
        CMemFile source(RecordBytes().Word(0x4D4D).Dword(length).Get().data(), 6);
        Chunk3DS chunk(&source);
        EXPECT_EQ(chunk.Initialize(), 0) << length;
        EXPECT_EQ(chunk.length, length);
        EXPECT_EQ(chunk.end, length);
    }
    CMemFile source(RecordBytes().Word(0x4D4D).Dword(6).Get().data(), 6);
    EXPECT_EQ(Chunk3DS(&source).Initialize(), 1);
}

TEST_F(ChunksInMemory, AnEndThatDoesNotFitIn32BitsIsRefused)
{
    Fill(RecordBytes().Dword(0).Word(0x4D4D).Dword(0xFFFFFFFB));
    Chunk3DS last(&file);
    file.Seek(4, CFile::begin);
    EXPECT_EQ(last.Initialize(), 1);
    EXPECT_EQ(last.end, 0xFFFFFFFFu);
    file.Seek(6, CFile::begin);
    file.Write(RecordBytes().Dword(0xFFFFFFFC).Get().data(), 4);
    file.Seek(4, CFile::begin);
    EXPECT_EQ(last.Initialize(), 0);
}

}  // namespace
