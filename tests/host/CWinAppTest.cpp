// SPDX-License-Identifier: MIT
#include "host/CWinApp.h"

#include "host/CFile.h"
#include "platform/Messages.h"
#include "tests/support/SystemCalls.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>

namespace
{

namespace fs = std::filesystem;

/// A profile in a fresh folder for each test.
class Profile : public testing::Test
{
protected:
    Profile()
    {
        fs::remove_all(folder);
        fs::create_directories(folder);
        app.SetProfilePath(path.c_str());
    }
    ~Profile() override { fs::remove_all(folder); }

    void Put(const std::string& content) const { std::ofstream(path) << content; }
    std::string Get() const
    {
        std::ostringstream content;
        content << std::ifstream(path).rdbuf();
        return content.str();
    }
    /// What another application object reads from the file.
    std::string Reread(LPCSTR section, LPCSTR entry) const
    {
        CWinApp other;
        other.SetProfilePath(path.c_str());
        return other.GetProfileString(section, entry, "(none)").Text();
    }

    const fs::path folder = fs::path(ORVANE_BINARY_DIR) / "profile-tests" /
                            testing::UnitTest::GetInstance()->current_test_info()->name();
    const std::string path = (folder / "orvane.ini").string();
    CWinApp app;
};

/// Sets an environment variable, or removes it, until the end of the scope.
class ScopedVariable
{
public:
    ScopedVariable(const char* name, const char* value) : name_(name)
    {
        if (const char* const old = std::getenv(name))
        {
            old_ = old;
        }
        Set(value);
    }
    ~ScopedVariable() { Set(old_ ? old_->c_str() : nullptr); }

private:
    void Set(const char* value)
    {
        if (value != nullptr)
        {
            ::setenv(name_, value, 1);
        }
        else
        {
            ::unsetenv(name_);
        }
    }

    const char* name_;
    std::optional<std::string> old_;
};

std::string lastMessage;

int KeepMessage(HWND, LPCSTR text, LPCSTR caption, UINT type)
{
    lastMessage = std::string(caption) + "|" + text + "|" + std::to_string(type);
    return 42;
}

}  // namespace

