// SPDX-License-Identifier: MIT
#include "platform/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

namespace orvane
{

namespace
{

enum class LockResult
{
    Held,
    Busy,
    Impossible  ///< the file system cannot lock this
};

/// Waits for the lock by asking again and again, because the system's own waiting has no end.
LockResult WaitForLock(int descriptor, std::chrono::milliseconds longestWait)
{
    using Clock = std::chrono::steady_clock;
    constexpr auto pause = std::chrono::microseconds(500);  // about as long as writing a small file
    const Clock::time_point end = Clock::now() + longestWait;
    while (flock(descriptor, LOCK_EX | LOCK_NB) != 0)
    {
        if (errno != EWOULDBLOCK && errno != EINTR)
        {
            return LockResult::Impossible;
        }
        if (Clock::now() >= end)
        {
            return LockResult::Busy;
        }
        std::this_thread::sleep_for(pause);
    }
    return LockResult::Held;
}

}  // namespace

FolderLock::FolderLock(const std::string& folder, std::chrono::milliseconds longestWait)
{
    descriptor_ = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor_ < 0 && errno != EACCES)
    {
        return;
    }
    LockResult result =
        descriptor_ < 0 ? LockResult::Impossible : WaitForLock(descriptor_, longestWait);
    if (result == LockResult::Impossible)
    {
        // Network file systems lock only files that are open for writing.
        if (descriptor_ >= 0)
        {
            close(descriptor_);
        }
        const std::string file = folder + "/.orvane.lock";
        descriptor_ = open(file.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC,
                           S_IRUSR | S_IWUSR);
        result = descriptor_ < 0 ? LockResult::Impossible : WaitForLock(descriptor_, longestWait);
    }
    isHeld_ = result != LockResult::Busy;
}

FolderLock::~FolderLock()
{
    if (descriptor_ >= 0)
    {
        close(descriptor_);
    }
}

}  // namespace orvane
