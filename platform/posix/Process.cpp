// SPDX-License-Identifier: MIT
#include "platform/Process.h"

#include "platform/Sync.h"
#include "platform/posix/Interruption.h"
#include "platform/posix/UnfinishedFiles.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <string>
#include <thread>

namespace
{

constexpr int endingSignals[] = {SIGINT, SIGTERM, SIGHUP};

constexpr int isEnding = -1;

std::atomic<int> interruption = 0;  // the number of the signal that came; 0 before a signal
std::atomic<int> wakingPipe = -1;   // write end of the pipe to WaitAndSignal; -1 before it is made
std::atomic<int> heldSignal = 0;    // ends the process when no hold is left; 0 before a signal
std::atomic<int> holds = 0;         // how many InterruptionHolds there are, or isEnding
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler reads them");

void RemoveAndEnd(int signal)
{
    // Noted before the holds are counted: either this call finds that there are none, or the end of
    // the last one finds the signal.
    heldSignal = signal;
    int count = 0;
    if (!holds.compare_exchange_strong(count, isEnding) && count != isEnding)
    {
        return;
    }
    posix::RemoveUnfinishedFiles();
    // The signal then ends the process, at once or when the handler returns.
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

/// Runs on a thread of its own, which the signal handler wakes through a pipe. The handler itself
/// must not signal an event, because that takes a lock.
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

posix::InterruptionHold::InterruptionHold()
{
    int count = holds;
    do
    {
        while (count == isEnding)
        {
            pause();  // another thread is about to end the process
            count = holds;
        }
    } while (!holds.compare_exchange_weak(count, count + 1));
}

posix::InterruptionHold::~InterruptionHold()
{
    if (--holds == 0 && heldSignal != 0)
    {
        RemoveAndEnd(heldSignal);
    }
}

void PrepareProcess()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    {
        if (fcntl(stream, F_GETFD) == -1)
        {
            // open returns the lowest free descriptor, which is that of the closed stream. Reading
            // from it finds the end of the file at once, and writing to it fails.
            static_cast<void>(open("/dev/null", O_RDONLY));
        }
    }
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
}

void RemoveUnfinishedFilesWhenInterrupted()
{
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

void EndProcess(int status)
{
    // Files that another thread is putting in their places come first.
    int count = 0;
    while (!holds.compare_exchange_weak(count, isEnding) && count != isEnding)
    {
        count = 0;
        std::this_thread::yield();
    }
    posix::RemoveUnfinishedFiles();
    _exit(status);
}

std::uint64_t MemoryInUse()
{
    // Each line is a name, a number and "kB", which means KiB here.
    std::ifstream status("/proc/self/status");
    std::uint64_t kibibytes = 0;
    for (std::string line; std::getline(status, line);)
    {
        if (line.starts_with("RssAnon:") || line.starts_with("VmSwap:"))
        {
            kibibytes += std::strtoull(line.c_str() + line.find(':') + 1, nullptr, 10);
        }
    }
    return kibibytes * 1024;
}
