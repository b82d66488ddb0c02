// SPDX-License-Identifier: MIT
#include "host/CFile.h"

#include "tests/support/SystemCalls.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace
{

namespace fs = std::filesystem;

/// A fresh folder for each test.
class CFileOnDisk : public testing::Test
{
protected:
    CFileOnDisk()
    {
        fs::remove_all(folder);
        fs::create_directories(folder);
    }
    ~CFileOnDisk() override { fs::remove_all(folder); }

    std::string Path(const char* name) const { return (folder / name).string(); }
    void Put(const char* name, const std::string& content) const
    {
        CFile file(Path(name).c_str(), CFile::modeCreate | CFile::modeWrite);
        file.Write(content.data(), static_cast<UINT>(content.size()));
    }
    std::string Get(const char* name) const
    {
        CFile file(Path(name).c_str(), CFile::modeRead);
        std::string content(file.GetLength(), '\0');
        EXPECT_EQ(file.Read(content.data(), static_cast<UINT>(content.size())), content.size());
        return content;
    }
    int OpenCause(const char* name, UINT flags) const
    {
        CFile file;
        CFileException error;
        const BOOL opened = file.Open(Path(name).c_str(), flags, &error);
        EXPECT_EQ(opened != FALSE, error.m_cause == CFileException::none);
        return error.m_cause;
    }

    const fs::path folder = fs::path(ORVANE_BINARY_DIR) / "file-tests" /
                            testing::UnitTest::GetInstance()->current_test_info()->name();
};

template <typename Use>
int Cause(Use use)
{
    try
    {
        use();
    }
    catch (const CFileException& exception)
    {
        return exception.m_cause;
    }
    return CFileException::none;
}

}  // namespace

TEST_F(CFileOnDisk, ReadsBackWhatWasWritten)
{
    Put("a", "hello");
    EXPECT_EQ(Get("a"), "hello");
    CFile file(Path("a").c_str(), CFile::modeRead);
    char buffer[10];
    EXPECT_EQ(file.Read(buffer, 10), 5u);
    EXPECT_EQ(file.Read(buffer, 10), 0u);
}

TEST_F(CFileOnDisk, OpeningModesMakeEmptyOrKeepTheFile)
{
    Put("a", "hello");
    {
        CFile file(Path("a").c_str(), CFile::modeWrite);
        file.Write("J", 1);
    }
    EXPECT_EQ(Get("a"), "Jello");
    {
        CFile file(Path("a").c_str(),
                   CFile::modeCreate | CFile::modeNoTruncate | CFile::modeReadWrite);
        file.SeekToEnd();
        file.Write("!", 1);
    }
    EXPECT_EQ(Get("a"), "Jello!");
    {
        CFile file(Path("new").c_str(),
                   CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite);
    }
    EXPECT_EQ(Get("new"), "");
    {
        CFile file(Path("a").c_str(), CFile::modeCreate | CFile::modeReadWrite);
    }
    EXPECT_EQ(Get("a"), "");
    EXPECT_EQ(OpenCause("none", CFile::modeWrite), CFileException::fileNotFound);
    EXPECT_FALSE(fs::exists(Path("none")));
}

TEST_F(CFileOnDisk, ReadingAndWritingMayAlternate)
{
    Put("a", "abcdef");
    CFile file(Path("a").c_str(), CFile::modeReadWrite);
    char byte;
    file.Read(&byte, 1);
    file.Write("XY", 2);
    file.Read(&byte, 1);
    EXPECT_EQ(byte, 'd');
    EXPECT_EQ(file.GetPosition(), 4u);
    file.Close();
    EXPECT_EQ(Get("a"), "aXYdef");
}

TEST_F(CFileOnDisk, SeeksFromAllThreeOrigins)
{
    Put("a", "abcdef");
    CFile file(Path("a").c_str(), CFile::modeReadWrite);
    EXPECT_EQ(file.Seek(2, CFile::begin), 2);
    EXPECT_EQ(file.Seek(1, CFile::current), 3);
    EXPECT_EQ(file.Seek(-1, CFile::end), 5);
    EXPECT_EQ(file.GetLength(), 6u);
    EXPECT_EQ(file.GetPosition(), 5u);
    EXPECT_EQ(file.SeekToEnd(), 6);
    file.SeekToBegin();
    EXPECT_EQ(Cause([&] { file.Seek(-1, CFile::begin); }), CFileException::badSeek);
    EXPECT_EQ(Cause([&] { file.Seek(0, 3); }), CFileException::badSeek);
    EXPECT_EQ(file.Seek(100, CFile::begin), 100);
}

