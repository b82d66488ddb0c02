// SPDX-License-Identifier: MIT
#include "platform/Process.h"

#include <atomic>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace
{

std::atomic<const char*> unfinishedFile = nullptr;
static_assert(std::atomic<const char*>::is_always_lock_free, "a signal handler reads it");

void RemoveAndEnd(int signal)
{
    if (const char* const path = unfinishedFile.exchange(nullptr))
    {
        unlink(path);
    }
    // The handler is gone (SA_RESETHAND); the signal takes its course when this returns.
    raise(signal);
}

void HandleEndingSignals()
{
    for (const int ending : {SIGINT, SIGTERM, SIGHUP})
    {
        struct sigaction action = {};
        if (sigaction(ending, nullptr, &action) != 0 || action.sa_handler != SIG_DFL)
        {
            continue;
        }
        action = {};
        action.sa_handler = RemoveAndEnd;
        action.sa_flags = SA_RESETHAND;
        sigfillset(&action.sa_mask);
        sigaction(ending, &action, nullptr);
    }
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
    unfinishedFile = path;
    if (path != nullptr)
    {
        HandleEndingSignals();
    }
}
