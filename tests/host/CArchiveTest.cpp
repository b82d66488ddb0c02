// SPDX-License-Identifier: MIT
#include "host/CArchive.h"

#include "tests/support/RecordBytes.h"
#include "tests/support/SampleObjects.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <string>

namespace
{

/// What is stored through an archive with the smallest buffer.
Bytes StoredBy(const std::function<void(CArchive&)>& store)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store, 128);
    store(archive);
    archive.Close();
    return file.Bytes();
}

/// The cause of what \p use throws on an archive that loads these bytes.
int CauseOfLoading(const Bytes& bytes, const std::function<void(CArchive&)>& use)
{
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    try
    {
        use(archive);
    }
    catch (const CArchiveException& exception)
    {
        return exception.m_cause;
    }
    return CArchiveException::none;
}

int CauseOfStoring(const std::function<void(CArchive&)>& use)
{
    CMemFile file;
    CArchive archive(&file, CArchive::store);
    try
    {
        use(archive);
    }
    catch (const CArchiveException& exception)
    {
        return exception.m_cause;
    }
    return CArchiveException::none;
}

CString LoadText(const Bytes& bytes)
{
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    CString text;
    archive >> text;
    return text;
}

/// Remembers the largest block that was asked of it.
class AskedFile : public CMemFile
{
public:
    using CMemFile::CMemFile;
    UINT Read(void* buffer, UINT count) override
    {
        largest = std::max(largest, count);
        return CMemFile::Read(buffer, count);
    }

    UINT largest = 0;
};

/// Refuses every write, as a full disk does.
class FullFile : public CMemFile
{
public:
    void Write(const void*, UINT) override
    {
        ++refused;
        AfxThrowFileException(CFileException::diskFull);
    }

    int refused = 0;
};

}  // namespace

TEST(CArchive, NumbersAreStoredLittleEndianWithoutPadding)
{
    const Bytes bytes = StoredBy([](CArchive& archive) {
        archive << BYTE{0x12} << WORD{0x3456} << LONG{-2} << DWORD{0x89ABCDEF} << int{1}
                << short{-1} << 'A' << 1.0f << -2.0;
    });

    // 1.0f is 0x3F800000 and -2.0 is 0xC000000000000000.
    EXPECT_EQ(bytes, (Bytes{0x12, 0x56, 0x34, 0xFE, 0xFF, 0xFF, 0xFF, 0xEF, 0xCD, 0xAB,
                            0x89, 1,    0,    0,    0,    0xFF, 0xFF, 'A',  0,    0,
                            0x80, 0x3F, 0,    0,    0,    0,    0,    0,    0,    0xC0}));
}

TEST(CArchive, NumbersAreReadBack)
{
    const Bytes bytes =
        RecordBytes().Byte(200).Word(60000).Long(-5).Dword(4000000000).Float(0.1f).Double(-0.0);
    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    BYTE byte;
    WORD word;
    LONG signedValue;
    DWORD dword;
    float single;
    double twice;

    archive >> byte >> word >> signedValue >> dword >> single >> twice;

    EXPECT_EQ(byte, 200);
    EXPECT_EQ(word, 60000);
    EXPECT_EQ(signedValue, -5);
    EXPECT_EQ(dword, 4000000000u);
    EXPECT_EQ(single, 0.1f);
    EXPECT_TRUE(twice == 0 && std::signbit(twice));
}

TEST(CArchive, TextLengthTakesTheShortestOfThreeForms)
{
    const auto stored = [](int length) {
        Bytes bytes = StoredBy([=](CArchive& archive) { archive << CString('x', length); });
        EXPECT_EQ(std::count(bytes.end() - length, bytes.end(), 'x'), length);
        bytes.resize(bytes.size() - length);
        return bytes;
    };

    EXPECT_EQ(stored(0), (Bytes{0}));
    EXPECT_EQ(stored(254), (Bytes{0xFE}));
    EXPECT_EQ(stored(255), (Bytes{0xFF, 0xFF, 0x00}));
    EXPECT_EQ(stored(0xFFFD), (Bytes{0xFF, 0xFD, 0xFF}));
    EXPECT_EQ(stored(0xFFFE), (Bytes{0xFF, 0xFF, 0xFF, 0xFE, 0xFF, 0, 0}));
    EXPECT_EQ(stored(70000), (Bytes{0xFF, 0xFF, 0xFF, 0x70, 0x11, 1, 0}));
}