// Reading ahead must not show: short and long pieces, and seeks within what was read ahead, before
// it and behind it.
TEST_F(CFileOnDisk, AFileForReadingIsWhereItsReadsAndSeeksLeadIt)
{
    std::string content(300000, '\0');
    for (std::size_t i = 0; i < content.size(); ++i)
    {
        content[i] = static_cast<char>(i * 7 + i / 251);
    }
    Put("a", content);
    CFile file(Path("a").c_str(), CFile::modeRead);
    std::uint64_t expected = 0;
    std::string piece;
    const auto read = [&](std::size_t count) {
        piece.assign(count, '\0');
        const std::size_t there =
            expected < content.size() ? std::min(count, content.size() - expected) : 0;
        ASSERT_EQ(file.Read(piece.data(), static_cast<UINT>(count)), there);
        ASSERT_EQ(piece.substr(0, there),
                  content.substr(std::min(expected, content.size()), there));
        expected += there;
        ASSERT_EQ(file.GetPosition(), expected);
    };
    const auto seek = [&](std::int64_t offset, UINT from, std::uint64_t to) {
        ASSERT_EQ(file.Seek(offset, from), static_cast<std::int64_t>(to));
        ASSERT_EQ(file.GetPosition(), to);
        expected = to;
    };
    read(1);
    read(6);
    seek(-3, CFile::current, 4);
    read(65531);  // to just before the end of the first 64 KiB and over it
    read(10);
    seek(100, CFile::begin, 100);
    read(200000);
    read(5);
    EXPECT_EQ(file.GetLength(), content.size());
    read(5);
    seek(-10, CFile::end, 299990);
    read(20);
    read(1);
    seek(65536, CFile::begin, 65536);
    read(2);
    seek(400000, CFile::current, 465538);
    read(2);
    EXPECT_EQ(Cause([&] { file.Seek(-1, CFile::begin); }), CFileException::badSeek);
    EXPECT_EQ(Cause([&] { file.Seek(std::numeric_limits<long>::max(), CFile::current); }),
              CFileException::badSeek);
    EXPECT_EQ(file.GetPosition(), 465538u);
    seek(0, CFile::begin, 0);
    read(300001);
}

TEST_F(CFileOnDisk, SetLengthCutsAndFillsAndGoesToTheEnd)
{
    CFile file(Path("a").c_str(), CFile::modeCreate | CFile::modeReadWrite);
    file.Write("abcdef", 6);
    file.SetLength(2);
    EXPECT_EQ(file.GetPosition(), 2u);
    file.SetLength(4);
    EXPECT_EQ(file.GetLength(), 4u);
    file.Close();
    EXPECT_EQ(Get("a"), std::string("ab\0\0", 4));
}

TEST_F(CFileOnDisk, ErrorsNameTheFileAndTheReason)
{
    try
    {
        CFile file(Path("castle.3ds").c_str(), CFile::modeRead);
        FAIL();
    }
    catch (const CFileException& exception)
    {
        EXPECT_EQ(exception.m_cause, CFileException::fileNotFound);
        EXPECT_STREQ(exception.m_strFileName, Path("castle.3ds").c_str());
        EXPECT_GT(exception.m_lOsError, 0);
        EXPECT_EQ(
            std::string(exception.what()).rfind(Path("castle.3ds") + ": there is no such file", 0),
            0u);
    }
    Put("a", "");
    EXPECT_EQ(OpenCause("a/b", CFile::modeRead), CFileException::badPath);
    EXPECT_EQ(OpenCause(".", CFile::modeRead), CFileException::accessDenied);
    EXPECT_EQ(OpenCause(".", CFile::modeCreate | CFile::modeWrite), CFileException::accessDenied);
    EXPECT_EQ(OpenCause(std::string(5000, 'x').c_str(), CFile::modeRead), CFileException::badPath);
}

