// SPDX-License-Identifier: MIT
#include "platform/Files.h"

#include "platform/Bitmaps.h"
#include "platform/Errors.h"
#include "tests/support/Bitmaps.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

namespace
{

HANDLE OpenForReading(const CString& name)
{
    return CreateFileA(name, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

HANDLE Make(const CString& name)
{
    return CreateFileA(name, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                       FILE_ATTRIBUTE_ARCHIVE, nullptr);
}

TEST(Files, AMappedFileIsReadInPlace)
{
    const TemporaryFile file("mapped.bin", std::string("abcdef"));
    const HANDLE handle = OpenForReading(file.Path());
    ASSERT_NE(handle, INVALID_HANDLE_VALUE);
    DWORD high = 1;
    EXPECT_EQ(GetFileSize(handle, &high), 6U);
    EXPECT_EQ(high, 0U);
    const HANDLE mapping = CreateFileMappingA(handle, nullptr, PAGE_READONLY, 0, 0, nullptr);
    ASSERT_NE(mapping, nullptr);
    EXPECT_EQ(MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, 0), nullptr);
    EXPECT_EQ(MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 7), nullptr);
    EXPECT_EQ(MapViewOfFile(mapping, FILE_MAP_READ, 0, 4, 0), nullptr);
    void* const view = MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0);
    ASSERT_NE(view, nullptr);
    EXPECT_TRUE(CloseHandle(mapping));
    EXPECT_TRUE(CloseHandle(handle));
    EXPECT_EQ(std::memcmp(view, "abcdef", 6), 0);  // the view keeps the bytes
    EXPECT_TRUE(UnmapViewOfFile(view));
    EXPECT_FALSE(UnmapViewOfFile(view));
}

TEST(Files, AWritableMappingLengthensTheFile)
{
    const TemporaryName name("made.bin");
    const HANDLE handle = Make(name.Path());
    ASSERT_NE(handle, INVALID_HANDLE_VALUE);
    EXPECT_EQ(CreateFileMappingA(handle, nullptr, PAGE_READWRITE, 0, 0, nullptr), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_FILE_INVALID);
    const HANDLE mapping = CreateFileMappingA(handle, nullptr, PAGE_READWRITE, 0, 5, nullptr);
    ASSERT_NE(mapping, nullptr);
    char* const view = static_cast<char*>(MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, 0));
    ASSERT_NE(view, nullptr);
    std::memcpy(view, "hello", 5);
    UnmapViewOfFile(view);
    CloseHandle(mapping);
    CloseHandle(handle);
    const std::vector<BYTE> bytes = name.Read();
    EXPECT_EQ(std::string(bytes.begin(), bytes.end()), "hello");
    EXPECT_TRUE(DeleteFileA(name.Path()));
    EXPECT_FALSE(name.Exists());
    EXPECT_FALSE(DeleteFileA(name.Path()));
}

TEST(Files, InvalidFilesAndHandlesAreRefused)
{
    EXPECT_EQ(OpenForReading("no/such/file"), INVALID_HANDLE_VALUE);
    EXPECT_EQ(OpenForReading(testing::TempDir()), INVALID_HANDLE_VALUE);
    EXPECT_EQ(OpenForReading(LPCSTR{nullptr}), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetFileSize(nullptr, nullptr), INVALID_FILE_SIZE);
    EXPECT_EQ(CreateFileMappingA(nullptr, nullptr, PAGE_READONLY, 0, 1, nullptr), nullptr);
    EXPECT_EQ(MapViewOfFile(nullptr, FILE_MAP_READ, 0, 0, 0), nullptr);

    const TemporaryFile file("readonly.bin", std::string("abc"));
    const HANDLE handle = OpenForReading(file.Path());
    EXPECT_EQ(CreateFileMappingA(handle, nullptr, PAGE_READWRITE, 0, 0, nullptr), nullptr);
    EXPECT_EQ(CreateFileMappingA(handle, nullptr, PAGE_READONLY, 0, 4, nullptr), nullptr);
    EXPECT_EQ(CreateFileA(file.Path(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, 0, nullptr),
              INVALID_HANDLE_VALUE);
    CloseHandle(handle);
}

TEST(Files, OnlyRegularFilesAreOpenedToBeRead)
{
    const TemporaryName pipe("files.pipe");
    ASSERT_EQ(mkfifo(pipe.Path(), 0600), 0);
    for (const CString& name : {pipe.Path(), CString("/dev/zero"), CString("/dev/null")})
    {
        EXPECT_EQ(OpenForReading(name), INVALID_HANDLE_VALUE);
        EXPECT_EQ(GetLastErrorText(), name.Text() + ": is no regular file");
    }
}

/// A file of some pages, mapped to be read.
struct ReadView
{
    ReadView()
    {
        const HANDLE handle = OpenForReading(file.Path());
        const HANDLE mapping = CreateFileMappingA(handle, nullptr, PAGE_READONLY, 0, 0, nullptr);
        bytes = static_cast<const char*>(MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0));
        CloseHandle(mapping);
        CloseHandle(handle);
    }
    ~ReadView() { UnmapViewOfFile(bytes); }
    ReadView(const ReadView&) = delete;
    ReadView& operator=(const ReadView&) = delete;

    static constexpr std::size_t size = 300000;
    const TemporaryFile file{"view.bin", std::string(size, 'x')};
    const char* bytes;
};

