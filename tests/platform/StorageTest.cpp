// SPDX-License-Identifier: MIT
#include "platform/Storage.h"

#include "tests/support/OtherPrograms.h"
#include "tests/support/SystemCalls.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <memory>

namespace
{

constexpr DWORD creating = STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE;
constexpr DWORD changing = STGM_READWRITE | STGM_SHARE_EXCLUSIVE;

struct Releaser
{
    void operator()(IUnknown* object) const { object->Release(); }
};
using StoragePointer = std::unique_ptr<IStorage, Releaser>;
using StreamPointer = std::unique_ptr<IStream, Releaser>;

std::u16string Wide(const CString& text)
{
    return std::u16string(text.Text().begin(), text.Text().end());
}

StoragePointer CreateFileOf(const TemporaryName& name)
{
    IStorage* storage = nullptr;
    EXPECT_EQ(StgCreateDocfile(Wide(name.Path()).c_str(), creating, 0, &storage), S_OK);
    return StoragePointer(storage);
}

StoragePointer OpenFileOf(const TemporaryName& name, DWORD mode = STGM_READ)
{
    IStorage* storage = nullptr;
    EXPECT_EQ(StgOpenStorage(Wide(name.Path()).c_str(), nullptr, mode, nullptr, 0, &storage), S_OK);
    return StoragePointer(storage);
}

StreamPointer CreateStreamIn(IStorage& storage, const char16_t* name)
{
    IStream* stream = nullptr;
    EXPECT_EQ(storage.CreateStream(name, creating, 0, 0, &stream), S_OK);
    return StreamPointer(stream);
}

StreamPointer OpenStreamIn(IStorage& storage, const char16_t* name, DWORD mode = STGM_READ)
{
    IStream* stream = nullptr;
    storage.OpenStream(name, nullptr, mode, 0, &stream);
    return StreamPointer(stream);
}

void WriteText(IStream& stream, const std::string& text)
{
    ULONG done = 0;
    EXPECT_EQ(stream.Write(text.data(), static_cast<ULONG>(text.size()), &done), S_OK);
    EXPECT_EQ(done, text.size());
}

std::string ReadText(IStream& stream)
{
    std::string text(200000, '?');
    ULONG done = 0;
    EXPECT_EQ(stream.Read(text.data(), static_cast<ULONG>(text.size()), &done), S_OK);
    text.resize(done);
    return text;
}

void MakeSample(const TemporaryName& name)
{
    const StoragePointer storage = CreateFileOf(name);
    WriteText(*CreateStreamIn(*storage, u"short"), "a few bytes");
    WriteText(*CreateStreamIn(*storage, u"Long Name"), std::string(100000, 'x') + "end");
    CreateStreamIn(*storage, u"empty");
}

TEST(Storage, StreamsAreReadBackFromTheFile)
{
    const TemporaryName name("streams.stg");
    MakeSample(name);
    const StoragePointer storage = OpenFileOf(name);
    EXPECT_EQ(ReadText(*OpenStreamIn(*storage, u"short")), "a few bytes");
    EXPECT_EQ(ReadText(*OpenStreamIn(*storage, u"Long Name")), std::string(100000, 'x') + "end");
    EXPECT_EQ(ReadText(*OpenStreamIn(*storage, u"empty")), "");
    EXPECT_EQ(OpenStreamIn(*storage, u"none"), nullptr);
    EXPECT_NE(OpenStreamIn(*storage, u"LONG NAME"), nullptr);
}

TEST(Storage, TheFileIsACompoundFile)
{
    const TemporaryName name("compound.stg");
    MakeSample(name);
    const std::vector<BYTE> bytes = name.Read();
    ASSERT_GT(bytes.size(), 512U);
    EXPECT_EQ(std::vector<BYTE>(bytes.begin(), bytes.begin() + 8),
              (std::vector<BYTE>{0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1}));
    EXPECT_EQ(bytes.size() % 512, 0U);
}

TEST(Storage, FailedWriteLeavesTheOldFileWhole)
{
    const TemporaryName name("refused.stg");
    MakeSample(name);
    const std::vector<BYTE> old = name.Read();
    for (const std::string refused : {"write", "flush file", "rename"})
    {
        const SystemCalls calls(
            [&](const std::string& call) { return call == refused ? ENOSPC : 0; });
        const StoragePointer storage = OpenFileOf(name, changing);
        WriteText(*CreateStreamIn(*storage, u"more"), "text");
        EXPECT_EQ(storage->Commit(STGC_DEFAULT), STG_E_WRITEFAULT) << refused;
        EXPECT_EQ(name.Read(), old) << refused;
    }
}

TEST(Storage, AnotherProgramListsTheStreams)
{
    const TemporaryName name("listed.stg");
    MakeSample(name);
    const std::optional<std::string> output = OutputOf("gsf list '" + name.Path().Text() + "'");
    if (!output)
    {
        FAIL() << "no gsf program (package libgsf-bin)";
    }
    const std::string& list = *output;
    EXPECT_NE(list.find("11 short"), std::string::npos) << list;
    EXPECT_NE(list.find("100003 Long Name"), std::string::npos) << list;
    EXPECT_NE(list.find("0 empty"), std::string::npos) << list;
}

TEST(Storage, TheFileIsEmptyUntilCommit)
{
    const TemporaryName name("committed.stg");
    const StoragePointer storage = CreateFileOf(name);
    const StreamPointer stream = CreateStreamIn(*storage, u"text");
    WriteText(*stream, "one");
    EXPECT_EQ(OpenStreamIn(*OpenFileOf(name), u"text"), nullptr);
    EXPECT_EQ(storage->Commit(STGC_DEFAULT), S_OK);
    EXPECT_EQ(ReadText(*OpenStreamIn(*OpenFileOf(name), u"text")), "one");
    WriteText(*stream, " two");
    EXPECT_EQ(ReadText(*OpenStreamIn(*OpenFileOf(name), u"text")), "one");
    EXPECT_EQ(storage->Commit(STGC_DEFAULT), S_OK);
    EXPECT_EQ(ReadText(*OpenStreamIn(*OpenFileOf(name), u"text")), "one two");
}

TEST(Storage, AnExistingFileIsChanged)
{
    const TemporaryName name("changed.stg");
    MakeSample(name);
    {
        const StoragePointer storage = OpenFileOf(name, changing);
        EXPECT_EQ(storage->DestroyElement(u"short"), S_OK);
        EXPECT_EQ(storage->DestroyElement(u"short"), STG_E_FILENOTFOUND);
        WriteText(*CreateStreamIn(*storage, u"EMPTY"), "no more");
        WriteText(*OpenStreamIn(*storage, u"Long Name", changing), "begin");
    }
    const StoragePointer storage = OpenFileOf(name);
    EXPECT_EQ(OpenStreamIn(*storage, u"short"), nullptr);
    EXPECT_EQ(ReadText(*OpenStreamIn(*storage, u"empty")), "no more");
    EXPECT_EQ(ReadText(*OpenStreamIn(*storage, u"Long Name")).substr(0, 6), "beginx");
}

TEST(Storage, AStreamHasAPosition)
{
    const TemporaryName name("position.stg");
    const StoragePointer storage = CreateFileOf(name);
    const StreamPointer stream = CreateStreamIn(*storage, u"text");
    const auto seek = [&](std::int64_t move, DWORD origin) {
        ULARGE_INTEGER position{};
        return stream->Seek(LARGE_INTEGER{move}, origin, &position) == S_OK
                   ? static_cast<long>(position.QuadPart)
                   : -1;
    };
    WriteText(*stream, "abc");
    EXPECT_EQ(seek(0, STREAM_SEEK_CUR), 3);
    EXPECT_EQ(ReadText(*stream), "");
    EXPECT_EQ(seek(1, STREAM_SEEK_SET), 1);
    WriteText(*stream, "X");
    EXPECT_EQ(ReadText(*stream), "c");
    EXPECT_EQ(seek(2, STREAM_SEEK_END), 5);
    EXPECT_EQ(ReadText(*stream), "");
    WriteText(*stream, "f");
    EXPECT_EQ(seek(-6, STREAM_SEEK_CUR), 0);
    EXPECT_EQ(ReadText(*stream), std::string("aXc\0\0f", 6));
    EXPECT_EQ(seek(-7, STREAM_SEEK_CUR), -1);
    EXPECT_EQ(seek(0, 3), -1);
    EXPECT_EQ(stream->SetSize(ULARGE_INTEGER{2}), S_OK);
    EXPECT_EQ(seek(0, STREAM_SEEK_END), 2);
    EXPECT_EQ(seek(std::numeric_limits<std::int64_t>::max(), STREAM_SEEK_SET),
              std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(stream->Write("x", 1, nullptr), STG_E_INSUFFICIENTMEMORY);
}

TEST(Storage, AFileOpenedForReadingCannotBeChanged)
{
    const TemporaryName name("read.stg");
    MakeSample(name);
    const StoragePointer storage = OpenFileOf(name);
    IStream* stream = nullptr;
    EXPECT_EQ(storage->CreateStream(u"new", creating, 0, 0, &stream), STG_E_ACCESSDENIED);
    EXPECT_EQ(storage->OpenStream(u"short", nullptr, changing, 0, &stream), STG_E_ACCESSDENIED);
    EXPECT_EQ(storage->DestroyElement(u"short"), STG_E_ACCESSDENIED);
    const StreamPointer read = OpenStreamIn(*storage, u"short");
    EXPECT_EQ(read->Write("x", 1, nullptr), STG_E_ACCESSDENIED);
    EXPECT_EQ(read->SetSize(ULARGE_INTEGER{0}), STG_E_ACCESSDENIED);
}

TEST(Storage, NamesAndModesAreChecked)
{
    const TemporaryName name("names.stg");
    IStorage* storage = nullptr;
    const std::u16string path = Wide(name.Path());
    EXPECT_EQ(StgOpenStorage(path.c_str(), nullptr, STGM_READ, nullptr, 0, &storage),
              STG_E_FILENOTFOUND);
    EXPECT_EQ(StgCreateDocfile(u"/no/such/folder/file", creating, 0, &storage), STG_E_ACCESSDENIED);
    EXPECT_EQ(StgCreateDocfile(nullptr, creating, 0, &storage), STG_E_INVALIDNAME);
    EXPECT_EQ(StgCreateDocfile(path.c_str(), creating, 0, nullptr), STG_E_INVALIDPOINTER);
    EXPECT_EQ(storage, nullptr);
    const StoragePointer made = CreateFileOf(name);
    EXPECT_EQ(StgCreateDocfile(path.c_str(), changing, 0, &storage), STG_E_FILEALREADYEXISTS);

    IStream* stream = nullptr;
    CreateStreamIn(*made, u"a");
    EXPECT_EQ(made->CreateStream(u"A", changing, 0, 0, &stream), STG_E_FILEALREADYEXISTS);
    for (const std::u16string& bad :
         {std::u16string(), std::u16string(u"a/b"), std::u16string(u"a\\b"), std::u16string(u"a:b"),
          std::u16string(u"!"), std::u16string(1, u'\1'), std::u16string(32, u'x'),
          std::u16string(1, 0xD800)})
    {
        EXPECT_EQ(made->CreateStream(bad.c_str(), creating, 0, 0, &stream), STG_E_INVALIDNAME);
    }
    EXPECT_NE(CreateStreamIn(*made, std::u16string(31, u'x').c_str()), nullptr);
}

TEST(Storage, NullPointersAndReservedArgumentsAreRefused)
{
    const TemporaryName name("arguments.stg");
    MakeSample(name);
    const std::u16string path = Wide(name.Path());
    IStorage* storage = nullptr;
    EXPECT_EQ(StgOpenStorage(path.c_str(), nullptr, STGM_READ, nullptr, 0, nullptr),
              STG_E_INVALIDPOINTER);
    EXPECT_EQ(StgOpenStorage(nullptr, nullptr, STGM_READ, nullptr, 0, &storage), STG_E_INVALIDNAME);
    EXPECT_EQ(StgOpenStorage(path.c_str(), nullptr, STGM_READ, nullptr, 1, &storage),
              STG_E_INVALIDFUNCTION);
    EXPECT_EQ(StgOpenStorage(path.c_str(), nullptr, STGM_READ, &name, 0, &storage),
              STG_E_INVALIDFUNCTION);
    EXPECT_EQ(storage, nullptr);

    const StoragePointer made = OpenFileOf(name, changing);
    EXPECT_EQ(made->CreateStream(u"a", creating, 0, 0, nullptr), STG_E_INVALIDPOINTER);
    EXPECT_EQ(made->OpenStream(u"a", nullptr, STGM_READ, 0, nullptr), STG_E_INVALIDPOINTER);
    const StreamPointer stream = CreateStreamIn(*made, u"a");
    EXPECT_EQ(stream->Read(nullptr, 1, nullptr), STG_E_INVALIDPOINTER);
    EXPECT_EQ(stream->Write(nullptr, 1, nullptr), STG_E_INVALIDPOINTER);
    EXPECT_EQ(stream->AddRef(), 2U);
    EXPECT_EQ(stream->Release(), 1U);
    ULARGE_INTEGER size;
    size.QuadPart = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(stream->SetSize(size), STG_E_INSUFFICIENTMEMORY);
}

TEST(Storage, OtherFilesAreRefused)
{
    const TemporaryFile words("words.stg", std::string(2000, 'w'));
    const TemporaryFile none("none.stg", std::string());
    for (const TemporaryFile* file : {&words, &none})
    {
        IStorage* storage = nullptr;
        EXPECT_TRUE(FAILED(
            StgOpenStorage(Wide(file->Path()).c_str(), nullptr, STGM_READ, nullptr, 0, &storage)));
        EXPECT_EQ(storage, nullptr);
    }
}

TEST(Storage, ADamagedFileDoesNoHarm)
{
    const TemporaryName name("whole.stg");
    MakeSample(name);
    const std::vector<BYTE> whole = name.Read();
    for (std::size_t length = 0; length < whole.size(); length += 997)
    {
        const TemporaryFile cut("cut.stg",
                                std::vector<BYTE>(whole.begin(), whole.begin() + length));
        IStorage* storage = nullptr;
        if (StgOpenStorage(Wide(cut.Path()).c_str(), nullptr, STGM_READ, nullptr, 0, &storage) ==
            S_OK)
        {
            const StreamPointer stream = OpenStreamIn(*storage, u"Long Name");
            EXPECT_LE(stream == nullptr ? 0 : ReadText(*stream).size(), 100003U);
            storage->Release();
        }
    }
}

/// Where the root entry of the sample's directory starts: in the sector that the header names,
/// which sectors of 512 bytes follow the header.
std::size_t RootOf(const std::vector<BYTE>& sample)
{
    EXPECT_EQ(sample[0x1E], 9);  // 2 to the power of 9
    return 512 * (1 + sample[0x30] + 256 * std::size_t{sample[0x31]});
}

TEST(Storage, AStreamThatCannotBeReadIsLeftOutWithoutAMessage)
{
    const TemporaryName name("unread.stg");
    MakeSample(name);
    std::vector<BYTE> bytes = name.Read();
    constexpr std::size_t entrySize = 0x80;
    for (std::size_t entry = 1; entry <= 3; ++entry)
    {
        // 3,840 bytes, in a chain of sectors for fewer.
        bytes[RootOf(bytes) + entry * entrySize + 0x78] = 0x00;
        bytes[RootOf(bytes) + entry * entrySize + 0x79] = 0x0F;
    }
    const TemporaryFile file("damaged.stg", bytes);
    testing::internal::CaptureStderr();
    const StoragePointer storage = OpenFileOf(file);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(OpenStreamIn(*storage, u"short"), nullptr);
}

// An entry beside the root would never be freed.
TEST(Storage, ARootWithSiblingsIsRefused)
{
    const TemporaryName name("siblings.stg");
    MakeSample(name);
    const std::vector<BYTE> whole = name.Read();
    for (const std::size_t link : {RootOf(whole) + 0x44, RootOf(whole) + 0x48})
    {
        std::vector<BYTE> linked = whole;
        ASSERT_EQ(linked[link], 0xFF);
        std::fill_n(linked.begin() + static_cast<std::ptrdiff_t>(link), 4, BYTE{0});
        linked[link] = 1;
        const TemporaryFile file("linked.stg", linked);
        IStorage* storage = nullptr;
        EXPECT_EQ(
            StgOpenStorage(Wide(file.Path()).c_str(), nullptr, STGM_READ, nullptr, 0, &storage),
            STG_E_OLDFORMAT);
    }
}

TEST(Storage, AStreamMayOutliveItsStorage)
{
    const TemporaryName name("outlived.stg");
    StoragePointer storage = CreateFileOf(name);
    const StreamPointer stream = CreateStreamIn(*storage, u"text");
    WriteText(*stream, "in time");
    storage.reset();
    WriteText(*stream, " too late");
    EXPECT_EQ(ReadText(*OpenStreamIn(*OpenFileOf(name), u"text")), "in time");
}

}  // namespace