TEST_F(Profile, MissingEntriesGiveTheDefault)
{
    EXPECT_EQ(app.GetProfileInt("Section", "Entry", -7), static_cast<UINT>(-7));
    EXPECT_EQ(app.GetProfileString("Section", "Entry"), "");
    EXPECT_EQ(app.GetProfileString("Section", "Entry", "default"), "default");
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(Profile, WrittenEntriesAreReadByAnother)
{
    EXPECT_TRUE(app.WriteProfileInt("Colors\\Number 3", "Ambient Red", 90));
    EXPECT_TRUE(app.WriteProfileString("Colors\\Number 3", "Name", "Polished brass"));
    EXPECT_EQ(app.GetProfileInt("Colors\\Number 3", "Ambient Red", 0), 90u);
    EXPECT_EQ(Reread("Colors\\Number 3", "Ambient Red"), "90");
    EXPECT_EQ(Reread("Colors\\Number 3", "Name"), "Polished brass");
    EXPECT_EQ(Reread("Colors\\Number 30", "Name"), "(none)");
}

TEST_F(Profile, PlainTextsLookPlainInTheFile)
{
    app.WriteProfileString("Colors\\Number 0", "Ambient Red", "50% grey");
    EXPECT_NE(Get().find("[Colors\\Number 0]\n"), std::string::npos);
    EXPECT_NE(Get().find("Ambient Red = 50% grey\n"), std::string::npos);
}

TEST_F(Profile, OddTextsComeBackUnchanged)
{
    const char* const odd[] = {"two\nlines",
                               "\r\n",
                               "  spaces around  ",
                               "tab\tinside\t",
                               "",
                               "\"q\"",
                               "; no comment",
                               "# nor this",
                               "[not\\one]",
                               "a=b=c",
                               "<<<END\nx\nEND",
                               "%41",
                               "%",
                               "%%0A",
                               "100%\n",
                               "%4\n",
                               "Gr\xFC\xDF",
                               "\x01\x7F",
                               "\xEF\xBB\xBF",
                               "%a0 %2525 %2"};
    for (const char* const text : odd)
    {
        EXPECT_TRUE(app.WriteProfileString("S", "Value", text)) << text;
        EXPECT_EQ(Reread("S", "Value"), text);
        EXPECT_TRUE(app.WriteProfileString(text, "Entry", "in section")) << text;
        EXPECT_EQ(Reread(text, "Entry"), "in section") << text;
        if (*text != '\0')
        {
            EXPECT_TRUE(app.WriteProfileString("Names", text, "of entry")) << text;
            EXPECT_EQ(Reread("Names", text), "of entry") << text;
        }
    }
    for (const char* const text : odd)
    {
        EXPECT_EQ(Reread(text, "Entry"), "in section") << text;
    }
}

TEST_F(Profile, NamesAreFoundWithoutRegardToCase)
{
    app.WriteProfileString("Section", "Entry", "value");
    app.WriteProfileString("SECTION", "entry", "other");
    EXPECT_EQ(Reread("section", "ENTRY"), "other");
    EXPECT_EQ(Get().find("value"), std::string::npos);
}

TEST_F(Profile, OnlyWholeNumbersOf32BitsAreNumbers)
{
    Put("[N]\na=12\nb=-1\nc=12x\nd=\ne=4294967295\nf=4294967296\ng=-2147483649\nh=0x10\n");
    EXPECT_EQ(app.GetProfileInt("N", "a", 5), 12u);
    EXPECT_EQ(app.GetProfileInt("N", "b", 5), 0xFFFFFFFFu);
    EXPECT_EQ(app.GetProfileInt("N", "c", 5), 5u);
    EXPECT_EQ(app.GetProfileInt("N", "d", 5), 5u);
    EXPECT_EQ(app.GetProfileInt("N", "e", 5), 0xFFFFFFFFu);
    EXPECT_EQ(app.GetProfileInt("N", "f", 5), 5u);
    EXPECT_EQ(app.GetProfileInt("N", "g", 5), 5u);
    EXPECT_EQ(app.GetProfileInt("N", "h", 5), 5u);
}

TEST_F(Profile, NullRemovesEntriesAndSections)
{
    app.WriteProfileString("A", "x", "1");
    app.WriteProfileString("A", "y", "2");
    app.WriteProfileString("B", "z", "3");
    EXPECT_TRUE(app.WriteProfileString("A", "x", nullptr));
    EXPECT_EQ(Reread("A", "x"), "(none)");
    EXPECT_EQ(Reread("A", "y"), "2");
    EXPECT_TRUE(app.WriteProfileString("A", nullptr, "ignored"));
    EXPECT_EQ(Reread("A", "y"), "(none)");
    EXPECT_EQ(Reread("B", "z"), "3");
    EXPECT_TRUE(app.WriteProfileString("None", "none", nullptr));
}

TEST_F(Profile, EntryWithoutANameIsRefused)
{
    EXPECT_FALSE(app.WriteProfileString("A", "", "x"));
    EXPECT_FALSE(app.WriteProfileInt("A", nullptr, 1));
    EXPECT_FALSE(fs::exists(path));
}

TEST_F(Profile, CommentsAndForeignEntriesAreKept)
{
    Put("; about this file\n\n[Host]\n; about the entry\nWindow = 10 20\n");
    EXPECT_TRUE(app.WriteProfileInt("Mine", "a", 1));
    EXPECT_NE(Get().find("; about this file\n"), std::string::npos);
    EXPECT_NE(Get().find("; about the entry\n"), std::string::npos);
    EXPECT_EQ(Reread("Host", "Window"), "10 20");
}

TEST_F(Profile, WritingLeavesTheProfileAloneInItsFolder)
{
    app.WriteProfileInt("A", "a", 1);
    app.WriteProfileInt("A", "a", 2);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
}

TEST_F(Profile, WritingMakesTheFolders)
{
    const std::string deep = (folder / "a" / "b" / "p.ini").string();
    app.SetProfilePath(deep.c_str());
    EXPECT_TRUE(app.WriteProfileInt("A", "a", 1));
    EXPECT_TRUE(fs::exists(deep));
    EXPECT_EQ(app.GetProfilePath(), deep.c_str());
}

TEST_F(Profile, LinkedProfileIsReplacedWhereItLies)
{
    const fs::path link = folder / "link.ini";
    Put("[A]\na=1\n");
    fs::create_symlink(path, link);
    app.SetProfilePath(link.string().c_str());
    EXPECT_TRUE(app.WriteProfileInt("A", "b", 2));
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(Reread("A", "a"), "1");
    EXPECT_EQ(Reread("A", "b"), "2");
}

TEST_F(Profile, ReplacedProfileKeepsItsPermissions)
{
    Put("[A]\na=1\n");
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_TRUE(app.WriteProfileInt("A", "a", 2));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_read | fs::perms::owner_write);
}

TEST_F(Profile, WriteThatFailsLeavesTheOldFileWhole)
{
    const std::string old = "[A]\na=1\n[B]\nb=1\n";
    Put(old);
    for (const std::string refused : {"write", "flush file", "rename"})
    {
        const SystemCalls calls(
            [&](const std::string& call) { return call == refused ? ENOSPC : 0; });
        EXPECT_FALSE(app.WriteProfileInt("A", "a", 2)) << refused;
        EXPECT_FALSE(app.WriteProfileString("A", nullptr, nullptr)) << refused;
        EXPECT_EQ(app.GetProfileInt("A", "a", 0), 1u) << refused;
        EXPECT_EQ(Get(), old) << refused;
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
    }
}

