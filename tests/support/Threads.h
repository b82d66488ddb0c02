// SPDX-License-Identifier: MIT
#pragma once

/// \file
/// Threads that wait, for tests of what ends their waiting.

#include <unistd.h>

#include <atomic>
#include <fstream>
#include <string>
#include <thread>
#include <utility>

/// Whether the operating system has put a thread of this process to sleep.
inline bool IsAsleep(pid_t thread)
{
    std::ifstream file("/proc/self/task/" + std::to_string(thread) + "/stat");
    std::string line;
    std::getline(file, line);
    // The state is the letter behind the program's name in brackets: R running, S sleeping.
    const std::size_t bracket = line.rfind(')');
    return bracket != std::string::npos && line.at(bracket + 2) == 'S';
}

/// A thread that makes one call, which waits for something.
class WaitingThread
{
public:
    template <typename Call>
    explicit WaitingThread(Call call)
        : thread_([this, call = std::move(call)] {
              id_ = gettid();
              call();
              hasReturned_ = true;
          })
    {}
    ~WaitingThread()
    {
        if (thread_.joinable())
        {
            thread_.join();
        }
    }
    WaitingThread(const WaitingThread&) = delete;
    WaitingThread& operator=(const WaitingThread&) = delete;

    /// Returns true once the operating system has put the thread to sleep, because its call waits;
    /// false when the call has returned.
    bool ComesToWait() const
    {
        while (!hasReturned_ && (id_ == 0 || !IsAsleep(id_)))
        {
            std::this_thread::yield();
        }
        return !hasReturned_;
    }

    void Join() { thread_.join(); }

private:
    std::atomic<pid_t> id_ = 0;
    std::atomic<bool> hasReturned_ = false;
    std::thread thread_;
};