TEST(CArchive, TextsOfEveryLengthFormAreReadBack)
{
    for (const int length : {0, 1, 254, 255, 0xFFFD, 0xFFFE, 0xFFFF, 200000})
    {
        std::string text(length, 'a');
        for (int i = 0; i < length; ++i)
        {
            text[i] = static_cast<char>(i % 251);  // zeros too
        }
        const Bytes bytes = StoredBy([&](CArchive& archive) { archive << CString(text); });
        EXPECT_TRUE(LoadText(bytes).Text() == text) << length;
    }
}

TEST(CArchive, TextIsReadFromALongerFormThanItNeeds)
{
    EXPECT_EQ(LoadText(RecordBytes().Byte(0xFF).Word(2).Raw("ab", 2)), "ab");
    EXPECT_EQ(LoadText(RecordBytes().Byte(0xFF).Word(0xFFFF).Dword(2).Raw("ab", 2)), "ab");
}

TEST(CArchive, TextOfSixteenBitCharactersIsRefused)
{
    const Bytes bytes = RecordBytes().Byte(0xFF).Word(0xFFFE).Byte(1).Word('a');
    CString text;
    EXPECT_EQ(CauseOfLoading(bytes, [&](CArchive& archive) { archive >> text; }),
              CArchiveException::generic);
}

TEST(CArchive, TextLongerThanTheInputTakesNoRoomForItsLength)
{
    const Bytes bytes = RecordBytes().Byte(0xFF).Word(0xFFFF).Dword(0xFFFFFFFF).Raw("abc", 3);
    AskedFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load);
    CString text = "before";

    try
    {
        archive >> text;
        FAIL();
    }
    catch (const CArchiveException& exception)
    {
        EXPECT_EQ(exception.m_cause, CArchiveException::endOfFile);
    }
    EXPECT_LE(file.largest, 65536u);
    EXPECT_EQ(text, "before");
}

TEST(CArchive, CountTakesAWordBelow65535)
{
    const auto stored = [](DWORD count) {
        return StoredBy([=](CArchive& archive) { archive.WriteCount(count); });
    };

    EXPECT_EQ(stored(0), (Bytes{0, 0}));
    EXPECT_EQ(stored(0xFFFE), (Bytes{0xFE, 0xFF}));
    EXPECT_EQ(stored(0xFFFF), (Bytes{0xFF, 0xFF, 0xFF, 0xFF, 0, 0}));
    EXPECT_EQ(stored(0x12345678), (Bytes{0xFF, 0xFF, 0x78, 0x56, 0x34, 0x12}));
}

TEST(CArchive, CountsAreReadBack)
{
    for (const DWORD count : {0u, 1u, 0xFFFEu, 0xFFFFu, 0x10000u, 0xFFFFFFFFu})
    {
        const Bytes bytes = StoredBy([=](CArchive& archive) { archive.WriteCount(count); });
        EXPECT_EQ(CauseOfLoading(bytes,
                                 [=](CArchive& archive) { EXPECT_EQ(archive.ReadCount(), count); }),
                  CArchiveException::none);
    }
}

TEST(CArchive, WriteStringStoresTheCharactersAlone)
{
    EXPECT_EQ(StoredBy([](CArchive& archive) { archive.WriteString("ab"); }), (Bytes{'a', 'b'}));
}

TEST(CArchive, StoringIntoALoadingArchiveIsRefusedAsReadOnly)
{
    SampleLeaf leaf;
    const std::vector<std::function<void(CArchive&)>> uses = {
        [](CArchive& archive) { archive << 1; },
        [](CArchive& archive) { archive << CString("a"); },
        [](CArchive& archive) { archive.Write("a", 1); },
        [](CArchive& archive) { archive.WriteCount(1); },
        [](CArchive& archive) { archive.WriteString("a"); },
        [&](CArchive& archive) { archive << &leaf; },
        [](CArchive& archive) { archive.WriteObject(nullptr); },
        [](CArchive& archive) { archive.WriteClass(RUNTIME_CLASS(SampleLeaf)); }};
    for (const auto& use : uses)
    {
        EXPECT_EQ(CauseOfLoading(Bytes(100), use), CArchiveException::readOnly);
    }
}