TEST_F(CFileOnDisk, AccessAgainstTheOpeningModeIsDenied)
{
    Put("a", "abc");
    char byte;
    CFile reader(Path("a").c_str(), CFile::modeRead);
    EXPECT_EQ(Cause([&] { reader.Write("x", 1); }), CFileException::accessDenied);
    EXPECT_EQ(Cause([&] { reader.SetLength(0); }), CFileException::accessDenied);
    CFile writer(Path("a").c_str(), CFile::modeWrite);
    EXPECT_EQ(Cause([&] { writer.Read(&byte, 1); }), CFileException::accessDenied);
    EXPECT_EQ(Get("a"), "abc");
}

TEST_F(CFileOnDisk, FullDeviceIsReportedAtTheLatestOnClose)
{
    if (!fs::exists("/dev/full"))
    {
        GTEST_SKIP() << "no device that is always full here";
    }
    CFile file("/dev/full", CFile::modeWrite);
    EXPECT_EQ(Cause([&] {
                  file.Write("x", 1);
                  file.Close();
              }),
              CFileException::diskFull);
    EXPECT_NO_THROW(file.Close());
}

TEST_F(CFileOnDisk, FilePathIsAbsoluteWhileOpen)
{
    Put("a", "");
    CFile file(fs::relative(Path("a")).string().c_str(), CFile::modeRead);
    EXPECT_TRUE(fs::path(file.GetFilePath().Text()).is_absolute());
    EXPECT_TRUE(fs::equivalent(file.GetFilePath().Text(), Path("a")));
    file.Close();
    EXPECT_TRUE(file.GetFilePath().IsEmpty());
}

TEST_F(CFileOnDisk, EveryCauseIsSaidInWords)
{
    const auto text = [](int cause) { return std::string(CFileException(cause, -1, "a").what()); };
    EXPECT_EQ(text(CFileException::none), "a: no error");
    EXPECT_EQ(text(CFileException::fileNotFound), "a: there is no such file");
    EXPECT_EQ(text(CFileException::badPath), "a: the path is not valid");
    EXPECT_EQ(text(CFileException::tooManyOpenFiles), "a: too many files are open");
    EXPECT_EQ(text(CFileException::accessDenied), "a: access is denied");
    EXPECT_EQ(text(CFileException::invalidFile), "a: no file is open");
    EXPECT_EQ(text(CFileException::badSeek), "a: there is no such position");
    EXPECT_EQ(text(CFileException::hardIO), "a: the device reports an error");
    EXPECT_EQ(text(CFileException::diskFull), "a: there is no space left");
    EXPECT_EQ(text(CFileException::endOfFile), "a: the file ends");
    EXPECT_EQ(text(CFileException::genericException), "a: the file cannot be used");
}

TEST_F(CFileOnDisk, RefusedWritesAreOfTheCauseThatTheSystemGives)
{
    for (const auto& [error, cause] : {std::pair{EIO, +CFileException::hardIO},
                                       {ENOSPC, +CFileException::diskFull},
                                       {EFBIG, +CFileException::diskFull},
                                       {ENFILE, +CFileException::tooManyOpenFiles},
                                       {EROFS, +CFileException::accessDenied},
                                       {ELOOP, +CFileException::badPath},
                                       {EDOM, +CFileException::genericException}})
    {
        CFile file(Path("a").c_str(), CFile::modeCreate | CFile::modeWrite);
        const SystemCalls calls([error = error](const std::string&) { return error; });
        EXPECT_EQ(Cause([&] { file.Write("x", 1); }), cause) << error;
    }
}

TEST_F(CFileOnDisk, AFileThatCannotBeReadOrMeasuredIsReported)
{
    // The first byte of a process's memory belongs to nobody.
    CFile memory("/proc/self/mem", CFile::modeRead);
    char byte = 0;
    EXPECT_EQ(Cause([&] { memory.Read(&byte, 1); }), CFileException::hardIO);
    // A device takes no length.
    CFile device("/dev/null", CFile::modeWrite);
    EXPECT_EQ(Cause([&] { device.SetLength(5); }), CFileException::badSeek);
    // A pipe has no length.
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    CFile end(("/proc/self/fd/" + std::to_string(ends[0])).c_str(), CFile::modeRead);
    EXPECT_EQ(Cause([&] { end.GetLength(); }), CFileException::badSeek);
    close(ends[0]);
    close(ends[1]);
}

