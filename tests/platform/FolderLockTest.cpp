// SPDX-License-Identifier: MIT
#include "platform/FolderLock.h"

#include "tests/support/SystemCalls.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace
{

namespace fs = std::filesystem;
using orvane::FolderLock;
using std::chrono::milliseconds;

constexpr milliseconds noWait(0);
constexpr milliseconds withoutEnd(std::chrono::hours(24));

/// Every test has a folder of its own.
class FolderLockTest : public testing::Test
{
protected:
    FolderLockTest()
    {
        std::string name = testing::TempDir() + "orvane-lock-XXXXXX";
        if (mkdtemp(name.data()) == nullptr)
        {
            throw std::runtime_error(name + ": no folder could be made");
        }
        folder_ = name;
    }
    ~FolderLockTest() override
    {
        chmod(folder_.c_str(), 0700);
        fs::remove_all(folder_);
    }

    /// Whether the lock is had without waiting.
    bool IsFree() const { return FolderLock(folder_, noWait).IsHeld(); }

    std::string LockFile() const { return folder_ + "/.orvane.lock"; }

    std::string folder_;
};

/// A process that locks a folder and then waits to be killed.
class OtherProcess
{
public:
    explicit OtherProcess(const std::string& folder)
    {
        int ready[2];
        if (pipe(ready) != 0)
        {
            return;
        }
        process_ = fork();
        if (process_ == 0)
        {
            const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
            const char isLocked = flock(descriptor, LOCK_EX) == 0 ? 1 : 0;
            if (write(ready[1], &isLocked, 1) != 1)
            {
                _exit(1);
            }
            for (;;)
            {
                pause();
            }
        }
        char isLocked = 0;
        hasLocked_ = read(ready[0], &isLocked, 1) == 1 && isLocked == 1;
        close(ready[0]);
        close(ready[1]);
    }
    ~OtherProcess() { Kill(); }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    bool HasLocked() const { return hasLocked_; }
    void Kill()
    {
        if (process_ > 0)
        {
            kill(process_, SIGKILL);
            waitpid(process_, nullptr, 0);
            process_ = -1;
        }
    }

private:
    pid_t process_ = -1;
    bool hasLocked_ = false;
};

TEST_F(FolderLockTest, OneLockOfAFolderIsHeldAtATime)
{
    {
        const FolderLock first(folder_, noWait);
        EXPECT_TRUE(first.IsHeld());
        EXPECT_FALSE(IsFree());
    }
    EXPECT_TRUE(IsFree());
    EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(FolderLockTest, FoldersAreLockedApart)
{
    fs::create_directory(folder_ + "/a");
    const FolderLock outer(folder_, noWait);
    const FolderLock inner(folder_ + "/a", noWait);
    EXPECT_TRUE(outer.IsHeld());
    EXPECT_TRUE(inner.IsHeld());
}

TEST_F(FolderLockTest, AnotherProcessKeepsTheLockUntilItIsKilled)
{
    OtherProcess other(folder_);
    ASSERT_TRUE(other.HasLocked());
    EXPECT_FALSE(IsFree());
    EXPECT_FALSE(FolderLock(folder_, milliseconds(1)).IsHeld());
    other.Kill();
    EXPECT_TRUE(IsFree());
}

TEST_F(FolderLockTest, AWaitOfZeroAsksOnce)
{
    const SystemCalls calls([](const std::string&) { return EWOULDBLOCK; });
    EXPECT_FALSE(IsFree());
    EXPECT_EQ(calls.made, std::vector<std::string>{"lock folder"});
}

TEST_F(FolderLockTest, ALockIsAskedForAgainUntilItIsFree)
{
    for (const int refusal : {EWOULDBLOCK, EINTR})
    {
        int refusals = 3;
        const SystemCalls calls([&](const std::string&) { return refusals-- > 0 ? refusal : 0; });
        EXPECT_TRUE(FolderLock(folder_, withoutEnd).IsHeld());
        EXPECT_EQ(calls.made, std::vector<std::string>(4, "lock folder"));
    }
}

TEST_F(FolderLockTest, WithoutAFolderThereIsNoLock)
{
    EXPECT_FALSE(FolderLock(folder_ + "/none", noWait).IsHeld());
    EXPECT_FALSE(FolderLock("", noWait).IsHeld());
    EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(FolderLockTest, WhereFoldersCannotBeLockedAFileInItIs)
{
    const SystemCalls calls(
        [](const std::string& call) { return call == "lock folder" ? ENOLCK : 0; });
    {
        const FolderLock first(folder_, noWait);
        EXPECT_TRUE(first.IsHeld());
        EXPECT_FALSE(IsFree());
    }
    EXPECT_TRUE(IsFree());
    EXPECT_EQ(fs::file_size(LockFile()), 0U);
}

TEST_F(FolderLockTest, ALinkInThePlaceOfTheLockFileIsNotFollowed)
{
    fs::create_symlink(folder_ + "/elsewhere", LockFile());
    const SystemCalls calls(
        [](const std::string& call) { return call == "lock folder" ? ENOLCK : 0; });
    EXPECT_TRUE(IsFree());
    EXPECT_FALSE(fs::exists(folder_ + "/elsewhere"));
}

TEST_F(FolderLockTest, ASystemWithoutLocksRefusesNothing)
{
    const SystemCalls calls(
        [](const std::string& call) { return call.starts_with("lock") ? ENOLCK : 0; });
    const FolderLock first(folder_, noWait);
    EXPECT_TRUE(first.IsHeld());
    EXPECT_TRUE(IsFree());
}

/// While an object exists, an administrator's process has the rights of a usual user.
class AsUsualUser
{
public:
    AsUsualUser() : isUsual_(!wasAdministrator_ || seteuid(nobody) == 0) {}
    ~AsUsualUser()
    {
        if (wasAdministrator_ && seteuid(0) != 0)
        {
            std::abort();
        }
    }
    AsUsualUser(const AsUsualUser&) = delete;
    AsUsualUser& operator=(const AsUsualUser&) = delete;

    bool IsUsual() const { return isUsual_; }

    static constexpr uid_t nobody = 65534;

private:
    const bool wasAdministrator_ = geteuid() == 0;
    const bool isUsual_;
};

TEST_F(FolderLockTest, AFolderThatCannotBeListedIsLockedByItsFile)
{
    if (geteuid() == 0)
    {
        ASSERT_EQ(chown(folder_.c_str(), AsUsualUser::nobody, static_cast<gid_t>(-1)), 0);
    }
    ASSERT_EQ(chmod(folder_.c_str(), 0300), 0);
    const AsUsualUser user;
    ASSERT_TRUE(user.IsUsual());
    {
        const FolderLock first(folder_, noWait);
        EXPECT_TRUE(first.IsHeld());
        EXPECT_FALSE(IsFree());
    }
    EXPECT_TRUE(IsFree());
    EXPECT_TRUE(fs::exists(LockFile()));
}

}  // namespace