TEST(Files, BytesThatAMappedFileLosesReadAsZeros)
{
    const ReadView first;
    {
        const ReadView view;
        EXPECT_EQ(view.bytes[ReadView::size - 1], 'x');
        std::filesystem::resize_file(view.file.Path().Text(), 1);
        EXPECT_EQ(view.bytes[ReadView::size - 1], 0);
        EXPECT_EQ(view.bytes[ReadView::size / 2], 0);
    }
    const ReadView later;  // perhaps at the same addresses
    EXPECT_EQ(later.bytes[ReadView::size - 1], 'x');
}

TEST(Files, TheFirstPageOfAViewCannotBeChangedByAnotherProgram)
{
    const ReadView view;
    std::ofstream(view.file.Path(), std::ios::binary) << std::string(ReadView::size, 'y');
    EXPECT_EQ(std::count(view.bytes, view.bytes + 4096, 'x'), 4096);
}

// A death test of this style begins anew in a process that has mapped nothing yet.
TEST(FilesDeathTest, TheBusSignalStillEndsTheProcess)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            const ReadView view;
            std::raise(SIGBUS);
        },
        testing::KilledBySignal(SIGBUS), "");
}

TEST(FilesDeathTest, TheBusSignalReachesTheHandlerThatWasSetBefore)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            static volatile std::sig_atomic_t got = 0;
            std::signal(SIGBUS, [](int number) { got = number; });
            const ReadView view;
            std::raise(SIGBUS);
            std::exit(got == SIGBUS ? 7 : 1);
        },
        testing::ExitedWithCode(7), "");
}

TEST(FilesDeathTest, TheBusSignalReachesAHandlerThatTakesItsDetails)
{
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            static volatile std::sig_atomic_t got = 0;
            struct sigaction action = {};
            action.sa_flags = SA_SIGINFO;
            action.sa_sigaction = [](int, siginfo_t* info, void*) { got = info->si_signo; };
            sigaction(SIGBUS, &action, nullptr);
            const ReadView view;
            std::raise(SIGBUS);
            std::exit(got == SIGBUS ? 7 : 1);
        },
        testing::ExitedWithCode(7), "");
}

/// A mapping of a new file.
struct MappedFile
{
    MappedFile(const char* fileName, DWORD size) : name(fileName)
    {
        file = Make(name.Path());
        mapping = CreateFileMappingA(file, nullptr, PAGE_READWRITE, 0, size, nullptr);
    }
    ~MappedFile()
    {
        CloseHandle(mapping);
        CloseHandle(file);
    }

    TemporaryName name;
    HANDLE file;
    HANDLE mapping;
};

