// SPDX-License-Identifier: MIT
#include "platform/Process.h"

#include "platform/Sync.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstring>
#include <thread>

namespace
{

constexpr int endingSignals[] = {SIGINT, SIGTERM, SIGHUP};

std::atomic<const char*> unfinishedFile = nullptr;
std::atomic<int> interruption = 0;  // the signal that came
std::atomic<int> wakingPipe = -1;   // where the handler wakes the thread that signals the event
static_assert(std::atomic<const char*>::is_always_lock_free &&
                  std::atomic<int>::is_always_lock_free,
              "a signal handler reads them");

void RemoveAndEnd(int signal)
{
    if (const char* const path = unfinishedFile.exchange(nullptr))
    {
        unlink(path);
    }
    // It takes its own course, now or when the handler returns.
    std::signal(signal, SIG_DFL);
    raise(signal);
}

void HandleInterruption(int signal)
{
    const bool first = interruption.exchange(signal) == 0;
    const int pipe = wakingPipe;
    const char byte = 0;
    if (!first || pipe < 0 || write(pipe, &byte, 1) != 1)
    {
        RemoveAndEnd(signal);
    }
}

void HandleEndingSignals()
{
    for (const int ending : endingSignals)
    {
        struct sigaction action = {};
        if (sigaction(ending, nullptr, &action) != 0 || action.sa_handler != SIG_DFL)
        {
            continue;
        }
        action = {};
        action.sa_handler = HandleInterruption;
        action.sa_flags = SA_RESTART;
        sigfillset(&action.sa_mask);
        sigaction(ending, &action, nullptr);
    }
}

// A handler may not signal an event, which takes a lock: a thread does when it is woken.
void WaitAndSignal(int pipe, HANDLE event)
{
    char byte;
    if (read(pipe, &byte, 1) != 1)
    {
        return;
    }
    SetEvent(event);
    std::this_thread::sleep_for(std::chrono::milliseconds(170));
    RemoveAndEnd(interruption);
}

}  // namespace

void PrepareProcess()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    {
        if (fcntl(stream, F_GETFD) == -1)
        {
            // The lowest free number is taken: this one. Reading nowhere, and writing is refused.
            static_cast<void>(open("/dev/null", O_RDONLY));
        }
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

void RemoveWhenInterrupted(const char* path)
{
    // A copy, which nobody frees while it is read.
    static std::array<char, 4096> name;
    unfinishedFile = nullptr;
    if (path == nullptr || std::strlen(path) >= name.size())
    {
        return;
    }
    std::memcpy(name.data(), path, std::strlen(path) + 1);
    unfinishedFile = name.data();
    HandleEndingSignals();
}

void SignalWhenInterrupted(HANDLE event)
{
    int ends[2];
    if (event == nullptr || wakingPipe >= 0 || pipe2(ends, O_CLOEXEC) != 0)
    {
        return;
    }
    std::thread(WaitAndSignal, ends[0], event).detach();
    wakingPipe = ends[1];
    HandleEndingSignals();
}

void EndIfInterrupted()
{
    if (const int signal = interruption)
    {
        RemoveAndEnd(signal);
    }
}