TEST(CArchive, LoadingFromAStoringArchiveIsRefusedAsWriteOnly)
{
    const std::vector<std::function<void(CArchive&)>> uses = {
        [](CArchive& archive) {
            int value;
            archive >> value;
        },
        [](CArchive& archive) {
            CString text;
            archive >> text;
        },
        [](CArchive& archive) {
            char byte;
            archive.Read(&byte, 1);
        },
        [](CArchive& archive) { archive.Skip(1); },
        [](CArchive& archive) { archive.ReadCount(); },
        [](CArchive& archive) { archive.ReadObject(nullptr); },
        [](CArchive& archive) { archive.ReadClass(); }};
    for (const auto& use : uses)
    {
        EXPECT_EQ(CauseOfStoring(use), CArchiveException::writeOnly);
    }
}

TEST(CArchive, ReadGivesFewerBytesOnlyAtTheEnd)
{
    const Bytes bytes(1000, 7);
    CMemFile file(bytes.data(), 1000);
    CArchive archive(&file, CArchive::load, 128);
    BYTE target[2000];

    EXPECT_EQ(archive.Read(target, 300), 300u);
    EXPECT_EQ(archive.Read(target, 2000), 700u);
    EXPECT_EQ(archive.Read(target, 1), 0u);
}

TEST(CArchive, ValueCutShortThrowsEndOfFileAndSaysWhere)
{
    const Bytes bytes(6);
    CMemFile file(bytes.data(), 6);
    CArchive archive(&file, CArchive::load);
    int value;
    archive >> value;

    try
    {
        archive >> value;
        FAIL();
    }
    catch (const CArchiveException& exception)
    {
        EXPECT_EQ(exception.m_cause, CArchiveException::endOfFile);
        EXPECT_NE(std::string(exception.what()).find("2 of the 4"), std::string::npos);
        EXPECT_NE(std::string(exception.what()).find("byte 6"), std::string::npos);
    }
}

TEST(CArchive, BlocksBeyondTheBufferKeepTheirPlaceAmongSmallValues)
{
    std::vector<BYTE> block(100000);
    for (std::size_t i = 0; i < block.size(); ++i)
    {
        block[i] = static_cast<BYTE>(i * 7);
    }
    const UINT sizes[] = {1, 100000, 127, 128, 129, 3, 5000, 0};
    const Bytes bytes = StoredBy([&](CArchive& archive) {
        for (const UINT size : sizes)
        {
            archive << size;
            archive.Write(block.data(), size);
        }
    });
    Bytes expected;
    for (const UINT size : sizes)
    {
        const Bytes part = RecordBytes().Dword(size).Raw(block.data(), size);
        expected.insert(expected.end(), part.begin(), part.end());
    }
    EXPECT_TRUE(bytes == expected);

    CMemFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    CArchive archive(&file, CArchive::load, 128);
    for (const UINT size : sizes)
    {
        UINT storedSize;
        archive >> storedSize;
        ASSERT_EQ(storedSize, size);
        std::vector<BYTE> read(size);
        archive.ReadExactly(read.data(), size);
        EXPECT_TRUE(std::equal(read.begin(), read.end(), block.begin()));
    }
}

TEST(CArchive, SkipDropsExactlySoManyBytes)
{
    Bytes bytes(10000);
    bytes[9000] = 42;
    CMemFile file(bytes.data(), 10000);
    CArchive archive(&file, CArchive::load);
    BYTE value;

    archive.Skip(0);
    archive.Skip(9000);
    archive >> value;
    EXPECT_EQ(value, 42);
    archive.Skip(999);
    EXPECT_EQ(archive.Read(&value, 1), 0u);
    EXPECT_EQ(CauseOfLoading(Bytes(5), [](CArchive& other) { other.Skip(6); }),
              CArchiveException::endOfFile);
}

