// SPDX-License-Identifier: MIT
#include "tests/support/Instructions.h"

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace
{

/// Calls between two stops of its own, which tell the tracer where to count.
[[noreturn]] void RunTraced(const std::function<void()>& call)
{
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
    {
        _exit(1);
    }
    raise(SIGSTOP);
    call();
    raise(SIGSTOP);
    _exit(0);
}

/// Waits until the child has stopped, and returns the signal; 0 when the child has ended.
int NextStop(pid_t child)
{
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFSTOPPED(status) ? WSTOPSIG(status) : 0;
}

}  // namespace

std::optional<long> CountInstructions(const std::function<void()>& call)
{
    const pid_t child = fork();
    if (child == 0)
    {
        RunTraced(call);
    }
    if (child == -1 || NextStop(child) != SIGSTOP)
    {
        return std::nullopt;
    }
    long count = 0;
    int stop = SIGTRAP;
    while (stop == SIGTRAP)
    {
        ++count;
        stop = ptrace(PTRACE_SINGLESTEP, child, nullptr, nullptr) == 0 ? NextStop(child) : 0;
    }
    kill(child, SIGKILL);
    if (stop == 0)
    {
        return std::nullopt;
    }
    waitpid(child, nullptr, 0);
    return count;
}