TEST(CFile, NotOpenIsAnInvalidFile)
{
    CFile file;
    char byte;
    EXPECT_EQ(Cause([&] { file.Read(&byte, 1); }), CFileException::invalidFile);
    EXPECT_EQ(Cause([&] { file.Write("x", 1); }), CFileException::invalidFile);
    EXPECT_EQ(Cause([&] { file.Seek(0, CFile::begin); }), CFileException::invalidFile);
    EXPECT_EQ(Cause([&] { file.GetLength(); }), CFileException::invalidFile);
    EXPECT_NO_THROW(file.Close());
    EXPECT_NO_THROW(file.Abort());
}

TEST(CMemFile, ReadsStopAtTheEnd)
{
    const BYTE bytes[] = {1, 2, 3};
    CMemFile file(bytes, 3);
    BYTE target[9];
    EXPECT_EQ(file.Read(target, 2), 2u);
    EXPECT_EQ(file.Read(target, 9), 1u);
    EXPECT_EQ(target[0], 3);
    EXPECT_EQ(file.Read(target, 1), 0u);
    file.Seek(100, CFile::begin);
    EXPECT_EQ(file.Read(target, 1), 0u);
}

TEST(CMemFile, WritesReplaceAndGrow)
{
    CMemFile file;
    file.Write("abc", 3);
    file.Seek(1, CFile::begin);
    file.Write("XYZ", 3);
    EXPECT_EQ(file.Bytes(), (std::vector<BYTE>{'a', 'X', 'Y', 'Z'}));
    file.Write(nullptr, 0);
    file.Seek(2, CFile::end);
    EXPECT_EQ(file.GetLength(), 4u);
    file.Write("!", 1);
    EXPECT_EQ(file.Bytes(), (std::vector<BYTE>{'a', 'X', 'Y', 'Z', 0, 0, '!'}));
    EXPECT_EQ(file.GetPosition(), 7u);
}

TEST(CMemFile, SeeksWithinWhatANumberHolds)
{
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    CMemFile file;
    file.Write("abc", 3);
    EXPECT_EQ(Cause([&] { file.Seek(-4, CFile::current); }), CFileException::badSeek);
    EXPECT_EQ(Cause([&] { file.Seek(most, CFile::end); }), CFileException::badSeek);
    EXPECT_EQ(Cause([&] { file.Seek(0, 9); }), CFileException::badSeek);
    EXPECT_EQ(Cause([&] { file.Seek(std::numeric_limits<std::int64_t>::min(), CFile::begin); }),
              CFileException::badSeek);
    EXPECT_EQ(file.GetPosition(), 3u);
    EXPECT_EQ(file.Seek(-3, CFile::end), 0);
    EXPECT_EQ(file.Seek(most, CFile::begin), most);
    EXPECT_EQ(Cause([&] { file.Write("x", 1); }), CFileException::diskFull);
    EXPECT_EQ(file.GetLength(), 3u);
}

TEST(CMemFile, SetLengthCutsAndFillsAndGoesToTheEnd)
{
    CMemFile file;
    file.Write("abc", 3);
    file.SetLength(1);
    EXPECT_EQ(file.GetPosition(), 1u);
    file.SetLength(2);
    EXPECT_EQ(file.Bytes(), (std::vector<BYTE>{'a', 0}));
}

TEST(CMemFile, CloseEmptiesAndOpenIsRefused)
{
    CMemFile file;
    file.Write("abc", 3);
    file.Close();
    EXPECT_EQ(file.GetLength(), 0u);
    EXPECT_EQ(file.GetPosition(), 0u);
    CFileException error;
    EXPECT_FALSE(file.Open("any", CFile::modeRead, &error));
    EXPECT_EQ(error.m_cause, CFileException::genericException);
}

TEST(CMemFile, ItIsAFileThatAbortEmpties)
{
    CMemFile file;
    EXPECT_TRUE(file.IsKindOf(RUNTIME_CLASS(CFile)));
    EXPECT_EQ(file.GetRuntimeClass(), RUNTIME_CLASS(CMemFile));
    file.Write("abc", 3);
    file.Abort();
    EXPECT_EQ(file.GetLength(), 0u);
}

TEST(CMemFile, ALengthThatNoMemoryHasIsAFullDisk)
{
    CMemFile file;
    file.Write("abc", 3);
    EXPECT_EQ(Cause([&] { file.SetLength(std::numeric_limits<std::uint64_t>::max()); }),
              CFileException::diskFull);
    EXPECT_EQ(file.GetLength(), 3u);
}