TEST_F(Profile, LongestFileNameWorks)
{
    const fs::path longest = folder / std::string(255, 'p');
    app.SetProfilePath(longest.string().c_str());
    EXPECT_TRUE(app.WriteProfileInt("A", "a", 2));
    EXPECT_TRUE(fs::exists(longest));
}

TEST_F(Profile, EntriesThatSeveralProcessesWriteAtOnceAreAllKept)
{
    constexpr int processes = 4;
    constexpr int entries = 25;
    for (int process = 0; process < processes; ++process)
    {
        if (fork() == 0)
        {
            for (int entry = 0; entry < entries; ++entry)
            {
                const std::string name = std::to_string(process) + "." + std::to_string(entry);
                app.WriteProfileInt("Written at once", name.c_str(), entry);
            }
            _exit(0);
        }
    }
    for (int process = 0; process < processes; ++process)
    {
        wait(nullptr);
    }
    int found = 0;
    for (int process = 0; process < processes; ++process)
    {
        for (int entry = 0; entry < entries; ++entry)
        {
            const std::string name = std::to_string(process) + "." + std::to_string(entry);
            found +=
                app.GetProfileInt("Written at once", name.c_str(), -1) == static_cast<UINT>(entry)
                    ? 1
                    : 0;
        }
    }
    EXPECT_EQ(found, processes * entries);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
}

TEST_F(Profile, EntriesOfOthersAreKeptWhereFoldersCannotBeLocked)
{
    // As on a network file system.
    const SystemCalls calls(
        [](const std::string& call) { return call == "lock folder" ? EBADF : 0; });
    CWinApp other;
    other.SetProfilePath(path.c_str());
    EXPECT_EQ(app.GetProfileInt("A", "b", 0), 0u);  // the file is read
    EXPECT_TRUE(other.WriteProfileInt("A", "a", 1));
    EXPECT_TRUE(app.WriteProfileInt("A", "b", 2));
    EXPECT_EQ(Reread("A", "a"), "1");
    EXPECT_EQ(Reread("A", "b"), "2");
    EXPECT_TRUE(fs::exists(folder / ".orvane.lock"));
}

TEST_F(Profile, BytesAreOnTheDiskBeforeTheRename)
{
    const SystemCalls calls;
    app.WriteProfileInt("A", "a", 1);
    const auto flushed = std::find(calls.made.begin(), calls.made.end(), "flush file");
    const auto renamed = std::find(calls.made.begin(), calls.made.end(), "rename");
    ASSERT_NE(renamed, calls.made.end());
    EXPECT_LT(flushed, renamed);
}

TEST_F(Profile, ChangesThatBelongTogetherReachTheFileInOneStep)
{
    EXPECT_TRUE(app.WriteProfileString("A", "a", "old"));
    const std::string before = Get();
    EXPECT_TRUE(app.ChangeProfile([&] {
        EXPECT_TRUE(app.WriteProfileString("A", "a", "new"));
        EXPECT_TRUE(app.ChangeProfile([&] { app.WriteProfileInt("B", "b", 2); }));
        EXPECT_EQ(app.GetProfileString("A", "a"), "new");
        EXPECT_EQ(Get(), before);
    }));
    EXPECT_NE(Get(), before);
    CWinApp reader;
    reader.SetProfilePath(path.c_str());
    EXPECT_EQ(reader.GetProfileString("A", "a"), "new");
    EXPECT_EQ(reader.GetProfileInt("B", "b", 0), 2u);
}

TEST_F(Profile, ChangesBeforeAnExceptionAreKept)
{
    EXPECT_THROW(app.ChangeProfile([&] {
        app.WriteProfileInt("A", "a", 1);
        throw std::runtime_error("stop");
    }),
                 std::runtime_error);
    CWinApp reader;
    reader.SetProfilePath(path.c_str());
    EXPECT_EQ(reader.GetProfileInt("A", "a", 0), 1u);
    EXPECT_TRUE(app.WriteProfileInt("A", "a", 3));
}

TEST_F(Profile, ChangesToAnUnusablePathAreRefused)
{
    app.SetProfilePath(folder.c_str());
    EXPECT_FALSE(app.ChangeProfile([&] { EXPECT_FALSE(app.WriteProfileInt("A", "a", 1)); }));
}