// With and without bypassing the system's file cache. Bytes whose address is aligned like their
// offset take a way of their own.
TEST(Files, BytesAreWrittenAtTheirPlaceInAnyOrder)
{
    constexpr DWORD piece = 10000;
    constexpr std::size_t block = 4096;
    std::vector<char> memory(piece + 2 * block);
    void* aligned = memory.data();
    std::size_t room = memory.size();
    std::align(block, piece + block, aligned, room);
    for (const auto& [flags, isLikeBlocks] :
         {std::pair{FILE_ATTRIBUTE_NORMAL, false}, std::pair{FILE_FLAG_SEQUENTIAL_SCAN, false},
          std::pair{FILE_FLAG_SEQUENTIAL_SCAN, true}})
    {
        const TemporaryFile file("written.bin", std::string());
        const HANDLE handle = CreateFileA(file.Path(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                          CREATE_ALWAYS, flags, nullptr);
        ASSERT_NE(handle, INVALID_HANDLE_VALUE);
        for (int i = 7; i >= 0; --i)
        {
            OVERLAPPED place{};
            place.Offset = static_cast<DWORD>(i) * piece;
            char* const bytes =
                static_cast<char*>(aligned) + (isLikeBlocks ? place.Offset % block : 1);
            std::fill_n(bytes, piece, static_cast<char>('a' + i));
            DWORD written = 0;
            EXPECT_TRUE(WriteFile(handle, bytes, piece, &written, &place));
            EXPECT_EQ(written, piece);
        }
        CloseHandle(handle);
        std::ifstream in(file.Path(), std::ios::binary);
        const std::string all{std::istreambuf_iterator<char>(in), {}};
        ASSERT_EQ(all.size(), 8 * piece);
        for (std::size_t i = 0; i < all.size(); ++i)
        {
            ASSERT_EQ(all[i], static_cast<char>('a' + i / piece)) << i;
        }
    }
}

TEST(Files, FailedWritesAreReported)
{
    const TemporaryFile file("read.bin", std::string("abc"));
    const HANDLE handle = OpenForReading(file.Path());
    OVERLAPPED place{};
    DWORD written = 1;
    EXPECT_FALSE(WriteFile(handle, "x", 1, &written, &place));
    EXPECT_EQ(written, 0U);
    EXPECT_FALSE(WriteFile(handle, "x", 1, &written, nullptr));
    EXPECT_FALSE(WriteFile(nullptr, "x", 1, &written, &place));
    CloseHandle(handle);
}

TEST(Bitmaps, ABitmapUsesTheBytesOfAMappedFile)
{
    MappedFile mapped("section.bin", 8 + 4 * 8);
    ASSERT_NE(mapped.mapping, nullptr);
    void* bits = nullptr;
    const HBITMAP bitmap = CreateDIBSection(nullptr, BitmapDescription(2, 4, 24).Info(),
                                            DIB_RGB_COLORS, &bits, mapped.mapping, 8);
    ASSERT_NE(bitmap, nullptr);
    DIBSECTION section{};
    GetObjectA(bitmap, sizeof section, &section);
    EXPECT_EQ(section.dshSection, mapped.mapping);
    EXPECT_EQ(section.dsOffset, 8U);
    CloseHandle(mapped.mapping);
    CloseHandle(mapped.file);
    std::memset(bits, 7, 8);
    const BYTE pixels[] = {1, 2, 3, 4, 5, 6, 0, 0};
    EXPECT_EQ(SetDIBits(nullptr, bitmap, 3, 1, pixels, BitmapDescription(2, 1, 24).Info(),
                        DIB_RGB_COLORS),
              1);
    DeleteObject(bitmap);
    const std::vector<BYTE> bytes = mapped.name.Read();
    ASSERT_EQ(bytes.size(), 40U);
    EXPECT_EQ(std::vector<BYTE>(bytes.begin(), bytes.begin() + 17),
              (std::vector<BYTE>{0, 0, 0, 0, 0, 0, 0, 0, 7, 7, 7, 7, 7, 7, 7, 7, 0}));
    EXPECT_EQ(std::vector<BYTE>(bytes.begin() + 32, bytes.end()),
              (std::vector<BYTE>{1, 2, 3, 4, 5, 6, 0, 0}));
}

TEST(Bitmaps, ABitmapThatDoesNotLieInsideAMappingIsRefused)
{
    MappedFile mapped("small.bin", 40);
    const auto create = [&](int height, DWORD offset) {
        void* bits = nullptr;
        const HBITMAP bitmap = CreateDIBSection(nullptr, BitmapDescription(2, height, 24).Info(),
                                                DIB_RGB_COLORS, &bits, mapped.mapping, offset);
        DeleteObject(bitmap);
        return bits != nullptr;
    };
    EXPECT_TRUE(create(5, 0));
    EXPECT_TRUE(create(4, 8));
    EXPECT_FALSE(create(4, 12));
    EXPECT_FALSE(create(4, 6));
    EXPECT_FALSE(create(1, 0xFFFFFFFC));
    EXPECT_FALSE(create(6, 0));

    EXPECT_EQ(CreateDIBSection(nullptr, BitmapDescription(1, 1, 24).Info(), DIB_RGB_COLORS, nullptr,
                               mapped.file, 0),
              nullptr);
    const HANDLE reading = OpenForReading(mapped.name.Path());
    const HANDLE readOnly = CreateFileMappingA(reading, nullptr, PAGE_READONLY, 0, 0, nullptr);
    EXPECT_EQ(CreateDIBSection(nullptr, BitmapDescription(1, 1, 24).Info(), DIB_RGB_COLORS, nullptr,
                               readOnly, 0),
              nullptr);
    CloseHandle(readOnly);
    CloseHandle(reading);
}

TEST(Bitmaps, ABitmapMayTakeUpToFourGigabytes)
{
    void* bits = nullptr;
    const HBITMAP large = CreateDIBSection(nullptr, BitmapDescription(32768, 32767, 32).Info(),
                                           DIB_RGB_COLORS, &bits, nullptr, 0);
    if (large != nullptr)  // null where address space is limited
    {
        DIBSECTION section{};
        GetObjectA(large, sizeof section, &section);
        EXPECT_EQ(section.dsBmih.biSizeImage, 4294836224U);
        static_cast<BYTE*>(bits)[4294836223U] = 1;
        DeleteObject(large);
    }
    EXPECT_EQ(CreateDIBSection(nullptr, BitmapDescription(32768, 32768, 32).Info(), DIB_RGB_COLORS,
                               nullptr, nullptr, 0),
              nullptr);
}

}  // namespace
