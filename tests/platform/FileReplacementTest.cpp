// SPDX-License-Identifier: MIT
#include "platform/FileReplacement.h"

#include "platform/Process.h"
#include "tests/support/SystemCalls.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace
{

namespace fs = std::filesystem;
using orvane::FileReplacement;

/// Runs a function in a process of its own and returns the process's number when it has ended.
template <typename Function>
pid_t InAnotherProcess(Function function)
{
    const pid_t process = fork();
    if (process == 0)
    {
        function();
        _exit(0);
    }
    waitpid(process, nullptr, 0);
    return process;
}

/// Every test has a folder of its own, so that each looks for files of dead processes.
class FileReplacementTest : public testing::Test
{
protected:
    FileReplacementTest()
    {
        std::string name = testing::TempDir() + "orvane-replacement-XXXXXX";
        if (mkdtemp(name.data()) == nullptr)
        {
            throw std::runtime_error(name + ": no folder could be made");
        }
        folder_ = name;
    }
    ~FileReplacementTest() override { fs::remove_all(folder_); }

    std::string Path(const std::string& name) const { return (folder_ / name).string(); }
    void Put(const std::string& name, const std::string& content) const
    {
        std::ofstream(Path(name)) << content;
    }
    std::string Get(const std::string& name) const
    {
        std::ifstream file(Path(name));
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    /// Owner, group and permissions of a file.
    struct stat StatusOf(const std::string& name) const
    {
        struct stat status = {};
        if (stat(Path(name).c_str(), &status) != 0)
        {
            throw std::runtime_error(name + ": has no status");
        }
        return status;
    }
    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const fs::directory_entry& entry : fs::directory_iterator(folder_))
        {
            names.push_back(entry.path().filename());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    /// Gives a file the content "new", the usual way.
    std::error_code Replace(const std::string& name) const
    {
        FileReplacement file;
        std::error_code error = Prepare(file, name);
        return error ? error : file.Place();
    }
    std::error_code Prepare(FileReplacement& file, const std::string& name) const
    {
        std::error_code error = file.Begin(Path(name));
        error = error ? error : file.Write("new", 3);
        return error ? error : file.Finish();
    }
    std::error_code ReplaceBoth() const
    {
        FileReplacement first;
        FileReplacement second;
        std::error_code error = Prepare(first, "a");
        error = error ? error : Prepare(second, "b");
        return error ? error : FileReplacement::PlaceAll({&first, &second}, nullptr);
    }

    fs::path folder_;
};

TEST_F(FileReplacementTest, ContentAppearsOnlyWithPlace)
{
    Put("a", "old");
    FileReplacement file;
    ASSERT_FALSE(file.Begin(Path("a")));
    ASSERT_FALSE(file.Write("ne", 2));
    ASSERT_FALSE(file.Write("w", 1));
    EXPECT_EQ(Names(), std::vector<std::string>{"a"});
    ASSERT_FALSE(file.Finish());
    EXPECT_EQ(Get("a"), "old");
    ASSERT_FALSE(file.Place());
    EXPECT_EQ(Get("a"), "new");
    EXPECT_EQ(Names(), std::vector<std::string>{"a"});
}

TEST_F(FileReplacementTest, FileThatIsNotPlacedLeavesNothing)
{
    Put("a", "old");
    {
        FileReplacement file;
        ASSERT_FALSE(Prepare(file, "a"));
    }
    EXPECT_EQ(Get("a"), "old");
    EXPECT_EQ(Names(), std::vector<std::string>{"a"});
}

TEST_F(FileReplacementTest, BytesAreOnTheDiskBeforeTheRenameAndTheNameAfterIt)
{
    const SystemCalls calls;
    ASSERT_FALSE(Replace("a"));
    EXPECT_EQ(calls.made,
              (std::vector<std::string>{"open nameless", "lock file", "write", "flush file", "link",
                                        "rename", "flush folder"}));
}

TEST_F(FileReplacementTest, FileThatCannotBeFlushedDoesNotReplaceTheOldOne)
{
    Put("a", "old");
    for (const int error : {EIO, ENOSPC})
    {
        const SystemCalls calls(
            [error](const std::string& call) { return call == "flush file" ? error : 0; });
        EXPECT_EQ(Replace("a").value(), error);
        EXPECT_EQ(Get("a"), "old");
        EXPECT_EQ(Names(), std::vector<std::string>{"a"});
    }
    // Some file systems have nothing to flush.
    const SystemCalls calls(
        [](const std::string& call) { return call == "flush file" ? EINVAL : 0; });
    EXPECT_FALSE(Replace("a"));
    EXPECT_EQ(Get("a"), "new");
}

TEST_F(FileReplacementTest, ReplacedFileKeepsItsPermissions)
{
    for (const mode_t mode : {0600, 0640, 0755, 04711})
    {
        Put("a", "old");
        ASSERT_EQ(chmod(Path("a").c_str(), mode), 0);
        ASSERT_FALSE(Replace("a"));
        const struct stat status = StatusOf("a");
        EXPECT_EQ(status.st_mode & 07777, mode);
    }
}

TEST_F(FileReplacementTest, ReplacedFileKeepsItsOwnerAndGroup)
{
    if (geteuid() != 0)
    {
        GTEST_SKIP() << "only the superuser may give files away";
    }
    Put("a", "old");
    ASSERT_EQ(chown(Path("a").c_str(), 1234, 2345), 0);
    ASSERT_EQ(chmod(Path("a").c_str(), 06750), 0);
    ASSERT_FALSE(Replace("a"));
    const struct stat status = StatusOf("a");
    EXPECT_EQ(status.st_uid, 1234U);
    EXPECT_EQ(status.st_gid, 2345U);
    EXPECT_EQ(status.st_mode & 07777, 06750U);
}

TEST_F(FileReplacementTest, PermissionsOfAGroupThatCannotBeKeptAreNotGivenToAnother)
{
    if (geteuid() != 0)
    {
        GTEST_SKIP() << "only the superuser may give files away";
    }
    Put("a", "old");
    ASSERT_EQ(chown(Path("a").c_str(), 1234, 2345), 0);
    ASSERT_EQ(chmod(Path("a").c_str(), 06764), 0);
    ASSERT_EQ(chmod(folder_.c_str(), 0777), 0);
    InAnotherProcess([&] {
        // A user who owns the file but is not in its group.
        if (setgid(3456) == 0 && setuid(1234) == 0)
        {
            static_cast<void>(Replace("a"));
        }
    });
    const struct stat status = StatusOf("a");
    EXPECT_EQ(Get("a"), "new");
    EXPECT_EQ(status.st_gid, 3456U);
    EXPECT_EQ(status.st_mode & 07777, 04744U);
}

TEST_F(FileReplacementTest, NewFileHasThePermissionsOfTheUmask)
{
    const mode_t before = umask(027);
    const std::error_code error = Replace("a");
    umask(before);
    ASSERT_FALSE(error);
    const struct stat status = StatusOf("a");
    EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST_F(FileReplacementTest, LinkStaysAndItsFileIsReplaced)
{
    fs::create_directory(folder_ / "real");
    Put("real/old", "old");
    fs::create_symlink("real/old", folder_ / "old");
    fs::create_symlink("real/none", folder_ / "none");
    for (const std::string name : {"old", "none"})
    {
        ASSERT_FALSE(Replace(name));
        EXPECT_TRUE(fs::is_symlink(folder_ / name));
        EXPECT_EQ(Get("real/" + name), "new");
    }
}

TEST_F(FileReplacementTest, OtherHardLinksKeepTheOldContent)
{
    Put("a", "old");
    fs::create_hard_link(folder_ / "a", folder_ / "b");
    ASSERT_FALSE(Replace("a"));
    EXPECT_EQ(Get("a"), "new");
    EXPECT_EQ(Get("b"), "old");
}

TEST_F(FileReplacementTest, FileSystemWithoutNamelessFilesGivesThemNames)
{
    Put("a", "old");
    const SystemCalls calls(
        [](const std::string& call) { return call == "open nameless" ? EOPNOTSUPP : 0; });
    FileReplacement file;
    ASSERT_FALSE(file.Begin(Path("a")));
    const std::string prefix = ".orvane-" + std::to_string(getpid()) + "-";
    ASSERT_EQ(Names().size(), 2U);
    EXPECT_EQ(Names()[0].substr(0, prefix.size()), prefix);
    // Nobody but the owner reads what may be secret.
    const struct stat status = StatusOf(Names()[0]);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
    ASSERT_FALSE(file.Write("new", 3));
    ASSERT_FALSE(file.Finish());
    ASSERT_FALSE(file.Place());
    EXPECT_EQ(Get("a"), "new");
    EXPECT_EQ(Names(), std::vector<std::string>{"a"});
}

TEST_F(FileReplacementTest, FilesOfEndedProcessesAreRemovedAndNoOthers)
{
    const std::string ended = std::to_string(InAnotherProcess([] {}));
    const std::string self = std::to_string(getpid());
    const std::string parent = std::to_string(getppid());
    Put(".orvane-" + ended + "-77-1.part", "of an ended process");
    Put(".orvane-" + self + "-77-1.part", "of an ended process that had our number before us");
    const std::vector<std::string> staying = {
        ".orvane-" + ended + "-77-2.part",       // locked below
        ".orvane-" + parent + "-0-1.part",       // of a living process whose start is not known
        ".orvane-" + ended + "-77-1.part.old",   // the user's
        ".orvane-" + ended + "-77.part",         // the user's
        ".orvane-" + ended + "-77-x.part",       // the user's
        ".orvane-" + ended + "--1.part",         // the user's
        ".orvane-99999999999999999-77-1.part",   // no process can have this number
        ".orvane-0-77-1.part",                   // nor this one
        "orvane-" + ended + "-77-1.part",        // the user's
        ".orvane-" + ended + "-77-1.part.part",  // the user's
    };
    for (const std::string& name : staying)
    {
        Put(name, "precious");
    }
    fs::create_directory(folder_ / (".orvane-" + ended + "-77-3.part"));
    fs::create_symlink("precious", folder_ / (".orvane-" + ended + "-77-4.part"));
    const int locked = open(Path(staying[0]).c_str(), O_RDONLY);
    ASSERT_EQ(flock(locked, LOCK_EX), 0);

    ASSERT_FALSE(Replace("a"));
    close(locked);
    for (const std::string& name : staying)
    {
        EXPECT_TRUE(fs::exists(Path(name))) << name;
    }
    EXPECT_EQ(Names().size(), staying.size() + 3);  // with the folder, the link and "a"
}

TEST_F(FileReplacementTest, LaterProcessRemovesWhatAKilledOneLeft)
{
    Put("a", "old");
    for (const bool isNamed : {false, true})
    {
        InAnotherProcess([&] {
            const SystemCalls calls([isNamed](const std::string& call) {
                return isNamed && call == "open nameless" ? EOPNOTSUPP : 0;
            });
            FileReplacement file;
            static_cast<void>(Prepare(file, "a"));
            raise(SIGKILL);
        });
        EXPECT_EQ(Get("a"), "old");
        EXPECT_EQ(Names().size(), 2U);  // killed between Finish and Place
        InAnotherProcess([&] {
            FileReplacement other;
            static_cast<void>(other.Begin(Path("b")));
        });
        EXPECT_EQ(Names(), std::vector<std::string>{"a"});
    }
}

TEST_F(FileReplacementTest, UnfinishedFileOfALivingProcessStays)
{
    const SystemCalls calls(
        [](const std::string& call) { return call == "open nameless" ? EOPNOTSUPP : 0; });
    FileReplacement file;
    ASSERT_FALSE(file.Begin(Path("a")));
    InAnotherProcess([&] {
        FileReplacement other;
        static_cast<void>(other.Begin(Path("b")));
    });
    EXPECT_EQ(Names().size(), 1U);
    ASSERT_FALSE(file.Finish());
    ASSERT_FALSE(file.Place());
    EXPECT_EQ(Names(), std::vector<std::string>{"a"});
}

TEST_F(FileReplacementTest, BothFilesArePlaced)
{
    Put("b", "old");
    ASSERT_FALSE(ReplaceBoth());
    EXPECT_EQ(Get("a"), "new");
    EXPECT_EQ(Get("b"), "new");
    EXPECT_EQ(Names(), (std::vector<std::string>{"a", "b"}));
}

TEST_F(FileReplacementTest, FirstFileIsTakenBackWhenTheSecondCannotBePlaced)
{
    for (const bool canExchange : {true, false})
    {
        for (const bool isThere : {true, false})
        {
            fs::remove(folder_ / "a");
            if (isThere)
            {
                Put("a", "old");
            }
            Put("b", "old");
            std::string atTheSecond;
            bool isSecond = false;
            const SystemCalls calls([&](const std::string& call) {
                if (call == "exchange" && !canExchange)
                {
                    return EINVAL;
                }
                if (call == "rename" && !isSecond && Get("a") == "new")
                {
                    isSecond = true;
                    return EIO;
                }
                return 0;
            });
            const std::error_code error = ReplaceBoth();
            EXPECT_EQ(error.value(), EIO);
            EXPECT_TRUE(isSecond);
            EXPECT_EQ(Get("a"), isThere ? "old" : "");
            EXPECT_EQ(Get("b"), "old");
            EXPECT_EQ(Names().size(), isThere ? 2U : 1U);
        }
    }
}

TEST_F(FileReplacementTest, EveryRefusedCallLeavesOldFilesOrNewOnes)
{
    bool isRefused = true;
    for (int n = 1; isRefused; ++n)
    {
        Put("a", "old");
        Put("b", "old");
        int count = 0;
        isRefused = false;
        std::error_code error;
        {
            const SystemCalls calls([&](const std::string&) {
                isRefused = isRefused || count + 1 == n;
                return ++count == n ? EIO : 0;
            });
            error = ReplaceBoth();
        }
        EXPECT_EQ(Get("a"), error ? "old" : "new") << n;
        EXPECT_EQ(Get("b"), error ? "old" : "new") << n;
        EXPECT_EQ(Names().size(), 2U) << n;
        EXPECT_FALSE(ReplaceBoth()) << n;
    }
}

TEST_F(FileReplacementTest, InterruptionAtAnyCallLeavesBothOldFilesOrBothNewOnes)
{
    int newOnes = 0;
    bool isInterrupted = true;
    for (int n = 1; isInterrupted; ++n)
    {
        Put("a", "old");
        Put("b", "old");
        const pid_t process = fork();
        if (process == 0)
        {
            std::signal(SIGTERM, SIG_DFL);
            RemoveUnfinishedFilesWhenInterrupted();
            int count = 0;
            const SystemCalls calls([&](const std::string&) {
                if (++count == n)
                {
                    raise(SIGTERM);
                }
                return 0;
            });
            static_cast<void>(ReplaceBoth());
            _exit(0);
        }
        int status = 0;
        waitpid(process, &status, 0);
        isInterrupted = WIFSIGNALED(status) && WTERMSIG(status) == SIGTERM;
        EXPECT_EQ(Get("a"), Get("b")) << n;
        EXPECT_EQ(Names().size(), 2U) << n;
        newOnes += isInterrupted && Get("a") == "new" ? 1 : 0;
    }
    EXPECT_GT(newOnes, 0);
}

TEST_F(FileReplacementTest, FoldersPipesAndMissingFoldersAreRefused)
{
    ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0600), 0);
    EXPECT_TRUE(Replace("pipe"));
    EXPECT_TRUE(Replace("."));
    EXPECT_EQ(Replace("none/a").value(), ENOENT);
    EXPECT_EQ(Names(), std::vector<std::string>{"pipe"});
}

}  // namespace