TEST(CArchive, FlushedLoadingLeavesTheFileAtTheFirstUnreadByte)
{
    const Bytes bytes = {1, 2, 3, 4, 5, 6, 7, 8};
    CMemFile file(bytes.data(), 8);
    CArchive archive(&file, CArchive::load);
    WORD word;
    archive >> word;
    archive.Flush();

    EXPECT_EQ(file.GetPosition(), 2u);
    archive >> word;
    EXPECT_EQ(word, 0x0403);
    archive.Close();
    EXPECT_EQ(file.GetPosition(), 4u);
}

TEST(CArchive, StoredBytesReachTheFileOnFlushCloseAndDestruction)
{
    CMemFile file;
    {
        CArchive archive(&file, CArchive::store);
        archive << BYTE{1};
        EXPECT_EQ(file.GetLength(), 0u);
        archive.Flush();
        EXPECT_EQ(file.GetLength(), 1u);
        archive << BYTE{2};
    }
    EXPECT_EQ(file.Bytes(), (Bytes{1, 2}));
    CArchive archive(&file, CArchive::store);
    archive << BYTE{3};
    archive.Close();
    EXPECT_EQ(file.Bytes(), (Bytes{1, 2, 3}));
    EXPECT_EQ(archive.GetFile(), nullptr);
}

TEST(CArchive, AbortAndNoFlushOnDeleteDropWhatIsBuffered)
{
    CMemFile file;
    {
        CArchive archive(&file, CArchive::store | CArchive::bNoFlushOnDelete);
        EXPECT_TRUE(archive.IsStoring());
        archive << 1;
    }
    {
        CArchive archive(&file, CArchive::store);
        archive << 1;
        archive.Abort();
    }
    EXPECT_EQ(file.GetLength(), 0u);
}

TEST(CArchive, DestructionAfterAFailedWriteThrowsNothingAndTriesOnce)
{
    FullFile file;
    EXPECT_NO_THROW({
        CArchive archive(&file, CArchive::store);
        archive << 1;
    });
    EXPECT_EQ(file.refused, 1);
    {
        CArchive archive(&file, CArchive::store);
        archive << 1;
        EXPECT_THROW(archive.Flush(), CFileException);
    }
    EXPECT_EQ(file.refused, 2);
    CArchive archive(&file, CArchive::store);
    archive << 1;
    EXPECT_THROW(archive.Close(), CFileException);
    EXPECT_NO_THROW(archive.Close());
}

TEST(CArchive, ClosedArchiveRefusesEveryUse)
{
    EXPECT_EQ(CauseOfStoring([](CArchive& archive) {
                  archive.Close();
                  archive << 1;
              }),
              CArchiveException::generic);
    EXPECT_EQ(CauseOfLoading(Bytes(9),
                             [](CArchive& archive) {
                                 int value;
                                 archive >> value;
                                 archive.Abort();
                                 archive >> value;
                             }),
              CArchiveException::generic);
}

TEST(CArchiveException, SaysWhatItsCauseMeans)
{
    try
    {
        AfxThrowArchiveException(CArchiveException::badSchema);
        FAIL();
    }
    catch (const CException& exception)
    {
        EXPECT_TRUE(exception.IsKindOf(RUNTIME_CLASS(CArchiveException)));
        EXPECT_STREQ(exception.what(), "the record's version is not known");
    }
    const auto text = [](int cause) { return std::string(CArchiveException(cause, "").what()); };
    EXPECT_EQ(text(CArchiveException::none), "no error");
    EXPECT_EQ(text(CArchiveException::generic), "the archive cannot be read or written");
    EXPECT_EQ(text(CArchiveException::readOnly), "a value was stored into an archive that loads");
    EXPECT_EQ(text(CArchiveException::endOfFile), "the input ends inside a value");
    EXPECT_EQ(text(CArchiveException::writeOnly), "a value was loaded from an archive that stores");
    EXPECT_EQ(text(CArchiveException::badIndex),
              "a reference number belongs to no object or class");
    EXPECT_EQ(text(CArchiveException::badClass),
              "an unknown class, or an object of an unexpected class");
}