TEST_F(Profile, WithoutAChangeNothingIsWritten)
{
    EXPECT_TRUE(app.ChangeProfile([] {}));
    EXPECT_FALSE(fs::exists(path));
    Put("[A]\na = 1\n");
    const SystemCalls calls;
    EXPECT_TRUE(app.ChangeProfile([&] { EXPECT_EQ(app.GetProfileInt("A", "a", 0), 1u); }));
    EXPECT_EQ(std::count(calls.made.begin(), calls.made.end(), "rename"), 0);
}

TEST_F(Profile, AFolderThatLinksToItselfHoldsNoProfile)
{
    fs::create_directory_symlink(folder / "loop", folder / "loop");
    app.SetProfilePath((folder / "loop" / "orvane.ini").c_str());
    EXPECT_EQ(app.GetProfileInt("A", "a", 3), 3u);
    EXPECT_FALSE(app.WriteProfileInt("A", "a", 1));
}

TEST(CWinApp, ApplicationCanKeepItsProfileElsewhere)
{
    class InMemory : public CWinApp
    {
    public:
        CString GetProfileString(LPCSTR section, LPCSTR entry, LPCSTR defaultValue) const override
        {
            const auto found = values.find(std::string(section) + "/" + entry);
            return found == values.end() ? CString(defaultValue) : CString(found->second);
        }
        BOOL WriteProfileString(LPCSTR section, LPCSTR entry, LPCSTR value) override
        {
            values[std::string(section) + "/" + entry] = value;
            return TRUE;
        }
        std::map<std::string, std::string> values;
    };
    InMemory app;
    CWinApp& base = app;
    EXPECT_TRUE(base.WriteProfileInt("A", "a", -5));
    EXPECT_TRUE(base.WriteProfileString("A", "b", "text"));
    EXPECT_EQ(app.values["A/a"], "-5");
    EXPECT_EQ(base.GetProfileInt("A", "a", 0), static_cast<UINT>(-5));
    EXPECT_EQ(base.GetProfileString("A", "b"), "text");
    EXPECT_EQ(base.GetProfileInt("A", "c", 7), 7u);
}

TEST_F(Profile, UnusablePathsGiveDefaultsAndRefuseWrites)
{
    Put("a file, no folder");
    for (const std::string& unusable : {folder.string(), path + "/orvane.ini", std::string()})
    {
        app.SetProfilePath(unusable.c_str());
        EXPECT_EQ(app.GetProfileInt("A", "a", 3), 3u) << unusable;
        EXPECT_FALSE(app.WriteProfileInt("A", "a", 1)) << unusable;
    }
    EXPECT_EQ(Get(), "a file, no folder");
}

TEST(CWinApp, ProfileLiesInTheConfigurationFolder)
{
    const ScopedVariable roaming("APPDATA", nullptr);
    {
        const ScopedVariable configuration("XDG_CONFIG_HOME", "/configuration");
        EXPECT_EQ(CWinApp().GetProfilePath(), "/configuration/orvane/orvane.ini");
    }
    const ScopedVariable home("HOME", "/home/anyone");
    for (const char* const unusable : {static_cast<const char*>(nullptr), "", "relative/folder"})
    {
        const ScopedVariable configuration("XDG_CONFIG_HOME", unusable);
        EXPECT_EQ(CWinApp().GetProfilePath(), "/home/anyone/.config/orvane/orvane.ini");
    }
    const ScopedVariable configuration("XDG_CONFIG_HOME", nullptr);
    const ScopedVariable homeless("HOME", nullptr);
    EXPECT_EQ(CWinApp().GetProfilePath(), "");
    EXPECT_FALSE(CWinApp().WriteProfileInt("A", "a", 1));
}

TEST(CWinApp, FirstApplicationMadeIsTheApplication)
{
    CWinApp* const fallback = AfxGetApp();
    ASSERT_NE(fallback, nullptr);
    EXPECT_EQ(AfxGetApp(), fallback);
    {
        CWinApp first;
        EXPECT_EQ(AfxGetApp(), &first);
        const CWinApp second;
        EXPECT_EQ(AfxGetApp(), &first);
    }
    EXPECT_EQ(AfxGetApp(), fallback);
}

TEST(CWinApp, TellsItsClass)
{
    const CWinApp app;
    EXPECT_STREQ(app.GetRuntimeClass()->m_lpszClassName, "CWinApp");
    EXPECT_TRUE(app.IsKindOf(RUNTIME_CLASS(CObject)));
}

TEST(AfxMessageBox, IsCaptionedAndReturnsTheAnswer)
{
    const MessageBoxHandler before = SetMessageBoxHandler(KeepMessage);
    EXPECT_EQ(AfxMessageBox("no space", MB_ICONEXCLAMATION), 42);
    EXPECT_EQ(lastMessage, "Orvane|no space|48");
    AfxMessageBox(nullptr);
    EXPECT_EQ(lastMessage, "Orvane||0");
    SetMessageBoxHandler(before);
}
